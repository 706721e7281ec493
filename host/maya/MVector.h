// A direction or offset of three doubles. Points are row vectors: v * M transforms v.
#pragma once

#include <maya/MTypes.h>

#include <cmath>

class MMatrix;

class MVector {
public:
    MVector() = default;
    MVector(double xx, double yy, double zz = 0.0) : x(xx), y(yy), z(zz) {}
    explicit MVector(const double d[3]) : x(d[0]), y(d[1]), z(d[2]) {}

    double operator[](unsigned i) const { return i == 0 ? x : i == 1 ? y : z; }
    double& operator[](unsigned i) { return i == 0 ? x : i == 1 ? y : z; }

    MVector operator+(const MVector& o) const { return MVector(x + o.x, y + o.y, z + o.z); }
    MVector operator-(const MVector& o) const { return MVector(x - o.x, y - o.y, z - o.z); }
    MVector operator-() const { return MVector(-x, -y, -z); }
    MVector operator*(double s) const { return MVector(x * s, y * s, z * s); }
    MVector operator/(double s) const { return MVector(x / s, y / s, z / s); }
    MVector& operator+=(const MVector& o) { x += o.x; y += o.y; z += o.z; return *this; }
    MVector& operator-=(const MVector& o) { x -= o.x; y -= o.y; z -= o.z; return *this; }
    MVector& operator*=(double s) { x *= s; y *= s; z *= s; return *this; }
    double operator*(const MVector& o) const { return x * o.x + y * o.y + z * o.z; }  // dot product
    MVector operator^(const MVector& o) const                                           // cross product
    {
        return MVector(y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x);
    }
    // The vector as a direction through the upper 3 by 3 part of the matrix.
    MVector operator*(const MMatrix& m) const;
    bool operator==(const MVector& o) const { return x == o.x && y == o.y && z == o.z; }
    bool operator!=(const MVector& o) const { return !(*this == o); }

    double length() const { return std::sqrt(x * x + y * y + z * z); }
    MVector normal() const
    {
        double l = length();
        return l > 0.0 ? *this / l : *this;
    }
    bool isEquivalent(const MVector& o, double tolerance = 1.0e-10) const
    {
        return std::fabs(x - o.x) <= tolerance && std::fabs(y - o.y) <= tolerance && std::fabs(z - o.z) <= tolerance;
    }
    void get(double d[3]) const { d[0] = x; d[1] = y; d[2] = z; }

    static const MVector zero, one, xAxis, yAxis, zAxis;

    double x = 0.0, y = 0.0, z = 0.0;
};

inline MVector operator*(double s, const MVector& v) { return v * s; }
