// Derived data of meshes: face normals, normals per face-vertex with hard and soft edges,
// triangulation of faces.
#include "MeshGeometry.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace vqmhost {

void MeshGeometry::faceNormal(int face, double out[3]) const
{
    out[0] = out[1] = out[2] = 0.0;
    int begin = faceOffsets[size_t(face)], count = faceSize(face);
    for (int k = 0; k < count; ++k) {
        const double* a = &points[size_t(faceVertices[size_t(begin + k)]) * 3];
        const double* b = &points[size_t(faceVertices[size_t(begin + (k + 1) % count)]) * 3];
        out[0] += (a[1] - b[1]) * (a[2] + b[2]);
        out[1] += (a[2] - b[2]) * (a[0] + b[0]);
        out[2] += (a[0] - b[0]) * (a[1] + b[1]);
    }
}

const std::vector<float>& MeshGeometry::faceVertexNormals() const
{
    if (normalCache_.computed) return normalCache_.normals;
    normalCache_.computed = true;
    const int fvCount = numFaceVertices();
    std::vector<float>& result = normalCache_.normals;
    result.assign(size_t(fvCount) * 3, 0.0f);
    const size_t faceCount = faceOffsets.empty() ? 0 : faceOffsets.size() - 1;
    std::vector<double> faceNormals;
    faceNormals.resize(faceCount * 3);
    for (int f = 0; f < numFaces(); ++f) faceNormal(f, &faceNormals[size_t(f) * 3]);

    // Face-vertices of one vertex form groups: two faces that meet at the vertex across a soft
    // edge belong to the same group. Each group shares the sum of its faces' normals.
    std::vector<int> faceOf(static_cast<size_t>(fvCount));
    for (int f = 0; f < numFaces(); ++f)
        for (int i = faceOffsets[size_t(f)]; i < faceOffsets[size_t(f) + 1]; ++i) faceOf[size_t(i)] = f;
    std::vector<int> group(static_cast<size_t>(fvCount));
    std::iota(group.begin(), group.end(), 0);
    auto root = [&group](int i) {
        while (group[size_t(i)] != i) i = group[size_t(i)] = group[size_t(group[size_t(i)])];
        return i;
    };
    // The uses of each soft edge, bucketed by edge: a use is the face-vertex at the edge's start
    // within one face (the other end is the next face-vertex of that face).
    const size_t edgeCount = edges.size();
    std::vector<int> useStart(edgeCount + 1, 0);
    auto nextInFace = [&](int fv) {
        int f = faceOf[size_t(fv)];
        return fv + 1 < faceOffsets[size_t(f) + 1] ? fv + 1 : faceOffsets[size_t(f)];
    };
    auto isSoft = [&](int fv) {
        int e = faceEdges[size_t(fv)];
        return e >= 0 && size_t(e) < edgeCount && edges[size_t(e)].smooth;
    };
    for (int fv = 0; fv < fvCount; ++fv)
        if (isSoft(fv)) ++useStart[size_t(faceEdges[size_t(fv)]) + 1];
    for (size_t e = 0; e < edgeCount; ++e) useStart[e + 1] += useStart[e];
    std::vector<int> uses(static_cast<size_t>(useStart[edgeCount]));
    std::vector<int> filled(useStart.begin(), useStart.end() - 1);
    for (int fv = 0; fv < fvCount; ++fv)
        if (isSoft(fv)) uses[size_t(filled[size_t(faceEdges[size_t(fv)])]++)] = fv;
    for (size_t e = 0; e < edgeCount; ++e) {
        int first = useStart[e], last = useStart[e + 1];
        for (int u = first + 1; u < last; ++u) {
            int a0 = uses[size_t(first)], a1 = nextInFace(a0);
            int b0 = uses[size_t(u)], b1 = nextInFace(b0);
            // Join the face-vertices that sit on the same vertex at either end of the edge.
            int bAtA0 = faceVertices[size_t(b0)] == faceVertices[size_t(a0)] ? b0 : b1;
            int bAtA1 = bAtA0 == b0 ? b1 : b0;
            group[size_t(root(bAtA0))] = root(a0);
            group[size_t(root(bAtA1))] = root(a1);
        }
    }

    std::vector<double> sums(size_t(fvCount) * 3, 0.0);
    for (int fv = 0; fv < fvCount; ++fv) {
        int r = root(fv);
        const double* n = &faceNormals[size_t(faceOf[size_t(fv)]) * 3];
        for (int c = 0; c < 3; ++c) sums[size_t(r) * 3 + size_t(c)] += n[c];
    }
    for (int fv = 0; fv < fvCount; ++fv) {
        const double* s = &sums[size_t(root(fv)) * 3];
        double length = std::sqrt(s[0] * s[0] + s[1] * s[1] + s[2] * s[2]);
        for (int c = 0; c < 3; ++c) result[size_t(fv) * 3 + size_t(c)] = length > 0.0 ? float(s[c] / length) : 0.0f;
    }
    if (storedNormals.size() == result.size()) {
        // Locked normals replace the computed ones; a component of 1e20 or more marks "not stored".
        for (int fv = 0; fv < fvCount; ++fv) {
            const float* n = &storedNormals[size_t(fv) * 3];
            if (std::fabs(n[0]) < 1e19f && std::fabs(n[1]) < 1e19f && std::fabs(n[2]) < 1e19f)
                for (int c = 0; c < 3; ++c) result[size_t(fv) * 3 + size_t(c)] = n[c];
        }
    }
    return result;
}

