// How a mesh node takes its data from a Maya ASCII file: points (.vt), tweaks (.pt), edges (.ed),
// faces (.fc, "polyFaces"), UV sets (.uvst), colour sets (.clst), stored normals (.n).
#include "Graph.h"
#include "MeshGeometry.h"
#include "MeshNodes.h"
#include "mayaascii/MayaAsciiNumber.h"

#include <charconv>
#include <string_view>

namespace vqmhost {

namespace {

bool toInt(std::string_view word, int& value)
{
    const char* end = word.data() + word.size();
    auto result = std::from_chars(word.data(), end, value);
    return result.ec == std::errc() && result.ptr == end && !word.empty();
}

// The element range of a statement: [start, end] of the last indexed step.
bool elementRange(const PlugPath& path, const FileValues& values, size_t step, int& start, int& end)
{
    if (values.rangeStart >= 0) {
        start = values.rangeStart;
        end = values.rangeEnd;
        return true;
    }
    if (step < path.size() && path[step].index >= 0) {
        start = end = path[step].index;
        return true;
    }
    return false;
}

// Reads per-element tuples of numbers into a flat array, growing it as needed.
template <typename T>
int readTuples(const PlugPath& path, const FileValues& values, size_t step, int width, double scale,
               std::vector<T>& target)
{
    int start = 0, end = -1;
    if (!elementRange(path, values, step, start, end)) {
        *values.error = "needs an element index";
        return -1;
    }
    const auto& words = *values.words;
    size_t count = size_t(end - start + 1);
    if (words.size() < count * size_t(width)) {
        *values.error = "expects " + std::to_string(count * size_t(width)) + " numbers, has " + std::to_string(words.size());
        return -1;
    }
    if (target.size() < size_t(end + 1) * size_t(width)) target.resize(size_t(end + 1) * size_t(width), T(0));
    for (size_t i = 0; i < count * size_t(width); ++i) {
        double value;
        if (!parseMayaAsciiNumber(words[i], value)) {
            *values.error = "'" + std::string(words[i]) + "' is no number";
            return -1;
        }
        target[size_t(start) * size_t(width) + i] = T(value * scale);
    }
    return 1;
}

int readEdges(const PlugPath& path, const FileValues& values, MeshGeometry& mesh)
{
    std::vector<double> triples;
    int result = readTuples(path, values, 0, 3, 1.0, triples);
    if (result < 0) return result;
    int start = 0, end = -1;
    elementRange(path, values, 0, start, end);
    if (mesh.edges.size() < size_t(end + 1)) mesh.edges.resize(size_t(end + 1));
    for (int e = start; e <= end; ++e) {
        MeshGeometry::Edge& edge = mesh.edges[size_t(e)];
        edge.from = int(triples[size_t(e) * 3]);
        edge.to = int(triples[size_t(e) * 3 + 1]);
        edge.smooth = triples[size_t(e) * 3 + 2] != 0.0;
    }
    return 1;
}

// polyFaces: "f n e..." starts a face of n edges (a negative e is edge -e-1 walked backwards),
// "h n e..." a hole in it, "mu s n uv..." its UVs in set s, "mc s n c..." and "fc n c..." its colours.
int readFaces(const FileValues& values, MeshGeometry& mesh)
{
    const auto& words = *values.words;
    std::string& problems = *values.error;
    size_t i = 0;
    int face = -1;       // the face being read, as it will be numbered
    bool keep = false;   // whether that face is kept
    int holes = 0, dropped = 0;
    std::vector<int> vertices, edgeRefs, indices;  // of one entry, reused
    auto readInt = [&](int& out) {
        if (i >= words.size() || !toInt(words[i], out)) return false;
        ++i;
        return true;
    };
    while (i < words.size()) {
        std::string_view keyword = words[i++];
        int n = 0;
        if (keyword == "f") {
            if (!readInt(n) || n < 0 || i + size_t(n) > words.size()) {
                problems = "a face entry is cut short";
                return -1;
            }
            keep = n >= 3;
            vertices.clear();
            edgeRefs.clear();
            for (int k = 0; k < n; ++k) {
                int ref;
                if (!readInt(ref)) {
                    problems = "a face names a bad edge";
                    return -1;
                }
                int edge = ref >= 0 ? ref : -ref - 1;
                if (edge >= int(mesh.edges.size())) {
                    keep = false;
                    continue;
                }
                const MeshGeometry::Edge& e = mesh.edges[size_t(edge)];
                vertices.push_back(ref >= 0 ? e.from : e.to);
                edgeRefs.push_back(edge);
            }
            if (!keep) {
                ++dropped;
                face = -1;
                continue;
            }
            face = mesh.numFaces();
            mesh.faceVertices.insert(mesh.faceVertices.end(), vertices.begin(), vertices.end());
            mesh.faceEdges.insert(mesh.faceEdges.end(), edgeRefs.begin(), edgeRefs.end());
            mesh.faceOffsets.push_back(int(mesh.faceVertices.size()));
        } else if (keyword == "h") {
            if (!readInt(n) || n < 0 || i + size_t(n) > words.size()) {
                problems = "a hole entry is cut short";
                return -1;
            }
            i += size_t(n);
            ++holes;
        } else if (keyword == "mu" || keyword == "mc" || keyword == "fc") {
            int set = 0;
            if ((keyword != "fc" && !readInt(set)) || !readInt(n) || set < 0 || n < 0 || i + size_t(n) > words.size()) {
                problems = "a '" + std::string(keyword) + "' entry is cut short";
                return -1;
            }
            indices.assign(static_cast<size_t>(n), 0);
            for (int k = 0; k < n; ++k)
                if (!readInt(indices[size_t(k)])) {
                    problems = "a '" + std::string(keyword) + "' entry holds a bad index";
                    return -1;
                }
            if (face < 0) continue;  // belongs to a face that was dropped
            int begin = mesh.faceOffsets[size_t(face)], size = mesh.faceSize(face);
            std::vector<int>* target;
            if (keyword == "mu") {
                if (mesh.uvSets.size() <= size_t(set)) mesh.uvSets.resize(size_t(set) + 1);
                target = &mesh.uvSets[size_t(set)].faceVertexUV;
            } else {
                if (mesh.colorSets.size() <= size_t(set)) mesh.colorSets.resize(size_t(set) + 1);
                target = &mesh.colorSets[size_t(set)].faceVertexColor;
            }
            if (target->size() < mesh.faceVertices.size()) target->resize(mesh.faceVertices.size(), -1);
            for (int k = 0; k < n && k < size; ++k) (*target)[size_t(begin + k)] = indices[size_t(k)];
        } else {
            problems = "unknown polyFaces entry '" + std::string(keyword) + "'";
            return -1;
        }
    }
    for (auto& set : mesh.uvSets) set.faceVertexUV.resize(mesh.faceVertices.size(), -1);
    for (auto& set : mesh.colorSets) set.faceVertexColor.resize(mesh.faceVertices.size(), -1);
    if (dropped) problems = std::to_string(dropped) + " faces with fewer than three corners or unknown edges are left out";
    if (holes) problems += std::string(problems.empty() ? "" : "; ") + std::to_string(holes) + " holes in faces are ignored";
    return 1;
}

std::string firstWord(const FileValues& values)
{
    return values.words->empty() ? std::string() : std::string((*values.words)[0]);
}

}  // namespace

MeshGeometry& ownGeometry(Node& node)
{
    if (!node.internal) node.internal = std::make_shared<MeshGeometry>();
    return static_cast<MeshGeometry&>(*node.internal);
}

int readMeshFileValues(Node& node, const PlugPath& path, const FileValues& values)
{
    const std::string& name = path[0].attribute->shortName;
    MeshGeometry& mesh = ownGeometry(node);
    if (name == "vt") return readTuples(path, values, 0, 3, values.linearScale, mesh.points);
    if (name == "pt" && path.size() == 1) return readTuples(path, values, 0, 3, values.linearScale, mesh.tweaks);
    if (name == "ed") return readEdges(path, values, mesh);
    if (name == "fc") return readFaces(values, mesh);
    if (name == "n") return readTuples(path, values, 0, 3, 1.0, mesh.storedNormals);
    if (name == "cuvs") {
        mesh.currentUVSet = firstWord(values);
        return 1;
    }
    if (name == "ccls") {
        mesh.currentColorSet = firstWord(values);
        return 1;
    }
    if ((name == "uvst" || name == "clst") && path.size() == 2 && path[0].index >= 0) {
        size_t set = size_t(path[0].index);
        const std::string& child = path[1].attribute->shortName;
        if (name == "uvst") {
            if (mesh.uvSets.size() <= set) mesh.uvSets.resize(set + 1);
            auto& uvs = mesh.uvSets[set];
            if (child == "uvsn") {
                uvs.name = firstWord(values);
                return 1;
            }
            if (child == "uvsp") {
                std::vector<float> pairs;
                for (size_t i = 0; i < uvs.u.size(); ++i) pairs.insert(pairs.end(), {uvs.u[i], uvs.v[i]});
                int result = readTuples(path, values, 1, 2, 1.0, pairs);
                uvs.u.resize(pairs.size() / 2);
                uvs.v.resize(pairs.size() / 2);
                for (size_t i = 0; i < pairs.size() / 2; ++i) {
                    uvs.u[i] = pairs[2 * i];
                    uvs.v[i] = pairs[2 * i + 1];
                }
                return result;
            }
        } else {
            if (mesh.colorSets.size() <= set) mesh.colorSets.resize(set + 1);
            auto& colors = mesh.colorSets[set];
            if (child == "clsn") {
                colors.name = firstWord(values);
                return 1;
            }
            if (child == "clsp") return readTuples(path, values, 1, 4, 1.0, colors.rgba);
        }
    }
    return 0;
}

}  // namespace vqmhost
