// Free functions on path strings. They work on bytes and, apart from getPathType, never touch
// the file system. Only isAbsolutePath knows the backslash; callers turn backslashes into '/'
// before using the others.
#pragma once

#include <cstdint>
#include <string>

namespace vqm
{

enum PathType
{
	PathTypeNone = 0,
	PathTypeFile = 1,
	PathTypeDirectory = 2,
};

// "X:..." (drive), "\\server..." (share) and, on POSIX, "/..." are absolute. The drive letter
// itself is not examined.
bool isAbsolutePath(const std::string& path);

// Everything up to and including the last '/'. Without a '/', directoryOut keeps what it held.
void getDirectory(const std::string& path, std::string& directoryOut);

// Everything behind the last '/', or the whole path. Without keepExtension the name is cut in
// front of its first '.'.
void getFileName(const std::string& path, std::string& fileNameOut, bool keepExtension);

// path relative to baseDirectory (which ends in '/'). comparePath is the form of path that is
// compared (e.g. lower-cased, with a lower-cased baseDirectory); the text of the result always
// comes from path. Returns 1 with resultOut set, or 0 with resultOut untouched. resultOut may
// be the same string as path.
int32_t getRelativePath(const std::string& baseDirectory, const std::string& comparePath, const std::string& path, std::string& resultOut);

// PathTypeNone, PathTypeFile or PathTypeDirectory, for what the path names on disk.
int32_t getPathType(const std::string& path);

} // namespace vqm
