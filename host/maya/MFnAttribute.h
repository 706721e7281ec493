// Function sets of attributes: names, array-ness, and what typed and numeric attributes hold.
#pragma once

#include <maya/MFnBase.h>
#include <maya/MFnData.h>
#include <maya/MFnNumericData.h>
#include <maya/MString.h>

class MFnAttribute : public MFnBase {
public:
    MFnAttribute() = default;
    MFnAttribute(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override { return MFn::kAttribute; }

    MString name(MStatus* status = nullptr) const;
    MString shortName(MStatus* status = nullptr) const;
    bool isArray(MStatus* status = nullptr) const;
    bool isKeyable(MStatus* status = nullptr) const;
    bool isDynamic(MStatus* status = nullptr) const;
    MObject parent(MStatus* status = nullptr) const;

protected:
    const vqmhost::Attribute* attribute() const { return object_.hostAttribute(); }
};

class MFnTypedAttribute : public MFnAttribute {
public:
    MFnTypedAttribute() = default;
    MFnTypedAttribute(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override { return MFn::kTypedAttribute; }
    MFnData::Type attrType(MStatus* status = nullptr) const;
};

class MFnNumericAttribute : public MFnAttribute {
public:
    MFnNumericAttribute() = default;
    MFnNumericAttribute(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override { return MFn::kNumericAttribute; }
    MFnNumericData::Type unitType(MStatus* status = nullptr) const;
};
