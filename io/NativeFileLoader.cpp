#include "io/NativeFileLoader.h"

#include "io/NativeFile.h"
#include "io/PathUtilities.h"
#include "io/TextEncoding.h"

#include <dirent.h>
#include <sys/stat.h>

#include <new>

namespace vqm
{

NativeFileLoader::NativeFileLoader(const std::string& rootDirectory_, const std::string& aliasDirectory_, uint32_t priority_)
    : IFileLoader(priority_)
    , rootDirectory(rootDirectory_)
    , aliasDirectory(aliasDirectory_)
{
}

std::string NativeFileLoader::resolve(const std::string& path, bool isAbsolute) const
{
	return isAbsolute ? path : rootDirectory + path;
}

File* NativeFileLoader::open(const std::string& path, uint32_t mode, bool isAbsolute)
{
	NativeFile* file = new (std::nothrow) NativeFile();
	if (!file)
		return nullptr;

	if (!file->open(resolve(path, isAbsolute), mode, true))
	{
		delete file;
		return nullptr;
	}

	return file;
}

void NativeFileLoader::listDirectory(const std::string& path, std::vector<DirectoryEntry>& entries)
{
	std::string directory = resolve(path, isAbsolutePath(path));

	// the search pattern the directory stands for must fit its buffer
	std::string pattern = directory + (!directory.empty() && directory.back() == '/' ? "*" : "/*");
	if (!fitsPathBuffer(pattern, kSearchPatternBufferUnits))
		return;

	DIR* dir = opendir(directory.empty() ? "." : directory.c_str());
	if (!dir)
		return;

	std::string prefix = directory.empty() || directory.back() == '/' ? directory : directory + "/";

	while (dirent* entry = readdir(dir))
	{
		std::string name = entry->d_name;

		// hidden entries, '.' and '..'
		if (name.empty() || name[0] == '.')
			continue;

		bool known = false;
		for (const DirectoryEntry& e : entries)
			known = known || e.name == name;
		if (known)
			continue;

		struct stat info;
		if (stat((prefix + name).c_str(), &info) != 0)
			continue;

		DirectoryEntry result;
		result.name = name;
		result.type = S_ISDIR(info.st_mode) ? PathTypeDirectory : PathTypeFile;
		result.size = S_ISDIR(info.st_mode) ? 0 : uint64_t(info.st_size);
		result.lastWriteTime = uint64_t(info.st_mtim.tv_sec) * 1000000000ull + uint64_t(info.st_mtim.tv_nsec);
		entries.push_back(result);
	}

	closedir(dir);
}

void NativeFileLoader::invalidate(const std::string&, bool)
{
	// nothing is cached
}

bool NativeFileLoader::exists(const std::string& path, bool isAbsolute)
{
	return getPathType(resolve(path, isAbsolute)) == PathTypeFile;
}

void NativeFileLoader::changeRoot(const std::string& oldRoot, const std::string& newRoot)
{
	if (rootDirectory == oldRoot)
		rootDirectory = newRoot;
}

bool NativeFileLoader::queryFile(const std::string&, bool, uint64_t*, int64_t*, uint32_t*)
{
	return false;
}

} // namespace vqm
