// Loads files from the local file system, relative paths below a root directory.
#pragma once

#include "io/FileLoader.h"

namespace vqm
{

class NativeFileLoader : public IFileLoader
{
public:
	// rootDirectory ends in '/' or is empty; aliasDirectory is kept for callers that name one
	// but plays no part in resolving paths
	NativeFileLoader(const std::string& rootDirectory, const std::string& aliasDirectory, uint32_t priority);

	File* open(const std::string& path, uint32_t mode, bool isAbsolute) override;
	void listDirectory(const std::string& path, std::vector<DirectoryEntry>& entries) override;
	void invalidate(const std::string& path, bool isAbsolute) override;
	bool exists(const std::string& path, bool isAbsolute) override;
	void changeRoot(const std::string& oldRoot, const std::string& newRoot) override;
	bool queryFile(const std::string& path, bool isAbsolute, uint64_t* sizeOut, int64_t* timeOut, uint32_t* flagsOut) override;

	// an absolute path stays; a relative one is put behind the root, with no separator added
	std::string resolve(const std::string& path, bool isAbsolute) const;

	const std::string& getRootDirectory() const { return rootDirectory; }
	const std::string& getAliasDirectory() const { return aliasDirectory; }

private:
	std::string rootDirectory;
	std::string aliasDirectory;
};

} // namespace vqm
