// The helpers every stage reads the host through: reads that leave defaults alone, lookups by
// name and by connection, skin clusters upstream of a mesh, matrices.
#include "SceneTestSupport.h"

#include <maya/MFnDagNode.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MSelectionList.h>

#include "plugin/HostHelpers.h"

#include <cmath>

using namespace scenetest;
using vqmtest::ExportHarness;

namespace {

MObject nodeNamed(const char* name)
{
    MObject object;
    vqm::getNodeByName(name, object);
    return object;
}

const char* const kAttributes =
    "createNode transform -n \"props\";\n"
    "\taddAttr -ci true -sn \"flag\" -ln \"flag\" -at \"bool\";\n"
    "\taddAttr -ci true -sn \"count\" -ln \"count\" -at \"long\";\n"
    "\taddAttr -ci true -sn \"label\" -ln \"label\" -dt \"string\";\n"
    "\tsetAttr \".flag\" yes;\n"
    "\tsetAttr \".count\" 42;\n"
    "\tsetAttr \".label\" -type \"string\" \"crate\";\n";

TEST(HostHelpers, ReadsLeaveTheCallersDefaultWhenTheyCannotRead)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene(kAttributes)));
    MFnDependencyNode props(nodeNamed("props"));

    float f = 7.5f;
    EXPECT_FALSE(vqm::readFloat(props, "missing", f));
    EXPECT_EQ(f, 7.5f);
    bool b = true;
    EXPECT_FALSE(vqm::readBool(props, "label", b)) << "a string plug does not read as a bool";
    EXPECT_TRUE(b);
    MString s("default");
    EXPECT_FALSE(vqm::readString(props, "count", s));
    EXPECT_EQ(s, "default");

    EXPECT_TRUE(vqm::readBool(props, "flag", b = false));
    EXPECT_TRUE(b);
    int i = 0;
    EXPECT_TRUE(vqm::readInt(props, "count", i));
    EXPECT_EQ(i, 42);
    EXPECT_TRUE(vqm::readFloat(props, "count", f));
    EXPECT_EQ(f, 42.0f);
    EXPECT_TRUE(vqm::readString(props, "label", s));
    EXPECT_EQ(s, "crate");
    EXPECT_TRUE(vqm::readFloat(props, "translateX", f)) << "static attributes read their default";
    EXPECT_EQ(f, 0.0f);

    EXPECT_TRUE(vqm::boolAttribute(props, "flag", false));
    EXPECT_TRUE(vqm::boolAttribute(props, "missing", true));
    EXPECT_FALSE(vqm::boolAttribute(props, "label", false));
    EXPECT_TRUE(vqm::hasAttribute(props, "count"));
    EXPECT_TRUE(vqm::hasAttribute(props, "tx"));
    EXPECT_FALSE(vqm::hasAttribute(props, "vQM_static"));
    EXPECT_TRUE(h.loadMessages().empty());
}

TEST(HostHelpers, NodesByNameWarnOnAmbiguityAndFailQuietlyWhenUnknown)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode transform -n \"a\";\n"
                                    "createNode transform -n \"door\" -p \"a\";\n"
                                    "createNode transform -n \"b\";\n"
                                    "createNode transform -n \"door\" -p \"b\";\n")));
    std::vector<std::string> warnings;
    vqmhost::setMessageSink([&](vqmhost::MessageKind kind, const std::string& text) {
        if (kind == vqmhost::MessageKind::Warning) warnings.push_back(text);
    });
    MObject object;
    EXPECT_TRUE(vqm::getNodeByName("door", object));
    ASSERT_FALSE(object.isNull());
    EXPECT_EQ(MFnDagNode(object).fullPathName(), "|a|door");
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_EQ(warnings[0], "vqmExport: getNodeByName: door matches more than one node, selecting the one first found");

    warnings.clear();
    MStatus status = vqm::getNodeByName("nowhere", object);
    EXPECT_EQ(status, MStatus::kNotFound);
    EXPECT_TRUE(object.isNull());
    EXPECT_TRUE(warnings.empty());
    EXPECT_TRUE(vqm::getNodeByName("b|door", object));
    EXPECT_EQ(MFnDagNode(object).fullPathName(), "|b|door");
    EXPECT_TRUE(warnings.empty());
}

