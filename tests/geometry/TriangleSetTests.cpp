// Allocation, index width, subsets, clone and checksum of triangle sets.
#include "geometry/Checksum.h"
#include "geometry/TriangleSet.h"

#include <gtest/gtest.h>

using namespace vqm;

TEST(TriangleSet, IndexWidthSwitchesAbove65536Vertices)
{
	IndexedTriangleSet small;
	small.allocateVertices(65536, 0);
	small.allocateIndices(3);
	small.setIndex(65535, 0);
	ASSERT_TRUE(small.uses16BitIndices());
	ASSERT_NE(small.indices16(), nullptr);
	EXPECT_EQ(small.indices32(), nullptr);
	EXPECT_EQ(small.indices16()[0], 65535);

	IndexedTriangleSet large;
	large.allocateVertices(65537, 0);
	large.allocateIndices(3);
	large.setIndex(65536, 2);
	ASSERT_FALSE(large.uses16BitIndices());
	ASSERT_NE(large.indices32(), nullptr);
	EXPECT_EQ(large.indices16(), nullptr);
	EXPECT_EQ(large.indices32()[2], 65536u);
	EXPECT_EQ(large.indexAt(2), 65536u);
}

TEST(TriangleSet, AllocationIsOneShot)
{
	IndexedTriangleSet set;
	set.allocateVertices(4, HasNormal);
	const float* positions = set.positions();
	set.allocateVertices(100000, HasNormal | HasColor);
	EXPECT_EQ(set.numVertices(), 4u);
	EXPECT_EQ(set.vertexFlags(), uint32_t(HasNormal));
	EXPECT_EQ(set.positions(), positions);
	EXPECT_EQ(set.colors(), nullptr);

	set.allocateIndices(6);
	set.allocateIndices(9);
	EXPECT_EQ(set.numIndices(), 6u);
	set.allocateSubsets(2);
	set.allocateSubsets(5);
	EXPECT_EQ(set.numSubsets(), 2u);
	EXPECT_EQ(set.getSubset(0), nullptr);
	EXPECT_EQ(set.getSubset(2), nullptr);

	// the width can't change under allocated indices
	IndexedTriangleSet early;
	early.allocateIndices(3);
	early.allocateVertices(70000, 0);
	EXPECT_EQ(early.numVertices(), 0u);
}

TEST(TriangleSet, FlagsSelectArrays)
{
	TriangleSet all;
	all.allocateVertices(3, HasNormal | HasUv0 | HasUv2 | HasColor | HasBlendWeights | HasTangent | HasGeneric);
	EXPECT_NE(all.normals(), nullptr);
	EXPECT_NE(all.uvs(0), nullptr);
	EXPECT_EQ(all.uvs(1), nullptr);
	EXPECT_NE(all.uvs(2), nullptr);
	EXPECT_EQ(all.uvs(3), nullptr);
	EXPECT_EQ(all.uvs(4), nullptr);
	EXPECT_NE(all.colors(), nullptr);
	EXPECT_NE(all.tangents(), nullptr);
	EXPECT_NE(all.blendWeights(), nullptr);
	EXPECT_NE(all.blendIndices(), nullptr);
	EXPECT_NE(all.generics(), nullptr);
	EXPECT_EQ(all.blendsPerVertex(), 4u);

	TriangleSet single;
	single.allocateVertices(3, HasBlendWeights | SingleBlendWeights);
	EXPECT_EQ(single.blendWeights(), nullptr);
	EXPECT_NE(single.blendIndices(), nullptr);
	EXPECT_EQ(single.blendsPerVertex(), 1u);

	TriangleSet singleAlone;
	singleAlone.allocateVertices(3, SingleBlendWeights);
	EXPECT_EQ(singleAlone.blendIndices(), nullptr);
	EXPECT_EQ(singleAlone.blendWeights(), nullptr);

	// writers land in their vertex and nowhere else
	all.setPosition(1, 1, 2, 3);
	all.setUv(2, 2, 7, 8);
	all.setTangent(0, 0.5f, 0.25f, 0, -1);
	all.setColor(2, 0.1f, 0.2f, 0.3f, 0.4f);
	EXPECT_EQ(all.positions()[3], 1.0f);
	EXPECT_EQ(all.positions()[5], 3.0f);
	EXPECT_EQ(all.uvs(2)[4], 7.0f);
	EXPECT_EQ(all.tangents()[3], -1.0f);
	EXPECT_EQ(all.colors()[11], 0.4f);
}

