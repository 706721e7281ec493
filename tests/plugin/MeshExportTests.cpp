// Meshes and curves through the Shapes stage: extraction from the host (corners, UV sets,
// materials, colours, skin weights, tangents), the IndexedTriangleSet element, binary blocks,
// NURBS curves, bad input, and the real scenes.
#include "common/ExportHarness.h"

#include <maya/MFnMesh.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MPointArray.h>
#include <maya/MSelectionList.h>

#include "geometry/MeshBuilder.h"
#include "geometry/MeshExtraction.h"
#include "geometry/ShapesExporter.h"
#include "geometry/TriangleSet.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

using vqmtest::ExportHarness;
using vqmtest::ExportRun;

namespace {

std::string maScene(const std::string& body)
{
    return "//Maya ASCII 2016 scene\nrequires maya \"2016\";\ncurrentUnit -l centimeter -a degree -t film;\n" + body;
}

std::string shapesOf(const ExportRun& run)
{
    return vqmtest::section(run.document, "  <Shapes>", "  </Shapes>");
}

MObject find(const char* name)
{
    MSelectionList list;
    MObject object;
    if (list.add(MString(name))) list.getDependNode(0, object);
    return object;
}

int count(const std::string& text, const std::string& part)
{
    int n = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
    return n;
}

// A unit quad in the xz plane, one face of four corners, with the given extra polyFaces entries.
std::string quad(const std::string& name, const std::string& faceExtra = "", const std::string& meshText = "")
{
    return "createNode transform -n \"" + name + "\";\ncreateNode mesh -n \"" + name + "Shape\" -p \"" + name +
           "\";\n" + meshText +
           "\tsetAttr -s 4 \".vt[0:3]\" -0.5 0 0.5 0.5 0 0.5 -0.5 0 -0.5 0.5 0 -0.5;\n"
           "\tsetAttr -s 4 \".ed[0:3]\" 0 1 0 0 2 0 1 3 0 2 3 0;\n"
           "\tsetAttr \".fc[0]\" -type \"polyFaces\" f 4 0 2 -4 -2" + faceExtra + ";\n";
}

const char* const kQuadUvs =
    "\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";\n"
    "\tsetAttr -s 4 \".uvst[0].uvsp[0:3]\" -type \"float2\" 0 0 1 0 0 1 1 1;\n";

}  // namespace

TEST(MeshExport, QuadEndToEnd)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene(quad("quad", " mu 0 4 0 1 3 2", kQuadUvs) +
                                    "connectAttr \"quadShape.iog\" \":initialShadingGroup.dsm\" -na;\n")));
    // the corners stay unshared until the weld
    vqm::MeshBuilder builder;
    MFnMesh mesh(find("quadShape"));
    MFnSkinCluster noSkin;
    vqm::extractMesh(mesh, noSkin, false, nullptr, nullptr, true, true, false, false, false, 1.0, builder);
    EXPECT_EQ(builder.numTriangles(), 2u);
    EXPECT_EQ(builder.numVertices(), 6u);
    EXPECT_EQ(builder.vertexFlags(), uint32_t(vqm::HasNormal | vqm::HasUv0));

    ExportRun r = h.run("-shap -n -uvs");
    ASSERT_TRUE(r.ok);
    EXPECT_TRUE(r.warnings().empty());
    EXPECT_EQ(shapesOf(r),
              "  <Shapes>\n"
              "    <IndexedTriangleSet name=\"quadShape\" shapeId=\"1\" meshUsage=\"0\" bvCenter=\"0 0 0\" "
              "bvRadius=\"0.707107\" isOptimized=\"true\">\n"
              "      <Vertices count=\"4\" normal=\"true\" uv0=\"true\">\n"
              "        <v p=\"-0.5 0 -0.5\" n=\"0 1 0\" t0=\"0 1\"/>\n"
              "        <v p=\"-0.5 0 0.5\" n=\"0 1 0\" t0=\"0 0\"/>\n"
              "        <v p=\"0.5 0 0.5\" n=\"0 1 0\" t0=\"1 0\"/>\n"
              "        <v p=\"0.5 0 -0.5\" n=\"0 1 0\" t0=\"1 1\"/>\n"
              "      </Vertices>\n"
              "      <Triangles count=\"2\">\n"
              "        <t vi=\"0 1 2\"/>\n"
              "        <t vi=\"2 3 0\"/>\n"
              "      </Triangles>\n"
              "      <Subsets count=\"1\">\n"
              "        <Subset firstVertex=\"0\" numVertices=\"4\" firstIndex=\"0\" numIndices=\"6\"/>\n"
              "      </Subsets>\n"
              "    </IndexedTriangleSet>\n"
              "  </Shapes>\n");
    EXPECT_NE(r.document.find("<Shape name=\"quad\" shapeId=\"1\" static=\"true\""), std::string::npos);
    // in metres the same quad is a hundredth of the size
    ExportRun again = h.run("-shap -n -uvs");
    EXPECT_EQ(again.document, r.document) << "deterministic";
    ASSERT_TRUE(h.loadScene("//Maya ASCII 2016 scene\ncurrentUnit -l meter;\n" + quad("quad")));
    EXPECT_NE(shapesOf(h.run("-shap")).find("<v p=\"-0.5 0 -0.5\"/>"), std::string::npos)
        << "lengths go out in the scene's unit";
}

