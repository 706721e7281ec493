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

inline void prefetch(const void* address)
{
#if defined(__GNUC__)
	__builtin_prefetch(address);
	__builtin_prefetch(static_cast<const char*>(address) + 64);
#else
	(void)address;
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

// Positions only: decided within the key array.
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

// Stable merge sort that only ever asks "does b come before a": every index stays within its
// range whatever the answers are, as the tolerance makes the order intransitive.
template <typename Order>
void sortKeys(WeldKey* keys, WeldKey* scratch, size_t count, const Order& order)
{
	const size_t kRun = 16;

	for (size_t first = 0; first < count; first += kRun)
	{
		const size_t end = first + kRun < count ? first + kRun : count;
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

	WeldKey* from = keys;
	WeldKey* to = scratch;
	for (size_t width = kRun; width < count; width *= 2)
	{
		for (size_t first = 0; first < count; first += 2 * width)
		{
			const size_t middle = first + width < count ? first + width : count;
			const size_t end = middle + width < count ? middle + width : count;
			size_t left = first, right = middle, out = first;
			while (left < middle && right < end)
				to[out++] = order.before(from[right], from[left]) ? from[right++] : from[left++];
			while (left < middle)
				to[out++] = from[left++];
			while (right < end)
				to[out++] = from[right++];
		}
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
		// fields: the vertex records are only read for vertices that share a position.
		const KeyOrder order{vertices};
		{
			std::vector<WeldKey> scratch(n);
			sortKeys(keys.data(), scratch.data(), n, PositionOrder());
			const PositionOrder positions;
			for (uint32_t first = 0; first < n;)
			{
				if (first + kPrefetchDistance < n)
					prefetch(&vertices[keys[first + kPrefetchDistance].index]);
				uint32_t end = first + 1;
				while (end < n && !positions.before(keys[end - 1], keys[end]) && !positions.before(keys[end], keys[end - 1]))
					++end;
				if (end - first > 1)
					sortKeys(keys.data() + first, scratch.data() + first, end - first, order);
				first = end;
			}
		}

		for (uint32_t k = 0; k < n; ++k)
			target[k] = k;

		// each candidate is compared with the first vertex of its run, not with its neighbour
		uint32_t i = 0;
		while (i + 1 < n)
		{
			if (i + kPrefetchDistance < n)
				prefetch(&vertices[keys[i + kPrefetchDistance].index]);
			const WeldKey& base = keys[i];
			BuilderVertex& baseVertex = vertices[base.index];
			float sum[3] = {baseVertex.tangent[0], baseVertex.tangent[1], baseVertex.tangent[2]};

			uint32_t j = i + 1;
			for (; j < n && order.compare(base, keys[j]) == 0; ++j)
			{
				if (j + kPrefetchDistance < n)
					prefetch(&vertices[keys[j + kPrefetchDistance].index]);
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
