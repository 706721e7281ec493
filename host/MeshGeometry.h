// What a mesh node holds: points, edges with their smoothing, faces as loops of vertices, UV and
// colour sets per face-vertex, and normals per face-vertex (stored ones, or computed from the
// hard and soft edges). Lengths in centimetres.
#pragma once

#include <maya/MObject.h>

#include <string>
#include <vector>

namespace vqmhost {

struct MeshGeometry : Data {
    MFn::Type apiType() const override { return MFn::kMeshData; }

    struct Edge {
        int from = 0, to = 0;
        bool smooth = false;
    };
    struct UVSet {
        std::string name;
        std::vector<float> u, v;
        std::vector<int> faceVertexUV;  // per face-vertex, -1 where the face has no UV in this set
    };
    struct ColorSet {
        std::string name;
        std::vector<float> rgba;           // 4 floats per colour
        std::vector<int> faceVertexColor;  // per face-vertex, -1 where the face has no colour
    };

    std::vector<double> points;     // 3 per vertex
    std::vector<double> tweaks;     // 3 per vertex, added to the points ("pnts")
    std::vector<Edge> edges;
    std::vector<int> faceOffsets{0};  // faces + 1 entries into the face-vertex arrays
    std::vector<int> faceVertices;    // vertex number of each face-vertex
    std::vector<int> faceEdges;       // edge from each face-vertex to the next one of its face
    std::vector<UVSet> uvSets;
    std::string currentUVSet;
    std::vector<ColorSet> colorSets;
    std::string currentColorSet;
    std::vector<float> storedNormals;  // 3 per face-vertex, from the file; empty when none were stored

    int numVertices() const { return int(points.size() / 3); }
    int numFaces() const { return int(faceOffsets.size()) - 1; }
    int numFaceVertices() const { return int(faceVertices.size()); }
    int faceSize(int face) const { return faceOffsets[size_t(face) + 1] - faceOffsets[size_t(face)]; }

    // Normals per face-vertex: stored ones where the file gave them, else the average of the
    // normals of the faces that meet at the vertex across soft edges (hard edges split it).
    // Computed once and kept: a geometry does not change once it is evaluated.
    const std::vector<float>& faceVertexNormals() const;
    // Newell normal of a face, not normalised.
    void faceNormal(int face, double out[3]) const;
    // Splits a face into triangles of face-vertex positions (0 .. size-1) by ear clipping in the
    // face's plane; concave faces included, the result depends on nothing but the face.
    void triangulate(int face, std::vector<int>& localCorners) const;

    // The triangles of all faces as triangulate() gives them, computed once and kept: the local
    // corners of face f are triangleCorners()[triangleOffsets()[f] .. triangleOffsets()[f + 1]).
    const std::vector<int>& triangleOffsets() const;
    const std::vector<int>& triangleCorners() const;

    int findUVSet(const std::string& name) const;
    int findColorSet(const std::string& name) const;
    // Faces whose vertex or edge numbers are out of range; such faces are left out of the mesh.
    std::vector<std::string> validate();

private:
    // A copy is made to be changed, so it starts without the normals of the original.
    struct NormalCache {
        std::vector<float> normals;
        bool computed = false;
        NormalCache() = default;
        NormalCache(const NormalCache&) {}
        NormalCache& operator=(const NormalCache&)
        {
            normals.clear();
            computed = false;
            return *this;
        }
    };
    mutable NormalCache normalCache_;
    struct TriangleCache {
        std::vector<int> offsets, corners;
        bool computed = false;
        TriangleCache() = default;
        TriangleCache(const TriangleCache&) {}
        TriangleCache& operator=(const TriangleCache&)
        {
            offsets.clear();
            corners.clear();
            computed = false;
            return *this;
        }
    };
    mutable TriangleCache triangleCache_;
    void computeTriangles() const;
    void triangulate(int face, std::vector<int>& localCorners, std::vector<double>& xs, std::vector<double>& ys,
                     std::vector<int>& ring) const;
};

}  // namespace vqmhost
