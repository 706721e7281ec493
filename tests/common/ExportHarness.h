// Runs the real export command in this process on a scene given as Maya ASCII text, and hands
// back the document and the host's messages. The plug-in is loaded once, through its
// initializePlugin, as the host loads it.
#pragma once

#include <maya/MGlobal.h>

#include "Session.h"
#include "mayaascii/MayaAsciiReader.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace vqmtest {

struct Message {
    vqmhost::MessageKind kind;
    std::string text;
};

struct ExportRun {
    bool ok = false;
    std::vector<Message> messages;
    std::string document;  // empty when no document was written
    bool documentExists = false;
    std::string outputPath;

    std::vector<std::string> of(vqmhost::MessageKind kind) const
    {
        std::vector<std::string> out;
        for (const Message& m : messages)
            if (m.kind == kind) out.push_back(m.text);
        return out;
    }
    std::vector<std::string> warnings() const { return of(vqmhost::MessageKind::Warning); }
    std::vector<std::string> infos() const { return of(vqmhost::MessageKind::Info); }
    std::vector<std::string> errors() const { return of(vqmhost::MessageKind::Error); }
};

inline std::string readWholeFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

inline bool fileExists(const std::string& path)
{
    struct stat st;
    return stat(path.c_str(), &st) == 0;
}

// A fresh directory for one test's files, removed with everything in it at the end.
class TemporaryDirectory {
public:
    TemporaryDirectory()
    {
        std::string base = "/tmp/vqmtest-XXXXXX";
        std::vector<char> buffer(base.begin(), base.end());
        buffer.push_back('\0');
        const char* made = mkdtemp(buffer.data());
        path_ = made ? made : "/tmp";
    }
    ~TemporaryDirectory()
    {
        if (path_ != "/tmp") {
            std::string command = "rm -rf '" + path_ + "'";
            if (system(command.c_str()) != 0) {}
        }
    }
    const std::string& path() const { return path_; }
    std::string file(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

class ExportHarness {
public:
    ExportHarness()
    {
        vqmhost::setMessageSink([this](vqmhost::MessageKind kind, const std::string& text) {
            messages_.push_back(Message{kind, text});
        });
        static bool loaded = [] {
            std::string error;
            bool ok = vqmhost::loadPlugin(VQM_PLUGIN_PATH, error);
            if (!ok) ADD_FAILURE() << error;
            return ok;
        }();
        EXPECT_TRUE(loaded);
    }
    ~ExportHarness() { vqmhost::setMessageSink(nullptr); }

    // Loads the scene; fileName is what the host reports as the scene's path ("" if unsaved).
    bool loadScene(const std::string& maText, const std::string& fileName = "/scenes/test.ma")
    {
        messages_.clear();
        std::string error;
        bool ok = vqmhost::readMayaAsciiText(maText, fileName, error);
        if (!ok) lastError_ = error;
        return ok;
    }
    const std::string& lastError() const { return lastError_; }
    const std::vector<Message>& loadMessages() const { return messages_; }

    // Runs "VQMExporter -f <dir>/out.vqm <flags>" and reads the document back.
    ExportRun run(const std::string& flags, const std::string& outputName = "out.vqm")
    {
        ExportRun result;
        result.outputPath = directory_.file(outputName);
        messages_.clear();
        std::string command = "VQMExporter -f \"" + result.outputPath + "\" " + flags;
        result.ok = bool(MGlobal::executeCommand(MString(command)));
        result.messages = messages_;
        result.documentExists = fileExists(result.outputPath);
        if (result.documentExists) result.document = readWholeFile(result.outputPath);
        unlink(result.outputPath.c_str());
        return result;
    }

    // Runs a command line as given, e.g. to test the flags themselves.
    ExportRun runCommand(const std::string& command)
    {
        ExportRun result;
        messages_.clear();
        result.ok = bool(MGlobal::executeCommand(MString(command)));
        result.messages = messages_;
        return result;
    }

    const TemporaryDirectory& directory() const { return directory_; }

private:
    std::vector<Message> messages_;
    std::string lastError_;
    TemporaryDirectory directory_;
};

// The document of an export with the given Scene text: everything a run writes around it.
inline std::string documentWith(const std::string& name, const std::string& body)
{
    return "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?>\n\n<vQM name=\"" + name +
           "\" version=\"1.6\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
           "xsi:noNamespaceSchemaLocation=\"https://schemas.vqm-format.org/schema/vqm-1.6.xsd\">\n" +
           body + "</vQM>\n";
}

// The text between the first line that equals begin and the next line that equals end, both
// included; empty when they are not there.
inline std::string section(const std::string& document, const std::string& begin, const std::string& end)
{
    size_t from = document.find(begin + "\n");
    if (from == std::string::npos) return std::string();
    size_t to = document.find(end + "\n", from);
    if (to == std::string::npos) return std::string();
    return document.substr(from, to + end.size() + 1 - from);
}

}  // namespace vqmtest
