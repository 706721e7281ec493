// How a transform becomes numbers: translation, rotation with orientations baked in, scale,
// visibility, bind poses, physics groups and joints with their limits.
#include "SceneTestSupport.h"


#include <cmath>

using namespace scenetest;
using vqmtest::ExportHarness;
using vqmtest::ExportRun;

namespace {

std::string lineOf(ExportHarness& h, const std::string& flags, const std::string& name)
{
    return elementLine(sceneOf(h.run(flags)), name);
}

TEST(TransformAttributes, IdentityWritesNoTransformAndVisibleWritesNoVisibility)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode transform -n \"origin\";\n"
                                    "createNode transform -n \"moved\";\n"
                                    "\tsetAttr \".t\" -type \"double3\" 0 0 -2.5 ;\n"
                                    "\tsetAttr \".s\" -type \"double3\" 1 2 1 ;\n"
                                    "\tsetAttr \".v\" no;\n")));
    std::string scene = sceneOf(h.run(""));
    EXPECT_EQ(elementLine(scene, "origin"), "    <TransformGroup name=\"origin\" nodeId=\"1\"/>");
    EXPECT_EQ(elementLine(scene, "moved"),
              "    <TransformGroup name=\"moved\" translation=\"0 0 -2.5\" scale=\"1 2 1\" visibility=\"false\" "
              "nodeId=\"2\"/>");
}

TEST(TransformAttributes, LengthsGoOutInTheScenesUnit)
{
    ExportHarness h;
    // In a scene in metres the host keeps centimetres; the document is in metres again.
    ASSERT_TRUE(h.loadScene(maScene("createNode transform -n \"post\";\n"
                                    "\tsetAttr \".t\" -type \"double3\" 1 2.5 -3 ;\n"
                                    "\tsetAttr \".r\" -type \"double3\" 0 90 0 ;\n"
                                    "\tsetAttr \".s\" -type \"double3\" 2 2 2 ;\n"
                                    "\taddAttr -ci true -sn \"vQM_joint\" -ln \"vQM_joint\" -at \"bool\";\n"
                                    "\tsetAttr \".vQM_joint\" yes;\n"
                                    "\tsetAttr \".mtxl\" -0.5;\n"
                                    "\tsetAttr \".mtxe\" yes;\n",
                                    "meter")));
    std::string line = lineOf(h, "", "post");
    EXPECT_EQ(attributeOf(line, "translation"), "1 2.5 -3");
    EXPECT_ANGLES_NEAR(attributeOf(line, "rotation"), 0, 90, 0);
    EXPECT_EQ(attributeOf(line, "scale"), "2 2 2") << "factors have no unit";
    EXPECT_EQ(attributeOf(line, "transMinX"), "-50") << "limits go out in the host's centimetres";

    ASSERT_TRUE(h.loadScene(maScene("createNode transform -n \"post\";\n\tsetAttr \".tx\" 12;\n", "millimeter")));
    EXPECT_EQ(attributeOf(lineOf(h, "", "post"), "translation"), "12 0 0");
}

TEST(TransformAttributes, OtherRotationOrdersAreReorderedToXyzAndRememberedInNodeMap)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode transform -n \"zyx\";\n"
                                    "\tsetAttr \".r\" -type \"double3\" 30 45 60 ;\n"
                                    "\tsetAttr \".ro\" 5;\n"
                                    "createNode transform -n \"xyz\";\n"
                                    "\tsetAttr \".r\" -type \"double3\" 30 45 60 ;\n")));
    std::string scene = sceneOf(h.run(""));
    // Z by 60 first, then Y by 45, then X by 30, as one rotation in XYZ order.
    EXPECT_ANGLES_NEAR(attributeOf(elementLine(scene, "zyx"), "rotation"), 51.8766, -7.28625, 69.1188);
    EXPECT_EQ(attributeOf(elementLine(scene, "xyz"), "rotation"), "30 45 60") << "XYZ angles pass as they are";

    auto stage = runStage(false, false);
    ASSERT_TRUE(stage->ok);
    vqm::NodeMap& nodes = stage->nodes;
    EXPECT_EQ(nodes["zyx"].rotationOrder, 6);
    EXPECT_EQ(nodes["xyz"].rotationOrder, 1);
    EXPECT_FALSE(nodes["zyx"].hasRotateOrientation);
    EXPECT_FALSE(nodes["zyx"].hasJointOrient);
}

