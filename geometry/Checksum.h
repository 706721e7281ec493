// Running 64-bit checksum over bytes and little-endian words, folded one byte at a time.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vqm
{

// The 256-entry table of the fold (reflected CRC-64, polynomial 0xC96C5795D7870F42).
extern const uint64_t TriangleSetChecksumTable[256];

// state = (state >> 8) ^ table[(state ^ byte) & 0xFF] for each byte in order.
void foldChecksumBytes(uint64_t& state, const uint8_t* bytes, size_t count);

// Each value from its low byte to its high byte.
void foldChecksumU16(uint64_t& state, const uint16_t* values, size_t count);
void foldChecksumU32(uint64_t& state, const uint32_t* values, size_t count);

// The bit patterns of f32 values, as 32-bit words.
void foldChecksumF32(uint64_t& state, const float* values, size_t count);

} // namespace vqm
