// Walks the dependency graph along connections from a root node or plug, upstream (towards what
// drives it) or downstream, visiting every node once.
#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>

#include <vector>

class MItDependencyGraph {
public:
    enum Direction { kDownstream, kUpstream };
    enum Traversal { kDepthFirst, kBreadthFirst };
    enum Level { kNodeLevel, kPlugLevel };

    MItDependencyGraph(MObject& rootNode, MFn::Type filter = MFn::kInvalid, Direction direction = kDownstream,
                       Traversal traversal = kDepthFirst, Level level = kNodeLevel, MStatus* status = nullptr);
    MItDependencyGraph(MPlug& rootPlug, MFn::Type filter = MFn::kInvalid, Direction direction = kDownstream,
                       Traversal traversal = kDepthFirst, Level level = kNodeLevel, MStatus* status = nullptr);

    bool isDone() const;
    MStatus next();
    MStatus reset();
    MObject currentItem(MStatus* status = nullptr) const;
    MObject thisNode(MStatus* status = nullptr) const { return currentItem(status); }
    MPlug thisPlug(MStatus* status = nullptr) const;
    MPlug previousPlug(MStatus* status = nullptr) const;
    MObject rootNode(MStatus* status = nullptr) const;

    // With pruning, the walk does not go on beyond a node that fails the filter.
    void disablePruningOnFilter() { pruning_ = false; reset(); }
    void enablePruningOnFilter() { pruning_ = true; reset(); }
    bool isPruningOnFilter() const { return pruning_; }
    Direction currentDirection() const { return direction_; }
    Traversal currentTraversal() const { return traversal_; }
    Level currentLevel() const { return level_; }

private:
    struct Visit {
        MObject node;
        MPlug plug;      // the plug of the node through which the walk arrived
        MPlug previous;  // the plug at the other end of that connection
    };
    void walk();
    bool passes(const MObject& node) const;

    MObject root_;
    MPlug rootPlug_;
    MFn::Type filter_;
    Direction direction_;
    Traversal traversal_;
    Level level_;
    bool pruning_ = true;
    std::vector<Visit> order_;
    size_t position_ = 0;
};
