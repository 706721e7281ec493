// MGlobal, MPxCommand and the command registry: messages, commands as text, selection.
#include <maya/MGlobal.h>
#include <maya/MPxCommand.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

#include "Commands.h"
#include "Graph.h"
#include "Session.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>

namespace vqmhost {

namespace {

struct Registry {
    struct PluginCommand {
        MCreatorFunction creator;
        std::string owner;
    };
    std::map<std::string, BuiltinCommand> builtins;
    std::map<std::string, PluginCommand> plugins;
    MessageSink sink;
    std::vector<CommandResult*> results;  // results of the commands now running, innermost last
    std::string workspaceRoot;
    bool hasWorkspace = false;
    std::map<std::string, std::string> fileRules{{"sourceImages", "sourceimages"}, {"scene", "scenes"}};
};

Registry& registry()
{
    static Registry r;
    return r;
}

}  // namespace

void setMessageSink(MessageSink sink)
{
    registry().sink = std::move(sink);
}

void emitMessage(MessageKind kind, const std::string& text)
{
    if (registry().sink) {
        registry().sink(kind, text);
        return;
    }
    const char* prefix = kind == MessageKind::Warning ? "Warning: " : kind == MessageKind::Error ? "Error: " : "";
    fprintf(stderr, "%s%s\n", prefix, text.c_str());
}

void setWorkspaceRoot(const std::string& root)
{
    std::string r = root;
    if (!r.empty() && r.back() != '/') r += '/';
    registry().workspaceRoot = r;
    registry().hasWorkspace = true;
}

void clearWorkspace()
{
    registry().workspaceRoot.clear();
    registry().hasWorkspace = false;
}

void setWorkspaceFileRule(const std::string& rule, const std::string& value)
{
    registry().fileRules[rule] = value;
}

void registerBuiltinCommand(const std::string& name, BuiltinCommand command)
{
    registry().builtins[name] = std::move(command);
}

MStatus registerPluginCommand(const std::string& name, MCreatorFunction creator, const std::string& owner)
{
    Registry& r = registry();
    if (!creator || name.empty() || r.builtins.count(name) || r.plugins.count(name)) return MStatus::kFailure;
    r.plugins[name] = Registry::PluginCommand{creator, owner};
    return MStatus::kSuccess;
}

MStatus deregisterPluginCommand(const std::string& name, const std::string& owner)
{
    Registry& r = registry();
    auto it = r.plugins.find(name);
    if (it == r.plugins.end() || it->second.owner != owner) return MStatus::kFailure;
    r.plugins.erase(it);
    return MStatus::kSuccess;
}

bool hasCommand(const std::string& name)
{
    return registry().builtins.count(name) || registry().plugins.count(name);
}

bool splitCommandLine(const std::string& line, std::vector<std::string>& words, std::string& error)
{
    words.clear();
    size_t i = 0;
    while (i < line.size()) {
        char c = line[i];
        if (isspace((unsigned char)c)) {
            ++i;
        } else if (c == ';') {
            ++i;
            for (; i < line.size(); ++i)
                if (!isspace((unsigned char)line[i])) {
                    error = "only one command can be run at a time";
                    return false;
                }
        } else if (c == '"') {
            std::string word;
            ++i;
            bool closed = false;
            while (i < line.size()) {
                char d = line[i++];
                if (d == '"') {
                    closed = true;
                    break;
                }
                if (d == '\\' && i < line.size()) {
                    char e = line[i++];
                    word += e == 'n' ? '\n' : e == 't' ? '\t' : e == 'r' ? '\r' : e;
                } else {
                    word += d;
                }
            }
            if (!closed) {
                error = "unterminated string";
                return false;
            }
            words.push_back(word);
        } else {
            size_t end = i;
            while (end < line.size() && !isspace((unsigned char)line[end]) && line[end] != ';') ++end;
            words.push_back(line.substr(i, end - i));
            i = end;
        }
    }
    if (words.empty()) {
        error = "empty command";
        return false;
    }
    return true;
}

MStatus runCommand(const std::string& line, CommandResult& result, bool display)
{
    Registry& r = registry();
    std::vector<std::string> words;
    std::string error;
    if (!splitCommandLine(line, words, error)) {
        emitMessage(MessageKind::Error, "Syntax error: " + error + ": " + line);
        return MStatus::kFailure;
    }
    if (display) emitMessage(MessageKind::Info, line);
    std::vector<std::string> args(words.begin() + 1, words.end());
    result.values.clear();
    MStatus status = MStatus::kFailure;
    auto builtin = r.builtins.find(words[0]);
    auto plugin = r.plugins.find(words[0]);
    if (builtin != r.builtins.end()) {
        status = builtin->second(args, result);
    } else if (plugin != r.plugins.end()) {
        std::unique_ptr<MPxCommand> command(static_cast<MPxCommand*>(plugin->second.creator()));
        if (!command) return MStatus::kFailure;
        MArgList argList;
        for (const std::string& a : args) argList.addArg(MString(a));
        r.results.push_back(&result);
        status = command->doIt(argList);
        r.results.pop_back();
    } else {
        emitMessage(MessageKind::Error, "Cannot find procedure \"" + words[0] + "\".");
        return MStatus::kFailure;
    }
    if (display && status && !result.values.empty()) {
        std::string text = "Result: ";
        for (size_t i = 0; i < result.values.size(); ++i) text += (i ? " " : "") + result.values[i];
        emitMessage(MessageKind::Info, text);
    }
    return status;
}

static bool hasFlag(const std::vector<std::string>& args, const char* shortName, const char* longName)
{
    for (const std::string& a : args)
        if (a == std::string("-") + shortName || a == std::string("-") + longName) return true;
    return false;
}

static const std::string* flagValue(const std::vector<std::string>& args, const char* shortName, const char* longName)
{
    for (size_t i = 0; i + 1 < args.size(); ++i)
        if (args[i] == std::string("-") + shortName || args[i] == std::string("-") + longName) return &args[i + 1];
    return nullptr;
}

// "file -q -sceneName": the path of the scene file, empty for a scene never saved.
static MStatus fileCommand(const std::vector<std::string>& args, CommandResult& result)
{
    if (hasFlag(args, "q", "query") && hasFlag(args, "sn", "sceneName")) {
        const std::string& name = currentScene().fileName;
        if (hasFlag(args, "shn", "shortName")) {
            size_t slash = name.rfind('/');
            result.values.push_back(slash == std::string::npos ? name : name.substr(slash + 1));
        } else {
            result.values.push_back(name);
        }
        return MStatus::kSuccess;
    }
    emitMessage(MessageKind::Error, "file: the stand-in host answers only -query -sceneName");
    return MStatus::kFailure;
}

// "workspace -expandName NAME" and "workspace -fileRuleEntry RULE".
static MStatus workspaceCommand(const std::vector<std::string>& args, CommandResult& result)
{
    Registry& r = registry();
    if (!r.hasWorkspace) {
        emitMessage(MessageKind::Error, "workspace: no workspace is set");
        return MStatus::kFailure;
    }
    if (const std::string* name = flagValue(args, "en", "expandName")) {
        bool absolute = !name->empty() && ((*name)[0] == '/' || (name->size() > 1 && (*name)[1] == ':'));
        result.values.push_back(absolute ? *name : r.workspaceRoot + *name);
        return MStatus::kSuccess;
    }
    if (const std::string* rule = flagValue(args, "fre", "fileRuleEntry")) {
        auto it = r.fileRules.find(*rule);
        if (it == r.fileRules.end()) {
            emitMessage(MessageKind::Error, "workspace: no file rule \"" + *rule + "\"");
            return MStatus::kFailure;
        }
        result.values.push_back(it->second);
        return MStatus::kSuccess;
    }
    if (hasFlag(args, "q", "query") && hasFlag(args, "rd", "rootDirectory")) {
        result.values.push_back(r.workspaceRoot);
        return MStatus::kSuccess;
    }
    emitMessage(MessageKind::Error, "workspace: the stand-in host answers -expandName, -fileRuleEntry and -q -rootDirectory");
    return MStatus::kFailure;
}

static bool registerBuiltins()
{
    registerBuiltinCommand("file", fileCommand);
    registerBuiltinCommand("workspace", workspaceCommand);
    return true;
}

static bool builtinsRegistered = registerBuiltins();

std::vector<CommandResult*>& runningResults()
{
    return registry().results;
}

}  // namespace vqmhost

