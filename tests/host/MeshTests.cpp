// Meshes in the stand-in: data from scene files, triangles, normals with hard and soft edges,
// shading groups per face, and geometry evaluated through history.
#include <maya/MFloatVectorArray.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MObjectArray.h>
#include <maya/MPlug.h>
#include <maya/MPointArray.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

#include "Session.h"
#include "mayaascii/MayaAsciiReader.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

MObject find(const char* name)
{
    MSelectionList list;
    MObject object;
    if (list.add(MString(name))) list.getDependNode(0, object);
    return object;
}

struct Warnings {
    std::vector<std::string> texts;
    Warnings()
    {
        vqmhost::setMessageSink([this](vqmhost::MessageKind kind, const std::string& text) {
            if (kind == vqmhost::MessageKind::Warning) texts.push_back(text);
        });
    }
    ~Warnings() { vqmhost::setMessageSink(nullptr); }
};

void load(const std::string& text)
{
    std::string error;
    ASSERT_TRUE(vqmhost::readMayaAsciiText(text, "/scenes/mesh.ma", error)) << error;
}

// A unit cube as Maya writes it, with the given smoothing for all edges.
std::string cube(bool soft, const std::string& extra = "")
{
    std::string s = soft ? "1" : "0";
    return "createNode transform -n \"box\";\n"
           "createNode mesh -n \"boxShape\" -p \"box\";\n"
           "\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";\n"
           "\tsetAttr -s 4 \".uvst[0].uvsp[0:3]\" -type \"float2\" 0 0 1 0 1 1 0 1;\n"
           "\tsetAttr \".uvst[1].uvsn\" -type \"string\" \"lightmap\";\n"
           "\tsetAttr -s 1 \".uvst[1].uvsp[0]\" -type \"float2\" 0.5 0.5;\n"
           "\tsetAttr -s 8 \".vt[0:7]\" -0.5 -0.5 0.5 0.5 -0.5 0.5 -0.5 0.5 0.5 0.5 0.5 0.5\n"
           "\t\t -0.5 0.5 -0.5 0.5 0.5 -0.5 -0.5 -0.5 -0.5 0.5 -0.5 -0.5;\n"
           "\tsetAttr -s 12 \".ed[0:11]\" 0 1 " + s + " 2 3 " + s + " 4 5 " + s + " 6 7 " + s +
           " 0 2 " + s + " 1 3 " + s + " 2 4 " + s + "\n\t\t 3 5 " + s + " 4 6 " + s + " 5 7 " + s + " 6 0 " + s +
           " 7 1 " + s + ";\n"
           "\tsetAttr -s 6 -ch 24 \".fc[0:5]\" -type \"polyFaces\" \n"
           "\t\tf 4 0 5 -2 -5\n\t\tmu 0 4 0 1 2 3\n\t\tmu 1 4 0 0 0 0\n"
           "\t\tf 4 1 7 -3 -7\n\t\tmu 0 4 0 1 2 3\n"
           "\t\tf 4 2 9 -4 -9\n"
           "\t\tf 4 3 11 -1 -11\n"
           "\t\tf 4 -12 -10 -8 -6\n"
           "\t\tf 4 10 4 6 8;\n" +
           extra;
}

TEST(Mesh, FacesTrianglesAndUVsPerFaceVertex)
{
    load(cube(false));
    MFnMesh mesh(find("boxShape"));
    EXPECT_EQ(mesh.numVertices(), 8);
    EXPECT_EQ(mesh.numPolygons(), 6);
    EXPECT_EQ(mesh.numFaceVertices(), 24);
    MStringArray sets;
    ASSERT_TRUE(mesh.getUVSetNames(sets));
    ASSERT_EQ(sets.length(), 2u);
    EXPECT_EQ(sets[1], MString("lightmap"));

    MItMeshPolygon it(find("boxShape"));
    MIntArray vertices;
    it.getVertices(vertices);
    ASSERT_EQ(vertices.length(), 4u);
    EXPECT_EQ(vertices[0], 0);
    EXPECT_EQ(vertices[1], 1);
    EXPECT_EQ(vertices[2], 3) << "edge 5 runs 1->3";
    EXPECT_EQ(vertices[3], 2) << "edge -2 is edge 1 backwards";
    int triangles = 0;
    it.numTriangles(triangles);
    EXPECT_EQ(triangles, 2);
    MPointArray points;
    MIntArray corners;
    ASSERT_TRUE(it.getTriangle(1, points, corners));
    EXPECT_EQ(corners.length(), 3u);
    float2 uv;
    MString map1("map1"), lightmap("lightmap");
    ASSERT_TRUE(it.getUV(2, uv, &map1));
    EXPECT_FLOAT_EQ(uv[0], 1.0f);
    EXPECT_FLOAT_EQ(uv[1], 1.0f);
    EXPECT_TRUE(it.getUV(3, uv, &lightmap));
    it.next();
    EXPECT_FALSE(it.getUV(0, uv, &lightmap)) << "the second face has no lightmap UVs";
    unsigned faces = 1;
    for (; !it.isDone(); it.next()) ++faces;
    EXPECT_EQ(faces, 6u);
}

