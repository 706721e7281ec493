// vqmexport: the command-line host. Reads a scene, loads the exporter plug-in and runs its
// command with the user's flags, as the host application would, without the application.
#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>

#include "Session.h"
#include "io/Logger.h"
#include "mayaascii/MayaAsciiReader.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

const char* const kUsage =
    "usage: vqmexport [options] SCENE.ma -f OUTPUT.vqm [command flags...]\n"
    "\n"
    "Reads a Maya ASCII scene and runs the VQMExporter command on it. Every argument after the\n"
    "scene goes to the command unchanged, e.g.  -shap -n -uvs -l -cams -bin.\n"
    "\n"
    "options (before the scene):\n"
    "  --plugin PATH          the exporter plug-in library (default: " VQM_DEFAULT_PLUGIN_NAME
    " beside this program)\n"
    "  --workspace DIR        the workspace root (default: the scene file's directory)\n"
    "  --source-images DIR    the workspace's source images rule (default: sourceimages)\n"
    "  --select NAME          select a node before the export (repeatable; for -sel)\n"
    "  --quiet                print no info lines, only warnings and errors\n"
    "  --verbose              also print the file layer's log (as the command's -v does)\n"
    "  -h, --help             print this help\n"
    "\n"
    "exit status: 0 when the export succeeded, 1 when the command failed, 2 when the scene or\n"
    "the plug-in could not be loaded or the arguments are wrong.\n";

// In verbose mode the file layer's log reaches the user: problems with files the export opens.
class StandardLogSink : public vqm::LogSink {
public:
    void onInfo(const char* text, size_t length) override { print(stdout, "log: ", text, length); }
    void onWarning(const char* text, size_t length) override { print(stderr, "log: ", text, length); }
    void onError(const char* text, size_t length) override { print(stderr, "log: ", text, length); }

private:
    static void print(FILE* out, const char* prefix, const char* text, size_t length)
    {
        while (length > 0 && (text[length - 1] == '\n' || text[length - 1] == '\0')) --length;
        fprintf(out, "%s%.*s\n", prefix, int(length), text);
    }
};

std::string directoryOfProgram(const char* argv0)
{
    char buffer[4096];
    ssize_t length = readlink("/proc/self/exe", buffer, sizeof buffer - 1);
    std::string path = length > 0 ? std::string(buffer, size_t(length)) : std::string(argv0);
    size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string(".") : path.substr(0, slash);
}

// The directory of the loaded scene, which the reader keeps as an absolute path.
std::string directoryOfLoadedScene()
{
    MString sceneFile;
    MGlobal::executeCommand("file -q -sceneName", sceneFile);
    size_t slash = sceneFile.str().rfind('/');
    return slash == std::string::npos ? std::string(".") : sceneFile.str().substr(0, slash);
}

// The command as text: every argument quoted, so that paths with blanks survive.
std::string quoted(const std::string& word)
{
    std::string out = "\"";
    for (char c : word) {
        if (c == '"' || c == '\\') out += '\\';
        out += c;
    }
    return out + "\"";
}

}  // namespace

int main(int argc, char** argv)
{
    std::string plugin, workspace, sourceImages, scene;
    std::vector<std::string> selection, commandArgs;
    bool quiet = false, verbose = false;
    int i = 1;
    for (; i < argc; ++i) {
        std::string a = argv[i];
        auto value = [&](const char* name) -> const char* {
            if (i + 1 >= argc) {
                fprintf(stderr, "vqmexport: %s needs a value\n%s", name, kUsage);
                exit(2);
            }
            return argv[++i];
        };
        if (a == "-h" || a == "--help") {
            fputs(kUsage, stdout);
            return 0;
        } else if (a == "--plugin") {
            plugin = value("--plugin");
        } else if (a == "--workspace") {
            workspace = value("--workspace");
        } else if (a == "--source-images") {
            sourceImages = value("--source-images");
        } else if (a == "--select") {
            selection.push_back(value("--select"));
        } else if (a == "--quiet") {
            quiet = true;
        } else if (a == "--verbose") {
            verbose = true;
        } else if (a.compare(0, 2, "--") == 0) {
            fprintf(stderr, "vqmexport: unknown option %s\n%s", a.c_str(), kUsage);
            return 2;
        } else {
            scene = a;
            ++i;
            break;
        }
    }
    for (; i < argc; ++i) {
        commandArgs.push_back(argv[i]);
        verbose = verbose || commandArgs.back() == "-v" || commandArgs.back() == "-verbose";
    }
    if (scene.empty()) {
        fprintf(stderr, "vqmexport: no scene file given\n%s", kUsage);
        return 2;
    }

    vqmhost::setMessageSink([quiet](vqmhost::MessageKind kind, const std::string& text) {
        switch (kind) {
        case vqmhost::MessageKind::Info:
            if (!quiet) {
                fputs(text.c_str(), stdout);
                if (text.empty() || text.back() != '\n') fputc('\n', stdout);
                fflush(stdout);
            }
            break;
        case vqmhost::MessageKind::Warning: fprintf(stderr, "Warning: %s\n", text.c_str()); break;
        case vqmhost::MessageKind::Error: fprintf(stderr, "Error: %s\n", text.c_str()); break;
        }
    });

    std::string error;
    if (!vqmhost::readMayaAsciiFile(scene, error)) {
        fprintf(stderr, "vqmexport: %s\n", error.c_str());
        return 2;
    }
    vqmhost::setWorkspaceRoot(workspace.empty() ? directoryOfLoadedScene() : workspace);
    if (!sourceImages.empty()) vqmhost::setWorkspaceFileRule("sourceImages", sourceImages);

    if (!selection.empty()) {
        MSelectionList list;
        for (const std::string& name : selection)
            if (!list.add(MString(name))) {
                fprintf(stderr, "vqmexport: --select: no node matches '%s'\n", name.c_str());
                return 2;
            }
        MGlobal::setActiveSelectionList(list);
    }

    if (plugin.empty()) plugin = directoryOfProgram(argv[0]) + "/" VQM_DEFAULT_PLUGIN_NAME;
    if (!vqmhost::loadPlugin(plugin, error)) {
        fprintf(stderr, "vqmexport: %s\n", error.c_str());
        return 2;
    }

    std::string command = "VQMExporter";
    for (const std::string& a : commandArgs) command += " " + quoted(a);
    StandardLogSink logSink;
    if (verbose) vqm::Logger::getInstance().addSink(&logSink);
    MStatus status = MGlobal::executeCommand(MString(command));
    vqmhost::unloadAllPlugins();
    if (verbose) vqm::Logger::getInstance().removeSink(&logSink);
    if (!status) {
        fprintf(stderr, "vqmexport: the export failed\n");
        return 1;
    }
    return 0;
}
