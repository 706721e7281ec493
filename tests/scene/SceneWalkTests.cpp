// The walk of the Scene stage through the real command: what the filter keeps, selection, IK,
// cameras, node ids and instances.
#include "SceneTestSupport.h"


using namespace scenetest;
using vqmtest::ExportHarness;
using vqmtest::ExportRun;

namespace {

TEST(SceneWalk, AnEmptySceneWritesTheFrameOnly)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("")));
    ExportRun r = h.run("-shap -l -cams");
    ASSERT_TRUE(r.ok);
    EXPECT_EQ(sceneOf(r), "  <Scene>\n  </Scene>\n") << "the startup cameras are default cameras";
    EXPECT_TRUE(r.warnings().empty());
}

TEST(SceneWalk, NestedGroupsAreWrittenInPreOrderWithIdsInDocumentOrder)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode transform -n \"root\";\n"
                                    "createNode transform -n \"a\" -p \"root\";\n"
                                    "createNode transform -n \"a1\" -p \"a\";\n"
                                    "createNode transform -n \"b\" -p \"root\";\n"
                                    "createNode transform -n \"other\";\n")));
    ExportRun r = h.run("");
    EXPECT_EQ(sceneOf(r), "  <Scene>\n"
                          "    <TransformGroup name=\"root\" nodeId=\"1\">\n"
                          "      <TransformGroup name=\"a\" nodeId=\"2\">\n"
                          "        <TransformGroup name=\"a1\" nodeId=\"3\"/>\n"
                          "      </TransformGroup>\n"
                          "      <TransformGroup name=\"b\" nodeId=\"4\"/>\n"
                          "    </TransformGroup>\n"
                          "    <TransformGroup name=\"other\" nodeId=\"5\"/>\n"
                          "  </Scene>\n");
}

TEST(SceneWalk, ChildlessTransformsStayAndTransformsWithOnlyRefusedChildrenGo)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode transform -n \"empty\";\n"
                                    "createNode transform -n \"boxGroup\";\n"
                                    "createNode transform -n \"box\" -p \"boxGroup\";\n"
                                    "createNode mesh -n \"boxShape\" -p \"box\";\n"
                                    "createNode transform -n \"xshaderBallGeom1y\";\n"
                                    "createNode mesh -n \"ballShape\" -p \"xshaderBallGeom1y\";\n"
                                    "createNode transform -n \"lamp\";\n"
                                    "createNode pointLight -n \"lampShape\" -p \"lamp\";\n"
                                    "createNode transform -n \"curve\";\n"
                                    "createNode nurbsCurve -n \"curveShape\" -p \"curve\";\n")));
    ExportRun plain = h.run("");
    std::string scene = sceneOf(plain);
    EXPECT_NE(elementLine(scene, "empty"), "");
    for (const char* dropped : {"box", "xshaderBallGeom1y", "lamp", "curve"})
        EXPECT_EQ(elementLine(scene, dropped), "") << dropped << " has no accepted child without the flags";
    // A child transform accepts its parent, whatever the filter later says of the child itself.
    EXPECT_NE(scene.find("    <TransformGroup name=\"boxGroup\" nodeId=\"2\">\n    </TransformGroup>\n"),
              std::string::npos)
        << scene;

    scene = sceneOf(h.run("-shap -l -nc"));
    for (const char* kept : {"box", "boxGroup", "lamp", "curve"}) EXPECT_NE(elementLine(scene, kept), "") << kept;
    EXPECT_EQ(elementLine(scene, "xshaderBallGeom1y"), "") << "material view geometry is never exported";
    EXPECT_EQ(elementLine(sceneOf(h.run("-shap")), "curve"), "") << "curves need -nc as well as -shap";
}

TEST(SceneWalk, IntermediateMeshesAndBoundingVolumesAreNoShapes)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene(
        "createNode transform -n \"onlyOrig\";\n"
        "createNode mesh -n \"onlyOrigShape\" -p \"onlyOrig\";\n"
        "\tsetAttr \".io\" yes;\n"
        "createNode transform -n \"volume\";\n"
        "\taddAttr -ci true -sn \"vQM_boundingVolume\" -ln \"vQM_boundingVolume\" -dt \"string\";\n"
        "\tsetAttr \".vQM_boundingVolume\" -type \"string\" \"target\";\n"
        "createNode mesh -n \"volumeShape\" -p \"volume\";\n"
        "createNode transform -n \"target\";\n"
        "createNode mesh -n \"targetShape\" -p \"target\";\n")));
    auto stage = runStage(true, false);
    ASSERT_TRUE(stage->ok);
    vqm::NodeMap& nodes = stage->nodes;
    EXPECT_EQ(elementLine(stage->text, "onlyOrig"), "");
    EXPECT_EQ(elementLine(stage->text, "volume"), "") << "a volume mesh alone under its transform writes nothing";
    EXPECT_NE(elementLine(stage->text, "target"), "");
    EXPECT_EQ(nodes.count("volume"), 0u) << "and its transform gets no node id";
    ASSERT_EQ(stage->boundingVolumes.size(), 1u);
    EXPECT_EQ(stage->boundingVolumes.begin()->first, "target");
    EXPECT_EQ(MFnDependencyNode(stage->boundingVolumes.begin()->second.mesh).name(), "volumeShape");
    EXPECT_EQ(MFnDependencyNode(stage->boundingVolumes.begin()->second.transform).name(), "volume");
}

