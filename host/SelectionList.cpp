// MSelectionList: nodes and DAG paths in the order they were added, found by name or pattern.
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

#include "Graph.h"

#include <fnmatch.h>

using namespace vqmhost;

unsigned int MSelectionList::length(MStatus* status) const
{
    if (status) *status = MStatus::kSuccess;
    return unsigned(items_.size());
}

MStatus MSelectionList::clear()
{
    items_.clear();
    return MStatus::kSuccess;
}

static bool matchesName(const std::string& pattern, const std::string& name)
{
    if (pattern.find_first_of("*?[") == std::string::npos) return pattern == name;
    return fnmatch(pattern.c_str(), name.c_str(), 0) == 0;
}

// Does the DAG path end with the '|'-separated names of the pattern? A leading '|' anchors it at the world.
static bool matchesPath(const std::vector<std::string>& parts, bool anchored, const NodePath& path)
{
    if (parts.size() > path.size() || (anchored && parts.size() != path.size())) return false;
    size_t offset = path.size() - parts.size();
    for (size_t i = 0; i < parts.size(); ++i)
        if (!matchesName(parts[i], path[offset + i]->name)) return false;
    return true;
}

MStatus MSelectionList::add(const MString& matchString, bool)
{
    std::string pattern = matchString.str();
    if (!pattern.empty() && pattern[0] == ':') pattern.erase(0, 1);  // the root namespace
    if (pattern.empty()) return MStatus::kInvalidParameter;
    Scene& scene = currentScene();
    bool anchored = pattern[0] == '|';
    std::vector<std::string> parts;
    size_t start = anchored ? 1 : 0;
    while (start <= pattern.size()) {
        size_t end = pattern.find('|', start);
        if (end == std::string::npos) end = pattern.size();
        parts.push_back(pattern.substr(start, end - start));
        start = end + 1;
    }
    bool found = false;
    std::vector<Node*> candidates;
    if (parts.back().find_first_of("*?[") == std::string::npos) {
        candidates = scene.nodesNamed(parts.back());
    } else {
        for (const auto& n : scene.nodes()) candidates.push_back(n.get());
    }
    for (Node* node : candidates) {
        if (node == scene.world()) continue;
        if (node->isDag()) {
            for (NodePath& p : allPathsTo(node))
                if (matchesPath(parts, anchored, p)) {
                    add(MDagPath(p), MObject::kNullObj, true);
                    found = true;
                    break;  // one item per node: its first matching path
                }
        } else if (parts.size() == 1 && !anchored && matchesName(parts[0], node->name)) {
            add(MObject(node), true);
            found = true;
        }
    }
    return found ? MStatus::kSuccess : MStatus::kInvalidParameter;
}

MStatus MSelectionList::add(const MObject& object, bool mergeWithExisting)
{
    Node* node = object.hostNode();
    if (!node) return MStatus::kInvalidParameter;
    if (node->isDag()) {
        MDagPath path;
        if (!MDagPath::getAPathTo(object, path)) return MStatus::kFailure;
        return add(path, MObject::kNullObj, mergeWithExisting);
    }
    if (mergeWithExisting && hasItem(object)) return MStatus::kSuccess;
    items_.push_back(Item{object, MDagPath(), MObject()});
    return MStatus::kSuccess;
}

MStatus MSelectionList::add(const MDagPath& path, const MObject& component, bool mergeWithExisting)
{
    if (!path.isValid()) return MStatus::kInvalidParameter;
    if (mergeWithExisting && hasItem(path, component)) return MStatus::kSuccess;
    items_.push_back(Item{path.node(), path, component});
    return MStatus::kSuccess;
}

MStatus MSelectionList::remove(unsigned index)
{
    if (index >= items_.size()) return MStatus::kInvalidParameter;
    items_.erase(items_.begin() + index);
    return MStatus::kSuccess;
}

MStatus MSelectionList::getDependNode(unsigned index, MObject& object) const
{
    if (index >= items_.size()) return MStatus::kInvalidParameter;
    object = items_[index].node;
    return MStatus::kSuccess;
}

MStatus MSelectionList::getDagPath(unsigned index, MDagPath& path, MObject& component) const
{
    if (index >= items_.size() || !items_[index].path.isValid()) return MStatus::kInvalidParameter;
    path = items_[index].path;
    component = items_[index].component;
    return MStatus::kSuccess;
}

MStatus MSelectionList::getDagPath(unsigned index, MDagPath& path) const
{
    MObject component;
    return getDagPath(index, path, component);
}

MStatus MSelectionList::getSelectionStrings(MStringArray& strings) const
{
    strings.clear();
    for (const Item& item : items_)
        strings.append(item.path.isValid() ? item.path.partialPathName() : MString(item.node.hostNode()->name));
    return MStatus::kSuccess;
}

bool MSelectionList::hasItem(const MObject& object, MStatus* status) const
{
    if (status) *status = MStatus::kSuccess;
    for (const Item& item : items_)
        if (item.node == object) return true;
    return false;
}

bool MSelectionList::hasItem(const MDagPath& path, const MObject& component, MStatus* status) const
{
    if (status) *status = MStatus::kSuccess;
    for (const Item& item : items_)
        if (item.path == path && item.component == component) return true;
    return false;
}
