// The optimiser against a plain transcription of the whole-subset search, and its set-level steps.
#include "geometry/TriangleSet.h"
#include "geometry/VertexCacheOptimizer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

using namespace vqm;

namespace
{

// The slow form: every round scans all triangles of the subset.
template <typename Index>
std::vector<Index> referenceTriangleOrder(uint32_t numTriangles, uint32_t firstVertex, uint32_t numVertices, const Index* in)
{
	int cacheList[67];
	std::fill(cacheList, cacheList + 67, -1);
	std::vector<int> cachePosition(numVertices, -1);
	std::vector<uint32_t> remaining(numVertices, 0);
	std::vector<float> score(numVertices);
	std::vector<int> triangleSlot(numTriangles, -1);

	auto scoreOf = [&](uint32_t v) {
		const uint32_t r = remaining[v];
		if (r == 0)
			return -1.0f;
		const int p = cachePosition[v];
		float cache;
		if (p == -1)
			cache = 0.0f;
		else if (p < 3)
			cache = 0.75f;
		else
			cache = powf(1.0f - float(p - 3) * 0.016393442f, 1.5f);
		const float u = 1.0f / sqrtf(float(r));
		return (u + u) + cache;
	};
	auto corner = [&](uint32_t t, int k) { return uint32_t(in[3 * t + k]) - firstVertex; };

	for (uint32_t i = 0; i < 3 * numTriangles; ++i)
		remaining[in[i] - firstVertex]++;
	for (uint32_t v = 0; v < numVertices; ++v)
		score[v] = scoreOf(v);

	for (uint32_t n = 0; n < numTriangles; ++n)
	{
		int best = -1;
		float bestSum = 0.0f;
		for (uint32_t t = 0; t < numTriangles; ++t)
		{
			if (triangleSlot[t] != -1)
				continue;
			const float sum = (score[corner(t, 1)] + score[corner(t, 0)]) + score[corner(t, 2)];
			if (best == -1 || sum > bestSum)
			{
				best = int(t);
				bestSum = sum;
			}
		}

		triangleSlot[best] = int(n);
		const uint32_t corners[3] = {corner(best, 0), corner(best, 1), corner(best, 2)};
		for (uint32_t v : corners)
			remaining[v]--;

		int noted[3] = {cachePosition[corners[0]], cachePosition[corners[1]], cachePosition[corners[2]]};
		for (int s = 0; s < 64; ++s)
			if (cacheList[s] != -1)
				cachePosition[cacheList[s]] = -1;

		int newCorners = 0;
		for (int k = 0; k < 3; ++k)
		{
			const int p = noted[k];
			if (p == -1)
			{
				++newCorners;
				continue;
			}
			for (int s = p; s < 66; ++s)
				cacheList[s] = cacheList[s + 1];
			for (int l = k + 1; l < 3; ++l)
				if (noted[l] > p)
					--noted[l];
		}

		for (int s = 66; s >= 3; --s)
			cacheList[s] = cacheList[s - 3];
		for (int k = 0; k < 3; ++k)
			cacheList[k] = int(corners[k]);

		for (int s = 0; s < 64; ++s)
			if (cacheList[s] != -1)
				cachePosition[cacheList[s]] = s;
		for (int s = 0; s < 64 + newCorners; ++s)
			if (cacheList[s] != -1)
				score[cacheList[s]] = scoreOf(uint32_t(cacheList[s]));
	}

	std::vector<Index> out(3 * size_t(numTriangles));
	for (uint32_t t = 0; t < numTriangles; ++t)
		for (int k = 0; k < 3; ++k)
			out[3 * triangleSlot[t] + k] = in[3 * t + k];
	return out;
}

struct Mesh
{
	uint32_t firstVertex = 0;
	uint32_t numVertices = 0;
	std::vector<uint32_t> indices;
};

Mesh randomMesh(std::mt19937& rng, uint32_t numVertices, uint32_t numTriangles, uint32_t firstVertex, int degeneratePercent)
{
	Mesh mesh;
	mesh.firstVertex = firstVertex;
	mesh.numVertices = numVertices;
	std::uniform_int_distribution<uint32_t> vertex(0, numVertices - 1);
	std::uniform_int_distribution<int> percent(0, 99);
	for (uint32_t t = 0; t < numTriangles; ++t)
	{
		uint32_t a = vertex(rng), b = vertex(rng), c = vertex(rng);
		if (percent(rng) < degeneratePercent)
		{
			const int kind = percent(rng) % 4;
			if (kind == 0)
				b = a;
			else if (kind == 1)
				c = b;
			else if (kind == 2)
				c = a;
			else
				b = c = a;
		}
		for (uint32_t v : {a, b, c})
			mesh.indices.push_back(firstVertex + v);
	}
	return mesh;
}

// A w x h grid of quads, two triangles each; local vertices come in clusters that overlap, as a
// mesh does whose triangles were sorted by their first index.
Mesh gridMesh(uint32_t w, uint32_t h, uint32_t firstVertex)
{
	Mesh mesh;
	mesh.firstVertex = firstVertex;
	mesh.numVertices = (w + 1) * (h + 1);
	for (uint32_t y = 0; y < h; ++y)
		for (uint32_t x = 0; x < w; ++x)
		{
			const uint32_t a = firstVertex + y * (w + 1) + x, b = a + 1, c = a + w + 1, d = c + 1;
			for (uint32_t v : {a, c, b, b, c, d})
				mesh.indices.push_back(v);
		}
	return mesh;
}

template <typename Index>
void expectSameOrder(const Mesh& mesh, const char* what)
{
	std::vector<Index> in(mesh.indices.begin(), mesh.indices.end());
	const uint32_t numTriangles = uint32_t(in.size() / 3);
	std::vector<Index> out(in.size());
	ASSERT_TRUE(optimizeTriangleOrder(numTriangles, mesh.firstVertex, mesh.numVertices, in.data(), out.data())) << what;
	const std::vector<Index> expected = referenceTriangleOrder(numTriangles, mesh.firstVertex, mesh.numVertices, in.data());
	ASSERT_EQ(out, expected) << what << ": " << numTriangles << " triangles, " << mesh.numVertices << " vertices";
}

void expectSameOrderBothWidths(const Mesh& mesh, const char* what)
{
	if (mesh.firstVertex + mesh.numVertices <= 0x10000)
		expectSameOrder<uint16_t>(mesh, what);
	expectSameOrder<uint32_t>(mesh, what);
}

} // namespace

