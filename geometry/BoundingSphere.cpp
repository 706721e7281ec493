#include "geometry/BoundingSphere.h"

#include <cmath>
#include <limits>

namespace vqm
{

namespace
{

inline float dot3(const float a[3], const float b[3])
{
	return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline float distanceSquared(const float a[3], const float b[3])
{
	const float d[3] = {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
	return dot3(d, d);
}

// The sphere (c, r) moved by matrix.
void transformSphere(const float matrix[16], float c[3], float& r)
{
	const float* m = matrix;
	const float x = c[0], y = c[1], z = c[2];
	c[0] = m[0] * x + m[4] * y + m[8] * z + m[12];
	c[1] = m[1] * x + m[5] * y + m[9] * z + m[13];
	c[2] = m[2] * x + m[6] * y + m[10] * z + m[14];

	float largest = 0.0f;
	for (int axis = 0; axis < 3; ++axis)
	{
		const float image[3] = {m[4 * axis] * r, m[4 * axis + 1] * r, m[4 * axis + 2] * r};
		const float lengthSquared = dot3(image, image);
		if (lengthSquared > largest)
			largest = lengthSquared;
	}
	r = sqrtf(largest);
}

} // namespace

void BoundingSphere::copyFrom(const BoundingVolume& other)
{
	if (other.type != 0)
		return;
	const BoundingSphere& sphere = static_cast<const BoundingSphere&>(other);
	center[0] = sphere.center[0];
	center[1] = sphere.center[1];
	center[2] = sphere.center[2];
	radius = sphere.radius;
}

void BoundingSphere::reset()
{
	center[0] = center[1] = center[2] = 0.0f;
	radius = 0.0f;
}

void BoundingSphere::merge(const BoundingVolume& other, const float* matrix)
{
	if (other.type != 0)
		return;
	const BoundingSphere& sphere = static_cast<const BoundingSphere&>(other);
	float c[3] = {sphere.center[0], sphere.center[1], sphere.center[2]};
	float r = sphere.radius;
	if (matrix)
		transformSphere(matrix, c, r);

	if (radius == 0.0f)
	{
		center[0] = c[0];
		center[1] = c[1];
		center[2] = c[2];
		radius = r;
		return;
	}

	const float d[3] = {center[0] - c[0], center[1] - c[1], center[2] - c[2]};
	const float d2 = dot3(d, d);
	const float k = radius - r;
	if (k * k >= d2)
	{
		// one holds the other; keep the larger
		if (k < 0.0f)
		{
			center[0] = c[0];
			center[1] = c[1];
			center[2] = c[2];
			radius = r;
		}
		return;
	}

	const float length = sqrtf(d2);
	const float along = (radius + length - r) * (0.5f / length);
	center[0] = c[0] + d[0] * along;
	center[1] = c[1] + d[1] * along;
	center[2] = c[2] + d[2] * along;
	radius = (length + radius + r) * 0.5f;
}

bool BoundingSphere::overlaps(const BoundingVolume& other) const
{
	if (other.type == 0)
	{
		const BoundingSphere& sphere = static_cast<const BoundingSphere&>(other);
		return overlapsSphere(sphere.center, sphere.radius);
	}
	return other.overlapsSphere(center, radius);
}

bool BoundingSphere::overlapsDispatch(const BoundingVolume& collider) const
{
	return collider.overlapsSphere(center, radius);
}

bool BoundingSphere::overlapsSphere(const float otherCenter[3], float otherRadius) const
{
	const float sum = radius + otherRadius;
	return sum * sum >= distanceSquared(center, otherCenter);
}

bool BoundingSphere::hitByRay(const float origin[3], const float direction[3]) const
{
	const float offset[3] = {origin[0] - center[0], origin[1] - center[1], origin[2] - center[2]};
	const float b = dot3(offset, direction);
	const float c = dot3(offset, offset) - radius * radius;
	return b * b - c >= 0.0f;
}

bool BoundingSphere::rayDistance(const float origin[3], const float direction[3], float& distance) const
{
	const float offset[3] = {origin[0] - center[0], origin[1] - center[1], origin[2] - center[2]};
	const float b = dot3(offset, direction);
	const float c = dot3(offset, offset) - radius * radius;
	const float discriminant = b * b - c;
	if (!(discriminant >= 0.0f))
	{
		distance = std::numeric_limits<float>::infinity();
		return false;
	}
	distance = -b - sqrtf(discriminant);
	return true;
}

bool BoundingSphere::containsPoint(const float point[3]) const
{
	return radius * radius >= distanceSquared(center, point);
}

void BoundingSphere::transform(const float matrix[16])
{
	transformSphere(matrix, center, radius);
}

std::unique_ptr<BoundingVolume> BoundingSphere::clone() const
{
	return std::unique_ptr<BoundingVolume>(new BoundingSphere(center, radius));
}

} // namespace vqm
