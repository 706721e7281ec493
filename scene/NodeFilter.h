// What the node filter decides a transform becomes.
#pragma once

#include <cstdint>
#include <vector>

namespace vqm {

enum class ElementKind : int {
    Group = 0,            // TransformGroup
    Mesh = 1,             // Shape
    MergedMesh = 2,       // Shape, TransformGroup or a merge group placeholder
    SplitMesh = 3,        // Shape whose children can be folded in as attachments
    DynamicInstance = 4,  // Dynamic
    Camera = 5,
    NurbsCurve = 6,       // Shape
    Light = 7,
};

struct NodeFilterResult {
    ElementKind kind = ElementKind::Group;
    unsigned shapeChild = 0;  // index among the transform's children of the child that decided the kind
    int32_t mergeGroup = 0;
    bool cpuMesh = false;
    std::vector<uint32_t> transformChildren;  // child transforms to walk, in child order
};

}  // namespace vqm
