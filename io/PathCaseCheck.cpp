#include "io/PathCaseCheck.h"

#include "io/Logger.h"

#include <dirent.h>

#include <algorithm>

namespace vqm
{

namespace
{

const size_t kMaxPrefixLength = 259;

bool isSeparator(char c)
{
	return c == '/' || c == '\\';
}

char foldCase(char c)
{
	return (c >= 'A' && c <= 'Z') ? char(c - 'A' + 'a') : c;
}

bool equalIgnoringCase(const std::string& a, const char* b)
{
	size_t i = 0;
	for (; i < a.size(); ++i)
		if (b[i] == 0 || foldCase(a[i]) != foldCase(b[i]))
			return false;

	return b[i] == 0;
}

enum LookupResult
{
	LookupMissing,
	LookupSameCase,
	LookupOtherCase,
};

// Finds the entry a case-blind file system would open for this prefix. An entry with exactly
// the same name wins over one that differs in case only.
LookupResult lookupStoredName(const std::string& prefix)
{
	size_t split = prefix.find_last_of("/\\");
	std::string name = split == std::string::npos ? prefix : prefix.substr(split + 1);
	std::string directory = split == std::string::npos ? "." : prefix.substr(0, split);
	if (directory.empty())
		directory = "/";

	// a prefix that ends in a separator names no entry
	if (name.empty())
		return LookupMissing;

	DIR* dir = opendir(directory.c_str());
	if (!dir)
		return LookupMissing;

	LookupResult result = LookupMissing;
	while (dirent* entry = readdir(dir))
	{
		if (name == entry->d_name)
		{
			result = LookupSameCase;
			break;
		}

		if (equalIgnoringCase(name, entry->d_name))
			result = LookupOtherCase;
	}

	closedir(dir);
	return result;
}

bool endsInParentComponent(const std::string& prefix)
{
	size_t size = prefix.size();
	if (prefix == "..")
		return true;

	return size >= 3 && prefix[size - 1] == '.' && prefix[size - 2] == '.' && isSeparator(prefix[size - 3]);
}

} // namespace

bool checkPathCase(const std::string& path)
{
	size_t size = path.size();
	size_t cursor = 0;

	// a drive or share prefix is never looked at: start at its first separator
	bool drive = size >= 2 && path[1] == ':';
	bool share = size >= 2 && path[0] == '\\' && path[1] == '\\';
	if (drive || share)
	{
		cursor = path.find_first_of("/\\");
		if (cursor == std::string::npos)
			return true;
	}

	while (cursor < size)
	{
		// the byte at the cursor is passed over unseen: a separator, or the first byte of a
		// relative path
		size_t end = path.find_first_of("/\\", cursor + 1);
		if (end == std::string::npos)
			end = size;

		std::string prefix = path.substr(0, std::min(end, kMaxPrefixLength));
		cursor = end;

		if (endsInParentComponent(prefix))
			continue;

		if (lookupStoredName(prefix) == LookupOtherCase)
		{
			Logger::getInstance().warning("Warning: Loading file with invalid case '%s'.\n", path.c_str());
			return false;
		}
	}

	return true;
}

} // namespace vqm
