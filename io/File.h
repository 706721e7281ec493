// The stream interface of the file layer. Whoever gets a File owns it; deleting it closes it.
#pragma once

#include <cstdint>

namespace vqm
{

enum FileMode : uint32_t
{
	FileModeRead = 0,   // existing file, shared with other readers
	FileModeWrite = 1,  // created or truncated
	FileModeAppend = 2, // created if missing, positioned at its end
};

class File
{
public:
	virtual ~File() {}

	virtual bool isOpen() const = 0;
	virtual bool refusesCopy() const { return false; }
	virtual bool isNative() const { return false; }

	// byte count transferred, -1 on failure
	virtual int32_t read(void* buffer, uint32_t size) = 0;
	virtual int32_t write(const void* buffer, uint32_t size) = 0;

	// absolute position from the start of the file
	virtual bool seek(int64_t position) = 0;
	// -1 on failure
	virtual int64_t tell() const = 0;
	// all ones when there is nothing to measure
	virtual uint64_t getSize() const = 0;
	virtual bool isEof() const = 0;
	// seconds since the epoch, 0 on failure
	virtual int64_t getModificationTime() const = 0;
	virtual bool isSpecial() const = 0;
};

} // namespace vqm
