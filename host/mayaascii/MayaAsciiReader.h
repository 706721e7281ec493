// Reads a Maya ASCII scene into the current scene of the stand-in host.
#pragma once

#include <string>

namespace vqmhost {

// Replaces the current scene by the file's. A syntax error stops the load and gives false with
// "file:line:column: message" in error; what the reader does not know gives warnings naming the line.
bool readMayaAsciiFile(const std::string& path, std::string& error);

// The same for text in memory; fileName is the scene's name ("" for an unsaved scene) and names
// the text in messages.
bool readMayaAsciiText(const std::string& text, const std::string& fileName, std::string& error);

}  // namespace vqmhost
