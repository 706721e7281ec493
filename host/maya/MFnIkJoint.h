// Function set of joints: a transform with a joint orient between its rotation and translation.
#pragma once

#include <maya/MFnTransform.h>

class MFnIkJoint : public MFnTransform {
public:
    MFnIkJoint() = default;
    MFnIkJoint(MObject& object, MStatus* status = nullptr);
    MFnIkJoint(const MObject& object, MStatus* status = nullptr);
    MFnIkJoint(const MDagPath& path, MStatus* status = nullptr);
    MFn::Type type() const override { return MFn::kJoint; }

    MStatus setObject(const MObject& object);
    MStatus setObject(const MDagPath& path);

    MStatus getOrientation(MQuaternion& orientation) const;
    MStatus getOrientation(MEulerRotation& orientation) const;
    MStatus setOrientation(const MEulerRotation& orientation);
};
