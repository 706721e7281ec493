// The spaces that transform components are given in.
#pragma once

class MSpace {
public:
    enum Space {
        kInvalid = 0,
        kTransform = 1,      // the node's own attribute values
        kPreTransform = 2,
        kPostTransform = 3,
        kWorld = 4,
        kLast = 5,
        kObject = kPreTransform,
    };
};
