// compareVertices and MeshBuilder::weldVertices: one stable merge sort and one linear pass.
#include "geometry/MeshBuilder.h"

#include <cmath>
#include <cstring>
#include <utility>

namespace vqm
{

namespace
{

const float kWeldEpsilon = 0.0001f;

// The full comparisons read vertex records in sorted order, that is all over memory: ask for
// them a few keys ahead.
const uint32_t kPrefetchDistance = 16;

const size_t kSortRun = 16;
const size_t kSortBlock = 16384; // keys; a power of two times kSortRun, 256 KB

// All cache lines of one vertex record: 108 bytes span two or three.
inline void prefetchRecord(const BuilderVertex* vertex)
{
#if defined(__GNUC__)
	const char* bytes = reinterpret_cast<const char*>(vertex);
	__builtin_prefetch(bytes);
	__builtin_prefetch(bytes + 64);
	__builtin_prefetch(bytes + sizeof(BuilderVertex) - 1);
#else
	(void)vertex;
#endif
}

// -1 if x is below y by more than the tolerance, 1 if above, else 0. NaN compares as -1.
inline int compareWithin(float x, float y)
{
	if (!(x >= y - kWeldEpsilon))
		return -1;
	if (x > y + kWeldEpsilon)
		return 1;
	return 0;
}

inline int compareExact(float x, float y)
{
	return x < y ? -1 : (x > y ? 1 : 0);
}

// Everything that follows the position.
int compareAfterPosition(const BuilderVertex& a, uint32_t aIndex, const BuilderVertex& b, uint32_t bIndex)
{
	for (int k = 0; k < 3; ++k)
		if (int r = compareWithin(a.normal[k], b.normal[k]))
			return r;
	for (int k = 0; k < 4; ++k)
		if (int r = compareWithin(a.color[k], b.color[k]))
			return r;
	if (a.tangent[3] != b.tangent[3])
		return a.tangent[3] < b.tangent[3] ? -1 : 1;

	// only opposite tangents keep vertices apart
	const float dot = a.tangent[0] * b.tangent[0] + a.tangent[1] * b.tangent[1] + a.tangent[2] * b.tangent[2];
	if (dot < 0.0f)
		return aIndex < bIndex ? -1 : 1;

	for (int set = 0; set < 4; ++set)
		for (int k = 0; k < 2; ++k)
			if (int r = compareWithin(a.uv[set][k], b.uv[set][k]))
				return r;
	for (int k = 0; k < 4; ++k)
		if (int r = compareWithin(a.blendWeights[k], b.blendWeights[k]))
			return r;
	for (int k = 0; k < 4; ++k)
		if (a.blendIndices[k] != b.blendIndices[k])
			return a.blendIndices[k] < b.blendIndices[k] ? -1 : 1;
	return 0;
}

// A vertex in the sort: its position is copied in, so that most comparisons stay in this array.
struct WeldKey
{
	float position[3];
	uint32_t index;
};

struct KeyOrder
{
	const BuilderVertex* vertices;

	int compare(const WeldKey& a, const WeldKey& b) const
	{
		for (int k = 0; k < 3; ++k)
			if (int r = compareWithin(a.position[k], b.position[k]))
				return r;
		return compareAfterPosition(vertices[a.index], a.index, vertices[b.index], b.index);
	}

