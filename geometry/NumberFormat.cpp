#include "geometry/NumberFormat.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace vqm
{

namespace
{

__extension__ typedef unsigned __int128 Wide;

// 5^0 .. 5^27, the powers of five that fit in 64 bits.
const uint64_t kPowersOfFive[28] = {1ull,
                                    5ull,
                                    25ull,
                                    125ull,
                                    625ull,
                                    3125ull,
                                    15625ull,
                                    78125ull,
                                    390625ull,
                                    1953125ull,
                                    9765625ull,
                                    48828125ull,
                                    244140625ull,
                                    1220703125ull,
                                    6103515625ull,
                                    30517578125ull,
                                    152587890625ull,
                                    762939453125ull,
                                    3814697265625ull,
                                    19073486328125ull,
                                    95367431640625ull,
                                    476837158203125ull,
                                    2384185791015625ull,
                                    11920928955078125ull,
                                    59604644775390625ull,
                                    298023223876953125ull,
                                    1490116119384765625ull,
                                    7450580596923828125ull};

// The six significant digits of a positive normal number, rounded to nearest (ties to even) from
// its exact binary value: magnitude is about digits * 10^(exponent10 - 5), digits in
// [100000, 999999]. Exact integer arithmetic on mantissa * 5^k / 2^s; false where that does not
// fit (numbers of 10^6 or more, or below about 10^-22), which take the general road.
bool sixDigits(double magnitude, int& exponent10, uint32_t& digits)
{
	uint64_t bits;
	memcpy(&bits, &magnitude, sizeof bits);
	const int biased = int(bits >> 52) & 0x7ff;
	if (biased == 0 || biased == 0x7ff)
		return false;
	const uint64_t mantissa = (bits & ((uint64_t(1) << 52) - 1)) | (uint64_t(1) << 52);
	const int binaryExponent = biased - 1075;  // magnitude = mantissa * 2^binaryExponent
	// floor(log10(magnitude)) is this or one more: log2 of the magnitude times log10(2).
	int decimal = ((biased - 1023) * 78913) >> 18;
	for (int attempt = 0; attempt < 3; ++attempt)
	{
		const int k = 5 - decimal;
		if (k < 0 || k > 27)
			return false;
		const Wide scaled = Wide(mantissa) * kPowersOfFive[k];
		const int shift = -(binaryExponent + k);
		Wide quotient;
		bool roundUp = false;
		if (shift <= 0)
		{
			if (shift < -40)
				return false;
			quotient = scaled << -shift;
		}
		else
		{
			if (shift >= 127)
				return false;
			quotient = scaled >> shift;
			const Wide remainder = scaled - (quotient << shift);
			const Wide half = Wide(1) << (shift - 1);
			roundUp = remainder > half || (remainder == half && (quotient & 1) != 0);
		}
		if (quotient >= 1000000)
		{
			++decimal;
			continue;
		}
		if (quotient < 100000)
		{
			--decimal;
			continue;
		}
		uint32_t result = uint32_t(quotient) + (roundUp ? 1 : 0);
		if (result == 1000000)
		{
			result = 100000;
			++decimal;
		}
		digits = result;
		exponent10 = decimal;
		return true;
	}
	return false;
}

// printf's %g text of digits * 10^(exponent10 - 5), with precision 6.
char* writeSixDigits(char* out, uint32_t digits, int exponent10)
{
	char d[6];
	for (int i = 5; i >= 0; --i)
	{
		d[i] = char('0' + digits % 10);
		digits /= 10;
	}
	int significant = 6;
	while (significant > 1 && d[significant - 1] == '0')
		--significant;
	if (exponent10 < -4 || exponent10 >= 6)
	{
		*out++ = d[0];
		if (significant > 1)
		{
			*out++ = '.';
			for (int i = 1; i < significant; ++i)
				*out++ = d[i];
		}
		*out++ = 'e';
		int e = exponent10;
		if (e < 0)
		{
			*out++ = '-';
			e = -e;
		}
		else
		{
			*out++ = '+';
		}
		if (e >= 100)
			*out++ = char('0' + e / 100);
		*out++ = char('0' + e / 10 % 10);
		*out++ = char('0' + e % 10);
		return out;
	}
	if (exponent10 >= 0)
	{
		for (int i = 0; i <= exponent10; ++i)
			*out++ = d[i];
		if (significant > exponent10 + 1)
		{
			*out++ = '.';
			for (int i = exponent10 + 1; i < significant; ++i)
				*out++ = d[i];
		}
		return out;
	}
	*out++ = '0';
	*out++ = '.';
	for (int i = exponent10 + 1; i < 0; ++i)
		*out++ = '0';
	for (int i = 0; i < significant; ++i)
		*out++ = d[i];
	return out;
}

} // namespace

char* formatNumber(char* out, double value)
{
	if (!std::isfinite(value))
	{
		const char* text = std::isnan(value) ? (std::signbit(value) ? "-nan" : "nan") : (value < 0 ? "-inf" : "inf");
		const size_t length = strlen(text);
		memcpy(out, text, length);
		return out + length;
	}
	int exponent10;
	uint32_t digits;
	if (value == 0.0)
	{
		if (std::signbit(value))
			*out++ = '-';
		*out++ = '0';
		return out;
	}
	if (sixDigits(std::fabs(value), exponent10, digits))
	{
		if (value < 0.0)
			*out++ = '-';
		return writeSixDigits(out, digits, exponent10);
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
