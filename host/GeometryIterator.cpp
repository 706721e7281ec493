// MItGeometry over the points of a mesh, as its history evaluates them.
#include <maya/MFnMesh.h>
#include <maya/MItGeometry.h>
#include <maya/MPointArray.h>

#include "ComponentData.h"
#include "StatusReport.h"

using vqmhost::report;

MItGeometry::MItGeometry(const MDagPath& path, MStatus* status) : MItGeometry(path.node(), status) {}

MItGeometry::MItGeometry(const MObject& shape, MStatus* status)
{
    if (!shape.hasFn(MFn::kMesh)) {
        report(status, MStatus::kInvalidParameter);
        return;
    }
    shape_ = shape;
    MFnMesh mesh(shape);
    MStatus counted;
    count_ = mesh.numVertices(&counted);
    report(status, counted.statusCode());
}

bool MItGeometry::isDone(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return index_ >= count_;
}

MStatus MItGeometry::next()
{
    if (index_ >= count_) return MStatus::kFailure;
    ++index_;
    return MStatus::kSuccess;
}

MStatus MItGeometry::reset()
{
    index_ = 0;
    return MStatus::kSuccess;
}

int MItGeometry::index(MStatus* status) const
{
    report(status, index_ < count_ ? MStatus::kSuccess : MStatus::kFailure);
    return index_;
}

int MItGeometry::count(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return count_;
}

MPoint MItGeometry::position(MSpace::Space space, MStatus* status) const
{
    MPointArray points;
    if (index_ >= count_ || !MFnMesh(shape_).getPoints(points, space) || unsigned(index_) >= points.length()) {
        report(status, MStatus::kFailure);
        return MPoint();
    }
    report(status, MStatus::kSuccess);
    return points[unsigned(index_)];
}

MObject MItGeometry::component(MStatus* status) const
{
    if (index_ >= count_) {
        report(status, MStatus::kFailure);
        return MObject();
    }
    auto component = std::make_shared<vqmhost::SingleIndexedComponent>();
    component->elements.push_back(index_);
    report(status, MStatus::kSuccess);
    return MObject(std::shared_ptr<vqmhost::Data>(component));
}