TEST(SceneWalk, DefaultCamerasNeedTheirFlagOtherCamerasDoNot)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode transform -n \"persp1\";\n"
                                    "createNode camera -n \"persp1Shape\" -p \"persp1\";\n"
                                    "createNode transform -n \"shaderBallCamera1\";\n"
                                    "createNode camera -n \"ballCameraShape\" -p \"shaderBallCamera1\";\n")));
    ExportRun withoutCameras = h.run("");
    EXPECT_EQ(sceneOf(withoutCameras), "  <Scene>\n  </Scene>\n");

    ExportRun cameras = h.run("-cams");
    std::string scene = sceneOf(cameras);
    EXPECT_NE(elementLine(scene, "persp1"), "");
    for (const char* name : {"persp", "top", "front", "side", "shaderBallCamera1"})
        EXPECT_EQ(elementLine(scene, name), "") << name;
    ASSERT_EQ(cameras.warnings().size(), 1u);
    EXPECT_EQ(cameras.warnings()[0], "vqmExport: Skipping shaderBallCamera1");

    scene = sceneOf(h.run("-cams -dcams"));
    for (const char* name : {"persp", "top", "front", "side", "persp1"}) EXPECT_NE(elementLine(scene, name), "") << name;
    EXPECT_EQ(elementLine(sceneOf(h.run("-dcams")), "persp"), "") << "-dcams alone exports no camera";
}

TEST(SceneWalk, MaterialViewAreaLightsAreSkippedWithAWarning)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode transform -n \"MayaMtlView_Area1\";\n"
                                    "createNode areaLight -n \"areaShape\" -p \"MayaMtlView_Area1\";\n"
                                    "createNode transform -n \"MayaMtlView_Point1\";\n"
                                    "createNode pointLight -n \"pointShape\" -p \"MayaMtlView_Point1\";\n")));
    ExportRun r = h.run("-l");
    EXPECT_EQ(elementLine(sceneOf(r), "MayaMtlView_Area1"), "");
    EXPECT_NE(elementLine(sceneOf(r), "MayaMtlView_Point1"), "") << "only area lights are material view lights";
    ASSERT_EQ(r.warnings().size(), 1u);
    EXPECT_EQ(r.warnings()[0], "vqmExport: Skipping area light MayaMtlView_Area1");
}

TEST(SceneWalk, IkHandlesAndEffectorsGoWithTheirSubtreeUnlessAsked)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode joint -n \"hip\";\n"
                                    "createNode joint -n \"knee\" -p \"hip\";\n"
                                    "createNode ikEffector -n \"effector1\" -p \"hip\";\n"
                                    "createNode ikHandle -n \"ikHandle1\";\n"
                                    "createNode transform -n \"underHandle\" -p \"ikHandle1\";\n")));
    std::string scene = sceneOf(h.run("-ignbp"));
    EXPECT_NE(elementLine(scene, "knee"), "");
    for (const char* name : {"effector1", "ikHandle1", "underHandle"}) EXPECT_EQ(elementLine(scene, name), "") << name;
    scene = sceneOf(h.run("-ignbp -ik"));
    for (const char* name : {"effector1", "ikHandle1", "underHandle"}) EXPECT_NE(elementLine(scene, name), "") << name;
}

TEST(SceneWalk, SelectionExportsSelectedNodesWithTheirAncestorsOnly)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode transform -n \"world1\";\n"
                                    "createNode transform -n \"street\" -p \"world1\";\n"
                                    "createNode transform -n \"lamp\" -p \"street\";\n"
                                    "createNode transform -n \"bulb\" -p \"lamp\";\n"
                                    "createNode transform -n \"bench\" -p \"street\";\n"
                                    "createNode transform -n \"park\" -p \"world1\";\n"
                                    "createNode transform -n \"loose\";\n"
                                    "select -r lamp loose;\n")));
    ExportRun r = h.run("-sel");
    EXPECT_EQ(sceneOf(r), "  <Scene>\n"
                          "    <TransformGroup name=\"world1\" nodeId=\"1\">\n"
                          "      <TransformGroup name=\"street\" nodeId=\"2\">\n"
                          "        <TransformGroup name=\"lamp\" nodeId=\"3\">\n"
                          "        </TransformGroup>\n"
                          "      </TransformGroup>\n"
                          "    </TransformGroup>\n"
                          "    <TransformGroup name=\"loose\" nodeId=\"4\"/>\n"
                          "  </Scene>\n")
        << "the lamp's child, its sibling and the other branch are not selected; the unselected child still "
           "opens the lamp's element";
    EXPECT_NE(elementLine(sceneOf(h.run("")), "bench"), "") << "without -sel everything goes";
}

