// MeshBuilder: unshared triangle corners in, a welded IndexedTriangleSet with one subset per material out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace vqm
{

class IndexedTriangleSet;

// One corner. Everything a shape doesn't use stays zero, so that comparing all fields always works.
struct BuilderVertex
{
	float position[3] = {0.0f, 0.0f, 0.0f};
	float uv[4][2] = {};
	float normal[3] = {0.0f, 0.0f, 0.0f};
	float color[4] = {0.0f, 0.0f, 0.0f, 0.0f};
	float tangent[4] = {0.0f, 0.0f, 0.0f, 0.0f};
	float blendWeights[4] = {0.0f, 0.0f, 0.0f, 0.0f};
	uint8_t blendIndices[4] = {0, 0, 0, 0};
};

struct BuilderTriangle
{
	uint32_t indices[3] = {0, 0, 0};
	uint32_t materialIndex = 0;
};

// -1, 0 or 1; 0 means a and b may be welded. Floats compare within 0.0001; opposite tangents
// (negative dot product) order by array position, so aIndex and bIndex are the vertices' positions.
int compareVertices(const BuilderVertex& a, uint32_t aIndex, const BuilderVertex& b, uint32_t bIndex);

// Run computeTangents (with HasTangent), weldVertices and buildIndexedTriangleSet, in that order.
class MeshBuilder
{
public:
	void reserveVertices(size_t count) { m_vertices.reserve(count); }
	void reserveTriangles(size_t count) { m_triangles.reserve(count); }
	void addVertex(const BuilderVertex& vertex) { m_vertices.push_back(vertex); }
	void addTriangle(const BuilderTriangle& triangle) { m_triangles.push_back(triangle); }

	uint32_t numVertices() const { return uint32_t(m_vertices.size()); }
	BuilderVertex& vertexAt(uint32_t i) { return m_vertices[i]; }
	const BuilderVertex& vertexAt(uint32_t i) const { return m_vertices[i]; }
	uint32_t numTriangles() const { return uint32_t(m_triangles.size()); }
	BuilderTriangle& triangleAt(uint32_t i) { return m_triangles[i]; }
	const BuilderTriangle& triangleAt(uint32_t i) const { return m_triangles[i]; }

	// The flag word of the set to build (VertexFlags.h); callers add to it as they extract.
	uint32_t vertexFlags() const { return m_vertexFlags; }
	void setVertexFlags(uint32_t flags) { m_vertexFlags = flags; }

	// Tangents from position, normal and UV set 0, while every corner still has its own vertex.
	void computeTangents();

	// Merges vertices that compareVertices finds equal (compared with the first vertex of each
	// run of the sorted order), sums their tangents and renormalises them. Survivors keep their
	// order of creation. Triangles with an index out of range and vertices no triangle uses are
	// dropped first.
	void weldVertices();

	// Sorts the triangles by material and indices and builds the set: one subset per material
	// in ascending order, blend weights scaled to sum 1.
	std::unique_ptr<IndexedTriangleSet> buildIndexedTriangleSet();

private:
	std::vector<BuilderVertex> m_vertices;
	std::vector<BuilderTriangle> m_triangles;
	uint32_t m_vertexFlags = 0;
};

} // namespace vqm
