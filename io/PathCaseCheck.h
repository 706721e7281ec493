// Reports a path that reaches its file only because the file system ignores case.
#pragma once

#include <string>

namespace vqm
{

// Walks the path one component at a time and compares each component with the name stored
// in its directory. The first difference is reported through Logger::warning with the whole
// path, and the result is false. Components that are not found are passed over.
bool checkPathCase(const std::string& path);

} // namespace vqm
