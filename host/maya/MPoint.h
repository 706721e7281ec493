// A point with a homogeneous w, in doubles.
#pragma once

#include <maya/MStatus.h>

class MMatrix;

class MPoint {
public:
    MPoint() = default;
    MPoint(double xx, double yy, double zz = 0.0, double ww = 1.0) : x(xx), y(yy), z(zz), w(ww) {}

    double operator[](unsigned i) const { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    double& operator[](unsigned i) { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    bool operator==(const MPoint& o) const { return x == o.x && y == o.y && z == o.z && w == o.w; }
    bool operator!=(const MPoint& o) const { return !(*this == o); }
    MPoint operator+(const MPoint& o) const { return MPoint(x + o.x, y + o.y, z + o.z, w); }
    MPoint operator*(double s) const { return MPoint(x * s, y * s, z * s, w); }
    // The point through the matrix, as a row vector: p * M.
    MPoint operator*(const MMatrix& m) const;
    MStatus get(double out[4]) const
    {
        out[0] = x;
        out[1] = y;
        out[2] = z;
        out[3] = w;
        return MStatus::kSuccess;
    }

    double x = 0.0, y = 0.0, z = 0.0, w = 1.0;

    static const MPoint origin;
};
