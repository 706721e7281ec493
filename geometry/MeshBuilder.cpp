#include "geometry/MeshBuilder.h"

#include "geometry/Tangents.h"
#include "geometry/TriangleSet.h"

#include <algorithm>

namespace vqm
{

namespace
{

bool triangleBefore(const BuilderTriangle& a, const BuilderTriangle& b)
{
	if (a.materialIndex != b.materialIndex)
		return a.materialIndex < b.materialIndex;
	if (a.indices[0] != b.indices[0])
		return a.indices[0] < b.indices[0];
	if (a.indices[1] != b.indices[1])
		return a.indices[1] < b.indices[1];
	return a.indices[2] < b.indices[2];
}

// Sorts by material, then the three indices. Triangles that compare equal are equal in every
// field, so any correct sort gives the same array. A counting sort by the first index (below
// numVertices after the weld) and a stable one by material leave only short stretches of equal
// material and first index, sorted by the other two.
void sortTriangles(std::vector<BuilderTriangle>& triangles, uint32_t numVertices)
{
	const size_t count = triangles.size();
	for (const BuilderTriangle& triangle : triangles)
		if (triangle.indices[0] >= numVertices)
		{
			std::sort(triangles.begin(), triangles.end(), triangleBefore);
			return;
		}

	{
		std::vector<uint32_t> offsets(size_t(numVertices) + 1, 0);
		for (const BuilderTriangle& triangle : triangles)
			offsets[triangle.indices[0] + 1]++;
		for (uint32_t v = 0; v < numVertices; ++v)
			offsets[v + 1] += offsets[v];
		std::vector<BuilderTriangle> sorted(count);
		for (const BuilderTriangle& triangle : triangles)
			sorted[offsets[triangle.indices[0]]++] = triangle;
		triangles.swap(sorted);
	}

	bool oneMaterial = true;
	for (size_t t = 1; t < count && oneMaterial; ++t)
		oneMaterial = triangles[t].materialIndex == triangles[0].materialIndex;
	if (!oneMaterial)
		std::stable_sort(triangles.begin(), triangles.end(),
		                 [](const BuilderTriangle& a, const BuilderTriangle& b) { return a.materialIndex < b.materialIndex; });

	for (size_t first = 0; first < count;)
	{
		size_t end = first + 1;
		while (end < count && triangles[end].materialIndex == triangles[first].materialIndex &&
		       triangles[end].indices[0] == triangles[first].indices[0])
			++end;
		if (end - first > 1)
			std::sort(triangles.begin() + first, triangles.begin() + end, triangleBefore);
		first = end;
	}
}

} // namespace

void MeshBuilder::computeTangents()
{
	if (m_vertices.empty())
		return;

	BuilderVertex* vertices = m_vertices.data();
	const size_t stride = sizeof(BuilderVertex);
	vqm::computeTangents(numVertices(), FloatStream{vertices->position, stride}, FloatStream{vertices->normal, stride},
	                     FloatStream{vertices->uv[0], stride}, numTriangles(), m_triangles.empty() ? nullptr : m_triangles.data()->indices,
	                     sizeof(BuilderTriangle), vertices->tangent, stride);
}

std::unique_ptr<IndexedTriangleSet> MeshBuilder::buildIndexedTriangleSet()
{
	sortTriangles(m_triangles, numVertices());

	const uint32_t numTriangles = this->numTriangles();
	uint32_t numRuns = 0;
	for (uint32_t t = 0; t < numTriangles; ++t)
		numRuns += (t == 0 || m_triangles[t].materialIndex != m_triangles[t - 1].materialIndex) ? 1 : 0;

	std::unique_ptr<IndexedTriangleSet> set(new IndexedTriangleSet);
	const uint32_t flags = m_vertexFlags;
	const uint32_t n = numVertices();
	set->allocateVertices(n, flags);
	set->allocateIndices(3 * numTriangles);

	float* positions = set->positions();
	float* normals = set->normals();
	float* tangents = set->tangents();
	float* colors = set->colors();
	float* blendWeights = set->blendWeights();
	uint8_t* blendIndices = set->blendIndices();
	float* uvs[4] = {set->uvs(0), set->uvs(1), set->uvs(2), set->uvs(3)};
	const bool singleBlend = (flags & SingleBlendWeights) != 0;

	for (size_t i = 0; i < n; ++i)
	{
		const BuilderVertex& v = m_vertices[i];
		std::copy(v.position, v.position + 3, positions + 3 * i);
		for (int set = 0; set < 4; ++set)
			if (uvs[set])
				std::copy(v.uv[set], v.uv[set] + 2, uvs[set] + 2 * i);
		if (normals)
			std::copy(v.normal, v.normal + 3, normals + 3 * i);
		if (tangents)
			std::copy(v.tangent, v.tangent + 4, tangents + 4 * i);
		if (colors)
			std::copy(v.color, v.color + 4, colors + 4 * i);
		if (blendIndices && singleBlend)
			blendIndices[i] = v.blendIndices[0];
		else if (blendIndices)
		{
			const float sum = v.blendWeights[0] + v.blendWeights[1] + v.blendWeights[2] + v.blendWeights[3];
			const float scale = sum > 0.0f ? 1.0f / sum : 1.0f;
			for (int k = 0; k < 4; ++k)
			{
				blendWeights[4 * i + k] = sum > 0.0f ? v.blendWeights[k] * scale : v.blendWeights[k];
				blendIndices[4 * i + k] = v.blendIndices[k];
			}
		}
	}

	uint32_t position = 0;
	for (const BuilderTriangle& triangle : m_triangles)
		for (int k = 0; k < 3; ++k)
			set->setIndex(triangle.indices[k], position++);

	set->allocateSubsets(numRuns);
	uint32_t run = 0;
	for (uint32_t first = 0; first < numTriangles;)
	{
		uint32_t end = first;
		uint32_t lowest = UINT32_MAX, highest = 0;
		while (end < numTriangles && m_triangles[end].materialIndex == m_triangles[first].materialIndex)
		{
			for (uint32_t index : m_triangles[end].indices)
			{
				lowest = std::min(lowest, index);
				highest = std::max(highest, index);
			}
			++end;
		}

		Subset* subset = new Subset;
		subset->firstVertex = lowest;
		subset->numVertices = highest - lowest + 1;
		subset->firstIndex = 3 * first;
		subset->numIndices = 3 * (end - first);
		set->setSubset(subset, run++);
		first = end;
	}

	return set;
}

} // namespace vqm
