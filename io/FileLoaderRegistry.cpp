#include "io/FileLoaderRegistry.h"

#include "io/NativeFile.h"
#include "io/PathUtilities.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <memory>

namespace vqm
{

namespace
{

typedef std::lock_guard<std::recursive_mutex> Guard;

const size_t kCopyChunkSize = 8192;

bool writeAll(int handle, const char* data, size_t size)
{
	while (size > 0)
	{
		ssize_t count = ::write(handle, data, size);
		if (count < 0 && errno == EINTR)
			continue;
		if (count <= 0)
			return false;

		data += count;
		size -= size_t(count);
	}

	return true;
}

// The system's own copy: contents and permission bits.
bool copyNativeFile(const std::string& source, const std::string& destination)
{
	int in = ::open(source.c_str(), O_RDONLY | O_CLOEXEC);
	if (in < 0)
		return false;

	struct stat info;
	if (fstat(in, &info) != 0)
	{
		close(in);
		return false;
	}

	int out = ::open(destination.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, info.st_mode & 07777);
	if (out < 0)
	{
		close(in);
		return false;
	}

	char buffer[65536];
	bool ok = true;
	for (;;)
	{
		ssize_t count = ::read(in, buffer, sizeof(buffer));
		if (count < 0 && errno == EINTR)
			continue;
		if (count <= 0)
		{
			ok = count == 0;
			break;
		}
		if (!writeAll(out, buffer, size_t(count)))
		{
			ok = false;
			break;
		}
	}

	fchmod(out, info.st_mode & 07777);
	ok = close(out) == 0 && ok;
	close(in);
	return ok;
}

} // namespace

FileLoaderRegistry& FileLoaderRegistry::getInstance()
{
	static FileLoaderRegistry instance;
	return instance;
}

FileLoaderRegistry::~FileLoaderRegistry()
{
	for (IFileLoader* loader : loaders)
		delete loader;
}

void FileLoaderRegistry::addLoader(IFileLoader* loader)
{
	if (!loader)
		return;

	Guard guard(loaderLock);

	// behind every loader of the same priority, so equal priorities keep their registration
	// order (at any length, which covers the short lists that promise it)
	auto position = std::upper_bound(loaders.begin(), loaders.end(), loader, [](const IFileLoader* a, const IFileLoader* b)
	    { return a->priority < b->priority; });

	loaders.insert(position, loader);
}

bool FileLoaderRegistry::removeLoader(IFileLoader* loader)
{
	Guard guard(loaderLock);

	auto position = std::find(loaders.begin(), loaders.end(), loader);
	if (position == loaders.end())
		return false;

	loaders.erase(position);
	return true;
}

size_t FileLoaderRegistry::getLoaderCount() const
{
	Guard guard(loaderLock);
	return loaders.size();
}

File* FileLoaderRegistry::openFile(const std::string& path, uint32_t mode)
{
	Guard guard(loaderLock);

	bool isAbsolute = isAbsolutePath(path);

	for (IFileLoader* loader : loaders)
		if (File* file = loader->open(path, mode, isAbsolute))
			return file;

	return nullptr;
}

bool FileLoaderRegistry::fileExists(const std::string& path)
{
	Guard guard(loaderLock);

	bool isAbsolute = isAbsolutePath(path);

	for (IFileLoader* loader : loaders)
		if (loader->exists(path, isAbsolute))
			return true;

	return false;
}

bool FileLoaderRegistry::copyFile(const std::string& source, const std::string& destination, bool overwrite)
{
	if (!overwrite && fileExists(destination))
		return false;

	std::unique_ptr<File> in(openFile(source, FileModeRead));
	if (!in || !in->isOpen() || in->refusesCopy())
		return false;

	// opening the destination truncates it: make sure first that it isn't the source
	if (in->isNative())
	{
		std::unique_ptr<File> probe(openFile(destination, FileModeAppend));
		if (probe && probe->isNative() && static_cast<NativeFile*>(probe.get())->isSameFile(*static_cast<NativeFile*>(in.get())))
			return false;
	}

	std::unique_ptr<File> out(openFile(destination, FileModeWrite));
	if (!out || !out->isOpen())
		return false;

	if (in->isNative() && out->isNative())
	{
		// the resolved paths, before the files are closed for the system to copy
		std::string from = static_cast<NativeFile*>(in.get())->getPath();
		std::string to = static_cast<NativeFile*>(out.get())->getPath();
		in.reset();
		out.reset();
		return copyNativeFile(from, to);
	}

	char buffer[kCopyChunkSize];
	for (;;)
	{
		int32_t count = in->read(buffer, sizeof(buffer));
		if (count < 0)
			return false;
		if (count == 0)
			return true;
		if (out->write(buffer, uint32_t(count)) != count)
			return false;
	}
}

void FileLoaderRegistry::listDirectory(const std::string& path, std::vector<DirectoryEntry>& entries)
{
	Guard guard(loaderLock);

	for (IFileLoader* loader : loaders)
		loader->listDirectory(path, entries);
}

void FileLoaderRegistry::invalidate(const std::string& path)
{
	Guard guard(loaderLock);

	bool isAbsolute = isAbsolutePath(path);

	for (IFileLoader* loader : loaders)
		loader->invalidate(path, isAbsolute);
}

void FileLoaderRegistry::setRoot(const std::string& newRoot)
{
	Guard guard(loaderLock);

	for (IFileLoader* loader : loaders)
		loader->changeRoot(currentRoot, newRoot);

	currentRoot = newRoot;
}

void FileLoaderRegistry::addListener(FileLoaderListener* listener)
{
	Guard guard(listenerLock);

	if (listener)
		listeners.push_back(listener);
}

void FileLoaderRegistry::removeListener(FileLoaderListener* listener)
{
	Guard guard(listenerLock);

	auto position = std::find(listeners.begin(), listeners.end(), listener);
	if (position != listeners.end())
		listeners.erase(position);
}

void FileLoaderRegistry::notifyFileError(const std::string& path, uint32_t kind)
{
	Guard guard(listenerLock);

	for (FileLoaderListener* listener : listeners)
		listener->onFileError(path, kind);
}

} // namespace vqm
