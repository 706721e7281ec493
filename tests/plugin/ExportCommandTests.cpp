// The export command through the host: flags, output path, document envelope, failures.
#include "common/ExportHarness.h"

#include "io/PathUtilities.h"
#include "plugin/DocumentAssembly.h"
#include "plugin/OutputPath.h"

#include <sstream>

using vqmtest::ExportHarness;
using vqmtest::ExportRun;

namespace {

const char* const kSmallScene =
    "//Maya ASCII 2016 scene\n"
    "requires maya \"2016\";\n"
    "currentUnit -l centimeter -a degree -t film;\n"
    "createNode transform -n \"crate\";\n"
    "\tsetAttr \".t\" -type \"double3\" 0 25 0 ;\n";

TEST(ExportCommand, WithoutAnOutputFileFailsSilentlyAndWritesNothing)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(kSmallScene));
    for (const char* command : {"VQMExporter", "VQMExporter -shap -n", "VQMExporter -f", "VQMExporter -shap -f"}) {
        ExportRun r = h.runCommand(command);
        EXPECT_FALSE(r.ok) << command;
        EXPECT_TRUE(r.messages.empty()) << command << ": " << r.messages.front().text;
    }
}

TEST(ExportCommand, WritesTheEnvelopeNamedAfterTheScene)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(kSmallScene, "/projects/level/scenes/level.final.ma"));
    ExportRun r = h.run("");
    ASSERT_TRUE(r.ok);
    // Files and Materials (lambert1 is a lambert of every scene), then the Scene section.
    EXPECT_EQ(r.document, vqmtest::documentWith("level.final", "\n  <Files>\n  </Files>\n\n  <Materials>\n"
                                                               "    <Material name=\"lambert1\" materialId=\"1\" "
                                                               "diffuseColor=\"0.5 0.5 0.5 1\" specularColor=\"0 0 0\" "
                                                               "ambientColor=\"1 1 1\">\n    </Material>\n"
                                                               "  </Materials>\n\n\n  <Scene>\n"
                                                               "    <TransformGroup name=\"crate\" translation=\"0 25 0\" "
                                                               "nodeId=\"1\"/>\n"
                                                               "  </Scene>\n\n"));
    ASSERT_EQ(r.infos().size(), 2u);
    EXPECT_EQ(r.infos()[0], "Export scene to: " + r.outputPath);
    EXPECT_EQ(r.infos()[1], "done.");

    ASSERT_TRUE(h.loadScene(kSmallScene, ""));
    r = h.run("");
    ASSERT_TRUE(r.ok);
    EXPECT_NE(r.document.find("<vQM name=\"untitled\" version=\"1.6\""), std::string::npos);
}

TEST(ExportCommand, SameSceneSameBytesAndTheEpsilonFlagChangesNothing)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(kSmallScene));
    ExportRun first = h.run("-shap -n -uvs -l -cams -ua -an -ps");
    ExportRun second = h.run("-shap -n -uvs -l -cams -ua -an -ps");
    ExportRun epsilon = h.run("-shap -n -uvs -l -cams -ua -an -ps -fe");
    ExportRun longNames = h.run("-shapes -normals -textureCoords -lights -cameras -userattributes -animation "
                                "-particlesystems -floatEpsilon");
    ASSERT_TRUE(first.ok && second.ok && epsilon.ok && longNames.ok);
    EXPECT_EQ(first.document, second.document);
    EXPECT_EQ(first.document, epsilon.document);
    EXPECT_EQ(first.document, longNames.document);
    EXPECT_NE(first.document, h.run("").document) << "the optional sections each add their text";
}

TEST(ExportCommand, AnOutputThatCannotBeOpenedFailsWithoutADocument)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(kSmallScene));
    ExportRun r = h.runCommand("VQMExporter -f \"" + h.directory().path() + "/no/such/dir/out.vqm\"");
    EXPECT_FALSE(r.ok);
    EXPECT_FALSE(vqmtest::fileExists(h.directory().path() + "/no/such/dir/out.vqm"));
    for (const std::string& info : r.infos()) EXPECT_NE(info, "done.");
}

TEST(ExportCommand, DollarSignsAreSeparatorsAndRelativePathsFollowTheWorkingDirectory)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(kSmallScene));
    std::string dir = h.directory().path();
    std::string dollars = dir;
    std::replace(dollars.begin(), dollars.end(), '/', '$');
    ExportRun r = h.runCommand("VQMExporter -f \"" + dollars + "$dollar.vqm\"");
    ASSERT_TRUE(r.ok);
    EXPECT_TRUE(vqmtest::fileExists(dir + "/dollar.vqm"));
    EXPECT_EQ(r.infos().front(), "Export scene to: " + dir + "/dollar.vqm") << "an absolute path shows no CWD line";

    char previous[4096];
    ASSERT_NE(getcwd(previous, sizeof previous), nullptr);
    ASSERT_EQ(chdir(dir.c_str()), 0);
    r = h.runCommand("VQMExporter -f relative.vqm");
    ASSERT_EQ(chdir(previous), 0);
    ASSERT_TRUE(r.ok);
    ASSERT_GE(r.infos().size(), 3u);
    EXPECT_EQ(r.infos()[0], "CWD: " + dir + "\n");
    EXPECT_EQ(r.infos()[1], "Export scene to: " + dir + "/relative.vqm");
    EXPECT_TRUE(vqmtest::fileExists(dir + "/relative.vqm"));
}

