// MFnTransform and MFnIkJoint over the plugs of transform and joint nodes, and the matrices of
// DAG paths.
#include <maya/MDagPath.h>
#include <maya/MFnIkJoint.h>
#include <maya/MFnTransform.h>
#include <maya/MMatrix.h>

#include "StatusReport.h"
#include "Graph.h"
#include "TransformNodes.h"

#include <cmath>

using namespace vqmhost;

static MStatus writeNumber(Node* node, const std::string& attribute, double value)
{
    PlugPath path;
    if (!node || !parsePlugPath(node, attribute, path, false, AttrType::Generic, nullptr)) return MStatus::kFailure;
    return MPlug(node, path).setValue(value);
}

static MStatus writeTriple(Node* node, const char* stem, const MVector& value)
{
    static const char* const axes[] = {"X", "Y", "Z"};
    for (unsigned i = 0; i < 3; ++i) {
        MStatus s = writeNumber(node, std::string(stem) + axes[i], value[i]);
        if (!s) return s;
    }
    return MStatus::kSuccess;
}

// ---- MFnTransform

MFnTransform::MFnTransform(MObject& object, MStatus* status) : MFnTransform(static_cast<const MObject&>(object), status) {}

MFnTransform::MFnTransform(const MObject& object, MStatus* status)
{
    report(status, setObject(object).statusCode());
}

MFnTransform::MFnTransform(const MDagPath& path, MStatus* status)
{
    report(status, setObject(path).statusCode());
}

MStatus MFnTransform::setObject(const MObject& object)
{
    if (!object.hasFn(MFn::kTransform)) {
        MFnDagNode::setObject(MObject());
        return MStatus::kInvalidParameter;
    }
    return MFnDagNode::setObject(object);
}

MStatus MFnTransform::setObject(const MDagPath& path)
{
    if (!path.hasFn(MFn::kTransform) || path.length() == 0) {
        MFnDagNode::setObject(MObject());
        return MStatus::kInvalidParameter;
    }
    return MFnDagNode::setObject(path);
}

