// Function set of skin clusters.
#pragma once

#include <maya/MFnGeometryFilter.h>

class MFnSkinCluster : public MFnGeometryFilter {
public:
    MFnSkinCluster() = default;
    MFnSkinCluster(MObject& object, MStatus* status = nullptr);
    MFnSkinCluster(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override { return MFn::kSkinClusterFilter; }

    MStatus setObject(const MObject& object);
};
