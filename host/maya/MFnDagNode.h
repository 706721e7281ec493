// Function set of DAG nodes: parents, children, paths and instancing.
#pragma once

#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>

class MFnDagNode : public MFnDependencyNode {
public:
    MFnDagNode() = default;
    MFnDagNode(MObject& object, MStatus* status = nullptr);
    MFnDagNode(const MObject& object, MStatus* status = nullptr);
    MFnDagNode(const MDagPath& path, MStatus* status = nullptr);
    MFn::Type type() const override { return MFn::kDagNode; }

    MStatus setObject(const MDagPath& path);
    MStatus setObject(const MObject& object);

    MObject create(const MString& typeName, const MString& name = MString(),
                   const MObject& parent = MObject::kNullObj, MStatus* status = nullptr);
    MObject create(const MString& typeName, const MObject& parent, MStatus* status = nullptr)
    {
        return create(typeName, MString(), parent, status);
    }

    unsigned int parentCount(MStatus* status = nullptr) const;
    MObject parent(unsigned index, MStatus* status = nullptr) const;
    unsigned int childCount(MStatus* status = nullptr) const;
    MObject child(unsigned index, MStatus* status = nullptr) const;
    MStatus addChild(MObject& child, unsigned index = kNextPos, bool keepExistingParents = false);
    bool isChildOf(const MObject& node, MStatus* status = nullptr) const;
    bool isParentOf(const MObject& node, MStatus* status = nullptr) const;

    MStatus getPath(MDagPath& path) const;
    MDagPath dagPath(MStatus* status = nullptr) const;
    MStatus getAllPaths(MDagPathArray& paths) const;
    MString fullPathName(MStatus* status = nullptr) const;
    MString partialPathName(MStatus* status = nullptr) const;
    bool isInstanced(bool indirect = true, MStatus* status = nullptr) const;
    unsigned int instanceCount(bool total, MStatus* status = nullptr) const;
    bool inUnderWorld(MStatus* status = nullptr) const;
    bool isIntermediateObject(MStatus* status = nullptr) const;

    static constexpr unsigned int kNextPos = 0xffffffffu;

protected:
    MDagPath path_;  // set when the function set was given a path
};
