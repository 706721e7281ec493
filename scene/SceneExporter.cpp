#include "scene/SceneExporter.h"

#include <maya/MDistance.h>
#include <maya/MFnDagNode.h>
#include <maya/MGlobal.h>
#include <maya/MItDag.h>

#include "plugin/HostHelpers.h"

#include <sstream>
#include <string>

namespace vqm {

SceneExporter::SceneExporter(bool lights, bool cameras, bool defaultCameras, bool particleSystems, bool shapes,
                             bool skinWeights, bool mergeGroups, bool nurbsCurves, bool ik, bool selection,
                             bool ignoreBindPoses, bool verbose)
    : lights_(lights), cameras_(cameras), defaultCameras_(defaultCameras), particleSystems_(particleSystems),
      shapes_(shapes), skinWeights_(skinWeights), mergeGroups_(mergeGroups), nurbsCurves_(nurbsCurves), ik_(ik),
      selection_(selection), ignoreBindPoses_(ignoreBindPoses), verbose_(verbose),
      unitScale_(1.0 / MDistance::uiToInternal(1.0))
{
}

MStatus SceneExporter::exportScene(FileMap& fileMap, ShapeMap& shapeMap, MaterialMap& materialMap,
                                   DynamicMap& dynamicMap, NodeMap& nodeMap, MergeGroupList& mergeGroups,
                                   AttachmentList& attachments, BoundingVolumeSourceMap& boundingVolumeSources,
                                   std::ostream& buffer)
{
    MStatus status;
    MItDag dag(MItDag::kDepthFirst, MFn::kInvalid, &status);
    if (!status) return MStatus::kFailure;
    run_ = Containers{&fileMap, &shapeMap, &materialMap, &dynamicMap, &nodeMap, &mergeGroups, &attachments,
                      &boundingVolumeSources};

    std::ostringstream out;
    out << "  <Scene>\n";
    if (selection_) {
        MSelectionList active;
        MGlobal::getActiveSelectionList(active);
        for (unsigned i = 0; i < active.length(); ++i) {
            MObject object;
            if (active.getDependNode(i, object)) addPathWithAncestors(object);
        }
    }
    // Only the iterator's first item counts: the world, whose children are the roots of the walk.
    if (!dag.isDone()) {
        MFnDagNode world(dag.currentItem());
        unsigned count = world.childCount();
        for (unsigned i = 0; i < count; ++i) {
            MObject child = world.child(i);
            if (!child.hasFn(HostType::kTransform)) continue;
            MFnTransform transform(child);
            NodeFilterResult result;
            if (filterNode(transform, result)) exportNode(transform, result, false, 0, out);
        }
    }
    out << "  </Scene>\n";
    // The skin binding and merge group passes, which fill in placeholders, run on this text once
    // the elements that write placeholders exist.
    buffer << out.str();
    run_ = Containers{};
    return MStatus::kSuccess;
}

// A selected node is exported with its ancestors; its children only when they are selected too.
void SceneExporter::addPathWithAncestors(const MObject& object)
{
    if (!object.hasFn(HostType::kDagNode)) return;
    MFnDagNode node(object);
    MDagPath path;
    node.getPath(path);
    selectionList_.add(path, MObject::kNullObj, false);
    unsigned parents = node.parentCount();
    for (unsigned i = 0; i < parents; ++i) addPathWithAncestors(node.parent(i));
}

void SceneExporter::exportNode(const MFnTransform& transform, const NodeFilterResult& result, bool compoundDynamic,
                               unsigned depth, std::ostream& out)
{
    // Children of a compound rigid body learn whether the compound moves.
    bool childCompoundDynamic = compoundDynamic;
    if (boolAttribute(transform, "vQM_compound", false))
        childCompoundDynamic = boolAttribute(transform, "vQM_dynamic", false) ||
                               boolAttribute(transform, "vQM_kinematic", false) ||
                               boolAttribute(transform, "vQM_trigger", false);

    const std::string indent(2 * (depth + 2), ' ');
    out << indent;
    // Merged meshes, dynamic instances, cameras and lights get their own elements as their
    // writers arrive; until then they stand in the document as plain groups, so that the tree,
    // the ids and NodeMap are already what they will be.
    const char* element = "TransformGroup";
    MFnMesh mesh;
    if (result.kind == ElementKind::Mesh || result.kind == ElementKind::SplitMesh) {
        mesh.setObject(transform.child(result.shapeChild));
        writeMeshShape(transform, mesh, result.cpuMesh, childCompoundDynamic, out);
        element = "Shape";
    } else if (result.kind == ElementKind::NurbsCurve) {
        writeCurveShape(transform, MFnNurbsCurve(transform.child(result.shapeChild)), out);
        element = "Shape";
    } else {
        writeTransformGroup(transform, *run_.nodes, out);
    }
    writeElementTail(transform, *run_.nodes, out);
    if (result.transformChildren.empty()) {
        out << "/>\n";
        return;
    }
    out << ">\n";
    if (result.kind == ElementKind::SplitMesh) {
        exportAttachments(transform, result, mesh, childCompoundDynamic, depth + 1, out);
    } else {
        for (uint32_t index : result.transformChildren) {
            MFnTransform child(transform.child(index));
            NodeFilterResult childResult;
            if (filterNode(child, childResult)) exportNode(child, childResult, childCompoundDynamic, depth + 1, out);
        }
    }
    out << indent << "</" << element << ">\n";
}

}  // namespace vqm
