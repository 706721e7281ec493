// TriangleSet and IndexedTriangleSet: one mesh as per-attribute vertex arrays, indices and subsets.
#pragma once

#include "geometry/VertexFlags.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace vqm
{

class BoundingSphere;

// One material's range of a set: indices [firstIndex, firstIndex + numIndices) use vertices
// within [firstVertex, firstVertex + numVertices).
struct Subset
{
	uint32_t firstVertex = 0;
	uint32_t numVertices = 0;
	uint32_t firstIndex = 0;
	uint32_t numIndices = 0;
};

// Index width is a function of the vertex count alone: 16 bits up to and including 65,536 vertices.
inline bool uses16BitIndices(uint32_t numVertices)
{
	return numVertices < 0x10001;
}

// Vertex arrays selected by a flag word, all of numVertices elements. Allocated once, not cleared.
class TriangleSet
{
public:
	TriangleSet() = default;
	TriangleSet(const TriangleSet&) = delete;
	TriangleSet& operator=(const TriangleSet&) = delete;
	virtual ~TriangleSet();

	// Folds flags and every existing array into state (see Checksum.h).
	virtual void updateChecksum(uint64_t& state) const;

	// One-shot: does nothing once numVertices is not 0. Allocates positions and the flagged arrays.
	void allocateVertices(uint32_t numVertices, uint32_t flags);

	uint32_t numVertices() const { return m_numVertices; }
	uint32_t vertexFlags() const { return m_vertexFlags; }
	// 1 with SingleBlendWeights, else 4.
	uint32_t blendsPerVertex() const { return (m_vertexFlags & SingleBlendWeights) ? 1 : 4; }

	// Each null unless allocated; element sizes: positions/normals 3, uvs 2, tangents/colors/blendWeights 4,
	// blendIndices blendsPerVertex(), generics 1.
	float* positions() { return m_positions; }
	const float* positions() const { return m_positions; }
	float* uvs(uint32_t set) { return set < 4 ? m_uvs[set] : nullptr; }
	const float* uvs(uint32_t set) const { return set < 4 ? m_uvs[set] : nullptr; }
	float* normals() { return m_normals; }
	const float* normals() const { return m_normals; }
	float* tangents() { return m_tangents; }
	const float* tangents() const { return m_tangents; }
	float* colors() { return m_colors; }
	const float* colors() const { return m_colors; }
	float* blendWeights() { return m_blendWeights; }
	const float* blendWeights() const { return m_blendWeights; }
	uint8_t* blendIndices() { return m_blendIndices; }
	const uint8_t* blendIndices() const { return m_blendIndices; }
	float* generics() { return m_generics; }
	const float* generics() const { return m_generics; }

	// Element writers for one vertex; they assume the array exists and the vertex is in range.
	void setPosition(uint32_t vertex, float x, float y, float z);
	void setNormal(uint32_t vertex, float x, float y, float z);
	void setUv(uint32_t set, uint32_t vertex, float u, float v);
	void setTangent(uint32_t vertex, float x, float y, float z, float w);
	void setColor(uint32_t vertex, float r, float g, float b, float a);

	// The smallest sphere around the positions.
	std::unique_ptr<BoundingSphere> computeBoundingSphere() const;

protected:
	// Set once something depends on the vertex count (the index width).
	bool m_vertexCountLocked = false;

private:
	uint32_t m_numVertices = 0;
	uint32_t m_vertexFlags = 0;
	float* m_positions = nullptr;
	float* m_uvs[4] = {nullptr, nullptr, nullptr, nullptr};
	float* m_normals = nullptr;
	float* m_tangents = nullptr;
	float* m_colors = nullptr;
	float* m_blendWeights = nullptr;
	uint8_t* m_blendIndices = nullptr;
	float* m_generics = nullptr;
	std::unique_ptr<float[]> m_floatBlock; // every f32 array above lives in this one block
	std::unique_ptr<uint8_t[]> m_byteBlock; // blendIndices
};

// A TriangleSet with triangles (three indices each, in subset order) and one Subset per material.
class IndexedTriangleSet : public TriangleSet
{
public:
	IndexedTriangleSet() = default;
	~IndexedTriangleSet() override;

	// The vertex part, then indices in their width, numSubsets, and each subset's index range.
	void updateChecksum(uint64_t& state) const override;
	// Deep copy of arrays and subsets with isOptimized; meshUsage of the copy is 0.
	virtual std::unique_ptr<IndexedTriangleSet> clone() const;

	// One-shot, after allocateVertices: count indices of 2 or 4 bytes by the width rule.
	void allocateIndices(uint32_t count);
	// Stores value in the active width; position must be below numIndices.
	void setIndex(uint32_t value, uint32_t position);
	// One-shot: a table of count empty subset slots.
	void allocateSubsets(uint32_t count);
	// Takes ownership of subset (replacing any record in that slot).
	void setSubset(Subset* subset, uint32_t position);
	// Null while the slot is empty.
	Subset* getSubset(uint32_t position) { return position < m_numSubsets ? m_subsets[position] : nullptr; }
	const Subset* getSubset(uint32_t position) const { return position < m_numSubsets ? m_subsets[position] : nullptr; }

	uint32_t numIndices() const { return m_numIndices; }
	uint32_t numSubsets() const { return m_numSubsets; }
	bool uses16BitIndices() const { return vqm::uses16BitIndices(numVertices()); }
	// The index array in its width; the other accessor gives null.
	uint16_t* indices16() { return uses16BitIndices() ? static_cast<uint16_t*>(m_indices) : nullptr; }
	const uint16_t* indices16() const { return uses16BitIndices() ? static_cast<const uint16_t*>(m_indices) : nullptr; }
	uint32_t* indices32() { return uses16BitIndices() ? nullptr : static_cast<uint32_t*>(m_indices); }
	const uint32_t* indices32() const { return uses16BitIndices() ? nullptr : static_cast<const uint32_t*>(m_indices); }
	// One index, widened; position must be below numIndices.
	uint32_t indexAt(uint32_t position) const;

	bool isOptimized() const { return m_isOptimized; }
	void setOptimized(bool optimized) { m_isOptimized = optimized; }
	uint32_t meshUsage() const { return m_meshUsage; }
	void setMeshUsage(uint32_t usage) { m_meshUsage = usage; }

	// Vertex cache order, once: see VertexCacheOptimizer.h.
	void optimize();

private:
	uint32_t m_numIndices = 0;
	void* m_indices = nullptr; // uint16_t or uint32_t by the width rule
	uint32_t m_numSubsets = 0;
	Subset** m_subsets = nullptr;
	bool m_isOptimized = false;
	uint32_t m_meshUsage = 0;
};

} // namespace vqm