TEST(TransformAttributes, OrientationsAreFoldedAroundTheRotation)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode joint -n \"oriented\";\n"
                                    "\tsetAttr \".jo\" -type \"double3\" 15 25 35 ;\n"
                                    "createNode joint -n \"all\";\n"
                                    "\tsetAttr \".ra\" -type \"double3\" 0 0 30 ;\n"
                                    "\tsetAttr \".r\" -type \"double3\" 45 0 0 ;\n"
                                    "\tsetAttr \".jo\" -type \"double3\" 0 60 0 ;\n"
                                    "createNode transform -n \"axis\";\n"
                                    "\tsetAttr \".ra\" -type \"double3\" 0 0 30 ;\n"
                                    "\tsetAttr \".r\" -type \"double3\" 10 20 30 ;\n"
                                    "\tsetAttr \".ro\" 2;\n")));
    std::string scene = sceneOf(h.run("-ignbp"));
    // A joint orient alone is the rotation.
    EXPECT_ANGLES_NEAR(attributeOf(elementLine(scene, "oriented"), "rotation"), 15, 25, 35);
    // Rotate axis about Z first, then the rotation, then the joint orient about Y.
    EXPECT_ANGLES_NEAR(attributeOf(elementLine(scene, "all"), "rotation"), 64.4386, 34.9753, 25.5614);
    // ZXY order: Z by 30 of the axis, then Z by 30, X by 10, Y by 20.
    EXPECT_ANGLES_NEAR(attributeOf(elementLine(scene, "axis"), "rotation"), 22.2069, 1.70168, 58.5664);

    auto stage = runStage(false, true);
    ASSERT_TRUE(stage->ok);
    vqm::NodeMap& nodes = stage->nodes;
    const vqm::NodeRecord& all = nodes["all"];
    EXPECT_TRUE(all.hasRotateOrientation);
    EXPECT_TRUE(all.hasJointOrient);
    EXPECT_NEAR(all.rotateOrientation.z, std::sin(M_PI / 12), 1e-12);
    EXPECT_NEAR(all.jointOrient.y, std::sin(M_PI / 6), 1e-12);
    EXPECT_TRUE(nodes["axis"].hasRotateOrientation);
    EXPECT_FALSE(nodes["axis"].hasJointOrient);
    EXPECT_EQ(nodes["axis"].rotationOrder, 3);
}

const char* const kPosedJoint =
    "createNode transform -n \"rig\";\n"
    "createNode joint -n \"arm\" -p \"rig\";\n"
    "\tsetAttr \".t\" -type \"double3\" 5 0 0 ;\n"
    "\tsetAttr \".r\" -type \"double3\" 0 0 45 ;\n"
    "\tsetAttr \".jo\" -type \"double3\" 0 0 90 ;\n"
    "createNode dagPose -n \"bindPose1\";\n"
    "\tsetAttr \".xm[0]\" -type \"matrix\" \"xform\" 1 1 1 0 0 0 0 9 9 9 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0\n"
    "\t\t 0 0 0 1 0 0 0 1 1 1 1 yes;\n"
    "\tsetAttr \".xm[1]\" -type \"matrix\" \"xform\" 1 2 1 0 0 0.5 0 1 2 3 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0\n"
    "\t\t 0 0 0 1 0 0 0.70710678118654746 0.70710678118654768 1 1 1 yes;\n"
    "\tsetAttr \".bp\" yes;\n"
    "connectAttr \"arm.bps\" \"bindPose1.wm[1]\";\n";

