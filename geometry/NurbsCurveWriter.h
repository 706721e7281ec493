// A NURBS curve's control points as the NurbsCurve element of the Shapes section or as a blob of
// type 2: name field, shapeId, closed flag, point count and the points as 3 x f32.
#pragma once

#include "geometry/ShapeBlob.h"

#include <cstdint>
#include <ostream>
#include <string>

namespace vqm
{

// points: count x (x, y, z) in the host's unit; every coordinate goes through f32 first and is
// then scaled. form 0 reads "open", any other "closed".
void writeNurbsCurveText(const std::string& name, uint32_t shapeId, int degree, int form, const double* points,
                         uint32_t count, double unitScale, std::ostream& out);

// Each coordinate is scaled first and then cut to f32.
ShapeBlob makeNurbsCurveBlob(const std::string& name, uint32_t shapeId, bool closed, const double* points,
                             uint32_t count, double unitScale);

} // namespace vqm
