// Function set of deformers: the geometry they take in and hand out.
#pragma once

#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MObjectArray.h>

class MFnGeometryFilter : public MFnDependencyNode {
public:
    MFnGeometryFilter() = default;
    MFnGeometryFilter(MObject& object, MStatus* status = nullptr);
    MFnGeometryFilter(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override { return MFn::kGeometryFilt; }

    MStatus setObject(const MObject& object);

    // Shapes fed by the deformer's outputGeometry elements, in index order.
    MStatus getOutputGeometry(MObjectArray& shapes) const;
    // Index of the deformer's element that feeds the shape (or a path to it).
    unsigned int indexForOutputShape(const MObject& shape, MStatus* status = nullptr) const;
    // The path of the shape that the element of that index feeds.
    MStatus getPathAtIndex(unsigned int index, MDagPath& path) const;
    float envelope(MStatus* status = nullptr) const;
    MStatus setEnvelope(float envelope);
};
