// The Salsa20/20 stream cipher over a 16-word input block with a 64-bit block counter in
// words 8 (low) and 9 (high).
#pragma once

#include <cstdint>

namespace vqm
{

const uint32_t kSalsa20CounterLow = 8;
const uint32_t kSalsa20CounterHigh = 9;

// The Salsa20 hash: 20 rounds over a copy of the input, then the input added word by word.
// Output words are little-endian.
void salsa20Hash(const uint32_t input[16], uint8_t output[64]);

// Input block for a 32-byte key and 16 bytes of nonce and block counter, with the constants
// of the 32-byte key expansion.
void salsa20ExpandKey(uint32_t state[16], const uint8_t key[32], const uint8_t nonceAndCounter[16]);

// XORs length bytes of source with keystream into target (which may be source). Every call
// starts a fresh block, and a partly used block still consumes its counter value, so the
// counter advances by length / 64 rounded up.
void salsa20ApplyKeystream(uint32_t state[16], const uint8_t* source, uint32_t length, uint8_t* target);

uint64_t salsa20GetCounter(const uint32_t state[16]);
void salsa20SetCounter(uint32_t state[16], uint64_t counter);

} // namespace vqm
