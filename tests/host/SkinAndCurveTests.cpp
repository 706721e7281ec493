// Skin cluster weights and influences, the geometry iterator, and NURBS curves from scene files.
#include <maya/MDagPathArray.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MFnNurbsCurve.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MItGeometry.h>
#include <maya/MPointArray.h>
#include <maya/MSelectionList.h>

#include "Session.h"
#include "mayaascii/MayaAsciiReader.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

MObject find(const char* name)
{
    MSelectionList list;
    MObject object;
    if (list.add(MString(name))) list.getDependNode(0, object);
    return object;
}

void load(const std::string& text)
{
    std::string error;
    ASSERT_TRUE(vqmhost::readMayaAsciiText(text, "/scenes/skin.ma", error)) << error;
}

// Influences on matrix[0] and matrix[2]; matrix[1] has no influence; vertex 1 has no weights.
const char* const kSkin =
    "createNode joint -n \"a\";\n"
    "createNode joint -n \"b\" -p \"a\";\n"
    "createNode transform -n \"leaf\";\n"
    "createNode mesh -n \"leafShape\" -p \"leaf\";\n"
    "createNode mesh -n \"leafShapeOrig\" -p \"leaf\";\n"
    "\tsetAttr \".io\" yes;\n"
    "\tsetAttr -s 3 \".vt[0:2]\" 0 0 0 1 0 0 0 1 0;\n"
    "\tsetAttr -s 3 \".ed[0:2]\" 0 1 0 1 2 0 2 0 0;\n"
    "\tsetAttr \".fc[0]\" -type \"polyFaces\" f 3 0 1 2;\n"
    "createNode skinCluster -n \"skin\";\n"
    "\tsetAttr \".wl[0].w[0]\" 0.25;\n"
    "\tsetAttr \".wl[0].w[2]\" 0.75;\n"
    "\tsetAttr \".wl[2].w[2]\" 1;\n"
    "\tsetAttr \".en\" 0.5;\n"
    "\tsetAttr \".ma[1]\" -type \"matrix\" 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1;\n"
    "connectAttr \"leafShapeOrig.w\" \"skin.ip[0].ig\";\n"
    "connectAttr \"skin.og[0]\" \"leafShape.i\";\n"
    "connectAttr \"a.wm\" \"skin.ma[0]\";\n"
    "connectAttr \"b.wm\" \"skin.ma[2]\";\n";

}  // namespace

TEST(SkinCluster, InfluencesWeightsPathsAndEnvelope)
{
    load(kSkin);
    MFnSkinCluster skin(find("skin"));
    MDagPathArray influences;
    ASSERT_EQ(skin.influenceObjects(influences), 2u);
    EXPECT_EQ(influences[0].partialPathName(), MString("a"));
    EXPECT_EQ(influences[1].partialPathName(), MString("b"));

    MObject shape = find("leafShape");
    MStatus status;
    unsigned index = skin.indexForOutputShape(shape, &status);
    ASSERT_TRUE(status);
    MDagPath path;
    ASSERT_TRUE(skin.getPathAtIndex(index, path));
    EXPECT_EQ(path.node(), shape);
    EXPECT_FALSE(skin.getPathAtIndex(5, path));

    MItGeometry vertices(path);
    ASSERT_EQ(vertices.count(), 3);
    std::vector<std::vector<double>> rows;
    for (; !vertices.isDone(); vertices.next()) {
        MDoubleArray weights;
        unsigned count = 0;
        ASSERT_TRUE(skin.getWeights(path, vertices.component(), weights, count));
        EXPECT_EQ(count, 2u);
        rows.emplace_back(weights.begin(), weights.end());
    }
    EXPECT_EQ(rows, (std::vector<std::vector<double>>{{0.25, 0.75}, {0.0, 0.0}, {0.0, 1.0}}));
    MDoubleArray weights;
    unsigned count = 0;
    EXPECT_FALSE(skin.getWeights(path, MObject::kNullObj, weights, count)) << "no component";

    EXPECT_FLOAT_EQ(skin.envelope(), 0.5f);
    ASSERT_TRUE(skin.setEnvelope(0.0f));
    EXPECT_FLOAT_EQ(skin.envelope(), 0.0f);
}

TEST(NurbsCurve, PeriodicCurveFromSceneDataWithItsFormAttribute)
{
    load("currentUnit -l meter;\n"
         "createNode transform -n \"ring\";\n"
         "createNode nurbsCurve -n \"ringShape\" -p \"ring\";\n"
         "\tsetAttr \".cc\" -type \"nurbsCurve\"\n"
         "\t\t3 4 2 no 3\n"
         "\t\t9 -2 -1 0 1 2 3 4 5 6\n"
         "\t\t7\n"
         "\t\t1 0 0 0 0 1 -1 0 0 0 0 -1 1 0 0 0 0 1 -1 0 0\n"
         "\t\t;\n");
    MFnNurbsCurve curve(find("ringShape"));
    EXPECT_EQ(curve.degree(), 3);
    EXPECT_EQ(curve.numSpans(), 4);
    EXPECT_EQ(curve.numKnots(), 9);
    EXPECT_EQ(curve.form(), MFnNurbsCurve::kPeriodic);
    MPointArray cvs;
    ASSERT_TRUE(curve.getCVs(cvs));
    ASSERT_EQ(cvs.length(), 7u);
    EXPECT_DOUBLE_EQ(cvs[0].x, 100.0) << "metres in the file, centimetres inside";
    EXPECT_DOUBLE_EQ(cvs[2].x, -100.0);
    EXPECT_EQ(MFnDependencyNode(find("ringShape")).findPlug("form").asInt(), 2);
    EXPECT_EQ(MFnDependencyNode(find("ringShape")).findPlug("degree").asInt(), 3);

    MStatus status;
    MFnNurbsCurve notACurve(find("ring"), &status);
    EXPECT_FALSE(status);
}

TEST(NurbsCurve, RealSceneArrow)
{
    std::ifstream file(VQM_SHARED_SCENES_DIR "/TwoWayArrowCurve_m2017.ma");
    if (!file) GTEST_SKIP() << "no shared scenes";
    std::stringstream text;
    text << file.rdbuf();
    load(text.str());
    MFnNurbsCurve curve(find("curveShape1"));
    EXPECT_EQ(curve.degree(), 1);
    EXPECT_EQ(curve.form(), MFnNurbsCurve::kOpen);
    MPointArray cvs;
    ASSERT_TRUE(curve.getCVs(cvs));
    ASSERT_EQ(cvs.length(), 11u);
    EXPECT_NEAR(cvs[3].z, 4.0, 1e-12);
    EXPECT_NEAR(cvs[10].x, -1.0, 1e-12);
}
