// The node filter: whether a transform is exported, and as what, decided by the transform and
// its children.
#include "scene/SceneExporter.h"

#include <maya/MFnDagNode.h>
#include <maya/MGlobal.h>

#include "plugin/HostHelpers.h"

#include <cstdio>
#include <cstring>

namespace vqm {

static bool contains(const MString& text, const char* part)
{
    return std::strstr(text.asChar(), part) != nullptr;
}

static bool isDefaultCameraName(const MString& name)
{
    return name == "persp" || name == "top" || name == "side" || name == "front";
}

bool SceneExporter::filterNode(const MFnTransform& transform, NodeFilterResult& result)
{
    if (selection_) {
        MDagPath path;
        transform.getPath(path);
        if (!selectionList_.hasItem(path, MObject::kNullObj)) return false;
    }
    MObject object = transform.object();
    if (object.hasFn(HostType::kManipulator3D)) return false;
    if (!ik_ && (object.hasFn(HostType::kIkHandle) || object.hasFn(HostType::kIkEffector))) return false;
    if (transform.inUnderWorld()) return false;
    if (transform.isDefaultNode()) return false;

    result.kind = ElementKind::Group;
    result.shapeChild = 0;
    result.mergeGroup = 0;
    unsigned count = transform.childCount();
    if (count == 0) return true;  // an empty group

    const MString name = transform.name();
    bool accepted = false;
    // A later child overwrites what an earlier one decided: the last shape under a transform counts.
    for (unsigned i = 0; i < count; ++i)
        if (filterChild(transform, name, transform.child(i), i, result)) accepted = true;
    return accepted;
}

// Settles one child by the first test that applies to it; true when it accepts the transform.
bool SceneExporter::filterChild(const MFnTransform& transform, const MString& name, const MObject& child,
                                unsigned index, NodeFilterResult& result)
{
    auto decide = [&](ElementKind kind) {
        result.kind = kind;
        result.shapeChild = index;
        return true;
    };
    if (child.hasFn(HostType::kEmitter)) return decide(ElementKind::DynamicInstance);

    if (child.hasFn(HostType::kMesh) && shapes_ && !contains(name, "shaderBallGeom1")) {
        MFnDagNode mesh(child);
        MDagPath meshPath;
        mesh.getPath(meshPath);
        if (!MFnDagNode(meshPath).isIntermediateObject()) {
            MString boundingVolume;
            readString(transform, "vQM_boundingVolume", boundingVolume);
            if (boundingVolume.length() != 0) {
                // A mesh that stands for another shape's bounds is no shape of its own.
                run_.boundingVolumeSources->emplace(boundingVolume.str(),
                                                    BoundingVolumeSource{transform.object(), child});
                return false;
            }
            result.mergeGroup = 0;
            if (mergeGroups_) readInt(transform, "vQM_mergeGroup", result.mergeGroup);
            readBool(transform, "vQM_cpuMesh", result.cpuMesh);
            int splitType = 0;
            readInt(transform, "vQM_splitType", splitType);
            return decide(result.mergeGroup >= 1 ? ElementKind::MergedMesh
                          : splitType >= 1       ? ElementKind::SplitMesh
                                                 : ElementKind::Mesh);
        }
    }
    if (child.hasFn(HostType::kNurbsCurve) && shapes_ && nurbsCurves_) return decide(ElementKind::NurbsCurve);

    if (child.hasFn(HostType::kLight) && lights_) {
        if (child.hasFn(HostType::kAreaLight) && contains(name, "MayaMtlView_")) {
            char text[256];
            std::snprintf(text, sizeof text, "vqmExport: Skipping area light %s", name.asChar());
            MGlobal::displayWarning(text);
            return false;
        }
        return decide(ElementKind::Light);
    }
    if (child.hasFn(HostType::kCamera) && cameras_ && (defaultCameras_ || !isDefaultCameraName(name))) {
        if (contains(name, "shaderBallCamera1")) {
            MGlobal::displayWarning("vqmExport: Skipping shaderBallCamera1");
            return false;
        }
        return decide(ElementKind::Camera);
    }
    if (child.hasFn(HostType::kTransform)) {
        result.transformChildren.push_back(index);
        return true;
    }
    return false;
}

}  // namespace vqm
