// The binary side files of an export: the loader through which they are opened.
#pragma once

#include <string>

namespace vqm {

// Registers a loader rooted at the output's directory, through which the side files are opened.
// It stays registered for the rest of the process.
void prepareSideFiles(const std::string& outputPath);

}  // namespace vqm
