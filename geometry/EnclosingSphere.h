// The smallest sphere around a point set (move-to-front with pivoting, in f32).
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace vqm
{

class BoundingSphere;

// count points of 3 x f32, stride bytes apart (0 means 12). No points give the all-zero sphere.
std::unique_ptr<BoundingSphere> createEnclosingSphere(const float* points, uint32_t count, size_t stride);

} // namespace vqm
