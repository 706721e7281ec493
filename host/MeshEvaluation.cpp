// Evaluates the geometry of meshes through their history: group parts and tweaks pass their
// input on, skin clusters deform it by linear blend skinning scaled by their envelope, UV tweaks
// move UVs. Results are cached on the mesh until the scene changes.
#include "MeshNodes.h"
#include "TransformNodes.h"

#include <maya/MMatrix.h>

#include <cmath>
#include <map>

namespace vqmhost {

namespace {

struct EvaluatedMesh : Data {
    std::shared_ptr<const MeshGeometry> geometry;
    std::string problem;
    MFn::Type apiType() const override { return MFn::kMeshData; }
};

bool pathOf(Node* node, const char* text, PlugPath& path)
{
    return parsePlugPath(node, text, path, false, AttrType::Generic, nullptr);
}

// What drives the plug: the source node and plug of its incoming connection.
bool sourceOf(Node* node, const PlugPath& path, Node*& sourceNode, PlugPath& sourcePath)
{
    const Connection* c = node->incomingConnection(path);
    if (!c) return false;
    sourceNode = c->sourceNode;
    sourcePath = c->source;
    return true;
}

std::shared_ptr<const MeshGeometry> evaluateInput(Node* node, const char* plugText, std::string* problem, int depth)
{
    PlugPath path;
    Node* source = nullptr;
    PlugPath sourcePath;
    if (!pathOf(node, plugText, path) || !sourceOf(node, path, source, sourcePath)) {
        if (problem) *problem = "'" + node->name + "' has no input geometry on " + plugText;
        return nullptr;
    }
    return evaluateGeometry(source, sourcePath, problem, depth + 1);
}

double numberAt(const Node* node, const PlugPath& path, double fallback)
{
    const PlugData* data = node->plugData(path);
    return data && data->value.kind == Value::Number ? data->value.number : fallback;
}

MMatrix matrixAt(const Node* node, const PlugPath& path)
{
    MMatrix m;
    const PlugData* data = node->plugData(path);
    if (data && data->value.kind == Value::Numbers && data->value.numbers.size() == 16)
        for (int i = 0; i < 16; ++i) m.matrix[i / 4][i % 4] = data->value.numbers[size_t(i)];
    return m;
}

// The world matrix that drives matrix[j] of a skin cluster: the influence's path matrix.
bool influenceMatrix(Node* skin, int j, MMatrix& out)
{
    PlugPath path;
    if (!pathOf(skin, ("ma[" + std::to_string(j) + "]").c_str(), path)) return false;
    Node* influence = nullptr;
    PlugPath sourcePath;
    if (!sourceOf(skin, path, influence, sourcePath)) {
        out = matrixAt(skin, path);  // a stored matrix stands for an influence without connection
        return true;
    }
    std::vector<NodePath> paths = allPathsTo(influence);
    if (paths.empty()) return false;
    int instance = sourcePath.back().index < 0 ? 0 : sourcePath.back().index;
    out = pathMatrix(paths[size_t(instance) < paths.size() ? size_t(instance) : 0]);
    return true;
}

std::shared_ptr<const MeshGeometry> deformBySkin(Node* skin, int index, std::string* problem, int depth)
{
    std::string input = "ip[" + std::to_string(index) + "].ig";
    auto base = evaluateInput(skin, input.c_str(), problem, depth);
    if (!base) return nullptr;
    PlugPath envelopePath;
    double envelope = pathOf(skin, "en", envelopePath) ? numberAt(skin, envelopePath, 1.0) : 1.0;
    if (envelope == 0.0) return base;

    PlugPath weightListPath, matrixPath, bindPrePath, geomPath;
    pathOf(skin, "wl", weightListPath);
    pathOf(skin, "ma", matrixPath);
    pathOf(skin, "pm", bindPrePath);
    pathOf(skin, "gm", geomPath);
    const MMatrix geometryMatrix = matrixAt(skin, geomPath);
    const PlugData* matrices = skin->plugData(matrixPath);
    std::map<int, MMatrix> skinning;  // geomMatrix * bindPreMatrix[j] * matrix[j], per influence
    if (matrices)
        for (const auto& element : matrices->elements) {
            MMatrix world;
            if (!influenceMatrix(skin, element.first, world)) continue;
            PlugPath bindPre = bindPrePath;
            bindPre.back().index = element.first;
            skinning[element.first] = geometryMatrix * matrixAt(skin, bindPre) * world;
        }

    auto result = std::make_shared<MeshGeometry>(*base);
    const PlugData* weightList = skin->plugData(weightListPath);
    for (int v = 0; v < result->numVertices(); ++v) {
        double* p = &result->points[size_t(v) * 3];
        const PlugData* weights = nullptr;
        if (weightList) {
            auto it = weightList->elements.find(v);
            if (it != weightList->elements.end() && !it->second.children.empty()) weights = &it->second.children[0];
        }
        if (!weights) continue;
        double sum[3] = {0, 0, 0}, total = 0.0;
        for (const auto& w : weights->elements) {
            auto m = skinning.find(w.first);
            if (m == skinning.end() || w.second.value.kind != Value::Number) continue;
            double weight = w.second.value.number;
            const MMatrix& s = m->second;
            for (int c = 0; c < 3; ++c)
                sum[c] += weight * (p[0] * s.matrix[0][c] + p[1] * s.matrix[1][c] + p[2] * s.matrix[2][c] + s.matrix[3][c]);
            total += weight;
        }
        if (total == 0.0) continue;  // no weight: the point stays where it is
        for (int c = 0; c < 3; ++c) p[c] += envelope * (sum[c] - p[c]);
    }
    return result;
}

std::shared_ptr<const MeshGeometry> tweakUVs(Node* node, std::string* problem, int depth)
{
    auto base = evaluateInput(node, "ip", problem, depth);
    if (!base) return nullptr;
    PlugPath tweaksPath;
    if (!pathOf(node, "uvtk", tweaksPath) || base->uvSets.empty()) return base;
    const PlugData* tweaks = node->plugData(tweaksPath);
    if (!tweaks || tweaks->elements.empty()) return base;
    auto result = std::make_shared<MeshGeometry>(*base);
    int set = 0;
    PlugPath namePath;
    if (pathOf(node, "uvs", namePath)) {
        const PlugData* name = node->plugData(namePath);
        if (name && name->value.kind == Value::String && result->findUVSet(name->value.text) >= 0)
            set = result->findUVSet(name->value.text);
    }
    auto& uvs = result->uvSets[size_t(set)];
    for (const auto& t : tweaks->elements) {
        const Value& v = t.second.value;
        if (t.first < 0 || size_t(t.first) >= uvs.u.size() || v.kind != Value::Numbers || v.numbers.size() < 2) continue;
        uvs.u[size_t(t.first)] += float(v.numbers[0]);
        uvs.v[size_t(t.first)] += float(v.numbers[1]);
    }
    return result;
}

}  // namespace

std::shared_ptr<const MeshGeometry> evaluateGeometry(Node* node, const PlugPath& path, std::string* problem, int depth)
{
    if (depth > 64) {
        if (problem) *problem = "the history of '" + node->name + "' loops";
        return nullptr;
    }
    if (node->hasFn(MFn::kMesh)) return evaluateMesh(node, problem);
    const std::string& type = node->typeName;
    const std::string& attribute = path.empty() ? std::string() : path.front().attribute->shortName;
    int index = path.empty() || path.front().index < 0 ? 0 : path.front().index;
    if (type == "groupParts" && attribute == "og") return evaluateInput(node, "ig", problem, depth);
    if (type == "tweak" && attribute == "og")
        return evaluateInput(node, ("ip[" + std::to_string(index) + "].ig").c_str(), problem, depth);
    if (type == "skinCluster" && attribute == "og") return deformBySkin(node, index, problem, depth);
    if (type == "polyTweakUV" && attribute == "out") return tweakUVs(node, problem, depth);
    if (problem) *problem = "cannot evaluate '" + node->name + "' of type '" + type + "'";
    return nullptr;
}

std::shared_ptr<const MeshGeometry> evaluateMesh(Node* mesh, std::string* problem)
{
    Scene& scene = mesh->scene;
    if (mesh->evaluated && mesh->evaluatedRevision == scene.revision) {
        auto* cached = static_cast<EvaluatedMesh*>(mesh->evaluated.get());
        if (problem) *problem = cached->problem;
        return cached->geometry;
    }
    auto evaluated = std::make_shared<EvaluatedMesh>();
    PlugPath inMesh;
    Node* source = nullptr;
    PlugPath sourcePath;
    std::shared_ptr<MeshGeometry> geometry;
    if (pathOf(mesh, "i", inMesh) && sourceOf(mesh, inMesh, source, sourcePath)) {
        auto input = evaluateGeometry(source, sourcePath, &evaluated->problem, 1);
        if (input) geometry = std::make_shared<MeshGeometry>(*input);
    } else {
        geometry = std::make_shared<MeshGeometry>(ownGeometry(*mesh));
        std::vector<std::string> problems = geometry->validate();
        for (const std::string& p : problems)
            evaluated->problem += (evaluated->problem.empty() ? "" : "; ") + p;
    }
    if (geometry) {
        const auto& tweaks = mesh->internal ? static_cast<MeshGeometry&>(*mesh->internal).tweaks : std::vector<double>();
        for (size_t i = 0; i < tweaks.size() && i < geometry->points.size(); ++i) geometry->points[i] += tweaks[i];
        geometry->tweaks.clear();
    }
    evaluated->geometry = geometry;
    mesh->evaluated = evaluated;
    mesh->evaluatedRevision = scene.revision;
    if (problem) *problem = evaluated->problem;
    return evaluated->geometry;
}

}  // namespace vqmhost
