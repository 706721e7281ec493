// Function set of skin clusters.
#pragma once

#include <maya/MFnGeometryFilter.h>

class MDagPathArray;
class MDoubleArray;

class MFnSkinCluster : public MFnGeometryFilter {
public:
    MFnSkinCluster() = default;
    MFnSkinCluster(MObject& object, MStatus* status = nullptr);
    MFnSkinCluster(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override { return MFn::kSkinClusterFilter; }

    MStatus setObject(const MObject& object);

    // The influences connected to matrix[j], in ascending j; the count.
    unsigned int influenceObjects(MDagPathArray& paths, MStatus* status = nullptr) const;
    // The weights of one vertex component of the shape at path, one per influence in the order of
    // influenceObjects; influenceCount receives their number.
    MStatus getWeights(const MDagPath& path, const MObject& component, MDoubleArray& weights,
                       unsigned int& influenceCount) const;
};