void MeshGeometry::triangulate(int face, std::vector<int>& localCorners) const
{
    std::vector<double> xs, ys;
    std::vector<int> ring;
    triangulate(face, localCorners, xs, ys, ring);
}

void MeshGeometry::computeTriangles() const
{
    triangleCache_.computed = true;
    std::vector<int>& offsets = triangleCache_.offsets;
    std::vector<int>& corners = triangleCache_.corners;
    offsets.assign(1, 0);
    offsets.reserve(size_t(numFaces()) + 1);
    corners.clear();
    corners.reserve(size_t(std::max(numFaceVertices() - 2 * numFaces(), 0)) * 3);
    std::vector<int> face;
    std::vector<double> xs, ys;
    std::vector<int> ring;
    for (int f = 0; f < numFaces(); ++f) {
        triangulate(f, face, xs, ys, ring);
        corners.insert(corners.end(), face.begin(), face.end());
        offsets.push_back(int(corners.size()));
    }
}

const std::vector<int>& MeshGeometry::triangleOffsets() const
{
    if (!triangleCache_.computed) computeTriangles();
    return triangleCache_.offsets;
}

const std::vector<int>& MeshGeometry::triangleCorners() const
{
    if (!triangleCache_.computed) computeTriangles();
    return triangleCache_.corners;
}

void MeshGeometry::triangulate(int face, std::vector<int>& localCorners, std::vector<double>& xs,
                               std::vector<double>& ys, std::vector<int>& ring) const
{
    localCorners.clear();
    const int count = faceSize(face);
    if (count < 3) return;
    if (count == 3) {
        localCorners = {0, 1, 2};
        return;
    }
    // Project onto the plane of the face: drop the axis along which the normal is largest.
    double n[3];
    faceNormal(face, n);
    int drop = std::fabs(n[0]) > std::fabs(n[1]) ? (std::fabs(n[0]) > std::fabs(n[2]) ? 0 : 2)
                                                   : (std::fabs(n[1]) > std::fabs(n[2]) ? 1 : 2);
    int ax = drop == 0 ? 1 : 0, ay = drop == 2 ? 1 : 2;
    // The 2D cross product measures along ax x ay, which is -y when y is dropped.
    double orientation = (n[drop] >= 0.0 ? 1.0 : -1.0) * (drop == 1 ? -1.0 : 1.0);
    xs.clear();
    ys.clear();
    int begin = faceOffsets[size_t(face)];
    for (int k = 0; k < count; ++k) {
        const double* p = &points[size_t(faceVertices[size_t(begin + k)]) * 3];
        xs.push_back(p[ax]);
        ys.push_back(p[ay]);
    }
    auto cross = [&](int a, int b, int c) {
        return orientation * ((xs[size_t(b)] - xs[size_t(a)]) * (ys[size_t(c)] - ys[size_t(a)]) -
                              (ys[size_t(b)] - ys[size_t(a)]) * (xs[size_t(c)] - xs[size_t(a)]));
    };
    ring.resize(static_cast<size_t>(count));
    std::iota(ring.begin(), ring.end(), 0);
    while (ring.size() > 3) {
        bool clipped = false;
        for (size_t i = 0; i < ring.size() && !clipped; ++i) {
            int a = ring[(i + ring.size() - 1) % ring.size()], b = ring[i], c = ring[(i + 1) % ring.size()];
            if (cross(a, b, c) <= 0.0) continue;  // reflex or flat corner: no ear
            bool empty = true;
            for (int other : ring) {
                if (other == a || other == b || other == c) continue;
                if (cross(a, b, other) >= 0.0 && cross(b, c, other) >= 0.0 && cross(c, a, other) >= 0.0) {
                    empty = false;
                    break;
                }
            }
            if (!empty) continue;
            localCorners.insert(localCorners.end(), {a, b, c});
            ring.erase(ring.begin() + long(i));
            clipped = true;
        }
        if (!clipped) break;  // no ear (degenerate outline): fan out what is left
    }
    for (size_t i = 1; i + 1 < ring.size(); ++i) localCorners.insert(localCorners.end(), {ring[0], ring[i], ring[i + 1]});
}

