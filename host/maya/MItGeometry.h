// Walks the vertices (points) of a shape in index order.
#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <maya/MSpace.h>
#include <maya/MStatus.h>

class MItGeometry {
public:
    MItGeometry(const MDagPath& path, MStatus* status = nullptr);
    MItGeometry(const MObject& shape, MStatus* status = nullptr);

    bool isDone(MStatus* status = nullptr) const;
    MStatus next();
    MStatus reset();
    int index(MStatus* status = nullptr) const;
    int count(MStatus* status = nullptr) const;
    MPoint position(MSpace::Space space = MSpace::kObject, MStatus* status = nullptr) const;
    // A single-indexed vertex component holding the current vertex.
    MObject component(MStatus* status = nullptr) const;

private:
    MObject shape_;
    int count_ = 0;
    int index_ = 0;
};
