// The dependency graph behind the host API: node types with their attribute tables, nodes with
// plug values and connections, and the DAG (parents and children, instancing) on top of it.
#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vqmhost {

enum class AttrType : unsigned char {
    Bool, Byte, Short, Int, Enum, Float, Double,
    Distance, Angle, Time,  // unit attributes, stored in internal units (cm, radians, seconds)
    String, Matrix, Message, Compound,
    Data,     // typed data other than strings and matrices: "polyFaces", "nurbsCurve", arrays
    Generic,  // a value whose type the file gave (attributes the type table does not know)
};

struct Attribute {
    std::string longName;
    std::string shortName;
    AttrType type = AttrType::Double;
    std::string dataType;          // for Data: the typed data's name
    bool array = false;
    bool dynamic = false;          // added to the node, not part of its type
    bool keyable = false;
    bool numericCompound = false;  // double3/float3/...: a compound whose children are numbers
    Attribute* parent = nullptr;
    std::vector<Attribute*> children;
    int childIndex = -1;           // index among the parent's children
    double defaultValue = 0.0;
    std::string defaultString;
    bool hasMin = false, hasMax = false;
    double minValue = 0.0, maxValue = 0.0;
    std::vector<std::pair<std::string, int>> enumFields;

    bool isNumeric() const
    {
        return type == AttrType::Bool || type == AttrType::Byte || type == AttrType::Short ||
               type == AttrType::Int || type == AttrType::Enum || type == AttrType::Float ||
               type == AttrType::Double || type == AttrType::Distance || type == AttrType::Angle ||
               type == AttrType::Time;
    }
    MFn::Type apiType() const;
};

using PlugPath = std::vector<PlugStep>;

// A stored value. Numbers of every numeric type are doubles in internal units.
struct Value {
    enum Kind : unsigned char { None, Number, String, Numbers, Block } kind = None;
    double number = 0.0;
    std::string text;
    std::vector<double> numbers;  // matrices (16, row-major), generic tuples
    std::shared_ptr<Data> block;  // typed data (mesh, curve, polyFaces...)
};

// Storage of one plug: its value, the elements of an array, the children of a compound.
struct PlugData {
    Value value;
    std::map<int, PlugData> elements;
    std::vector<PlugData> children;
    bool hasValue() const;
};

class Node;

struct Connection {
    Node* sourceNode;
    PlugPath source;
    Node* destinationNode;
    PlugPath destination;
    bool alive = true;
};

// A run of words of a scene file, seen in place.
struct WordSpan {
    const std::string_view* first = nullptr;
    size_t count = 0;

    size_t size() const { return count; }
    bool empty() const { return count == 0; }
    const std::string_view& operator[](size_t i) const { return first[i]; }
    const std::string_view* begin() const { return first; }
    const std::string_view* end() const { return first + count; }
};

// Values of one setAttr in a scene file, for types that read their data themselves (meshes,
// curves): the words after the attribute, with the file's units.
struct FileValues {
    std::string typeName;                  // the -type of the statement, empty when none
    int rangeStart = -1, rangeEnd = -1;    // the index range of the last indexed step, if any
    const WordSpan* words = nullptr;
    double linearScale = 1.0;              // file unit to centimetres
    double angularScale = 1.0;             // file unit to radians
    std::string* error = nullptr;          // why the values were refused
};

struct NodeType {
    std::string name;
    MFn::Type apiType = MFn::kDependencyNode;
    const NodeType* parent = nullptr;
    bool dag = false;
    std::deque<Attribute> attributes;           // storage; top-level ones are listed below
    std::vector<Attribute*> topLevel;           // this type's own top-level attributes, in order
    std::unordered_map<std::string, Attribute*> byName;  // long and short names, own attributes
    // Computes the value of an output plug from the node's inputs; false: read what is stored.
    std::function<bool(const Node&, const PlugPath&, Value&)> compute;
    // Reads the values of a setAttr from a file into the node; 1 handled, 0 not this type's
    // business (generic storage follows), -1 refused (error says why).
    std::function<int(Node&, const PlugPath&, const FileValues&)> readFromFile;

    const Attribute* findAttribute(const std::string& name) const;
    bool hasFn(MFn::Type type) const;
};

class Scene;

class Node {
public:
    Node(Scene& scene, const NodeType& type, std::string name);

