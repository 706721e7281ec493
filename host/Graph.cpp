// Nodes, plugs, connections and the DAG of the stand-in host.
#include "Graph.h"

#include <algorithm>
#include <cstdlib>

namespace vqmhost {

MFn::Type Attribute::apiType() const
{
    switch (type) {
    case AttrType::Distance:
    case AttrType::Angle:
    case AttrType::Time: return MFn::kUnitAttribute;
    case AttrType::Enum: return MFn::kEnumAttribute;
    case AttrType::String:
    case AttrType::Data: return MFn::kTypedAttribute;
    case AttrType::Matrix: return MFn::kMatrixAttribute;
    case AttrType::Message: return MFn::kMessageAttribute;
    case AttrType::Compound: return numericCompound ? MFn::kNumericAttribute : MFn::kCompoundAttribute;
    case AttrType::Generic: return MFn::kGenericAttribute;
    default: return MFn::kNumericAttribute;
    }
}

bool PlugData::hasValue() const
{
    if (value.kind != Value::None) return true;
    for (const auto& e : elements)
        if (e.second.hasValue()) return true;
    for (const auto& c : children)
        if (c.hasValue()) return true;
    return false;
}

const Attribute* NodeType::findAttribute(const std::string& attributeName) const
{
    for (const NodeType* t = this; t; t = t->parent) {
        auto it = t->byName.find(attributeName);
        if (it != t->byName.end()) return it->second;
    }
    return nullptr;
}

bool NodeType::hasFn(MFn::Type type) const
{
    if (type == MFn::kBase || type == MFn::kNamedObject || type == MFn::kDependencyNode) return true;
    for (const NodeType* t = this; t; t = t->parent)
        if (t->apiType == type) return true;
    return false;
}

Node::Node(Scene& owner, const NodeType& nodeType, std::string nodeName)
    : scene(owner), type(&nodeType), name(std::move(nodeName)), typeName(nodeType.name)
{
}

const Attribute* Node::findAttribute(const std::string& attributeName) const
{
    if (const Attribute* a = type->findAttribute(attributeName)) return a;
    for (const auto& a : dynamicAttributes)
        if (a->longName == attributeName || a->shortName == attributeName) return a.get();
    for (const auto& a : dynamicAttributes)
        for (const Attribute* c : a->children)
            if (c->longName == attributeName || c->shortName == attributeName) return c;
    for (const auto& a : undeclaredAttributes)
        if (a->longName == attributeName || a->shortName == attributeName) return a.get();
    return nullptr;
}

std::vector<const Attribute*> Node::allTopLevelAttributes() const
{
    std::vector<const NodeType*> chain;
    for (const NodeType* t = type; t; t = t->parent) chain.push_back(t);
    std::vector<const Attribute*> result;
    for (auto it = chain.rbegin(); it != chain.rend(); ++it)
        for (const Attribute* a : (*it)->topLevel) result.push_back(a);
    for (const auto& a : dynamicAttributes) result.push_back(a.get());
    return result;
}

Attribute* Node::addDynamicAttribute(std::unique_ptr<Attribute> attribute)
{
    attribute->dynamic = true;
    dynamicAttributes.push_back(std::move(attribute));
    return dynamicAttributes.back().get();
}

Attribute* Node::addUndeclaredAttribute(const std::string& attributeName, AttrType attributeType)
{
    auto a = std::make_unique<Attribute>();
    a->longName = attributeName;
    a->shortName = attributeName;
    a->type = attributeType;
    undeclaredAttributes.push_back(std::move(a));
    return undeclaredAttributes.back().get();
}

static PlugData* stepInto(PlugData* data, const PlugStep& step, bool create)
{
    if (step.attribute->array && step.index >= 0) {
        auto it = data->elements.find(step.index);
        if (it == data->elements.end()) {
            if (!create) return nullptr;
            it = data->elements.emplace(step.index, PlugData()).first;
        }
        data = &it->second;
    }
    return data;
}

PlugData* Node::plugData(const PlugPath& path, bool create)
{
    if (path.empty()) return nullptr;
    auto top = values.find(path[0].attribute);
    if (top == values.end()) {
        if (!create) return nullptr;
        top = values.emplace(path[0].attribute, PlugData()).first;
    }
    PlugData* data = stepInto(&top->second, path[0], create);
    for (size_t i = 1; data && i < path.size(); ++i) {
        const Attribute* a = path[i].attribute;
        size_t slot = size_t(a->childIndex < 0 ? 0 : a->childIndex);
        if (data->children.size() <= slot) {
            if (!create) return nullptr;
            data->children.resize(a->parent ? a->parent->children.size() : slot + 1);
            if (data->children.size() <= slot) data->children.resize(slot + 1);
        }
        data = stepInto(&data->children[slot], path[i], create);
    }
    return data;
}

const Connection* Node::incomingConnection(const PlugPath& path) const
{
    const auto& all = scene.connections();
    for (size_t index : connections) {
        const Connection& c = all[index];
        if (c.alive && c.destinationNode == this && c.destination == path) return &c;
    }
    return nullptr;
}

const PlugData* Node::plugData(const PlugPath& path) const
{
    return const_cast<Node*>(this)->plugData(path, false);
}

Scene::Scene()
{
    const NodeType* worldType = findNodeType("world");
    nodes_.push_back(std::make_unique<Node>(*this, *worldType, ""));
    world_ = nodes_.back().get();
    world_->creationIndex = nextCreationIndex_++;
}

Scene::~Scene() = default;

Node* Scene::createNode(const NodeType& type, const std::string& name, Node* parent)
{
    nodes_.push_back(std::make_unique<Node>(*this, type, name));
    Node* node = nodes_.back().get();
    node->creationIndex = nextCreationIndex_++;
    byName_.emplace(name, node);
    if (type.dag) addChild(parent ? parent : world_, node);
    return node;
}

std::vector<Node*> Scene::nodesNamed(const std::string& name) const
{
    std::vector<Node*> result;
    auto range = byName_.equal_range(name);
    for (auto it = range.first; it != range.second; ++it) result.push_back(it->second);
    std::sort(result.begin(), result.end(),
              [](const Node* a, const Node* b) { return a->creationIndex < b->creationIndex; });
    return result;
}

void Scene::visitNamed(const std::string& name, const std::function<bool(Node*)>& visit) const
{
    // Equal keys stand next to each other in an unordered multimap.
    for (auto it = byName_.find(name); it != byName_.end() && it->first == name; ++it)
        if (!visit(it->second)) return;
}

std::string Scene::uniqueName(const std::string& base) const
{
    // Names like "pCube1" are numbered after their last non-digit.
    size_t end = base.size();
    while (end > 0 && isdigit((unsigned char)base[end - 1])) --end;
    std::string stem = base.substr(0, end);
    if (byName_.find(base) == byName_.end() && end != base.size()) return base;
    for (unsigned n = 1;; ++n) {
        std::string candidate = stem + std::to_string(n);
        if (byName_.find(candidate) == byName_.end()) return candidate;
    }
}

void Scene::rename(Node* node, const std::string& name)
{
    auto range = byName_.equal_range(node->name);
    for (auto it = range.first; it != range.second; ++it)
        if (it->second == node) {
            byName_.erase(it);
            break;
        }
    node->name = name;
    byName_.emplace(name, node);
}

void Scene::addChild(Node* parent, Node* child)
{
    touch();
    if (std::find(parent->children.begin(), parent->children.end(), child) != parent->children.end()) return;
    parent->children.push_back(child);
    child->parents.push_back(parent);
}

void Scene::removeChild(Node* parent, Node* child)
{
    touch();
    parent->children.erase(std::remove(parent->children.begin(), parent->children.end(), child),
                           parent->children.end());
    child->parents.erase(std::remove(child->parents.begin(), child->parents.end(), parent), child->parents.end());
}

bool Scene::connect(Node* src, const PlugPath& srcPath, Node* dst, const PlugPath& dstPath, std::string* error)
{
    touch();
    for (size_t i = 0; i < connections_.size(); ++i) {
        Connection& c = connections_[i];
        if (!c.alive || c.destinationNode != dst || c.destination != dstPath) continue;
        if (c.sourceNode == src && c.source == srcPath) return true;
        c.alive = false;  // a destination has one source: the new connection replaces it
    }
    if (src == dst && srcPath == dstPath) {
        if (error) *error = "cannot connect a plug to itself";
        return false;
    }
    connections_.push_back(Connection{src, srcPath, dst, dstPath, true});
    src->connections.push_back(connections_.size() - 1);
    if (dst != src) dst->connections.push_back(connections_.size() - 1);
    return true;
}

bool Scene::disconnect(Node* src, const PlugPath& srcPath, Node* dst, const PlugPath& dstPath)
{
    touch();
    for (Connection& c : connections_)
        if (c.alive && c.sourceNode == src && c.source == srcPath && c.destinationNode == dst &&
            c.destination == dstPath) {
            c.alive = false;
            return true;
        }
    return false;
}

static void collectPaths(Node* node, NodePath& suffix, std::vector<NodePath>& out)
{
    suffix.push_back(node);
    for (Node* parent : node->parents) {
        if (parent->parents.empty() && parent->type->apiType == MFn::kWorld) {
            out.emplace_back(suffix.rbegin(), suffix.rend());
        } else {
            collectPaths(parent, suffix, out);
        }
    }
    suffix.pop_back();
}

std::vector<NodePath> allPathsTo(Node* node)
{
    std::vector<NodePath> out;
    if (!node || !node->isDag() || node->type->apiType == MFn::kWorld) return out;
    NodePath suffix;
    collectPaths(node, suffix, out);
    return out;
}

std::string fullPathName(const NodePath& path)
{
    std::string result;
    for (const Node* n : path) {
        result += '|';
        result += n->name;
    }
    return result;
}

// Counts below stop at 2: a path name only needs to know whether a suffix is unique.
static size_t pathCountCapped(const Node* node)
{
    if (node->parents.empty()) return node->type->apiType == MFn::kWorld ? 1 : 0;
    size_t count = 0;
    for (const Node* parent : node->parents) {
        count += pathCountCapped(parent);
        if (count >= 2) return 2;
    }
    return count;
}

// Ways down from the node through children named like path[next..].
static size_t descentCountCapped(const Node* node, const NodePath& path, size_t next)
{
    if (next == path.size()) return 1;
    size_t count = 0;
    for (const Node* child : node->children) {
        if (child->name != path[next]->name) continue;
        count += descentCountCapped(child, path, next + 1);
        if (count >= 2) return 2;
    }
    return count;
}

// How many DAG paths end in the names of the path's last k nodes, up to 2. Counted from the nodes
// named like the first of them, so that a name many nodes share costs little.
static size_t suffixMatchesCapped(const NodePath& path, size_t k)
{
    size_t first = path.size() - k;
    size_t count = 0;
    path.back()->scene.visitNamed(path[first]->name, [&](Node* top) {
        size_t above = pathCountCapped(top);
        if (above) count += above * descentCountCapped(top, path, first + 1);
        return count < 2;
    });
    return count;
}

std::string partialPathName(const NodePath& path)
{
    if (path.empty()) return std::string();
    for (size_t k = 1; k <= path.size(); ++k) {
        if (suffixMatchesCapped(path, k) <= 1) {
            std::string result;
            for (size_t i = path.size() - k; i < path.size(); ++i) {
                if (!result.empty()) result += '|';
                result += path[i]->name;
            }
            return result;
        }
    }
    return fullPathName(path);
}

static const Attribute* childNamed(const Attribute* parent, const std::string& name)
{
    for (const Attribute* c : parent->children)
        if (c->longName == name || c->shortName == name) return c;
    return nullptr;
}

bool parsePlugPath(Node* node, const std::string& text, PlugPath& path, bool createUndeclared,
                   AttrType undeclaredType, std::string* error)
{
    path.clear();
    size_t pos = (!text.empty() && text[0] == '.') ? 1 : 0;
    Attribute* undeclaredParent = nullptr;
    while (pos < text.size()) {
        size_t end = text.find_first_of(".[", pos);
        std::string segment = text.substr(pos, end == std::string::npos ? std::string::npos : end - pos);
        int index = -1;
        pos = end == std::string::npos ? text.size() : end;
        if (pos < text.size() && text[pos] == '[') {
            size_t close = text.find(']', pos);
            if (close == std::string::npos) {
                if (error) *error = "missing ']' in '" + text + "'";
                return false;
            }
            std::string number = text.substr(pos + 1, close - pos - 1);
            char* numberEnd = nullptr;
            long value = strtol(number.c_str(), &numberEnd, 10);
            if (number.empty() || *numberEnd != '\0' || value < 0 || value > 0x7fffffff) {
                if (error) *error = "bad index '" + number + "' in '" + text + "'";
                return false;
            }
            index = int(value);
            pos = close + 1;
        }
        if (pos < text.size()) {
            if (text[pos] != '.') {
                if (error) *error = "unexpected '" + std::string(1, text[pos]) + "' in '" + text + "'";
                return false;
            }
            ++pos;
        }
        if (segment.empty()) {
            if (error) *error = "empty attribute name in '" + text + "'";
            return false;
        }

        const Attribute* attribute = nullptr;
        if (path.empty()) {
            attribute = node->findAttribute(segment);
            if (attribute && attribute->parent && !attribute->parent->array) {
                // A child of a plain compound named on its own: address it through its parents.
                std::vector<const Attribute*> chain;
                for (const Attribute* a = attribute->parent; a; a = a->parent) chain.push_back(a);
                for (auto it = chain.rbegin(); it != chain.rend(); ++it) path.push_back(PlugStep{*it, -1});
            }
        } else {
            attribute = childNamed(path.back().attribute, segment);
        }
        if (!attribute) {
            if (!createUndeclared) {
                if (error) *error = "no attribute '" + segment + "' on " + node->name;
                return false;
            }
            if (path.empty()) {
                undeclaredParent = node->addUndeclaredAttribute(segment, undeclaredType);
                attribute = undeclaredParent;
            } else if (undeclaredParent && path.back().attribute == undeclaredParent) {
                auto child = std::make_unique<Attribute>();
                child->longName = child->shortName = segment;
                child->type = undeclaredType;
                child->parent = undeclaredParent;
                child->childIndex = int(undeclaredParent->children.size());
                undeclaredParent->type = AttrType::Compound;
                undeclaredParent->children.push_back(child.get());
                node->undeclaredAttributes.push_back(std::move(child));
                undeclaredParent = node->undeclaredAttributes.back().get();
                attribute = undeclaredParent;
            } else {
                if (error) *error = "no attribute '" + segment + "' under '" + path.back().attribute->longName + "' on " + node->name;
                return false;
            }
        } else if (createUndeclared) {
            // Undeclared attributes may grow children later; declared ones never do.
            bool owned = false;
            for (const auto& a : node->undeclaredAttributes) owned = owned || a.get() == attribute;
            undeclaredParent = owned ? const_cast<Attribute*>(attribute) : nullptr;
        }
        if (index < 0 && attribute->array && pos < text.size()) index = 0;  // "iog.og[2]" means "iog[0].og[2]"
        if (index >= 0 && !attribute->array) {
            if (undeclaredParent && undeclaredParent == attribute) {
                undeclaredParent->array = true;
            } else {
                if (error) *error = "attribute '" + segment + "' is not an array";
                return false;
            }
        }
        path.push_back(PlugStep{attribute, index});
    }
    if (path.empty()) {
        if (error) *error = "empty attribute name";
        return false;
    }
    return true;
}

std::string plugPathName(const PlugPath& path, bool longNames)
{
    // Compounds that are no array elements need not be named: their children's names are unique.
    std::string result;
    for (size_t i = 0; i < path.size(); ++i) {
        const PlugStep& s = path[i];
        if (i + 1 < path.size() && !s.attribute->array && s.index < 0) continue;
        if (!result.empty()) result += '.';
        result += longNames ? s.attribute->longName : s.attribute->shortName;
        if (s.index >= 0) result += "[" + std::to_string(s.index) + "]";
    }
    return result;
}

}  // namespace vqmhost