TEST(VertexCacheOptimizer, ScoreConstants)
{
	const float factor = 0.016393442f;
	uint32_t bits;
	memcpy(&bits, &factor, sizeof(bits));
	EXPECT_EQ(bits, 0x3C864B8Au);

	EXPECT_EQ(vertexCacheScore(0, 0), -1.0f);
	EXPECT_EQ(vertexCacheScore(1, -1), 2.0f);
	EXPECT_EQ(vertexCacheScore(4, 2), 1.0f + 0.75f);
	EXPECT_EQ(vertexCacheScore(4, 3), 1.0f + 1.0f);
	// scores fall with the position behind the first three slots
	EXPECT_GT(vertexCacheScore(1, 10), vertexCacheScore(1, 11));
	EXPECT_GT(vertexCacheScore(1, 63), vertexCacheScore(1, -1));
}

TEST(VertexCacheOptimizer, SameOrderAsWholeSearchOnRandomMeshes)
{
	std::mt19937 rng(1234);
	for (int round = 0; round < 150; ++round)
	{
		std::uniform_int_distribution<uint32_t> vertexCount(1, round < 100 ? 120 : 600);
		std::uniform_int_distribution<uint32_t> triangleCount(1, round < 100 ? 300 : 1500);
		const uint32_t numVertices = vertexCount(rng);
		const Mesh mesh = randomMesh(rng, numVertices, triangleCount(rng), round % 3 == 0 ? 0 : 17 * round, round % 4 == 0 ? 0 : 15);
		expectSameOrderBothWidths(mesh, "random");
		if (HasFatalFailure())
			return;
	}
}