    Scene& scene;
    const NodeType* type;
    std::string name;
    std::string typeName;  // the type's name; for generic nodes, the name the file gave
    bool isDefault = false;
    bool locked = false;
    uint64_t creationIndex = 0;
    std::vector<std::unique_ptr<Attribute>> dynamicAttributes;
    std::vector<std::unique_ptr<Attribute>> undeclaredAttributes;  // set from a file, unknown to the type
    std::unordered_map<const Attribute*, PlugData> values;
    std::vector<size_t> connections;  // indices into the scene's connection list

    // State of the node type that lives outside plugs (a mesh's geometry), and what was last
    // computed from it, valid while the scene's revision stays evaluatedRevision.
    std::shared_ptr<Data> internal;
    std::shared_ptr<Data> evaluated;
    uint64_t evaluatedRevision = ~uint64_t(0);

    // DAG
    std::vector<Node*> parents;
    std::vector<Node*> children;

    bool isDag() const { return type->dag; }
    bool hasFn(MFn::Type t) const { return type->hasFn(t); }
    MObject object() { return MObject(this); }

    // Attribute by long or short name: type table, then dynamic, then undeclared.
    const Attribute* findAttribute(const std::string& name) const;
    // All top-level attributes in order: inherited type attributes first, then dynamic ones.
    std::vector<const Attribute*> allTopLevelAttributes() const;

    Attribute* addDynamicAttribute(std::unique_ptr<Attribute> attribute);
    Attribute* addUndeclaredAttribute(const std::string& name, AttrType type);

    // The live connection that drives the plug, or null.
    const Connection* incomingConnection(const PlugPath& path) const;

    // Storage of a plug; null when nothing was stored and create is false.
    PlugData* plugData(const PlugPath& path, bool create);
    const PlugData* plugData(const PlugPath& path) const;
};

// The whole scene: nodes in creation order, name lookup, connections, the world and units.
class Scene {
public:
    Scene();
    ~Scene();

    Node* world() const { return world_; }
    const std::vector<std::unique_ptr<Node>>& nodes() const { return nodes_; }

    Node* createNode(const NodeType& type, const std::string& name, Node* parent);
    // A name not taken yet: base, or base followed by the first free number.
    std::string uniqueName(const std::string& base) const;
    std::vector<Node*> nodesNamed(const std::string& name) const;
    // Visits the nodes of that name, in no particular order, until visit gives back false.
    void visitNamed(const std::string& name, const std::function<bool(Node*)>& visit) const;
    void rename(Node* node, const std::string& name);

    // DAG edits. addChild appends; the child keeps its other parents (instancing).
    void addChild(Node* parent, Node* child);
    void removeChild(Node* parent, Node* child);

    // Connections. connect replaces what drove the destination before.
    bool connect(Node* src, const PlugPath& srcPath, Node* dst, const PlugPath& dstPath, std::string* error);
    bool disconnect(Node* src, const PlugPath& srcPath, Node* dst, const PlugPath& dstPath);
    const std::vector<Connection>& connections() const { return connections_; }

    // Units of the scene, as the file or the user set them.
    double linearUnitInCm = 1.0;    // centimetres per user unit
    double angularUnitInRad = 3.14159265358979323846 / 180.0;  // radians per user unit: degrees, as a new scene
    std::string linearUnitName = "centimeter";
    std::string angularUnitName = "degree";
    std::string timeUnitName = "film";

    std::string fileName;  // empty for an unsaved scene
    // Goes up with every edit of values, connections or the DAG, so that cached results of
    // evaluation know when they are stale.
    uint64_t revision = 0;
    void touch() { ++revision; }
    std::vector<MObject> activeSelection;  // nodes, in selection order

private:
    std::vector<std::unique_ptr<Node>> nodes_;
    std::unordered_multimap<std::string, Node*> byName_;
    std::vector<Connection> connections_;
    Node* world_ = nullptr;
    uint64_t nextCreationIndex_ = 0;
};

// Node types by name; null when the type is unknown.
const NodeType* findNodeType(const std::string& name);
const NodeType& genericNodeType();

// The current scene of the process, and a fresh one holding what a new scene holds.
Scene& currentScene();
void newScene();

// DAG paths: a path is the list of nodes from a child of the world down to the node.
using NodePath = std::vector<Node*>;
std::vector<NodePath> allPathsTo(Node* node);
std::string fullPathName(const NodePath& path);
std::string partialPathName(const NodePath& path);

bool parsePlugPath(Node* node, const std::string& text, PlugPath& path, bool createUndeclared,
                   AttrType undeclaredType, std::string* error);
std::string plugPathName(const PlugPath& path, bool longNames);

}  // namespace vqmhost
