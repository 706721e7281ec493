// Base of the function sets: an object the set is attached to.
#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

class MFnBase {
public:
    MFnBase() = default;
    virtual ~MFnBase() = default;
    virtual MFn::Type type() const { return MFn::kBase; }
    MObject object(MStatus* status = nullptr) const;
    MStatus setObject(MObject& object);
    MStatus setObject(const MObject& object);
    bool hasObj(MFn::Type type) const;

protected:
    MObject object_;
};
