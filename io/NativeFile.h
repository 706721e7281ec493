// A File on the local file system. Each read and write is one system call: no buffering.
#pragma once

#include "io/File.h"

#include <string>

namespace vqm
{

class NativeFile : public File
{
public:
	// opens made on a busy file before giving up
	static constexpr int kOpenAttempts = 3;

	NativeFile() = default;
	~NativeFile() override;

	NativeFile(const NativeFile&) = delete;
	NativeFile& operator=(const NativeFile&) = delete;

	// mode is a FileMode; any other value opens nothing. With reportProblems, a busy file is
	// reported through Logger::error and a path whose case differs from the stored names
	// through Logger::warning.
	bool open(const std::string& path, uint32_t mode, bool reportProblems);

	bool isOpen() const override { return handle >= 0; }
	bool isNative() const override { return true; }

	int32_t read(void* buffer, uint32_t size) override;
	int32_t write(const void* buffer, uint32_t size) override;
	bool seek(int64_t position) override;
	int64_t tell() const override;
	uint64_t getSize() const override;
	bool isEof() const override { return handle >= 0 && endOfFile; }
	int64_t getModificationTime() const override;
	bool isSpecial() const override { return false; }

	const std::string& getPath() const { return path; }
	// both open on the same file on disk, by whatever paths
	bool isSameFile(const NativeFile& other) const;
	// system calls made by the last open: more than one only for a busy file
	int getOpenAttempts() const { return openAttempts; }

private:
	int handle = -1;
	bool endOfFile = false;
	std::string path;
	int openAttempts = 0;
};

} // namespace vqm