MTransformationMatrix MFnTransform::transformation(MStatus* status) const
{
    report(status, node() ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return transformationOf(node());
}

MVector MFnTransform::getTranslation(MSpace::Space, MStatus* status) const
{
    report(status, node() ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return readTriple(node(), "translate", MVector::zero);
}

MStatus MFnTransform::setTranslation(const MVector& vector, MSpace::Space)
{
    return writeTriple(node(), "translate", vector);
}

MStatus MFnTransform::getRotation(double rotation[3], MTransformationMatrix::RotationOrder& order) const
{
    if (!node()) return MStatus::kInvalidParameter;
    return transformationOf(node()).getRotation(rotation, order);
}

MStatus MFnTransform::getRotation(MEulerRotation& rotation) const
{
    if (!node()) return MStatus::kInvalidParameter;
    rotation = transformationOf(node()).eulerRotation();
    return MStatus::kSuccess;
}

MStatus MFnTransform::getRotation(MQuaternion& rotation, MSpace::Space) const
{
    if (!node()) return MStatus::kInvalidParameter;
    rotation = transformationOf(node()).rotation();
    return MStatus::kSuccess;
}

MStatus MFnTransform::setRotation(const double rotation[3], MTransformationMatrix::RotationOrder order)
{
    if (order <= MTransformationMatrix::kInvalid || order >= MTransformationMatrix::kLast)
        return MStatus::kInvalidParameter;
    MStatus s = writeTriple(node(), "rotate", MVector(rotation));
    return s ? writeNumber(node(), "rotateOrder", int(order) - 1) : s;
}

MStatus MFnTransform::setRotation(const MEulerRotation& rotation)
{
    double angles[3] = {rotation.x, rotation.y, rotation.z};
    return setRotation(angles, MTransformationMatrix::RotationOrder(int(rotation.order) + 1));
}

MStatus MFnTransform::getScale(double scale[3]) const
{
    if (!node()) return MStatus::kInvalidParameter;
    readTriple(node(), "scale", MVector::one).get(scale);
    return MStatus::kSuccess;
}

MStatus MFnTransform::setScale(const double scale[3])
{
    return writeTriple(node(), "scale", MVector(scale));
}

MStatus MFnTransform::getShear(double shear[3]) const
{
    if (!node()) return MStatus::kInvalidParameter;
    return transformationOf(node()).getShear(shear, MSpace::kTransform);
}

MQuaternion MFnTransform::rotateOrientation(MSpace::Space, MStatus* status) const
{
    report(status, node() ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return MEulerRotation(readTriple(node(), "rotateAxis", MVector::zero)).asQuaternion();
}

MStatus MFnTransform::setRotateOrientation(const MQuaternion& orientation, MSpace::Space, bool)
{
    return writeTriple(node(), "rotateAxis", orientation.asEulerRotation().asVector());
}

MTransformationMatrix::RotationOrder MFnTransform::rotationOrder(MStatus* status) const
{
    report(status, node() ? MStatus::kSuccess : MStatus::kInvalidParameter);
    if (!node()) return MTransformationMatrix::kInvalid;
    return transformationOf(node()).rotationOrder();
}

MStatus MFnTransform::setRotationOrder(MTransformationMatrix::RotationOrder order, bool reorder)
{
    if (order <= MTransformationMatrix::kInvalid || order >= MTransformationMatrix::kLast)
        return MStatus::kInvalidParameter;
    if (reorder) {
        MEulerRotation rotation;
        getRotation(rotation);
        return setRotation(rotation.reorder(MEulerRotation::RotationOrder(int(order) - 1)));
    }
    return writeNumber(node(), "rotateOrder", int(order) - 1);
}

MVector MFnTransform::rotatePivot(MSpace::Space, MStatus* status) const
{
    report(status, node() ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return readTriple(node(), "rotatePivot", MVector::zero);
}

MVector MFnTransform::scalePivot(MSpace::Space, MStatus* status) const
{
    report(status, node() ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return readTriple(node(), "scalePivot", MVector::zero);
}

// The limit's value and enable attributes; shears have none.
static bool limitAttributes(MFnTransform::LimitType type, std::string& value, std::string& enable)
{
    int t = int(type);
    const char* family;
    if (t >= MFnTransform::kScaleMinX && t <= MFnTransform::kScaleMaxZ) family = "Scale";
    else if (t >= MFnTransform::kRotateMinX && t <= MFnTransform::kRotateMaxZ) family = "Rot";
    else if (t >= MFnTransform::kTranslateMinX && t <= MFnTransform::kTranslateMaxZ) family = "Trans";
    else return false;
    int offset = t % 6;  // min x, max x, min y, max y, min z, max z
    static const char* const axes[] = {"X", "Y", "Z"};
    value = std::string(offset % 2 ? "max" : "min") + family + axes[offset / 2] + "Limit";
    enable = value + "Enable";
    return true;
}

bool MFnTransform::isLimited(LimitType type, MStatus* status) const
{
    std::string value, enable;
    if (!node() || !limitAttributes(type, value, enable)) {
        report(status, MStatus::kInvalidParameter);
        return false;
    }
    report(status, MStatus::kSuccess);
    return readNumber(node(), enable.c_str(), 0.0) != 0.0;
}

double MFnTransform::limitValue(LimitType type, MStatus* status) const
{
    std::string value, enable;
    if (!node() || !limitAttributes(type, value, enable)) {
        report(status, MStatus::kInvalidParameter);
        return 0.0;
    }
    report(status, MStatus::kSuccess);
    return readNumber(node(), value.c_str(), 0.0);
}

MStatus MFnTransform::enableLimit(LimitType type, bool enable)
{
    std::string value, enableName;
    if (!limitAttributes(type, value, enableName)) return MStatus::kInvalidParameter;
    return writeNumber(node(), enableName, enable ? 1.0 : 0.0);
}

MStatus MFnTransform::setLimit(LimitType type, double limit)
{
    std::string value, enable;
    if (!limitAttributes(type, value, enable)) return MStatus::kInvalidParameter;
    return writeNumber(node(), value, limit);
}

// ---- MFnIkJoint

MFnIkJoint::MFnIkJoint(MObject& object, MStatus* status) : MFnIkJoint(static_cast<const MObject&>(object), status) {}

MFnIkJoint::MFnIkJoint(const MObject& object, MStatus* status)
{
    report(status, setObject(object).statusCode());
}

MFnIkJoint::MFnIkJoint(const MDagPath& path, MStatus* status)
{
    report(status, setObject(path).statusCode());
}

MStatus MFnIkJoint::setObject(const MObject& object)
{
    if (!object.hasFn(MFn::kJoint)) {
        MFnTransform::setObject(MObject());
        return MStatus::kInvalidParameter;
    }
    return MFnTransform::setObject(object);
}

MStatus MFnIkJoint::setObject(const MDagPath& path)
{
    if (!path.hasFn(MFn::kJoint)) {
        MFnTransform::setObject(MObject());
        return MStatus::kInvalidParameter;
    }
    return MFnTransform::setObject(path);
}

MStatus MFnIkJoint::getOrientation(MQuaternion& orientation) const
{
    if (!node()) return MStatus::kInvalidParameter;
    orientation = jointOrientOf(node());
    return MStatus::kSuccess;
}

MStatus MFnIkJoint::getOrientation(MEulerRotation& orientation) const
{
    if (!node()) return MStatus::kInvalidParameter;
    orientation = MEulerRotation(readTriple(node(), "jointOrient", MVector::zero));
    return MStatus::kSuccess;
}

MStatus MFnIkJoint::setOrientation(const MEulerRotation& orientation)
{
    return writeTriple(node(), "jointOrient", orientation.reorder(MEulerRotation::kXYZ).asVector());
}

// ---- MDagPath matrices

MMatrix MDagPath::inclusiveMatrix(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return pathMatrix(hostNodes());
}

MMatrix MDagPath::exclusiveMatrix(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    if (hostNodes().empty()) return MMatrix();
    return pathMatrix(std::vector<Node*>(hostNodes().begin(), hostNodes().end() - 1));
}

MMatrix MDagPath::inclusiveMatrixInverse(MStatus* status) const
{
    return inclusiveMatrix(status).inverse();
}

MMatrix MDagPath::exclusiveMatrixInverse(MStatus* status) const
{
    return exclusiveMatrix(status).inverse();
}
