#include "scene/AttributeTables.h"

#include "plugin/HostHelpers.h"

#include <cmath>

namespace vqm {

namespace {

constexpr AttributeRow boolRow(const char* attribute, const char* output, bool defaultValue)
{
    return AttributeRow{AttributeRow::Bool, defaultValue, 0.0f, 0, attribute, output};
}
constexpr AttributeRow floatRow(const char* attribute, const char* output, float defaultValue)
{
    return AttributeRow{AttributeRow::Float, false, defaultValue, 0, attribute, output};
}
constexpr AttributeRow intRow(const char* attribute, const char* output, int defaultValue)
{
    return AttributeRow{AttributeRow::Int, false, 0.0f, defaultValue, attribute, output};
}

const AttributeRow kGroupRows[] = {
    boolRow("vQM_compound", "compound", false),
    boolRow("vQM_static", "static", false),
    boolRow("vQM_dynamic", "dynamic", false),
    boolRow("vQM_kinematic", "kinematic", false),
    boolRow("vQM_collision", "collision", true),
    boolRow("vQM_ccd", "ccd", false),
    boolRow("vQM_trigger", "trigger", false),
    floatRow("vQM_restitution", "restitution", 0.0f),
    floatRow("vQM_staticFriction", "staticFriction", 0.5f),
    floatRow("vQM_dynamicFriction", "dynamicFriction", 0.5f),
    floatRow("vQM_linearDamping", "linearDamping", 0.0f),
    floatRow("vQM_angularDamping", "angularDamping", 0.01f),
    floatRow("vQM_density", "density", 1.0f),
    intRow("vQM_collisionMask", "collisionMask", 255),
    intRow("vQM_solverIterationCount", "solverIterationCount", 4),
};

const AttributeRow kJointRows[] = {
    boolRow("vQM_projection", "projection", false),
    boolRow("vQM_xAxisDrive", "xAxisDrive", false),
    boolRow("vQM_yAxisDrive", "yAxisDrive", false),
    boolRow("vQM_zAxisDrive", "zAxisDrive", false),
    boolRow("vQM_drivePos", "drivePos", false),
    floatRow("vQM_projDistance", "projDistance", 0.01f),
    floatRow("vQM_driveForceLimit", "driveForceLimit", 100000.0f),
    floatRow("vQM_driveSpring", "driveSpring", 1.0f),
    floatRow("vQM_driveDamping", "driveDamping", 0.01f),
    boolRow("vQM_breakableJoint", "breakableJoint", false),
    floatRow("vQM_jointBreakForce", "jointBreakForce", 0.0f),
    floatRow("vQM_jointBreakTorque", "jointBreakTorque", 0.0f),
};

const AttributeRow kRigidBodyRows[] = {
    boolRow("vQM_compoundChild", "compoundChild", false),
    boolRow("vQM_compound", "compound", false),
    boolRow("vQM_collision", "collision", true),
    boolRow("vQM_ccd", "ccd", false),
    boolRow("vQM_trigger", "trigger", false),
    floatRow("vQM_restitution", "restitution", 0.0f),
    floatRow("vQM_staticFriction", "staticFriction", 0.5f),
    floatRow("vQM_dynamicFriction", "dynamicFriction", 0.5f),
    floatRow("vQM_linearDamping", "linearDamping", 0.0f),
    floatRow("vQM_angularDamping", "angularDamping", 0.01f),
    floatRow("vQM_density", "density", 1.0f),
    intRow("vQM_collisionMask", "collisionMask", 255),
    intRow("vQM_solverIterationCount", "solverIterationCount", 4),
    intRow("vQM_splitType", "splitType", 0),
};

}  // namespace

const AttributeTable GroupAttributeTable{kGroupRows, sizeof kGroupRows / sizeof kGroupRows[0]};
const AttributeTable JointAttributeTable{kJointRows, sizeof kJointRows / sizeof kJointRows[0]};
const AttributeTable RigidBodyAttributeTable{kRigidBodyRows, sizeof kRigidBodyRows / sizeof kRigidBodyRows[0]};

void writeAttributeTable(const MFnDependencyNode& node, const AttributeTable& table, std::ostream& out)
{
    for (size_t i = 0; i < table.count; ++i) {
        const AttributeRow& row = table.rows[i];
        if (!hasAttribute(node, row.attributeName)) continue;
        switch (row.kind) {
        case AttributeRow::Bool: {
            bool value = row.defaultBool;
            readBool(node, row.attributeName, value);
            if (value != row.defaultBool) out << ' ' << row.outputName << (value ? "=\"true\"" : "=\"false\"");
            break;
        }
        case AttributeRow::Float: {
            float value = row.defaultFloat;
            readFloat(node, row.attributeName, value);
            if (std::fabs(value - row.defaultFloat) > 0.0001f) out << ' ' << row.outputName << "=\"" << value << '"';
            break;
        }
        case AttributeRow::Int: {
            int value = row.defaultInt;
            readInt(node, row.attributeName, value);
            if (value != row.defaultInt) out << ' ' << row.outputName << "=\"" << value << '"';
            break;
        }
        }
    }
}

}  // namespace vqm
