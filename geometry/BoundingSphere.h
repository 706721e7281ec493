// BoundingVolume and its one kind, BoundingSphere: centre and radius with merge, overlap, ray and transform.
#pragma once

#include <cstdint>
#include <memory>

namespace vqm
{

// A volume for culling and overlap tests. type 0 is a sphere, the only kind there is.
class BoundingVolume
{
public:
	explicit BoundingVolume(uint32_t type) : type(type) {}
	virtual ~BoundingVolume() = default;

	// Take other's shape if it is of this kind.
	virtual void copyFrom(const BoundingVolume& other) = 0;
	virtual void reset() = 0;
	// Grow to enclose other, first moved by matrix (16 x f32, may be null).
	virtual void merge(const BoundingVolume& other, const float* matrix) = 0;
	virtual bool overlaps(const BoundingVolume& other) const = 0;
	// Double dispatch: hands this volume to collider's sphere test.
	virtual bool overlapsDispatch(const BoundingVolume& collider) const = 0;
	virtual bool hitByRay(const float origin[3], const float direction[3]) const = 0;
	// Distance along the ray to the first hit; infinity and false on a miss.
	virtual bool rayDistance(const float origin[3], const float direction[3], float& distance) const = 0;
	virtual bool containsPoint(const float point[3]) const = 0;
	virtual void transform(const float matrix[16]) = 0;
	virtual std::unique_ptr<BoundingVolume> clone() const = 0;
	// This volume against a sphere; the receiving end of overlapsDispatch.
	virtual bool overlapsSphere(const float center[3], float radius) const = 0;

	uint32_t type;
};

class BoundingSphere : public BoundingVolume
{
public:
	BoundingSphere() : BoundingVolume(0) {}
	BoundingSphere(const float c[3], float r) : BoundingVolume(0), center{c[0], c[1], c[2]}, radius(r) {}

	void copyFrom(const BoundingVolume& other) override;
	void reset() override;
	void merge(const BoundingVolume& other, const float* matrix) override;
	bool overlaps(const BoundingVolume& other) const override;
	bool overlapsDispatch(const BoundingVolume& collider) const override;
	bool hitByRay(const float origin[3], const float direction[3]) const override;
	bool rayDistance(const float origin[3], const float direction[3], float& distance) const override;
	bool containsPoint(const float point[3]) const override;
	// Centre as a point; radius times the longest axis image of the matrix.
	void transform(const float matrix[16]) override;
	std::unique_ptr<BoundingVolume> clone() const override;
	bool overlapsSphere(const float center[3], float radius) const override;

	float center[3] = {0.0f, 0.0f, 0.0f};
	float radius = 0.0f;
};

} // namespace vqm
