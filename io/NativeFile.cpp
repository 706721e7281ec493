#include "io/NativeFile.h"

#include "io/FileLoaderRegistry.h"
#include "io/Logger.h"
#include "io/PathCaseCheck.h"
#include "io/TextEncoding.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>

namespace vqm
{

namespace
{

// The nearest POSIX relatives of a sharing violation: a file held in a way that forbids this
// access for now (an executable being run, a busy device). Only these are worth another try.
bool isBusy(int error)
{
	return error == ETXTBSY || error == EBUSY;
}

bool isCorruptData(int error)
{
	return error == EIO || error == EBADMSG;
}

bool isDiskFull(int error)
{
	return error == ENOSPC || error == EDQUOT;
}

int openFlags(uint32_t mode)
{
	switch (mode)
	{
	case FileModeRead:
		return O_RDONLY;
	case FileModeWrite:
		return O_WRONLY | O_CREAT | O_TRUNC;
	case FileModeAppend:
		// no O_APPEND: the position goes to the end once, and a seek may move it back
		return O_WRONLY | O_CREAT;
	default:
		return -1;
	}
}

} // namespace

NativeFile::~NativeFile()
{
	if (handle >= 0)
		close(handle);
	handle = -1;
}

bool NativeFile::open(const std::string& filePath, uint32_t mode, bool reportProblems)
{
	if (handle >= 0)
		close(handle);

	path = filePath;
	handle = -1;
	endOfFile = false;
	openAttempts = 0;

	int flags = openFlags(mode);
	int error = EINVAL;

	if (flags >= 0 && fitsPathBuffer(path, kPathBufferUnits))
	{
		// a busy file gets two more tries at once, with no delay
		do
		{
			openAttempts++;
			handle = ::open(path.c_str(), flags | O_CLOEXEC, 0666);
			error = handle < 0 ? errno : 0;
		} while (handle < 0 && isBusy(error) && openAttempts < kOpenAttempts);
	}

	if (handle >= 0)
	{
		// directories open only for their times, see getModificationTime
		struct stat info;
		if (fstat(handle, &info) != 0 || S_ISDIR(info.st_mode))
		{
			close(handle);
			handle = -1;
			error = EISDIR;
		}
	}

	if (handle >= 0 && mode == FileModeAppend)
		lseek(handle, 0, SEEK_END);

	if (!reportProblems)
		return handle >= 0;

	if (handle < 0)
	{
		if (isBusy(error))
			Logger::getInstance().error("Error: Sharing violation on file '%s' ... perhaps open in another program?\n", path.c_str());
		return false;
	}

	// only ever warns
	checkPathCase(path);
	return true;
}

int32_t NativeFile::read(void* buffer, uint32_t size)
{
	if (handle < 0)
		return -1;

	endOfFile = false;

	size_t wanted = size > uint32_t(INT32_MAX) ? size_t(INT32_MAX) : size_t(size);
	ssize_t count = ::read(handle, buffer, wanted);

	if (count < 0)
	{
		if (isCorruptData(errno))
			FileLoaderRegistry::getInstance().notifyFileError(path, FileErrorCorruptData);
		return -1;
	}

	if (size_t(count) < size)
		endOfFile = true;

	return int32_t(count);
}

int32_t NativeFile::write(const void* buffer, uint32_t size)
{
	if (handle < 0)
		return -1;

	size_t wanted = size > uint32_t(INT32_MAX) ? size_t(INT32_MAX) : size_t(size);
	ssize_t count = ::write(handle, buffer, wanted);

	if (count < 0)
	{
		if (isDiskFull(errno))
			FileLoaderRegistry::getInstance().notifyFileError(path, FileErrorDiskFull);
		return -1;
	}

	return int32_t(count);
}

bool NativeFile::seek(int64_t position)
{
	if (handle < 0)
		return false;

	off_t reached = lseek(handle, off_t(position), SEEK_SET);
	if (reached < 0)
		return false;

	endOfFile = int64_t(reached) < position;
	return true;
}

int64_t NativeFile::tell() const
{
	if (handle < 0)
		return -1;

	off_t position = lseek(handle, 0, SEEK_CUR);
	return position < 0 ? -1 : int64_t(position);
}

uint64_t NativeFile::getSize() const
{
	struct stat info;
	if (handle < 0 || fstat(handle, &info) != 0)
		return ~uint64_t(0);

	return uint64_t(info.st_size);
}

bool NativeFile::isSameFile(const NativeFile& other) const
{
	struct stat mine, theirs;
	if (handle < 0 || other.handle < 0 || fstat(handle, &mine) != 0 || fstat(other.handle, &theirs) != 0)
		return false;

	return mine.st_dev == theirs.st_dev && mine.st_ino == theirs.st_ino;
}

int64_t NativeFile::getModificationTime() const
{
	// asked of the path, not of the handle, so that it works without an open file too
	if (!fitsPathBuffer(path, kShortPathBufferUnits))
		return 0;

	struct stat info;
	if (stat(path.c_str(), &info) != 0)
		return 0;

	return int64_t(info.st_mtime);
}

} // namespace vqm
