// Process-wide fan-out of report lines to at most six sinks. With no sink attached the lines
// are still formatted and reach nobody.
#pragma once

#include <cstddef>

namespace vqm
{

class LogSink
{
public:
	virtual ~LogSink() {}

	// text is terminated; length is the formatted length, at most Logger::kLineCapacity
	virtual void onInfo(const char* text, size_t length) = 0;
	virtual void onWarning(const char* text, size_t length) = 0;
	virtual void onError(const char* text, size_t length) = 0;
};

class Logger
{
public:
	static constexpr size_t kMaxSinks = 6;
	static constexpr size_t kLineCapacity = 2048;

	static Logger& getInstance();

	// false when the sink is null, already attached, or all places are taken
	bool addSink(LogSink* sink);
	// false when the sink was not attached; the others keep their order
	bool removeSink(LogSink* sink);
	size_t getSinkCount() const { return sinkCount; }

	void info(const char* format, ...) __attribute__((format(printf, 2, 3)));
	void warning(const char* format, ...) __attribute__((format(printf, 2, 3)));
	void error(const char* format, ...) __attribute__((format(printf, 2, 3)));

private:
	Logger() = default;
	Logger(const Logger&) = delete;
	Logger& operator=(const Logger&) = delete;

	size_t sinkCount = 0;
	LogSink* sinks[kMaxSinks] = {};
};

} // namespace vqm
