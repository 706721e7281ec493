// A transformation by its components. The matrix they compose to is, with row vectors,
//   SP^-1 * S * SH * SP * ST * RP^-1 * RO * R * RP * RT * T
// (scale pivot, scale, shear, scale pivot translation, rotate pivot, rotate orientation,
// rotation, rotate pivot translation, translation).
#pragma once

#include <maya/MEulerRotation.h>
#include <maya/MMatrix.h>
#include <maya/MQuaternion.h>
#include <maya/MSpace.h>
#include <maya/MStatus.h>
#include <maya/MVector.h>

class MTransformationMatrix {
public:
    // The host numbers the orders one higher than MEulerRotation does.
    enum RotationOrder { kInvalid = 0, kXYZ, kYZX, kZXY, kXZY, kYXZ, kZYX, kLast };

    MTransformationMatrix() = default;
    // Components of a matrix without pivots: scale, shear, rotation in XYZ order, translation.
    MTransformationMatrix(const MMatrix& matrix);

    MMatrix asMatrix() const;
    MMatrix asRotateMatrix() const;  // RP^-1 * RO * R * RP
    MMatrix asScaleMatrix() const;   // SP^-1 * S * SH * SP

    MVector getTranslation(MSpace::Space space, MStatus* status = nullptr) const;
    MVector translation(MSpace::Space space, MStatus* status = nullptr) const { return getTranslation(space, status); }
    MStatus setTranslation(const MVector& vector, MSpace::Space space);

    MStatus getRotation(double rotation[3], RotationOrder& order) const;
    MStatus setRotation(const double rotation[3], RotationOrder order);
    MEulerRotation eulerRotation(MStatus* status = nullptr) const { if (status) *status = MStatus::kSuccess; return rotation_; }
    MStatus rotateTo(const MEulerRotation& rotation);
    MQuaternion rotation(MStatus* status = nullptr) const;
    RotationOrder rotationOrder(MStatus* status = nullptr) const;

    MStatus getScale(double scale[3], MSpace::Space space) const;
    MStatus setScale(const double scale[3], MSpace::Space space);
    MStatus getShear(double shear[3], MSpace::Space space) const;
    MStatus setShear(const double shear[3], MSpace::Space space);

    MQuaternion rotationOrientation(MStatus* status = nullptr) const { if (status) *status = MStatus::kSuccess; return rotateOrientation_; }
    MStatus setRotationOrientation(const MQuaternion& orientation);

    MVector scalePivot(MSpace::Space space, MStatus* status = nullptr) const;
    MStatus setScalePivot(const MVector& point, MSpace::Space space, bool balance);
    MVector scalePivotTranslation(MSpace::Space space, MStatus* status = nullptr) const;
    MStatus setScalePivotTranslation(const MVector& vector, MSpace::Space space);
    MVector rotatePivot(MSpace::Space space, MStatus* status = nullptr) const;
    MStatus setRotatePivot(const MVector& point, MSpace::Space space, bool balance);
    MVector rotatePivotTranslation(MSpace::Space space, MStatus* status = nullptr) const;
    MStatus setRotatePivotTranslation(const MVector& vector, MSpace::Space space);

    bool isEquivalent(const MTransformationMatrix& other, double tolerance = 1.0e-10) const;

    static const MTransformationMatrix identity;

private:
    MVector translation_;
    MEulerRotation rotation_;
    double scale_[3] = {1.0, 1.0, 1.0};
    double shear_[3] = {0.0, 0.0, 0.0};
    MVector scalePivot_, scalePivotTranslation_, rotatePivot_, rotatePivotTranslation_;
    MQuaternion rotateOrientation_;
};