// Few vertices and many degenerate triangles fill the cache list with repeats of the same
// vertices, so that a repeated corner in slot 63 also takes out the entry behind the cache.
TEST(VertexCacheOptimizer, SameOrderAsWholeSearchWithRepeatsFillingTheList)
{
	std::mt19937 rng(4321);
	for (int round = 0; round < 60; ++round)
	{
		std::uniform_int_distribution<uint32_t> vertexCount(2, 6);
		std::uniform_int_distribution<uint32_t> triangleCount(300, 900);
		const uint32_t numVertices = vertexCount(rng);
		const Mesh mesh = randomMesh(rng, numVertices, triangleCount(rng), round % 2 == 0 ? 0 : 3, 50);
		expectSameOrderBothWidths(mesh, "repeats");
		if (HasFatalFailure())
			return;
	}
}

TEST(VertexCacheOptimizer, SameOrderAsWholeSearchOnStructuredMeshes)
{
	for (uint32_t size : {1u, 2u, 3u, 7u, 16u, 40u})
		expectSameOrderBothWidths(gridMesh(size, size + 1, size), "grid");
	// a long strip: the cache fills and vertices leave it with triangles still to emit
	expectSameOrderBothWidths(gridMesh(150, 3, 0), "strip");

	// every triangle twice: ties everywhere, the lower number must go first
	Mesh twice = gridMesh(12, 12, 0);
	const std::vector<uint32_t> once = twice.indices;
	twice.indices.insert(twice.indices.end(), once.begin(), once.end());
	expectSameOrderBothWidths(twice, "doubled grid");

	// the same triangle many times, and triangles with all three corners alike
	Mesh repeated;
	repeated.numVertices = 5;
	for (int i = 0; i < 20; ++i)
		for (uint32_t v : {0u, 1u, 2u, 3u, 3u, 3u, 4u, 4u, 1u})
			repeated.indices.push_back(v);
	expectSameOrderBothWidths(repeated, "repeated");

	// grid whose vertex numbers are shuffled, on 32-bit indices beyond the 16-bit range
	Mesh far = gridMesh(30, 30, 70000);
	std::mt19937 rng(99);
	std::vector<uint32_t> shuffle(far.numVertices);
	for (uint32_t i = 0; i < far.numVertices; ++i)
		shuffle[i] = i;
	std::shuffle(shuffle.begin(), shuffle.end(), rng);
	for (uint32_t& index : far.indices)
		index = 70000 + shuffle[index - 70000];
	expectSameOrderBothWidths(far, "shuffled far grid");
}

TEST(VertexCacheOptimizer, SingleTriangleAndOutOfRangeInput)
{
	const uint16_t one[3] = {7, 5, 6};
	uint16_t out[3] = {};
	ASSERT_TRUE(optimizeTriangleOrder(1, 5, 3, one, out));
	EXPECT_EQ(std::vector<uint16_t>(out, out + 3), std::vector<uint16_t>(one, one + 3));

	// an index outside the frame: copied, not reordered
	const uint32_t bad[6] = {0, 1, 2, 2, 1, 9};
	uint32_t copy[6] = {};
	EXPECT_FALSE(optimizeTriangleOrder(2, 0, 4, bad, copy));
	EXPECT_EQ(std::vector<uint32_t>(copy, copy + 6), std::vector<uint32_t>(bad, bad + 6));
	EXPECT_FALSE(optimizeTriangleOrder(1, 3, 4, bad, copy)); // below firstVertex
}

