// A rotation as a unit quaternion (x, y, z, w). The product composes like the host's row-vector
// matrices: (a * b).asMatrix() == a.asMatrix() * b.asMatrix(), so a applies first.
#pragma once

#include <maya/MTypes.h>

class MEulerRotation;
class MMatrix;
class MVector;

class MQuaternion {
public:
    MQuaternion() = default;  // the identity
    MQuaternion(double xx, double yy, double zz, double ww) : x(xx), y(yy), z(zz), w(ww) {}
    explicit MQuaternion(const double q[4]) : x(q[0]), y(q[1]), z(q[2]), w(q[3]) {}
    MQuaternion(double angle, const MVector& axis);  // radians about the axis

    double operator[](unsigned i) const { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    double& operator[](unsigned i) { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }

    MQuaternion operator*(const MQuaternion& right) const;
    MQuaternion& operator*=(const MQuaternion& right);
    MQuaternion operator-() const { return MQuaternion(-x, -y, -z, -w); }
    MQuaternion& operator=(const MEulerRotation& rotation);
    bool operator==(const MQuaternion& o) const { return x == o.x && y == o.y && z == o.z && w == o.w; }
    bool operator!=(const MQuaternion& o) const { return !(*this == o); }
    bool isEquivalent(const MQuaternion& o, double tolerance = 1.0e-10) const;

    MMatrix asMatrix() const;
    // Angles in XYZ order.
    MEulerRotation asEulerRotation() const;
    MQuaternion conjugate() const { return MQuaternion(-x, -y, -z, w); }
    MQuaternion inverse() const;
    MQuaternion normal() const;
    MQuaternion& normalizeIt();
    bool getAxisAngle(MVector& axis, double& angle) const;

    static const MQuaternion identity;

    double x = 0.0, y = 0.0, z = 0.0, w = 1.0;
};
