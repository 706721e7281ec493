// Squared distance from a point to a triangle, its interior and edges included.
#pragma once

namespace vqm
{

// Degenerate triangles (a line or a point) give the distance to what is left of them.
float distanceToTriangleSquared(const float point[3], const float a[3], const float b[3], const float c[3]);

} // namespace vqm
