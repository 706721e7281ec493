// The command registry behind MGlobal::executeCommand: the host's built-in commands and the
// commands that plug-ins register.
#pragma once

#include <maya/MFnPlugin.h>
#include <maya/MStatus.h>

#include <functional>
#include <string>
#include <vector>

namespace vqmhost {

struct CommandResult {
    std::vector<std::string> values;  // one for a scalar result, several for an array
};

using BuiltinCommand = std::function<MStatus(const std::vector<std::string>& args, CommandResult& result)>;

void registerBuiltinCommand(const std::string& name, BuiltinCommand command);
MStatus registerPluginCommand(const std::string& name, MCreatorFunction creator, const std::string& owner);
MStatus deregisterPluginCommand(const std::string& name, const std::string& owner);
bool hasCommand(const std::string& name);

// Splits a command line as the host's command language does: words, "strings" with escapes,
// an optional closing ';'.
bool splitCommandLine(const std::string& line, std::vector<std::string>& words, std::string& error);

MStatus runCommand(const std::string& line, CommandResult& result, bool display);

// Results of the plug-in commands now running, innermost last: where MPxCommand::setResult writes.
std::vector<CommandResult*>& runningResults();

}  // namespace vqmhost