TEST(MeshExport, UvSetsMaterialsAndRemap)
{
    std::string sets;
    for (int s = 0; s < 5; ++s)
        sets += "\tsetAttr \".uvst[" + std::to_string(s) + "].uvsn\" -type \"string\" \"set" + std::to_string(s) +
                "\";\n\tsetAttr -s 4 \".uvst[" + std::to_string(s) + "].uvsp[0:3]\" -type \"float2\" " +
                std::to_string(s) + " 0 1 0 0 1 1 1;\n";
    std::string faceUvs;
    for (int s = 0; s < 5; ++s) faceUvs += " mu " + std::to_string(s) + " 4 0 1 3 2";
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene(
        quad("five", faceUvs, sets) +
        // a second face in a shading group of its own; the first face is in none
        "createNode transform -n \"pair\";\ncreateNode mesh -n \"pairShape\" -p \"pair\";\n"
        "\tsetAttr -s 4 \".vt[0:3]\" 0 0 0 1 0 0 0 1 0 1 1 0;\n"
        "\tsetAttr -s 5 \".ed[0:4]\" 0 1 0 1 2 0 2 0 0 1 3 0 3 2 0;\n"
        "\tsetAttr -s 2 \".fc[0:1]\" -type \"polyFaces\" f 3 0 1 2 f 3 3 4 -2;\n"
        "\tsetAttr \".iog[0].og[0].gcl\" -type \"componentList\" 1 \"f[1]\";\n"
        "createNode shadingEngine -n \"redSG\";\ncreateNode lambert -n \"red\";\n"
        "connectAttr \"red.oc\" \"redSG.ss\";\nconnectAttr \"pairShape.iog.og[0]\" \"redSG.dsm\" -na;\n")));
    const std::string shapes = shapesOf(h.run("-shap -uvs"));
    EXPECT_NE(shapes.find("<Vertices count=\"4\" uv0=\"true\" uv1=\"true\" uv2=\"true\" uv3=\"true\">"),
              std::string::npos)
        << shapes;
    EXPECT_NE(shapes.find("t0=\"0 0\" t1=\"1 0\" t2=\"2 0\" t3=\"3 0\"/>"), std::string::npos) << shapes;
    EXPECT_EQ(shapes.find(" t4="), std::string::npos);

    // the face without a shading group goes to material 0, the other to 0 of the groups' list
    vqm::MeshBuilder builder;
    MFnMesh pair(find("pairShape"));
    MFnSkinCluster noSkin;
    vqm::extractMesh(pair, noSkin, false, nullptr, nullptr, false, false, false, false, false, 1.0, builder);
    ASSERT_EQ(builder.numTriangles(), 2u);
    EXPECT_EQ(builder.triangleAt(0).materialIndex, 0u);
    EXPECT_EQ(builder.triangleAt(1).materialIndex, 0u);
    // a remap of one element replaces index 0 and leaves higher ones alone
    const std::vector<uint32_t> remap = {7};
    vqm::MeshBuilder remapped;
    vqm::extractMesh(pair, noSkin, false, nullptr, &remap, false, false, false, false, false, 1.0, remapped);
    EXPECT_EQ(remapped.triangleAt(0).materialIndex, 7u);
    EXPECT_EQ(remapped.triangleAt(1).materialIndex, 7u);
    // with a matrix the corners move and normals turn, in the shape's space
    const float matrix[16] = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 10, 20, 30, 1};
    vqm::MeshBuilder moved;
    vqm::extractMesh(pair, noSkin, false, matrix, nullptr, true, false, false, false, false, 1.0, moved);
    const vqm::BuilderVertex& corner = moved.vertexAt(1);  // vertex (1, 0, 0)
    EXPECT_FLOAT_EQ(corner.position[0], 10.0f);
    EXPECT_FLOAT_EQ(corner.position[1], 21.0f);
    EXPECT_FLOAT_EQ(corner.position[2], 30.0f);
    EXPECT_FLOAT_EQ(corner.normal[2], 1.0f);
}