using namespace vqmhost;

void MGlobal::displayInfo(const MString& text) { emitMessage(MessageKind::Info, text.str()); }
void MGlobal::displayWarning(const MString& text) { emitMessage(MessageKind::Warning, text.str()); }
void MGlobal::displayError(const MString& text) { emitMessage(MessageKind::Error, text.str()); }

MStatus MGlobal::executeCommand(const MString& command, bool displayEnabled, bool)
{
    CommandResult result;
    return runCommand(command.str(), result, displayEnabled);
}

MStatus MGlobal::executeCommand(const MString& command, MString& result, bool displayEnabled, bool)
{
    CommandResult r;
    MStatus s = runCommand(command.str(), r, displayEnabled);
    if (s) {
        std::string text;
        for (size_t i = 0; i < r.values.size(); ++i) text += (i ? " " : "") + r.values[i];
        result = MString(text);
    }
    return s;
}

MStatus MGlobal::executeCommand(const MString& command, int& result, bool displayEnabled, bool)
{
    CommandResult r;
    MStatus s = runCommand(command.str(), r, displayEnabled);
    if (s && !r.values.empty()) result = atoi(r.values[0].c_str());
    return s;
}

MStatus MGlobal::executeCommand(const MString& command, double& result, bool displayEnabled, bool)
{
    CommandResult r;
    MStatus s = runCommand(command.str(), r, displayEnabled);
    if (s && !r.values.empty()) result = atof(r.values[0].c_str());
    return s;
}

