// Tables of vQM_ attributes written as XML attributes when they differ from their defaults.
#pragma once

#include <maya/MFnDependencyNode.h>

#include <cstddef>
#include <ostream>

namespace vqm {

struct AttributeRow {
    enum Kind { Bool = 0, Float = 1, Int = 2 } kind;
    bool defaultBool;
    float defaultFloat;
    int defaultInt;
    const char* attributeName;  // in the host
    const char* outputName;     // in the document
};

struct AttributeTable {
    const AttributeRow* rows;
    size_t count;
};

extern const AttributeTable GroupAttributeTable;      // a TransformGroup that is no physics joint
extern const AttributeTable JointAttributeTable;      // a TransformGroup with vQM_joint
extern const AttributeTable RigidBodyAttributeTable;  // a Shape that is a rigid body

void writeAttributeTable(const MFnDependencyNode& node, const AttributeTable& rows, std::ostream& out);

}  // namespace vqm