TEST(MeshExport, MaterialIndicesAboveTheRemap)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene(
        "createNode transform -n \"pair\";\ncreateNode mesh -n \"pairShape\" -p \"pair\";\n"
        "\tsetAttr -s 4 \".vt[0:3]\" 0 0 0 1 0 0 0 1 0 1 1 0;\n"
        "\tsetAttr -s 5 \".ed[0:4]\" 0 1 0 1 2 0 2 0 0 1 3 0 3 2 0;\n"
        "\tsetAttr -s 2 \".fc[0:1]\" -type \"polyFaces\" f 3 0 1 2 f 3 3 4 -2;\n"
        "\tsetAttr \".iog[0].og[0].gcl\" -type \"componentList\" 1 \"f[0]\";\n"
        "\tsetAttr \".iog[0].og[1].gcl\" -type \"componentList\" 1 \"f[1]\";\n"
        "createNode shadingEngine -n \"aSG\";\ncreateNode shadingEngine -n \"bSG\";\n"
        "connectAttr \"pairShape.iog.og[0]\" \"aSG.dsm\" -na;\nconnectAttr \"pairShape.iog.og[1]\" \"bSG.dsm\" -na;\n")));
    const std::vector<uint32_t> remap = {5};
    vqm::MeshBuilder builder;
    MFnMesh pair(find("pairShape"));
    MFnSkinCluster noSkin;
    vqm::extractMesh(pair, noSkin, false, nullptr, &remap, false, false, false, false, false, 1.0, builder);
    ASSERT_EQ(builder.numTriangles(), 2u);
    EXPECT_EQ(builder.triangleAt(0).materialIndex, 5u);
    EXPECT_EQ(builder.triangleAt(1).materialIndex, 1u);
    // two materials give two subsets in the document
    EXPECT_NE(shapesOf(h.run("-shap")).find("<Subsets count=\"2\">"), std::string::npos);
}

TEST(MeshExport, ColoursAndTangents)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene(
        "createNode transform -n \"pair\";\ncreateNode mesh -n \"pairShape\" -p \"pair\";\n"
        "\tsetAttr \".clst[0].clsn\" -type \"string\" \"colorSet1\";\n"
        "\tsetAttr -s 3 \".clst[0].clsp[0:2]\" 1 0 0 1 0 1 0 1 0 0 1 0.5;\n"
        "\tsetAttr \".ccls\" -type \"string\" \"colorSet1\";\n"
        "\tsetAttr -s 4 \".vt[0:3]\" 0 0 0 1 0 0 0 1 0 1 1 0;\n"
        "\tsetAttr -s 5 \".ed[0:4]\" 0 1 0 1 2 0 2 0 0 1 3 0 3 2 0;\n"
        "\tsetAttr -s 2 \".fc[0:1]\" -type \"polyFaces\" f 3 0 1 2 mc 0 3 0 1 2 f 3 3 4 -2;\n"
        "createNode shadingEngine -n \"bumpySG\";\ncreateNode lambert -n \"bumpy\";\ncreateNode bump2d -n \"bump\";\n"
        "connectAttr \"bump.o\" \"bumpy.n\";\nconnectAttr \"bumpy.oc\" \"bumpySG.ss\";\n"
        "connectAttr \"pairShape.iog\" \"bumpySG.dsm\" -na;\n")));
    ExportRun r = h.run("-shap -c -n");
    ASSERT_TRUE(r.ok);
    const std::string shapes = shapesOf(r);
    EXPECT_NE(shapes.find("normal=\"true\" color=\"true\" tangent=\"true\">"), std::string::npos) << shapes;
    EXPECT_NE(shapes.find(" c=\"0 0 1 0.5\""), std::string::npos);
    EXPECT_NE(shapes.find(" c=\"0 0 0 1\""), std::string::npos) << "the uncoloured face";
    EXPECT_EQ(r.warnings(), std::vector<std::string>{
                                "vqmExport: Vertex colors are incompletely assigned. Defaulting to 0,0,0 (pairShape)"});
    // tangents need normals; colours need the flag
    EXPECT_EQ(shapesOf(h.run("-shap")).find("tangent"), std::string::npos);
    EXPECT_EQ(shapesOf(h.run("-shap -n")).find("color"), std::string::npos);
}

