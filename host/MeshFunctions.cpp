// MFnMesh and MItMeshPolygon over the evaluated geometry of a mesh, and the shading groups of
// its faces through instObjGroups.
#include <maya/MColorArray.h>
#include <maya/MFloatArray.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MMatrix.h>
#include <maya/MObjectArray.h>
#include <maya/MPointArray.h>
#include <maya/MStringArray.h>
#include <maya/MVector.h>

#include "StatusReport.h"
#include "HostData.h"
#include "MeshNodes.h"
#include "Session.h"
#include "TransformNodes.h"

#include <cstdlib>

using namespace vqmhost;

namespace {

// The geometry behind a function set; a mesh whose history cannot be evaluated shows none, and
// says why once per scene revision.
std::shared_ptr<const MeshGeometry> geometryOf(const MObject& object)
{
    Node* node = object.hostNode();
    if (!node || !node->hasFn(MFn::kMesh)) return nullptr;
    bool fresh = node->evaluatedRevision != node->scene.revision;
    std::string problem;
    auto geometry = evaluateMesh(node, &problem);
    if (fresh && !problem.empty())
        emitMessage(MessageKind::Warning, "mesh '" + node->name + "': " + problem +
                                              (geometry ? std::string() : "; it shows no faces"));
    return geometry;
}

const MeshGeometry& emptyGeometry()
{
    static MeshGeometry empty;
    return empty;
}

// The space matrix of a path: identity for object space.
MMatrix spaceMatrix(const MDagPath& path, MSpace::Space space)
{
    if (space != MSpace::kWorld || !path.isValid()) return MMatrix();
    return pathMatrix(path.hostNodes());
}

std::string uvSetName(const MeshGeometry& g, size_t set)
{
    return g.uvSets[set].name.empty() ? "map" + std::to_string(set + 1) : g.uvSets[set].name;
}

int currentColorSet(const MeshGeometry& g, const MString* colorSet)
{
    if (colorSet) return g.findColorSet(colorSet->str());
    int current = g.findColorSet(g.currentColorSet);
    return current >= 0 ? current : (g.colorSets.empty() ? -1 : 0);
}

int uvSetByName(const MeshGeometry& g, const MString* uvSet)
{
    if (!uvSet) {
        int current = g.findUVSet(g.currentUVSet);
        return current >= 0 ? current : (g.uvSets.empty() ? -1 : 0);
    }
    const std::string& wanted = uvSet->str();
    for (size_t s = 0; s < g.uvSets.size(); ++s)
        if (g.uvSets[s].name.empty() ? uvSetName(g, s) == wanted : g.uvSets[s].name == wanted) return int(s);
    return -1;
}

// Polygon numbers of a component list such as "f[0:27]" "f[3]" "f[*]".
void addFaces(const std::vector<std::string>& words, int faceCount, std::vector<int>& indices, int value)
{
    for (const std::string& word : words) {
        if (word.compare(0, 2, "f[") != 0 || word.back() != ']') continue;
        std::string range = word.substr(2, word.size() - 3);
        int first = 0, last = faceCount - 1;
        if (range != "*") {
            size_t colon = range.find(':');
            first = atoi(range.c_str());
            last = colon == std::string::npos ? first : atoi(range.c_str() + colon + 1);
        }
        for (int f = std::max(first, 0); f <= last && f < faceCount; ++f) indices[size_t(f)] = value;
    }
}

}  // namespace

MFnMesh::MFnMesh(MObject& object, MStatus* status) : MFnMesh(static_cast<const MObject&>(object), status) {}

MFnMesh::MFnMesh(const MObject& object, MStatus* status)
{
    report(status, setObject(object).statusCode());
}

MFnMesh::MFnMesh(const MDagPath& path, MStatus* status)
{
    report(status, setObject(path).statusCode());
}

MStatus MFnMesh::setObject(const MObject& object)
{
    if (!object.hasFn(MFn::kMesh)) return MStatus::kInvalidParameter;
    return MFnDagNode::setObject(object);
}

MStatus MFnMesh::setObject(const MDagPath& path)
{
    if (!path.hasFn(MFn::kMesh)) return MStatus::kInvalidParameter;
    return MFnDagNode::setObject(path);
}

#define VQM_MESH_OR(FAIL)                                    \
    auto geometry = geometryOf(object_);                     \
    if (!geometry) {                                         \
        report(status, MStatus::kFailure);                   \
        return FAIL;                                         \
    }                                                        \
    report(status, MStatus::kSuccess);

