// Applies the statements of a Maya ASCII file to the scene: nodes, attribute values, dynamic
// attributes, connections and parenting. Unknown node types become generic nodes and unknown
// commands are skipped, each with a warning that names the line.
#include "MayaAsciiReader.h"

#include "../Graph.h"
#include "../HostData.h"
#include "../Session.h"
#include "../TransformNodes.h"
#include "MayaAsciiNumber.h"
#include "MayaAsciiTokenizer.h"

#include <cmath>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace vqmhost {
namespace {

double linearUnitInCm(std::string_view name)
{
    if (name == "mm" || name == "millimeter") return 0.1;
    if (name == "cm" || name == "centimeter") return 1.0;
    if (name == "m" || name == "meter") return 100.0;
    if (name == "km" || name == "kilometer") return 100000.0;
    if (name == "in" || name == "inch") return 2.54;
    if (name == "ft" || name == "foot") return 30.48;
    if (name == "yd" || name == "yard") return 91.44;
    if (name == "mi" || name == "mile") return 160934.4;
    return 0.0;
}

const char* canonicalLinearUnit(double cm)
{
    if (cm == 0.1) return "millimeter";
    if (cm == 100.0) return "meter";
    if (cm == 100000.0) return "kilometer";
    if (cm == 2.54) return "inch";
    if (cm == 30.48) return "foot";
    if (cm == 91.44) return "yard";
    if (cm == 160934.4) return "mile";
    return "centimeter";
}

class Reader {
public:
    Reader(Scene& scene, std::string name) : scene_(scene), fileName_(std::move(name)) {}

    void apply(const MaStatement& s);

private:
    void warn(uint32_t line, const std::string& message)
    {
        emitMessage(MessageKind::Warning, fileName_ + ":" + std::to_string(line) + ": " + message);
    }

    Node* findNode(std::string_view name, uint32_t line, bool quiet = false);
    Node* findOrCreateDefault(std::string_view name, uint32_t line);
    bool resolvePlug(std::string_view text, uint32_t line, Node*& node, PlugPath& path, std::string* rangeText);

    void createNode(const MaStatement& s);
    void setAttr(const MaStatement& s);
    void addAttr(const MaStatement& s);
    void connectAttr(const MaStatement& s);
    void parent(const MaStatement& s);
    void select(const MaStatement& s);
    void rename(const MaStatement& s);
    void currentUnit(const MaStatement& s);
    void lockNode(const MaStatement& s);

    bool storeValues(Node* node, PlugPath path, const WordSpan& words, size_t& position,
                     const std::string& typeName, std::string& error);

