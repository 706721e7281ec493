// Function set of transform nodes: the components of their transformation and their limits.
#pragma once

#include <maya/MEulerRotation.h>
#include <maya/MFnDagNode.h>
#include <maya/MQuaternion.h>
#include <maya/MSpace.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MVector.h>

class MFnTransform : public MFnDagNode {
public:
    // The host's numbering of limits.
    enum LimitType {
        kScaleMinX = 0, kScaleMaxX, kScaleMinY, kScaleMaxY, kScaleMinZ, kScaleMaxZ,
        kShearMinXY, kShearMaxXY, kShearMinXZ, kShearMaxXZ, kShearMinYZ, kShearMaxYZ,
        kRotateMinX, kRotateMaxX, kRotateMinY, kRotateMaxY, kRotateMinZ, kRotateMaxZ,
        kTranslateMinX, kTranslateMaxX, kTranslateMinY, kTranslateMaxY, kTranslateMinZ, kTranslateMaxZ,
    };

    MFnTransform() = default;
    MFnTransform(MObject& object, MStatus* status = nullptr);
    MFnTransform(const MObject& object, MStatus* status = nullptr);
    MFnTransform(const MDagPath& path, MStatus* status = nullptr);
    MFn::Type type() const override { return MFn::kTransform; }

    MStatus setObject(const MObject& object);
    MStatus setObject(const MDagPath& path);

    MTransformationMatrix transformation(MStatus* status = nullptr) const;

    MVector getTranslation(MSpace::Space space, MStatus* status = nullptr) const;
    MVector translation(MSpace::Space space, MStatus* status = nullptr) const { return getTranslation(space, status); }
    MStatus setTranslation(const MVector& vector, MSpace::Space space);

    // The rotate attribute in radians, in the node's rotation order.
    MStatus getRotation(double rotation[3], MTransformationMatrix::RotationOrder& order) const;
    MStatus getRotation(MEulerRotation& rotation) const;
    MStatus getRotation(MQuaternion& rotation, MSpace::Space space = MSpace::kTransform) const;
    MStatus setRotation(const double rotation[3], MTransformationMatrix::RotationOrder order);
    MStatus setRotation(const MEulerRotation& rotation);

    MStatus getScale(double scale[3]) const;
    MStatus setScale(const double scale[3]);
    MStatus getShear(double shear[3]) const;

    // The rotate axis as a quaternion.
    MQuaternion rotateOrientation(MSpace::Space space, MStatus* status = nullptr) const;
    MStatus setRotateOrientation(const MQuaternion& orientation, MSpace::Space space, bool balance = true);
    MTransformationMatrix::RotationOrder rotationOrder(MStatus* status = nullptr) const;
    MStatus setRotationOrder(MTransformationMatrix::RotationOrder order, bool reorder);

    MVector rotatePivot(MSpace::Space space, MStatus* status = nullptr) const;
    MVector scalePivot(MSpace::Space space, MStatus* status = nullptr) const;

    bool isLimited(LimitType type, MStatus* status = nullptr) const;
    double limitValue(LimitType type, MStatus* status = nullptr) const;
    MStatus enableLimit(LimitType type, bool enable);
    MStatus setLimit(LimitType type, double value);
};
