// A plug: an attribute of one node, with the array indices that address one element.
#pragma once

#include <maya/MDGContext.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <vector>

class MPlugArray;
class MIntArray;

class MPlug {
public:
    MPlug() = default;
    MPlug(const MObject& node, const MObject& attribute);

    bool isNull(MStatus* status = nullptr) const;
    MObject node(MStatus* status = nullptr) const;
    MObject attribute(MStatus* status = nullptr) const;
    MString name(MStatus* status = nullptr) const;          // node.attribute with short names
    MString partialName(bool includeNodeName = false, bool includeNonMandatoryIndices = false,
                        bool includeInstancedIndices = false, bool useAlias = false,
                        bool useFullAttributePath = false, bool useLongNames = false,
                        MStatus* status = nullptr) const;

    bool isArray(MStatus* status = nullptr) const;
    bool isElement(MStatus* status = nullptr) const;
    bool isCompound(MStatus* status = nullptr) const;
    bool isChild(MStatus* status = nullptr) const;
    bool isDynamic(MStatus* status = nullptr) const;
    bool isConnected(MStatus* status = nullptr) const;
    bool isNetworked(MStatus* status = nullptr) const { return isConnected(status); }

    unsigned int numElements(MStatus* status = nullptr) const;
    unsigned int evaluateNumElements(MStatus* status = nullptr) const { return numElements(status); }
    MPlug elementByPhysicalIndex(unsigned index, MStatus* status = nullptr) const;
    MPlug elementByLogicalIndex(unsigned index, MStatus* status = nullptr) const;
    MPlug operator[](unsigned logicalIndex) const { return elementByLogicalIndex(logicalIndex); }
    unsigned int logicalIndex(MStatus* status = nullptr) const;
    // Points the plug's step of the given array attribute (the plug's or an ancestor's) at one element.
    MStatus selectAncestorLogicalIndex(unsigned index, const MObject& attribute = MObject::kNullObj);
    int getExistingArrayAttributeIndices(MIntArray& indices, MStatus* status = nullptr) const;
    unsigned int numChildren(MStatus* status = nullptr) const;
    MPlug child(unsigned index, MStatus* status = nullptr) const;
    MPlug child(const MObject& attribute, MStatus* status = nullptr) const;
    MPlug parent(MStatus* status = nullptr) const;
    MPlug array(MStatus* status = nullptr) const;

    // Plugs at the far end of this plug's connections: its source when asDst, its
    // destinations when asSrc.
    bool connectedTo(MPlugArray& plugs, bool asDst, bool asSrc, MStatus* status = nullptr) const;

    MStatus getValue(bool& value, MDGContext& context = MDGContext::fsNormal) const;
    MStatus getValue(int& value, MDGContext& context = MDGContext::fsNormal) const;
    MStatus getValue(short& value, MDGContext& context = MDGContext::fsNormal) const;
    MStatus getValue(float& value, MDGContext& context = MDGContext::fsNormal) const;
    MStatus getValue(double& value, MDGContext& context = MDGContext::fsNormal) const;
    MStatus getValue(MString& value, MDGContext& context = MDGContext::fsNormal) const;
    MStatus getValue(MObject& value, MDGContext& context = MDGContext::fsNormal) const;
    bool asBool(MDGContext& context = MDGContext::fsNormal, MStatus* status = nullptr) const;
    int asInt(MDGContext& context = MDGContext::fsNormal, MStatus* status = nullptr) const;
    short asShort(MDGContext& context = MDGContext::fsNormal, MStatus* status = nullptr) const;
    float asFloat(MDGContext& context = MDGContext::fsNormal, MStatus* status = nullptr) const;
    double asDouble(MDGContext& context = MDGContext::fsNormal, MStatus* status = nullptr) const;
    MString asString(MDGContext& context = MDGContext::fsNormal, MStatus* status = nullptr) const;
    MObject asMObject(MDGContext& context = MDGContext::fsNormal, MStatus* status = nullptr) const;

    MStatus setValue(bool value);
    MStatus setValue(int value);
    MStatus setValue(float value);
    MStatus setValue(double value);
    MStatus setValue(const MString& value);
    MStatus setValue(const char* value) { return setValue(MString(value)); }
    MStatus setValue(MObject& data);

    bool operator==(const MPlug& other) const;
    bool operator!=(const MPlug& other) const { return !(*this == other); }

    // Stand-in internals.
    MPlug(vqmhost::Node* node, std::vector<vqmhost::PlugStep> path) : node_(node), path_(std::move(path)) {}
    vqmhost::Node* hostNode() const { return node_; }
    const std::vector<vqmhost::PlugStep>& hostPath() const { return path_; }

private:
    vqmhost::Node* node_ = nullptr;
    std::vector<vqmhost::PlugStep> path_;
};
