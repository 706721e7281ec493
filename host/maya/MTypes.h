// Basic definitions shared by the host API headers.
#pragma once

#include <cstddef>

#define PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))

namespace vqmhost {
class Node;
struct Attribute;
class Scene;

// One step of a plug's address: an attribute, and the logical index when it is an array element.
struct PlugStep {
    const Attribute* attribute = nullptr;
    int index = -1;  // -1: the attribute itself (for an array: the whole array)
    bool operator==(const PlugStep& o) const { return attribute == o.attribute && index == o.index; }
    bool operator!=(const PlugStep& o) const { return !(*this == o); }
};
}  // namespace vqmhost

typedef float float2[2];
typedef float float3[3];
typedef double double2[2];
typedef double double3[3];

class MString;
class MStatus;
class MObject;
class MPlug;
class MDagPath;
class MSelectionList;
class MArgList;
