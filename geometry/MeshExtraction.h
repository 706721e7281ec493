// Reads one host mesh into a MeshBuilder as unshared triangle corners with the attributes the
// export asks for. The only place where mesh data leaves the host.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

class MFnMesh;
class MFnSkinCluster;

namespace vqm
{

class IndexedTriangleSet;
class MeshBuilder;

// Appends the mesh's triangles in the host's order, one vertex per corner, and adds to the
// builder's flags. matrix (16 x f32, translation in exported units) brings the mesh into the
// shape's space; materialRemap replaces a material index it has an element for. Always true:
// what cannot be read only leaves an attribute or a triangle out, with a warning.
bool extractMesh(const MFnMesh& mesh, const MFnSkinCluster& skinCluster, bool hasSkinCluster, const float* matrix,
                 const std::vector<uint32_t>* materialRemap, bool exportNormals, bool exportUvs, bool exportColors,
                 bool exportSkinWeights, bool verbose, double unitScale, MeshBuilder& builder);

// One mesh alone: extraction, tangents when wanted, weld and the set.
std::unique_ptr<IndexedTriangleSet> extractIndexedTriangleSet(const MFnMesh& mesh, const MFnSkinCluster& skinCluster,
                                                              bool hasSkinCluster, bool exportNormals, bool exportUvs,
                                                              bool exportColors, bool exportSkinWeights, bool verbose,
                                                              double unitScale);

} // namespace vqm