TEST(Mesh, HardEdgesKeepFaceNormalsSoftEdgesAverageThem)
{
    load(cube(false));
    MFloatVectorArray hard;
    ASSERT_TRUE(MFnMesh(find("boxShape")).getNormals(hard));
    ASSERT_EQ(hard.length(), 24u);
    MItMeshPolygon first(find("boxShape"));
    MFloatVector n = hard[unsigned(first.normalIndex(0))];
    EXPECT_FLOAT_EQ(n.x, 0.0f);
    EXPECT_FLOAT_EQ(n.y, 0.0f);
    EXPECT_FLOAT_EQ(n.z, 1.0f) << "the front face points at +z";

    load(cube(true));
    MFloatVectorArray soft;
    ASSERT_TRUE(MFnMesh(find("boxShape")).getNormals(soft));
    MItMeshPolygon again(find("boxShape"));
    n = soft[unsigned(again.normalIndex(0))];  // vertex 0 at (-0.5, -0.5, 0.5)
    const float third = 1.0f / std::sqrt(3.0f);
    EXPECT_NEAR(n.x, -third, 1e-6);
    EXPECT_NEAR(n.y, -third, 1e-6);
    EXPECT_NEAR(n.z, third, 1e-6);

    // Stored normals win over computed ones, where they are given.
    load(cube(true, "\tsetAttr -s 24 \".n[0:23]\" -type \"float3\" 0 0 1 0 0 1 0 0 1 0 0 1"
                    " 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20"
                    " 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20"
                    " 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20"
                    " 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20"
                    " 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20 1e+20;\n"));
    MFloatVectorArray locked;
    ASSERT_TRUE(MFnMesh(find("boxShape")).getNormals(locked));
    EXPECT_FLOAT_EQ(locked[0].z, 1.0f);
    EXPECT_FLOAT_EQ(locked[0].x, 0.0f);
    EXPECT_NEAR(locked[4].z, soft[4].z, 1e-6) << "unset normals stay computed";
}

TEST(Mesh, ConcavePolygonsTriangulateInsideTheirOutline)
{
    // An L-shaped hexagon in the xz plane.
    load("createNode mesh -n \"lShape\";\n"
         "\tsetAttr -s 6 \".vt[0:5]\" 0 0 0 2 0 0 2 0 1 1 0 1 1 0 2 0 0 2;\n"
         "\tsetAttr -s 6 \".ed[0:5]\" 0 1 0 1 2 0 2 3 0 3 4 0 4 5 0 5 0 0;\n"
         "\tsetAttr \".fc[0]\" -type \"polyFaces\" f 6 0 1 2 3 4 5;\n");
    MItMeshPolygon it(find("lShape"));
    int triangles = 0;
    it.numTriangles(triangles);
    ASSERT_EQ(triangles, 4);
    double area = 0.0;
    for (int t = 0; t < triangles; ++t) {
        MPointArray p;
        MIntArray v;
        ASSERT_TRUE(it.getTriangle(t, p, v));
        // Signed area in the xz plane: every triangle keeps the outline's winding.
        double a = 0.5 * ((p[1].x - p[0].x) * (p[2].z - p[0].z) - (p[1].z - p[0].z) * (p[2].x - p[0].x));
        EXPECT_GT(a, 0.0) << "triangle " << t;
        area += a;
    }
    EXPECT_NEAR(area, 3.0, 1e-12) << "the triangles cover the L exactly";
}

