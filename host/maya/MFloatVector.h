// A direction in floats.
#pragma once

#include <cmath>

class MFloatVector {
public:
    MFloatVector() = default;
    MFloatVector(float xx, float yy, float zz = 0.0f) : x(xx), y(yy), z(zz) {}

    float operator[](unsigned i) const { return i == 0 ? x : i == 1 ? y : z; }
    float& operator[](unsigned i) { return i == 0 ? x : i == 1 ? y : z; }
    bool operator==(const MFloatVector& o) const { return x == o.x && y == o.y && z == o.z; }
    bool operator!=(const MFloatVector& o) const { return !(*this == o); }
    float length() const { return std::sqrt(x * x + y * y + z * z); }

    float x = 0.0f, y = 0.0f, z = 0.0f;
};
