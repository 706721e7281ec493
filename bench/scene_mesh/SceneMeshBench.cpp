// Export of a generated scene with one mesh of about 1,000,000 triangles (computed normals, one
// UV set) as text with -shap -n -uvs. Times each stage on its own (load, extraction, builder road,
// optimise, write) and the whole export through the command, against the geometry road on the
// same corners (weld, build, optimise through MeshBuilder), measured in the same run.
// Target: the whole export at most 3 x that road. Argument: grid size (708 by default). With
// VQM_KEEP_SCENE set, the generated scene stays in its /tmp directory.
#include <maya/MFloatVectorArray.h>
#include <maya/MFnMesh.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>

#include "Session.h"
#include "geometry/MeshBuilder.h"
#include "geometry/MeshExtraction.h"
#include "geometry/TriangleSet.h"
#include "geometry/TriangleSetText.h"
#include "mayaascii/MayaAsciiReader.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// A wavy grid of n x n quads with soft edges and one UV per vertex, as Maya writes a mesh.
std::string generateScene(int n)
{
    const int side = n + 1;
    std::string text = "//Maya ASCII 2016 scene\nrequires maya \"2016\";\ncurrentUnit -l centimeter -a degree -t film;\n"
                       "createNode transform -n \"terrain\";\ncreateNode mesh -n \"terrainShape\" -p \"terrain\";\n";
    text.reserve(size_t(n) * size_t(n) * 160);
    char line[256];
    snprintf(line, sizeof line, "\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";\n\tsetAttr -s %d \".uvst[0].uvsp[0:%d]\" -type \"float2\"",
             side * side, side * side - 1);
    text += line;
    for (int j = 0; j < side; ++j)
        for (int i = 0; i < side; ++i) {
            snprintf(line, sizeof line, " %g %g", double(i) / n, double(j) / n);
            text += line;
            if (i % 8 == 7) text += "\n\t\t";
        }
    text += ";\n\tsetAttr \".cuvs\" -type \"string\" \"map1\";\n";
    snprintf(line, sizeof line, "\tsetAttr -s %d \".vt[0:%d]\"", side * side, side * side - 1);
    text += line;
    for (int j = 0; j < side; ++j)
        for (int i = 0; i < side; ++i) {
            snprintf(line, sizeof line, " %g %g %g", double(i), 3.0 * std::sin(i * 0.05) * std::cos(j * 0.07), double(j));
            text += line;
            if (i % 4 == 3) text += "\n\t\t";
        }
    const int horizontal = n * side;  // edge (i, j) -> (i + 1, j) is j * n + i
    const int edges = 2 * n * side;   // then edge (i, j) -> (i, j + 1) is horizontal + j * side + i
    snprintf(line, sizeof line, ";\n\tsetAttr -s %d \".ed[0:%d]\"", edges, edges - 1);
    text += line;
    for (int j = 0; j < side; ++j)
        for (int i = 0; i < n; ++i) {
            snprintf(line, sizeof line, " %d %d 1", j * side + i, j * side + i + 1);
            text += line;
            if (i % 8 == 7) text += "\n\t\t";
        }
    for (int j = 0; j < n; ++j)
        for (int i = 0; i < side; ++i) {
            snprintf(line, sizeof line, " %d %d 1", j * side + i, (j + 1) * side + i);
            text += line;
            if (i % 8 == 7) text += "\n\t\t";
        }
    snprintf(line, sizeof line, ";\n\tsetAttr -s %d \".fc[0:%d]\" -type \"polyFaces\"", n * n, n * n - 1);
    text += line;
    for (int j = 0; j < n; ++j)
        for (int i = 0; i < n; ++i) {
            const int v = j * side + i;
            snprintf(line, sizeof line, "\n\t\tf 4 %d %d %d %d\n\t\tmu 0 4 %d %d %d %d", j * n + i,
                     horizontal + j * side + i + 1, -((j + 1) * n + i) - 1, -(horizontal + j * side + i) - 1, v, v + 1,
                     v + side + 1, v + side);
            text += line;
        }
    text += ";\nconnectAttr \"terrainShape.iog\" \":initialShadingGroup.dsm\" -na;\n";
    return text;
}

MObject find(const char* name)
{
    MSelectionList list;
    MObject object;
    if (list.add(MString(name))) list.getDependNode(0, object);
    return object;
}