TEST(MeshExport, SkinWeightsAtEnvelopeZero)
{
    std::string joints;
    for (int j = 0; j < 5; ++j)
        joints += "createNode joint -n \"j" + std::to_string(j) + "\";\n\tsetAttr \".t\" -type \"double3\" 5 0 0;\n";
    std::string links;
    for (int j = 0; j < 5; ++j)
        links += "connectAttr \"j" + std::to_string(j) + ".wm\" \"skin.ma[" + std::to_string(j) + "]\";\n";
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene(
        joints +
        "createNode transform -n \"leaf\";\ncreateNode mesh -n \"leafShape\" -p \"leaf\";\n"
        "createNode mesh -n \"leafShapeOrig\" -p \"leaf\";\n\tsetAttr \".io\" yes;\n"
        "\tsetAttr -s 3 \".vt[0:2]\" 0 0 0 1 0 0 0 1 0;\n"
        "\tsetAttr -s 3 \".ed[0:2]\" 0 1 0 1 2 0 2 0 0;\n"
        "\tsetAttr \".fc[0]\" -type \"polyFaces\" f 3 0 1 2;\n"
        "createNode skinCluster -n \"skin\";\n"
        "\tsetAttr -s 5 \".wl[0].w[0:4]\" 0.1 0.3 0.2 0.3 0.1;\n"
        "\tsetAttr \".wl[1].w[4]\" 1;\n" +
        "connectAttr \"leafShapeOrig.w\" \"skin.ip[0].ig\";\nconnectAttr \"skin.og[0]\" \"leafShape.i\";\n" + links +
        "createNode transform -n \"rigid\";\ncreateNode mesh -n \"rigidShape\" -p \"rigid\";\n"
        "\tsetAttr -s 3 \".vt[0:2]\" 0 0 0 1 0 0 0 1 0;\n"
        "\tsetAttr -s 3 \".ed[0:2]\" 0 1 0 1 2 0 2 0 0;\n"
        "\tsetAttr \".fc[0]\" -type \"polyFaces\" f 3 0 1 2;\n")));
    MFnDependencyNode skin(find("skin"));
    MFnMesh leaf(find("leafShape"));
    MPointArray before;
    leaf.getPoints(before);
    ASSERT_DOUBLE_EQ(before[0].x, 5.0) << "the joints move the skinned mesh";

    ExportRun r = h.run("-shap -sw");
    ASSERT_TRUE(r.ok);
    const std::string shapes = shapesOf(r);
    // four largest of five, the lower influence first among equals; scaled to sum 1
    EXPECT_NE(shapes.find("<v p=\"0 0 0\" bw=\"0.333333 0.333333 0.222222 0.111111\" bi=\"1 3 2 0\"/>"),
              std::string::npos)
        << shapes;
    EXPECT_NE(shapes.find("<v p=\"1 0 0\" bw=\"1 0 0 0\" bi=\"4 0 0 0\"/>"), std::string::npos);
    // a vertex without weights goes to the first influence, with a warning
    EXPECT_NE(shapes.find("<v p=\"0 1 0\" bw=\"1 0 0 0\" bi=\"0 0 0 0\"/>"), std::string::npos);
    int unweighted = 0;
    for (const std::string& w : r.warnings()) unweighted += w == "Found vertex with no skin weights. Assigning to first bone";
    EXPECT_EQ(unweighted, 1);
    EXPECT_EQ(count(shapes, "blendweights=\"true\""), 1) << "the mesh without a skin cluster has none";
    EXPECT_DOUBLE_EQ(skin.findPlug("en").asDouble(), 1.0) << "the envelope is back";
    MPointArray after;
    leaf.getPoints(after);
    EXPECT_DOUBLE_EQ(after[0].x, 5.0);
    EXPECT_EQ(shapesOf(h.run("-shap")).find("blendweights"), std::string::npos) << "weights need -sw";
}