    Scene& scene_;
    std::string fileName_;
    Node* current_ = nullptr;
    std::vector<Attribute*> pendingCompounds_;  // dynamic compounds waiting for their children
};

Node* Reader::findNode(std::string_view rawName, uint32_t line, bool quiet)
{
    std::string name(rawName);
    if (!name.empty() && name[0] == ':') name.erase(0, 1);
    if (name.empty()) return nullptr;
    if (name.find('|') != std::string::npos) {
        // A DAG path: match its names from the end.
        bool anchored = name[0] == '|';
        std::vector<std::string> parts;
        size_t start = anchored ? 1 : 0;
        while (start <= name.size()) {
            size_t end = name.find('|', start);
            if (end == std::string::npos) end = name.size();
            parts.push_back(name.substr(start, end - start));
            start = end + 1;
        }
        for (Node* n : scene_.nodesNamed(parts.back()))
            for (const NodePath& p : allPathsTo(n)) {
                if (p.size() < parts.size() || (anchored && p.size() != parts.size())) continue;
                bool match = true;
                for (size_t i = 0; i < parts.size() && match; ++i)
                    match = p[p.size() - parts.size() + i]->name == parts[i];
                if (match) return n;
            }
        if (!quiet) warn(line, "no node '" + name + "'");
        return nullptr;
    }
    std::vector<Node*> found = scene_.nodesNamed(name);
    if (found.empty()) {
        if (!quiet) warn(line, "no node '" + name + "'");
        return nullptr;
    }
    if (found.size() > 1 && !quiet) warn(line, "more than one node is named '" + name + "'; using the first");
    return found.front();
}

// Names with a leading ':' are the host's own default nodes. Those the stand-in does not make in a
// new scene are made on first mention, as generic default nodes.
Node* Reader::findOrCreateDefault(std::string_view name, uint32_t line)
{
    bool isDefaultName = !name.empty() && name[0] == ':';
    Node* node = findNode(name, line, isDefaultName);
    if (node || !isDefaultName) return node;
    node = scene_.createNode(genericNodeType(), std::string(name.substr(1)), nullptr);
    node->isDefault = true;
    return node;
}

// "node.attr[1].child" or ".attr" for the current node. A range "[a:b]" is cut out of the text,
// returned in rangeText, and replaced by its first index.
bool Reader::resolvePlug(std::string_view text, uint32_t line, Node*& node, PlugPath& path, std::string* rangeText)
{
    std::string plugText(text);
    if (rangeText) {
        rangeText->clear();
        size_t colon = plugText.find(':');
        size_t open = colon == std::string::npos ? std::string::npos : plugText.rfind('[', colon);
        size_t close = colon == std::string::npos ? std::string::npos : plugText.find(']', colon);
        if (open != std::string::npos && close != std::string::npos && plugText.find('.', open) > close) {
            *rangeText = plugText.substr(open + 1, close - open - 1);
            plugText = plugText.substr(0, open + 1) + rangeText->substr(0, rangeText->find(':')) + plugText.substr(close);
        }
    }
    std::string attributeText;
    if (!plugText.empty() && plugText[0] == '.') {
        node = current_;
        if (!node) {
            warn(line, "'" + plugText + "' names no node, and no node was created or selected before");
            return false;
        }
        attributeText = plugText.substr(1);
    } else {
        size_t start = plugText[0] == ':' ? 1 : 0;
        size_t dot = plugText.find('.', start);
        if (dot == std::string::npos) {
            warn(line, "'" + plugText + "' is no attribute");
            return false;
        }
        node = findOrCreateDefault(std::string_view(plugText).substr(0, dot), line);
        if (!node) return false;
        attributeText = plugText.substr(dot + 1);
    }
    std::string error;
    if (!parsePlugPath(node, attributeText, path, true, AttrType::Generic, &error)) {
        warn(line, error);
        return false;
    }
    return true;
}

void Reader::apply(const MaStatement& s)
{
    std::string_view command = s.words[0];
    if (command == "createNode") createNode(s);
    else if (command == "setAttr") setAttr(s);
    else if (command == "addAttr") addAttr(s);
    else if (command == "connectAttr") connectAttr(s);
    else if (command == "parent") parent(s);
    else if (command == "select") select(s);
    else if (command == "rename") rename(s);
    else if (command == "currentUnit") currentUnit(s);
    else if (command == "lockNode") lockNode(s);
    else if (command == "requires" || command == "fileInfo" || command == "relationship" ||
             command == "dataStructure") {
        // Plug-in requirements, file information and light links do not change what is exported.
    } else if (command == "file") {
        std::string target = s.size() > 1 ? std::string(s.words.back()) : std::string();
        warn(s.line, "scene references are not loaded; skipping the reference to '" + target + "'");
    } else {
        warn(s.line, "skipping the command '" + std::string(command) + "', which the reader does not know");
    }
}

void Reader::createNode(const MaStatement& s)
{
    std::string_view typeName, name, parentName;
    bool shared = false;
    for (size_t i = 1; i < s.size(); ++i) {
        std::string_view t = s.words[i];
        const bool quoted = s.quoted[i] != 0;
        if (!quoted && (t == "-n" || t == "-name") && i + 1 < s.size()) name = s.words[++i];
        else if (!quoted && (t == "-p" || t == "-parent") && i + 1 < s.size()) parentName = s.words[++i];
        else if (!quoted && (t == "-s" || t == "-shared")) shared = true;
        else if (!quoted && (t == "-ss" || t == "-skipSelect")) {}
        else if (typeName.empty()) typeName = t;
    }
    current_ = nullptr;
    pendingCompounds_.clear();
    if (typeName.empty()) {
        warn(s.line, "createNode without a node type");
        return;
    }
    if (shared && !name.empty()) {
        if (Node* existing = findNode(name, s.line, true)) {
            current_ = existing;
            return;
        }
    }
    const NodeType* type = findNodeType(std::string(typeName));
    if (!type) {
        warn(s.line, "unknown node type '" + std::string(typeName) + "'; '" + std::string(name) +
                         "' becomes a generic node");
        type = &genericNodeType();
    }
    Node* parentNode = nullptr;
    if (!parentName.empty()) {
        parentNode = findNode(parentName, s.line);
        if (!parentNode || !parentNode->isDag()) {
            warn(s.line, "'" + std::string(name) + "' has no parent '" + std::string(parentName) + "'; it goes below the world");
            parentNode = nullptr;
        }
        if (parentNode && !type->dag) {
            warn(s.line, "'" + std::string(name) + "' is no DAG node and cannot have a parent");
            parentNode = nullptr;
        }
    }
    std::string nodeName = name.empty() ? scene_.uniqueName(std::string(typeName) + "1") : std::string(name);
    // Names are unique among DG nodes and among the children of one DAG parent.
    bool clash = false;
    for (Node* other : scene_.nodesNamed(nodeName)) {
        if (!type->dag || !other->isDag()) clash = true;
        else
            for (Node* p : other->parents) clash = clash || p == (parentNode ? parentNode : scene_.world());
    }
    if (clash) {
        std::string unique = scene_.uniqueName(nodeName);
        warn(s.line, "a node named '" + nodeName + "' exists already; the new one is named '" + unique + "'");
        nodeName = unique;
    }
    current_ = scene_.createNode(*type, nodeName, parentNode);
    if (type == &genericNodeType()) current_->typeName = std::string(typeName);
}

void Reader::setAttr(const MaStatement& s)
{
    std::string_view attributeText;
    bool haveAttribute = false;
    std::string typeName;
    // The values are seen in place when no flag stands between them, else gathered.
    std::vector<std::string_view> gathered;
    size_t firstValue = 0, valueCount = 0;
    bool contiguous = true;
    static const char* const valueFlags[] = {"-s", "-size", "-k", "-keyable", "-l", "-lock", "-cb", "-channelBox",
                                             "-ch", "-capacityHint", "-type", "-typ"};
    for (size_t i = 1; i < s.size(); ++i) {
        const MaToken t = s.token(i);
        double ignored;
        bool isFlag = !t.quoted && t.text.size() > 1 && t.text[0] == '-' && !parseMayaAsciiNumber(t.text, ignored);
        if (isFlag) {
            bool takesValue = false;
            for (const char* f : valueFlags) takesValue = takesValue || t.text == f;
            if (takesValue && i + 1 < s.size()) {
                if (t.text == "-type" || t.text == "-typ") typeName = std::string(s.words[i + 1]);
                ++i;
            }
            continue;
        }
        if (!haveAttribute) {
            attributeText = t.text;
            haveAttribute = true;
        } else {
            if (valueCount == 0) {
                firstValue = i;
            } else if (contiguous && i != firstValue + valueCount) {
                contiguous = false;
                gathered.assign(s.words.begin() + long(firstValue), s.words.begin() + long(firstValue + valueCount));
            }
            if (!contiguous) gathered.push_back(t.text);
            ++valueCount;
        }
    }
    const WordSpan words = contiguous ? WordSpan{s.words.data() + firstValue, valueCount}
                                      : WordSpan{gathered.data(), gathered.size()};
    if (!haveAttribute) {
        warn(s.line, "setAttr names no attribute");
        return;
    }
    Node* node = nullptr;
    PlugPath path;
    std::string range;
    if (!resolvePlug(attributeText, s.line, node, path, &range)) return;
    int rangeStart = -1, rangeEnd = -1;
    if (!range.empty()) {
        size_t colon = range.find(':');
        double a, b;
        if (!parseMayaAsciiNumber(std::string_view(range).substr(0, colon), a) ||
            !parseMayaAsciiNumber(std::string_view(range).substr(colon + 1), b) || a < 0 || b < a || b > 0x7fffffff) {
            warn(s.line, "bad index range [" + range + "]");
            return;
        }
        rangeStart = int(a);
        rangeEnd = int(b);
    }
    if (words.empty()) return;  // a size or flag change only

    if (node->type->readFromFile) {
        std::string error;
        FileValues values;
        values.typeName = typeName;
        values.rangeStart = rangeStart;
        values.rangeEnd = rangeEnd;
        values.words = &words;
        values.linearScale = scene_.linearUnitInCm;
        values.angularScale = scene_.angularUnitInRad;
        values.error = &error;
        int handled = node->type->readFromFile(*node, path, values);
        if (!error.empty()) warn(s.line, node->name + "." + std::string(attributeText.substr(attributeText[0] == '.')) + ": " + error);
        if (handled != 0) return;
    }

    // Which step carries the range: the last indexed one.
    int rangeStep = -1;
    if (rangeStart >= 0)
        for (int i = int(path.size()) - 1; i >= 0; --i)
            if (path[size_t(i)].index >= 0) {
                rangeStep = i;
                break;
            }
    size_t position = 0;
    std::string error;
    int count = rangeStep >= 0 ? rangeEnd - rangeStart + 1 : 1;
    const Attribute* leaf = path.back().attribute;
    bool generic = leaf->type == AttrType::Generic && typeName.empty() && count > 1;
    size_t perElement = generic ? words.size() / size_t(count) : 0;
    for (int n = 0; n < count; ++n) {
        if (rangeStep >= 0) path[size_t(rangeStep)].index = rangeStart + n;
        if (generic) {
            // An attribute the type table does not know: share the words out evenly.
            const WordSpan part{words.begin() + position, perElement};
            size_t p = 0;
            position += perElement;
            if (!storeValues(node, path, part, p, typeName, error)) break;
        } else if (!storeValues(node, path, words, position, typeName, error)) {
            break;
        }
    }
    if (!error.empty()) warn(s.line, node->name + "." + std::string(attributeText.substr(attributeText[0] == '.')) + ": " + error);
}

bool Reader::storeValues(Node* node, PlugPath path, const WordSpan& words, size_t& position,
                         const std::string& typeName, std::string& error)
{
    const Attribute* a = path.back().attribute;
    if (a->array && path.back().index < 0) {
        error = "values for a whole array need an index";
        return false;
    }
    PlugData* data = node->plugData(path, true);
    Value& v = data->value;
    auto need = [&](size_t n) {
        if (position + n > words.size()) {
            error = "too few values";
            return false;
        }
        return true;
    };
    if (a->isNumeric()) {
        double number;
        if (!need(1)) return false;
        if (!parseMayaAsciiNumber(words[position], number)) {
            error = "'" + std::string(words[position]) + "' is no number";
            return false;
        }
        ++position;
        if (a->type == AttrType::Distance) number *= scene_.linearUnitInCm;
        if (a->type == AttrType::Angle) number *= scene_.angularUnitInRad;
        v.kind = Value::Number;
        v.number = number;
        return true;
    }
    switch (a->type) {
    case AttrType::Compound:
        if (!a->numericCompound) {
            error = "values for a compound of " + std::to_string(a->children.size()) + " children are not read";
            return false;
        }
        for (const Attribute* child : a->children) {
            path.push_back(PlugStep{child, -1});
            if (!storeValues(node, path, words, position, std::string(), error)) return false;
            path.pop_back();
        }
        return true;
    case AttrType::String:
        if (!need(1)) return false;
        v.kind = Value::String;
        v.text = std::string(words[position++]);
        return true;
    case AttrType::Matrix: {
        if (position < words.size() && words[position] == "xform") {
            std::vector<std::string> values;
            for (++position; position < words.size(); ++position) values.emplace_back(words[position]);
            MTransformationMatrix components;
            MQuaternion jointOrient;
            if (!parseXformWords(values, components, jointOrient, error)) return false;
            v.kind = Value::Block;
            v.block = std::make_shared<MatrixData>(components, jointOrient);
            return true;
        }
        if (!need(16)) return false;
        v.kind = Value::Numbers;
        v.numbers.resize(16);
        for (int i = 0; i < 16; ++i)
            if (!parseMayaAsciiNumber(words[position++], v.numbers[size_t(i)])) {
                error = "a matrix needs 16 numbers";
                return false;
            }
        return true;
    }
    case AttrType::Message:
        error = "a message attribute holds no value";
        return false;
    default: break;
    }
    // Typed data the stand-in keeps as the file's words, and attributes the type does not declare.
    if (a->type == AttrType::Generic && (typeName.empty() || typeName == "string" || typeName.find_first_of("23") != std::string::npos)) {
        if (typeName == "string") {
            if (!need(1)) return false;
            v.kind = Value::String;
            v.text = std::string(words[position++]);
            return true;
        }
        std::vector<double> numbers;
        size_t p = position;
        for (double number; p < words.size() && parseMayaAsciiNumber(words[p], number); ++p) numbers.push_back(number);
        if (p == words.size() && !numbers.empty()) {
            position = p;
            if (numbers.size() == 1) {
                v.kind = Value::Number;
                v.number = numbers[0];
            } else {
                v.kind = Value::Numbers;
                v.numbers = std::move(numbers);
            }
            return true;
        }
    }
    auto raw = std::make_shared<RawData>();
    raw->typeName = typeName;
    for (; position < words.size(); ++position) raw->words.emplace_back(words[position]);
    v.kind = Value::Block;
    v.block = raw;
    return true;
}

AttrType attributeTypeNamed(std::string_view at, bool& numericCompound, bool& known)
{
    numericCompound = false;
    known = true;
    if (at == "bool") return AttrType::Bool;
    if (at == "long" || at == "int") return AttrType::Int;
    if (at == "short") return AttrType::Short;
    if (at == "byte" || at == "char") return AttrType::Byte;
    if (at == "enum") return AttrType::Enum;
    if (at == "float") return AttrType::Float;
    if (at == "double") return AttrType::Double;
    if (at == "doubleLinear" || at == "floatLinear") return AttrType::Distance;
    if (at == "doubleAngle" || at == "floatAngle") return AttrType::Angle;
    if (at == "time") return AttrType::Time;
    if (at == "message") return AttrType::Message;
    if (at == "compound") return AttrType::Compound;
    if (at == "matrix" || at == "fltMatrix") return AttrType::Matrix;
    if (at == "double2" || at == "double3" || at == "float2" || at == "float3" || at == "long2" || at == "long3" ||
        at == "short2" || at == "short3" || at == "reflectance" || at == "spectrum") {
        numericCompound = true;
        return AttrType::Compound;
    }
    known = false;
    return AttrType::Generic;
}

void Reader::addAttr(const MaStatement& s)
{
    static const char* const valueFlags[] = {"-ci", "-sn", "-ln", "-nn", "-at", "-dt", "-dv", "-min", "-max",
                                             "-smn", "-smx", "-k", "-h", "-p", "-nc", "-en", "-s", "-r", "-w",
                                             "-ct", "-im", "-is", "-hsn", "-hsx", "-uap", "-fn", "-cb"};
    std::string longName, shortName, attributeType, dataType, parentName, enumNames, nodeName;
    double defaultValue = 0.0, minValue = 0.0, maxValue = 0.0;
    bool hasDefault = false, hasMin = false, hasMax = false, multi = false, keyable = false;
    for (size_t i = 1; i < s.size(); ++i) {
        const MaToken t = s.token(i);
        if (t.quoted || t.text.size() < 2 || t.text[0] != '-') {
            nodeName = std::string(t.text);
            continue;
        }
        bool takesValue = false;
        for (const char* f : valueFlags) takesValue = takesValue || t.text == f;
        std::string flag(t.text);
        if (flag == "-m" || flag == "-multi") multi = true;
        if (!takesValue || i + 1 >= s.size()) continue;
        std::string_view value = s.words[++i];
        if (flag == "-ln") longName = std::string(value);
        else if (flag == "-sn") shortName = std::string(value);
        else if (flag == "-at") attributeType = std::string(value);
        else if (flag == "-dt") dataType = std::string(value);
        else if (flag == "-p") parentName = std::string(value);
        else if (flag == "-en") enumNames = std::string(value);
        else if (flag == "-dv") hasDefault = parseMayaAsciiNumber(value, defaultValue);
        else if (flag == "-min") hasMin = parseMayaAsciiNumber(value, minValue);
        else if (flag == "-max") hasMax = parseMayaAsciiNumber(value, maxValue);
        else if (flag == "-k") keyable = value == "true" || value == "1" || value == "on" || value == "yes";
    }
    Node* node = nodeName.empty() ? current_ : findNode(nodeName, s.line);
    if (!node) {
        if (nodeName.empty()) warn(s.line, "addAttr before any node was created or selected");
        return;
    }
    if (longName.empty()) longName = shortName;
    if (shortName.empty()) shortName = longName;
    if (longName.empty()) {
        warn(s.line, "addAttr without a name");
        return;
    }
    if (node->findAttribute(longName) && (!node->findAttribute(longName)->dynamic || parentName.empty())) {
        warn(s.line, node->name + " has an attribute '" + longName + "' already");
        return;
    }
    auto attribute = std::make_unique<Attribute>();
    attribute->longName = longName;
    attribute->shortName = shortName;
    attribute->array = multi;
    attribute->keyable = keyable;
    bool numericCompound = false, known = true;
    if (!dataType.empty()) {
        attribute->type = dataType == "string" ? AttrType::String : dataType == "matrix" ? AttrType::Matrix : AttrType::Data;
        attribute->dataType = dataType;
    } else {
        attribute->type = attributeTypeNamed(attributeType.empty() ? "double" : attributeType, numericCompound, known);
        attribute->numericCompound = numericCompound;
        if (!known) warn(s.line, "unknown attribute type '" + attributeType + "' of '" + longName + "'");
    }
    double scale = attribute->type == AttrType::Distance ? scene_.linearUnitInCm
                   : attribute->type == AttrType::Angle  ? scene_.angularUnitInRad
                                                         : 1.0;
    if (hasDefault) attribute->defaultValue = defaultValue * scale;
    attribute->hasMin = hasMin;
    attribute->minValue = minValue * scale;
    attribute->hasMax = hasMax;
    attribute->maxValue = maxValue * scale;
    if (!enumNames.empty()) {
        int index = 0;
        size_t start = 0;
        while (start <= enumNames.size()) {
            size_t end = enumNames.find(':', start);
            if (end == std::string::npos) end = enumNames.size();
            std::string field = enumNames.substr(start, end - start);
            size_t eq = field.find('=');
            if (eq != std::string::npos) {
                index = atoi(field.c_str() + eq + 1);
                field.resize(eq);
            }
            attribute->enumFields.emplace_back(field, index++);
            start = end + 1;
        }
    }
    if (!parentName.empty()) {
        Attribute* parentAttribute = nullptr;
        for (const auto& d : node->dynamicAttributes)
            if (d->longName == parentName || d->shortName == parentName) parentAttribute = d.get();
        if (!parentAttribute)
            for (const auto& d : node->dynamicAttributes)
                for (Attribute* c : d->children)
                    if (c->longName == parentName || c->shortName == parentName) parentAttribute = c;
        if (!parentAttribute || parentAttribute->type != AttrType::Compound) {
            warn(s.line, "'" + longName + "' names no compound parent '" + parentName + "'");
            return;
        }
        // Children live in the node's undeclared store so that they stay owned; they are found
        // through their parent.
        attribute->parent = parentAttribute;
        attribute->childIndex = int(parentAttribute->children.size());
        attribute->dynamic = true;
        parentAttribute->children.push_back(attribute.get());
        node->undeclaredAttributes.push_back(std::move(attribute));
        return;
    }
    node->addDynamicAttribute(std::move(attribute));
}

void Reader::connectAttr(const MaStatement& s)
{
    std::vector<std::string_view> plugs;
    bool nextAvailable = false, force = false;
    for (size_t i = 1; i < s.size(); ++i) {
        const MaToken t = s.token(i);
        if (!t.quoted && (t.text == "-na" || t.text == "-nextAvailable")) nextAvailable = true;
        else if (!t.quoted && (t.text == "-f" || t.text == "-force")) force = true;
        else if (!t.quoted && (t.text == "-l" || t.text == "-lock") && i + 1 < s.size()) ++i;
        else if (!t.quoted && t.text.size() > 1 && t.text[0] == '-') {}
        else plugs.push_back(t.text);
    }
    if (plugs.size() != 2) {
        warn(s.line, "connectAttr needs a source and a destination");
        return;
    }
    Node *source = nullptr, *destination = nullptr;
    PlugPath sourcePath, destinationPath;
    if (!resolvePlug(plugs[0], s.line, source, sourcePath, nullptr)) return;
    if (!resolvePlug(plugs[1], s.line, destination, destinationPath, nullptr)) return;
    if (nextAvailable && destinationPath.back().index < 0) {
        // An attribute the type table does not know takes -na as a sign that it is an array.
        for (const auto& undeclared : destination->undeclaredAttributes)
            if (undeclared.get() == destinationPath.back().attribute) undeclared->array = true;
    }
    if (nextAvailable && destinationPath.back().attribute->array && destinationPath.back().index < 0) {
        // The first index of the array with no incoming connection.
        destinationPath.back().index = 0;
        while (destination->incomingConnection(destinationPath)) ++destinationPath.back().index;
    }
    if (!force) {
        const Connection* existing = destination->incomingConnection(destinationPath);
        // What a new scene connects between its default nodes gives way to the file.
        bool defaultLink = existing && existing->sourceNode->isDefault && destination->isDefault;
        if (existing && !defaultLink && !(existing->sourceNode == source && existing->source == sourcePath)) {
            warn(s.line, std::string(plugs[1]) + " is connected already; use -f to replace the connection");
            return;
        }
    }
    std::string error;
    if (!scene_.connect(source, sourcePath, destination, destinationPath, &error)) {
        warn(s.line, error);
        return;
    }
    // Array elements exist once something connects to them.
    source->plugData(sourcePath, true);
    destination->plugData(destinationPath, true);
}

void Reader::parent(const MaStatement& s)
{
    std::vector<std::string_view> names;
    bool add = false, toWorld = false;
    for (size_t i = 1; i < s.size(); ++i) {
        const MaToken t = s.token(i);
        if (!t.quoted && t.text.size() > 1 && t.text[0] == '-') {
            if (t.text == "-add" || t.text == "-addObject") add = true;
            if (t.text == "-w" || t.text == "-world") toWorld = true;
            continue;
        }
        names.push_back(t.text);
    }
    if (names.size() < (toWorld ? 1u : 2u)) {
        warn(s.line, "parent needs a child and a parent");
        return;
    }
    Node* newParent = toWorld ? scene_.world() : findNode(names.back(), s.line);
    if (!newParent || !newParent->isDag()) return;
    size_t childCount = toWorld ? names.size() : names.size() - 1;
    for (size_t i = 0; i < childCount; ++i) {
        Node* child = findNode(names[i], s.line);
        if (!child || !child->isDag() || child == newParent) continue;
        bool cycle = false;
        for (const NodePath& p : allPathsTo(newParent))
            for (Node* n : p) cycle = cycle || n == child;
        if (cycle) {
            warn(s.line, "'" + child->name + "' cannot go below its own descendant '" + newParent->name + "'");
            continue;
        }
        if (!add) {
            std::vector<Node*> old = child->parents;
            for (Node* p : old) scene_.removeChild(p, child);
        }
        scene_.addChild(newParent, child);
    }
}

void Reader::select(const MaStatement& s)
{
    bool noExpand = false, addToSelection = false;
    std::vector<std::string_view> names;
    for (size_t i = 1; i < s.size(); ++i) {
        const MaToken t = s.token(i);
        if (!t.quoted && t.text.size() > 1 && t.text[0] == '-') {
            if (t.text == "-ne" || t.text == "-noExpand") noExpand = true;
            if (t.text == "-add" || t.text == "-af") addToSelection = true;
            continue;
        }
        names.push_back(t.text);
    }
    if (noExpand) {
        // In a scene file, "select -ne" picks the node that the next statements edit.
        current_ = names.empty() ? nullptr : findOrCreateDefault(names.back(), s.line);
        return;
    }
    if (!addToSelection) scene_.activeSelection.clear();
    for (std::string_view name : names)
        if (Node* node = findNode(name, s.line)) scene_.activeSelection.push_back(MObject(node));
}

void Reader::rename(const MaStatement& s)
{
    std::vector<std::string_view> names;
    for (size_t i = 1; i < s.size(); ++i) {
        const MaToken t = s.token(i);
        if (!t.quoted && (t.text == "-uid" || t.text == "-uuid")) {
            ++i;  // node ids do not matter to the export
            continue;
        }
        if (!t.quoted && t.text.size() > 1 && t.text[0] == '-') continue;
        names.push_back(t.text);
    }
    if (names.empty()) return;
    Node* node = names.size() >= 2 ? findNode(names[0], s.line) : current_;
    if (!node) return;
    scene_.rename(node, std::string(names.back()));
}

void Reader::currentUnit(const MaStatement& s)
{
    for (size_t i = 1; i + 1 < s.size(); ++i) {
        std::string_view flag = s.words[i], value = s.words[i + 1];
        if (flag == "-l" || flag == "-linear") {
            double cm = linearUnitInCm(value);
            if (cm > 0.0) {
                scene_.linearUnitInCm = cm;
                scene_.linearUnitName = canonicalLinearUnit(cm);
            } else {
                warn(s.line, "unknown linear unit '" + std::string(value) + "'; keeping centimetres");
            }
            ++i;
        } else if (flag == "-a" || flag == "-angle") {
            if (value == "deg" || value == "degree") {
                scene_.angularUnitInRad = M_PI / 180.0;
                scene_.angularUnitName = "degree";
            } else if (value == "rad" || value == "radian") {
                scene_.angularUnitInRad = 1.0;
                scene_.angularUnitName = "radian";
            } else {
                warn(s.line, "unknown angular unit '" + std::string(value) + "'; keeping degrees");
            }
            ++i;
        } else if (flag == "-t" || flag == "-time") {
            scene_.timeUnitName = std::string(value);
            ++i;
        }
    }
}

void Reader::lockNode(const MaStatement& s)
{
    bool lock = true;
    for (size_t i = 1; i + 1 < s.size(); ++i)
        if (s.words[i] == "-l" || s.words[i] == "-lock") lock = s.words[i + 1] != "0" && s.words[i + 1] != "off";
    if (current_) current_->locked = lock;
}

std::string absoluteScenePath(const std::string& path)
{
    if (path.empty() || path[0] == '/') return path;
    char buffer[4096];
    if (!getcwd(buffer, sizeof buffer)) return path;
    std::string dir = buffer;
    if (dir.empty() || dir.back() != '/') dir += '/';
    std::string relative = path;
    while (relative.compare(0, 2, "./") == 0) relative.erase(0, 2);
    return dir + relative;
}

}  // namespace