bool load(const std::string& path)
{
    std::string error;
    if (!vqmhost::readMayaAsciiFile(path, error)) {
        fprintf(stderr, "%s\n", error.c_str());
        return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv)
{
    const int n = argc > 1 ? atoi(argv[1]) : 708;
    char directory[] = "/tmp/vqm-scene-mesh-XXXXXX";
    if (!mkdtemp(directory)) return 1;
    const std::string scenePath = std::string(directory) + "/terrain.ma";
    const std::string outputPath = std::string(directory) + "/terrain.vqm";
    {
        std::ofstream file(scenePath, std::ios::binary);
        file << generateScene(n);
    }
    printf("grid %d x %d quads: %d triangles, %d vertices; scene file %.1f MB\n", n, n, 2 * n * n, (n + 1) * (n + 1),
           double(std::ifstream(scenePath, std::ios::ate | std::ios::binary).tellg()) / 1048576.0);
    vqmhost::setMessageSink([](vqmhost::MessageKind, const std::string&) {});

    // the stages one by one, as the command runs them
    Clock::time_point start = Clock::now();
    if (!load(scenePath)) return 1;
    const double loadTime = millisecondsSince(start);

    MFnMesh mesh(find("terrainShape"));
    MFnSkinCluster noSkin;
    vqm::MeshBuilder builder;
    start = Clock::now();
    // the host evaluates the mesh (checks its faces, computes its normals) on first use
    MFloatVectorArray normals;
    mesh.getNormals(normals);
    const double evaluationTime = millisecondsSince(start);
    vqm::extractMesh(mesh, noSkin, false, nullptr, nullptr, true, true, false, false, false, 1.0, builder);
    const double extractionTime = millisecondsSince(start);
    const vqm::MeshBuilder corners = builder;  // the reference road's input

    start = Clock::now();
    builder.weldVertices();
    std::unique_ptr<vqm::IndexedTriangleSet> set = builder.buildIndexedTriangleSet();
    const double builderTime = millisecondsSince(start);
    start = Clock::now();
    set->optimize();
    const double optimizeTime = millisecondsSince(start);
    std::ostringstream text;
    const float center[3] = {0.0f, 0.0f, 0.0f};
    start = Clock::now();
    vqm::writeTriangleSetText(*set, "terrainShape", 1, center, 1.0f, text);
    const double writeTime = millisecondsSince(start);
    printf("set: %u vertices, %u triangles, %zu MB of text\n", set->numVertices(), set->numIndices() / 3,
           text.str().size() >> 20);
    set.reset();
    builder = vqm::MeshBuilder();

    // the reference: the geometry road alone on the same corners
    double roadTime;
    {
        vqm::MeshBuilder road = corners;
        start = Clock::now();
        road.weldVertices();
        std::unique_ptr<vqm::IndexedTriangleSet> roadSet = road.buildIndexedTriangleSet();
        roadSet->optimize();
        roadTime = millisecondsSince(start);
    }

    // the whole export: load and command
    std::string error;
    if (!vqmhost::loadPlugin(VQM_PLUGIN_PATH, error)) {
        fprintf(stderr, "%s\n", error.c_str());
        return 1;
    }
    start = Clock::now();
    if (!load(scenePath)) return 1;
    const bool ok = bool(MGlobal::executeCommand(MString("VQMExporter -f \"" + outputPath + "\" -shap -n -uvs")));
    const double wholeTime = millisecondsSince(start);
    const double documentMB = double(std::ifstream(outputPath, std::ios::ate | std::ios::binary).tellg()) / 1048576.0;

    printf("stages: load %.0f ms, extraction %.0f ms (host evaluation %.0f ms of it), builder road %.0f ms, optimise %.0f ms, "
           "write %.0f ms\n",
           loadTime, extractionTime, evaluationTime, builderTime, optimizeTime, writeTime);
    printf("whole export (load and command%s): %.0f ms, document %.1f MB\n", ok ? "" : ", FAILED", wholeTime, documentMB);
    printf("reference, geometry road on the same corners (weld, build, optimise): %.0f ms\n", roadTime);
    printf("whole / reference: %.2f (target <= 3)\n", wholeTime / roadTime);
    if (!getenv("VQM_KEEP_SCENE")) unlink(scenePath.c_str());
    unlink(outputPath.c_str());
    if (!getenv("VQM_KEEP_SCENE")) rmdir(directory);
    return ok ? 0 : 1;
}
