// MFnDagNode, MDagPath and MItDag over the DAG of the scene.
#include <maya/MDagPathArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MItDag.h>

#include "StatusReport.h"
#include "Graph.h"

using namespace vqmhost;

static bool isWorld(const Node* node)
{
    return node && node->type->apiType == MFn::kWorld;
}

// ---- MDagPath

MStatus MDagPath::getAPathTo(const MObject& object, MDagPath& path)
{
    Node* node = object.hostNode();
    if (!node || !node->isDag()) return MStatus::kInvalidParameter;
    if (isWorld(node)) {
        path = MDagPath();
        return MStatus::kSuccess;
    }
    std::vector<NodePath> paths = allPathsTo(node);
    if (paths.empty()) return MStatus::kFailure;
    path = MDagPath(paths.front());
    return MStatus::kSuccess;
}

MStatus MDagPath::getAllPathsTo(const MObject& object, MDagPathArray& paths)
{
    paths.clear();
    Node* node = object.hostNode();
    if (!node || !node->isDag()) return MStatus::kInvalidParameter;
    for (NodePath& p : allPathsTo(node)) paths.append(MDagPath(std::move(p)));
    return MStatus::kSuccess;
}

bool MDagPath::isValid(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return !nodes_.empty();
}

MObject MDagPath::node(MStatus* status) const
{
    report(status, nodes_.empty() ? MStatus::kFailure : MStatus::kSuccess);
    return nodes_.empty() ? MObject() : MObject(nodes_.back());
}

MObject MDagPath::transform(MStatus* status) const
{
    for (auto it = nodes_.rbegin(); it != nodes_.rend(); ++it)
        if ((*it)->hasFn(MFn::kTransform)) {
            report(status, MStatus::kSuccess);
            return MObject(*it);
        }
    report(status, MStatus::kInvalidParameter);
    return MObject();
}

unsigned int MDagPath::length(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return unsigned(nodes_.size());
}

unsigned int MDagPath::childCount(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return nodes_.empty() ? 0u : unsigned(nodes_.back()->children.size());
}

MObject MDagPath::child(unsigned index, MStatus* status) const
{
    if (nodes_.empty() || index >= nodes_.back()->children.size()) {
        report(status, MStatus::kInvalidParameter);
        return MObject();
    }
    report(status, MStatus::kSuccess);
    return MObject(nodes_.back()->children[index]);
}

MStatus MDagPath::push(const MObject& childObject)
{
    Node* child = childObject.hostNode();
    if (!child || !child->isDag()) return MStatus::kInvalidParameter;
    const auto& siblings = nodes_.empty() ? currentScene().world()->children : nodes_.back()->children;
    for (Node* n : siblings)
        if (n == child) {
            nodes_.push_back(child);
            return MStatus::kSuccess;
        }
    return MStatus::kInvalidParameter;
}

MStatus MDagPath::pop(unsigned count)
{
    if (count > nodes_.size()) return MStatus::kInvalidParameter;
    nodes_.resize(nodes_.size() - count);
    return MStatus::kSuccess;
}

MStatus MDagPath::extendToShape()
{
    if (nodes_.empty()) return MStatus::kFailure;
    Node* last = nodes_.back();
    if (last->hasFn(MFn::kShape)) return MStatus::kSuccess;
    Node* shape = nullptr;
    for (Node* c : last->children) {
        if (!c->hasFn(MFn::kShape)) continue;
        if (shape) return MStatus::kFailure;  // more than one shape below: ambiguous
        shape = c;
    }
    if (!shape) return MStatus::kFailure;
    nodes_.push_back(shape);
    return MStatus::kSuccess;
}

bool MDagPath::hasFn(MFn::Type type, MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return nodes_.empty() ? (type == MFn::kWorld || type == MFn::kDagNode || type == MFn::kBase)
                          : nodes_.back()->hasFn(type);
}

MFn::Type MDagPath::apiType(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return nodes_.empty() ? MFn::kWorld : nodes_.back()->type->apiType;
}

MString MDagPath::fullPathName(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return MString(vqmhost::fullPathName(nodes_));
}

MString MDagPath::partialPathName(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return MString(vqmhost::partialPathName(nodes_));
}

unsigned int MDagPath::instanceNumber(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    if (nodes_.empty()) return 0;
    std::vector<NodePath> paths = allPathsTo(nodes_.back());
    for (size_t i = 0; i < paths.size(); ++i)
        if (paths[i] == nodes_) return unsigned(i);
    return 0;
}

bool MDagPath::isInstanced(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    for (const Node* n : nodes_)
        if (n->parents.size() > 1) return true;
    return false;
}

// ---- MFnDagNode