namespace
{

// A set with positions (x = old vertex number) and 1-byte blend indices (old number & 0xFF).
std::unique_ptr<IndexedTriangleSet> makeSet(uint32_t numVertices, const std::vector<uint32_t>& indices, const std::vector<uint32_t>& subsetTriangles)
{
	std::unique_ptr<IndexedTriangleSet> set(new IndexedTriangleSet);
	set->allocateVertices(numVertices, HasBlendWeights | SingleBlendWeights | HasNormal);
	for (uint32_t v = 0; v < numVertices; ++v)
	{
		set->setPosition(v, float(v), 0.5f, -1.0f);
		set->setNormal(v, 0.0f, float(v), 1.0f);
		set->blendIndices()[v] = uint8_t(v);
	}
	set->allocateIndices(uint32_t(indices.size()));
	for (uint32_t i = 0; i < indices.size(); ++i)
		set->setIndex(indices[i], i);
	set->allocateSubsets(uint32_t(subsetTriangles.size()));
	uint32_t first = 0;
	for (uint32_t s = 0; s < subsetTriangles.size(); ++s)
	{
		Subset* subset = new Subset;
		subset->firstIndex = 3 * first;
		subset->numIndices = 3 * subsetTriangles[s];
		uint32_t lo = UINT32_MAX, hi = 0;
		for (uint32_t i = subset->firstIndex; i < subset->firstIndex + subset->numIndices; ++i)
		{
			lo = std::min(lo, indices[i]);
			hi = std::max(hi, indices[i]);
		}
		subset->firstVertex = lo;
		subset->numVertices = hi - lo + 1;
		set->setSubset(subset, s);
		first += subsetTriangles[s];
	}
	return set;
}

// Reference of the whole set step: reorder each subset, renumber by first use, move the data.
void expectOptimizedLikeReference(const std::vector<uint32_t>& indices, uint32_t numVertices, const std::vector<uint32_t>& subsetTriangles)
{
	std::unique_ptr<IndexedTriangleSet> set = makeSet(numVertices, indices, subsetTriangles);
	optimize(*set);
	ASSERT_TRUE(set->isOptimized());

	std::vector<uint32_t> reordered = indices;
	uint32_t first = 0;
	for (uint32_t count : subsetTriangles)
	{
		const uint32_t* in = indices.data() + 3 * first;
		const uint32_t lo = *std::min_element(in, in + 3 * count), hi = *std::max_element(in, in + 3 * count);
		const std::vector<uint32_t> order = referenceTriangleOrder<uint32_t>(count, lo, hi - lo + 1, in);
		std::copy(order.begin(), order.end(), reordered.begin() + 3 * first);
		first += count;
	}
	std::vector<uint32_t> newIndex(numVertices, UINT32_MAX);
	uint32_t next = 0;
	for (uint32_t& index : reordered)
	{
		if (newIndex[index] == UINT32_MAX)
			newIndex[index] = next++;
		const uint32_t old = index;
		index = newIndex[old];
		ASSERT_EQ(set->positions()[3 * index], float(old));
		ASSERT_EQ(set->normals()[3 * index + 1], float(old));
		ASSERT_EQ(set->blendIndices()[index], uint8_t(old));
	}
	ASSERT_EQ(next, numVertices) << "every vertex is used";
	for (uint32_t i = 0; i < reordered.size(); ++i)
		ASSERT_EQ(set->indexAt(i), reordered[i]) << "index " << i;

	first = 0;
	for (uint32_t s = 0; s < subsetTriangles.size(); ++s)
	{
		const Subset* subset = set->getSubset(s);
		const auto range = std::minmax_element(reordered.begin() + 3 * first, reordered.begin() + 3 * (first + subsetTriangles[s]));
		EXPECT_EQ(subset->firstVertex, *range.first);
		EXPECT_EQ(subset->numVertices, *range.second - *range.first + 1);
		EXPECT_EQ(subset->firstIndex, 3 * first);
		first += subsetTriangles[s];
	}
}

// Triangles that use every vertex of [0, numVertices) at least once, then random ones.
std::vector<uint32_t> coveringIndices(std::mt19937& rng, uint32_t numVertices, uint32_t extraTriangles)
{
	std::vector<uint32_t> indices(numVertices);
	for (uint32_t v = 0; v < numVertices; ++v)
		indices[v] = v;
	std::shuffle(indices.begin(), indices.end(), rng);
	std::uniform_int_distribution<uint32_t> vertex(0, numVertices - 1);
	while (indices.size() % 3)
		indices.push_back(vertex(rng));
	for (uint32_t t = 0; t < extraTriangles; ++t)
		for (int k = 0; k < 3; ++k)
			indices.push_back(vertex(rng));
	return indices;
}

} // namespace

TEST(VertexCacheOptimizer, SetWithSubsetsMatchesReference)
{
	std::mt19937 rng(42);
	for (int round = 0; round < 12; ++round)
	{
		const uint32_t numVertices = 30 + 40 * round;
		std::vector<uint32_t> indices = coveringIndices(rng, numVertices, 50 * round);
		const uint32_t triangles = uint32_t(indices.size() / 3);
		// subsets of varying size, down to single triangles
		std::vector<uint32_t> subsets;
		std::uniform_int_distribution<uint32_t> length(1, 1 + triangles / 3);
		for (uint32_t left = triangles; left;)
		{
			const uint32_t count = std::min(left, round % 3 == 0 ? 1 + round % 2 : length(rng));
			subsets.push_back(count);
			left -= count;
		}
		expectOptimizedLikeReference(indices, numVertices, subsets);
		if (HasFatalFailure())
			return;
	}
}

