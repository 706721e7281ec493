// Binary exports through vqmexport: the .shapes file read back by vqminspect, and a .shapes file
// that cannot be written ending the run with the document as far as it got.
#include "common/ExportHarness.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace {

int run(const std::string& command)
{
    int raw = system(command.c_str());
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
}

std::string tool(const char* path) { return std::string("'") + path + "'"; }

TEST(BinaryExport, RealScenesRoundTripThroughTheInspector)
{
    const std::string dir = VQM_SHARED_SCENES_DIR;
    if (!vqmtest::fileExists(dir + "/PictureFrame_m2016.ma")) GTEST_SKIP() << "no shared scenes";
    vqmtest::TemporaryDirectory out;
    struct Case {
        const char* scene;
        const char* expect;  // a line the inspector prints for the blob
    } cases[] = {
        {"PictureFrame_m2016.ma", "type 1 \"Pictureframe\" shape 1: 44 vertices, 26 triangles (16-bit indices), 1 subsets, normal uv0"},
        {"GrassRigSkinned_m2017.ma", "type 1 \"md_grass_planeShape\" shape 1: 8 vertices, 6 triangles (16-bit indices), 1 subsets, normal uv0 blend"},
        {"TwoWayArrowCurve_m2017.ma", "type 2 \"curveShape1\" shape 1: 11 points, open"},
    };
    for (const Case& c : cases) {
        std::string document = out.file(std::string(c.scene) + ".vqm");
        ASSERT_EQ(run(tool(VQM_EXPORT_TOOL) + " --quiet " + dir + "/" + c.scene + " -f '" + document +
                      "' -shap -n -uvs -sw -nc -bin 2>/dev/null"),
                  0)
            << c.scene;
        std::string text = vqmtest::readWholeFile(document);
        EXPECT_NE(text.find("externalShapesFile=\"" + std::string(c.scene) + ".vqm.shapes\""), std::string::npos);
        EXPECT_EQ(text.find("<IndexedTriangleSet"), std::string::npos) << "binary: no shape text in the document";
        EXPECT_EQ(run(tool(VQM_INSPECT_TOOL) + " --strict '" + document + "' > '" + out.file("report") + "'"), 0)
            << vqmtest::readWholeFile(out.file("report"));
        EXPECT_NE(vqmtest::readWholeFile(out.file("report")).find(c.expect), std::string::npos)
            << vqmtest::readWholeFile(out.file("report"));
    }
}

TEST(BinaryExport, ABusyShapesFileEndsTheRunWithThePartialDocument)
{
    vqmtest::TemporaryDirectory dir;
    const std::string document = dir.file("busy.vqm");
    // A running program's file refuses to be opened for writing: the file layer retries, logs
    // the sharing violation, and the run fails.
    ASSERT_EQ(run("cp /bin/sleep '" + document + ".shapes'"), 0);
    pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        execl((document + ".shapes").c_str(), "sleep", "20", (char*)nullptr);
        _exit(127);
    }
    usleep(200000);
    int status = run(tool(VQM_EXPORT_TOOL) + " " + VQM_SOURCE_DIR + "/examples/crate.ma -f '" + document +
                     "' -shap -bin -v >'" + dir.file("out") + "' 2>'" + dir.file("err") + "'");
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_EQ(status, 1);
    std::string err = vqmtest::readWholeFile(dir.file("err"));
    EXPECT_NE(err.find("log: Error: Sharing violation on file '" + document + ".shapes'"), std::string::npos) << err;
    std::string text = vqmtest::readWholeFile(document);
    const std::string stub = "  <Shapes externalShapesFile=\"busy.vqm.shapes\"";
    ASSERT_GE(text.size(), stub.size());
    EXPECT_EQ(text.substr(text.size() - stub.size()), stub) << "the document ends inside the stub";
    EXPECT_EQ(text.find("</vQM>"), std::string::npos);
    EXPECT_EQ(vqmtest::readWholeFile(dir.file("out")).find("done."), std::string::npos);
}

}  // namespace
