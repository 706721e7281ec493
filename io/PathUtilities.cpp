#include "io/PathUtilities.h"

#include "io/TextEncoding.h"

#include <sys/stat.h>

namespace vqm
{

bool isAbsolutePath(const std::string& path)
{
	if (path.empty())
		return false;

	if (path[0] == '/')
		return true;

	return path.size() >= 2 && (path[1] == ':' || (path[0] == '\\' && path[1] == '\\'));
}

void getDirectory(const std::string& path, std::string& directoryOut)
{
	size_t slash = path.rfind('/');

	if (slash != std::string::npos)
		directoryOut.assign(path, 0, slash + 1);
}

void getFileName(const std::string& path, std::string& fileNameOut, bool keepExtension)
{
	size_t slash = path.rfind('/');

	// copy first: fileNameOut may be path itself
	std::string name = slash == std::string::npos ? path : path.substr(slash + 1);

	if (!keepExtension)
	{
		size_t dot = name.find('.');
		if (dot != std::string::npos)
			name.resize(dot);
	}

	fileNameOut.swap(name);
}

int32_t getRelativePath(const std::string& baseDirectory, const std::string& comparePath, const std::string& path, std::string& resultOut)
{
	if (comparePath.compare(0, baseDirectory.size(), baseDirectory) == 0 && comparePath.size() >= baseDirectory.size())
	{
		resultOut = baseDirectory.size() < path.size() ? path.substr(baseDirectory.size()) : std::string();
		return 1;
	}

	if (comparePath.empty())
		return 0;

	size_t common = 0;
	while (common < comparePath.size() && common < baseDirectory.size() && comparePath[common] == baseDirectory[common])
		common++;

	if (common == 0)
		return 0;

	// the common bytes may stop inside a name; go back to the last whole directory. A shared
	// leading '/' alone is no common directory.
	size_t split = comparePath.rfind('/', common - 1);
	if (split == std::string::npos || split == 0)
		return 0;

	size_t levels = 0;
	for (size_t i = split + 1; i < baseDirectory.size(); ++i)
		levels += baseDirectory[i] == '/';

	std::string result;
	for (size_t i = 0; i < levels; ++i)
		result += "../";

	if (split + 1 < path.size())
		result.append(path, split + 1, std::string::npos);

	resultOut.swap(result);
	return 1;
}

int32_t getPathType(const std::string& path)
{
	if (!fitsPathBuffer(path, kPathBufferUnits))
		return PathTypeNone;

	std::string lookup = path;
	if (!lookup.empty() && lookup.back() == '/')
		lookup.pop_back();

	struct stat info;
	if (lookup.empty() || stat(lookup.c_str(), &info) != 0)
		return PathTypeNone;

	if (S_ISDIR(info.st_mode))
		return PathTypeDirectory;

	// devices, pipes and sockets are the platform's special entries: not a file for us
	if (!S_ISREG(info.st_mode))
		return PathTypeNone;

	return PathTypeFile;
}

} // namespace vqm