TEST(HostHelpers, ConnectedNodesByExactTypeOrByFamilyAndSourcePlugs)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode blinn -n \"paint\";\n"
                                    "createNode shadingEngine -n \"paintSG\";\n"
                                    "createNode transform -n \"driver\";\n"
                                    "createNode transform -n \"driven\";\n"
                                    "connectAttr \"paint.oc\" \"paintSG.ss\";\n"
                                    "connectAttr \"driver.tx\" \"driven.ty\";\n")));
    MFnDependencyNode engine(nodeNamed("paintSG"));
    MFnDependencyNode found;
    EXPECT_TRUE(vqm::findConnectedNode(engine, found, vqm::HostType::kLambertShader, true, false, false));
    EXPECT_EQ(found.name(), "paint") << "a blinn belongs to the lambert family";
    MFnDependencyNode exact;
    EXPECT_FALSE(vqm::findConnectedNode(engine, exact, vqm::HostType::kLambertShader, true, false, true));
    EXPECT_TRUE(exact.object().isNull()) << "no match leaves the result as it was";
    EXPECT_FALSE(vqm::findConnectedNode(engine, exact, MFn::kBlinn, false, true, true))
        << "the blinn drives the engine; it is not driven by it";
    EXPECT_TRUE(vqm::findConnectedNode(engine, exact, MFn::kBlinn, true, false, true));

    MPlugArray plugs;
    EXPECT_TRUE(vqm::sourcePlugsOf(MFnDependencyNode(nodeNamed("driven")), "ty", plugs));
    ASSERT_EQ(plugs.length(), 1u);
    EXPECT_EQ(plugs[0].name(), "driver.tx");
    MPlugArray untouched;
    untouched.append(plugs[0]);
    EXPECT_TRUE(vqm::sourcePlugsOf(MFnDependencyNode(nodeNamed("driven")), "nothing", untouched))
        << "with no such plug the array keeps what it held, and the answer tells whether it holds anything";
    EXPECT_EQ(untouched.length(), 1u);
    EXPECT_FALSE(vqm::sourcePlugsOf(MFnDependencyNode(nodeNamed("driven")), "tz", plugs));
}

TEST(HostHelpers, SkinClustersAreFoundUpstreamOfTheMesh)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode transform -n \"plain\";\n"
                                    "createNode mesh -n \"plainShape\" -p \"plain\";\n"
                                    "createNode transform -n \"fed\";\n"
                                    "createNode mesh -n \"fedShape\" -p \"fed\";\n"
                                    "createNode transform -n \"src\";\n"
                                    "createNode mesh -n \"srcShape\" -p \"src\";\n"
                                    "connectAttr \"srcShape.o\" \"fedShape.i\";\n")));
    MFnSkinCluster skin;
    EXPECT_FALSE(vqm::findSkinCluster(MFnDependencyNode(nodeNamed("plainShape")), skin)) << "inMesh unconnected";
    EXPECT_FALSE(vqm::findSkinCluster(MFnDependencyNode(nodeNamed("fedShape")), skin)) << "no skin upstream";
    EXPECT_TRUE(skin.object().isNull());

    std::string directory = VQM_SHARED_SCENES_DIR;
    if (!vqmtest::fileExists(directory + "/GrassRigSkinned_m2017.ma")) GTEST_SKIP() << "no shared scenes";
    ASSERT_TRUE(h.loadScene(vqmtest::readWholeFile(directory + "/GrassRigSkinned_m2017.ma")));
    // polyTweakUV, skin cluster, group parts, tweak: the skin lies two nodes up.
    EXPECT_TRUE(vqm::findSkinCluster(MFnDependencyNode(nodeNamed("md_grass_planeShape")), skin));
    EXPECT_EQ(skin.name(), "skinCluster1");
}

TEST(HostHelpers, MatricesAndAngles)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode transform -n \"parent\";\n"
                                    "\tsetAttr \".t\" -type \"double3\" 1 0 0 ;\n"
                                    "\tsetAttr \".r\" -type \"double3\" 0 0 90 ;\n"
                                    "createNode transform -n \"child\" -p \"parent\";\n"
                                    "\tsetAttr \".t\" -type \"double3\" 2 0 0 ;\n"
                                    "\tsetAttr \".s\" -type \"double3\" 3 3 3 ;\n",
                                    "meter")));
    float m[16];
    vqm::worldMatrixOf(MFnDagNode(nodeNamed("child")), 0.01, m);
    // The child's x axis turned onto y and scaled; its origin at (1, 2, 0) metres.
    const float expected[16] = {0, 3, 0, 0, -3, 0, 0, 0, 0, 0, 3, 0, 1, 2, 0, 1};
    for (int i = 0; i < 16; ++i) EXPECT_NEAR(m[i], expected[i], 1e-5) << i;

    MMatrix source;
    source(0, 3) = 5.0;  // a fourth column that is not 0 0 0 1 is cut off
    source(3, 3) = 2.0;
    source(3, 0) = 250.0;
    vqm::toFloatMatrix(source, 0.01, m);
    EXPECT_EQ(m[3], 0.0f);
    EXPECT_EQ(m[15], 1.0f);
    EXPECT_FLOAT_EQ(m[12], 2.5f);
    EXPECT_DOUBLE_EQ(vqm::radiansToDegrees(M_PI), 180.0);
    EXPECT_EQ(vqm::radiansToDegrees(1.0), 57.29577951308232);
}

}  // namespace