MStatus MGlobal::executeCommand(const MString& command, MStringArray& result, bool displayEnabled, bool)
{
    CommandResult r;
    MStatus s = runCommand(command.str(), r, displayEnabled);
    if (s) {
        result.clear();
        for (const std::string& v : r.values) result.append(MString(v));
    }
    return s;
}

MStatus MGlobal::getActiveSelectionList(MSelectionList& list, bool)
{
    list.clear();
    for (const MObject& o : currentScene().activeSelection) list.add(o);
    return MStatus::kSuccess;
}

MStatus MGlobal::setActiveSelectionList(const MSelectionList& list, ListAdjustment mode)
{
    auto& active = currentScene().activeSelection;
    if (mode == kReplaceList) active.clear();
    for (unsigned i = 0; i < list.length(); ++i) {
        MObject o;
        list.getDependNode(i, o);
        if (mode == kRemoveFromList) {
            for (auto it = active.begin(); it != active.end(); ++it)
                if (*it == o) {
                    active.erase(it);
                    break;
                }
        } else {
            active.push_back(o);
        }
    }
    return MStatus::kSuccess;
}

MStatus MGlobal::getSelectionListByName(const MString& name, MSelectionList& list)
{
    // A name that matches nothing is no error: the list stays as it was.
    MStatus status = list.add(name);
    return name.length() == 0 ? status : MStatus(MStatus::kSuccess);
}

MStatus MGlobal::selectByName(const MString& name, ListAdjustment mode)
{
    MSelectionList list;
    MStatus s = list.add(name);
    if (s) setActiveSelectionList(list, mode);
    return s;
}

MGlobal::MMayaState MGlobal::mayaState(MStatus* status)
{
    if (status) *status = MStatus::kSuccess;
    return kLibraryApp;
}

int MGlobal::apiVersion() { return 201600; }
MString MGlobal::mayaVersion() { return MString("2016"); }

MPxCommand::~MPxCommand() = default;
MStatus MPxCommand::doIt(const MArgList&) { return MStatus::kSuccess; }
MStatus MPxCommand::undoIt() { return MStatus::kNotImplemented; }
MStatus MPxCommand::redoIt() { return MStatus::kNotImplemented; }
bool MPxCommand::isUndoable() const { return false; }
bool MPxCommand::hasSyntax() const { return true; }

static CommandResult* currentResult()
{
    auto& results = runningResults();
    return results.empty() ? nullptr : results.back();
}

void MPxCommand::clearResult()
{
    if (CommandResult* r = currentResult()) r->values.clear();
}

void MPxCommand::setResult(const MString& result)
{
    if (CommandResult* r = currentResult()) r->values.assign(1, result.str());
}

void MPxCommand::setResult(int result) { setResult(MString(std::to_string(result))); }
void MPxCommand::setResult(bool result) { setResult(MString(result ? "1" : "0")); }
void MPxCommand::setResult(double result)
{
    MString text;
    text += result;
    setResult(text);
}

void MPxCommand::appendToResult(const MString& result)
{
    if (CommandResult* r = currentResult()) r->values.push_back(result.str());
}

void MPxCommand::displayInfo(const MString& text) { MGlobal::displayInfo(text); }
void MPxCommand::displayWarning(const MString& text) { MGlobal::displayWarning(text); }
void MPxCommand::displayError(const MString& text) { MGlobal::displayError(text); }
