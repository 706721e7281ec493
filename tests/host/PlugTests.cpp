// Plugs, attributes and connections of the stand-in, and the host commands the exporter runs.
#include <maya/MArgList.h>
#include <maya/MDistance.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MPlugArray.h>
#include <maya/MSelectionList.h>

#include "Session.h"
#include "mayaascii/MayaAsciiReader.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

MFnDependencyNode node(const char* name)
{
    MSelectionList list;
    MObject object;
    if (list.add(MString(name))) list.getDependNode(0, object);
    return MFnDependencyNode(object);
}

void load(const std::string& text, const std::string& fileName = "/scenes/plugs.ma")
{
    std::string error;
    ASSERT_TRUE(vqmhost::readMayaAsciiText(text, fileName, error)) << error;
}

TEST(Plugs, ArraysHaveLogicalAndPhysicalIndices)
{
    load("createNode skinCluster -n \"skin\";\n"
         "\tsetAttr -s 2 \".wl[3].w[0:1]\" 0.25 0.75;\n"
         "\tsetAttr \".wl[7].w[2]\" 1;\n");
    MPlug weightList = node("skin").findPlug("weightList");
    ASSERT_TRUE(weightList.isArray());
    ASSERT_EQ(weightList.numElements(), 2u);
    MPlug second = weightList.elementByPhysicalIndex(1);
    EXPECT_EQ(second.logicalIndex(), 7u);
    MPlug weights = weightList.elementByLogicalIndex(3).child(0);
    MIntArray indices;
    weights.getExistingArrayAttributeIndices(indices);
    ASSERT_EQ(indices.length(), 2u);
    EXPECT_EQ(indices[1], 1);
    EXPECT_DOUBLE_EQ(weights.elementByLogicalIndex(1).asDouble(), 0.75);
    EXPECT_EQ(second.child(0).elementByPhysicalIndex(0).logicalIndex(), 2u);
    EXPECT_EQ(weights.name(), MString("skin.wl[3].w"));
    EXPECT_EQ(weights.elementByLogicalIndex(1).partialName(false, false, false, false, true, true),
              MString("weightList[3].weights[1]"));
}

TEST(Plugs, CompoundChildrenDefaultsAndUnits)
{
    load("currentUnit -l meter -a degree -t film;\n"
         "createNode transform -n \"t\";\n"
         "\tsetAttr \".t\" -type \"double3\" 1 -2 0.5 ;\n"
         "\tsetAttr \".r\" -type \"double3\" 90 0 0 ;\n");
    MFnDependencyNode t = node("t");
    // Stored in internal units: centimetres and radians.
    EXPECT_DOUBLE_EQ(t.findPlug("translateY").asDouble(), -200.0);
    EXPECT_DOUBLE_EQ(t.findPlug("tz").asDouble(), 50.0);
    EXPECT_NEAR(t.findPlug("rx").asDouble(), M_PI / 2, 1e-12);
    MPlug translate = t.findPlug("t");
    ASSERT_TRUE(translate.isCompound());
    ASSERT_EQ(translate.numChildren(), 3u);
    EXPECT_DOUBLE_EQ(translate.child(0).asDouble(), 100.0);
    // Unset attributes read their defaults.
    EXPECT_DOUBLE_EQ(t.findPlug("sx").asDouble(), 1.0);
    EXPECT_TRUE(t.findPlug("v").asBool());
    EXPECT_DOUBLE_EQ(MDistance::uiToInternal(1.0), 100.0);
    EXPECT_EQ(MDistance::uiUnit(), MDistance::kMeters);
}

TEST(Plugs, ReadsRefuseOtherTypesAndLeaveTheVariable)
{
    load("createNode transform -n \"t\";\n"
         "\taddAttr -ci true -sn \"label\" -ln \"label\" -dt \"string\";\n"
         "\taddAttr -ci true -sn \"vQM_weight\" -ln \"vQM_weight\" -at \"double\" -dv 2.5;\n"
         "\tsetAttr \".label\" -type \"string\" \"crate\";\n");
    MFnDependencyNode t = node("t");
    bool flag = true;
    EXPECT_FALSE(t.findPlug("label").getValue(flag));
    EXPECT_TRUE(flag);
    MString text;
    EXPECT_FALSE(t.findPlug("tx").getValue(text)) << "a number is no string";
    EXPECT_TRUE(t.findPlug("label").getValue(text));
    EXPECT_EQ(text, MString("crate"));
    EXPECT_DOUBLE_EQ(t.findPlug("vQM_weight").asDouble(), 2.5);
    MStatus status;
    t.findPlug("noSuchAttribute", &status);
    EXPECT_FALSE(status);
    EXPECT_EQ(t.attributeClass(t.attribute("vQM_weight")), MFnDependencyNode::kLocalDynamicAttr);
    EXPECT_EQ(t.attributeClass(t.attribute("translate")), MFnDependencyNode::kNormalAttr);
    EXPECT_TRUE(t.findPlug("vQM_weight").isDynamic());
}