TEST(Mesh, ShadingGroupsWholeObjectAndPerFace)
{
    load(cube(false,
              "createNode shadingEngine -n \"redSG\";\n"
              "createNode shadingEngine -n \"blueSG\";\n"
              "connectAttr \"boxShape.iog.og[0]\" \"redSG.dsm\" -na;\n"
              "connectAttr \"boxShape.iog.og[1]\" \"blueSG.dsm\" -na;\n"
              "select -ne boxShape;\n"
              "\tsetAttr \".iog[0].og[0].gcl\" -type \"componentList\" 1 \"f[0:1]\";\n"
              "\tsetAttr \".iog[0].og[1].gcl\" -type \"componentList\" 2 \"f[3]\" \"f[5]\";\n"));
    MObjectArray shaders;
    MIntArray indices;
    ASSERT_TRUE(MFnMesh(find("boxShape")).getConnectedShaders(0, shaders, indices));
    ASSERT_EQ(shaders.length(), 2u);
    EXPECT_EQ(MFnDependencyNode(shaders[0]).name(), MString("redSG"));
    ASSERT_EQ(indices.length(), 6u);
    int expected[] = {0, 0, -1, 1, -1, 1};
    for (unsigned f = 0; f < 6; ++f) EXPECT_EQ(indices[f], expected[f]) << "face " << f;

    load(cube(false, "connectAttr \"boxShape.iog\" \":initialShadingGroup.dsm\" -na;\n"));
    ASSERT_TRUE(MFnMesh(find("boxShape")).getConnectedShaders(0, shaders, indices));
    ASSERT_EQ(shaders.length(), 1u);
    EXPECT_EQ(MFnDependencyNode(shaders[0]).name(), MString("initialShadingGroup"));
    for (unsigned f = 0; f < 6; ++f) EXPECT_EQ(indices[f], 0);
}

TEST(Mesh, BadFacesAreLeftOutWithAWarningNamingTheMesh)
{
    Warnings warnings;
    load("createNode mesh -n \"broken\";\n"
         "\tsetAttr -s 3 \".vt[0:2]\" 0 0 0 1 0 0 0 1 0;\n"
         "\tsetAttr -s 4 \".ed[0:3]\" 0 1 0 1 2 0 2 0 0 2 9 0;\n"
         "\tsetAttr -s 3 \".fc[0:2]\" -type \"polyFaces\" f 3 0 1 2 f 3 0 -4 2 f 2 0 1;\n");
    EXPECT_EQ(warnings.texts.size(), 1u) << "the two-corner face is left out while loading";
    MFnMesh mesh(find("broken"));
    EXPECT_EQ(mesh.numPolygons(), 1) << "the face through vertex 9 goes too";
    ASSERT_EQ(warnings.texts.size(), 2u);
    EXPECT_NE(warnings.texts[1].find("'broken'"), std::string::npos) << warnings.texts[1];
    EXPECT_NE(warnings.texts[1].find("vertex 9"), std::string::npos) << warnings.texts[1];
    mesh.numVertices();
    EXPECT_EQ(warnings.texts.size(), 2u) << "one warning per evaluation, not per call";
}

// An Orig mesh with tweaks, through group parts into a skin cluster bound to one joint.
const char* const kSkinned =
    "createNode joint -n \"root\";\n"
    "createNode transform -n \"leaf\";\n"
    "createNode mesh -n \"leafShape\" -p \"leaf\";\n"
    "createNode mesh -n \"leafShapeOrig\" -p \"leaf\";\n"
    "\tsetAttr \".io\" yes;\n"
    "\tsetAttr -s 3 \".vt[0:2]\" 0 0 0 1 0 0 0 1 0;\n"
    "\tsetAttr -s 3 \".pt[0:2]\" 0 0 1 0 0 1 0 0 1;\n"
    "\tsetAttr -s 3 \".ed[0:2]\" 0 1 0 1 2 0 2 0 0;\n"
    "\tsetAttr \".fc[0]\" -type \"polyFaces\" f 3 0 1 2;\n"
    "createNode groupParts -n \"parts\";\n"
    "createNode skinCluster -n \"skin\";\n"
    "\tsetAttr -s 3 \".wl\";\n"
    "\tsetAttr \".wl[0].w[0]\" 1;\n"
    "\tsetAttr \".wl[1].w[0]\" 1;\n"
    "\tsetAttr \".wl[2].w[0]\" 0.5;\n"
    "\tsetAttr \".pm[0]\" -type \"matrix\" 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1;\n"
    "connectAttr \"leafShapeOrig.w\" \"parts.ig\";\n"
    "connectAttr \"parts.og\" \"skin.ip[0].ig\";\n"
    "connectAttr \"skin.og[0]\" \"leafShape.i\";\n"
    "connectAttr \"root.wm\" \"skin.ma[0]\";\n";