TEST(OutputPath, NormalisationOfTheGivenPath)
{
    using namespace vqm;
    EXPECT_EQ(replaceDollarSigns("C:$temp$a.vqm"), "C:/temp/a.vqm");
    EXPECT_TRUE(isAbsolutePath(replaceDollarSigns("C:$temp$a.vqm")));
    EXPECT_TRUE(isAbsolutePath("\\\\server\\share\\a.vqm"));
    EXPECT_FALSE(isAbsolutePath("a.vqm"));
    EXPECT_EQ(replaceDollarSigns("a\\b$c"), "a\\b/c") << "backslashes of the given path stay";
    EXPECT_EQ(prependWorkingDirectory("D:\\work", "a.vqm"), "D:/work/a.vqm");
    EXPECT_EQ(prependWorkingDirectory("D:\\work", "/a.vqm"), "D:/work/a.vqm");
    EXPECT_EQ(prependWorkingDirectory("D:\\", "a.vqm"), "D:/a.vqm");
    EXPECT_EQ(prependWorkingDirectory("/home/me/", "out/a.vqm"), "/home/me/out/a.vqm");
    EXPECT_EQ(directoryOf("/out/level.vqm"), "/out/");
    EXPECT_EQ(directoryOf("level.vqm"), "level.vqm");
}

TEST(DocumentAssembly, DocumentNameOfTheSceneFile)
{
    using vqm::documentName;
    EXPECT_EQ(documentName("D:/scenes/level.final.mb"), "level.final");
    EXPECT_EQ(documentName("D:/scenes/level"), "level");
    EXPECT_EQ(documentName("D:/a.b/level"), "level");
    EXPECT_EQ(documentName(""), "untitled");
    EXPECT_EQ(documentName("D:/scenes/.ma"), "untitled");
}

// The sections in their order, each behind its condition, with distinct text to tell them apart.
TEST(DocumentAssembly, SectionsStandInTheirOrderByFlag)
{
    const std::string materials = "M", shapes = "S", dynamics = "D", scene = "N", animation = "A", user = "U";
    vqm::DocumentParts parts;
    parts.sceneFileName = "/s/x.ma";
    parts.materials = &materials;
    parts.shapesText = &shapes;
    parts.dynamics = &dynamics;
    parts.scene = &scene;
    parts.animationText = &animation;
    parts.userAttributesText = &user;
    auto body = [&](bool shapesOn, bool binary, bool ps, bool an, bool ua, bool blobs, uint32_t animationSize,
                    bool shapesStubResult = true) {
        parts.shapes = shapesOn;
        parts.binaryFiles = binary;
        parts.particleSystems = ps;
        parts.animation = an;
        parts.userAttributes = ua;
        parts.hasShapeBlobs = blobs;
        parts.animationBlobSize = animationSize;
        std::ostringstream out;
        bool ok = vqm::assembleDocument(
            out, parts, [&](std::ostream& o) { o << "<stub S>"; return shapesStubResult; },
            [](std::ostream& o) { o << "<stub A>"; });
        std::string text = out.str();
        size_t head = text.find('\n', text.find("<vQM "));
        return (ok ? "" : "FAILED:") + text.substr(head + 1);
    };
    EXPECT_EQ(body(false, false, false, false, false, false, 0), "M\nN\n</vQM>\n");
    EXPECT_EQ(body(true, false, true, true, true, false, 0), "M\nS\nD\nN\nA\nU\n</vQM>\n");
    EXPECT_EQ(body(true, true, false, true, false, true, 5), "M\n<stub S>N\n<stub A></vQM>\n");
    EXPECT_EQ(body(true, true, false, true, false, false, 4), "M\nN\n</vQM>\n")
        << "binary with no blobs and an animation of 4 bytes writes neither section";
    EXPECT_EQ(body(false, false, false, true, false, false, 0), "M\nN\nA\n</vQM>\n")
        << "text animation is written however short";
    EXPECT_EQ(body(true, true, false, false, true, true, 0, false), "FAILED:M\n<stub S>")
        << "a shapes file that cannot be opened leaves the document as far as it was written";
}

}  // namespace
