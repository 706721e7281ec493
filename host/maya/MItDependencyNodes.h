// Walks all nodes of the scene in the order they were made, optionally those of one family.
#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <vector>

class MItDependencyNodes {
public:
    MItDependencyNodes(MFn::Type filter = MFn::kInvalid, MStatus* status = nullptr);

    bool isDone(MStatus* status = nullptr) const;
    MStatus next();
    MStatus reset();
    MObject item(MStatus* status = nullptr) const;
    MObject thisNode(MStatus* status = nullptr) const { return item(status); }

private:
    std::vector<MObject> nodes_;
    size_t position_ = 0;
    MFn::Type filter_;
};
