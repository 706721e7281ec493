// Skin clusters through their function set: the shape an output feeds, the influences on
// matrix[j], the weights of a vertex in weightList[v].weights[j], and the envelope.
#include <maya/MDagPathArray.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MIntArray.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MPlugArray.h>

#include "ComponentData.h"
#include "StatusReport.h"

#include <vector>

using vqmhost::report;

namespace {

// The logical indices of matrix[] that an influence drives, ascending, with the influences' paths.
void connectedInfluences(const MFnSkinCluster& skin, std::vector<unsigned>& indices, MDagPathArray* paths)
{
    MStatus status;
    MPlug matrices = skin.findPlug("matrix", &status);
    if (!status) return;
    MIntArray existing;
    matrices.getExistingArrayAttributeIndices(existing);
    for (unsigned i = 0; i < existing.length(); ++i) {
        MPlugArray sources;
        if (!matrices.elementByLogicalIndex(unsigned(existing[i])).connectedTo(sources, true, false) ||
            sources.length() == 0)
            continue;
        MObject influence = sources[0].node();
        MDagPath path;
        if (!influence.hasFn(MFn::kDagNode) || !MDagPath::getAPathTo(influence, path)) continue;
        indices.push_back(unsigned(existing[i]));
        if (paths) paths->append(path);
    }
}

}  // namespace

MStatus MFnGeometryFilter::getPathAtIndex(unsigned int index, MDagPath& path) const
{
    MStatus status;
    MPlug outputs = findPlug("outputGeometry", &status);
    if (!status) return MStatus::kInvalidParameter;
    MPlugArray far;
    outputs.elementByLogicalIndex(index).connectedTo(far, false, true);
    for (unsigned j = 0; j < far.length(); ++j) {
        MPlug plug = far[j];
        // Through group parts, tweaks, UV tweaks and other deformers down to the shape.
        MItDependencyGraph walk(plug, MFn::kShape, MItDependencyGraph::kDownstream);
        walk.disablePruningOnFilter();
        if (!walk.isDone()) return MDagPath::getAPathTo(walk.currentItem(), path);
    }
    return MStatus::kInvalidParameter;
}

MStatus MFnGeometryFilter::setEnvelope(float envelope)
{
    MStatus status;
    MPlug plug = findPlug("envelope", &status);
    if (!status) return status;
    return plug.setValue(envelope);
}

unsigned int MFnSkinCluster::influenceObjects(MDagPathArray& paths, MStatus* status) const
{
    paths.clear();
    if (!node()) {
        report(status, MStatus::kInvalidParameter);
        return 0;
    }
    std::vector<unsigned> indices;
    connectedInfluences(*this, indices, &paths);
    report(status, MStatus::kSuccess);
    return paths.length();
}

MStatus MFnSkinCluster::getWeights(const MDagPath& path, const MObject& component, MDoubleArray& weights,
                                   unsigned int& influenceCount) const
{
    weights.clear();
    if (!node() || !path.isValid()) return MStatus::kInvalidParameter;
    auto* vertices = dynamic_cast<const vqmhost::SingleIndexedComponent*>(component.hostData().get());
    if (!vertices || vertices->kind != MFn::kMeshVertComponent) return MStatus::kInvalidParameter;
    MStatus status;
    indexForOutputShape(path.node(), &status);
    if (!status) return MStatus::kInvalidParameter;
    std::vector<unsigned> influences;
    connectedInfluences(*this, influences, nullptr);
    influenceCount = unsigned(influences.size());
    MPlug weightList = findPlug("weightList", &status);
    if (!status) return status;
    for (int vertex : vertices->elements) {
        if (vertex < 0) return MStatus::kInvalidParameter;
        MPlug row = weightList.elementByLogicalIndex(unsigned(vertex)).child(0);
        for (unsigned j : influences) weights.append(row.elementByLogicalIndex(j).asDouble());
    }
    return MStatus::kSuccess;
}
