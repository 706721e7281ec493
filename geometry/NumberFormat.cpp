#include "geometry/NumberFormat.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace vqm
{

char* formatNumber(char* out, double value)
{
	if (!std::isfinite(value))
	{
		const char* text = std::isnan(value) ? (std::signbit(value) ? "-nan" : "nan") : (value < 0 ? "-inf" : "inf");
		const size_t length = strlen(text);
		memcpy(out, text, length);
		return out + length;
	}
	return std::to_chars(out, out + kMaxNumberText, value, std::chars_format::general, 6).ptr;
}

char* formatUnsigned(char* out, uint64_t value)
{
	return std::to_chars(out, out + kMaxNumberText, value).ptr;
}

char* formatSigned(char* out, int64_t value)
{
	return std::to_chars(out, out + kMaxNumberText, value).ptr;
}

void appendNumber(std::string& out, double value)
{
	char buffer[kMaxNumberText];
	out.append(buffer, formatNumber(buffer, value));
}

void appendUnsigned(std::string& out, uint64_t value)
{
	char buffer[kMaxNumberText];
	out.append(buffer, formatUnsigned(buffer, value));
}

void appendSigned(std::string& out, int64_t value)
{
	char buffer[kMaxNumberText];
	out.append(buffer, formatSigned(buffer, value));
}

void appendNumbers(std::string& out, const float* values, size_t count)
{
	char buffer[4 * (kMaxNumberText + 1)];
	while (count > 0)
	{
		const size_t n = count < 4 ? count : 4;
		char* end = buffer;
		for (size_t i = 0; i < n; ++i)
		{
			if (i > 0)
				*end++ = ' ';
			end = formatNumber(end, values[i]);
		}
		out.append(buffer, end);
		values += n;
		count -= n;
		if (count > 0)
			out.push_back(' ');
	}
}

} // namespace vqm
