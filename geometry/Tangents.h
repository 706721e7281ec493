// Per-vertex tangents from positions, normals and one UV set (Lengyel's method, in f64).
#pragma once

#include <cstddef>
#include <cstdint>

namespace vqm
{

// positions and normals 3, uvs 2, tangentsOut 4 floats per vertex (x y z, handedness w = +1 or -1).
// A vertex that no usable triangle touches gets (1, 0, 0, +1); triangles with an index of
// numVertices or more are passed over.
void computeTangents(uint32_t numVertices, const float* positions, const float* normals, const float* uvs, uint32_t numTriangles,
                     const uint16_t* indices, float* tangentsOut);
void computeTangents(uint32_t numVertices, const float* positions, const float* normals, const float* uvs, uint32_t numTriangles,
                     const uint32_t* indices, float* tangentsOut);

// Elements of an interleaved layout: element i starts i * stride bytes after data.
struct FloatStream
{
	const float* data;
	size_t stride;
};

// The same on interleaved data: triangle t's three u32 indices start t * triangleStride bytes after
// indices, and vertex i's tangent is written i * tangentStride bytes after tangentsOut.
void computeTangents(uint32_t numVertices, FloatStream positions, FloatStream normals, FloatStream uvs, uint32_t numTriangles,
                     const uint32_t* indices, size_t triangleStride, float* tangentsOut, size_t tangentStride);

} // namespace vqm
