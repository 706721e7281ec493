// The opening of a TransformGroup: common attributes, then rigid-body group attributes, or for a
// physics joint its drive attributes and limits.
#include "scene/SceneExporter.h"

#include "plugin/HostHelpers.h"
#include "scene/AttributeTables.h"

namespace vqm {

namespace {

struct LimitColumn {
    const char* name;
    MFnTransform::LimitType type;
    bool angle;  // written in degrees; translation limits go out as the host gives them
};

const LimitColumn kLimits[] = {
    {"rotMinX", MFnTransform::kRotateMinX, true},       {"rotMinY", MFnTransform::kRotateMinY, true},
    {"rotMinZ", MFnTransform::kRotateMinZ, true},       {"rotMaxX", MFnTransform::kRotateMaxX, true},
    {"rotMaxY", MFnTransform::kRotateMaxY, true},       {"rotMaxZ", MFnTransform::kRotateMaxZ, true},
    {"transMinX", MFnTransform::kTranslateMinX, false}, {"transMinY", MFnTransform::kTranslateMinY, false},
    {"transMinZ", MFnTransform::kTranslateMinZ, false}, {"transMaxX", MFnTransform::kTranslateMaxX, false},
    {"transMaxY", MFnTransform::kTranslateMaxY, false}, {"transMaxZ", MFnTransform::kTranslateMaxZ, false},
};

}  // namespace

void SceneExporter::writeTransformGroup(const MFnTransform& transform, NodeMap& nodeMap, std::ostream& out)
{
    out << "<TransformGroup";
    writeCommonAttributes(transform, nodeMap, out, true, true, true, nullptr);
    bool physicsJoint = false;
    readBool(transform, "vQM_joint", physicsJoint);
    if (!physicsJoint) {
        writeAttributeTable(transform, GroupAttributeTable, out);
        return;
    }
    // A physics joint, whatever the host's node type.
    out << " joint=\"true\"";
    writeAttributeTable(transform, JointAttributeTable, out);
    for (const LimitColumn& limit : kLimits) {
        if (!transform.isLimited(limit.type)) continue;
        double value = transform.limitValue(limit.type);
        out << ' ' << limit.name << "=\"" << (limit.angle ? radiansToDegrees(value) : value) << '"';
    }
}

}  // namespace vqm
