// Reading the transformation of transform and joint nodes from their plugs, and the matrices that
// it composes to. Shared by the transform function sets, DAG paths and matrix data.
#pragma once

#include <maya/MMatrix.h>
#include <maya/MQuaternion.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MVector.h>

#include <string>
#include <vector>

namespace vqmhost {

class Node;

// A number plug of the node, or the fallback when the node has no such attribute.
double readNumber(Node* node, const char* attribute, double fallback);
// A numeric triple; a connection into the compound itself counts for its children.
MVector readTriple(Node* node, const char* attribute, const MVector& fallback);

MTransformationMatrix transformationOf(Node* node);
MQuaternion jointOrientOf(Node* node);
// S * RO * R * JO * RP ... composed with a joint orient after the rotation.
MMatrix composeWithJointOrient(const MTransformationMatrix& components, const MQuaternion& jointOrient);
// The node's own matrix: identity for nodes that are no transforms.
MMatrix localMatrixOf(Node* node);
// Product of the local matrices from the last node of the path up to the first.
MMatrix pathMatrix(const std::vector<Node*>& path);

// Reads "xform" matrix words (scale, rotation, order, translation, shear, pivots, orientation and
// joint orient quaternions, ...) into components; false with a reason when they do not fit.
// Matrix data carries no unit: lengths are centimetres and angles radians, as inside the host.
bool parseXformWords(const std::vector<std::string>& words, MTransformationMatrix& components,
                     MQuaternion& jointOrient, std::string& error);

}  // namespace vqmhost
