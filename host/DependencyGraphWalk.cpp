// MItDependencyGraph, and the deformer function sets that stand on it.
#include <maya/MFnGeometryFilter.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MIntArray.h>
#include <maya/MObjectArray.h>
#include <maya/MPlugArray.h>

#include "StatusReport.h"
#include "Graph.h"

#include <algorithm>
#include <deque>
#include <unordered_set>

using namespace vqmhost;

// Does the plug address lie at or below the prefix (an element or child of it)?
static bool startsWith(const PlugPath& path, const PlugPath& prefix)
{
    if (path.size() < prefix.size()) return false;
    for (size_t i = 0; i < prefix.size(); ++i) {
        if (path[i].attribute != prefix[i].attribute) return false;
        if (prefix[i].index >= 0 && path[i].index != prefix[i].index) return false;
    }
    return true;
}

MItDependencyGraph::MItDependencyGraph(MObject& rootNode, MFn::Type filter, Direction direction, Traversal traversal,
                                       Level level, MStatus* status)
    : root_(rootNode), filter_(filter), direction_(direction), traversal_(traversal), level_(level)
{
    if (!rootNode.hostNode()) {
        report(status, MStatus::kInvalidParameter);
        return;
    }
    report(status, MStatus::kSuccess);
    walk();
}

MItDependencyGraph::MItDependencyGraph(MPlug& rootPlug, MFn::Type filter, Direction direction, Traversal traversal,
                                       Level level, MStatus* status)
    : root_(rootPlug.node()), rootPlug_(rootPlug), filter_(filter), direction_(direction), traversal_(traversal),
      level_(level)
{
    if (rootPlug.isNull()) {
        report(status, MStatus::kInvalidParameter);
        return;
    }
    report(status, MStatus::kSuccess);
    walk();
}

bool MItDependencyGraph::passes(const MObject& node) const
{
    return filter_ == MFn::kInvalid || node.hasFn(filter_);
}

// Every node once, in the order of the walk. From the root plug the walk follows that plug's
// connections; from every other node, all of its connections in the walk's direction, since the
// stand-in does not know which inputs of a node affect which outputs.
void MItDependencyGraph::walk()
{
    order_.clear();
    position_ = 0;
    Node* root = root_.hostNode();
    if (!root) return;
    const bool upstream = direction_ == kUpstream;

    auto arrivals = [upstream](Node* node, const PlugPath* only) {
        std::vector<Visit> next;
        const auto& all = node->scene.connections();
        for (size_t index : node->connections) {
            const Connection& c = all[index];
            if (!c.alive) continue;
            Node* here = upstream ? c.destinationNode : c.sourceNode;
            const PlugPath& herePath = upstream ? c.destination : c.source;
            if (here != node || (only && !startsWith(herePath, *only))) continue;
            Node* far = upstream ? c.sourceNode : c.destinationNode;
            const PlugPath& farPath = upstream ? c.source : c.destination;
            next.push_back(Visit{MObject(far), MPlug(far, farPath), MPlug(node, herePath)});
        }
        return next;
    };

    bool rootPasses = passes(root_);
    if (rootPasses) order_.push_back(Visit{root_, rootPlug_, MPlug()});
    else if (pruning_) return;

    std::unordered_set<const Node*> seen{root};
    std::deque<Visit> pending;
    // Depth first takes from the front and puts a node's arrivals in front, in their order.
    auto add = [&](std::vector<Visit> visits) {
        if (traversal_ == kDepthFirst) pending.insert(pending.begin(), visits.begin(), visits.end());
        else pending.insert(pending.end(), visits.begin(), visits.end());
    };
    // A root plug on the far side of the walk's direction (an input of a downstream walk) leads on
    // through the node's other plugs.
    std::vector<Visit> first = arrivals(root, rootPlug_.isNull() ? nullptr : &rootPlug_.hostPath());
    if (first.empty() && !rootPlug_.isNull()) first = arrivals(root, nullptr);
    add(first);
    while (!pending.empty()) {
        Visit v = pending.front();
        pending.pop_front();
        Node* node = v.node.hostNode();
        if (!seen.insert(node).second) continue;
        bool ok = passes(v.node);
        if (ok) order_.push_back(v);
        if (ok || !pruning_) add(arrivals(node, nullptr));
    }
}

bool MItDependencyGraph::isDone() const
{
    return position_ >= order_.size();
}

MStatus MItDependencyGraph::next()
{
    if (position_ >= order_.size()) return MStatus::kFailure;
    ++position_;
    return MStatus::kSuccess;
}