MFnDagNode::MFnDagNode(MObject& object, MStatus* status) : MFnDagNode(static_cast<const MObject&>(object), status) {}

MFnDagNode::MFnDagNode(const MObject& object, MStatus* status)
{
    MStatus s = setObject(object);
    report(status, s.statusCode());
}

MFnDagNode::MFnDagNode(const MDagPath& path, MStatus* status)
{
    MStatus s = setObject(path);
    report(status, s.statusCode());
}

MStatus MFnDagNode::setObject(const MDagPath& path)
{
    if (!path.isValid()) return MStatus::kInvalidParameter;
    object_ = path.node();
    path_ = path;
    return MStatus::kSuccess;
}

MStatus MFnDagNode::setObject(const MObject& object)
{
    Node* node = object.hostNode();
    if (!node || !node->isDag()) {
        object_ = MObject();
        path_ = MDagPath();
        return MStatus::kInvalidParameter;
    }
    object_ = object;
    path_ = MDagPath();
    return MStatus::kSuccess;
}

MObject MFnDagNode::create(const MString& typeName, const MString& name, const MObject& parentObject,
                           MStatus* status)
{
    const NodeType* type = findNodeType(typeName.str());
    Node* parent = parentObject.hostNode();
    if (!type || !type->dag || type->apiType == MFn::kWorld || (parent && !parent->isDag())) {
        report(status, MStatus::kInvalidParameter);
        return MObject();
    }
    Scene& scene = currentScene();
    // A shape made without a parent gets a transform of its own, as in the host.
    if (!parent && type->hasFn(MFn::kShape)) {
        parent = scene.createNode(*findNodeType("transform"), scene.uniqueName("transform1"), nullptr);
    }
    std::string base = name.length() ? name.str() : typeName.str() + "1";
    Node* node = scene.createNode(*type, scene.uniqueName(base), parent);
    setObject(MObject(node));
    report(status, MStatus::kSuccess);
    return object_;
}

unsigned int MFnDagNode::parentCount(MStatus* status) const
{
    report(status, node() ? MStatus::kSuccess : MStatus::kFailure);
    return node() ? unsigned(node()->parents.size()) : 0u;
}

MObject MFnDagNode::parent(unsigned index, MStatus* status) const
{
    if (!node() || index >= node()->parents.size()) {
        report(status, MStatus::kInvalidParameter);
        return MObject();
    }
    report(status, MStatus::kSuccess);
    return MObject(node()->parents[index]);
}

unsigned int MFnDagNode::childCount(MStatus* status) const
{
    report(status, node() ? MStatus::kSuccess : MStatus::kFailure);
    return node() ? unsigned(node()->children.size()) : 0u;
}

MObject MFnDagNode::child(unsigned index, MStatus* status) const
{
    if (!node() || index >= node()->children.size()) {
        report(status, MStatus::kInvalidParameter);
        return MObject();
    }
    report(status, MStatus::kSuccess);
    return MObject(node()->children[index]);
}

MStatus MFnDagNode::addChild(MObject& childObject, unsigned index, bool keepExistingParents)
{
    Node* child = childObject.hostNode();
    if (!node() || !child || !child->isDag() || isWorld(child) || child == node()) return MStatus::kInvalidParameter;
    for (const NodePath& p : allPathsTo(node()))
        for (Node* n : p)
            if (n == child) return MStatus::kInvalidParameter;  // would make a cycle
    Scene& scene = node()->scene;
    if (!keepExistingParents) {
        std::vector<Node*> old = child->parents;
        for (Node* p : old) scene.removeChild(p, child);
    }
    scene.addChild(node(), child);
    if (index != kNextPos && index < node()->children.size() - 1) {
        auto& kids = node()->children;
        kids.pop_back();
        kids.insert(kids.begin() + index, child);
    }
    return MStatus::kSuccess;
}

bool MFnDagNode::isChildOf(const MObject& other, MStatus* status) const
{
    report(status, MStatus::kSuccess);
    if (!node()) return false;
    for (Node* p : node()->parents)
        if (p == other.hostNode()) return true;
    return false;
}

bool MFnDagNode::isParentOf(const MObject& other, MStatus* status) const
{
    report(status, MStatus::kSuccess);
    if (!node()) return false;
    for (Node* c : node()->children)
        if (c == other.hostNode()) return true;
    return false;
}

MStatus MFnDagNode::getPath(MDagPath& path) const
{
    if (!node()) return MStatus::kFailure;
    if (path_.isValid()) {
        path = path_;
        return MStatus::kSuccess;
    }
    return MDagPath::getAPathTo(object_, path);
}

MDagPath MFnDagNode::dagPath(MStatus* status) const
{
    MDagPath path;
    MStatus s = getPath(path);
    report(status, s.statusCode());
    return path;
}

