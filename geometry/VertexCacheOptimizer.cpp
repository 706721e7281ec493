#include "geometry/VertexCacheOptimizer.h"

#include "geometry/TriangleSet.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace vqm
{

namespace
{

const int kCacheSize = 64;
const int kListSize = kCacheSize + 3; // room for the three corners pushed in front
const uint32_t kEmpty = 0xFFFFFFFFu;
const uint32_t kNone = 0xFFFFFFFFu;
const uint32_t kValenceTableSize = 256;

struct ScoreTables
{
	float cache[kCacheSize];           // cache part by position
	float valence[kValenceTableSize];  // u + u with u = 1/sqrt(r)

	ScoreTables()
	{
		for (int p = 0; p < kCacheSize; ++p)
		{
			// volatile keeps powf a run-time call, so the table matches a direct evaluation bit for bit
			volatile float base = 1.0f - float(p - 3) * 0.016393442f;
			cache[p] = p < 3 ? 0.75f : powf(base, 1.5f);
		}
		for (uint32_t r = 0; r < kValenceTableSize; ++r)
		{
			const float u = 1.0f / sqrtf(float(r));
			valence[r] = u + u;
		}
	}
};

const ScoreTables& scoreTables()
{
	static const ScoreTables tables;
	return tables;
}

inline float scoreOf(const ScoreTables& tables, uint32_t remaining, int cachePosition)
{
	if (remaining == 0)
		return -1.0f;
	float valence;
	if (remaining < kValenceTableSize)
		valence = tables.valence[remaining];
	else
	{
		const float u = 1.0f / sqrtf(float(remaining));
		valence = u + u;
	}
	return valence + (cachePosition < 0 ? 0.0f : tables.cache[cachePosition]);
}

// A candidate triangle as one number: the f32 bits of its score sum above, the triangle number
// subtracted from 0xFFFFFFFF below. Sums of triangles still to emit are above 0 (every corner has
// a valence part), and positive f32 bits order like their values, so the greatest key is the
// greatest sum with the lowest triangle number, as the whole-subset search picks it.
inline uint64_t candidateKey(float score, uint32_t triangle)
{
	uint32_t bits;
	memcpy(&bits, &score, sizeof(bits));
	return uint64_t(bits) << 32 | (kNone - triangle);
}

inline uint32_t candidateTriangle(uint64_t key)
{
	return kNone - uint32_t(key);
}

inline uint32_t candidateScoreBits(uint64_t key)
{
	return uint32_t(key >> 32);
}

// Stable LSD radix sort by the score part, descending. Keys made in ascending triangle order thus
// end up in descending key order.
void sortDescending(std::vector<uint64_t>& keys)
{
	std::vector<uint64_t> scratch(keys.size());
	std::vector<uint32_t> counts(1 << 16);
	for (int shift = 32; shift < 64; shift += 16)
	{
		std::fill(counts.begin(), counts.end(), 0);
		for (uint64_t key : keys)
			counts[(~key >> shift) & 0xFFFF]++;
		uint32_t sum = 0;
		for (uint32_t& count : counts)
		{
			const uint32_t here = count;
			count = sum;
			sum += here;
		}
		for (uint64_t key : keys)
			scratch[counts[(~key >> shift) & 0xFFFF]++] = key;
		keys.swap(scratch);
	}
}

// The emission loop of one subset. Triangles are split in two kinds: "hot" ones have a corner in
// the cache; they are kept in a list with their corners and rescored every round (their sums move
// with the cache anyway). "Cold" ones have none, and their sum only changes when a corner leaves
// the cache. They wait in the list of starting scores, sorted once, and, after they have been hot,
// in a pending list that they enter when their last cached corner leaves. Most of them get hot
// again before they could win, so the pending list only goes into a heap when its best key could
// beat the best of the others. Stale entries show a changed sum.
template <typename Index>
class TriangleOrder
{
public:
	TriangleOrder(uint32_t numTriangles, uint32_t firstVertex, uint32_t numVertices, const Index* indices)
	    : m_tables(scoreTables()), m_numTriangles(numTriangles), m_firstVertex(firstVertex), m_indices(indices), m_empty(numVertices),
	      m_remaining(size_t(numVertices) + 1, 0), m_cachePosition(size_t(numVertices) + 1, -1), m_valence(size_t(numVertices) + 1),
	      m_score(size_t(numVertices) + 1), m_adjacencyStart(size_t(numVertices) + 1, 0), m_adjacency(size_t(numTriangles) * 3),
	      m_emitted(numTriangles, 0), m_cachedCorners(numTriangles, 0), m_hotPosition(numTriangles)
	{
		std::fill(m_listBuffer, m_listBuffer + kListBufferSize, m_empty);
		m_list = m_listBuffer + kListBufferSize - kListSize;

		for (size_t i = 0; i < size_t(numTriangles) * 3; ++i)
			m_remaining[indices[i] - firstVertex]++;
		for (uint32_t v = 0; v < numVertices; ++v)
			m_adjacencyStart[v + 1] = m_adjacencyStart[v] + m_remaining[v];
		std::vector<uint32_t> fill(m_adjacencyStart.begin(), m_adjacencyStart.end() - 1);
		for (uint32_t t = 0; t < numTriangles; ++t)
			for (int k = 0; k < 3; ++k)
				m_adjacency[fill[corner(t, k)]++] = t;
		fill = std::vector<uint32_t>();

		for (uint32_t v = 0; v <= numVertices; ++v)
		{
			m_valence[v] = valenceOf(m_remaining[v]);
			m_score[v] = m_valence[v];
		}

		m_initial.resize(numTriangles);
		for (uint32_t t = 0; t < numTriangles; ++t)
			m_initial[t] = candidateKey(triangleScore(t), t);
		sortDescending(m_initial);
		m_hot.reserve(256);
	}

	void run(Index* out)
	{
		for (uint32_t n = 0; n < m_numTriangles; ++n)
		{
			const uint32_t t = chooseTriangle();
			const uint32_t corners[3] = {corner(t, 0), corner(t, 1), corner(t, 2)};
			for (int k = 0; k < 3; ++k)
				out[3 * size_t(n) + k] = m_indices[3 * size_t(t) + k];

			m_emitted[t] = 1;
			if (m_cachedCorners[t])
				removeHot(t);
			for (uint32_t v : corners)
				removeFromAdjacency(v, t);

			updateCache(corners);
		}
	}

private:
	// The cache list is a window of kListSize slots that slides down a larger buffer: pushing
	// three corners in front moves the window instead of the slots.
	static const int kListBufferSize = 1024;

	struct HotTriangle
	{
		uint32_t corners[3];
		uint32_t triangle;
	};

	// The valence part of the score; a vertex with nothing left is in no live triangle, so its
	// score is never read again.
	float valenceOf(uint32_t remaining) const
	{
		if (remaining < kValenceTableSize)
			return m_tables.valence[remaining];
		const float u = 1.0f / sqrtf(float(remaining));
		return u + u;
	}

	uint32_t corner(uint32_t t, int k) const
	{
		return uint32_t(m_indices[3 * size_t(t) + k]) - m_firstVertex;
	}

	float triangleScore(uint32_t t) const
	{
		return (m_score[corner(t, 1)] + m_score[corner(t, 0)]) + m_score[corner(t, 2)];
	}

	bool isCurrentCold(uint64_t key) const
	{
		const uint32_t t = candidateTriangle(key);
		if (m_emitted[t] || m_cachedCorners[t] != 0)
			return false;
		const float score = triangleScore(t);
		uint32_t bits;
		memcpy(&bits, &score, sizeof(bits));
		return bits == candidateScoreBits(key);
	}

	// The triangle's entry in v's list of triangles still to emit goes to the end, out of the live part.
	void removeFromAdjacency(uint32_t v, uint32_t t)
	{
		uint32_t* list = &m_adjacency[m_adjacencyStart[v]];
		const uint32_t last = --m_remaining[v];
		m_valence[v] = valenceOf(last);
		for (uint32_t i = 0; i <= last; ++i)
			if (list[i] == t)
			{
				std::swap(list[i], list[last]);
				break;
			}
	}

	void addHot(uint32_t t)
	{
		m_hotPosition[t] = uint32_t(m_hot.size());
		m_hot.push_back(HotTriangle{{corner(t, 0), corner(t, 1), corner(t, 2)}, t});
	}

	void removeHot(uint32_t t)
	{
		const uint32_t position = m_hotPosition[t];
		const HotTriangle last = m_hot.back();
		m_hot[position] = last;
		m_hotPosition[last.triangle] = position;
		m_hot.pop_back();
	}

	void addPending(uint64_t key)
	{
		m_pending.push_back(key);
		m_pendingBest = key > m_pendingBest ? key : m_pendingBest;
		if (m_pending.size() >= m_pendingLimit)
		{
			// drop the stale entries now and then, so that the list stays of the size of the live ones
			size_t kept = 0;
			m_pendingBest = 0;
			for (uint64_t pending : m_pending)
				if (isCurrentCold(pending))
				{
					m_pending[kept++] = pending;
					m_pendingBest = pending > m_pendingBest ? pending : m_pendingBest;
				}
			m_pending.resize(kept);
			m_pendingLimit = std::max<size_t>(1024, 2 * kept);
		}
	}

	uint64_t bestColdKey()
	{
		// A skipped starting entry never needs to come back: once its triangle is cold again,
		// it is in the pending list or the heap.
		while (m_nextInitial < m_initial.size() && !isCurrentCold(m_initial[m_nextInitial]))
			++m_nextInitial;
		while (!m_cold.empty() && !isCurrentCold(m_cold.front()))
		{
			std::pop_heap(m_cold.begin(), m_cold.end());
			m_cold.pop_back();
		}
		const uint64_t initial = m_nextInitial < m_initial.size() ? m_initial[m_nextInitial] : 0;
		const uint64_t cold = m_cold.empty() ? 0 : m_cold.front();
		return initial > cold ? initial : cold;
	}

	uint32_t chooseTriangle()
	{
		// two chains of maxima keep the loop from waiting on one
		const size_t numHot = m_hot.size();
		const float* score = m_score.data();
		uint64_t bestKeys[2] = {0, 0};
		for (size_t i = 0; i < numHot; ++i)
		{
			const HotTriangle& hot = m_hot[i];
			const uint64_t key = candidateKey((score[hot.corners[1]] + score[hot.corners[0]]) + score[hot.corners[2]], hot.triangle);
			uint64_t& bestKey = bestKeys[i & 1];
			bestKey = key > bestKey ? key : bestKey;
		}
		uint64_t bestKey = bestKeys[0] > bestKeys[1] ? bestKeys[0] : bestKeys[1];

		uint64_t cold = bestColdKey();
		if (!m_pending.empty() && m_pendingBest >= (bestKey > cold ? bestKey : cold))
		{
			for (uint64_t pending : m_pending)
				if (isCurrentCold(pending))
				{
					m_cold.push_back(pending);
					std::push_heap(m_cold.begin(), m_cold.end());
				}
			m_pending.clear();
			m_pendingBest = 0;
			cold = bestColdKey();
		}
		bestKey = bestKey > cold ? bestKey : cold;
		if (bestKey != 0)
			return candidateTriangle(bestKey);

		// unreachable while every cold triangle has a current entry
		for (uint32_t t = 0; t < m_numTriangles; ++t)
			if (!m_emitted[t])
				return t;
		return 0;
	}

	// Counts each occurrence of v in its live triangles as a cached corner (entering) or not.
	void countCachedCorners(uint32_t v, bool entering)
	{
		const uint32_t* list = &m_adjacency[m_adjacencyStart[v]];
		for (uint32_t i = 0, count = m_remaining[v]; i < count; ++i)
		{
			const uint32_t t = list[i];
			if (entering)
			{
				if (m_cachedCorners[t]++ == 0)
					addHot(t);
			}
			else if (--m_cachedCorners[t] == 0)
			{
				removeHot(t);
				addPending(candidateKey(triangleScore(t), t));
			}
		}
	}

	void updateCache(const uint32_t corners[3])
	{
		int noted[3] = {m_cachePosition[corners[0]], m_cachePosition[corners[1]], m_cachePosition[corners[2]]};
		const bool entered[3] = {noted[0] < 0, noted[1] < 0 && corners[1] != corners[0],
		                         noted[2] < 0 && corners[2] != corners[0] && corners[2] != corners[1]};

		if (m_list - m_listBuffer < 3)
		{
			memmove(m_listBuffer + kListBufferSize - kListSize, m_list, kListSize * sizeof(uint32_t));
			m_list = m_listBuffer + kListBufferSize - kListSize;
		}

		// Take the corners out of the list: the slots in front of one move back by one and the
		// window follows, which leaves slots 0 to 63 as closing the gap from behind would. A corner
		// that occurs twice (a degenerate triangle) has its noted position used twice, which takes
		// out the entry behind it as well. Such an entry, and those pushed behind slot 63, may
		// leave the cache: they are noted with whether they were in it (their positions are still
		// the old ones here).
		uint32_t leaving[6];
		bool wasCached[6];
		int numLeaving = 0;
		int newCorners = 0;
		for (int k = 0; k < 3; ++k)
		{
			const int position = noted[k];
			if (position < 0)
			{
				++newCorners;
				continue;
			}
			const uint32_t taken = m_list[position];
			if (taken != m_empty && taken != corners[0] && taken != corners[1] && taken != corners[2])
			{
				wasCached[numLeaving] = m_cachePosition[taken] >= 0;
				leaving[numLeaving++] = taken;
			}
			for (int slot = position; slot > 0; --slot)
				m_list[slot] = m_list[slot - 1];
			++m_list;
			for (int later = k + 1; later < 3; ++later)
				if (noted[later] > position)
					--noted[later];
		}

		m_list -= 3;
		m_list[0] = corners[0];
		m_list[1] = corners[1];
		m_list[2] = corners[2];

		for (int slot = kCacheSize; slot < kListSize; ++slot)
			if (m_list[slot] != m_empty)
			{
				wasCached[numLeaving] = m_cachePosition[m_list[slot]] >= 0;
				leaving[numLeaving++] = m_list[slot];
			}

		// Only the vertices noted above can have left slots 0 to 63; the loop below then gives
		// every vertex there its new position and score. A vertex that stands in the list twice
		// ends with its later slot, as slots go up.
		for (int i = 0; i < numLeaving; ++i)
			m_cachePosition[leaving[i]] = -1;
		const float* cacheScore = m_tables.cache;
		for (int slot = 0; slot < kCacheSize; ++slot)
		{
			const uint32_t v = m_list[slot];
			m_cachePosition[v] = int8_t(slot);
			m_score[v] = m_valence[v] + cacheScore[slot];
		}

		// those that have just fallen out are rescored as well
		for (int slot = kCacheSize; slot < kCacheSize + newCorners; ++slot)
		{
			const uint32_t v = m_list[slot];
			const int position = m_cachePosition[v];
			m_score[v] = position < 0 ? m_valence[v] : m_valence[v] + cacheScore[position];
		}

		for (int k = 0; k < 3; ++k)
			if (entered[k])
				countCachedCorners(corners[k], true);

		for (int i = 0; i < numLeaving; ++i)
		{
			const uint32_t v = leaving[i];
			bool stays = !wasCached[i] || m_cachePosition[v] >= 0;
			for (int j = 0; j < i && !stays; ++j)
				stays = leaving[j] == v;
			if (!stays)
				countCachedCorners(v, false);
		}
	}

	const ScoreTables& m_tables;
	uint32_t m_numTriangles;
	uint32_t m_firstVertex;
	const Index* m_indices;
	uint32_t m_empty; // the vertex number of an empty slot: one past the last vertex

	uint32_t m_listBuffer[kListBufferSize];
	uint32_t* m_list; // slot 0 of the cache list, most recent first
	// by vertex, with one more element for m_empty
	std::vector<uint32_t> m_remaining;     // also the live length of each adjacency list
	std::vector<int8_t> m_cachePosition;   // -1 or 0..63
	std::vector<float> m_valence;          // the score part of remaining
	std::vector<float> m_score;
	std::vector<uint32_t> m_adjacencyStart;
	std::vector<uint32_t> m_adjacency;     // triangles by vertex, the live ones first
	// by triangle
	std::vector<uint8_t> m_emitted;
	std::vector<uint8_t> m_cachedCorners;  // corners of each live triangle that are in the cache
	std::vector<uint32_t> m_hotPosition;   // place in m_hot while m_cachedCorners is not 0
	std::vector<HotTriangle> m_hot;
	std::vector<uint64_t> m_initial;       // starting keys, best first
	size_t m_nextInitial = 0;
	std::vector<uint64_t> m_pending;       // keys of triangles that have gone cold
	uint64_t m_pendingBest = 0;
	size_t m_pendingLimit = 1024;
	std::vector<uint64_t> m_cold;          // heap of pending keys that might have won
};

template <typename Index>
bool optimizeTriangleOrderImpl(uint32_t numTriangles, uint32_t firstVertex, uint32_t numVertices, const Index* in, Index* out)
{
	const size_t count = size_t(numTriangles) * 3;
	for (size_t i = 0; i < count; ++i)
	{
		const uint32_t v = uint32_t(in[i]) - firstVertex; // wraps for indices below firstVertex
		if (v >= numVertices)
		{
			std::copy(in, in + count, out);
			return false;
		}
	}
	if (numTriangles == 0)
		return true;

	TriangleOrder<Index> order(numTriangles, firstVertex, numVertices, in);
	order.run(out);
	return true;
}

// Moves element v of array (elementSize bytes each) to slot newIndex[v].
void permute(void* array, size_t elementSize, const std::vector<uint32_t>& newIndex, std::vector<uint8_t>& scratch)
{
	const size_t n = newIndex.size();
	if (!array || n == 0)
		return;
	uint8_t* bytes = static_cast<uint8_t*>(array);
	scratch.resize(n * elementSize);
	for (size_t v = 0; v < n; ++v)
		memcpy(&scratch[size_t(newIndex[v]) * elementSize], bytes + v * elementSize, elementSize);
	memcpy(bytes, scratch.data(), n * elementSize);
}

template <typename Index>
void optimizeSet(IndexedTriangleSet& set, Index* indices)
{
	const uint32_t numVertices = set.numVertices();
	const uint32_t numIndices = set.numIndices();
	for (uint32_t i = 0; i < numIndices; ++i)
		if (indices[i] >= numVertices)
			return;

	std::vector<Index> buffer;
	for (uint32_t s = 0; s < set.numSubsets(); ++s)
	{
		const Subset* subset = set.getSubset(s);
		if (!subset || subset->firstIndex > numIndices || subset->numIndices > numIndices - subset->firstIndex)
			continue;
		const uint32_t numTriangles = subset->numIndices / 3;
		if (numTriangles == 0)
			continue;

		// the frame of the vertices actually used; the order does not depend on it
		Index* first = indices + subset->firstIndex;
		const auto range = std::minmax_element(first, first + 3 * size_t(numTriangles));
		buffer.resize(3 * size_t(numTriangles));
		optimizeTriangleOrderImpl<Index>(numTriangles, *range.first, uint32_t(*range.second) - *range.first + 1, first, buffer.data());
		std::copy(buffer.begin(), buffer.end(), first);
	}
	buffer = std::vector<Index>();

	// number the vertices in order of first use; any unused ones follow in their old order
	std::vector<uint32_t> newIndex(numVertices, kNone);
	uint32_t next = 0;
	for (uint32_t i = 0; i < numIndices; ++i)
		if (newIndex[indices[i]] == kNone)
			newIndex[indices[i]] = next++;
	for (uint32_t v = 0; v < numVertices; ++v)
		if (newIndex[v] == kNone)
			newIndex[v] = next++;
	for (uint32_t i = 0; i < numIndices; ++i)
		indices[i] = Index(newIndex[indices[i]]);

	std::vector<uint8_t> scratch;
	permute(set.positions(), 3 * sizeof(float), newIndex, scratch);
	for (uint32_t uv = 0; uv < 4; ++uv)
		permute(set.uvs(uv), 2 * sizeof(float), newIndex, scratch);
	permute(set.normals(), 3 * sizeof(float), newIndex, scratch);
	permute(set.tangents(), 4 * sizeof(float), newIndex, scratch);
	permute(set.colors(), 4 * sizeof(float), newIndex, scratch);
	permute(set.blendWeights(), 4 * sizeof(float), newIndex, scratch);
	permute(set.blendIndices(), set.blendsPerVertex(), newIndex, scratch);

	for (uint32_t s = 0; s < set.numSubsets(); ++s)
	{
		Subset* subset = set.getSubset(s);
		if (!subset)
			continue;
		const uint32_t whole = subset->numIndices / 3 * 3;
		if (whole == 0 || subset->firstIndex > numIndices || whole > numIndices - subset->firstIndex)
		{
			subset->firstVertex = 0;
			subset->numVertices = 0;
			continue;
		}
		const Index* first = indices + subset->firstIndex;
		const auto range = std::minmax_element(first, first + whole);
		subset->firstVertex = *range.first;
		subset->numVertices = uint32_t(*range.second) - *range.first + 1;
	}
}

} // namespace

float vertexCacheScore(uint32_t remaining, int32_t cachePosition)
{
	if (cachePosition >= kCacheSize)
		cachePosition = -1;
	return scoreOf(scoreTables(), remaining, cachePosition);
}

bool optimizeTriangleOrder(uint32_t numTriangles, uint32_t firstVertex, uint32_t numVertices, const uint16_t* indicesIn,
                           uint16_t* indicesOut)
{
	return optimizeTriangleOrderImpl(numTriangles, firstVertex, numVertices, indicesIn, indicesOut);
}

bool optimizeTriangleOrder(uint32_t numTriangles, uint32_t firstVertex, uint32_t numVertices, const uint32_t* indicesIn,
                           uint32_t* indicesOut)
{
	return optimizeTriangleOrderImpl(numTriangles, firstVertex, numVertices, indicesIn, indicesOut);
}

void optimize(IndexedTriangleSet& set)
{
	if (set.isOptimized())
		return;
	set.setOptimized(true);

	if (set.uses16BitIndices())
		optimizeSet(set, set.indices16());
	else
		optimizeSet(set, set.indices32());
}

} // namespace vqm
