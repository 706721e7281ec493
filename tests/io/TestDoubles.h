// In-memory stand-ins for the tests: a File over a byte vector and a sink that keeps lines.
#pragma once

#include "io/File.h"
#include "io/Logger.h"

#include <string.h>

#include <algorithm>
#include <string>
#include <vector>

namespace vqm
{

class MemoryFile : public File
{
public:
	std::vector<uint8_t> data;
	size_t position = 0;
	bool endOfFile = false;
	int32_t failWith = 0;                        // read and write give this instead when not 0
	uint32_t writeLimit = ~0u;                   // bytes accepted per write
	std::vector<uint32_t> writes;                // sizes of the write calls
	bool* destroyed = nullptr;                   // set when the file is deleted
	std::vector<uint8_t>* keepOnClose = nullptr; // receives data when the file is deleted

	~MemoryFile() override
	{
		if (destroyed)
			*destroyed = true;
		if (keepOnClose)
			*keepOnClose = data;
	}

	bool isOpen() const override { return true; }
	int32_t read(void* buffer, uint32_t size) override
	{
		if (failWith)
			return failWith;
		size_t count = std::min<size_t>(size, data.size() - position);
		if (count > 0)
			memcpy(buffer, data.data() + position, count);
		position += count;
		endOfFile = count < size;
		return int32_t(count);
	}
	int32_t write(const void* buffer, uint32_t size) override
	{
		writes.push_back(size);
		if (failWith)
			return failWith;
		size = std::min(size, writeLimit);
		data.insert(data.end(), static_cast<const uint8_t*>(buffer), static_cast<const uint8_t*>(buffer) + size);
		position = data.size();
		return int32_t(size);
	}
	bool seek(int64_t to) override { return position = size_t(to), true; }
	int64_t tell() const override { return int64_t(position); }
	uint64_t getSize() const override { return data.size(); }
	bool isEof() const override { return endOfFile; }
	int64_t getModificationTime() const override { return 1234; }
	bool isSpecial() const override { return false; }
};

// Attached to the process-wide Logger for its lifetime.
class RecordingSink : public LogSink
{
public:
	std::vector<std::string> infos, warnings, errors;
	std::vector<size_t> lengths;

	explicit RecordingSink(bool attach = true)
	{
		if (attach)
			Logger::getInstance().addSink(this);
	}
	~RecordingSink() override { Logger::getInstance().removeSink(this); }

	void onInfo(const char* text, size_t length) override { keep(infos, text, length); }
	void onWarning(const char* text, size_t length) override { keep(warnings, text, length); }
	void onError(const char* text, size_t length) override { keep(errors, text, length); }

private:
	void keep(std::vector<std::string>& lines, const char* text, size_t length)
	{
		lines.push_back(text);
		lengths.push_back(length);
	}
};

} // namespace vqm
