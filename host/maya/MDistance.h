// Lengths and the scene's linear unit. The internal unit is the centimetre.
#pragma once

#include <maya/MStatus.h>

class MDistance {
public:
    enum Unit { kInvalid, kInches, kFeet, kYards, kMiles, kMillimeters, kCentimeters, kKilometers, kMeters, kLast };

    MDistance() = default;
    MDistance(double value, Unit unit = kCentimeters) : value_(value), unit_(unit) {}

    double value() const { return value_; }
    Unit unit() const { return unit_; }
    double as(Unit unit, MStatus* status = nullptr) const;
    double asCentimeters() const { return as(kCentimeters); }
    double asMeters() const { return as(kMeters); }
    double asMillimeters() const { return as(kMillimeters); }
    double asInches() const { return as(kInches); }

    static Unit uiUnit();
    static Unit internalUnit() { return kCentimeters; }
    static double uiToInternal(double value);
    static double internalToUI(double value);
    // Centimetres in one of the unit; 0 for kInvalid.
    static double centimetersPer(Unit unit);

private:
    double value_ = 0.0;
    Unit unit_ = kCentimeters;
};
