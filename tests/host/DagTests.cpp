// The DAG of the stand-in: a new scene's contents, instancing, path names, default nodes.
#include <maya/MDagPath.h>
#include <maya/MDagPathArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MItDag.h>
#include <maya/MSelectionList.h>

#include "Session.h"
#include "mayaascii/MayaAsciiReader.h"

#include <gtest/gtest.h>

namespace {

MObject nodeNamed(const char* name)
{
    MSelectionList list;
    MObject object;
    if (list.add(MString(name)) && list.length() > 0) list.getDependNode(0, object);
    return object;
}

void load(const std::string& text)
{
    std::string error;
    ASSERT_TRUE(vqmhost::readMayaAsciiText(text, "/scenes/dag.ma", error)) << error;
}

TEST(NewScene, HoldsStartupCamerasAndDefaultNodes)
{
    vqmhost::resetScene();
    for (const char* camera : {"persp", "top", "front", "side"}) {
        MObject transform = nodeNamed(camera);
        ASSERT_FALSE(transform.isNull()) << camera;
        EXPECT_TRUE(transform.hasFn(MFn::kTransform));
        MFnDagNode dag(transform);
        EXPECT_FALSE(dag.isDefaultNode()) << camera << " is a node the user may delete";
        ASSERT_EQ(dag.childCount(), 1u);
        EXPECT_EQ(dag.child(0).apiType(), MFn::kCamera);
        EXPECT_EQ(MFnDependencyNode(dag.child(0)).name(), MString(camera) + "Shape");
    }
    for (const char* name : {"lambert1", "initialShadingGroup", "initialParticleSE"}) {
        MObject node = nodeNamed(name);
        ASSERT_FALSE(node.isNull()) << name;
        EXPECT_TRUE(MFnDependencyNode(node).isDefaultNode()) << name;
    }
    EXPECT_TRUE(nodeNamed("lambert1").hasFn(MFn::kLambert));
    EXPECT_EQ(nodeNamed("initialShadingGroup").apiType(), MFn::kShadingEngine);
}

TEST(TypeFamilies, HasFnFollowsTheFamilyAndApiTypeIsExact)
{
    load("createNode joint -n \"j\";\n"
         "createNode transform -n \"t\";\n"
         "createNode spotLight -n \"spot\" -p \"t\";\n"
         "createNode blinn -n \"b\";\n");
    MObject joint = nodeNamed("j"), spot = nodeNamed("spot"), blinn = nodeNamed("b");
    EXPECT_TRUE(joint.hasFn(MFn::kTransform));
    EXPECT_TRUE(joint.hasFn(MFn::kDagNode));
    EXPECT_EQ(joint.apiType(), MFn::kJoint);
    EXPECT_FALSE(nodeNamed("t").hasFn(MFn::kJoint));
    for (MFn::Type family : {MFn::kSpotLight, MFn::kNonExtendedLight, MFn::kNonAmbientLight, MFn::kLight, MFn::kShape})
        EXPECT_TRUE(spot.hasFn(family)) << family;
    EXPECT_FALSE(spot.hasFn(MFn::kPointLight));
    EXPECT_TRUE(blinn.hasFn(MFn::kLambert));
    EXPECT_TRUE(blinn.hasFn(MFn::kReflect));
    EXPECT_FALSE(blinn.hasFn(MFn::kPhong));
}

const char* const kInstancedScene =
    "createNode transform -n \"group1\";\n"
    "createNode transform -n \"box\" -p \"group1\";\n"
    "createNode mesh -n \"boxShape\" -p \"box\";\n"
    "createNode transform -n \"group2\";\n"
    "createNode transform -n \"box\" -p \"group2\";\n"
    "parent -s -nc -r -add \"|group1|box|boxShape\" \"|group2|box\";\n"
    "createNode transform -n \"lonely\";\n";

TEST(Instancing, ASharedShapeHasOnePathPerParentAndUniquePartialNames)
{
    load(kInstancedScene);
    MObject shape = nodeNamed("boxShape");
    MDagPathArray paths;
    ASSERT_TRUE(MDagPath::getAllPathsTo(shape, paths));
    ASSERT_EQ(paths.length(), 2u);
    EXPECT_EQ(paths[0].fullPathName(), MString("|group1|box|boxShape"));
    EXPECT_EQ(paths[1].fullPathName(), MString("|group2|box|boxShape"));
    EXPECT_EQ(paths[0].partialPathName(), MString("group1|box|boxShape"));
    EXPECT_EQ(paths[1].partialPathName(), MString("group2|box|boxShape"));
    EXPECT_EQ(paths[1].instanceNumber(), 1u);
    MFnDagNode dag(shape);
    EXPECT_TRUE(dag.isInstanced());
    EXPECT_EQ(dag.parentCount(), 2u);
    // A function set made from the object answers for its first path.
    EXPECT_EQ(dag.partialPathName(), MString("group1|box|boxShape"));
    EXPECT_EQ(MFnDagNode(paths[1]).partialPathName(), MString("group2|box|boxShape"));
    // Unique names need no path at all.
    EXPECT_EQ(MFnDagNode(nodeNamed("lonely")).partialPathName(), MString("lonely"));
}

TEST(PartialPathName, TopLevelNodeSharingANameWithANestedOneKeepsItsRootBar)
{
    load("createNode transform -n \"a\";\n"
         "createNode transform -n \"g\";\n"
         "createNode transform -n \"a\" -p \"g\";\n");
    MSelectionList list;
    ASSERT_TRUE(list.add("|a"));
    MDagPath top;
    ASSERT_TRUE(list.getDagPath(0, top));
    EXPECT_EQ(top.partialPathName(), MString("|a"));
    MSelectionList nested;
    ASSERT_TRUE(nested.add("g|a"));
    MDagPath inner;
    ASSERT_TRUE(nested.getDagPath(0, inner));
    EXPECT_EQ(inner.partialPathName(), MString("g|a"));
    // A bare name matches both nodes, in creation order.
    MSelectionList both;
    ASSERT_TRUE(both.add("a"));
    EXPECT_EQ(both.length(), 2u);
}

TEST(MItDag, StartsAtTheWorldAndVisitsEveryInstancePath)
{
    load(kInstancedScene);
    MItDag it(MItDag::kDepthFirst, MFn::kInvalid);
    ASSERT_FALSE(it.isDone());
    EXPECT_EQ(it.currentItem().apiType(), MFn::kWorld);
    unsigned shapeVisits = 0;
    std::vector<std::string> order;
    for (; !it.isDone(); it.next()) {
        MDagPath path;
        it.getPath(path);
        if (it.currentItem() == nodeNamed("boxShape")) ++shapeVisits;
        if (path.length() > 0) order.push_back(path.fullPathName().asChar());
    }
    EXPECT_EQ(shapeVisits, 2u);
    // Depth first, children in their stable order: the startup cameras come first.
    ASSERT_GE(order.size(), 4u);
    EXPECT_EQ(order[0], "|persp");
    EXPECT_EQ(order[1], "|persp|perspShape");
    auto at = std::find(order.begin(), order.end(), "|group1");
    ASSERT_NE(at, order.end());
    EXPECT_EQ(*(at + 1), "|group1|box");
    EXPECT_EQ(*(at + 2), "|group1|box|boxShape");
}

TEST(MFnDagNode, UnderworldAndIntermediateObjects)
{
    load("createNode transform -n \"t\";\n"
         "createNode mesh -n \"shape\" -p \"t\";\n"
         "createNode mesh -n \"shapeOrig\" -p \"t\";\n"
         "\tsetAttr \".io\" yes;\n"
         "createNode transform -n \"under\" -p \"shape\";\n");
    EXPECT_FALSE(MFnDagNode(nodeNamed("shape")).isIntermediateObject());
    EXPECT_TRUE(MFnDagNode(nodeNamed("shapeOrig")).isIntermediateObject());
    EXPECT_TRUE(MFnDagNode(nodeNamed("under")).inUnderWorld());
    EXPECT_FALSE(MFnDagNode(nodeNamed("t")).inUnderWorld());
}

TEST(MFnDagNode, AddChildRefusesCyclesAndCanInstance)
{
    load("createNode transform -n \"a\";\n"
         "createNode transform -n \"b\" -p \"a\";\n"
         "createNode transform -n \"c\";\n");
    MObject a = nodeNamed("a"), b = nodeNamed("b"), c = nodeNamed("c");
    MFnDagNode fnB(b);
    EXPECT_FALSE(fnB.addChild(a)) << "a node cannot go below its own child";
    MFnDagNode fnC(c);
    EXPECT_TRUE(fnC.addChild(b, MFnDagNode::kNextPos, true));
    EXPECT_EQ(MFnDagNode(b).parentCount(), 2u);
    EXPECT_TRUE(fnC.addChild(b));  // reparent: the other parent goes
    EXPECT_EQ(MFnDagNode(b).parentCount(), 1u);
    EXPECT_TRUE(MFnDagNode(b).isChildOf(c));
}

}  // namespace