int MFnMesh::numVertices(MStatus* status) const
{
    VQM_MESH_OR(0)
    return geometry->numVertices();
}

int MFnMesh::numPolygons(MStatus* status) const
{
    VQM_MESH_OR(0)
    return geometry->numFaces();
}

int MFnMesh::numFaceVertices(MStatus* status) const
{
    VQM_MESH_OR(0)
    return geometry->numFaceVertices();
}

int MFnMesh::numNormals(MStatus* status) const
{
    return numFaceVertices(status);
}

int MFnMesh::polygonVertexCount(int polygonId, MStatus* status) const
{
    VQM_MESH_OR(0)
    if (polygonId < 0 || polygonId >= geometry->numFaces()) {
        report(status, MStatus::kInvalidParameter);
        return 0;
    }
    return geometry->faceSize(polygonId);
}

MStatus MFnMesh::getPolygonVertices(int polygonId, MIntArray& vertexList) const
{
    auto geometry = geometryOf(object_);
    if (!geometry || polygonId < 0 || polygonId >= geometry->numFaces()) return MStatus::kInvalidParameter;
    vertexList.clear();
    for (int i = geometry->faceOffsets[size_t(polygonId)]; i < geometry->faceOffsets[size_t(polygonId) + 1]; ++i)
        vertexList.append(geometry->faceVertices[size_t(i)]);
    return MStatus::kSuccess;
}

MStatus MFnMesh::getVertices(MIntArray& vertexCount, MIntArray& vertexList) const
{
    auto geometry = geometryOf(object_);
    if (!geometry) return MStatus::kFailure;
    vertexCount.clear();
    vertexList.clear();
    for (int f = 0; f < geometry->numFaces(); ++f) vertexCount.append(geometry->faceSize(f));
    for (int v : geometry->faceVertices) vertexList.append(v);
    return MStatus::kSuccess;
}

MStatus MFnMesh::getTriangles(MIntArray& triangleCounts, MIntArray& triangleVertices) const
{
    auto geometry = geometryOf(object_);
    if (!geometry) return MStatus::kFailure;
    triangleCounts.clear();
    triangleVertices.clear();
    std::vector<int> corners;
    for (int f = 0; f < geometry->numFaces(); ++f) {
        geometry->triangulate(f, corners);
        triangleCounts.append(int(corners.size() / 3));
        for (int c : corners) triangleVertices.append(geometry->faceVertices[size_t(geometry->faceOffsets[size_t(f)] + c)]);
    }
    return MStatus::kSuccess;
}

MStatus MFnMesh::getPoints(MPointArray& points, MSpace::Space space) const
{
    auto geometry = geometryOf(object_);
    if (!geometry) return MStatus::kFailure;
    MMatrix m = spaceMatrix(path_, space);
    points.setLength(unsigned(geometry->numVertices()));
    for (int v = 0; v < geometry->numVertices(); ++v) {
        const double* p = &geometry->points[size_t(v) * 3];
        points[unsigned(v)] = MPoint(p[0], p[1], p[2]) * m;
    }
    return MStatus::kSuccess;
}

MStatus MFnMesh::getNormals(MFloatVectorArray& normals, MSpace::Space space) const
{
    auto geometry = geometryOf(object_);
    if (!geometry) return MStatus::kFailure;
    const std::vector<float>& source = geometry->faceVertexNormals();
    MMatrix m = spaceMatrix(path_, space);
    bool world = space == MSpace::kWorld && path_.isValid();
    MMatrix inverseTranspose = world ? m.inverse().transpose() : MMatrix();
    normals.setLength(unsigned(source.size() / 3));
    for (size_t i = 0; i < source.size() / 3; ++i) {
        MFloatVector n(source[i * 3], source[i * 3 + 1], source[i * 3 + 2]);
        if (world) {
            double out[3];
            for (int c = 0; c < 3; ++c)
                out[c] = n.x * inverseTranspose.matrix[c][0] + n.y * inverseTranspose.matrix[c][1] + n.z * inverseTranspose.matrix[c][2];
            double length = std::sqrt(out[0] * out[0] + out[1] * out[1] + out[2] * out[2]);
            if (length > 0) n = MFloatVector(float(out[0] / length), float(out[1] / length), float(out[2] / length));
        }
        normals[unsigned(i)] = n;
    }
    return MStatus::kSuccess;
}

int MFnMesh::numUVSets(MStatus* status) const
{
    VQM_MESH_OR(0)
    return int(geometry->uvSets.size());
}

