// Random builders, non-finite values included, through the whole road: the set must stay well formed.
#include "geometry/BoundingSphere.h"
#include "geometry/MeshBuilder.h"
#include "geometry/TriangleSet.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

using namespace vqm;

namespace
{

float randomValue(std::mt19937& rng, int style)
{
	std::uniform_int_distribution<int> pick(0, 99);
	const int p = pick(rng);
	if (p < 2)
		return NAN;
	if (p < 4)
		return p == 2 ? INFINITY : -INFINITY;
	if (style == 0) // coarse grid: many exact and near duplicates
		return float(pick(rng) % 4) + (p < 30 ? 0.00004f * float(p % 3) : 0.0f);
	return std::uniform_real_distribution<float>(-10.0f, 10.0f)(rng);
}

void expectWellFormed(const IndexedTriangleSet& set, const char* stage)
{
	const uint32_t numVertices = set.numVertices();
	const uint32_t numIndices = set.numIndices();
	ASSERT_EQ(numIndices % 3, 0u) << stage;
	ASSERT_EQ(set.uses16BitIndices(), numVertices <= 65536) << stage;

	std::vector<bool> used(numVertices, false);
	for (uint32_t i = 0; i < numIndices; ++i)
	{
		const uint32_t index = set.indexAt(i);
		ASSERT_LT(index, numVertices) << stage;
		used[index] = true;
	}
	for (uint32_t v = 0; v < numVertices; ++v)
		ASSERT_TRUE(used[v]) << stage << ": vertex " << v << " unused";

	// subsets follow each other without gap or overlap and frame their own indices
	uint32_t next = 0;
	for (uint32_t s = 0; s < set.numSubsets(); ++s)
	{
		const Subset* subset = set.getSubset(s);
		ASSERT_NE(subset, nullptr) << stage;
		ASSERT_EQ(subset->firstIndex, next) << stage;
		ASSERT_GT(subset->numIndices, 0u) << stage;
		ASSERT_EQ(subset->numIndices % 3, 0u) << stage;
		for (uint32_t i = subset->firstIndex; i < subset->firstIndex + subset->numIndices; ++i)
		{
			ASSERT_GE(set.indexAt(i), subset->firstVertex) << stage;
			ASSERT_LT(set.indexAt(i) - subset->firstVertex, subset->numVertices) << stage;
		}
		next += subset->numIndices;
	}
	ASSERT_EQ(next, numIndices) << stage;
}

} // namespace

TEST(MeshFuzz, RandomBuildersGiveWellFormedSets)
{
	std::mt19937 rng(2024);
	std::uniform_int_distribution<int> percent(0, 99);
	for (int round = 0; round < 300; ++round)
	{
		MeshBuilder builder;
		const uint32_t flagChoices[] = {0u, HasNormal | HasUv0 | HasTangent, HasNormal | HasColor | HasBlendWeights | HasUv1 | HasUv3,
		                                HasBlendWeights | SingleBlendWeights | HasTangent, 0x3FFu};
		builder.setVertexFlags(flagChoices[round % 5]);
		const int style = round % 2;

		const uint32_t numVertices = std::uniform_int_distribution<uint32_t>(0, round < 280 ? 60 : 3000)(rng);
		for (uint32_t i = 0; i < numVertices; ++i)
		{
			BuilderVertex v;
			for (float& x : v.position)
				x = randomValue(rng, style);
			for (float& x : v.normal)
				x = randomValue(rng, style);
			for (auto& uv : v.uv)
				for (float& x : uv)
					x = percent(rng) < 50 ? 0.0f : randomValue(rng, style);
			for (float& x : v.color)
				x = percent(rng) < 70 ? 1.0f : randomValue(rng, style);
			for (float& x : v.tangent)
				x = percent(rng) < 80 ? 0.0f : randomValue(rng, style);
			for (int k = 0; k < 4; ++k)
			{
				v.blendWeights[k] = percent(rng) < 50 ? 0.0f : randomValue(rng, style);
				v.blendIndices[k] = uint8_t(percent(rng) % 3);
			}
			builder.addVertex(v);
		}
		const uint32_t numTriangles = std::uniform_int_distribution<uint32_t>(0, round < 280 ? 80 : 4000)(rng);
		for (uint32_t t = 0; t < numTriangles; ++t)
		{
			BuilderTriangle triangle;
			for (uint32_t& index : triangle.indices)
				index = percent(rng) < 2 ? numVertices + 5 : std::uniform_int_distribution<uint32_t>(0, numVertices ? numVertices - 1 : 0)(rng);
			triangle.materialIndex = uint32_t(percent(rng) % 4) * 3;
			builder.addTriangle(triangle);
		}

		if (builder.vertexFlags() & HasTangent)
			builder.computeTangents();
		builder.weldVertices();
		ASSERT_LE(builder.numVertices(), numVertices);
		std::unique_ptr<IndexedTriangleSet> set = builder.buildIndexedTriangleSet();
		expectWellFormed(*set, "built");
		if (HasFatalFailure())
			return;

		const uint32_t vertexCount = set->numVertices();
		set->optimize();
		EXPECT_EQ(set->numVertices(), vertexCount);
		expectWellFormed(*set, "optimised");
		if (HasFatalFailure())
			return;
		// in order of first use
		uint32_t next = 0;
		for (uint32_t i = 0; i < set->numIndices(); ++i)
		{
			ASSERT_LE(set->indexAt(i), next);
			next += set->indexAt(i) == next ? 1 : 0;
		}

		std::unique_ptr<BoundingSphere> sphere = set->computeBoundingSphere();
		ASSERT_NE(sphere, nullptr);
		std::unique_ptr<IndexedTriangleSet> copy = set->clone();
		uint64_t a = 0, b = 0;
		set->updateChecksum(a);
		copy->updateChecksum(b);
		if (!(set->vertexFlags() & HasGeneric)) // generics are never written, so not compared
		{
			EXPECT_EQ(a, b);
		}
	}
}
