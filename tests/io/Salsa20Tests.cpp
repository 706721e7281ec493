#include "io/KeyTable.h"
#include "io/Salsa20.h"

#include <gtest/gtest.h>

#include <string.h>

#include <vector>

namespace vqm
{

static void wordsFromBytes(uint32_t words[16], const uint8_t bytes[64])
{
	for (int i = 0; i < 16; ++i)
		words[i] = uint32_t(bytes[i * 4]) | (uint32_t(bytes[i * 4 + 1]) << 8) | (uint32_t(bytes[i * 4 + 2]) << 16) | (uint32_t(bytes[i * 4 + 3]) << 24);
}

static std::vector<uint8_t> hashOf(const uint8_t input[64])
{
	uint32_t words[16];
	wordsFromBytes(words, input);
	std::vector<uint8_t> output(64);
	salsa20Hash(words, output.data());
	return output;
}

// Examples of the hash function from the cipher's definition.
TEST(Salsa20, HashOfZeroIsZero)
{
	uint8_t zero[64] = {};
	EXPECT_EQ(hashOf(zero), std::vector<uint8_t>(64, 0));
}

TEST(Salsa20, HashVectors)
{
	const uint8_t input1[64] = {211, 159, 13, 115, 76, 55, 82, 183, 3, 117, 222, 37, 191, 187, 234, 136, 49, 237, 179, 48, 1, 106, 178, 219, 175, 199, 166, 48, 86, 16, 179, 207, 31, 240, 32, 63, 15, 83, 93, 161, 116, 147, 48, 113, 238, 55, 204, 36, 79, 201, 235, 79, 3, 81, 156, 47, 203, 26, 244, 243, 88, 118, 104, 54};
	const uint8_t output1[64] = {109, 42, 178, 168, 156, 240, 248, 238, 168, 196, 190, 203, 26, 110, 170, 154, 29, 29, 150, 26, 150, 30, 235, 249, 190, 163, 251, 48, 69, 144, 51, 57, 118, 40, 152, 157, 180, 57, 27, 94, 107, 42, 236, 35, 27, 111, 114, 114, 219, 236, 232, 135, 111, 155, 110, 18, 24, 232, 95, 158, 179, 19, 48, 202};
	EXPECT_EQ(hashOf(input1), std::vector<uint8_t>(output1, output1 + 64));

	const uint8_t input2[64] = {88, 118, 104, 54, 79, 201, 235, 79, 3, 81, 156, 47, 203, 26, 244, 243, 191, 187, 234, 136, 211, 159, 13, 115, 76, 55, 82, 183, 3, 117, 222, 37, 86, 16, 179, 207, 49, 237, 179, 48, 1, 106, 178, 219, 175, 199, 166, 48, 238, 55, 204, 36, 31, 240, 32, 63, 15, 83, 93, 161, 116, 147, 48, 113};
	const uint8_t output2[64] = {179, 19, 48, 202, 219, 236, 232, 135, 111, 155, 110, 18, 24, 232, 95, 158, 26, 110, 170, 154, 109, 42, 178, 168, 156, 240, 248, 238, 168, 196, 190, 203, 69, 144, 51, 57, 29, 29, 150, 26, 150, 30, 235, 249, 190, 163, 251, 48, 27, 111, 114, 114, 118, 40, 152, 157, 180, 57, 27, 94, 107, 42, 236, 35};
	EXPECT_EQ(hashOf(input2), std::vector<uint8_t>(output2, output2 + 64));
}

TEST(Salsa20, HashIteratedMillionTimes)
{
	const uint8_t input[64] = {6, 124, 83, 146, 38, 191, 9, 50, 4, 161, 47, 222, 122, 182, 223, 185, 75, 27, 0, 216, 16, 122, 7, 89, 162, 104, 101, 147, 213, 21, 54, 95, 225, 253, 139, 176, 105, 132, 23, 116, 76, 41, 176, 207, 221, 34, 157, 108, 94, 94, 99, 52, 90, 117, 91, 220, 146, 190, 239, 143, 196, 176, 130, 186};
	const uint8_t output[64] = {8, 18, 38, 199, 119, 76, 215, 67, 173, 127, 144, 162, 103, 212, 176, 217, 192, 19, 233, 33, 159, 197, 154, 160, 128, 243, 219, 65, 171, 136, 135, 225, 123, 11, 68, 86, 237, 82, 20, 155, 133, 189, 9, 83, 167, 116, 194, 78, 122, 127, 195, 185, 185, 204, 188, 90, 245, 9, 183, 248, 226, 85, 245, 104};

	uint8_t bytes[64];
	memcpy(bytes, input, 64);
	for (int i = 0; i < 1000000; ++i)
	{
		uint32_t words[16];
		wordsFromBytes(words, bytes);
		salsa20Hash(words, bytes);
	}

	EXPECT_EQ(std::vector<uint8_t>(bytes, bytes + 64), std::vector<uint8_t>(output, output + 64));
}

TEST(Salsa20, ThirtyTwoByteKeyExpansion)
{
	uint8_t key[32], nonce[16];
	for (int i = 0; i < 16; ++i)
	{
		key[i] = uint8_t(1 + i);
		key[16 + i] = uint8_t(201 + i);
		nonce[i] = uint8_t(101 + i);
	}

	const uint8_t expected[64] = {69, 37, 68, 39, 41, 15, 107, 193, 255, 139, 122, 6, 170, 233, 217, 98, 89, 144, 182, 106, 21, 51, 200, 65, 239, 49, 222, 34, 215, 114, 40, 126, 104, 197, 7, 225, 197, 153, 31, 2, 102, 78, 76, 176, 84, 245, 246, 184, 177, 160, 133, 130, 6, 72, 149, 119, 192, 195, 132, 236, 234, 103, 246, 74};

	uint32_t state[16];
	salsa20ExpandKey(state, key, nonce);
	uint8_t output[64];
	salsa20Hash(state, output);
	EXPECT_EQ(std::vector<uint8_t>(output, output + 64), std::vector<uint8_t>(expected, expected + 64));

	// bytes 8 to 15 of the nonce are the block counter
	EXPECT_EQ(salsa20GetCounter(state), 0x74737271706f6e6dull);
}

static std::vector<uint8_t> keystreamBlock(const uint32_t state[16], uint64_t counter)
{
	uint32_t copy[16];
	memcpy(copy, state, sizeof(copy));
	salsa20SetCounter(copy, counter);
	std::vector<uint8_t> block(64);
	salsa20Hash(copy, block.data());
	return block;
}

TEST(Salsa20, EveryCallStartsAFreshBlock)
{
	uint32_t state[16];
	memcpy(state, kKeyTable[7], sizeof(state));
	std::vector<uint8_t> zeros(130, 0), out(130, 0xee);

	salsa20ApplyKeystream(state, zeros.data(), 0, out.data());
	EXPECT_EQ(out[0], 0xee);
	salsa20ApplyKeystream(state, zeros.data(), 1, out.data());
	EXPECT_EQ(out[0], keystreamBlock(kKeyTable[7], 0)[0]);
	EXPECT_EQ(out[1], 0xee);

	// 65 bytes: block 1 whole and the first byte of block 2, whose rest is thrown away
	salsa20ApplyKeystream(state, zeros.data(), 65, out.data());
	EXPECT_EQ(std::vector<uint8_t>(out.begin(), out.begin() + 64), keystreamBlock(kKeyTable[7], 1));
	EXPECT_EQ(out[64], keystreamBlock(kKeyTable[7], 2)[0]);
	salsa20ApplyKeystream(state, zeros.data(), 1, out.data());
	EXPECT_EQ(out[0], keystreamBlock(kKeyTable[7], 3)[0]);
}

TEST(Salsa20, TwoShortCallsDifferFromOneLongCall)
{
	const uint8_t plain[8] = {1, 2, 3, 4, 5, 6, 7, 8};
	uint8_t split[8], whole[8];

	uint32_t state[16];
	memcpy(state, kKeyTable[1], sizeof(state));
	salsa20ApplyKeystream(state, plain, 4, split);
	salsa20ApplyKeystream(state, plain + 4, 4, split + 4);

	memcpy(state, kKeyTable[1], sizeof(state));
	salsa20ApplyKeystream(state, plain, 8, whole);

	EXPECT_EQ(0, memcmp(split, whole, 4));
	EXPECT_NE(0, memcmp(split + 4, whole + 4, 4));

	// the second call used the start of block 1
	std::vector<uint8_t> block1 = keystreamBlock(kKeyTable[1], 1);
	for (int i = 0; i < 4; ++i)
		EXPECT_EQ(split[4 + i], plain[4 + i] ^ block1[i]);
}

TEST(Salsa20, CounterCarriesIntoHighWord)
{
	uint32_t state[16];
	memcpy(state, kKeyTable[3], sizeof(state));
	state[8] = 0xffffffff;
	state[9] = 0;

	uint8_t zeros[128] = {}, out[128];
	salsa20ApplyKeystream(state, zeros, 128, out);

	EXPECT_EQ(state[8], 1u);
	EXPECT_EQ(state[9], 1u);
	EXPECT_EQ(std::vector<uint8_t>(out + 64, out + 128), keystreamBlock(kKeyTable[3], 0x100000000ull));

	// the other words of the state are never changed
	for (int i = 0; i < 16; ++i)
	{
		if (i == 8 || i == 9)
			continue;
		EXPECT_EQ(state[i], kKeyTable[3][i]);
	}
}

} // namespace vqm