TEST(TransformAttributes, JointsUseTheirBindPoseUnlessTold)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene(kPosedJoint)));
    ExportRun bound = h.run("");
    EXPECT_TRUE(bound.warnings().empty());
    std::string line = elementLine(sceneOf(bound), "arm");
    EXPECT_EQ(attributeOf(line, "translation"), "1 2 3") << "the pose's entry under the index the joint feeds";
    EXPECT_EQ(attributeOf(line, "scale"), "1 2 1");
    // 0.5 radians about Z in the pose, then the joint orient's 90 degrees.
    EXPECT_ANGLES_NEAR(attributeOf(line, "rotation"), 0, 0, 0.5 * 180 / M_PI + 90);

    ExportRun current = h.run("-ignbp");
    EXPECT_TRUE(current.warnings().empty());
    line = elementLine(sceneOf(current), "arm");
    EXPECT_EQ(attributeOf(line, "translation"), "5 0 0");
    EXPECT_ANGLES_NEAR(attributeOf(line, "rotation"), 0, 0, 135);
}

TEST(TransformAttributes, AJointWithoutBindPoseWarnsAndUsesItsCurrentPose)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode transform -n \"rig\";\n"
                                    "createNode joint -n \"loose\" -p \"rig\";\n"
                                    "\tsetAttr \".r\" -type \"double3\" 20 0 0 ;\n"
                                    "\tsetAttr \".jo\" -type \"double3\" 0 0 90 ;\n"
                                    "createNode dagPose -n \"pose1\";\n"
                                    "createNode dagPose -n \"pose2\";\n"
                                    "createNode joint -n \"twice\" -p \"rig\";\n"
                                    "connectAttr \"twice.bps\" \"pose1.wm[0]\";\n"
                                    "connectAttr \"twice.bps\" \"pose2.wm[0]\";\n")));
    ExportRun r = h.run("");
    ASSERT_EQ(r.warnings().size(), 2u);
    EXPECT_EQ(r.warnings()[0], "vqmExport: Joint without bind pose found. Using current rotation (loose).\n");
    EXPECT_EQ(r.warnings()[1], "vqmExport: Joint without bind pose found. Using current rotation (twice).\n")
        << "a joint in two poses has no single bind pose";
    EXPECT_ANGLES_NEAR(attributeOf(elementLine(sceneOf(r), "loose"), "rotation"), 20, 0, 90);
    EXPECT_TRUE(h.run("-ignbp").warnings().empty());
}

TEST(TransformAttributes, ABrokenXformMatrixIsReportedWithItsNode)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode dagPose -n \"brokenPose\";\n"
                                    "\tsetAttr \".xm[0]\" -type \"matrix\" \"xform\" 1 1 1 0 0 0 0 0 0;\n"
                                    "createNode dagPose -n \"badWord\";\n"
                                    "\tsetAttr \".xm[0]\" -type \"matrix\" \"xform\" 1 1 1 0 0 0 9 0 0 0 0 0 0 0 0 0 0\n"
                                    "\t\t 0 0 0 0 0 0 0 0 0 0 0 1 0 0 0 1 1 1 1 yes;\n")));
    std::vector<std::string> warnings;
    for (const auto& m : h.loadMessages())
        if (m.kind == vqmhost::MessageKind::Warning) warnings.push_back(m.text);
    ASSERT_EQ(warnings.size(), 2u);
    EXPECT_NE(warnings[0].find("brokenPose.xm[0]"), std::string::npos) << warnings[0];
    EXPECT_NE(warnings[0].find("37 values"), std::string::npos) << warnings[0];
    EXPECT_NE(warnings[1].find("badWord.xm[0]"), std::string::npos) << warnings[1];
    EXPECT_NE(warnings[1].find("rotation order"), std::string::npos) << warnings[1];
}