TEST(VertexCacheOptimizer, SetWith32BitIndicesMatchesReference)
{
	std::mt19937 rng(7);
	const uint32_t numVertices = 65537;
	std::vector<uint32_t> indices = coveringIndices(rng, numVertices, 0);
	const uint32_t triangles = uint32_t(indices.size() / 3);
	std::vector<uint32_t> subsets(triangles / 2000, 2000);
	subsets.push_back(triangles - 2000 * uint32_t(subsets.size()));
	expectOptimizedLikeReference(indices, numVertices, subsets);
}

TEST(VertexCacheOptimizer, SharedVerticesTakeTheEarlierSubsetsNumbers)
{
	// subset 0 uses 4 5 6, subset 1 uses 6 (shared) and 0 1 2 3
	const std::vector<uint32_t> indices = {4, 5, 6, 0, 1, 6, 2, 3, 6, 0, 1, 2, 3, 0, 2};
	std::unique_ptr<IndexedTriangleSet> set = makeSet(7, indices, {1, 4});
	optimize(*set);

	// the single triangle of subset 0 keeps its corner order and takes numbers 0, 1, 2
	EXPECT_EQ(set->indexAt(0), 0u);
	EXPECT_EQ(set->indexAt(1), 1u);
	EXPECT_EQ(set->indexAt(2), 2u);
	EXPECT_EQ(set->positions()[3 * 2], 6.0f);
	EXPECT_EQ(set->getSubset(0)->firstVertex, 0u);
	EXPECT_EQ(set->getSubset(0)->numVertices, 3u);
	// subset 1 spans vertex 2 (shared) and 3 to 6, its own
	EXPECT_EQ(set->getSubset(1)->firstVertex, 2u);
	EXPECT_EQ(set->getSubset(1)->numVertices, 5u);
}

TEST(VertexCacheOptimizer, RunsOnlyOnce)
{
	std::mt19937 rng(5);
	std::unique_ptr<IndexedTriangleSet> set = makeSet(300, coveringIndices(rng, 300, 400), {150, 350});
	optimize(*set);
	uint64_t once = 0;
	set->updateChecksum(once);

	set->optimize();
	uint64_t twice = 0;
	set->updateChecksum(twice);
	EXPECT_EQ(once, twice);

	// the flag alone decides: a set marked optimised is left as it is, however it is ordered
	std::unique_ptr<IndexedTriangleSet> fresh = makeSet(300, coveringIndices(rng, 300, 400), {150, 350});
	fresh->setOptimized(true);
	uint64_t before = 0, after = 0;
	fresh->updateChecksum(before);
	fresh->optimize();
	fresh->updateChecksum(after);
	EXPECT_EQ(before, after);
	fresh->setOptimized(false);
	fresh->optimize();
	after = 0;
	fresh->updateChecksum(after);
	EXPECT_NE(before, after);
}

TEST(VertexCacheOptimizer, DegenerateAndEmptySubsets)
{
	// a subset of no triangles and one of a single degenerate triangle
	const std::vector<uint32_t> indices = {1, 1, 0, 2, 3, 2, 0, 1, 3};
	std::unique_ptr<IndexedTriangleSet> set = makeSet(4, indices, {1, 0, 2});
	optimize(*set);
	EXPECT_EQ(set->getSubset(1)->firstVertex, 0u);
	EXPECT_EQ(set->getSubset(1)->numVertices, 0u);
	EXPECT_EQ(set->indexAt(0), 0u);
	EXPECT_EQ(set->indexAt(1), 0u);
	EXPECT_EQ(set->indexAt(2), 1u);

	IndexedTriangleSet empty;
	optimize(empty);
	EXPECT_TRUE(empty.isOptimized());
	EXPECT_EQ(empty.numIndices(), 0u);
}
