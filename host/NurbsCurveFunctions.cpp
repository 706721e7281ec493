// MFnNurbsCurve over the data a curve node holds.
#include <maya/MDoubleArray.h>
#include <maya/MFnNurbsCurve.h>
#include <maya/MMatrix.h>
#include <maya/MPointArray.h>

#include "StatusReport.h"
#include "NurbsCurveData.h"
#include "TransformNodes.h"

using namespace vqmhost;

namespace {

// A curve node that was given no data is an empty curve of degree 3.
const NurbsCurveGeometry& emptyCurve()
{
    static const NurbsCurveGeometry empty = [] {
        NurbsCurveGeometry curve;
        curve.degree = 3;
        return curve;
    }();
    return empty;
}

const NurbsCurveGeometry* geometryOf(const MObject& object)
{
    Node* node = object.hostNode();
    if (!node || !node->hasFn(MFn::kNurbsCurve)) return nullptr;
    const NurbsCurveGeometry* curve = curveGeometry(*node);
    return curve ? curve : &emptyCurve();
}

}  // namespace

MFnNurbsCurve::MFnNurbsCurve(MObject& object, MStatus* status)
    : MFnNurbsCurve(static_cast<const MObject&>(object), status)
{
}

MFnNurbsCurve::MFnNurbsCurve(const MObject& object, MStatus* status)
{
    report(status, setObject(object).statusCode());
}

MFnNurbsCurve::MFnNurbsCurve(const MDagPath& path, MStatus* status)
{
    report(status, setObject(path).statusCode());
}

MStatus MFnNurbsCurve::setObject(const MObject& object)
{
    if (!object.hasFn(MFn::kNurbsCurve)) return MStatus::kInvalidParameter;
    return MFnDagNode::setObject(object);
}

MStatus MFnNurbsCurve::setObject(const MDagPath& path)
{
    if (!path.hasFn(MFn::kNurbsCurve)) return MStatus::kInvalidParameter;
    return MFnDagNode::setObject(path);
}

#define VQM_CURVE_OR(FAIL)                        \
    const NurbsCurveGeometry* curve = geometryOf(object_); \
    if (!curve) {                                 \
        report(status, MStatus::kFailure);        \
        return FAIL;                              \
    }                                             \
    report(status, MStatus::kSuccess);

int MFnNurbsCurve::degree(MStatus* status) const
{
    VQM_CURVE_OR(0)
    return curve->degree;
}

int MFnNurbsCurve::numSpans(MStatus* status) const
{
    VQM_CURVE_OR(0)
    return curve->spans;
}

int MFnNurbsCurve::numCVs(MStatus* status) const
{
    VQM_CURVE_OR(0)
    return curve->numCVs();
}

int MFnNurbsCurve::numKnots(MStatus* status) const
{
    VQM_CURVE_OR(0)
    return int(curve->knots.size());
}

MFnNurbsCurve::Form MFnNurbsCurve::form(MStatus* status) const
{
    VQM_CURVE_OR(kInvalid)
    return curve->form == 0 ? kOpen : (curve->form == 1 ? kClosed : kPeriodic);
}

bool MFnNurbsCurve::isRational(MStatus* status) const
{
    VQM_CURVE_OR(false)
    return curve->rational;
}

#undef VQM_CURVE_OR

MStatus MFnNurbsCurve::getCVs(MPointArray& points, MSpace::Space space) const
{
    const NurbsCurveGeometry* curve = geometryOf(object_);
    if (!curve) return MStatus::kFailure;
    MMatrix m;
    if (space == MSpace::kWorld && path_.isValid()) m = pathMatrix(path_.hostNodes());
    points.setLength(unsigned(curve->numCVs()));
    for (int i = 0; i < curve->numCVs(); ++i) {
        const double* p = &curve->cvs[size_t(i) * 3];
        MPoint point;
        for (int c = 0; c < 3; ++c)
            point[unsigned(c)] = p[0] * m.matrix[0][c] + p[1] * m.matrix[1][c] + p[2] * m.matrix[2][c] + m.matrix[3][c];
        if (curve->rational) point.w = curve->weights[size_t(i)];
        points[unsigned(i)] = point;
    }
    return MStatus::kSuccess;
}

MStatus MFnNurbsCurve::getKnots(MDoubleArray& knots) const
{
    const NurbsCurveGeometry* curve = geometryOf(object_);
    if (!curve) return MStatus::kFailure;
    knots.clear();
    for (double k : curve->knots) knots.append(k);
    return MStatus::kSuccess;
}
