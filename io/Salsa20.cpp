#include "io/Salsa20.h"

#include <string.h>

namespace vqm
{

namespace
{

inline uint32_t rotate(uint32_t v, int bits)
{
	return (v << bits) | (v >> (32 - bits));
}

inline void quarterRound(uint32_t& a, uint32_t& b, uint32_t& c, uint32_t& d)
{
	b ^= rotate(a + d, 7);
	c ^= rotate(b + a, 9);
	d ^= rotate(c + b, 13);
	a ^= rotate(d + c, 18);
}

inline uint32_t readLittleEndian(const uint8_t* p)
{
	return uint32_t(p[0]) | (uint32_t(p[1]) << 8) | (uint32_t(p[2]) << 16) | (uint32_t(p[3]) << 24);
}

inline void writeLittleEndian(uint8_t* p, uint32_t v)
{
	p[0] = uint8_t(v);
	p[1] = uint8_t(v >> 8);
	p[2] = uint8_t(v >> 16);
	p[3] = uint8_t(v >> 24);
}

} // namespace

void salsa20Hash(const uint32_t input[16], uint8_t output[64])
{
	uint32_t x[16];
	memcpy(x, input, sizeof(x));

	for (int i = 0; i < 10; ++i)
	{
		// column round
		quarterRound(x[0], x[4], x[8], x[12]);
		quarterRound(x[5], x[9], x[13], x[1]);
		quarterRound(x[10], x[14], x[2], x[6]);
		quarterRound(x[15], x[3], x[7], x[11]);

		// row round
		quarterRound(x[0], x[1], x[2], x[3]);
		quarterRound(x[5], x[6], x[7], x[4]);
		quarterRound(x[10], x[11], x[8], x[9]);
		quarterRound(x[15], x[12], x[13], x[14]);
	}

	for (int i = 0; i < 16; ++i)
		writeLittleEndian(output + i * 4, x[i] + input[i]);
}

void salsa20ExpandKey(uint32_t state[16], const uint8_t key[32], const uint8_t nonceAndCounter[16])
{
	// "expand 32-byte k"
	state[0] = 0x61707865;
	state[5] = 0x3320646e;
	state[10] = 0x79622d32;
	state[15] = 0x6b206574;

	for (int i = 0; i < 4; ++i)
	{
		state[1 + i] = readLittleEndian(key + i * 4);
		state[11 + i] = readLittleEndian(key + 16 + i * 4);
		state[6 + i] = readLittleEndian(nonceAndCounter + i * 4);
	}
}

void salsa20ApplyKeystream(uint32_t state[16], const uint8_t* source, uint32_t length, uint8_t* target)
{
	uint64_t counter = salsa20GetCounter(state);

	while (length > 0)
	{
		uint8_t block[64];
		salsa20Hash(state, block);

		uint32_t count = length < 64 ? length : 64;
		for (uint32_t i = 0; i < count; ++i)
			target[i] = source[i] ^ block[i];

		source += count;
		target += count;
		length -= count;

		// the rest of a partly used block is thrown away
		counter++;
		salsa20SetCounter(state, counter);
	}
}

uint64_t salsa20GetCounter(const uint32_t state[16])
{
	return uint64_t(state[kSalsa20CounterLow]) | (uint64_t(state[kSalsa20CounterHigh]) << 32);
}

void salsa20SetCounter(uint32_t state[16], uint64_t counter)
{
	state[kSalsa20CounterLow] = uint32_t(counter);
	state[kSalsa20CounterHigh] = uint32_t(counter >> 32);
}

} // namespace vqm