bool readMayaAsciiText(const std::string& text, const std::string& fileName, std::string& error)
{
    resetScene();
    Scene& scene = currentScene();
    scene.fileName = fileName;
    std::string displayName = fileName.empty() ? std::string("<scene>") : fileName;
    Reader reader(scene, displayName);
    MaTokenizer tokenizer(text);
    MaStatement statement;
    while (tokenizer.next(statement)) reader.apply(statement);
    if (tokenizer.failed()) {
        error = displayName + ":" + std::to_string(tokenizer.errorLine()) + ":" + std::to_string(tokenizer.errorColumn()) +
                ": " + tokenizer.error();
        resetScene();  // nothing of a broken file stays
        return false;
    }
    return true;
}

bool readMayaAsciiFile(const std::string& path, std::string& error)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        error = path + ": cannot open the scene file";
        return false;
    }
    // Read in one piece when the size is known (a regular file), else as a stream.
    std::string content;
    in.seekg(0, std::ios::end);
    const std::streamoff size = in.tellg();
    in.seekg(0, std::ios::beg);
    if (size > 0 && in) {
        content.resize(size_t(size));
        in.read(&content[0], size);
        if (in.gcount() != size) {
            content.resize(size_t(in.gcount()));
            if (!in.bad()) {
                in.clear();
                std::ostringstream rest;
                rest << in.rdbuf();
                content += rest.str();
            }
        }
    } else {
        in.clear();
        in.seekg(0, std::ios::beg);
        std::ostringstream whole;
        whole << in.rdbuf();
        content = whole.str();
    }
    if (in.bad()) {
        error = path + ": cannot read the scene file";
        return false;
    }
    return readMayaAsciiText(content, absoluteScenePath(path), error);
}

}  // namespace vqmhost
