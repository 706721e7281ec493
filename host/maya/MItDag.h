// Walks the DAG from the world, depth first or breadth first, over every path.
#pragma once

#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <vector>

class MItDag {
public:
    enum TraversalType { kInvalidType, kDepthFirst, kBreadthFirst };

    MItDag(TraversalType type = kDepthFirst, MFn::Type filter = MFn::kInvalid, MStatus* status = nullptr);

    bool isDone(MStatus* status = nullptr) const;
    MStatus next();
    MStatus reset();
    MObject root(MStatus* status = nullptr);
    MObject currentItem(MStatus* status = nullptr) const;
    MObject item(MStatus* status = nullptr) const { return currentItem(status); }
    MStatus getPath(MDagPath& path) const;
    unsigned int depth(MStatus* status = nullptr) const;
    MStatus prune();

private:
    void fill();
    TraversalType type_;
    MFn::Type filter_;
    std::vector<std::vector<vqmhost::Node*>> order_;  // empty path: the world
    size_t position_ = 0;
};
