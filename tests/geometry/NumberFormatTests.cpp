// The text form of numbers must be exactly what printf's %g gives.
#include "geometry/NumberFormat.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <string>

using namespace vqm;

namespace
{

std::string printfG(double value)
{
	char buffer[64];
	snprintf(buffer, sizeof buffer, "%g", value);
	return buffer;
}

std::string formatted(double value)
{
	std::string text;
	appendNumber(text, value);
	return text;
}

} // namespace

TEST(NumberFormat, MatchesPrintfOnEdgeValues)
{
	const double values[] = {0.0, -0.0, 0.5, 1.0, -1.0, 100000.0, 999999.0, 999999.5, 1000000.0, 1234567.0,
	                         0.0001, 0.00001, 0.000123456789, 0.00009999995, 123456.5, 1e-300, 1e300, 5e-324,
	                         DBL_MAX, -DBL_MAX, double(FLT_MAX), double(FLT_MIN), double(0.1f), double(1.0f / 3.0f),
	                         2.5e-5, 9.9999949999, 9.9999950001, 0.01f, 1e21, 1e-7};
	for (double v : values)
		EXPECT_EQ(formatted(v), printfG(v)) << v;
	EXPECT_EQ(formatted(1000000.0), "1e+06");
	EXPECT_EQ(formatted(1234567.0), "1.23457e+06");
	EXPECT_EQ(formatted(0.00001), "1e-05");
	EXPECT_EQ(formatted(-0.0), "-0");
	EXPECT_EQ(formatted(100000.0), "100000");
	EXPECT_EQ(formatted(0.5), "0.5");
}

TEST(NumberFormat, NonFiniteValuesAsPrintfWritesThem)
{
	const double inf = std::numeric_limits<double>::infinity();
	const double nan = std::numeric_limits<double>::quiet_NaN();
	EXPECT_EQ(formatted(inf), printfG(inf));
	EXPECT_EQ(formatted(-inf), printfG(-inf));
	EXPECT_EQ(formatted(nan), printfG(nan));
	EXPECT_EQ(formatted(-nan), printfG(-nan));
}

TEST(NumberFormat, MatchesPrintfOnRandomFloatsAndDoubles)
{
	std::mt19937_64 random(7);
	for (int i = 0; i < 200000; ++i)
	{
		uint64_t bits = random();
		double d;
		memcpy(&d, &bits, sizeof d);
		uint32_t fbits = uint32_t(bits >> 17);
		float f;
		memcpy(&f, &fbits, sizeof f);
		// numbers at ordinary magnitudes too, where rounding at the sixth digit matters most
		double ordinary = std::ldexp(double(bits % 1000000007) / 1000000007.0, int(bits % 64) - 32);
		for (double v : {d, double(f), ordinary, -ordinary})
			ASSERT_EQ(formatted(v), printfG(v)) << std::hexfloat << v;
	}
}

TEST(NumberFormat, IntegersAndLists)
{
	std::string text;
	appendUnsigned(text, 4294967295u);
	text += ' ';
	appendSigned(text, -2147483647 - 1);
	text += ' ';
	const float values[6] = {1.0f, -0.0f, 0.25f, 1e7f, 3.0f, 1e-6f};
	appendNumbers(text, values, 6);
	EXPECT_EQ(text, "4294967295 -2147483648 1 -0 0.25 1e+07 3 1e-06");
}

TEST(NumberFormat, MatchesPrintfOnTiesAndPowersOfTen)
{
	// Halves that sit exactly between two six-digit texts, and the neighbours of powers of ten.
	for (double value : {100000.5, 100001.5, 123456.5, 999998.5, 1234565.0, 1234575.0, 0.5, 2.5, 1.5e-5})
	{
		EXPECT_EQ(formatted(value), printfG(value)) << value;
		EXPECT_EQ(formatted(-value), printfG(-value)) << value;
	}
	for (int e = -25; e <= 8; ++e)
	{
		const double power = std::pow(10.0, e);
		for (double value : {power, std::nextafter(power, 0.0), std::nextafter(power, 1e300), 9.999995 * power,
		                     double(float(9.999995 * power))})
			EXPECT_EQ(formatted(value), printfG(value)) << value;
	}
}