MStatus MFnDagNode::getAllPaths(MDagPathArray& paths) const
{
    return MDagPath::getAllPathsTo(object_, paths);
}

MString MFnDagNode::fullPathName(MStatus* status) const
{
    return dagPath(status).fullPathName();
}

MString MFnDagNode::partialPathName(MStatus* status) const
{
    return dagPath(status).partialPathName();
}

bool MFnDagNode::isInstanced(bool indirect, MStatus* status) const
{
    report(status, MStatus::kSuccess);
    if (!node()) return false;
    if (!indirect) return node()->parents.size() > 1;
    return allPathsTo(node()).size() > 1;
}

unsigned int MFnDagNode::instanceCount(bool total, MStatus* status) const
{
    report(status, MStatus::kSuccess);
    if (!node()) return 0;
    return total ? unsigned(allPathsTo(node()).size()) : unsigned(node()->parents.size());
}

bool MFnDagNode::inUnderWorld(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    MDagPath path;
    if (!node() || !getPath(path)) return false;
    // Below a shape lies the shape's underworld.
    const auto& nodes = path.hostNodes();
    for (size_t i = 0; i + 1 < nodes.size(); ++i)
        if (nodes[i]->hasFn(MFn::kShape)) return true;
    return false;
}

bool MFnDagNode::isIntermediateObject(MStatus* status) const
{
    bool value = false;
    MStatus s;
    MPlug plug = findPlug("intermediateObject", &s);
    if (s) plug.getValue(value);
    report(status, s.statusCode());
    return value;
}

// ---- MItDag

MItDag::MItDag(TraversalType type, MFn::Type filter, MStatus* status) : type_(type), filter_(filter)
{
    if (type != kDepthFirst && type != kBreadthFirst) {
        report(status, MStatus::kInvalidParameter);
        type_ = kDepthFirst;
    } else {
        report(status, MStatus::kSuccess);
    }
    fill();
}

void MItDag::fill()
{
    order_.clear();
    position_ = 0;
    Node* world = currentScene().world();
    std::vector<std::vector<Node*>> pending{{}};
    // Every path of every node is visited: an instanced node once per path.
    if (type_ == kDepthFirst) {
        while (!pending.empty()) {
            std::vector<Node*> path = std::move(pending.back());
            pending.pop_back();
            Node* last = path.empty() ? world : path.back();
            if (filter_ == MFn::kInvalid || last->hasFn(filter_)) order_.push_back(path);
            for (auto it = last->children.rbegin(); it != last->children.rend(); ++it) {
                std::vector<Node*> child = path;
                child.push_back(*it);
                pending.push_back(std::move(child));
            }
        }
    } else {
        for (size_t i = 0; i < pending.size(); ++i) {
            std::vector<Node*> path = pending[i];
            Node* last = path.empty() ? world : path.back();
            if (filter_ == MFn::kInvalid || last->hasFn(filter_)) order_.push_back(path);
            for (Node* c : last->children) {
                std::vector<Node*> child = path;
                child.push_back(c);
                pending.push_back(std::move(child));
            }
        }
    }
}

bool MItDag::isDone(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return position_ >= order_.size();
}

MStatus MItDag::next()
{
    if (position_ >= order_.size()) return MStatus::kFailure;
    ++position_;
    return MStatus::kSuccess;
}

MStatus MItDag::reset()
{
    fill();
    return MStatus::kSuccess;
}

MObject MItDag::root(MStatus* status)
{
    report(status, MStatus::kSuccess);
    return MObject(currentScene().world());
}

MObject MItDag::currentItem(MStatus* status) const
{
    if (position_ >= order_.size()) {
        report(status, MStatus::kFailure);
        return MObject();
    }
    report(status, MStatus::kSuccess);
    const auto& path = order_[position_];
    return MObject(path.empty() ? currentScene().world() : path.back());
}

MStatus MItDag::getPath(MDagPath& path) const
{
    if (position_ >= order_.size()) return MStatus::kFailure;
    path = MDagPath(order_[position_]);
    return MStatus::kSuccess;
}

unsigned int MItDag::depth(MStatus* status) const
{
    report(status, position_ < order_.size() ? MStatus::kSuccess : MStatus::kFailure);
    return position_ < order_.size() ? unsigned(order_[position_].size()) : 0u;
}

MStatus MItDag::prune()
{
    if (position_ >= order_.size()) return MStatus::kFailure;
    const auto& here = order_[position_];
    size_t next = position_ + 1;
    while (next < order_.size() && order_[next].size() > here.size() &&
           std::equal(here.begin(), here.end(), order_[next].begin()))
        order_.erase(order_.begin() + long(next));
    return MStatus::kSuccess;
}
