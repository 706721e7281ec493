// Folding a transform's rotate orientation and a joint's orient into its rotation, so that the
// document holds one XYZ rotation per element.
#pragma once

#include <maya/MTransformationMatrix.h>

#include "plugin/RunState.h"

namespace vqm {

// rotation: three angles in radians in the given order; on return, the whole rotation in XYZ order.
void bakeRotation(const NodeRecord& record, double rotation[3], MTransformationMatrix::RotationOrder order);

}  // namespace vqm
