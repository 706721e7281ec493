// The number format of all text the exporter writes: floats as printf's %g with precision 6 gives
// them (a float is widened to double first), integers as plain decimals.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace vqm
{

// Room that one formatted number can take.
constexpr size_t kMaxNumberText = 32;

// Writes value at out, without terminator; returns the end of the text. NaN and infinity come out
// as "nan", "-nan", "inf" and "-inf".
char* formatNumber(char* out, double value);
char* formatUnsigned(char* out, uint64_t value);
char* formatSigned(char* out, int64_t value);

void appendNumber(std::string& out, double value);
void appendUnsigned(std::string& out, uint64_t value);
void appendSigned(std::string& out, int64_t value);

// The numbers with one blank between them.
void appendNumbers(std::string& out, const float* values, size_t count);

} // namespace vqm
