// A path through the DAG from the world to a node: one for each instance of the node.
#pragma once

#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <vector>

class MDagPathArray;

class MDagPath {
public:
    MDagPath() = default;

    static MStatus getAPathTo(const MObject& node, MDagPath& path);
    static MStatus getAllPathsTo(const MObject& node, MDagPathArray& paths);

    bool isValid(MStatus* status = nullptr) const;
    MObject node(MStatus* status = nullptr) const;
    MObject transform(MStatus* status = nullptr) const;
    unsigned int length(MStatus* status = nullptr) const;
    unsigned int childCount(MStatus* status = nullptr) const;
    MObject child(unsigned index, MStatus* status = nullptr) const;
    MStatus push(const MObject& child);
    MStatus pop(unsigned count = 1);
    MStatus extendToShape();
    bool hasFn(MFn::Type type, MStatus* status = nullptr) const;
    MFn::Type apiType(MStatus* status = nullptr) const;
    MString fullPathName(MStatus* status = nullptr) const;
    MString partialPathName(MStatus* status = nullptr) const;
    unsigned int instanceNumber(MStatus* status = nullptr) const;
    bool isInstanced(MStatus* status = nullptr) const;
    // Products of the local matrices from the node (inclusive) or its parent (exclusive) up to the world.
    MMatrix inclusiveMatrix(MStatus* status = nullptr) const;
    MMatrix exclusiveMatrix(MStatus* status = nullptr) const;
    MMatrix inclusiveMatrixInverse(MStatus* status = nullptr) const;
    MMatrix exclusiveMatrixInverse(MStatus* status = nullptr) const;

    bool operator==(const MDagPath& other) const { return nodes_ == other.nodes_; }
    bool operator!=(const MDagPath& other) const { return nodes_ != other.nodes_; }

    // Stand-in internals: the nodes below the world, top first.
    explicit MDagPath(std::vector<vqmhost::Node*> nodes) : nodes_(std::move(nodes)) {}
    const std::vector<vqmhost::Node*>& hostNodes() const { return nodes_; }

private:
    std::vector<vqmhost::Node*> nodes_;
};
