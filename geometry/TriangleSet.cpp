#include "geometry/TriangleSet.h"

#include "geometry/BoundingSphere.h"
#include "geometry/Checksum.h"
#include "geometry/EnclosingSphere.h"
#include "geometry/VertexCacheOptimizer.h"

#include <cstring>

namespace vqm
{

TriangleSet::~TriangleSet() = default;

void TriangleSet::allocateVertices(uint32_t numVertices, uint32_t flags)
{
	if (m_numVertices != 0 || m_vertexCountLocked)
		return;

	const size_t n = numVertices;
	const bool singleBlend = (flags & SingleBlendWeights) != 0;
	const bool blend = (flags & HasBlendWeights) != 0;

	size_t floats = 3 * n;
	for (uint32_t set = 0; set < 4; ++set)
		floats += (flags & uvFlag(set)) ? 2 * n : 0;
	floats += (flags & HasNormal) ? 3 * n : 0;
	floats += (flags & HasTangent) ? 4 * n : 0;
	floats += (flags & HasColor) ? 4 * n : 0;
	floats += (blend && !singleBlend) ? 4 * n : 0;
	floats += (flags & HasGeneric) ? n : 0;

	m_numVertices = numVertices;
	m_vertexFlags = flags;
	m_floatBlock.reset(new float[floats]);

	// carve the block in a fixed order
	float* next = m_floatBlock.get();
	auto take = [&](size_t count) {
		float* array = next;
		next += count;
		return array;
	};
	m_positions = take(3 * n);
	for (uint32_t set = 0; set < 4; ++set)
		m_uvs[set] = (flags & uvFlag(set)) ? take(2 * n) : nullptr;
	m_normals = (flags & HasNormal) ? take(3 * n) : nullptr;
	m_tangents = (flags & HasTangent) ? take(4 * n) : nullptr;
	m_colors = (flags & HasColor) ? take(4 * n) : nullptr;
	m_blendWeights = (blend && !singleBlend) ? take(4 * n) : nullptr;
	m_generics = (flags & HasGeneric) ? take(n) : nullptr;

	if (blend)
	{
		m_byteBlock.reset(new uint8_t[(singleBlend ? 1 : 4) * n]);
		m_blendIndices = m_byteBlock.get();
	}
}

void TriangleSet::setPosition(uint32_t vertex, float x, float y, float z)
{
	float* p = m_positions + 3 * size_t(vertex);
	p[0] = x;
	p[1] = y;
	p[2] = z;
}

void TriangleSet::setNormal(uint32_t vertex, float x, float y, float z)
{
	float* p = m_normals + 3 * size_t(vertex);
	p[0] = x;
	p[1] = y;
	p[2] = z;
}

void TriangleSet::setUv(uint32_t set, uint32_t vertex, float u, float v)
{
	float* p = m_uvs[set] + 2 * size_t(vertex);
	p[0] = u;
	p[1] = v;
}

void TriangleSet::setTangent(uint32_t vertex, float x, float y, float z, float w)
{
	float* p = m_tangents + 4 * size_t(vertex);
	p[0] = x;
	p[1] = y;
	p[2] = z;
	p[3] = w;
}

void TriangleSet::setColor(uint32_t vertex, float r, float g, float b, float a)
{
	float* p = m_colors + 4 * size_t(vertex);
	p[0] = r;
	p[1] = g;
	p[2] = b;
	p[3] = a;
}

std::unique_ptr<BoundingSphere> TriangleSet::computeBoundingSphere() const
{
	return createEnclosingSphere(m_positions, m_numVertices, 3 * sizeof(float));
}

void TriangleSet::updateChecksum(uint64_t& state) const
{
	const size_t n = m_numVertices;
	foldChecksumU32(state, &m_vertexFlags, 1);

	auto fold = [&](const float* array, size_t perVertex) {
		if (array)
			foldChecksumF32(state, array, perVertex * n);
	};
	fold(m_positions, 3);
	fold(m_normals, 3);
	fold(m_tangents, 4);
	fold(m_colors, 4);
	fold(m_blendWeights, 4);
	if (m_blendIndices)
		foldChecksumBytes(state, m_blendIndices, blendsPerVertex() * n);
	for (uint32_t set = 0; set < 4; ++set)
		fold(m_uvs[set], 2);
	fold(m_generics, 1);
}

IndexedTriangleSet::~IndexedTriangleSet()
{
	if (uses16BitIndices())
		delete[] static_cast<uint16_t*>(m_indices);
	else
		delete[] static_cast<uint32_t*>(m_indices);

	for (uint32_t i = 0; i < m_numSubsets; ++i)
		delete m_subsets[i];
	delete[] m_subsets;
}

void IndexedTriangleSet::allocateIndices(uint32_t count)
{
	if (m_numIndices != 0)
		return;

	// the width is fixed by the vertex count, which can no longer change
	if (uses16BitIndices())
	{
		delete[] static_cast<uint16_t*>(m_indices);
		m_indices = new uint16_t[count];
	}
	else
	{
		delete[] static_cast<uint32_t*>(m_indices);
		m_indices = new uint32_t[count];
	}
	m_numIndices = count;
	m_vertexCountLocked = true;
}

void IndexedTriangleSet::setIndex(uint32_t value, uint32_t position)
{
	if (uses16BitIndices())
		static_cast<uint16_t*>(m_indices)[position] = uint16_t(value);
	else
		static_cast<uint32_t*>(m_indices)[position] = value;
}

uint32_t IndexedTriangleSet::indexAt(uint32_t position) const
{
	if (uses16BitIndices())
		return static_cast<const uint16_t*>(m_indices)[position];
	return static_cast<const uint32_t*>(m_indices)[position];
}

void IndexedTriangleSet::allocateSubsets(uint32_t count)
{
	if (m_numSubsets != 0)
		return;

	delete[] m_subsets;
	m_subsets = new Subset*[count]();
	m_numSubsets = count;
}

void IndexedTriangleSet::setSubset(Subset* subset, uint32_t position)
{
	if (position >= m_numSubsets)
	{
		delete subset;
		return;
	}
	if (m_subsets[position] != subset)
		delete m_subsets[position];
	m_subsets[position] = subset;
}

void IndexedTriangleSet::updateChecksum(uint64_t& state) const
{
	TriangleSet::updateChecksum(state);

	if (uses16BitIndices())
		foldChecksumU16(state, indices16(), m_numIndices);
	else
		foldChecksumU32(state, indices32(), m_numIndices);

	foldChecksumU32(state, &m_numSubsets, 1);
	for (uint32_t i = 0; i < m_numSubsets; ++i)
	{
		const Subset empty;
		const Subset& subset = m_subsets[i] ? *m_subsets[i] : empty;
		foldChecksumU32(state, &subset.firstIndex, 1);
		foldChecksumU32(state, &subset.numIndices, 1);
	}
}

std::unique_ptr<IndexedTriangleSet> IndexedTriangleSet::clone() const
{
	std::unique_ptr<IndexedTriangleSet> copy(new IndexedTriangleSet);
	copy->allocateVertices(numVertices(), vertexFlags());

	const size_t n = numVertices();
	auto copyArray = [n](float* to, const float* from, size_t perVertex) {
		if (from && n)
			memcpy(to, from, perVertex * n * sizeof(float));
	};
	copyArray(copy->positions(), positions(), 3);
	for (uint32_t set = 0; set < 4; ++set)
		copyArray(copy->uvs(set), uvs(set), 2);
	copyArray(copy->normals(), normals(), 3);
	copyArray(copy->tangents(), tangents(), 4);
	copyArray(copy->colors(), colors(), 4);
	copyArray(copy->blendWeights(), blendWeights(), 4);
	copyArray(copy->generics(), generics(), 1);
	if (blendIndices() && n)
		memcpy(copy->blendIndices(), blendIndices(), blendsPerVertex() * n);

	copy->allocateIndices(m_numIndices);
	if (m_numIndices)
		memcpy(copy->m_indices, m_indices, size_t(m_numIndices) * (uses16BitIndices() ? 2 : 4));

	copy->allocateSubsets(m_numSubsets);
	for (uint32_t i = 0; i < m_numSubsets; ++i)
		if (m_subsets[i])
			copy->setSubset(new Subset(*m_subsets[i]), i);

	copy->m_isOptimized = m_isOptimized;
	return copy;
}

void IndexedTriangleSet::optimize()
{
	vqm::optimize(*this);
}

} // namespace vqm
