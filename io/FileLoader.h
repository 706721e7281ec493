// A source of files: turns a path and an open mode into a File.
#pragma once

#include "io/File.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vqm
{

struct DirectoryEntry
{
	std::string name; // UTF-8, without the directory
	uint32_t type;    // PathTypeFile or PathTypeDirectory
	uint64_t size;
	uint64_t lastWriteTime; // nanoseconds since the epoch
};

class IFileLoader
{
public:
	explicit IFileLoader(uint32_t priority_)
	    : priority(priority_)
	{
	}

	virtual ~IFileLoader() {}

	// null when the loader can't deliver the file; the caller owns the result
	virtual File* open(const std::string& path, uint32_t mode, bool isAbsolute) = 0;
	// appends the entries of the directory; names already in entries are not added again
	virtual void listDirectory(const std::string& path, std::vector<DirectoryEntry>& entries) = 0;
	// drops whatever the loader remembers about the path
	virtual void invalidate(const std::string& path, bool isAbsolute) = 0;
	virtual bool exists(const std::string& path, bool isAbsolute) = 0;
	virtual void changeRoot(const std::string& oldRoot, const std::string& newRoot) = 0;
	// size, modification time (seconds since the epoch) and flags without opening the file;
	// false when the loader can't tell
	virtual bool queryFile(const std::string& path, bool isAbsolute, uint64_t* sizeOut, int64_t* timeOut, uint32_t* flagsOut) = 0;

	// lower comes first
	uint32_t priority;
};

} // namespace vqm