TEST(Mesh, SkinClustersDeformByTheirInfluencesScaledByTheEnvelope)
{
    load(kSkinned);
    MFnMesh shape(find("leafShape"));
    MPointArray points;
    ASSERT_TRUE(shape.getPoints(points));
    ASSERT_EQ(points.length(), 3u);
    EXPECT_DOUBLE_EQ(points[1].x, 1.0);
    EXPECT_DOUBLE_EQ(points[1].z, 1.0) << "tweaks of the Orig mesh pass through";

    // Moving the joint moves the points by their weights.
    MFnDependencyNode root(find("root"));
    root.findPlug("tx").setValue(2.0);
    ASSERT_TRUE(shape.getPoints(points));
    EXPECT_DOUBLE_EQ(points[1].x, 3.0);
    EXPECT_DOUBLE_EQ(points[2].x, 1.0) << "half weighted";

    // Envelope 0 gives the undeformed input; 0.5 half the deformation.
    MFnDependencyNode skin(find("skin"));
    skin.findPlug("envelope").setValue(0.0);
    ASSERT_TRUE(shape.getPoints(points));
    EXPECT_DOUBLE_EQ(points[1].x, 1.0);
    skin.findPlug("envelope").setValue(0.5);
    ASSERT_TRUE(shape.getPoints(points));
    EXPECT_DOUBLE_EQ(points[1].x, 2.0);
}

TEST(Mesh, HistoryThatCannotBeEvaluatedGivesNoFacesAndOneWarning)
{
    Warnings warnings;
    std::string scene = kSkinned;
    scene.replace(scene.find("createNode groupParts"), 21, "createNode polySmoothFace");
    load(scene);
    ASSERT_EQ(warnings.texts.size(), 1u) << "the unknown node type";
    MFnMesh shape(find("leafShape"));
    EXPECT_EQ(shape.numPolygons(), 0);
    ASSERT_EQ(warnings.texts.size(), 2u);
    EXPECT_NE(warnings.texts[1].find("cannot evaluate 'parts' of type 'polySmoothFace'"), std::string::npos)
        << warnings.texts[1];
    MItMeshPolygon it(find("leafShape"));
    EXPECT_TRUE(it.isDone());
}

TEST(Mesh, RealScenesShowTheirMeshes)
{
    std::string dir = VQM_SHARED_SCENES_DIR;
    struct Case {
        const char* file;
        const char* mesh;
        int polygons;
    } cases[] = {
        {"PictureFrame_m2016.ma", "Pictureframe", 13},
        {"CupTexturedBump_m2018.ma", nullptr, 180},
        {"GrassRigSkinned_m2017.ma", "md_grass_planeShape", 3},
    };
    for (const Case& c : cases) {
        Warnings warnings;
        std::string error;
        if (!vqmhost::readMayaAsciiFile(dir + "/" + c.file, error)) GTEST_SKIP() << "no shared scenes";
        int total = 0;
        MSelectionList all;
        all.add(c.mesh ? c.mesh : "*");
        for (unsigned i = 0; i < all.length(); ++i) {
            MObject node;
            all.getDependNode(i, node);
            if (node.hasFn(MFn::kMesh) && !MFnMesh(node).isIntermediateObject()) total += MFnMesh(node).numPolygons();
        }
        EXPECT_EQ(total, c.polygons) << c.file;
        for (const std::string& w : warnings.texts) EXPECT_EQ(w.find("mesh '"), std::string::npos) << c.file << ": " << w;
    }
}

}  // namespace
