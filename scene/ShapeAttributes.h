// Attributes that Shape elements (and other elements that show geometry) share: shadows, decal
// layer and render flag, and the ids of the mesh's materials.
#pragma once

#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>

#include "plugin/RunState.h"

#include <cstdint>
#include <ostream>
#include <vector>

namespace vqm {

// castsShadows and receiveShadows of the node, always written, false when missing.
void writeShadowAttributes(const MFnDependencyNode& node, std::ostream& out);
// decalLayer when not 0, nonRenderable when set.
void writeDecalAttributes(const MFnDependencyNode& transform, std::ostream& out);

// The material ids of the mesh's shading groups (instance 0), in their order, repeats included;
// "lambert1" when no group gives one. New materials are entered into the map.
void lookupShadingMaterials(const MFnMesh& mesh, MaterialMap& materials, std::vector<uint32_t>& ids);
// materialIds="a,b,c"
void writeMaterialIds(const MFnMesh& mesh, MaterialMap& materials, std::ostream& out);

}  // namespace vqm