MStatus MFnMesh::getUVSetNames(MStringArray& names) const
{
    auto geometry = geometryOf(object_);
    if (!geometry) return MStatus::kFailure;
    names.clear();
    for (size_t s = 0; s < geometry->uvSets.size(); ++s) names.append(MString(uvSetName(*geometry, s)));
    return MStatus::kSuccess;
}

MStatus MFnMesh::getCurrentUVSetName(MString& name, int) const
{
    auto geometry = geometryOf(object_);
    if (!geometry) return MStatus::kFailure;
    int set = uvSetByName(*geometry, nullptr);
    if (set < 0) return MStatus::kFailure;
    name = MString(uvSetName(*geometry, size_t(set)));
    return MStatus::kSuccess;
}

int MFnMesh::numUVs(const MString* uvSet, MStatus* status) const
{
    VQM_MESH_OR(0)
    int set = uvSetByName(*geometry, uvSet);
    if (set < 0) {
        report(status, MStatus::kInvalidParameter);
        return 0;
    }
    return int(geometry->uvSets[size_t(set)].u.size());
}

MStatus MFnMesh::getUVs(MFloatArray& u, MFloatArray& v, const MString* uvSet) const
{
    auto geometry = geometryOf(object_);
    if (!geometry) return MStatus::kFailure;
    int set = uvSetByName(*geometry, uvSet);
    if (set < 0) return MStatus::kInvalidParameter;
    const auto& uvs = geometry->uvSets[size_t(set)];
    u = MFloatArray(uvs.u.data(), unsigned(uvs.u.size()));
    v = MFloatArray(uvs.v.data(), unsigned(uvs.v.size()));
    return MStatus::kSuccess;
}

int MFnMesh::numColorSets(MStatus* status) const
{
    VQM_MESH_OR(0)
    return int(geometry->colorSets.size());
}

MStatus MFnMesh::getColorSetNames(MStringArray& names) const
{
    auto geometry = geometryOf(object_);
    if (!geometry) return MStatus::kFailure;
    names.clear();
    for (const auto& set : geometry->colorSets) names.append(MString(set.name));
    return MStatus::kSuccess;
}

MStatus MFnMesh::getCurrentColorSetName(MString& name, int) const
{
    auto geometry = geometryOf(object_);
    if (!geometry) return MStatus::kFailure;
    int set = currentColorSet(*geometry, nullptr);
    if (set < 0) return MStatus::kFailure;
    name = MString(geometry->colorSets[size_t(set)].name);
    return MStatus::kSuccess;
}

int MFnMesh::numColors(const MString* colorSet, MStatus* status) const
{
    VQM_MESH_OR(0)
    int set = currentColorSet(*geometry, colorSet);
    return set < 0 ? 0 : int(geometry->colorSets[size_t(set)].rgba.size() / 4);
}

MStatus MFnMesh::getColors(MColorArray& colors, const MString* colorSet, const MColor*) const
{
    auto geometry = geometryOf(object_);
    if (!geometry) return MStatus::kFailure;
    int set = currentColorSet(*geometry, colorSet);
    if (set < 0) return MStatus::kFailure;
    const auto& rgba = geometry->colorSets[size_t(set)].rgba;
    colors.setLength(unsigned(rgba.size() / 4));
    for (size_t i = 0; i < rgba.size() / 4; ++i)
        colors[unsigned(i)] = MColor(rgba[i * 4], rgba[i * 4 + 1], rgba[i * 4 + 2], rgba[i * 4 + 3]);
    return MStatus::kSuccess;
}

