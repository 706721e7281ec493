// The Scene stage: walks the DAG from the world, writes the Scene section, and fills the
// containers that tell the later stages what exists and which ids it got.
#pragma once

#include <maya/MFnMesh.h>
#include <maya/MFnNurbsCurve.h>
#include <maya/MFnTransform.h>
#include <maya/MSelectionList.h>
#include <maya/MStatus.h>

#include "plugin/RunState.h"
#include "scene/NodeFilter.h"

#include <cstdint>
#include <ostream>

namespace vqm {

class SceneExporter {
public:
    SceneExporter(bool lights, bool cameras, bool defaultCameras, bool particleSystems, bool shapes, bool skinWeights,
                  bool mergeGroups, bool nurbsCurves, bool ik, bool selection, bool ignoreBindPoses, bool verbose);

    MStatus exportScene(FileMap& fileMap, ShapeMap& shapeMap, MaterialMap& materialMap, DynamicMap& dynamicMap,
                        NodeMap& nodeMap, MergeGroupList& mergeGroups, AttachmentList& attachments,
                        BoundingVolumeSourceMap& boundingVolumeSources, std::ostream& buffer);

    // Multiplying a host length by it gives the length in the scene's user unit.
    double unitScale() const { return unitScale_; }

    // Whether the transform is exported, and as what.
    bool filterNode(const MFnTransform& transform, NodeFilterResult& result);
    // The element of an accepted transform with everything below it.
    void exportNode(const MFnTransform& transform, const NodeFilterResult& result, bool compoundDynamic,
                    unsigned depth, std::ostream& out);

    // Element writers shared by all elements of the Scene section.
    void writeCommonAttributes(const MFnTransform& transform, NodeMap& nodeMap, std::ostream& out,
                               bool withVisibility, bool withLod, bool withTransform, const MString* nameOverride);
    void writeElementTail(const MFnTransform& transform, NodeMap& nodeMap, std::ostream& out);
    void writeTransformGroup(const MFnTransform& transform, NodeMap& nodeMap, std::ostream& out);
    // The opening of a Shape element of a mesh (kinds 1 and 3) or a NURBS curve (kind 6).
    void writeMeshShape(const MFnTransform& transform, const MFnMesh& mesh, bool cpuMesh, bool compoundDynamic,
                        std::ostream& out);
    void writeCurveShape(const MFnTransform& transform, const MFnNurbsCurve& curve, std::ostream& out);
    // The children of a mesh of kind 3, at depth: folded into one attachment shape where they can be.
    void exportAttachments(const MFnTransform& parentTransform, const NodeFilterResult& parentResult,
                           const MFnMesh& parentMesh, bool compoundDynamic, unsigned depth, std::ostream& out);

private:
    void addPathWithAncestors(const MObject& object);
    ShapeRecord& enterShape(const std::string& key, const MObject& object, bool isSplit, bool cpuMesh);
    bool filterChild(const MFnTransform& transform, const MString& name, const MObject& child, unsigned index,
                     NodeFilterResult& result);

    bool lights_, cameras_, defaultCameras_, particleSystems_, shapes_, skinWeights_, mergeGroups_, nurbsCurves_, ik_,
        selection_, ignoreBindPoses_, verbose_;
    MSelectionList selectionList_;
    double unitScale_;
    uint32_t nextNodeId_ = 1;
    uint32_t nextShapeId_ = 1;

    // The containers of the run in progress.
    struct Containers {
        FileMap* files = nullptr;
        ShapeMap* shapes = nullptr;
        MaterialMap* materials = nullptr;
        DynamicMap* dynamics = nullptr;
        NodeMap* nodes = nullptr;
        MergeGroupList* mergeGroups = nullptr;
        AttachmentList* attachments = nullptr;
        BoundingVolumeSourceMap* boundingVolumeSources = nullptr;
    } run_;
};

}  // namespace vqm
