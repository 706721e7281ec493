#include "scene/BindPose.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MPlugArray.h>

namespace vqm {

bool findBindPoseMatrix(const MFnIkJoint& joint, MObject& matrixData)
{
    MStatus status;
    MPlug bindPose = joint.findPlug("bindPose", &status);
    if (!status) return false;
    MPlugArray poses;
    bindPose.connectedTo(poses, false, true);
    if (poses.length() != 1) return false;
    const MPlug& member = poses[0];
    MFnDependencyNode pose(member.node());
    MObject xformMatrix = pose.attribute("xformMatrix", &status);
    if (!status) return false;
    // The pose keeps its members' components under the same index as their world matrices.
    MPlug entry(member.node(), xformMatrix);
    entry.selectAncestorLogicalIndex(member.logicalIndex(), xformMatrix);
    return bool(entry.getValue(matrixData, MDGContext::fsNormal));
}

}  // namespace vqm
