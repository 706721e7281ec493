// Three rotation angles in radians and the order they apply in. Order XYZ rotates about X first,
// then Y, then Z: with row vectors the matrix is Rx * Ry * Rz.
#pragma once

#include <maya/MTypes.h>

class MMatrix;
class MQuaternion;
class MVector;

class MEulerRotation {
public:
    enum RotationOrder { kXYZ = 0, kYZX, kZXY, kXZY, kYXZ, kZYX };

    MEulerRotation() = default;
    MEulerRotation(double xx, double yy, double zz, RotationOrder ord = kXYZ) : x(xx), y(yy), z(zz), order(ord) {}
    MEulerRotation(const MVector& angles, RotationOrder ord = kXYZ);

    double operator[](unsigned i) const { return i == 0 ? x : i == 1 ? y : z; }
    MEulerRotation& setValue(double xx, double yy, double zz, RotationOrder ord = kXYZ);

    MMatrix asMatrix() const;
    MQuaternion asQuaternion() const;
    MVector asVector() const;

    // The same rotation given in another order.
    MEulerRotation reorder(RotationOrder ord) const;
    MEulerRotation& reorderIt(RotationOrder ord);
    // Angles in the given order of the rotation part of a matrix (rows without scale).
    static MEulerRotation decompose(const MMatrix& matrix, RotationOrder ord);

    bool operator==(const MEulerRotation& o) const { return x == o.x && y == o.y && z == o.z && order == o.order; }
    bool operator!=(const MEulerRotation& o) const { return !(*this == o); }
    bool isEquivalent(const MEulerRotation& o, double tolerance = 1.0e-10) const;
    bool isZero(double tolerance = 1.0e-10) const;

    static const MEulerRotation identity;

    double x = 0.0, y = 0.0, z = 0.0;
    RotationOrder order = kXYZ;
};
