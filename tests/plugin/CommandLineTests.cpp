// vqmexport as a user runs it: exit status and messages for good and bad input.
#include "common/ExportHarness.h"

#include <sys/wait.h>

namespace {

struct ToolRun {
    int status = -1;
    std::string out, err;
};

ToolRun runTool(const vqmtest::TemporaryDirectory& dir, const std::string& arguments)
{
    ToolRun run;
    std::string command = std::string("'") + VQM_EXPORT_TOOL + "' " + arguments + " >'" + dir.file("stdout") +
                          "' 2>'" + dir.file("stderr") + "'";
    int raw = system(command.c_str());
    run.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    run.out = vqmtest::readWholeFile(dir.file("stdout"));
    run.err = vqmtest::readWholeFile(dir.file("stderr"));
    return run;
}

void writeFile(const std::string& path, const std::string& text)
{
    std::ofstream out(path, std::ios::binary);
    out << text;
}

TEST(CommandLine, ExportsTheExampleScene)
{
    vqmtest::TemporaryDirectory dir;
    ToolRun run = runTool(dir, std::string(VQM_SOURCE_DIR) + "/examples/crate.ma -f '" + dir.file("crate.vqm") +
                                   "' -shap -n -uvs -l -cams");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.out.find("Export scene to: " + dir.file("crate.vqm")), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("done."), std::string::npos);
    std::string document = vqmtest::readWholeFile(dir.file("crate.vqm"));
    EXPECT_EQ(document.rfind("<?xml version=\"1.0\" encoding=\"iso-8859-1\"?>\n\n<vQM name=\"crate\"", 0), 0u);
    EXPECT_EQ(run.err, "") << "the example scene loads without a warning";
}

TEST(CommandLine, BadInputGivesOneClearErrorAndExitStatusTwo)
{
    vqmtest::TemporaryDirectory dir;
    ToolRun missing = runTool(dir, "'" + dir.file("nope.ma") + "' -f '" + dir.file("a.vqm") + "'");
    EXPECT_EQ(missing.status, 2);
    EXPECT_NE(missing.err.find(dir.file("nope.ma")), std::string::npos) << missing.err;

    writeFile(dir.file("broken.ma"), "createNode transform -n \"a\";\nsetAttr \".tx\" 1\n");
    ToolRun broken = runTool(dir, "'" + dir.file("broken.ma") + "' -f '" + dir.file("b.vqm") + "'");
    EXPECT_EQ(broken.status, 2);
    EXPECT_NE(broken.err.find(dir.file("broken.ma") + ":2:1: statement is not closed by ';'"), std::string::npos)
        << broken.err;
    EXPECT_FALSE(vqmtest::fileExists(dir.file("b.vqm"))) << "nothing is exported from a scene that does not parse";

    writeFile(dir.file("ok.ma"), "createNode transform -n \"a\";\n");
    ToolRun plugin = runTool(dir, "--plugin '" + dir.file("ok.ma") + "' '" + dir.file("ok.ma") + "' -f '" +
                                      dir.file("c.vqm") + "'");
    EXPECT_EQ(plugin.status, 2);
    EXPECT_NE(plugin.err.find("cannot load plug-in"), std::string::npos) << plugin.err;

    ToolRun selection = runTool(dir, "--select ghost '" + dir.file("ok.ma") + "' -f '" + dir.file("d.vqm") + "' -sel");
    EXPECT_EQ(selection.status, 2);
    EXPECT_NE(selection.err.find("ghost"), std::string::npos);

    ToolRun usage = runTool(dir, "--frobnicate");
    EXPECT_EQ(usage.status, 2);
    EXPECT_NE(usage.err.find("usage: vqmexport"), std::string::npos);
    EXPECT_EQ(runTool(dir, "--help").status, 0);
}

TEST(CommandLine, AFailedCommandExitsWithOneAndWarningsGoToStandardError)
{
    vqmtest::TemporaryDirectory dir;
    writeFile(dir.file("warn.ma"), "createNode transform -n \"a\";\nfrobnicate -x;\n");
    ToolRun noFile = runTool(dir, "'" + dir.file("warn.ma") + "' -shap");
    EXPECT_EQ(noFile.status, 1);
    EXPECT_NE(noFile.err.find("Warning: " + dir.file("warn.ma") + ":2: skipping the command 'frobnicate'"),
              std::string::npos)
        << noFile.err;
    EXPECT_EQ(noFile.out, "");
    ToolRun quiet = runTool(dir, "--quiet '" + dir.file("warn.ma") + "' -f '" + dir.file("w.vqm") + "'");
    EXPECT_EQ(quiet.status, 0);
    EXPECT_EQ(quiet.out, "");
    EXPECT_TRUE(vqmtest::fileExists(dir.file("w.vqm")));
}

}  // namespace
