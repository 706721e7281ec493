// Greedy vertex cache optimisation (64-entry cache model) of the triangles of each subset, then
// renumbering of the vertices in order of first use.
#pragma once

#include <cstdint>

namespace vqm
{

class IndexedTriangleSet;

// Score of a vertex with `remaining` triangles still to emit at cachePosition (-1: not cached);
// -1.0 once nothing remains.
float vertexCacheScore(uint32_t remaining, int32_t cachePosition);

// Reorders one subset's triangles into indicesOut (same size as indicesIn, not overlapping it).
// Each round emits the triangle with the greatest score sum, the lowest number on a tie, as a
// search over all triangles would. Corner order within a triangle is kept. Indices must lie in
// [firstVertex, firstVertex + numVertices); otherwise the input is copied and false returned.
bool optimizeTriangleOrder(uint32_t numTriangles, uint32_t firstVertex, uint32_t numVertices, const uint16_t* indicesIn,
                           uint16_t* indicesOut);
bool optimizeTriangleOrder(uint32_t numTriangles, uint32_t firstVertex, uint32_t numVertices, const uint32_t* indicesIn,
                           uint32_t* indicesOut);

// Once per set (it sets isOptimized): reorders each subset, renumbers the vertices in order of first
// use, moves the vertex arrays with them (not generics) and recomputes each subset's vertex range.
// A set with an index outside its vertices is only marked.
void optimize(IndexedTriangleSet& set);

} // namespace vqm
