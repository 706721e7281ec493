// The process-wide list of file loaders, asked in priority order, and of the listeners told
// about data loss met in reads and writes.
#pragma once

#include "io/FileLoader.h"

#include <mutex>
#include <string>
#include <vector>

namespace vqm
{

enum FileErrorKind : uint32_t
{
	FileErrorCorruptData = 0, // met in a read
	FileErrorDiskFull = 1,    // met in a write
};

class FileLoaderListener
{
public:
	virtual void onFileError(const std::string& path, uint32_t kind) = 0;

protected:
	~FileLoaderListener() {}
};

class FileLoaderRegistry
{
public:
	static FileLoaderRegistry& getInstance();

	FileLoaderRegistry() = default;
	// deletes the loaders in list order
	~FileLoaderRegistry();

	FileLoaderRegistry(const FileLoaderRegistry&) = delete;
	FileLoaderRegistry& operator=(const FileLoaderRegistry&) = delete;

	// the registry takes ownership
	void addLoader(IFileLoader* loader);
	// hands ownership back; false when the loader wasn't registered
	bool removeLoader(IFileLoader* loader);
	size_t getLoaderCount() const;

	// the first file a loader delivers, null when none does; the caller owns the result
	File* openFile(const std::string& path, uint32_t mode);
	bool fileExists(const std::string& path);
	// refuses an existing destination unless overwrite is set, a source that refuses copying,
	// and a destination that is the source itself
	bool copyFile(const std::string& source, const std::string& destination, bool overwrite);
	void listDirectory(const std::string& path, std::vector<DirectoryEntry>& entries);
	void invalidate(const std::string& path);
	void setRoot(const std::string& newRoot);

	// listeners are not owned
	void addListener(FileLoaderListener* listener);
	void removeListener(FileLoaderListener* listener);
	void notifyFileError(const std::string& path, uint32_t kind);

private:
	std::vector<IFileLoader*> loaders;
	std::vector<FileLoaderListener*> listeners;
	std::string currentRoot;

	// recursive: a loader or listener may call back into the registry
	mutable std::recursive_mutex loaderLock;
	std::recursive_mutex listenerLock;
};

} // namespace vqm
