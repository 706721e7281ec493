// The attributes every element of the Scene section starts with: name, transformation (with the
// orientations folded into one XYZ rotation), visibility and level of detail. Also the NodeMap
// entry through which later stages find the node and learn how its rotation was baked.
#include "scene/SceneExporter.h"

#include <maya/MFnIkJoint.h>
#include <maya/MFnMatrixData.h>
#include <maya/MGlobal.h>

#include "plugin/HostHelpers.h"
#include "scene/BindPose.h"
#include "scene/LevelOfDetail.h"
#include "scene/RotationBaking.h"

namespace vqm {

static bool isIdentity(const MQuaternion& q)
{
    return q.x == 0.0 && q.y == 0.0 && q.z == 0.0 && q.w == 1.0;
}

void SceneExporter::writeCommonAttributes(const MFnTransform& transform, NodeMap& nodeMap, std::ostream& out,
                                          bool withVisibility, bool withLod, bool withTransform,
                                          const MString* nameOverride)
{
    MVector translation = transform.getTranslation(MSpace::kTransform);
    double rotation[3] = {0.0, 0.0, 0.0};
    auto order = MTransformationMatrix::kXYZ;
    transform.getRotation(rotation, order);
    double scale[3] = {1.0, 1.0, 1.0};
    transform.getScale(scale);

    NodeRecord record;
    MQuaternion orientation = transform.rotateOrientation(MSpace::kTransform);
    if (!isIdentity(orientation)) {
        record.rotateOrientation = orientation;
        record.hasRotateOrientation = true;
    }
    record.rotationOrder = int32_t(transform.rotationOrder());

    MObject object = transform.object();
    if (object.hasFn(HostType::kJoint)) {
        MFnIkJoint joint(object);
        if (!ignoreBindPoses_) {
            MObject matrixData;
            if (findBindPoseMatrix(joint, matrixData)) {
                MTransformationMatrix bindPose = MFnMatrixData(matrixData).transformation();
                translation = bindPose.getTranslation(MSpace::kTransform);
                bindPose.getRotation(rotation, order);
                bindPose.getScale(scale, MSpace::kTransform);
            } else {
                MGlobal::displayWarning(MString("vqmExport: Joint without bind pose found. Using current rotation (") +
                                        transform.partialPathName() + ").\n");
            }
        }
        MQuaternion jointOrient;
        joint.getOrientation(jointOrient);
        if (!isIdentity(jointOrient)) {
            record.jointOrient = jointOrient;
            record.hasJointOrient = true;
        }
    }
    bakeRotation(record, rotation, order);
    nodeMap.emplace(transform.partialPathName().str(), record);

    out << " name=\"" << (nameOverride ? *nameOverride : transform.name()) << '"';
    if (withTransform) {
        // Exact comparisons, on the host's values before any unit conversion.
        if (translation.x != 0.0 || translation.y != 0.0 || translation.z != 0.0)
            out << " translation=\"" << translation.x * unitScale_ << ' ' << translation.y * unitScale_ << ' '
                << translation.z * unitScale_ << '"';
        if (rotation[0] != 0.0 || rotation[1] != 0.0 || rotation[2] != 0.0)
            out << " rotation=\"" << radiansToDegrees(rotation[0]) << ' ' << radiansToDegrees(rotation[1]) << ' '
                << radiansToDegrees(rotation[2]) << '"';
        if (scale[0] != 1.0 || scale[1] != 1.0 || scale[2] != 1.0)
            out << " scale=\"" << scale[0] << ' ' << scale[1] << ' ' << scale[2] << '"';
    }
    if (withVisibility) {
        bool visible = true;
        readBool(transform, "visibility", visible);
        if (!visible) out << " visibility=\"false\"";
    }
    if (withLod) writeLevelOfDetail(transform, out);
}

}  // namespace vqm
