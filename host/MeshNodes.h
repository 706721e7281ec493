// Meshes in the graph: their own data from files, and the geometry they show after their
// history (group parts, tweaks, skin clusters, UV tweaks) is evaluated.
#pragma once

#include "Graph.h"
#include "MeshGeometry.h"

#include <memory>
#include <string>

namespace vqmhost {

// The data a mesh node holds itself (made empty on first use).
MeshGeometry& ownGeometry(Node& mesh);

// The hook through which a scene file fills a mesh: 1 read, 0 not mesh data, -1 refused.
int readMeshFileValues(Node& node, const PlugPath& path, const FileValues& values);

// The geometry the mesh shows: what drives its inMesh, evaluated, else its own data; the .pt
// tweaks are added in both cases. Null when a node of its history cannot be evaluated; problem
// then names it. Faces with bad vertex numbers are left out, with their description in problem.
std::shared_ptr<const MeshGeometry> evaluateMesh(Node* mesh, std::string* problem);

// The geometry that leaves a plug of a node (a mesh's outMesh, a deformer's outputGeometry[i]...).
std::shared_ptr<const MeshGeometry> evaluateGeometry(Node* node, const PlugPath& path, std::string* problem,
                                                     int depth = 0);

}  // namespace vqmhost
