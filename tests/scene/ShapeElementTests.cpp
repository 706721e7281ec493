// Shape elements of meshes and curves: rigid-body attributes, the physics meshes they ask for,
// shape keys and ids, materials through shading groups, and attachments folded into one shape.
#include "SceneTestSupport.h"

#include <gtest/gtest.h>

using namespace scenetest;
using vqmtest::ExportHarness;
using vqmtest::ExportRun;

namespace {

std::string attr(const char* name, const char* type)
{
    return std::string("\taddAttr -ci true -sn \"") + name + "\" -ln \"" + name + "\" -at \"" + type + "\";\n";
}

std::string set(const char* name, const std::string& value)
{
    return std::string("\tsetAttr \".") + name + "\" " + value + ";\n";
}

// A transform with a one-triangle mesh below it; transformText goes right after the transform.
std::string triangleMesh(const std::string& name, const std::string& transformText = "",
                         const std::string& parent = "")
{
    return "createNode transform -n \"" + name + "\"" + (parent.empty() ? "" : " -p \"" + parent + "\"") + ";\n" +
           transformText + "createNode mesh -n \"" + name + "Shape\" -p \"" + name + "\";\n" +
           "\tsetAttr -s 3 \".vt[0:2]\" 0 0 0 1 0 0 0 1 0;\n"
           "\tsetAttr -s 3 \".ed[0:2]\" 0 1 0 1 2 0 2 0 0;\n"
           "\tsetAttr \".fc[0]\" -type \"polyFaces\" f 3 0 1 2;\n";
}

// A shading group named group with a lambert named shader on its surfaceShader.
std::string material(const std::string& group, const std::string& shader)
{
    std::string s = "createNode shadingEngine -n \"" + group + "\";\n";
    if (!shader.empty())
        s += "createNode lambert -n \"" + shader + "\";\nconnectAttr \"" + shader + ".oc\" \"" + group + ".ss\";\n";
    return s;
}

std::string assign(const std::string& mesh, const std::string& group)
{
    return "connectAttr \"" + mesh + "Shape.iog\" \"" + group + ".dsm\" -na;\n";
}

}  // namespace

TEST(ShapeElement, RigidBodyWordsAndTableAttributes)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene(
        triangleMesh("plain") +
        triangleMesh("none", attr("vQM_static", "bool") + set("vQM_static", "no") + attr("vQM_splitType", "long") +
                                 set("vQM_splitType", "1")) +
        triangleMesh("moved", attr("vQM_static", "bool") + set("vQM_static", "yes") + attr("vQM_kinematic", "bool") +
                                  set("vQM_kinematic", "yes") + attr("vQM_collisionMask", "long") +
                                  set("vQM_collisionMask", "255") + attr("vQM_staticFriction", "float") +
                                  set("vQM_staticFriction", "0.50005")) +
        triangleMesh("sensor", attr("vQM_trigger", "bool") + set("vQM_trigger", "yes") +
                                   attr("vQM_collisionMask", "long") + set("vQM_collisionMask", "1") +
                                   attr("vQM_staticFriction", "float") + set("vQM_staticFriction", "0.6") +
                                   attr("vQM_collision", "bool") + set("vQM_collision", "no")))));
    ExportRun r = h.run("-shap");
    ASSERT_TRUE(r.ok);
    const std::string scene = sceneOf(r);
    EXPECT_EQ(elementLine(scene, "plain"), "    <Shape name=\"plain\" shapeId=\"1\" static=\"true\" castsShadows=\"true\" "
                                           "receiveShadows=\"true\" materialIds=\"1\" nodeId=\"1\"/>");
    // vQM_static false makes no rigid body: no word, no table, and the split type is not even read
    EXPECT_EQ(elementLine(scene, "none"), "    <Shape name=\"none\" shapeId=\"2\" castsShadows=\"true\" "
                                          "receiveShadows=\"true\" materialIds=\"1\" nodeId=\"2\"/>");
    EXPECT_EQ(elementLine(scene, "moved"), "    <Shape name=\"moved\" shapeId=\"3\" kinematic=\"true\" castsShadows=\"true\" "
                                           "receiveShadows=\"true\" materialIds=\"1\" nodeId=\"3\"/>");
    EXPECT_EQ(elementLine(scene, "sensor"),
              "    <Shape name=\"sensor\" shapeId=\"4\" static=\"true\" collision=\"false\" trigger=\"true\" "
              "staticFriction=\"0.6\" collisionMask=\"1\" castsShadows=\"true\" receiveShadows=\"true\" "
              "materialIds=\"1\" nodeId=\"4\"/>");

    auto stage = runStage(true, false);
    ASSERT_EQ(stage->shapes.size(), 4u);
    auto requests = [&](const char* key) { return stage->shapes.at(key).cookRequests; };
    ASSERT_EQ(requests("plainShape").size(), 1u);
    EXPECT_FALSE(requests("plainShape").begin()->dynamic);
    EXPECT_EQ(requests("plainShape").begin()->x, 40);
    EXPECT_TRUE(requests("noneShape").empty());
    EXPECT_FALSE(stage->shapes.at("noneShape").isSplit);
    ASSERT_EQ(requests("movedShape").size(), 1u);
    EXPECT_TRUE(requests("movedShape").begin()->dynamic);
    ASSERT_EQ(requests("sensorShape").size(), 1u);
    EXPECT_TRUE(requests("sensorShape").begin()->dynamic) << "a trigger cooks as dynamic";
}