MStatus MFnMesh::getConnectedShaders(unsigned instance, MObjectArray& shaders, MIntArray& indices) const
{
    Node* mesh = object_.hostNode();
    auto geometry = geometryOf(object_);
    shaders.clear();
    indices.clear();
    if (!mesh) return MStatus::kFailure;
    const int faceCount = geometry ? geometry->numFaces() : 0;
    std::vector<int> perFace(static_cast<size_t>(faceCount), -1);
    auto shaderIndex = [&shaders](Node* group) {
        for (unsigned i = 0; i < shaders.length(); ++i)
            if (shaders[i].hostNode() == group) return int(i);
        shaders.append(MObject(group));
        return int(shaders.length() - 1);
    };
    // Whole-object membership first: instObjGroups[instance] connected to a shading group.
    const auto& all = mesh->scene.connections();
    std::vector<std::pair<int, Node*>> componentGroups;  // objectGroups index, shading group
    for (size_t c : mesh->connections) {
        const Connection& connection = all[c];
        if (!connection.alive || connection.sourceNode != mesh || !connection.destinationNode->hasFn(MFn::kShadingEngine))
            continue;
        const PlugPath& source = connection.source;
        if (source.empty() || source[0].attribute->shortName != "iog") continue;
        int instanceIndex = source[0].index < 0 ? 0 : source[0].index;
        if (unsigned(instanceIndex) != instance) continue;
        if (source.size() == 1) {
            int index = shaderIndex(connection.destinationNode);
            std::fill(perFace.begin(), perFace.end(), index);
        } else if (source.size() == 2 && source[1].attribute->shortName == "og" && source[1].index >= 0) {
            componentGroups.emplace_back(source[1].index, connection.destinationNode);
        }
    }
    std::sort(componentGroups.begin(), componentGroups.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& group : componentGroups) {
        int index = shaderIndex(group.second);
        PlugPath components;
        std::string text = "iog[" + std::to_string(instance) + "].og[" + std::to_string(group.first) + "].gcl";
        if (!parsePlugPath(mesh, text, components, false, AttrType::Generic, nullptr)) continue;
        const PlugData* data = mesh->plugData(components);
        if (!data || data->value.kind != Value::Block) continue;
        if (auto* raw = dynamic_cast<const RawData*>(data->value.block.get())) addFaces(raw->words, faceCount, perFace, index);
    }
    for (int i : perFace) indices.append(i);
    return MStatus::kSuccess;
}

// ---- MItMeshPolygon

MItMeshPolygon::MItMeshPolygon(const MObject& polyObject, MStatus* status)
{
    mesh_ = geometryOf(polyObject);
    if (!mesh_) {
        report(status, polyObject.hasFn(MFn::kMesh) ? MStatus::kFailure : MStatus::kInvalidParameter);
        mesh_ = std::shared_ptr<const MeshGeometry>(&emptyGeometry(), [](const MeshGeometry*) {});
        return;
    }
    report(status, MStatus::kSuccess);
    triangulateCurrent();
}

MItMeshPolygon::MItMeshPolygon(const MDagPath& polyObject, const MObject&, MStatus* status)
    : MItMeshPolygon(polyObject.node(), status)
{
    path_ = polyObject;
}

bool MItMeshPolygon::isDone(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return polygon_ >= mesh_->numFaces();
}

MStatus MItMeshPolygon::next()
{
    if (polygon_ >= mesh_->numFaces()) return MStatus::kFailure;
    ++polygon_;
    triangulateCurrent();
    return MStatus::kSuccess;
}

MStatus MItMeshPolygon::reset()
{
    polygon_ = 0;
    triangulateCurrent();
    return MStatus::kSuccess;
}

void MItMeshPolygon::triangulateCurrent()
{
    triangles_.clear();
    if (polygon_ < mesh_->numFaces()) {
        const std::vector<int>& offsets = mesh_->triangleOffsets();
        const int* corners = mesh_->triangleCorners().data();
        triangles_.assign(corners + offsets[size_t(polygon_)], corners + offsets[size_t(polygon_) + 1]);
    }
}

unsigned int MItMeshPolygon::index(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return unsigned(polygon_);
}

unsigned int MItMeshPolygon::count(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return unsigned(mesh_->numFaces());
}

int MItMeshPolygon::faceVertex(int local) const
{
    if (polygon_ >= mesh_->numFaces() || local < 0 || local >= mesh_->faceSize(polygon_)) return -1;
    return mesh_->faceOffsets[size_t(polygon_)] + local;
}

unsigned int MItMeshPolygon::polygonVertexCount(MStatus* status) const
{
    report(status, polygon_ < mesh_->numFaces() ? MStatus::kSuccess : MStatus::kFailure);
    return polygon_ < mesh_->numFaces() ? unsigned(mesh_->faceSize(polygon_)) : 0u;
}

MStatus MItMeshPolygon::getVertices(MIntArray& vertices) const
{
    vertices.clear();
    if (polygon_ >= mesh_->numFaces()) return MStatus::kFailure;
    for (int i = 0; i < mesh_->faceSize(polygon_); ++i) vertices.append(mesh_->faceVertices[size_t(faceVertex(i))]);
    return MStatus::kSuccess;
}

int MItMeshPolygon::vertexIndex(int local, MStatus* status) const
{
    int fv = faceVertex(local);
    report(status, fv < 0 ? MStatus::kInvalidParameter : MStatus::kSuccess);
    return fv < 0 ? -1 : mesh_->faceVertices[size_t(fv)];
}

