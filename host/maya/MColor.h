// A colour with alpha, in floats. get and set also speak HSV.
#pragma once

#include <maya/MStatus.h>

class MColor {
public:
    enum MColorType { kRGB, kHSV, kCMY, kCMYK };

    MColor() = default;
    MColor(float red, float green, float blue = 0.0f, float alpha = 1.0f) : r(red), g(green), b(blue), a(alpha) {}

    // The colour's three components in the given model: hue in degrees (0 to 360), saturation
    // and value from 0 to 1.
    bool get(MColorType type, float& c1, float& c2, float& c3) const;
    bool set(MColorType type, float c1, float c2, float c3, float alpha = 1.0f);

    float operator[](unsigned i) const { return i == 0 ? r : i == 1 ? g : i == 2 ? b : a; }
    bool operator==(const MColor& o) const { return r == o.r && g == o.g && b == o.b && a == o.a; }
    bool operator!=(const MColor& o) const { return !(*this == o); }

    float r = 0.0f, g = 0.0f, b = 0.0f, a = 1.0f;
};
