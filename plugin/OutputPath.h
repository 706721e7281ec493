// Turns the path the user gave into the path the document is written to.
#pragma once

#include <string>

namespace vqm {

// '$' stands for '/' in the given path, so that scripts need not escape separators.
std::string replaceDollarSigns(const std::string& given);

// A relative path behind the working directory, whose backslashes become '/'; exactly one '/'
// stands between the two.
std::string prependWorkingDirectory(const std::string& workingDirectory, const std::string& relativePath);

// The directory part of a path, with its closing '/'; all of it when there is no '/'.
std::string directoryOf(const std::string& path);

}  // namespace vqm