TEST(TransformAttributes, GroupAttributesShowWhereTheyLeaveTheirDefaults)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene(
        "createNode transform -n \"body\";\n"
        "\taddAttr -ci true -sn \"vQM_dynamic\" -ln \"vQM_dynamic\" -at \"bool\";\n"
        "\taddAttr -ci true -sn \"vQM_collision\" -ln \"vQM_collision\" -at \"bool\";\n"
        "\taddAttr -ci true -sn \"vQM_static\" -ln \"vQM_static\" -at \"bool\";\n"
        "\taddAttr -ci true -sn \"vQM_density\" -ln \"vQM_density\" -at \"float\";\n"
        "\taddAttr -ci true -sn \"vQM_staticFriction\" -ln \"vQM_staticFriction\" -at \"float\";\n"
        "\taddAttr -ci true -sn \"vQM_collisionMask\" -ln \"vQM_collisionMask\" -at \"long\";\n"
        "\taddAttr -ci true -sn \"vQM_solverIterationCount\" -ln \"vQM_solverIterationCount\" -at \"long\";\n"
        "\taddAttr -ci true -sn \"vQM_projection\" -ln \"vQM_projection\" -at \"bool\";\n"
        "\tsetAttr \".vQM_dynamic\" yes;\n"
        "\tsetAttr \".vQM_collision\" no;\n"
        "\tsetAttr \".vQM_density\" 1.00005;\n"
        "\tsetAttr \".vQM_staticFriction\" 0.75;\n"
        "\tsetAttr \".vQM_collisionMask\" 7;\n"
        "\tsetAttr \".vQM_solverIterationCount\" 4;\n"
        "\tsetAttr \".vQM_projection\" yes;\n")));
    std::string line = lineOf(h, "", "body");
    EXPECT_EQ(line, "    <TransformGroup name=\"body\" dynamic=\"true\" collision=\"false\" staticFriction=\"0.75\" "
                    "collisionMask=\"7\" nodeId=\"1\"/>")
        << "density within 0.0001 of its default, values at their defaults and joint attributes stay out";
}

TEST(TransformAttributes, PhysicsJointsWriteJointAttributesAndEnabledLimits)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene(
        "createNode transform -n \"hinge\";\n"
        "\taddAttr -ci true -sn \"vQM_joint\" -ln \"vQM_joint\" -at \"bool\";\n"
        "\taddAttr -ci true -sn \"vQM_dynamic\" -ln \"vQM_dynamic\" -at \"bool\";\n"
        "\taddAttr -ci true -sn \"vQM_drivePos\" -ln \"vQM_drivePos\" -at \"bool\";\n"
        "\taddAttr -ci true -sn \"vQM_driveSpring\" -ln \"vQM_driveSpring\" -at \"float\";\n"
        "\tsetAttr \".vQM_joint\" yes;\n"
        "\tsetAttr \".vQM_dynamic\" yes;\n"
        "\tsetAttr \".vQM_drivePos\" yes;\n"
        "\tsetAttr \".vQM_driveSpring\" 20;\n"
        "\tsetAttr \".mnrl\" -type \"double3\" -45 -30 -10 ;\n"
        "\tsetAttr \".mxrl\" -type \"double3\" 45 30 10 ;\n"
        "\tsetAttr \".mrze\" yes;\n"
        "\tsetAttr \".mrxe\" yes;\n"
        "\tsetAttr \".xrye\" yes;\n"
        "\tsetAttr \".xtl\" -type \"double3\" 1 2 3 ;\n"
        "\tsetAttr \".xtze\" yes;\n"
        "createNode joint -n \"skeletal\";\n"
        "\tsetAttr \".jo\" -type \"double3\" 0 0 90 ;\n"
        "\tsetAttr \".mrxe\" yes;\n")));
    std::string scene = sceneOf(h.run("-ignbp"));
    EXPECT_EQ(elementLine(scene, "hinge"),
              "    <TransformGroup name=\"hinge\" joint=\"true\" drivePos=\"true\" driveSpring=\"20\" rotMinX=\"-45\" "
              "rotMinZ=\"-10\" rotMaxY=\"30\" transMaxZ=\"3\" nodeId=\"1\"/>")
        << "the group table (dynamic) is not written for a physics joint";
    std::string skeletal = elementLine(scene, "skeletal");
    EXPECT_EQ(attributeOf(skeletal, "joint"), "<none>") << "a host joint is no physics joint";
    EXPECT_EQ(attributeOf(skeletal, "rotMinX"), "<none>");
    EXPECT_ANGLES_NEAR(attributeOf(skeletal, "rotation"), 0, 0, 90);
}

}  // namespace
