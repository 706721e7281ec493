// NURBS curves of the Shapes stage: their control points, without the repeated points of the
// closed and periodic forms, as text or as a blob of type 2.
#include <maya/MFnNurbsCurve.h>
#include <maya/MGlobal.h>
#include <maya/MPointArray.h>

#include "geometry/NurbsCurveWriter.h"
#include "geometry/ShapesExporter.h"
#include "plugin/HostHelpers.h"

#include <vector>

namespace vqm {

MStatus ShapesExporter::exportNurbsCurve(const ShapeRecord& record, ShapeBlobList& blobs, std::ostream& out)
{
    MStatus status;
    MFnNurbsCurve curve(record.object, &status);
    if (!status) {
        MGlobal::displayWarning("vqmExport: Node is not of type nurbsCurve (" +
                                MFnDagNode(record.object).partialPathName() + ")");
        return MStatus::kSuccess;
    }
    const std::string name = curve.name().str();
    const int degree = curve.degree();
    int form = 0;
    readInt(curve, "form", form);

    MPointArray cvs;
    if (!curve.getCVs(cvs, MSpace::kObject)) {
        MGlobal::displayWarning("vqmExport: NurbsCurve can't get CVs (" + curve.partialPathName() + ")");
        return MStatus::kFailure;
    }
    int count = int(cvs.length());
    if (form == 1) count -= 1;
    else if (form == 2) count -= degree;
    if (count < 0) count = 0;

    std::vector<double> points(size_t(count) * 3);
    for (int i = 0; i < count; ++i) {
        points[size_t(i) * 3] = cvs[unsigned(i)].x;
        points[size_t(i) * 3 + 1] = cvs[unsigned(i)].y;
        points[size_t(i) * 3 + 2] = cvs[unsigned(i)].z;
    }
    if (m_binaryFiles)
        blobs.push_back(makeNurbsCurveBlob(name, record.shapeId, form != 0, points.data(), uint32_t(count),
                                           m_unitScale));
    else
        writeNurbsCurveText(name, record.shapeId, degree, form, points.data(), uint32_t(count), m_unitScale, out);
    return MStatus::kSuccess;
}

}  // namespace vqm
