// Plug reads, writes and connections over the node storage.
#include <maya/MIntArray.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>

#include "StatusReport.h"
#include "Graph.h"
#include "HostData.h"

using namespace vqmhost;

MDGContext MDGContext::fsNormal;

MPlug::MPlug(const MObject& nodeObject, const MObject& attributeObject)
{
    if (nodeObject.hostNode() && attributeObject.hostAttribute()) {
        node_ = nodeObject.hostNode();
        std::vector<const Attribute*> chain;
        for (const Attribute* a = attributeObject.hostAttribute(); a; a = a->parent) chain.push_back(a);
        for (auto it = chain.rbegin(); it != chain.rend(); ++it) path_.push_back(PlugStep{*it, -1});
    }
}

bool MPlug::isNull(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return node_ == nullptr || path_.empty();
}

MObject MPlug::node(MStatus* status) const
{
    report(status, node_ ? MStatus::kSuccess : MStatus::kFailure);
    return node_ ? MObject(node_) : MObject();
}

MObject MPlug::attribute(MStatus* status) const
{
    report(status, node_ ? MStatus::kSuccess : MStatus::kFailure);
    return path_.empty() ? MObject() : MObject(path_.back().attribute);
}

MString MPlug::name(MStatus* status) const
{
    report(status, node_ ? MStatus::kSuccess : MStatus::kFailure);
    if (!node_) return MString();
    return MString(node_->name + "." + plugPathName(path_, false));
}

MString MPlug::partialName(bool includeNodeName, bool, bool, bool, bool useFullAttributePath, bool useLongNames,
                           MStatus* status) const
{
    report(status, node_ ? MStatus::kSuccess : MStatus::kFailure);
    if (!node_) return MString();
    std::string text;
    if (useFullAttributePath) {
        text = plugPathName(path_, useLongNames);
    } else {
        const PlugStep& last = path_.back();
        text = useLongNames ? last.attribute->longName : last.attribute->shortName;
        if (last.index >= 0) text += "[" + std::to_string(last.index) + "]";
    }
    return MString(includeNodeName ? node_->name + "." + text : text);
}

bool MPlug::isArray(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return !path_.empty() && path_.back().attribute->array && path_.back().index < 0;
}

bool MPlug::isElement(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return !path_.empty() && path_.back().attribute->array && path_.back().index >= 0;
}

bool MPlug::isCompound(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return !path_.empty() && path_.back().attribute->type == AttrType::Compound && !isArray();
}

bool MPlug::isChild(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return !path_.empty() && path_.back().attribute->parent != nullptr;
}

bool MPlug::isDynamic(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return !path_.empty() && path_.front().attribute->dynamic;
}

bool MPlug::isConnected(MStatus* status) const
{
    MPlugArray far;
    return connectedTo(far, true, true, status);
}

unsigned int MPlug::numElements(MStatus* status) const
{
    if (!isArray()) {
        report(status, MStatus::kFailure);
        return 0;
    }
    report(status, MStatus::kSuccess);
    const PlugData* data = node_->plugData(path_);
    return data ? unsigned(data->elements.size()) : 0u;
}

MPlug MPlug::elementByPhysicalIndex(unsigned index, MStatus* status) const
{
    const PlugData* data = isArray() ? node_->plugData(path_) : nullptr;
    if (!data || index >= data->elements.size()) {
        report(status, MStatus::kFailure);
        return MPlug();
    }
    auto it = data->elements.begin();
    std::advance(it, index);
    std::vector<PlugStep> path = path_;
    path.back().index = it->first;
    report(status, MStatus::kSuccess);
    return MPlug(node_, path);
}

MPlug MPlug::elementByLogicalIndex(unsigned index, MStatus* status) const
{
    if (!isArray() || index > 0x7fffffffu) {
        report(status, MStatus::kFailure);
        return MPlug();
    }
    std::vector<PlugStep> path = path_;
    path.back().index = int(index);
    report(status, MStatus::kSuccess);
    return MPlug(node_, path);
}

unsigned int MPlug::logicalIndex(MStatus* status) const
{
    if (!isElement()) {
        report(status, MStatus::kFailure);
        return 0;
    }
    report(status, MStatus::kSuccess);
    return unsigned(path_.back().index);
}

MStatus MPlug::selectAncestorLogicalIndex(unsigned index, const MObject& attributeObject)
{
    if (index > 0x7fffffffu) return MStatus::kInvalidParameter;
    const Attribute* wanted = attributeObject.hostAttribute();
    for (auto it = path_.rbegin(); it != path_.rend(); ++it) {
        if (!it->attribute->array || (wanted && it->attribute != wanted)) continue;
        it->index = int(index);
        return MStatus::kSuccess;
    }
    return MStatus::kInvalidParameter;
}

int MPlug::getExistingArrayAttributeIndices(MIntArray& indices, MStatus* status) const
{
    indices.clear();
    const PlugData* data = isArray() ? node_->plugData(path_) : nullptr;
    if (data)
        for (const auto& e : data->elements) indices.append(e.first);
    report(status, isArray() ? MStatus::kSuccess : MStatus::kFailure);
    return int(indices.length());
}