TEST(ShapeElement, CompoundChildTakesTheMotionOfItsCompound)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene(
        "createNode transform -n \"body\";\n" + attr("vQM_compound", "bool") + set("vQM_compound", "yes") +
        attr("vQM_dynamic", "bool") + set("vQM_dynamic", "yes") +
        triangleMesh("part", attr("vQM_compoundChild", "bool") + set("vQM_compoundChild", "yes") +
                                 attr("vQM_static", "bool") + set("vQM_static", "yes"),
                     "body"))));
    const std::string scene = sceneOf(h.run("-shap"));
    EXPECT_EQ(elementLine(scene, "part"), "      <Shape name=\"part\" shapeId=\"1\" compoundChild=\"true\" "
                                          "castsShadows=\"true\" receiveShadows=\"true\" materialIds=\"1\" nodeId=\"2\"/>");
    auto stage = runStage(true, false);
    const auto& requests = stage->shapes.at("partShape").cookRequests;
    ASSERT_EQ(requests.size(), 1u);
    EXPECT_TRUE(requests.begin()->dynamic);
}

TEST(ShapeElement, InstancesShareOneShapeAndSplitKeysStandApart)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene(
        triangleMesh("rock") + "createNode transform -n \"rock2\";\n" + attr("vQM_dynamic", "bool") +
        set("vQM_dynamic", "yes") + "parent -add -s \"rockShape\" \"rock2\";\n" +
        "createNode transform -n \"rock3\";\n" + attr("vQM_splitType", "long") + set("vQM_splitType", "1") +
        attr("vQM_splitMinU", "float") + set("vQM_splitMinU", "0.25") + attr("vQM_splitMinV", "float") +
        attr("vQM_splitMaxU", "float") + set("vQM_splitMaxU", "1") + attr("vQM_splitMaxV", "float") +
        set("vQM_splitMaxV", "0.5") + attr("vQM_splitUvWorldScale", "float") + set("vQM_splitUvWorldScale", "2") +
        "parent -add -s \"rockShape\" \"rock3\";\n")));
    const std::string scene = sceneOf(h.run("-shap"));
    EXPECT_EQ(attributeOf(elementLine(scene, "rock"), "shapeId"), "1");
    EXPECT_EQ(attributeOf(elementLine(scene, "rock2"), "shapeId"), "1");
    EXPECT_EQ(attributeOf(elementLine(scene, "rock2"), "dynamic"), "true");
    EXPECT_EQ(attributeOf(elementLine(scene, "rock3"), "shapeId"), "2");
    EXPECT_EQ(attributeOf(elementLine(scene, "rock3"), "splitType"), "1");
    EXPECT_EQ(attributeOf(elementLine(scene, "rock3"), "splitUvs"), "0.25 0 1 0.5 2");

    auto stage = runStage(true, false);
    ASSERT_EQ(stage->shapes.size(), 2u);
    const vqm::ShapeRecord& shared = stage->shapes.begin()->second;
    ASSERT_EQ(stage->shapes.begin()->first, "rock|rockShape");
    ASSERT_EQ(shared.cookRequests.size(), 2u) << "one static and one dynamic physics mesh";
    EXPECT_FALSE(shared.cookRequests.begin()->dynamic);
    EXPECT_TRUE(shared.cookRequests.rbegin()->dynamic);
    // an instanced mesh is named by its first path, whichever instance asks
    auto split = stage->shapes.find("rock|rockShape*SplitShape*");
    ASSERT_NE(split, stage->shapes.end());
    EXPECT_TRUE(split->second.isSplit);
    EXPECT_TRUE(split->second.cookRequests.empty()) << "split shapes ask for no physics mesh";
}

