#include "geometry/Checksum.h"

#include <array>
#include <cstring>

namespace vqm
{

namespace
{

constexpr std::array<uint64_t, 256> makeTable()
{
	std::array<uint64_t, 256> table{};
	for (uint64_t i = 0; i < 256; ++i)
	{
		uint64_t value = i;
		for (int bit = 0; bit < 8; ++bit)
			value = (value & 1) ? (value >> 1) ^ 0xC96C5795D7870F42ull : value >> 1;
		table[i] = value;
	}
	return table;
}

constexpr std::array<uint64_t, 256> kTable = makeTable();

inline void foldByte(uint64_t& state, uint8_t byte)
{
	state = (state >> 8) ^ kTable[(state ^ byte) & 0xFF];
}

inline void foldWord(uint64_t& state, uint32_t word)
{
	foldByte(state, uint8_t(word));
	foldByte(state, uint8_t(word >> 8));
	foldByte(state, uint8_t(word >> 16));
	foldByte(state, uint8_t(word >> 24));
}

} // namespace

const uint64_t TriangleSetChecksumTable[256] = {
#define VQM_ROW(i) kTable[i], kTable[i + 1], kTable[i + 2], kTable[i + 3], kTable[i + 4], kTable[i + 5], kTable[i + 6], kTable[i + 7]
#define VQM_ROWS(i) VQM_ROW(i), VQM_ROW(i + 8), VQM_ROW(i + 16), VQM_ROW(i + 24)
	VQM_ROWS(0), VQM_ROWS(32), VQM_ROWS(64), VQM_ROWS(96), VQM_ROWS(128), VQM_ROWS(160), VQM_ROWS(192), VQM_ROWS(224),
#undef VQM_ROWS
#undef VQM_ROW
};

void foldChecksumBytes(uint64_t& state, const uint8_t* bytes, size_t count)
{
	for (size_t i = 0; i < count; ++i)
		foldByte(state, bytes[i]);
}

void foldChecksumU16(uint64_t& state, const uint16_t* values, size_t count)
{
	for (size_t i = 0; i < count; ++i)
	{
		foldByte(state, uint8_t(values[i]));
		foldByte(state, uint8_t(values[i] >> 8));
	}
}

void foldChecksumU32(uint64_t& state, const uint32_t* values, size_t count)
{
	for (size_t i = 0; i < count; ++i)
		foldWord(state, values[i]);
}

void foldChecksumF32(uint64_t& state, const float* values, size_t count)
{
	for (size_t i = 0; i < count; ++i)
	{
		uint32_t word;
		memcpy(&word, &values[i], sizeof(word));
		foldWord(state, word);
	}
}

} // namespace vqm