TEST(SceneWalk, AnInstancedTransformHasTwoElementsAndOneNodeMapEntry)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode transform -n \"left\";\n"
                                    "createNode transform -n \"right\";\n"
                                    "createNode transform -n \"wheel\" -p \"left\";\n"
                                    "\tsetAttr \".tx\" 4;\n"
                                    "parent -add \"|left|wheel\" \"right\";\n")));
    ExportRun r = h.run("");
    std::string scene = sceneOf(r);
    std::string first = elementLine(scene, "wheel", 0), second = elementLine(scene, "wheel", 1);
    EXPECT_EQ(attributeOf(first, "nodeId"), "2");
    EXPECT_EQ(attributeOf(second, "nodeId"), "4");
    EXPECT_EQ(attributeOf(second, "translation"), "4 0 0");

    auto stage = runStage(false, false);
    ASSERT_TRUE(stage->ok);
    vqm::NodeMap& nodes = stage->nodes;
    EXPECT_EQ(stage->text, scene) << "the command and the stage on its own agree";
    ASSERT_EQ(nodes.size(), 3u);
    ASSERT_EQ(nodes.count("left|wheel"), 1u) << "both instances share the function set's partial path name";
    EXPECT_EQ(nodes["left|wheel"].nodeId, 4u) << "the later element's id";
    EXPECT_EQ(nodes["left"].nodeId, 1u);
    EXPECT_EQ(nodes["right"].nodeId, 3u);
}

TEST(SceneWalk, SameShortNamesGetTheirOwnNodeMapEntries)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode transform -n \"a\";\n"
                                    "createNode transform -n \"door\" -p \"a\";\n"
                                    "createNode transform -n \"b\";\n"
                                    "createNode transform -n \"door\" -p \"b\";\n")));
    auto stage = runStage(false, false);
    ASSERT_TRUE(stage->ok);
    vqm::NodeMap& nodes = stage->nodes;
    EXPECT_EQ(nodes["a|door"].nodeId, 2u);
    EXPECT_EQ(nodes["b|door"].nodeId, 4u);
    EXPECT_EQ(nodes.count("door"), 0u);
}

TEST(SceneWalk, TwoRunsGiveTheSameDocument)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode joint -n \"j\";\n\tsetAttr \".jo\" -type \"double3\" 10 20 30;\n"
                                    "createNode transform -n \"t\" -p \"j\";\n\tsetAttr \".r\" -type \"double3\" 1 2 3;\n")));
    ExportRun first = h.run("-shap -l -cams"), second = h.run("-shap -l -cams");
    EXPECT_EQ(first.document, second.document);
    EXPECT_EQ(first.warnings(), second.warnings());
}

// Scenes written by Maya itself: every one exports, and what the walk writes stands in order.
TEST(SceneWalk, RealScenesExport)
{
    std::string directory = VQM_SHARED_SCENES_DIR;
    if (!vqmtest::fileExists(directory + "/GrassRigSkinned_m2017.ma")) GTEST_SKIP() << "no shared scenes";
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(vqmtest::readWholeFile(directory + "/GrassRigSkinned_m2017.ma")));
    ExportRun grass = h.run("-shap -l -cams");
    ASSERT_TRUE(grass.ok);
    EXPECT_TRUE(grass.warnings().empty()) << grass.warnings().front() << ": the joints have a bind pose";
    std::string scene = sceneOf(grass);
    EXPECT_EQ(attributeOf(elementLine(scene, "grass_jnt_start"), "translation"), "0 -15 0");
    EXPECT_ANGLES_NEAR(attributeOf(elementLine(scene, "grass_jnt_start"), "rotation"), 0, 0, 90);
    EXPECT_ANGLES_NEAR(attributeOf(elementLine(scene, "grass_jnt_end"), "rotation"), 0, 0, -90);
    EXPECT_EQ(attributeOf(elementLine(scene, "grass_jnt_mid"), "rotation"), "<none>");
    EXPECT_EQ(attributeOf(elementLine(scene, "grass_jnt_end"), "nodeId"), "5");

    ASSERT_TRUE(h.loadScene(vqmtest::readWholeFile(directory + "/FireExtBoxLockedNormals_m2014.ma")));
    scene = sceneOf(h.run("-shap"));
    EXPECT_EQ(count(scene, " name=\"Box\""), 2) << "two transforms share the short name";
    EXPECT_EQ(attributeOf(elementLine(scene, "Handle"), "nodeId"), "5");

    ASSERT_TRUE(h.loadScene(vqmtest::readWholeFile(directory + "/PictureFrame_m2016.ma")));
    ExportRun frame = h.run("-shap");
    EXPECT_NE(elementLine(sceneOf(frame), "pCube2"), "");
}

}  // namespace