MStatus MItMeshPolygon::numTriangles(int& triangles) const
{
    if (polygon_ >= mesh_->numFaces()) return MStatus::kFailure;
    triangles = int(triangles_.size() / 3);
    return MStatus::kSuccess;
}

MStatus MItMeshPolygon::getTriangle(int t, MPointArray& points, MIntArray& vertexList, MSpace::Space space) const
{
    if (t < 0 || size_t(t) * 3 + 2 >= triangles_.size() || polygon_ >= mesh_->numFaces()) return MStatus::kInvalidParameter;
    const bool world = space == MSpace::kWorld && path_.isValid();
    const MMatrix m = world ? spaceMatrix(path_, space) : MMatrix();
    points.setLength(3);
    vertexList.setLength(3);
    for (unsigned k = 0; k < 3; ++k) {
        int vertex = mesh_->faceVertices[size_t(faceVertex(triangles_[size_t(t) * 3 + k]))];
        vertexList[k] = vertex;
        const double* p = &mesh_->points[size_t(vertex) * 3];
        MPoint point(p[0], p[1], p[2]);
        points[k] = world ? point * m : point;
    }
    return MStatus::kSuccess;
}

int MItMeshPolygon::normalIndex(int local, MStatus* status) const
{
    int fv = faceVertex(local);
    report(status, fv < 0 ? MStatus::kInvalidParameter : MStatus::kSuccess);
    return fv;
}

MStatus MItMeshPolygon::getNormal(int local, MVector& normal, MSpace::Space) const
{
    int fv = faceVertex(local);
    if (fv < 0) return MStatus::kInvalidParameter;
    const std::vector<float>& normals = mesh_->faceVertexNormals();
    normal = MVector(normals[size_t(fv) * 3], normals[size_t(fv) * 3 + 1], normals[size_t(fv) * 3 + 2]);
    return MStatus::kSuccess;
}

int MItMeshPolygon::uvSetIndex(const MString* uvSet) const
{
    return uvSetByName(*mesh_, uvSet);
}

int MItMeshPolygon::colorSetIndex(const MString* colorSet) const
{
    return currentColorSet(*mesh_, colorSet);
}

bool MItMeshPolygon::hasUVs(const MString& uvSet, MStatus* status) const
{
    report(status, MStatus::kSuccess);
    int set = uvSetIndex(&uvSet);
    if (set < 0) return false;
    for (int i = 0; i < mesh_->faceSize(polygon_); ++i)
        if (mesh_->uvSets[size_t(set)].faceVertexUV[size_t(faceVertex(i))] < 0) return false;
    return polygon_ < mesh_->numFaces();
}

MStatus MItMeshPolygon::getUVIndex(int local, int& uvIndex, const MString* uvSet) const
{
    int fv = faceVertex(local), set = uvSetIndex(uvSet);
    if (fv < 0 || set < 0) return MStatus::kInvalidParameter;
    int index = mesh_->uvSets[size_t(set)].faceVertexUV[size_t(fv)];
    if (index < 0) return MStatus::kFailure;
    uvIndex = index;
    return MStatus::kSuccess;
}

MStatus MItMeshPolygon::getUV(int local, float2& uv, const MString* uvSet) const
{
    // As getUVIndex, with the set looked up once.
    int fv = faceVertex(local), set = uvSetIndex(uvSet);
    if (fv < 0 || set < 0) return MStatus::kInvalidParameter;
    const auto& uvs = mesh_->uvSets[size_t(set)];
    int index = uvs.faceVertexUV[size_t(fv)];
    if (index < 0) return MStatus::kFailure;
    uv[0] = uvs.u[size_t(index)];
    uv[1] = uvs.v[size_t(index)];
    return MStatus::kSuccess;
}

bool MItMeshPolygon::hasColor(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    int set = colorSetIndex(nullptr);
    if (set < 0 || polygon_ >= mesh_->numFaces()) return false;
    for (int i = 0; i < mesh_->faceSize(polygon_); ++i)
        if (mesh_->colorSets[size_t(set)].faceVertexColor[size_t(faceVertex(i))] >= 0) return true;
    return false;
}

MStatus MItMeshPolygon::getColorIndex(int local, int& colorIndex, const MString* colorSet) const
{
    int fv = faceVertex(local), set = colorSetIndex(colorSet);
    if (fv < 0 || set < 0) return MStatus::kInvalidParameter;
    colorIndex = mesh_->colorSets[size_t(set)].faceVertexColor[size_t(fv)];
    return MStatus::kSuccess;
}
