// Function set of NURBS curves: degree, form, knots and control points.
#pragma once

#include <maya/MFnDagNode.h>
#include <maya/MSpace.h>

class MPointArray;
class MDoubleArray;

class MFnNurbsCurve : public MFnDagNode {
public:
    enum Form { kInvalid = 0, kOpen, kClosed, kPeriodic, kLast };

    MFnNurbsCurve() = default;
    MFnNurbsCurve(MObject& object, MStatus* status = nullptr);
    MFnNurbsCurve(const MObject& object, MStatus* status = nullptr);
    MFnNurbsCurve(const MDagPath& path, MStatus* status = nullptr);
    MFn::Type type() const override { return MFn::kNurbsCurve; }

    MStatus setObject(const MObject& object);
    MStatus setObject(const MDagPath& path);

    int degree(MStatus* status = nullptr) const;
    int numSpans(MStatus* status = nullptr) const;
    int numCVs(MStatus* status = nullptr) const;
    int numKnots(MStatus* status = nullptr) const;
    Form form(MStatus* status = nullptr) const;
    bool isRational(MStatus* status = nullptr) const;
    // All control points as stored, the repeated ones of closed and periodic forms included.
    MStatus getCVs(MPointArray& points, MSpace::Space space = MSpace::kObject) const;
    MStatus getKnots(MDoubleArray& knots) const;
};