TEST(MeshExport, ShapelessScenesRadiusZeroAndBinaryBlocks)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene("createNode transform -n \"empty\";\n")));
    EXPECT_EQ(shapesOf(h.run("-shap")), "  <Shapes>\n  </Shapes>\n");
    EXPECT_EQ(h.run("-shap -bin").document.find("<Shapes>\n  </Shapes>"), std::string::npos);

    ASSERT_TRUE(h.loadScene(maScene("createNode transform -n \"dot\";\ncreateNode mesh -n \"dotShape\" -p \"dot\";\n"
                                    "\tsetAttr -s 3 \".vt[0:2]\" 1 2 3 1 2 3 1 2 3;\n"
                                    "\tsetAttr -s 3 \".ed[0:2]\" 0 1 0 1 2 0 2 0 0;\n"
                                    "\tsetAttr \".fc[0]\" -type \"polyFaces\" f 3 0 1 2;\n")));
    const std::string shapes = shapesOf(h.run("-shap"));
    EXPECT_NE(shapes.find("<IndexedTriangleSet name=\"dotShape\" shapeId=\"1\" meshUsage=\"0\" isOptimized=\"true\">"),
              std::string::npos)
        << shapes;

    // the binary form of the same shape: name, id, bounds kept at 0, body and no physics blocks
    vqm::ShapeMap map;
    vqm::ShapeRecord& record = map["dotShape"];
    record.object = find("dotShape");
    record.shapeId = 9;
    record.cpuMesh = true;
    record.cookRequests.insert(vqm::CookRequest());
    vqm::ShapesExporter exporter(false, false, false, false, false, true, false, false);
    vqm::ShapeBlobList blobs;
    std::ostringstream text;
    ASSERT_TRUE(exporter.exportShapes(map, {}, {}, {}, blobs, text));
    EXPECT_EQ(text.str(), "") << "binary shapes write no text";
    ASSERT_EQ(blobs.size(), 1u);
    EXPECT_EQ(blobs[0].type, 1u);
    const uint8_t* p = blobs[0].data.get();
    uint32_t words[8];
    memcpy(words, p, sizeof words);
    EXPECT_EQ(words[0], 8u);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(p + 4), 8), "dotShape");
    EXPECT_EQ(words[3], 9u);
    float radius;
    memcpy(&radius, p + 12 + 4 + 12, 4);
    EXPECT_EQ(radius, 0.0f);
    uint32_t body[4];
    memcpy(body, p + 32, sizeof body);
    EXPECT_EQ(body[0], 3u);                    // indices
    EXPECT_EQ(body[2], 1u);                    // the three corners weld into one vertex
    EXPECT_EQ(body[3], 0x100u << 16);          // a CPU mesh
    uint32_t physicsBlocks;
    memcpy(&physicsBlocks, p + blobs[0].size - 4, 4);
    EXPECT_EQ(physicsBlocks, 0u) << "no cooking installed";
    EXPECT_EQ(blobs[0].size, 32u + 16 + 16 + 6 + 2 + 12 + 4);
}