MStatus MItDependencyGraph::reset()
{
    walk();
    return MStatus::kSuccess;
}

MObject MItDependencyGraph::currentItem(MStatus* status) const
{
    if (position_ >= order_.size()) {
        report(status, MStatus::kFailure);
        return MObject();
    }
    report(status, MStatus::kSuccess);
    return order_[position_].node;
}

MPlug MItDependencyGraph::thisPlug(MStatus* status) const
{
    report(status, position_ < order_.size() ? MStatus::kSuccess : MStatus::kFailure);
    return position_ < order_.size() ? order_[position_].plug : MPlug();
}

MPlug MItDependencyGraph::previousPlug(MStatus* status) const
{
    report(status, position_ < order_.size() ? MStatus::kSuccess : MStatus::kFailure);
    return position_ < order_.size() ? order_[position_].previous : MPlug();
}

MObject MItDependencyGraph::rootNode(MStatus* status) const
{
    report(status, root_.isNull() ? MStatus::kFailure : MStatus::kSuccess);
    return root_;
}

// ---- MFnGeometryFilter, MFnSkinCluster

MFnGeometryFilter::MFnGeometryFilter(MObject& object, MStatus* status)
    : MFnGeometryFilter(static_cast<const MObject&>(object), status)
{
}

MFnGeometryFilter::MFnGeometryFilter(const MObject& object, MStatus* status)
{
    report(status, setObject(object).statusCode());
}

MStatus MFnGeometryFilter::setObject(const MObject& object)
{
    if (!object.hasFn(MFn::kGeometryFilt)) {
        object_ = MObject();
        return MStatus::kInvalidParameter;
    }
    object_ = object;
    return MStatus::kSuccess;
}

MStatus MFnGeometryFilter::getOutputGeometry(MObjectArray& shapes) const
{
    shapes.clear();
    if (!node()) return MStatus::kInvalidParameter;
    MStatus s;
    MPlug outputs = findPlug("outputGeometry", &s);
    if (!s) return s;
    MIntArray indices;
    outputs.getExistingArrayAttributeIndices(indices);
    for (unsigned i = 0; i < indices.length(); ++i) {
        MPlugArray far;
        outputs.elementByLogicalIndex(unsigned(indices[i])).connectedTo(far, false, true);
        // Through groupParts, tweaks and other deformers down to the shape.
        for (unsigned j = 0; j < far.length(); ++j) {
            MPlug plug = far[j];
            MItDependencyGraph walk(plug, MFn::kShape, MItDependencyGraph::kDownstream);
            walk.disablePruningOnFilter();
            for (; !walk.isDone(); walk.next()) {
                shapes.append(walk.currentItem());
                break;
            }
        }
    }
    return MStatus::kSuccess;
}

unsigned int MFnGeometryFilter::indexForOutputShape(const MObject& shape, MStatus* status) const
{
    MStatus s;
    MPlug outputs = findPlug("outputGeometry", &s);
    if (s) {
        MIntArray indices;
        outputs.getExistingArrayAttributeIndices(indices);
        for (unsigned i = 0; i < indices.length(); ++i) {
            MPlugArray far;
            outputs.elementByLogicalIndex(unsigned(indices[i])).connectedTo(far, false, true);
            for (unsigned j = 0; j < far.length(); ++j) {
                MPlug plug = far[j];
                MItDependencyGraph walk(plug, MFn::kShape, MItDependencyGraph::kDownstream);
                walk.disablePruningOnFilter();
                if (!walk.isDone() && walk.currentItem() == shape) {
                    report(status, MStatus::kSuccess);
                    return unsigned(indices[i]);
                }
            }
        }
    }
    report(status, MStatus::kInvalidParameter);
    return 0;
}

float MFnGeometryFilter::envelope(MStatus* status) const
{
    float value = 1.0f;
    MStatus s;
    MPlug plug = findPlug("envelope", &s);
    if (s) s = plug.getValue(value);
    report(status, s.statusCode());
    return value;
}

MFnSkinCluster::MFnSkinCluster(MObject& object, MStatus* status) : MFnSkinCluster(static_cast<const MObject&>(object), status) {}

MFnSkinCluster::MFnSkinCluster(const MObject& object, MStatus* status)
{
    report(status, setObject(object).statusCode());
}

MStatus MFnSkinCluster::setObject(const MObject& object)
{
    if (!object.hasFn(MFn::kSkinClusterFilter)) {
        object_ = MObject();
        return MStatus::kInvalidParameter;
    }
    object_ = object;
    return MStatus::kSuccess;
}