TEST(Connections, DestinationsReadTheirSourceAndListBothWays)
{
    load("createNode transform -n \"a\";\n"
         "\tsetAttr \".tx\" 4;\n"
         "createNode transform -n \"b\";\n"
         "createNode shadingEngine -n \"sg\";\n"
         "createNode mesh -n \"m1\" -p \"a\";\n"
         "createNode mesh -n \"m2\" -p \"b\";\n"
         "connectAttr \"a.tx\" \"b.ty\";\n"
         "connectAttr \"m1.iog\" \"sg.dsm\" -na;\n"
         "connectAttr \"m2.iog\" \"sg.dsm\" -na;\n");
    EXPECT_DOUBLE_EQ(node("b").findPlug("ty").asDouble(), 4.0);
    MPlugArray far;
    EXPECT_TRUE(node("b").findPlug("ty").connectedTo(far, true, false));
    ASSERT_EQ(far.length(), 1u);
    EXPECT_EQ(far[0].name(), MString("a.tx"));
    EXPECT_FALSE(node("b").findPlug("ty").connectedTo(far, false, true));
    MPlug members = node("sg").findPlug("dagSetMembers");
    ASSERT_EQ(members.numElements(), 2u) << "each -na connection takes the next free index";
    EXPECT_TRUE(members.elementByLogicalIndex(1).connectedTo(far, true, false));
    EXPECT_EQ(MFnDependencyNode(far[0].node()).name(), MString("m2"));
    MPlugArray connected;
    node("sg").getConnections(connected);
    EXPECT_EQ(connected.length(), 2u);
}

TEST(HostCommands, SceneNameAndWorkspace)
{
    load("createNode transform -n \"t\";\n", "/projects/level/scenes/level.ma");
    MString result;
    ASSERT_TRUE(MGlobal::executeCommand("file -q -sceneName", result));
    EXPECT_EQ(result, MString("/projects/level/scenes/level.ma"));
    load("createNode transform -n \"t\";\n", "");
    ASSERT_TRUE(MGlobal::executeCommand("file -q -sceneName", result));
    EXPECT_EQ(result, MString(""));

    std::vector<std::string> errors;
    vqmhost::setMessageSink([&](vqmhost::MessageKind kind, const std::string& text) {
        if (kind == vqmhost::MessageKind::Error) errors.push_back(text);
    });
    vqmhost::clearWorkspace();
    EXPECT_FALSE(MGlobal::executeCommand("workspace -expandName \"\"", result)) << "no workspace: the command fails";
    EXPECT_EQ(errors.size(), 1u);
    vqmhost::setWorkspaceRoot("/projects/level");
    ASSERT_TRUE(MGlobal::executeCommand("workspace -expandName \"\"", result));
    EXPECT_EQ(result, MString("/projects/level/"));
    ASSERT_TRUE(MGlobal::executeCommand("workspace -fileRuleEntry \"sourceImages\"", result));
    EXPECT_EQ(result, MString("sourceimages"));
    vqmhost::setWorkspaceFileRule("sourceImages", "textures");
    ASSERT_TRUE(MGlobal::executeCommand("workspace -fileRuleEntry \"sourceImages\";", result));
    EXPECT_EQ(result, MString("textures"));
    EXPECT_FALSE(MGlobal::executeCommand("noSuchCommand -x"));
    EXPECT_FALSE(MGlobal::executeCommand("file -q -sceneName \"unterminated"));
    vqmhost::setWorkspaceFileRule("sourceImages", "sourceimages");
    vqmhost::clearWorkspace();
    vqmhost::setMessageSink(nullptr);
}

TEST(HostCommands, ArgListFindsFlagsByEitherName)
{
    MArgList args;
    args.addArg("-f").addArg("out.vqm").addArg("-shapes").addArg("-5").addArg("-ik");
    EXPECT_EQ(args.flagIndex("f", "file"), 0u);
    EXPECT_EQ(args.flagIndex("shap", "shapes"), 2u);
    EXPECT_EQ(args.flagIndex("ik", "ik"), 4u);
    EXPECT_EQ(args.flagIndex("n", "normals"), MArgList::kInvalidArgIndex);
    EXPECT_EQ(args.asString(1), MString("out.vqm"));
    MStatus status;
    args.asString(5, &status);
    EXPECT_FALSE(status);
    EXPECT_EQ(args.asInt(3), -5);
}

}  // namespace