TEST(MeshExport, NurbsCurvesOpenClosedAndPeriodic)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene(
        "createNode transform -n \"line\";\ncreateNode nurbsCurve -n \"lineShape\" -p \"line\";\n"
        "\tsetAttr \".cc\" -type \"nurbsCurve\" 1 2 0 no 3 3 0 1 2 3 0 0 0 1 0 0 1 1 0;\n"
        "createNode transform -n \"loop\";\ncreateNode nurbsCurve -n \"loopShape\" -p \"loop\";\n"
        "\tsetAttr \".cc\" -type \"nurbsCurve\" 1 2 1 no 3 3 0 1 2 3 0 0 0 1 0 0 0 0 0;\n"
        "createNode transform -n \"ring\";\ncreateNode nurbsCurve -n \"ringShape\" -p \"ring\";\n"
        "\tsetAttr \".cc\" -type \"nurbsCurve\" 3 4 2 no 3 9 -2 -1 0 1 2 3 4 5 6 7\n"
        "\t\t1 0 0 0 0 1 -1 0 0 0 0 -1 1 0 0 0 0 1 -1 0 0;\n")));
    ExportRun r = h.run("-shap -nc");
    ASSERT_TRUE(r.ok);
    EXPECT_EQ(shapesOf(r), "  <Shapes>\n"
                           "    <NurbsCurve name=\"lineShape\" shapeId=\"1\" degree=\"1\" form=\"open\">\n"
                           "          <cv c=\"0 0 0\"/>\n"
                           "          <cv c=\"1 0 0\"/>\n"
                           "          <cv c=\"1 1 0\"/>\n"
                           "    </NurbsCurve>\n"
                           "    <NurbsCurve name=\"loopShape\" shapeId=\"2\" degree=\"1\" form=\"closed\">\n"
                           "          <cv c=\"0 0 0\"/>\n"
                           "          <cv c=\"1 0 0\"/>\n"
                           "    </NurbsCurve>\n"
                           "    <NurbsCurve name=\"ringShape\" shapeId=\"3\" degree=\"3\" form=\"closed\">\n"
                           "          <cv c=\"1 0 0\"/>\n"
                           "          <cv c=\"0 0 1\"/>\n"
                           "          <cv c=\"-1 0 0\"/>\n"
                           "          <cv c=\"0 0 -1\"/>\n"
                           "    </NurbsCurve>\n"
                           "  </Shapes>\n");
    EXPECT_EQ(shapesOf(h.run("-shap")), "  <Shapes>\n  </Shapes>\n") << "curves need -nc";

    vqm::ShapeMap map;
    map["ring"].object = find("ringShape");
    map["ring"].shapeId = 3;
    map["loop"].object = find("loopShape");
    map["loop"].shapeId = 2;
    vqm::ShapesExporter exporter(false, false, false, false, true, true, false, false);
    vqm::ShapeBlobList blobs;
    std::ostringstream text;
    ASSERT_TRUE(exporter.exportShapes(map, {}, {}, {}, blobs, text));
    ASSERT_EQ(blobs.size(), 2u);
    for (const vqm::ShapeBlob& blob : blobs) {
        EXPECT_EQ(blob.type, 2u);
        uint32_t header[3];
        const uint32_t nameLength = blob.data[0];
        memcpy(header, blob.data.get() + 4 + ((nameLength + 3) & ~3u), sizeof header);
        EXPECT_EQ(header[1], 1u) << "closed, periodic included";
        EXPECT_EQ(blob.size, 4 + ((nameLength + 3) & ~3u) + 12 + 12 * header[2]);
        EXPECT_EQ(header[2], header[0] == 3 ? 4u : 2u);
    }
}