TEST(ShapeElement, MaterialsComeFromTheShadingGroupsInTheirOrder)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene(
        material("bareSG", "") + material("redSG", "red") + material("redAgainSG", "") +
        "connectAttr \"red.oc\" \"redAgainSG.ss\";\n" + material("blueSG", "blue") + triangleMesh("bare") +
        assign("bare", "bareSG") + triangleMesh("unshaded") +
        "createNode transform -n \"twice\";\n"
        "createNode mesh -n \"twiceShape\" -p \"twice\";\n"
        "\tsetAttr -s 4 \".vt[0:3]\" 0 0 0 1 0 0 0 1 0 1 1 0;\n"
        "\tsetAttr -s 5 \".ed[0:4]\" 0 1 0 1 2 0 2 0 0 1 3 0 3 2 0;\n"
        "\tsetAttr -s 2 \".fc[0:1]\" -type \"polyFaces\" f 3 0 1 2 f 3 3 4 -2;\n"
        "\tsetAttr \".iog[0].og[0].gcl\" -type \"componentList\" 1 \"f[0]\";\n"
        "\tsetAttr \".iog[0].og[1].gcl\" -type \"componentList\" 1 \"f[1]\";\n"
        "connectAttr \"twiceShape.iog.og[0]\" \"redSG.dsm\" -na;\n"
        "connectAttr \"twiceShape.iog.og[1]\" \"redAgainSG.dsm\" -na;\n" +
        triangleMesh("blueOne") + assign("blueOne", "blueSG"))));
    ExportRun r = h.run("-shap");
    ASSERT_TRUE(r.ok);
    const std::string scene = sceneOf(r);
    // ids in order of first use: lambert1 for the bare group, then red, then blue
    EXPECT_EQ(attributeOf(elementLine(scene, "bare"), "materialIds"), "1");
    EXPECT_EQ(attributeOf(elementLine(scene, "unshaded"), "materialIds"), "1");
    EXPECT_EQ(attributeOf(elementLine(scene, "twice"), "materialIds"), "2,2") << "two groups, one shader";
    EXPECT_EQ(attributeOf(elementLine(scene, "blueOne"), "materialIds"), "3");
    ASSERT_EQ(r.warnings().size(), 1u);
    EXPECT_EQ(r.warnings()[0], "vqmExport: ShadingGroup surfaceShader attribute source plug not found (bareSG)\n");
    const std::string materials = vqmtest::section(r.document, "  <Materials>", "  </Materials>");
    EXPECT_NE(materials.find("name=\"lambert1\" materialId=\"1\""), std::string::npos) << materials;
    EXPECT_NE(materials.find("name=\"blue\" materialId=\"3\""), std::string::npos) << materials;
}