namespace
{

std::unique_ptr<IndexedTriangleSet> smallSet(uint32_t numVertices)
{
	std::unique_ptr<IndexedTriangleSet> set(new IndexedTriangleSet);
	set->allocateVertices(numVertices, HasNormal | HasBlendWeights | HasUv1);
	for (uint32_t v = 0; v < numVertices; ++v)
	{
		set->setPosition(v, float(v), 1, 2);
		set->setNormal(v, 0, 0, 1);
		set->setUv(1, v, 0.5f, float(v));
		for (int k = 0; k < 4; ++k)
		{
			set->blendWeights()[4 * v + k] = 0.25f;
			set->blendIndices()[4 * v + k] = uint8_t(k);
		}
	}
	set->allocateIndices(6);
	for (uint32_t i = 0; i < 6; ++i)
		set->setIndex(i % numVertices, i);
	set->allocateSubsets(2);
	set->setSubset(new Subset{0, 3, 0, 3}, 0);
	set->setSubset(new Subset{0, numVertices, 3, 3}, 1);
	return set;
}

uint64_t checksumOf(const IndexedTriangleSet& set)
{
	uint64_t state = 0;
	set.updateChecksum(state);
	return state;
}

} // namespace

TEST(TriangleSet, CloneCopiesDeeplyAndDropsMeshUsage)
{
	std::unique_ptr<IndexedTriangleSet> set = smallSet(5);
	set->setOptimized(true);
	set->setMeshUsage(0x100);
	std::unique_ptr<IndexedTriangleSet> copy = set->clone();

	EXPECT_EQ(checksumOf(*copy), checksumOf(*set));
	EXPECT_TRUE(copy->isOptimized());
	EXPECT_EQ(copy->meshUsage(), 0u);
	EXPECT_NE(copy->positions(), set->positions());
	ASSERT_NE(copy->getSubset(1), set->getSubset(1));
	EXPECT_EQ(copy->getSubset(1)->firstIndex, 3u);

	// the copy is independent of its source
	copy->setPosition(4, -1, -1, -1);
	copy->getSubset(1)->numIndices = 0;
	EXPECT_EQ(set->positions()[12], 4.0f);
	EXPECT_EQ(set->getSubset(1)->numIndices, 3u);
}

TEST(TriangleSet, ChecksumCoversWhatItShould)
{
	std::unique_ptr<IndexedTriangleSet> set = smallSet(5);
	const uint64_t base = checksumOf(*set);
	EXPECT_NE(base, 0u);

	// not folded in: subset vertex ranges, the optimised flag, mesh usage
	set->getSubset(0)->firstVertex = 2;
	set->getSubset(0)->numVertices = 9;
	set->setOptimized(true);
	set->setMeshUsage(0x10);
	EXPECT_EQ(checksumOf(*set), base);

	// folded in: each array, indices and subset index ranges
	auto changes = [&](auto change) {
		std::unique_ptr<IndexedTriangleSet> other = smallSet(5);
		change(*other);
		return checksumOf(*other) != base;
	};
	EXPECT_TRUE(changes([](IndexedTriangleSet& s) { s.normals()[14] = 0.5f; }));
	EXPECT_TRUE(changes([](IndexedTriangleSet& s) { s.uvs(1)[9] = 0.0f; }));
	EXPECT_TRUE(changes([](IndexedTriangleSet& s) { s.blendIndices()[19] = 9; }));
	EXPECT_TRUE(changes([](IndexedTriangleSet& s) { s.blendWeights()[0] = 1.0f; }));
	EXPECT_TRUE(changes([](IndexedTriangleSet& s) { s.setIndex(4, 5); }));
	EXPECT_TRUE(changes([](IndexedTriangleSet& s) { s.getSubset(1)->firstIndex = 0; }));

	// the fold itself: one byte through the table
	uint64_t state = 0x1234;
	const uint8_t byte = 0xAB;
	foldChecksumBytes(state, &byte, 1);
	EXPECT_EQ(state, (0x1234ull >> 8) ^ TriangleSetChecksumTable[(0x1234 ^ 0xAB) & 0xFF]);
	// words from the low byte up
	uint64_t bytesState = 7, wordState = 7;
	const uint8_t little[4] = {0x78, 0x56, 0x34, 0x12};
	const uint32_t word = 0x12345678;
	foldChecksumBytes(bytesState, little, 4);
	foldChecksumU32(wordState, &word, 1);
	EXPECT_EQ(bytesState, wordState);
}