TEST(MeshExport, BadMeshesWarnByNameAndTheRestExports)
{
    const std::string good = quad("good");
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene(
        "createNode transform -n \"hollow\";\ncreateNode mesh -n \"hollowShape\" -p \"hollow\";\n"
        "\tsetAttr -s 3 \".vt[0:2]\" 0 0 0 1 0 0 0 1 0;\n"
        "createNode transform -n \"wild\";\ncreateNode mesh -n \"wildShape\" -p \"wild\";\n"
        "\tsetAttr -s 3 \".vt[0:2]\" 0 0 0 1 0 0 0 1 0;\n"
        "\tsetAttr -s 3 \".ed[0:2]\" 0 1 0 1 7 0 7 0 0;\n"
        "\tsetAttr \".fc[0]\" -type \"polyFaces\" f 3 0 1 2;\n"
        "createNode transform -n \"void\";\ncreateNode mesh -n \"voidShape\" -p \"void\";\n"
        "\tsetAttr -s 4 \".vt[0:3]\" 0 0 0 nan 0 0 0 1 0 1 1 0;\n"
        "\tsetAttr -s 5 \".ed[0:4]\" 0 1 0 1 2 0 2 0 0 1 3 0 3 2 0;\n"
        "\tsetAttr -s 2 \".fc[0:1]\" -type \"polyFaces\" f 3 0 1 2 f 3 2 0 -5;\n"
        "createNode transform -n \"thin\";\ncreateNode mesh -n \"thinShape\" -p \"thin\";\n"
        "\tsetAttr -s 3 \".vt[0:2]\" 0 0 0 1 0 0 0 1 0;\n"
        "\tsetAttr -s 3 \".ed[0:2]\" 0 1 0 1 2 0 2 0 0;\n"
        "\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";\n"
        "\tsetAttr -s 2 \".uvst[0].uvsp[0:1]\" -type \"float2\" 0 0 1 0;\n"
        "\tsetAttr -s 2 \".fc[0:1]\" -type \"polyFaces\" f 2 0 1 f 3 0 1 2 mu 0 3 0 1 9;\n" +
        good)));
    bool nameOnLoad = false;
    for (const auto& m : h.loadMessages()) nameOnLoad = nameOnLoad || m.text.find("thinShape") != std::string::npos;
    EXPECT_TRUE(nameOnLoad) << "the face of two corners is left out with a warning that names the mesh";

    ExportRun r = h.run("-shap -n -uvs");
    ASSERT_TRUE(r.ok);
    auto warned = [&](const char* name) {
        for (const std::string& w : r.warnings())
            if (w.find(name) != std::string::npos) return true;
        return false;
    };
    for (const char* name : {"hollowShape", "wildShape", "voidShape", "thinShape"}) EXPECT_TRUE(warned(name)) << name;
    const std::string shapes = shapesOf(r);
    EXPECT_NE(shapes.find("<IndexedTriangleSet name=\"goodShape\" shapeId=\"5\""), std::string::npos);
    EXPECT_NE(shapes.find("name=\"hollowShape\" shapeId=\"1\" meshUsage=\"0\" isOptimized=\"true\">\n"
                          "      <Vertices count=\"0\""),
              std::string::npos)
        << shapes;
    // the finite triangle of the mesh with a NaN stays, the other goes
    const std::string voidSet = shapes.substr(shapes.find("name=\"voidShape\""));
    EXPECT_EQ(voidSet.find("<Triangles count=\"1\">"), voidSet.find("<Triangles")) << voidSet;
    EXPECT_EQ(shapes.find("nan"), std::string::npos);
    const std::string thinSet = shapes.substr(shapes.find("name=\"thinShape\""));
    EXPECT_EQ(thinSet.find("<Triangles count=\"1\">"), thinSet.find("<Triangles"));
}

TEST(MeshExport, RealScenesExportEveryMeshWithItsOwnData)
{
    const std::string directory = VQM_SHARED_SCENES_DIR;
    if (!vqmtest::fileExists(directory + "/PictureFrame_m2016.ma")) GTEST_SKIP() << "no shared scenes";
    struct Expected {
        const char* file;
        int shapes;
    };
    for (const Expected& e : {Expected{"PictureFrame_m2016.ma", 1}, Expected{"FireExtBoxLockedNormals_m2014.ma", 3},
                              Expected{"GrassRigSkinned_m2017.ma", 1}, Expected{"CupTexturedBump_m2018.ma", 1},
                              Expected{"TwoWayArrowCurve_m2017.ma", 1}}) {
        ExportHarness h;
        ASSERT_TRUE(h.loadScene(vqmtest::readWholeFile(directory + "/" + e.file), directory + "/" + e.file));
        ExportRun r = h.run("-shap -n -uvs -c -sw -nc");
        ASSERT_TRUE(r.ok) << e.file;
        const std::string shapes = shapesOf(r);
        EXPECT_EQ(count(shapes, "<IndexedTriangleSet ") + count(shapes, "<NurbsCurve "), e.shapes) << e.file;
        EXPECT_EQ(count(r.document, "<Shape "), e.shapes) << e.file;
        EXPECT_EQ(count(shapes, "<Vertices count=\"0\""), 0) << e.file;
        EXPECT_EQ(shapes.find("nan"), std::string::npos) << e.file;
        if (std::string(e.file) == "GrassRigSkinned_m2017.ma") {
            EXPECT_TRUE(r.warnings().empty()) << r.warnings().front();
            EXPECT_NE(shapes.find("bw=\"0.5 0.5 0 0\" bi=\"1 2 0 0\""), std::string::npos) << shapes;
        }
        if (std::string(e.file) == "CupTexturedBump_m2018.ma") {
            EXPECT_NE(shapes.find("tangent=\"true\""), std::string::npos) << "the cup's shader has a bump";
        }
        if (std::string(e.file) == "TwoWayArrowCurve_m2017.ma") {
            EXPECT_EQ(count(shapes, "<cv c="), 11);
        }
    }
}