unsigned int MPlug::numChildren(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return isCompound() ? unsigned(path_.back().attribute->children.size()) : 0u;
}

MPlug MPlug::child(unsigned index, MStatus* status) const
{
    if (!isCompound() || index >= path_.back().attribute->children.size()) {
        report(status, MStatus::kFailure);
        return MPlug();
    }
    std::vector<PlugStep> path = path_;
    path.push_back(PlugStep{path_.back().attribute->children[index], -1});
    report(status, MStatus::kSuccess);
    return MPlug(node_, path);
}

MPlug MPlug::child(const MObject& attributeObject, MStatus* status) const
{
    if (isCompound()) {
        const auto& children = path_.back().attribute->children;
        for (unsigned i = 0; i < children.size(); ++i)
            if (children[i] == attributeObject.hostAttribute()) return child(i, status);
    }
    report(status, MStatus::kFailure);
    return MPlug();
}

MPlug MPlug::parent(MStatus* status) const
{
    if (path_.size() < 2) {
        report(status, MStatus::kFailure);
        return MPlug();
    }
    report(status, MStatus::kSuccess);
    return MPlug(node_, std::vector<PlugStep>(path_.begin(), path_.end() - 1));
}

MPlug MPlug::array(MStatus* status) const
{
    if (!isElement()) {
        report(status, MStatus::kFailure);
        return MPlug();
    }
    std::vector<PlugStep> path = path_;
    path.back().index = -1;
    report(status, MStatus::kSuccess);
    return MPlug(node_, path);
}

bool MPlug::connectedTo(MPlugArray& plugs, bool asDst, bool asSrc, MStatus* status) const
{
    plugs.clear();
    if (!node_) {
        report(status, MStatus::kFailure);
        return false;
    }
    const auto& all = node_->scene.connections();
    for (size_t index : node_->connections) {
        const Connection& c = all[index];
        if (!c.alive) continue;
        if (asDst && c.destinationNode == node_ && c.destination == path_)
            plugs.append(MPlug(c.sourceNode, c.source));
        if (asSrc && c.sourceNode == node_ && c.source == path_)
            plugs.append(MPlug(c.destinationNode, c.destination));
    }
    report(status, MStatus::kSuccess);
    return plugs.length() > 0;
}

bool MPlug::operator==(const MPlug& other) const
{
    return node_ == other.node_ && path_ == other.path_;
}

// The value a plug holds: what drives it through a connection, else what the node computes,
// else what is stored, else the attribute's default.
static bool readValue(Node* node, const std::vector<PlugStep>& path, Value& value, int depth = 0)
{
    if (!node || path.empty() || depth > 64) return false;
    if (const Connection* c = node->incomingConnection(path)) return readValue(c->sourceNode, c->source, value, depth + 1);
    // A child of a compound that is driven as a whole reads the same child of the source.
    if (path.size() > 1 && path.back().attribute->parent) {
        const std::vector<PlugStep> parentPath(path.begin(), path.end() - 1);
        if (const Connection* c = node->incomingConnection(parentPath)) {
            const Attribute* sourceAttribute = c->source.back().attribute;
            int child = path.back().attribute->childIndex;
            if (child >= 0 && size_t(child) < sourceAttribute->children.size()) {
                std::vector<PlugStep> sourceChild = c->source;
                sourceChild.push_back(PlugStep{sourceAttribute->children[size_t(child)], -1});
                return readValue(c->sourceNode, sourceChild, value, depth + 1);
            }
        }
    }
    if (node->type->compute && node->type->compute(*node, path, value)) return true;
    if (const PlugData* data = node->plugData(path)) {
        if (data->value.kind != Value::None) {
            value = data->value;
            return true;
        }
    }
    const Attribute* a = path.back().attribute;
    if (a->isNumeric()) {
        value.kind = Value::Number;
        value.number = a->defaultValue;
        return true;
    }
    if (a->type == AttrType::String) {
        value.kind = Value::String;
        value.text = a->defaultString;
        return true;
    }
    if (a->type == AttrType::Matrix) {
        value.kind = Value::Numbers;
        value.numbers.assign(16, 0.0);
        for (int i = 0; i < 4; ++i) value.numbers[size_t(i * 5)] = 1.0;
        return true;
    }
    return false;
}

static bool readsAsNumber(const std::vector<PlugStep>& path)
{
    if (path.empty()) return false;
    const PlugStep& last = path.back();
    if (last.attribute->array && last.index < 0) return false;
    return last.attribute->isNumeric() || last.attribute->type == AttrType::Generic;
}

static MStatus readNumber(Node* node, const std::vector<PlugStep>& path, double& out)
{
    Value v;
    if (!readsAsNumber(path) || !readValue(node, path, v)) return MStatus::kFailure;
    if (v.kind == Value::Number) {
        out = v.number;
        return MStatus::kSuccess;
    }
    if (v.kind == Value::Numbers && v.numbers.size() == 1) {
        out = v.numbers[0];
        return MStatus::kSuccess;
    }
    return MStatus::kFailure;
}

