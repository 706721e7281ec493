// Transform and joint function sets, path matrices, xform matrix data and the dependency graph
// walk over scenes read from Maya ASCII.
#include <maya/MDagPath.h>
#include <maya/MFnIkJoint.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MFnTransform.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MObjectArray.h>
#include <maya/MPlugArray.h>
#include <maya/MSelectionList.h>

#include "Session.h"
#include "mayaascii/MayaAsciiReader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

MObject nodeNamed(const char* name)
{
    MSelectionList list;
    MObject object;
    if (list.add(MString(name)) && list.length() > 0) list.getDependNode(0, object);
    return object;
}

std::vector<std::string> load(const std::string& text)
{
    std::vector<std::string> warnings;
    vqmhost::setMessageSink([&warnings](vqmhost::MessageKind kind, const std::string& message) {
        if (kind == vqmhost::MessageKind::Warning) warnings.push_back(message);
    });
    std::string error;
    EXPECT_TRUE(vqmhost::readMayaAsciiText("requires maya \"2016\";\ncurrentUnit -l centimeter -a degree;\n" + text,
                                           "/scenes/transforms.ma", error))
        << error;
    vqmhost::setMessageSink(nullptr);
    return warnings;
}

const double kDegree = M_PI / 180.0;

TEST(TransformFunctionSet, ReadsComponentsOrderOrientationAndLimits)
{
    load("createNode transform -n \"t\";\n"
         "\tsetAttr \".t\" -type \"double3\" 1 2 3 ;\n"
         "\tsetAttr \".r\" -type \"double3\" 10 20 30 ;\n"
         "\tsetAttr \".ro\" 3;\n"
         "\tsetAttr \".s\" -type \"double3\" 2 1 0.5 ;\n"
         "\tsetAttr \".ra\" -type \"double3\" 0 90 0 ;\n"
         "\tsetAttr \".mnrl\" -type \"double3\" -45 0 0 ;\n"
         "\tsetAttr \".mrxe\" yes;\n"
         "\tsetAttr \".xtyl\" 7;\n"
         "createNode mesh -n \"notATransform\";\n");
    MStatus status;
    MFnTransform t(nodeNamed("t"), &status);
    ASSERT_TRUE(status);
    EXPECT_TRUE(t.getTranslation(MSpace::kTransform).isEquivalent(MVector(1, 2, 3)));
    double r[3];
    MTransformationMatrix::RotationOrder order;
    ASSERT_TRUE(t.getRotation(r, order));
    EXPECT_EQ(order, MTransformationMatrix::kXZY) << "enum value 3 of the attribute";
    EXPECT_EQ(t.rotationOrder(), MTransformationMatrix::kXZY);
    EXPECT_NEAR(r[0], 10 * kDegree, 1e-15);
    EXPECT_NEAR(r[2], 30 * kDegree, 1e-15);
    double s[3];
    t.getScale(s);
    EXPECT_EQ(s[2], 0.5);
    EXPECT_TRUE(t.rotateOrientation(MSpace::kTransform).isEquivalent(MQuaternion(M_PI / 2, MVector(0, 1, 0)), 1e-12));

    EXPECT_TRUE(t.isLimited(MFnTransform::kRotateMinX));
    EXPECT_NEAR(t.limitValue(MFnTransform::kRotateMinX), -45 * kDegree, 1e-15);
    EXPECT_FALSE(t.isLimited(MFnTransform::kRotateMaxX));
    EXPECT_NEAR(t.limitValue(MFnTransform::kRotateMaxX), 360 * kDegree, 1e-12) << "the host's default";
    EXPECT_FALSE(t.isLimited(MFnTransform::kTranslateMaxY));
    EXPECT_EQ(t.limitValue(MFnTransform::kTranslateMaxY), 7);
    EXPECT_EQ(t.limitValue(MFnTransform::kTranslateMinZ), -1);
    MStatus shear;
    EXPECT_FALSE(t.isLimited(MFnTransform::kShearMinXY, &shear));
    EXPECT_FALSE(shear) << "shears have no limits";

    ASSERT_TRUE(t.enableLimit(MFnTransform::kTranslateMaxY, true));
    EXPECT_TRUE(t.isLimited(MFnTransform::kTranslateMaxY));
    ASSERT_TRUE(t.setRotationOrder(MTransformationMatrix::kZYX, true));
    MEulerRotation reordered;
    t.getRotation(reordered);
    EXPECT_EQ(reordered.order, MEulerRotation::kZYX);
    EXPECT_TRUE(reordered.asMatrix().isEquivalent(MEulerRotation(10 * kDegree, 20 * kDegree, 30 * kDegree,
                                                                 MEulerRotation::kXZY)
                                                      .asMatrix(),
                                                  1e-12))
        << "reordering keeps the rotation";

    MFnTransform wrong(nodeNamed("notATransform"), &status);
    EXPECT_FALSE(status);
    EXPECT_FALSE(MFnIkJoint(nodeNamed("t"), &status).object().hasFn(MFn::kJoint));
    EXPECT_FALSE(status);
}

