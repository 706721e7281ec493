// What an embedding program (the command-line host, tests) sets up around the host API:
// where messages go, the scene, plug-ins, the workspace.
#pragma once

#include <functional>
#include <string>

namespace vqmhost {

enum class MessageKind { Info, Warning, Error };
using MessageSink = std::function<void(MessageKind, const std::string&)>;

// Messages of MGlobal::display* and of the host itself. Without a sink they go to stderr.
void setMessageSink(MessageSink sink);
void emitMessage(MessageKind kind, const std::string& text);

// Replaces the scene by a new one holding what a new scene of the host holds.
void resetScene();

// Loads a plug-in library through its initializePlugin; false with a reason on failure.
bool loadPlugin(const std::string& path, std::string& error);
// Calls uninitializePlugin of every loaded plug-in and closes the libraries.
void unloadAllPlugins();

// The workspace behind the "workspace" command. Without a root the command fails.
void setWorkspaceRoot(const std::string& root);
void clearWorkspace();
void setWorkspaceFileRule(const std::string& rule, const std::string& value);

}  // namespace vqmhost
