// MFnDependencyNode: names, attributes, plugs and connections of one node.
#include <maya/MFnDependencyNode.h>
#include <maya/MPlugArray.h>

#include "StatusReport.h"
#include "Graph.h"

using namespace vqmhost;

MFnDependencyNode::MFnDependencyNode(MObject& object, MStatus* status)
    : MFnDependencyNode(static_cast<const MObject&>(object), status)
{
}

MFnDependencyNode::MFnDependencyNode(const MObject& object, MStatus* status)
{
    if (object.hostNode()) {
        object_ = object;
        report(status, MStatus::kSuccess);
    } else {
        report(status, MStatus::kInvalidParameter);
    }
}

MObject MFnDependencyNode::create(const MString& typeName, const MString& name, MStatus* status)
{
    const NodeType* type = findNodeType(typeName.str());
    if (!type || type->dag) {
        report(status, MStatus::kInvalidParameter);
        return MObject();
    }
    Scene& scene = currentScene();
    std::string nodeName = name.length() ? scene.uniqueName(name.str()) : scene.uniqueName(typeName.str() + "1");
    object_ = MObject(scene.createNode(*type, nodeName, nullptr));
    report(status, MStatus::kSuccess);
    return object_;
}

MString MFnDependencyNode::name(MStatus* status) const
{
    report(status, node() ? MStatus::kSuccess : MStatus::kFailure);
    return node() ? MString(node()->name) : MString();
}

MString MFnDependencyNode::setName(const MString& name, bool, MStatus* status)
{
    if (!node() || name.length() == 0) {
        report(status, MStatus::kInvalidParameter);
        return MString();
    }
    node()->scene.rename(node(), name.str());
    report(status, MStatus::kSuccess);
    return name;
}

MString MFnDependencyNode::typeName(MStatus* status) const
{
    report(status, node() ? MStatus::kSuccess : MStatus::kFailure);
    return node() ? MString(node()->typeName) : MString();
}

bool MFnDependencyNode::isDefaultNode(MStatus* status) const
{
    report(status, node() ? MStatus::kSuccess : MStatus::kFailure);
    return node() && node()->isDefault;
}

bool MFnDependencyNode::isLocked(MStatus* status) const
{
    report(status, node() ? MStatus::kSuccess : MStatus::kFailure);
    return node() && node()->locked;
}

MPlug MFnDependencyNode::findPlug(const MString& attributeName, MStatus* status) const
{
    return findPlug(attributeName, false, status);
}

MPlug MFnDependencyNode::findPlug(const MString& attributeName, bool, MStatus* status) const
{
    const std::string& text = attributeName.str();
    if (!node() || text.empty() || text.find_first_of(".[") != std::string::npos) {
        // Plain attribute names only, as the host's findPlug takes them.
        report(status, MStatus::kInvalidParameter);
        return MPlug();
    }
    PlugPath path;
    if (!parsePlugPath(node(), text, path, false, AttrType::Generic, nullptr)) {
        report(status, MStatus::kInvalidParameter);
        return MPlug();
    }
    report(status, MStatus::kSuccess);
    return MPlug(node(), path);
}

MPlug MFnDependencyNode::findPlug(const MObject& attribute, bool, MStatus* status) const
{
    if (!node() || !attribute.hostAttribute()) {
        report(status, MStatus::kInvalidParameter);
        return MPlug();
    }
    report(status, MStatus::kSuccess);
    return MPlug(object_, attribute);
}

unsigned int MFnDependencyNode::attributeCount(MStatus* status) const
{
    report(status, node() ? MStatus::kSuccess : MStatus::kFailure);
    if (!node()) return 0;
    unsigned count = 0;
    std::vector<const Attribute*> stack;
    for (const Attribute* a : node()->allTopLevelAttributes()) stack.push_back(a);
    while (!stack.empty()) {
        const Attribute* a = stack.back();
        stack.pop_back();
        ++count;
        for (const Attribute* c : a->children) stack.push_back(c);
    }
    return count;
}

// Attributes in the host's order: each top-level attribute followed by its children.
static void flatten(const Attribute* a, std::vector<const Attribute*>& out)
{
    out.push_back(a);
    for (const Attribute* c : a->children) flatten(c, out);
}

MObject MFnDependencyNode::attribute(unsigned index, MStatus* status) const
{
    std::vector<const Attribute*> all;
    if (node())
        for (const Attribute* a : node()->allTopLevelAttributes()) flatten(a, all);
    if (index >= all.size()) {
        report(status, MStatus::kInvalidParameter);
        return MObject();
    }
    report(status, MStatus::kSuccess);
    return MObject(all[index]);
}

MObject MFnDependencyNode::attribute(const MString& attributeName, MStatus* status) const
{
    const Attribute* a = node() ? node()->findAttribute(attributeName.str()) : nullptr;
    report(status, a ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return a ? MObject(a) : MObject();
}

bool MFnDependencyNode::hasAttribute(const MString& attributeName, MStatus* status) const
{
    report(status, node() ? MStatus::kSuccess : MStatus::kFailure);
    return node() && node()->findAttribute(attributeName.str()) != nullptr;
}

MFnDependencyNode::MAttrClass MFnDependencyNode::attributeClass(const MObject& attribute, MStatus* status) const
{
    const Attribute* a = attribute.hostAttribute();
    if (!node() || !a) {
        report(status, MStatus::kInvalidParameter);
        return kInvalidAttr;
    }
    report(status, MStatus::kSuccess);
    while (a->parent) a = a->parent;
    return a->dynamic ? kLocalDynamicAttr : kNormalAttr;
}

MStatus MFnDependencyNode::addAttribute(const MObject& attribute)
{
    const Attribute* a = attribute.hostAttribute();
    if (!node() || !a || node()->findAttribute(a->longName)) return MStatus::kInvalidParameter;
    node()->addDynamicAttribute(std::make_unique<Attribute>(*a));
    return MStatus::kSuccess;
}

MStatus MFnDependencyNode::getConnections(MPlugArray& plugs) const
{
    plugs.clear();
    if (!node()) return MStatus::kFailure;
    const auto& all = node()->scene.connections();
    auto addUnique = [&plugs](const MPlug& p) {
        for (unsigned i = 0; i < plugs.length(); ++i)
            if (plugs[i] == p) return;
        plugs.append(p);
    };
    for (size_t index : node()->connections) {
        const Connection& c = all[index];
        if (!c.alive) continue;
        if (c.sourceNode == node()) addUnique(MPlug(node(), c.source));
        if (c.destinationNode == node()) addUnique(MPlug(node(), c.destination));
    }
    return MStatus::kSuccess;
}