TEST(TransformFunctionSet, PathMatricesChainLocalMatricesWithJointOrientAndScaleCompensation)
{
    load("createNode transform -n \"base\";\n"
         "\tsetAttr \".t\" -type \"double3\" 0 10 0 ;\n"
         "\tsetAttr \".rp\" -type \"double3\" 1 0 0 ;\n"
         "\tsetAttr \".r\" -type \"double3\" 0 0 90 ;\n"
         "createNode joint -n \"j1\" -p \"base\";\n"
         "\tsetAttr \".s\" -type \"double3\" 2 2 2 ;\n"
         "\tsetAttr \".jo\" -type \"double3\" 0 0 90 ;\n"
         "createNode joint -n \"j2\" -p \"j1\";\n"
         "\tsetAttr \".t\" -type \"double3\" 3 0 0 ;\n"
         "connectAttr \"j1.s\" \"j2.is\";\n");
    MDagPath path;
    ASSERT_TRUE(MDagPath::getAPathTo(nodeNamed("j2"), path));
    MMatrix world = path.inclusiveMatrix();
    // The point (1, 0, 0) of j2: undo j1's scale, +3 in x -> (3.5, 0, 0) in j1 (whose own scale
    // is undone below it), scale 2 -> (7, 0, 0), orient 90 -> (0, 7, 0); in base: turned 90
    // about the pivot (1, 0, 0) -> (-6, -1, 0), then +10 in y -> (-6, 9, 0).
    MVector p(1, 0, 0);
    double x = p.x * world(0, 0) + world(3, 0), y = p.x * world(0, 1) + world(3, 1);
    EXPECT_NEAR(x, -6, 1e-12);
    EXPECT_NEAR(y, 9, 1e-12);
    EXPECT_TRUE(path.exclusiveMatrix().isEquivalent(MDagPath(std::vector<vqmhost::Node*>(
                                                                 path.hostNodes().begin(), path.hostNodes().end() - 1))
                                                        .inclusiveMatrix()));
    EXPECT_TRUE((world * path.inclusiveMatrixInverse()).isEquivalent(MMatrix::identity, 1e-12));

    MQuaternion orient;
    ASSERT_TRUE(MFnIkJoint(nodeNamed("j1")).getOrientation(orient));
    EXPECT_TRUE(orient.isEquivalent(MQuaternion(M_PI / 2, MVector(0, 0, 1)), 1e-12));
}

TEST(MatrixData, XformMatricesOfPosesKeepTheirComponents)
{
    load("createNode dagPose -n \"pose\";\n"
         "\tsetAttr \".xm[2]\" -type \"matrix\" \"xform\" 2 2 2 0.1 0.2 0.3 5 1 2 3 0 0 0 0 0 0 0 0 0\n"
         "\t\t 0 0 0 0 0 0 0 0 0 1 0 0 0.70710678118654746 0.70710678118654768 1 1 1 yes;\n"
         "\tsetAttr \".wm[2]\" -type \"matrix\" 1 0 0 0 0 1 0 0 0 0 1 0 4 5 6 1;\n");
    MFnDependencyNode pose(nodeNamed("pose"));
    MPlug xm = pose.findPlug("xformMatrix");
    MObject data;
    ASSERT_TRUE(xm.elementByLogicalIndex(2).getValue(data));
    MStatus status;
    MFnMatrixData matrixData(data, &status);
    ASSERT_TRUE(status);
    EXPECT_TRUE(matrixData.isTransformation());
    MTransformationMatrix t = matrixData.transformation();
    EXPECT_TRUE(t.translation(MSpace::kTransform).isEquivalent(MVector(1, 2, 3)));
    double r[3], s[3];
    MTransformationMatrix::RotationOrder order;
    t.getRotation(r, order);
    EXPECT_EQ(order, MTransformationMatrix::kZYX) << "order 5 of the file";
    EXPECT_EQ(r[1], 0.2) << "radians, as stored";
    t.getScale(s, MSpace::kTransform);
    EXPECT_EQ(s[0], 2);
    // The composed matrix holds the joint orient after the rotation.
    MMatrix expected = MEulerRotation(0.1, 0.2, 0.3, MEulerRotation::kZYX).asMatrix() *
                       MQuaternion(M_PI / 2, MVector(0, 0, 1)).asMatrix();
    MMatrix scaled;
    scaled(0, 0) = scaled(1, 1) = scaled(2, 2) = 2;
    expected = scaled * expected;
    expected(3, 0) = 1;
    expected(3, 1) = 2;
    expected(3, 2) = 3;
    EXPECT_TRUE(matrixData.matrix().isEquivalent(expected, 1e-12));

    ASSERT_TRUE(pose.findPlug("worldMatrix").elementByLogicalIndex(2).getValue(data));
    MFnMatrixData plain(data);
    EXPECT_FALSE(plain.isTransformation());
    EXPECT_TRUE(plain.transformation().translation(MSpace::kTransform).isEquivalent(MVector(4, 5, 6)));

    // selectAncestorLogicalIndex turns a plug of the whole array into that element.
    MPlug element(pose.object(), pose.attribute("xformMatrix"));
    ASSERT_TRUE(element.selectAncestorLogicalIndex(2, pose.attribute("xformMatrix")));
    EXPECT_EQ(element.logicalIndex(), 2u);
    ASSERT_TRUE(element.getValue(data));
    EXPECT_TRUE(MFnMatrixData(data).isTransformation());
}

