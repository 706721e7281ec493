#include "scene/RotationBaking.h"

#include <maya/MEulerRotation.h>
#include <maya/MQuaternion.h>

namespace vqm {

void bakeRotation(const NodeRecord& record, double rotation[3], MTransformationMatrix::RotationOrder order)
{
    // MEulerRotation numbers the orders one lower than MTransformationMatrix.
    const auto eulerOrder = MEulerRotation::RotationOrder(int(order) - 1);
    MEulerRotation euler(rotation[0], rotation[1], rotation[2], eulerOrder);
    if (!record.hasRotateOrientation && !record.hasJointOrient) {
        if (order == MTransformationMatrix::kXYZ) return;
        euler.reorderIt(MEulerRotation::kXYZ);
    } else {
        // With row vectors the orientation applies before the rotation, the joint orient after it.
        MQuaternion q = euler.asQuaternion();
        if (record.hasRotateOrientation) q = record.rotateOrientation * q;
        if (record.hasJointOrient) q = q * record.jointOrient;
        euler = q.asEulerRotation();
        euler.reorderIt(MEulerRotation::kXYZ);
    }
    rotation[0] = euler.x;
    rotation[1] = euler.y;
    rotation[2] = euler.z;
}

}  // namespace vqm