	bool before(const WeldKey& a, const WeldKey& b) const
	{
		return compare(a, b) < 0;
	}
};

// Positions only: decided within the key array. x nearly always decides, so the branches are
// well predicted.
struct PositionOrder
{
	bool before(const WeldKey& a, const WeldKey& b) const
	{
		for (int k = 0; k < 3; ++k)
			if (int r = compareWithin(a.position[k], b.position[k]))
				return r < 0;
		return false;
	}
};

// Sorts runs of kSortRun keys by insertion, as the merge passes start from them.
template <typename Order>
void insertionSortRuns(WeldKey* keys, size_t count, const Order& order)
{
	for (size_t first = 0; first < count; first += kSortRun)
	{
		const size_t end = first + kSortRun < count ? first + kSortRun : count;
		for (size_t i = first + 1; i < end; ++i)
		{
			const WeldKey key = keys[i];
			size_t j = i;
			while (j > first && order.before(key, keys[j - 1]))
			{
				keys[j] = keys[j - 1];
				--j;
			}
			keys[j] = key;
		}
	}
}

// One merge pass of width `width` over [0, count) of from into to. The choice of the next key is
// made without a branch.
template <typename Order>
void mergePass(const WeldKey* from, WeldKey* to, size_t count, size_t width, const Order& order)
{
	for (size_t first = 0; first < count; first += 2 * width)
	{
		const size_t middle = first + width < count ? first + width : count;
		const size_t end = middle + width < count ? middle + width : count;
		size_t left = first, right = middle, out = first;
		while (left < middle && right < end)
		{
			const bool takeRight = order.before(from[right], from[left]);
			to[out++] = *(takeRight ? &from[right] : &from[left]);
			right += takeRight;
			left += !takeRight;
		}
		while (left < middle)
			to[out++] = from[left++];
		while (right < end)
			to[out++] = from[right++];
	}
}

// Stable merge sort that only ever asks "does b come before a": every index stays within its
// range whatever the answers are, as the tolerance makes the order intransitive. That also makes
// the result depend on which keys meet, so the merges are always those of the same bottom-up
// tree: runs of kSortRun keys, then pairs of runs of doubled width. The passes below kSortBlock
// are done block by block while a block is in the cache; they merge the same pairs.
template <typename Order>
void sortKeys(WeldKey* keys, WeldKey* scratch, size_t count, const Order& order)
{
	insertionSortRuns(keys, count, order);

	size_t passes = 0;
	for (size_t width = kSortRun; width < count && width < kSortBlock; width *= 2)
		++passes;
	for (size_t first = 0; first < count; first += kSortBlock)
	{
		const size_t blockCount = first + kSortBlock < count ? kSortBlock : count - first;
		WeldKey* from = keys + first;
		WeldKey* to = scratch + first;
		for (size_t pass = 0, width = kSortRun; pass < passes; ++pass, width *= 2)
		{
			mergePass(from, to, blockCount, width, order);
			std::swap(from, to);
		}
	}

	WeldKey* from = passes % 2 ? scratch : keys;
	WeldKey* to = passes % 2 ? keys : scratch;
	for (size_t width = kSortRun << passes; width < count; width *= 2)
	{
		mergePass(from, to, count, width, order);
		std::swap(from, to);
	}
	if (from != keys)
		memcpy(keys, from, count * sizeof(WeldKey));
}

} // namespace

int compareVertices(const BuilderVertex& a, uint32_t aIndex, const BuilderVertex& b, uint32_t bIndex)
{
	for (int k = 0; k < 3; ++k)
		if (int r = compareWithin(a.position[k], b.position[k]))
			return r;
	return compareAfterPosition(a, aIndex, b, bIndex);
}

void MeshBuilder::weldVertices()
{
	const uint32_t n = numVertices();

	// triangles that point outside the vertex array have no place in a set
	size_t kept = 0;
	for (const BuilderTriangle& triangle : m_triangles)
		if (triangle.indices[0] < n && triangle.indices[1] < n && triangle.indices[2] < n)
			m_triangles[kept++] = triangle;
	m_triangles.resize(kept);

	if (n == 0)
		return;

	BuilderVertex* vertices = m_vertices.data();
	std::vector<uint32_t> target(n);
	{
		std::vector<WeldKey> keys(n);
		for (uint32_t i = 0; i < n; ++i)
		{
			memcpy(keys[i].position, vertices[i].position, sizeof(keys[i].position));
			keys[i].index = i;
		}
		// Sort by position first, then each stretch of neighbours with alike positions by all
		// fields: the vertex records are only read for vertices that share a position. A stretch
		// is sorted just before the walk over the runs reaches it, while its records are still in
		// the cache from the sort. Each stretch sort only reads and moves its own vertices, none
		// of which has had its tangent changed by the walk yet, so the order is the one that
		// sorting all stretches first would give.
		const KeyOrder order{vertices};
		std::vector<WeldKey> scratch(n);
		sortKeys(keys.data(), scratch.data(), n, PositionOrder());

		const PositionOrder positions;
		uint32_t sortedEnd = 0; // the stretches in front of it are sorted
		auto sortStretchesThrough = [&](uint32_t k) {
			while (sortedEnd <= k)
			{
				const uint32_t first = sortedEnd;
				uint32_t end = first + 1;
				while (end < n && !positions.before(keys[end - 1], keys[end]) && !positions.before(keys[end], keys[end - 1]))
					++end;
				for (uint32_t ahead = end; ahead < end + kPrefetchDistance && ahead < n; ++ahead)
					prefetchRecord(&vertices[keys[ahead].index]);
				if (end - first > 1)
					sortKeys(keys.data() + first, scratch.data() + first, end - first, order);
				sortedEnd = end;
			}
		};

		for (uint32_t k = 0; k < n; ++k)
			target[k] = k;

		// each candidate is compared with the first vertex of its run, not with its neighbour
		uint32_t i = 0;
		while (i + 1 < n)
		{
			sortStretchesThrough(i + 1);
			const WeldKey& base = keys[i];
			BuilderVertex& baseVertex = vertices[base.index];
			float sum[3] = {baseVertex.tangent[0], baseVertex.tangent[1], baseVertex.tangent[2]};

			uint32_t j = i + 1;
			for (; j < n; ++j)
			{
				sortStretchesThrough(j);
				if (order.compare(base, keys[j]) != 0)
					break;
				const uint32_t c = keys[j].index;
				for (int k = 0; k < 3; ++k)
					sum[k] += vertices[c].tangent[k];
				target[c] = base.index;
			}

			const float length = sqrtf(sum[0] * sum[0] + sum[1] * sum[1] + sum[2] * sum[2]);
			const float scale = length > 0.00001f ? 1.0f / length : 1.0f;
			for (int k = 0; k < 3; ++k)
				baseVertex.tangent[k] = length > 0.00001f ? sum[k] * scale : sum[k];
			i = j;
		}
	}

	// A run's first vertex survives if some triangle uses the run. newIndex[k] counts the
	// survivors in front of k, so survivors keep their order of creation.
	std::vector<uint8_t> survives(n, 0);
	for (const BuilderTriangle& triangle : m_triangles)
		for (uint32_t index : triangle.indices)
			survives[target[index]] = 1;

	std::vector<uint32_t> newIndex(n);
	uint32_t survivors = 0;
	for (uint32_t k = 0; k < n; ++k)
	{
		newIndex[k] = survivors;
		if (survives[k])
		{
			if (survivors != k)
				vertices[survivors] = vertices[k];
			++survivors;
		}
	}
	m_vertices.resize(survivors);

	for (BuilderTriangle& triangle : m_triangles)
		for (uint32_t& index : triangle.indices)
			index = newIndex[target[index]];
}

} // namespace vqm
