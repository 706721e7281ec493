// Function set of any node: its name, type, attributes, plugs and connections.
#pragma once

#include <maya/MFnBase.h>
#include <maya/MPlug.h>
#include <maya/MString.h>

class MPlugArray;

class MFnDependencyNode : public MFnBase {
public:
    enum MAttrClass { kLocalDynamicAttr = 1, kNormalAttr, kExtensionAttr, kInvalidAttr };

    MFnDependencyNode() = default;
    MFnDependencyNode(MObject& object, MStatus* status = nullptr);
    MFnDependencyNode(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override { return MFn::kDependencyNode; }

    MObject create(const MString& typeName, const MString& name = MString(), MStatus* status = nullptr);

    MString name(MStatus* status = nullptr) const;
    MString setName(const MString& name, bool createNamespace = false, MStatus* status = nullptr);
    MString typeName(MStatus* status = nullptr) const;
    bool isDefaultNode(MStatus* status = nullptr) const;
    bool isLocked(MStatus* status = nullptr) const;

    MPlug findPlug(const MString& attributeName, MStatus* status = nullptr) const;
    MPlug findPlug(const MString& attributeName, bool wantNetworkedPlug, MStatus* status = nullptr) const;
    MPlug findPlug(const char* attributeName, MStatus* status = nullptr) const
    {
        return findPlug(MString(attributeName), status);
    }
    MPlug findPlug(const char* attributeName, bool wantNetworkedPlug, MStatus* status = nullptr) const
    {
        return findPlug(MString(attributeName), wantNetworkedPlug, status);
    }
    MPlug findPlug(const MObject& attribute, bool wantNetworkedPlug = true, MStatus* status = nullptr) const;

    unsigned int attributeCount(MStatus* status = nullptr) const;
    MObject attribute(unsigned index, MStatus* status = nullptr) const;
    MObject attribute(const MString& attributeName, MStatus* status = nullptr) const;
    bool hasAttribute(const MString& attributeName, MStatus* status = nullptr) const;
    MAttrClass attributeClass(const MObject& attribute, MStatus* status = nullptr) const;
    MStatus addAttribute(const MObject& attribute);

    // Plugs of this node that take part in a connection, either way.
    MStatus getConnections(MPlugArray& plugs) const;

protected:
    vqmhost::Node* node() const { return object_.hostNode(); }
};