int MeshGeometry::findUVSet(const std::string& name) const
{
    for (size_t i = 0; i < uvSets.size(); ++i)
        if (uvSets[i].name == name) return int(i);
    return -1;
}

int MeshGeometry::findColorSet(const std::string& name) const
{
    for (size_t i = 0; i < colorSets.size(); ++i)
        if (colorSets[i].name == name) return int(i);
    return -1;
}

std::vector<std::string> MeshGeometry::validate()
{
    std::vector<std::string> problems;
    const int vertexCount = numVertices();
    std::vector<int> keptOffsets{0}, keptVertices, keptEdges;
    std::vector<std::vector<int>> keptUVs(uvSets.size()), keptColors(colorSets.size());
    std::vector<float> keptNormals;
    bool normalsPerFaceVertex = storedNormals.size() == faceVertices.size() * 3;
    for (int f = 0; f < numFaces(); ++f) {
        int begin = faceOffsets[size_t(f)], count = faceSize(f);
        bool ok = count >= 3;
        if (!ok) problems.push_back("face " + std::to_string(f) + " has fewer than three corners");
        for (int k = 0; ok && k < count; ++k) {
            int v = faceVertices[size_t(begin + k)];
            if (v < 0 || v >= vertexCount) {
                problems.push_back("face " + std::to_string(f) + " uses vertex " + std::to_string(v) + " of " +
                                   std::to_string(vertexCount));
                ok = false;
            }
        }
        if (!ok) continue;
        for (int k = 0; k < count; ++k) {
            keptVertices.push_back(faceVertices[size_t(begin + k)]);
            keptEdges.push_back(faceEdges[size_t(begin + k)]);
            for (size_t s = 0; s < uvSets.size(); ++s) {
                const auto& uvs = uvSets[s];
                int uv = size_t(begin + k) < uvs.faceVertexUV.size() ? uvs.faceVertexUV[size_t(begin + k)] : -1;
                if (uv >= int(uvs.u.size())) {
                    problems.push_back("face " + std::to_string(f) + " uses UV " + std::to_string(uv) + " of " +
                                       std::to_string(uvs.u.size()) + " in set " + std::to_string(s) +
                                       "; that corner has no UV there");
                    uv = -1;
                }
                keptUVs[s].push_back(uv);
            }
            for (size_t s = 0; s < colorSets.size(); ++s) {
                const auto& colors = colorSets[s];
                int c = size_t(begin + k) < colors.faceVertexColor.size() ? colors.faceVertexColor[size_t(begin + k)] : -1;
                if (c >= int(colors.rgba.size() / 4)) c = -1;
                keptColors[s].push_back(c);
            }
            if (normalsPerFaceVertex)
                keptNormals.insert(keptNormals.end(), &storedNormals[size_t(begin + k) * 3],
                                   &storedNormals[size_t(begin + k) * 3] + 3);
        }
        keptOffsets.push_back(int(keptVertices.size()));
    }
    faceOffsets.swap(keptOffsets);
    faceVertices.swap(keptVertices);
    faceEdges.swap(keptEdges);
    for (size_t s = 0; s < uvSets.size(); ++s) uvSets[s].faceVertexUV.swap(keptUVs[s]);
    for (size_t s = 0; s < colorSets.size(); ++s) colorSets[s].faceVertexColor.swap(keptColors[s]);
    if (normalsPerFaceVertex) storedNormals.swap(keptNormals);
    else if (!storedNormals.empty()) {
        problems.push_back("the stored normals do not match the face-vertices and are ignored");
        storedNormals.clear();
    }
    return problems;
}

}  // namespace vqmhost
