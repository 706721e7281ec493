// Function set of polygon meshes: points, faces, normals, UV and colour sets, and the shading
// groups of their faces. Reads the geometry the mesh shows, its history evaluated.
#pragma once

#include <maya/MColor.h>
#include <maya/MFnDagNode.h>
#include <maya/MSpace.h>

class MPointArray;
class MFloatVectorArray;
class MFloatArray;
class MIntArray;
class MStringArray;
class MColorArray;
class MObjectArray;

class MFnMesh : public MFnDagNode {
public:
    MFnMesh() = default;
    MFnMesh(MObject& object, MStatus* status = nullptr);
    MFnMesh(const MObject& object, MStatus* status = nullptr);
    MFnMesh(const MDagPath& path, MStatus* status = nullptr);
    MFn::Type type() const override { return MFn::kMesh; }

    MStatus setObject(const MObject& object);
    MStatus setObject(const MDagPath& path);

    int numVertices(MStatus* status = nullptr) const;
    int numPolygons(MStatus* status = nullptr) const;
    int numFaceVertices(MStatus* status = nullptr) const;
    int numNormals(MStatus* status = nullptr) const;
    int polygonVertexCount(int polygonId, MStatus* status = nullptr) const;
    MStatus getPolygonVertices(int polygonId, MIntArray& vertexList) const;
    MStatus getVertices(MIntArray& vertexCount, MIntArray& vertexList) const;
    MStatus getTriangles(MIntArray& triangleCounts, MIntArray& triangleVertices) const;
    MStatus getPoints(MPointArray& points, MSpace::Space space = MSpace::kObject) const;
    // One normal per face-vertex; MItMeshPolygon::normalIndex maps a face-vertex to it.
    MStatus getNormals(MFloatVectorArray& normals, MSpace::Space space = MSpace::kObject) const;

    int numUVSets(MStatus* status = nullptr) const;
    MStatus getUVSetNames(MStringArray& names) const;
    MStatus getCurrentUVSetName(MString& name, int instance = -1) const;
    int numUVs(const MString* uvSet = nullptr, MStatus* status = nullptr) const;
    MStatus getUVs(MFloatArray& u, MFloatArray& v, const MString* uvSet = nullptr) const;

    int numColorSets(MStatus* status = nullptr) const;
    MStatus getColorSetNames(MStringArray& names) const;
    MStatus getCurrentColorSetName(MString& name, int instance = -1) const;
    int numColors(const MString* colorSet = nullptr, MStatus* status = nullptr) const;
    MStatus getColors(MColorArray& colors, const MString* colorSet = nullptr, const MColor* defaultColor = nullptr) const;

    // The shading groups of the given instance, and for each polygon the index of its group
    // in that list (-1 for a polygon in none).
    MStatus getConnectedShaders(unsigned instance, MObjectArray& shaders, MIntArray& indices) const;
};
