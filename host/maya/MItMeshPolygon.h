// Walks the polygons of a mesh: their vertices, triangles, and per face-vertex normals, UVs
// and colours. Vertex positions "local" are positions within the polygon.
#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MSpace.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <memory>
#include <vector>

class MIntArray;
class MPointArray;
class MVector;

namespace vqmhost {
struct MeshGeometry;
}

class MItMeshPolygon {
public:
    MItMeshPolygon(const MObject& polyObject, MStatus* status = nullptr);
    MItMeshPolygon(const MDagPath& polyObject, const MObject& component = MObject::kNullObj, MStatus* status = nullptr);

    bool isDone(MStatus* status = nullptr) const;
    MStatus next();
    MStatus reset();
    unsigned int index(MStatus* status = nullptr) const;
    unsigned int count(MStatus* status = nullptr) const;

    unsigned int polygonVertexCount(MStatus* status = nullptr) const;
    MStatus getVertices(MIntArray& vertices) const;
    int vertexIndex(int local, MStatus* status = nullptr) const;
    MStatus numTriangles(int& triangles) const;
    // Triangle t of the polygon: its corners' positions and vertex numbers.
    MStatus getTriangle(int t, MPointArray& points, MIntArray& vertexList, MSpace::Space space = MSpace::kObject) const;
    int normalIndex(int local, MStatus* status = nullptr) const;
    MStatus getNormal(int local, MVector& normal, MSpace::Space space = MSpace::kObject) const;
    bool hasUVs(const MString& uvSet, MStatus* status = nullptr) const;
    MStatus getUV(int local, float2& uv, const MString* uvSet = nullptr) const;
    MStatus getUVIndex(int local, int& uvIndex, const MString* uvSet = nullptr) const;
    bool hasColor(MStatus* status = nullptr) const;
    MStatus getColorIndex(int local, int& colorIndex, const MString* colorSet = nullptr) const;

private:
    std::shared_ptr<const vqmhost::MeshGeometry> mesh_;
    std::vector<float> normals_;
    std::vector<int> triangles_;  // local corners of the current polygon's triangles
    MDagPath path_;
    int polygon_ = 0;
    void triangulateCurrent();
    int faceVertex(int local) const;
    int uvSetIndex(const MString* uvSet) const;
    int colorSetIndex(const MString* colorSet) const;
};
