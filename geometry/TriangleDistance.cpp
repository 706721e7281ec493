#include "geometry/TriangleDistance.h"

namespace vqm
{

namespace
{

struct Vec3
{
	float x, y, z;
};

inline Vec3 load(const float p[3])
{
	return Vec3{p[0], p[1], p[2]};
}

inline Vec3 operator-(Vec3 a, Vec3 b)
{
	return Vec3{a.x - b.x, a.y - b.y, a.z - b.z};
}

inline float dot(Vec3 a, Vec3 b)
{
	return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline Vec3 cross(Vec3 a, Vec3 b)
{
	return Vec3{a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

float distanceToSegmentSquared(Vec3 p, Vec3 a, Vec3 b)
{
	const Vec3 ab = b - a;
	const Vec3 ap = p - a;
	const float length2 = dot(ab, ab);
	float t = length2 > 0.0f ? dot(ap, ab) / length2 : 0.0f;
	t = t < 0.0f ? 0.0f : (t > 1.0f ? 1.0f : t);
	const Vec3 d{ap.x - ab.x * t, ap.y - ab.y * t, ap.z - ab.z * t};
	return dot(d, d);
}

} // namespace

float distanceToTriangleSquared(const float point[3], const float a[3], const float b[3], const float c[3])
{
	const Vec3 p = load(point), va = load(a), vb = load(b), vc = load(c);
	const Vec3 normal = cross(vb - va, vc - va);
	const float normal2 = dot(normal, normal);

	if (normal2 > 0.0f)
	{
		// the projection lies inside when it is on the inner side of all three edges
		const bool inside = dot(cross(vb - va, p - va), normal) >= 0.0f && dot(cross(vc - vb, p - vb), normal) >= 0.0f &&
		                    dot(cross(va - vc, p - vc), normal) >= 0.0f;
		if (inside)
		{
			const float height = dot(p - va, normal);
			return height * height / normal2;
		}
	}

	const float ab = distanceToSegmentSquared(p, va, vb);
	const float bc = distanceToSegmentSquared(p, vb, vc);
	const float ca = distanceToSegmentSquared(p, vc, va);
	const float nearest = ab < bc ? ab : bc;
	return nearest < ca ? nearest : ca;
}

} // namespace vqm
