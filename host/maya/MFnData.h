// Kinds of typed data an attribute can hold.
#pragma once

class MFnData {
public:
    enum Type {
        kInvalid = 0,
        kNumeric,
        kPlugin,
        kPluginGeometry,
        kString,
        kMatrix,
        kStringArray,
        kDoubleArray,
        kIntArray,
        kPointArray,
        kVectorArray,
        kComponentList,
        kMesh,
        kLattice,
        kNurbsCurve,
        kNurbsSurface,
        kSphere,
        kDynArrayAttrs,
        kDynSweptGeometry,
        kSubdSurface,
        kNObject,
        kNId,
        kAny,
        kLast
    };
};