TEST(DependencyGraphWalk, UpstreamFromAPlugVisitsEachNodeOnceDepthFirst)
{
    load("createNode transform -n \"a\";\n"
         "createNode transform -n \"b\";\n"
         "createNode transform -n \"c\";\n"
         "createNode transform -n \"d\";\n"
         "createNode transform -n \"e\";\n"
         "connectAttr \"b.tx\" \"a.tx\";\n"
         "connectAttr \"e.tx\" \"a.ty\";\n"
         "connectAttr \"c.tx\" \"b.tx\";\n"
         "connectAttr \"d.tx\" \"b.ty\";\n"
         "connectAttr \"d.ty\" \"c.tx\";\n");
    MFnDependencyNode a(nodeNamed("a"));
    MPlug tx = a.findPlug("tx");
    std::vector<std::string> order;
    MItDependencyGraph walk(tx, MFn::kInvalid, MItDependencyGraph::kUpstream, MItDependencyGraph::kDepthFirst,
                            MItDependencyGraph::kPlugLevel);
    for (; !walk.isDone(); walk.next()) order.push_back(MFnDependencyNode(walk.currentItem()).name().str());
    EXPECT_EQ(order, (std::vector<std::string>{"a", "b", "c", "d"})) << "e feeds another plug of the root";

    order.clear();
    MItDependencyGraph breadth(tx, MFn::kInvalid, MItDependencyGraph::kUpstream, MItDependencyGraph::kBreadthFirst,
                               MItDependencyGraph::kPlugLevel);
    for (; !breadth.isDone(); breadth.next()) order.push_back(MFnDependencyNode(breadth.currentItem()).name().str());
    EXPECT_EQ(order, (std::vector<std::string>{"a", "b", "c", "d"}));

    order.clear();
    MObject d = nodeNamed("d");
    MItDependencyGraph down(d, MFn::kInvalid, MItDependencyGraph::kDownstream);
    for (; !down.isDone(); down.next()) order.push_back(MFnDependencyNode(down.currentItem()).name().str());
    EXPECT_EQ(order, (std::vector<std::string>{"d", "b", "a", "c"}));

    MStatus status;
    MPlug none;
    MItDependencyGraph invalid(none, MFn::kInvalid, MItDependencyGraph::kUpstream, MItDependencyGraph::kDepthFirst,
                               MItDependencyGraph::kPlugLevel, &status);
    EXPECT_FALSE(status);
    EXPECT_TRUE(invalid.isDone());
}

TEST(DependencyGraphWalk, TheSkinClusterOfARealRigAndItsOutputGeometry)
{
    std::ifstream in(std::string(VQM_SHARED_SCENES_DIR) + "/GrassRigSkinned_m2017.ma");
    if (!in) GTEST_SKIP() << "no shared scenes";
    std::stringstream text;
    text << in.rdbuf();
    std::string error;
    ASSERT_TRUE(vqmhost::readMayaAsciiText(text.str(), "/scenes/GrassRigSkinned_m2017.ma", error)) << error;
    MFnDependencyNode mesh(nodeNamed("md_grass_planeShape"));
    MPlug inMesh = mesh.findPlug("inMesh");
    MItDependencyGraph walk(inMesh, MFn::kSkinClusterFilter, MItDependencyGraph::kUpstream,
                            MItDependencyGraph::kDepthFirst, MItDependencyGraph::kPlugLevel);
    walk.disablePruningOnFilter();
    ASSERT_FALSE(walk.isDone());
    EXPECT_EQ(MFnDependencyNode(walk.currentItem()).name(), "skinCluster1");
    MFnSkinCluster skin(walk.currentItem());
    MObjectArray shapes;
    ASSERT_TRUE(skin.getOutputGeometry(shapes));
    ASSERT_EQ(shapes.length(), 1u);
    EXPECT_EQ(shapes[0], mesh.object());

    // The bind pose of the first joint: its xform entry, joint orient included.
    MPlugArray poses;
    MFnIkJoint(nodeNamed("grass_jnt_start")).findPlug("bindPose").connectedTo(poses, false, true);
    ASSERT_EQ(poses.length(), 1u);
    MPlug entry(poses[0].node(), MFnDependencyNode(poses[0].node()).attribute("xformMatrix"));
    entry.selectAncestorLogicalIndex(poses[0].logicalIndex());
    MObject data;
    ASSERT_TRUE(entry.getValue(data));
    MMatrix bind = MFnMatrixData(data).matrix();
    MObject recorded;
    ASSERT_TRUE(poses[0].getValue(recorded));
    EXPECT_TRUE(bind.isEquivalent(MFnMatrixData(recorded).matrix(), 1e-9))
        << "the components compose to the world matrix the pose recorded for the root joint";
}

}  // namespace
