// The bind pose of a joint, as the dagPose node that holds it recorded it.
#pragma once

#include <maya/MFnIkJoint.h>
#include <maya/MObject.h>

namespace vqm {

// The joint's entry of the xformMatrix array of the one pose its bindPose plug feeds; false when
// the plug feeds no pose or more than one, or the entry cannot be read.
bool findBindPoseMatrix(const MFnIkJoint& joint, MObject& matrixData);

}  // namespace vqm
