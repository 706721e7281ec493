// Level of detail distances, from a "lod_<distance>" node name or from the vQM_lod attributes.
#pragma once

#include <maya/MFnDependencyNode.h>

#include <ostream>

namespace vqm {

// Writes ` lodDistance="0 ..."`, or nothing when the node has no levels of detail.
void writeLevelOfDetail(const MFnDependencyNode& node, std::ostream& out);

}  // namespace vqm
