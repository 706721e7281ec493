#include "io/Logger.h"

#include <stdarg.h>
#include <stdio.h>

namespace vqm
{

namespace
{

enum Severity
{
	SeverityInfo,
	SeverityWarning,
	SeverityError,
};

void dispatch(LogSink* const* sinks, size_t sinkCount, Severity severity, const char* format, va_list args)
{
	char text[Logger::kLineCapacity];
	int formatted = vsnprintf(text, sizeof(text), format, args);
	text[sizeof(text) - 1] = 0;

	// a formatting failure delivers the whole buffer, as a cut line does
	size_t length = formatted < 0 || size_t(formatted) > sizeof(text) ? sizeof(text) : size_t(formatted);

	for (size_t i = 0; i < sinkCount; ++i)
	{
		switch (severity)
		{
		case SeverityInfo:
			sinks[i]->onInfo(text, length);
			break;
		case SeverityWarning:
			sinks[i]->onWarning(text, length);
			break;
		case SeverityError:
			sinks[i]->onError(text, length);
			break;
		}
	}
}

} // namespace

Logger& Logger::getInstance()
{
	// constructed on first use; the language makes that safe against a second thread
	static Logger instance;
	return instance;
}

bool Logger::addSink(LogSink* sink)
{
	if (!sink || sinkCount == kMaxSinks)
		return false;

	for (size_t i = 0; i < sinkCount; ++i)
		if (sinks[i] == sink)
			return false;

	sinks[sinkCount++] = sink;
	return true;
}

bool Logger::removeSink(LogSink* sink)
{
	for (size_t i = 0; i < sinkCount; ++i)
	{
		if (sinks[i] != sink)
			continue;

		for (size_t j = i + 1; j < sinkCount; ++j)
			sinks[j - 1] = sinks[j];

		sinks[--sinkCount] = nullptr;
		return true;
	}

	return false;
}

void Logger::info(const char* format, ...)
{
	va_list args;
	va_start(args, format);
	dispatch(sinks, sinkCount, SeverityInfo, format, args);
	va_end(args);
}

void Logger::warning(const char* format, ...)
{
	va_list args;
	va_start(args, format);
	dispatch(sinks, sinkCount, SeverityWarning, format, args);
	va_end(args);
}

void Logger::error(const char* format, ...)
{
	va_list args;
	va_start(args, format);
	dispatch(sinks, sinkCount, SeverityError, format, args);
	va_end(args);
}

} // namespace vqm
