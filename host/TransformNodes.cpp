// The transformation of transform and joint nodes as their plugs give it, and "xform" matrix data.
#include "TransformNodes.h"

#include <maya/MPlug.h>
#include <maya/MPlugArray.h>

#include "Graph.h"
#include "HostData.h"

#include <cmath>
#include <cstdlib>

namespace vqmhost {

static bool plugOf(Node* node, const char* attribute, MPlug& plug)
{
    PlugPath path;
    if (!node || !parsePlugPath(node, attribute, path, false, AttrType::Generic, nullptr)) return false;
    plug = MPlug(node, path);
    return true;
}

double readNumber(Node* node, const char* attribute, double fallback)
{
    MPlug plug;
    double value = fallback;
    if (plugOf(node, attribute, plug) && !plug.getValue(value)) value = fallback;
    return value;
}

MVector readTriple(Node* node, const char* attribute, const MVector& fallback)
{
    MPlug plug;
    if (!plugOf(node, attribute, plug) || plug.numChildren() != 3) return fallback;
    // A compound driven as a whole (joint.s -> child.is) hands its source's children over.
    MPlugArray sources;
    if (plug.connectedTo(sources, true, false) && sources.length() == 1 && sources[0].numChildren() == 3)
        plug = sources[0];
    MVector result = fallback;
    for (unsigned i = 0; i < 3; ++i) {
        double value;
        if (plug.child(i).getValue(value)) result[i] = value;
    }
    return result;
}

MTransformationMatrix transformationOf(Node* node)
{
    MTransformationMatrix t;
    if (!node || !node->hasFn(MFn::kTransform)) return t;
    t.setTranslation(readTriple(node, "translate", MVector::zero), MSpace::kTransform);
    MVector r = readTriple(node, "rotate", MVector::zero);
    int order = int(readNumber(node, "rotateOrder", 0.0));
    if (order < 0 || order > 5) order = 0;
    t.rotateTo(MEulerRotation(r, MEulerRotation::RotationOrder(order)));
    double values[3];
    readTriple(node, "scale", MVector::one).get(values);
    t.setScale(values, MSpace::kTransform);
    values[0] = readNumber(node, "shearXY", 0.0);
    values[1] = readNumber(node, "shearXZ", 0.0);
    values[2] = readNumber(node, "shearYZ", 0.0);
    t.setShear(values, MSpace::kTransform);
    t.setRotationOrientation(MEulerRotation(readTriple(node, "rotateAxis", MVector::zero)).asQuaternion());
    t.setScalePivot(readTriple(node, "scalePivot", MVector::zero), MSpace::kTransform, false);
    t.setScalePivotTranslation(readTriple(node, "scalePivotTranslate", MVector::zero), MSpace::kTransform);
    t.setRotatePivot(readTriple(node, "rotatePivot", MVector::zero), MSpace::kTransform, false);
    t.setRotatePivotTranslation(readTriple(node, "rotatePivotTranslate", MVector::zero), MSpace::kTransform);
    return t;
}

MQuaternion jointOrientOf(Node* node)
{
    if (!node || !node->hasFn(MFn::kJoint)) return MQuaternion();
    return MEulerRotation(readTriple(node, "jointOrient", MVector::zero)).asQuaternion();
}

MMatrix composeWithJointOrient(const MTransformationMatrix& t, const MQuaternion& jointOrient)
{
    MMatrix scalePivotTranslation, rotatePivot, rotatePivotInverse, translation;
    MVector spt = t.scalePivotTranslation(MSpace::kTransform), rp = t.rotatePivot(MSpace::kTransform),
            rpt = t.rotatePivotTranslation(MSpace::kTransform), tr = t.translation(MSpace::kTransform);
    for (unsigned i = 0; i < 3; ++i) {
        scalePivotTranslation(3, i) = spt[i];
        rotatePivotInverse(3, i) = -rp[i];
        rotatePivot(3, i) = rp[i];
        translation(3, i) = tr[i] + rpt[i];
    }
    return t.asScaleMatrix() * scalePivotTranslation * rotatePivotInverse * t.rotationOrientation().asMatrix() *
           t.eulerRotation().asMatrix() * jointOrient.asMatrix() * rotatePivot * translation;
}

MMatrix localMatrixOf(Node* node)
{
    if (!node || !node->hasFn(MFn::kTransform)) return MMatrix();
    MTransformationMatrix t = transformationOf(node);
    if (!node->hasFn(MFn::kJoint)) return t.asMatrix();
    // Joints: S * RO * R * JO * IS * T, IS undoing the parent's scale when compensation is on.
    MMatrix matrix = composeWithJointOrient(t, jointOrientOf(node));
    if (readNumber(node, "segmentScaleCompensate", 1.0) != 0.0) {
        MVector inverseScale = readTriple(node, "inverseScale", MVector::one);
        MMatrix undo;
        for (unsigned i = 0; i < 3; ++i) undo(i, i) = inverseScale[i] != 0.0 ? 1.0 / inverseScale[i] : 1.0;
        MMatrix translation;
        for (unsigned i = 0; i < 3; ++i) translation(3, i) = matrix(3, i);
        for (unsigned i = 0; i < 3; ++i) matrix(3, i) = 0.0;
        matrix = matrix * undo * translation;
    }
    return matrix;
}

MMatrix pathMatrix(const std::vector<Node*>& path)
{
    MMatrix result;
    for (auto it = path.rbegin(); it != path.rend(); ++it) result *= localMatrixOf(*it);
    return result;
}

static bool wordNumber(const std::string& word, double& value)
{
    if (word == "yes" || word == "on" || word == "true") return value = 1.0, true;
    if (word == "no" || word == "off" || word == "false") return value = 0.0, true;
    char* end = nullptr;
    value = strtod(word.c_str(), &end);
    return !word.empty() && end && *end == '\0';
}

bool parseXformWords(const std::vector<std::string>& words, MTransformationMatrix& t, MQuaternion& jointOrient,
                     std::string& error)
{
    // scale 3, rotate 3, rotation order 1, translate 3, shear 3, scale pivot 3, scale pivot
    // translation 3, rotate pivot 3, rotate pivot translation 3, rotate axis quaternion 4, joint
    // orient quaternion 4, inverse parent scale 3, compensate for parent scale 1.
    const size_t kNeeded = 37;
    if (words.size() < kNeeded - 4) {
        error = "an xform matrix needs " + std::to_string(kNeeded) + " values, found " + std::to_string(words.size());
        return false;
    }
    double v[kNeeded] = {};
    for (size_t i = 0; i < words.size() && i < kNeeded; ++i)
        if (!wordNumber(words[i], v[i])) {
            error = "'" + words[i] + "' in an xform matrix is no number";
            return false;
        }
    int order = int(v[6]);
    if (order < 0 || order > 5) {
        error = "rotation order " + words[6] + " of an xform matrix is out of range";
        return false;
    }
    t = MTransformationMatrix();
    t.setScale(v + 0, MSpace::kTransform);
    t.rotateTo(MEulerRotation(v[3], v[4], v[5], MEulerRotation::RotationOrder(order)));
    t.setTranslation(MVector(v + 7), MSpace::kTransform);
    t.setShear(v + 10, MSpace::kTransform);
    t.setScalePivot(MVector(v + 13), MSpace::kTransform, false);
    t.setScalePivotTranslation(MVector(v + 16), MSpace::kTransform);
    t.setRotatePivot(MVector(v + 19), MSpace::kTransform, false);
    t.setRotatePivotTranslation(MVector(v + 22), MSpace::kTransform);
    t.setRotationOrientation(MQuaternion(v + 25).normal());
    jointOrient = words.size() >= 33 ? MQuaternion(v + 29).normal() : MQuaternion();
    return true;
}

MatrixData::MatrixData(const MTransformationMatrix& components, const MQuaternion& orient)
    : isTransformation(true), transformation(components), jointOrient(orient)
{
    MMatrix m = composeWithJointOrient(components, orient);
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) values[r * 4 + c] = m(unsigned(r), unsigned(c));
}

}  // namespace vqmhost