TEST(ShapeElement, CurvesAndDecals)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene(
        "createNode transform -n \"path\";\n" + attr("vQM_decalLayer", "long") + set("vQM_decalLayer", "3") +
        attr("vQM_nonRenderable", "bool") + set("vQM_nonRenderable", "yes") + attr("vQM_static", "bool") +
        "\tsetAttr \".t\" -type \"double3\" 1 2 3;\n"
        "createNode nurbsCurve -n \"pathShape\" -p \"path\";\n"
        "\tsetAttr \".cc\" -type \"nurbsCurve\" 1 1 0 no 3 2 0 1 2 0 0 0 1 0 0;\n" +
        triangleMesh("floor", attr("vQM_decalLayer", "long") + set("vQM_decalLayer", "0")))));
    const std::string scene = sceneOf(h.run("-shap -nc"));
    EXPECT_EQ(elementLine(scene, "path"), "    <Shape name=\"path\" translation=\"1 2 3\" shapeId=\"1\" decalLayer=\"3\" "
                                          "nonRenderable=\"true\" nodeId=\"1\"/>");
    EXPECT_EQ(attributeOf(elementLine(scene, "floor"), "decalLayer"), "<none>");
    auto stage = runStage(true, false);
    EXPECT_EQ(stage->shapes.size(), 1u) << "curves need -nc";
}

TEST(ShapeElement, AttachmentsFoldWhileTheyShareOneMaterial)
{
    const std::string split = attr("vQM_splitType", "long") + set("vQM_splitType", "1");
    auto scene = [&](const std::string& secondGroup, const std::string& firstExtra) {
        return maScene(material("woodSG", "wood") + material("metalSG", "metal") + triangleMesh("crate", split) +
                       triangleMesh("a", "", "crate") + assign("a", "woodSG") + firstExtra +
                       triangleMesh("b", "", "crate") + assign("b", secondGroup) + triangleMesh("c", "", "crate") +
                       assign("c", "woodSG"));
    };
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(scene("woodSG", "")));
    std::string text = sceneOf(h.run("-shap"));
    EXPECT_EQ(text, "  <Scene>\n"
                    "    <Shape name=\"crate\" shapeId=\"1\" static=\"true\" splitType=\"1\" castsShadows=\"true\" "
                    "receiveShadows=\"true\" materialIds=\"1\" nodeId=\"1\">\n"
                    "      <Shape name=\"crateAttachments\" shapeId=\"2\" castsShadows=\"true\" receiveShadows=\"true\" "
                    "materialIds=\"2\" nodeId=\"2\"/>\n"
                    "    </Shape>\n"
                    "  </Scene>\n");
    auto stage = runStage(true, false);
    ASSERT_EQ(stage->attachments.size(), 1u);
    EXPECT_EQ(stage->attachments[0]->meshes.size(), 3u);
    EXPECT_EQ(stage->attachments[0]->shapeId, 2u);

    // the second child has another material: it alone is an ordinary element, the third folds in
    ASSERT_TRUE(h.loadScene(scene("metalSG", "")));
    text = sceneOf(h.run("-shap"));
    EXPECT_NE(elementLine(text, "crateAttachments"), "");
    EXPECT_EQ(attributeOf(elementLine(text, "b"), "shapeId"), "3");
    EXPECT_EQ(elementLine(text, "c"), "");
    stage = runStage(true, false);
    ASSERT_EQ(stage->attachments.size(), 1u);
    EXPECT_EQ(stage->attachments[0]->meshes.size(), 2u);

    // a first child with two materials folds nothing in: all are ordinary elements
    ASSERT_TRUE(h.loadScene(scene("woodSG", "\tsetAttr \".iog[0].og[0].gcl\" -type \"componentList\" 1 \"f[0]\";\n"
                                            "connectAttr \"aShape.iog.og[0]\" \"metalSG.dsm\" -na;\n")));
    text = sceneOf(h.run("-shap"));
    EXPECT_EQ(elementLine(text, "crateAttachments"), "");
    for (const char* child : {"a", "b", "c"}) EXPECT_NE(elementLine(text, child), "") << child;
}
