// Enclosing spheres, BoundingSphere operations, matrices and the point-triangle distance.
#include "geometry/BoundingSphere.h"
#include "geometry/EnclosingSphere.h"
#include "geometry/Matrix.h"
#include "geometry/TriangleDistance.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

using namespace vqm;

namespace
{

const float kIdentity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

// Rotation about x by a, then y by b, then z by c, as columns of the affine layout.
void rotationMatrix(float a, float b, float c, float m[16])
{
	const float ca = cosf(a), sa = sinf(a), cb = cosf(b), sb = sinf(b), cc = cosf(c), sc = sinf(c);
	const float rx[16] = {1, 0, 0, 0, 0, ca, sa, 0, 0, -sa, ca, 0, 0, 0, 0, 1};
	const float ry[16] = {cb, 0, -sb, 0, 0, 1, 0, 0, sb, 0, cb, 0, 0, 0, 0, 1};
	const float rz[16] = {cc, sc, 0, 0, -sc, cc, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
	float zy[16];
	multiplyMatrices(zy, rz, ry);
	multiplyMatrices(m, zy, rx);
}

} // namespace

TEST(EnclosingSphere, SmallPointSets)
{
	std::unique_ptr<BoundingSphere> none = createEnclosingSphere(nullptr, 0, 0);
	EXPECT_EQ(none->radius, 0.0f);
	EXPECT_EQ(none->center[0], 0.0f);

	const float one[3] = {1, 2, 3};
	std::unique_ptr<BoundingSphere> point = createEnclosingSphere(one, 1, 0);
	EXPECT_EQ(point->radius, 0.0f);
	EXPECT_EQ(point->center[2], 3.0f);

	const float two[6] = {1, 0, 0, 5, 0, 0};
	std::unique_ptr<BoundingSphere> pair = createEnclosingSphere(two, 2, 0);
	EXPECT_FLOAT_EQ(pair->center[0], 3.0f);
	EXPECT_FLOAT_EQ(pair->radius, 2.0f);

	// the cube's corners, interleaved with a second value each (stride 16)
	std::vector<float> cube;
	for (int i = 0; i < 8; ++i)
		cube.insert(cube.end(), {float(i & 1) * 2 + 1, float((i >> 1) & 1) * 2 - 1, float((i >> 2) & 1) * 2, -99.0f});
	std::unique_ptr<BoundingSphere> box = createEnclosingSphere(cube.data(), 8, 16);
	EXPECT_NEAR(box->center[0], 2.0f, 1e-5f);
	EXPECT_NEAR(box->center[1], 0.0f, 1e-5f);
	EXPECT_NEAR(box->center[2], 1.0f, 1e-5f);
	EXPECT_NEAR(box->radius, std::sqrt(3.0f), 1e-5f);
}

TEST(EnclosingSphere, SmallestAroundManyPoints)
{
	// points on a sphere of radius 2 around (1, -1, 0.5), and inside it, repeated
	std::mt19937 rng(3);
	std::normal_distribution<float> normal;
	std::vector<float> points;
	for (int i = 0; i < 2000; ++i)
	{
		float d[3] = {normal(rng), normal(rng), normal(rng)};
		const float length = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
		const float r = i % 3 == 0 ? 1.0f : 2.0f;
		points.insert(points.end(), {1 + r * d[0] / length, -1 + r * d[1] / length, 0.5f + r * d[2] / length});
	}
	points.insert(points.end(), points.begin(), points.begin() + 300);
	std::unique_ptr<BoundingSphere> sphere = createEnclosingSphere(points.data(), uint32_t(points.size() / 3), 12);
	EXPECT_NEAR(sphere->radius, 2.0f, 1e-3f);
	EXPECT_NEAR(sphere->center[0], 1.0f, 1e-3f);
	for (size_t i = 0; i < points.size(); i += 3)
	{
		const float* p = &points[i];
		const float d2 = (p[0] - sphere->center[0]) * (p[0] - sphere->center[0]) + (p[1] - sphere->center[1]) * (p[1] - sphere->center[1]) +
		                 (p[2] - sphere->center[2]) * (p[2] - sphere->center[2]);
		ASSERT_LE(std::sqrt(d2), sphere->radius * 1.0001f);
	}

	// non-finite coordinates end the search instead of looping
	points[4] = NAN;
	points[9] = INFINITY;
	std::unique_ptr<BoundingSphere> broken = createEnclosingSphere(points.data(), uint32_t(points.size() / 3), 0);
	(void)broken;
	const float nan[6] = {NAN, NAN, NAN, NAN, 0, 0};
	EXPECT_EQ(createEnclosingSphere(nan, 1, 0)->radius, 0.0f);
}

TEST(BoundingSphere, TransformScalesByTheLongestAxis)
{
	BoundingSphere sphere;
	sphere.center[0] = 1;
	sphere.radius = 3;
	const float m[16] = {2, 0, 0, 0, 0, 0.5f, 0, 0, 0, 0, 0.25f, 0, 10, 20, 30, 1};
	sphere.transform(m);
	EXPECT_EQ(sphere.radius, 6.0f);
	EXPECT_EQ(sphere.center[0], 12.0f);
	EXPECT_EQ(sphere.center[1], 20.0f);

	float rotated[16];
	rotationMatrix(0.3f, 0.7f, -1.1f, rotated);
	BoundingSphere turned;
	turned.radius = 4;
	turned.transform(rotated);
	EXPECT_NEAR(turned.radius, 4.0f, 1e-5f);
}

TEST(BoundingSphere, MergeAndQueries)
{
	const float origin[3] = {0, 0, 0};
	BoundingSphere a(origin, 0.0f);
	const float far[3] = {10, 0, 0};
	const BoundingSphere b(far, 1.0f);
	a.merge(b, nullptr);
	EXPECT_EQ(a.center[0], 10.0f); // an empty sphere takes the other
	EXPECT_EQ(a.radius, 1.0f);

	BoundingSphere c(origin, 1.0f);
	c.merge(b, nullptr);
	EXPECT_FLOAT_EQ(c.center[0], 5.0f);
	EXPECT_FLOAT_EQ(c.radius, 6.0f);

	BoundingSphere big(origin, 20.0f);
	big.merge(b, nullptr);
	EXPECT_EQ(big.radius, 20.0f); // holds it already
	BoundingSphere small(far, 0.5f);
	small.merge(big, nullptr);
	EXPECT_EQ(small.radius, 20.0f);
	EXPECT_EQ(small.center[0], 0.0f);

	const float shift[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, -10, 1};
	BoundingSphere moved(far, 1.0f);
	moved.merge(b, shift); // b goes to (10, 0, -10)
	EXPECT_FLOAT_EQ(moved.center[2], -5.0f);
	EXPECT_FLOAT_EQ(moved.radius, 6.0f);

	EXPECT_TRUE(c.overlaps(b));
	EXPECT_TRUE(b.overlapsDispatch(c));
	const float away[3] = {0, 100, 0};
	EXPECT_FALSE(BoundingSphere(away, 1.0f).overlaps(b));
	const float touching[3] = {12, 0, 0};
	EXPECT_TRUE(BoundingSphere(touching, 1.0f).overlaps(b));

	EXPECT_TRUE(b.containsPoint(far));
	EXPECT_FALSE(b.containsPoint(origin));

	const float direction[3] = {1, 0, 0};
	float distance = 0;
	EXPECT_TRUE(b.hitByRay(origin, direction));
	EXPECT_TRUE(b.rayDistance(origin, direction, distance));
	EXPECT_FLOAT_EQ(distance, 9.0f);
	const float up[3] = {0, 1, 0};
	EXPECT_FALSE(b.hitByRay(origin, up));
	EXPECT_FALSE(b.rayDistance(origin, up, distance));
	EXPECT_TRUE(std::isinf(distance));

	std::unique_ptr<BoundingVolume> copy = b.clone();
	BoundingSphere target;
	target.copyFrom(*copy);
	EXPECT_EQ(target.center[0], 10.0f);
	EXPECT_EQ(target.radius, 1.0f);
	target.reset();
	EXPECT_EQ(target.center[0], 0.0f);
	EXPECT_EQ(target.radius, 0.0f);
}

TEST(Matrix, MultiplyAndInvert)
{
	float rotation[16];
	rotationMatrix(0.4f, -0.2f, 1.3f, rotation);
	const float scaleAndMove[16] = {2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 0.5f, 0, 1, -2, 4, 1};
	float m[16];
	multiplyMatrices(m, scaleAndMove, rotation); // rotate first, then scale and move
	EXPECT_EQ(m[15], 1.0f);
	EXPECT_EQ(m[3], 0.0f);
	EXPECT_EQ(m[12], 1.0f);
	EXPECT_FLOAT_EQ(m[0], 2.0f * rotation[0]);
	EXPECT_FLOAT_EQ(m[1], 3.0f * rotation[1]);

	float inverse[16];
	ASSERT_TRUE(invertMatrix(inverse, m));
	float product[16];
	multiplyMatrices(product, inverse, m);
	for (int i = 0; i < 16; ++i)
		EXPECT_NEAR(product[i], kIdentity[i], 1e-5f) << i;

	// in place
	float same[16];
	memcpy(same, m, sizeof(same));
	ASSERT_TRUE(invertMatrix(same, same));
	EXPECT_EQ(memcmp(same, inverse, sizeof(same)), 0);

	const float flat[16] = {1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 5, 5, 5, 1};
	float untouched[16];
	memcpy(untouched, kIdentity, sizeof(untouched));
	EXPECT_FALSE(invertMatrix(untouched, flat));
	EXPECT_EQ(memcmp(untouched, kIdentity, sizeof(untouched)), 0);
}

TEST(Matrix, ScaleAndRotation)
{
	float rotation[16];
	rotationMatrix(0.5f, 0.25f, -0.75f, rotation);
	rotation[0] *= 1.000004f; // rounding noise
	float scale[3];
	extractScale(rotation, scale);
	EXPECT_EQ(scale[0], 1.0f);
	EXPECT_EQ(scale[1], 1.0f);
	EXPECT_EQ(scale[2], 1.0f);

	float angles[3];
	extractRotation(rotation, angles, nullptr);
	EXPECT_NEAR(angles[0], 0.5f, 1e-4f);
	EXPECT_NEAR(angles[1], 0.25f, 1e-4f);
	EXPECT_NEAR(angles[2], -0.75f, 1e-4f);

	// with a scale divided out
	float scaled[16];
	const float s[16] = {2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 0, 0, 0, 1};
	multiplyMatrices(scaled, rotation, s);
	extractScale(scaled, scale);
	EXPECT_NEAR(scale[0], 2.0f, 1e-5f);
	EXPECT_NEAR(scale[2], 4.0f, 1e-5f);
	extractRotation(scaled, angles, scale);
	EXPECT_NEAR(angles[0], 0.5f, 1e-4f);
	EXPECT_NEAR(angles[2], -0.75f, 1e-4f);

	// 90 degrees about y (after 0.3 about x) locks the gimbal: z is 0, x takes the rest
	float locked[16];
	rotationMatrix(0.3f, 1.5707964f, 0.0f, locked);
	extractRotation(locked, angles, nullptr);
	EXPECT_EQ(angles[2], 0.0f);
	EXPECT_NEAR(angles[1], 1.5707964f, 1e-6f);
	EXPECT_NEAR(angles[0], 0.3f, 1e-5f);

	// with a turn about z as well, the x angle alone rebuilds the matrix
	rotationMatrix(0.3f, 1.5707964f, 0.2f, locked);
	extractRotation(locked, angles, nullptr);
	EXPECT_EQ(angles[2], 0.0f);
	float rebuilt[16];
	rotationMatrix(angles[0], angles[1], 0.0f, rebuilt);
	for (int i = 0; i < 16; ++i)
		EXPECT_NEAR(rebuilt[i], locked[i], 1e-5f) << i;
}

TEST(TriangleDistance, RegionsAndDegenerateTriangles)
{
	const float a[3] = {0, 0, 0}, b[3] = {2, 0, 0}, c[3] = {0, 2, 0};
	const float above[3] = {0.5f, 0.5f, 3};
	EXPECT_FLOAT_EQ(distanceToTriangleSquared(above, a, b, c), 9.0f);
	const float beyondEdge[3] = {1, -1, 0};
	EXPECT_FLOAT_EQ(distanceToTriangleSquared(beyondEdge, a, b, c), 1.0f);
	const float beyondHypotenuse[3] = {2, 2, 0};
	EXPECT_FLOAT_EQ(distanceToTriangleSquared(beyondHypotenuse, a, b, c), 2.0f);
	const float nearCorner[3] = {-1, -1, 1};
	EXPECT_FLOAT_EQ(distanceToTriangleSquared(nearCorner, a, b, c), 3.0f);
	EXPECT_EQ(distanceToTriangleSquared(a, a, b, c), 0.0f);

	// a line and a point
	const float d[3] = {4, 0, 0};
	const float offLine[3] = {3, 1, 0};
	EXPECT_FLOAT_EQ(distanceToTriangleSquared(offLine, a, b, d), 1.0f);
	EXPECT_FLOAT_EQ(distanceToTriangleSquared(offLine, d, d, d), 2.0f);
}
