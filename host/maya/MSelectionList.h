// An ordered list of nodes, DAG paths and components.
#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <vector>

class MStringArray;

class MSelectionList {
public:
    MSelectionList() = default;

    unsigned int length(MStatus* status = nullptr) const;
    bool isEmpty(MStatus* status = nullptr) const { return length(status) == 0; }
    MStatus clear();

    // Adds the nodes that match a name (a name, a partial or full path, '*' wildcards).
    MStatus add(const MString& matchString, bool searchChildNamespacesToo = false);
    MStatus add(const MObject& object, bool mergeWithExisting = false);
    MStatus add(const MDagPath& path, const MObject& component = MObject::kNullObj, bool mergeWithExisting = false);
    MStatus remove(unsigned index);

    MStatus getDependNode(unsigned index, MObject& object) const;
    MStatus getDagPath(unsigned index, MDagPath& path, MObject& component) const;
    MStatus getDagPath(unsigned index, MDagPath& path) const;
    MStatus getSelectionStrings(MStringArray& strings) const;
    bool hasItem(const MObject& object, MStatus* status = nullptr) const;
    bool hasItem(const MDagPath& path, const MObject& component = MObject::kNullObj, MStatus* status = nullptr) const;

private:
    struct Item {
        MObject node;
        MDagPath path;  // empty for dependency nodes
        MObject component;
    };
    std::vector<Item> items_;
};
