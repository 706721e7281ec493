// The Maya ASCII reader on text in the form Maya writes, its warnings and its errors.
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MSelectionList.h>

#include "Graph.h"
#include "Session.h"
#include "mayaascii/MayaAsciiReader.h"

#include <gtest/gtest.h>

#include <dirent.h>

namespace {

struct Captured {
    std::vector<std::string> warnings, errors;
    Captured()
    {
        vqmhost::setMessageSink([this](vqmhost::MessageKind kind, const std::string& text) {
            if (kind == vqmhost::MessageKind::Warning) warnings.push_back(text);
            if (kind == vqmhost::MessageKind::Error) errors.push_back(text);
        });
    }
    ~Captured() { vqmhost::setMessageSink(nullptr); }
};

MObject find(const char* name)
{
    MSelectionList list;
    MObject object;
    if (list.add(MString(name))) list.getDependNode(0, object);
    return object;
}

TEST(MayaAsciiReader, ReadsNodesValuesAndDynamicAttributesAsMayaWritesThem)
{
    Captured captured;
    std::string error;
    const char* text =
        "//Maya ASCII 2016 scene\n"
        "//Name: level.ma\n"
        "requires maya \"2016\";\n"
        "currentUnit -l centimeter -a degree -t film;\n"
        "fileInfo \"application\" \"maya\";\n"
        "createNode transform -s -n \"persp\";\n"
        "\trename -uid \"3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C01\";\n"
        "\tsetAttr \".v\" no;\n"
        "createNode transform -n \"crate\";\n"
        "\taddAttr -ci true -sn \"vQM_lod1\" -ln \"vQM_lod1\" -min 0 -at \"double\";\n"
        "\taddAttr -ci true -sn \"vQM_label\" -ln \"vQM_label\" -dt \"string\";\n"
        "\taddAttr -ci true -sn \"tint\" -ln \"tint\" -at \"float3\" -nc 3;\n"
        "\taddAttr -ci true -sn \"tintR\" -ln \"tintR\" -at \"float\" -p \"tint\";\n"
        "\taddAttr -ci true -sn \"tintG\" -ln \"tintG\" -at \"float\" -p \"tint\";\n"
        "\taddAttr -ci true -sn \"tintB\" -ln \"tintB\" -at \"float\" -p \"tint\";\n"
        "\tsetAttr \".t\" -type \"double3\" 0 25\n"
        "\t\t -40 ;\n"
        "\tsetAttr -k on \".vQM_lod1\" 2500;\n"
        "\tsetAttr \".vQM_label\" -type \"string\" \"a \\\"quoted\\\" \" + \n"
        "\t\t\"label\";\n"
        "\tsetAttr \".tint\" -type \"float3\" 0.1 0.2 0.3 ;\n"
        "createNode mesh -n \"crateShape\" -p \"crate\";\n"
        "\tsetAttr -k off \".v\";\n"
        "\tsetAttr \".io\" yes;\n"
        "createNode lambert -n \"crateMat\";\n"
        "\tsetAttr \".c\" -type \"float3\" 0.55 0.38 0.2 ;\n"
        "select -ne :initialShadingGroup;\n"
        "\tsetAttr \".ro\" yes;\n"
        "connectAttr \"crateMat.oc\" \":initialShadingGroup.ss\";\n";
    ASSERT_TRUE(vqmhost::readMayaAsciiText(text, "/scenes/level.ma", error)) << error;
    EXPECT_TRUE(captured.warnings.empty()) << captured.warnings.front();

    MFnDependencyNode crate(find("crate"));
    EXPECT_DOUBLE_EQ(crate.findPlug("tz").asDouble(), -40.0);
    EXPECT_DOUBLE_EQ(crate.findPlug("vQM_lod1").asDouble(), 2500.0);
    EXPECT_EQ(crate.findPlug("vQM_label").asString(), MString("a \"quoted\" label"));
    EXPECT_FLOAT_EQ(crate.findPlug("tintG").asFloat(), 0.2f);
    EXPECT_TRUE(MFnDagNode(find("crateShape")).isIntermediateObject());
    // -s reuses the startup camera instead of making a second one.
    MSelectionList perspList;
    perspList.add("persp");
    EXPECT_EQ(perspList.length(), 1u);
    EXPECT_FALSE(MFnDependencyNode(find("persp")).findPlug("v").asBool());
    EXPECT_TRUE(MFnDependencyNode(find("initialShadingGroup")).findPlug("surfaceShader").isConnected());
    EXPECT_FLOAT_EQ(MFnDependencyNode(find("crateMat")).findPlug("colorG").asFloat(), 0.38f);
}

TEST(MayaAsciiReader, UnknownTypesAndCommandsWarnOncePerLineAndLoadingGoesOn)
{
    Captured captured;
    std::string error;
    const char* text =
        "createNode transform -n \"a\";\n"
        "createNode mysteryDeformer -n \"m1\";\n"
        "\tsetAttr \".strength\" 0.5;\n"
        "polyCube -w 1;\n"
        "file -rdi 1 -ns \"props\" -rfn \"propsRN\" \"C:/assets/props.ma\";\n"
        "connectAttr \"ghost.tx\" \"a.ty\";\n"
        "createNode transform -n \"b\" -p \"a\";\n";
    ASSERT_TRUE(vqmhost::readMayaAsciiText(text, "/s/w.ma", error)) << error;
    ASSERT_EQ(captured.warnings.size(), 4u);
    EXPECT_EQ(captured.warnings[0].rfind("/s/w.ma:2: unknown node type 'mysteryDeformer'", 0), 0u) << captured.warnings[0];
    EXPECT_EQ(captured.warnings[1].rfind("/s/w.ma:4: skipping the command 'polyCube'", 0), 0u) << captured.warnings[1];
    EXPECT_EQ(captured.warnings[2].rfind("/s/w.ma:5: scene references are not loaded", 0), 0u) << captured.warnings[2];
    EXPECT_NE(captured.warnings[2].find("C:/assets/props.ma"), std::string::npos);
    EXPECT_EQ(captured.warnings[3].rfind("/s/w.ma:6: no node 'ghost'", 0), 0u) << captured.warnings[3];
    MObject generic = find("m1");
    ASSERT_FALSE(generic.isNull());
    EXPECT_EQ(MFnDependencyNode(generic).typeName(), MString("mysteryDeformer"));
    EXPECT_DOUBLE_EQ(MFnDependencyNode(generic).findPlug("strength").asDouble(), 0.5);
    EXPECT_TRUE(MFnDagNode(find("b")).isChildOf(find("a")));
}

TEST(MayaAsciiReader, SyntaxErrorsNameFileLineAndColumnAndLeaveNothing)
{
    Captured captured;
    struct Case {
        const char* text;
        const char* where;
        const char* what;
    } cases[] = {
        {"createNode transform -n \"a\";\nsetAttr \".t\" -type \"double3\" 1 2 3\n", ":2:1:", "not closed by ';'"},
        {"createNode transform -n \"a\";\n  setAttr \".n\" -type \"string\" \"open;\n", ":2:31:", "unterminated string"},
        {"createNode transform -n \"a\";\n\"stray\" 1;\n", ":2:1:", "expected a command name"},
        {"createNode transform -n \"a\";\nsetAttr \".x\" -type \"string\" \"a\" + 3;\n", ":2:35:", "'+' must be followed by a string"},
    };
    for (const Case& c : cases) {
        std::string error;
        EXPECT_FALSE(vqmhost::readMayaAsciiText(c.text, "/s/bad.ma", error));
        EXPECT_EQ(error.rfind(std::string("/s/bad.ma") + c.where, 0), 0u) << error;
        EXPECT_NE(error.find(c.what), std::string::npos) << error;
        EXPECT_TRUE(find("a").isNull()) << "a file that does not parse leaves a new, empty scene";
    }
    std::string error;
    EXPECT_FALSE(vqmhost::readMayaAsciiFile("/nonexistent/dir/scene.ma", error));
    EXPECT_NE(error.find("/nonexistent/dir/scene.ma"), std::string::npos);
}

TEST(MayaAsciiReader, ParentAddMakesInstancesAndUnitsConvertOnRead)
{
    std::string error;
    const char* text =
        "currentUnit -l millimeter -a radian -t film;\n"
        "createNode transform -n \"a\";\n"
        "\tsetAttr \".t\" -type \"double3\" 10 0 0 ;\n"
        "\tsetAttr \".ry\" 1.5;\n"
        "\tsetAttr \".s\" -type \"double3\" 2 2 2 ;\n"
        "createNode transform -n \"b\";\n"
        "createNode mesh -n \"shared\" -p \"a\";\n"
        "parent -s -nc -r -add \"|a|shared\" \"b\";\n";
    ASSERT_TRUE(vqmhost::readMayaAsciiText(text, "/s/u.ma", error)) << error;
    MFnDependencyNode a(find("a"));
    EXPECT_DOUBLE_EQ(a.findPlug("tx").asDouble(), 1.0) << "10 mm is 1 cm";
    EXPECT_DOUBLE_EQ(a.findPlug("ry").asDouble(), 1.5) << "radians stay radians";
    EXPECT_DOUBLE_EQ(a.findPlug("sx").asDouble(), 2.0) << "scale has no unit";
    EXPECT_EQ(MFnDagNode(find("shared")).parentCount(), 2u);
}

// Scenes saved by Maya itself: every one loads, with warnings only for what the reader does not know.
TEST(MayaAsciiReader, RealScenesLoad)
{
    DIR* dir = opendir(VQM_SHARED_SCENES_DIR);
    if (!dir) GTEST_SKIP() << "no shared scenes beside the repository";
    std::vector<std::string> scenes;
    while (dirent* entry = readdir(dir)) {
        std::string name = entry->d_name;
        if (name.size() > 3 && name.compare(name.size() - 3, 3, ".ma") == 0) scenes.push_back(name);
    }
    closedir(dir);
    ASSERT_GE(scenes.size(), 5u);
    for (const std::string& name : scenes) {
        Captured captured;
        std::string error;
        std::string path = std::string(VQM_SHARED_SCENES_DIR) + "/" + name;
        EXPECT_TRUE(vqmhost::readMayaAsciiFile(path, error)) << error;
        EXPECT_TRUE(captured.errors.empty()) << name;
        for (const std::string& w : captured.warnings) EXPECT_NE(w.find(path + ":"), std::string::npos) << w;
    }
    std::string error;
    ASSERT_TRUE(vqmhost::readMayaAsciiFile(std::string(VQM_SHARED_SCENES_DIR) + "/FireExtBoxLockedNormals_m2014.ma", error));
    // Two transforms with the same short name: their partial paths tell them apart.
    MSelectionList boxes;
    ASSERT_TRUE(boxes.add("Box"));
    ASSERT_EQ(boxes.length(), 2u);
    MDagPath outer, inner;
    boxes.getDagPath(0, outer);
    boxes.getDagPath(1, inner);
    EXPECT_EQ(outer.partialPathName(), MString("FireExtinguisherBox_FullWindow|Box"));
    EXPECT_EQ(inner.partialPathName(), MString("Box|Box"));
}

}  // namespace
