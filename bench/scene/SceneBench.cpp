// Time of the export of generated scenes of 10,000 and 100,000 transforms, and their ratio. The
// walk should grow linearly with the scene: the ratio should stay near 10 (at most 12).
#include <maya/MGlobal.h>

#include "Session.h"
#include "mayaascii/MayaAsciiReader.h"

#include <chrono>
#include <cstdio>
#include <string>
#include <unistd.h>

namespace {

// Groups of ten under groups of ten, three levels deep, every node moved, turned and scaled, some
// with another rotation order, joints among them. With sharedNames the leaves of every group are
// named alike ("leaf0".."leaf8"), as copied groups are, so that path names need their parents.
std::string generateScene(int transforms, bool sharedNames)
{
    std::string text = "//Maya ASCII 2016 scene\nrequires maya \"2016\";\ncurrentUnit -l centimeter -a degree -t film;\n";
    text.reserve(size_t(transforms) * 160);
    char line[256];
    int made = 0;
    for (int top = 0; made < transforms; ++top) {
        snprintf(line, sizeof line, "createNode transform -n \"top%d\";\n\tsetAttr \".t\" -type \"double3\" %d 0 0 ;\n",
                 top, top);
        text += line;
        ++made;
        for (int mid = 0; mid < 10 && made < transforms; ++mid) {
            snprintf(line, sizeof line,
                     "createNode transform -n \"mid%d_%d\" -p \"top%d\";\n\tsetAttr \".r\" -type \"double3\" %d 10 0 ;\n"
                     "\tsetAttr \".ro\" %d;\n",
                     top, mid, top, mid, mid % 6);
            text += line;
            ++made;
            for (int leaf = 0; leaf < 9 && made < transforms; ++leaf) {
                char name[64];
                if (sharedNames) snprintf(name, sizeof name, "leaf%d", leaf);
                else snprintf(name, sizeof name, "leaf%d_%d_%d", top, mid, leaf);
                snprintf(line, sizeof line,
                         "createNode %s -n \"%s\" -p \"mid%d_%d\";\n"
                         "\tsetAttr \".t\" -type \"double3\" 1 %d 2 ;\n\tsetAttr \".s\" -type \"double3\" 1 1 2 ;\n",
                         leaf == 0 ? "joint" : "transform", name, top, mid, leaf);
                text += line;
                ++made;
            }
        }
    }
    return text;
}

double exportSeconds(int transforms, bool sharedNames, const std::string& output)
{
    std::string error;
    if (!vqmhost::readMayaAsciiText(generateScene(transforms, sharedNames), "/bench/generated.ma", error)) {
        fprintf(stderr, "%s\n", error.c_str());
        return -1.0;
    }
    std::string command = "VQMExporter -f \"" + output + "\" -ignbp";
    double best = 1e30;
    for (int run = 0; run < 3; ++run) {
        auto start = std::chrono::steady_clock::now();
        if (!MGlobal::executeCommand(MString(command))) return -1.0;
        double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (seconds < best) best = seconds;
    }
    return best;
}

}  // namespace

int main()
{
    vqmhost::setMessageSink([](vqmhost::MessageKind kind, const std::string& text) {
        if (kind != vqmhost::MessageKind::Info) fprintf(stderr, "%s\n", text.c_str());
    });
    vqmhost::setWorkspaceRoot("/tmp");
    std::string error;
    if (!vqmhost::loadPlugin(VQM_PLUGIN_PATH, error)) {
        fprintf(stderr, "%s\n", error.c_str());
        return 1;
    }
    std::string output = "/tmp/vqm-scene-bench-" + std::to_string(getpid()) + ".vqm";
    for (bool sharedNames : {false, true}) {
        double small = exportSeconds(10000, sharedNames, output);
        double large = exportSeconds(100000, sharedNames, output);
        if (small <= 0.0 || large <= 0.0) return 1;
        printf("%s\n", sharedNames ? "leaves with shared short names:" : "unique names:");
        printf("  export of 10000 transforms:  %.3f s\n", small);
        printf("  export of 100000 transforms: %.3f s\n", large);
        printf("  ratio: %.2f (target: at most 12)\n", large / small);
    }
    unlink(output.c_str());
    vqmhost::unloadAllPlugins();
    return 0;
}