MStatus MPlug::getValue(bool& value, MDGContext&) const
{
    double v;
    MStatus s = readNumber(node_, path_, v);
    if (s) value = v != 0.0;
    return s;
}

MStatus MPlug::getValue(int& value, MDGContext&) const
{
    double v;
    MStatus s = readNumber(node_, path_, v);
    if (s) value = int(v);
    return s;
}

MStatus MPlug::getValue(short& value, MDGContext&) const
{
    double v;
    MStatus s = readNumber(node_, path_, v);
    if (s) value = short(v);
    return s;
}

MStatus MPlug::getValue(float& value, MDGContext&) const
{
    double v;
    MStatus s = readNumber(node_, path_, v);
    if (s) value = float(v);
    return s;
}

MStatus MPlug::getValue(double& value, MDGContext&) const
{
    return readNumber(node_, path_, value);
}

MStatus MPlug::getValue(MString& value, MDGContext&) const
{
    Value v;
    if (path_.empty()) return MStatus::kFailure;
    AttrType t = path_.back().attribute->type;
    if (t != AttrType::String && t != AttrType::Generic) return MStatus::kFailure;
    if (!readValue(node_, path_, v) || v.kind != Value::String) return MStatus::kFailure;
    value = MString(v.text);
    return MStatus::kSuccess;
}

MStatus MPlug::getValue(MObject& value, MDGContext&) const
{
    Value v;
    if (path_.empty() || !readValue(node_, path_, v)) return MStatus::kFailure;
    AttrType t = path_.back().attribute->type;
    if (t == AttrType::Matrix && v.kind == Value::Block && dynamic_cast<MatrixData*>(v.block.get())) {
        // Components (an xform matrix) are handed out as they are stored.
        value = MObject(v.block);
        return MStatus::kSuccess;
    }
    if (t == AttrType::Matrix || (t == AttrType::Generic && v.kind == Value::Numbers && v.numbers.size() == 16)) {
        if (v.numbers.size() != 16) return MStatus::kFailure;
        value = MObject(std::make_shared<MatrixData>(v.numbers.data()));
        return MStatus::kSuccess;
    }
    if (v.kind == Value::Block && v.block) {
        value = MObject(v.block);
        return MStatus::kSuccess;
    }
    if (t == AttrType::String && v.kind == Value::String) {
        value = MObject(std::make_shared<StringData>(v.text));
        return MStatus::kSuccess;
    }
    return MStatus::kFailure;
}

#define VQM_AS(TYPE, NAME)                                   \
    TYPE MPlug::NAME(MDGContext& context, MStatus* status) const \
    {                                                        \
        TYPE value{};                                        \
        MStatus s = getValue(value, context);                \
        if (status) *status = s;                             \
        return value;                                        \
    }
VQM_AS(bool, asBool)
VQM_AS(int, asInt)
VQM_AS(short, asShort)
VQM_AS(float, asFloat)
VQM_AS(double, asDouble)
VQM_AS(MString, asString)
VQM_AS(MObject, asMObject)
#undef VQM_AS

static MStatus writeValue(Node* node, const std::vector<PlugStep>& path, const Value& value)
{
    if (!node || path.empty()) return MStatus::kFailure;
    const PlugStep& last = path.back();
    if (last.attribute->array && last.index < 0) return MStatus::kFailure;
    PlugData* data = node->plugData(path, true);
    if (!data) return MStatus::kFailure;
    data->value = value;
    node->scene.touch();
    return MStatus::kSuccess;
}

static MStatus writeNumber(Node* node, const std::vector<PlugStep>& path, double number)
{
    if (!readsAsNumber(path)) return MStatus::kFailure;
    Value v;
    v.kind = Value::Number;
    v.number = number;
    return writeValue(node, path, v);
}

MStatus MPlug::setValue(bool value) { return writeNumber(node_, path_, value ? 1.0 : 0.0); }
MStatus MPlug::setValue(int value) { return writeNumber(node_, path_, value); }
MStatus MPlug::setValue(float value) { return writeNumber(node_, path_, value); }
MStatus MPlug::setValue(double value) { return writeNumber(node_, path_, value); }

MStatus MPlug::setValue(const MString& value)
{
    if (path_.empty() || path_.back().attribute->type != AttrType::String) return MStatus::kFailure;
    Value v;
    v.kind = Value::String;
    v.text = value.str();
    return writeValue(node_, path_, v);
}

MStatus MPlug::setValue(MObject& data)
{
    if (path_.empty() || !data.hostData()) return MStatus::kFailure;
    Value v;
    auto* matrix = dynamic_cast<MatrixData*>(data.hostData().get());
    if (matrix && matrix->isTransformation) {
        v.kind = Value::Block;
        v.block = std::make_shared<MatrixData>(*matrix);
    } else if (matrix) {
        v.kind = Value::Numbers;
        v.numbers.assign(matrix->values, matrix->values + 16);
    } else {
        v.kind = Value::Block;
        v.block = data.hostData();
    }
    return writeValue(node_, path_, v);
}
