// vqminspect: reads an export back. Prints the document's sections and counts, decodes the side
// files, and checks that what refers to something finds it. Exits non-zero on any inconsistency.
#include "inspect/Inspection.h"

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

using namespace vqm::inspect;

namespace {

const char* const kUsage =
    "usage: vqminspect [--strict] [--quiet] DOCUMENT.vqm\n"
    "\n"
    "Prints the sections of a vQM document with their element counts, unscrambles and decodes its\n"
    ".shapes file and decodes its .anim file when the document names them, and checks every\n"
    "shapeId, materialIds and file reference. --strict also counts the material and file ids that\n"
    "an export leaves without an element by design (unsupported shaders) as errors.\n"
    "\n"
    "exit status: 0 consistent, 1 inconsistencies found, 2 the document cannot be read.\n";

std::string directoryOf(const std::string& path)
{
    size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

std::string flagNames(uint32_t flags)
{
    static const char* names[] = {"normal", "uv0", "uv1", "uv2", "uv3", "color", "blend", "tangent", "single", "generic"};
    std::string text;
    for (int bit = 0; bit < 10; ++bit)
        if (flags & (1u << bit)) text += std::string(text.empty() ? "" : " ") + names[bit];
    return text.empty() ? "positions only" : text;
}

}  // namespace

int main(int argc, char** argv)
{
    bool strict = false, quiet = false;
    std::string documentPath;
    for (int i = 1; i < argc; ++i) {
        std::string a = argv[i];
        if (a == "--strict") strict = true;
        else if (a == "--quiet") quiet = true;
        else if (a == "-h" || a == "--help") {
            fputs(kUsage, stdout);
            return 0;
        } else if (a.compare(0, 2, "--") == 0 || !documentPath.empty()) {
            fprintf(stderr, "vqminspect: unexpected argument %s\n%s", a.c_str(), kUsage);
            return 2;
        } else {
            documentPath = a;
        }
    }
    if (documentPath.empty()) {
        fputs(kUsage, stderr);
        return 2;
    }
    std::ifstream in(documentPath, std::ios::binary);
    if (!in) {
        fprintf(stderr, "vqminspect: cannot open %s\n", documentPath.c_str());
        return 2;
    }
    std::ostringstream text;
    text << in.rdbuf();

    std::vector<std::string> problems, notes;
    DocumentSummary document;
    if (!scanDocument(text.str(), document, problems)) {
        for (const std::string& p : problems) fprintf(stderr, "vqminspect: %s: %s\n", documentPath.c_str(), p.c_str());
        return 2;
    }
    if (!quiet) {
        printf("document %s: name \"%s\", version %s\n", documentPath.c_str(), document.name.c_str(), document.version.c_str());
        for (const auto& section : document.sectionElements) printf("  %s: %u elements\n", section.first.c_str(), section.second);
        if (!document.sceneElements.empty()) printf("  in the Scene, all levels:\n");
        for (const auto& element : document.sceneElements) printf("    %s: %u\n", element.first.c_str(), element.second);
    }
    ShapesFileSummary shapes;
    bool haveShapes = false;
    if (!document.externalShapesFile.empty()) {
        std::string path = directoryOf(documentPath) + document.externalShapesFile;
        haveShapes = readShapesFile(path, shapes, problems);
        if (haveShapes && !quiet) {
            printf("shapes file %s: version %u, key index %u, %zu blobs\n", path.c_str(), shapes.version, shapes.keyIndex,
                   shapes.blobs.size());
            for (const BlobSummary& b : shapes.blobs) {
                if (b.type == 2)
                    printf("  type 2 \"%s\" shape %u: %u points, %s\n", b.name.c_str(), b.shapeId, b.points,
                           b.closed ? "closed" : "open");
                else
                    printf("  type %u \"%s\" shape %u: %u vertices, %u triangles (%s indices), %u subsets, %s; %u physics"
                           " blocks, %u attachments, %u hulls\n",
                           b.type, b.name.c_str(), b.shapeId, b.vertices, b.indices / 3, b.wideIndices ? "32-bit" : "16-bit",
                           b.subsets, flagNames(b.vertexFlags).c_str(), b.physicsBlocks, b.attachments, b.hulls);
            }
        }
    }
    if (!document.externalAnimFile.empty()) {
        std::string path = directoryOf(documentPath) + document.externalAnimFile;
        AnimationSummary animation;
        if (readAnimationFile(path, animation, problems) && !quiet)
            printf("animation file %s: %u sets, %u clips, %u nodes, %u keys\n", path.c_str(), animation.sets,
                   animation.clips, animation.nodes, animation.keys);
    }
    crossCheck(document, haveShapes ? &shapes : nullptr, strict, problems, notes);
    for (const std::string& n : notes) printf("note: %s\n", n.c_str());
    for (const std::string& p : problems) fprintf(stderr, "vqminspect: %s\n", p.c_str());
    if (!quiet) printf("%s\n", problems.empty() ? "consistent" : "inconsistent");
    return problems.empty() ? 0 : 1;
}
