// MFnAttribute and its typed and numeric forms over the attribute tables.
#include <maya/MFnAttribute.h>

#include "StatusReport.h"
#include "Graph.h"

using namespace vqmhost;

MFnAttribute::MFnAttribute(const MObject& object, MStatus* status)
{
    if (object.hostAttribute()) {
        object_ = object;
        report(status, MStatus::kSuccess);
    } else {
        report(status, MStatus::kInvalidParameter);
    }
}

MString MFnAttribute::name(MStatus* status) const
{
    report(status, attribute() ? MStatus::kSuccess : MStatus::kFailure);
    return attribute() ? MString(attribute()->longName) : MString();
}

MString MFnAttribute::shortName(MStatus* status) const
{
    report(status, attribute() ? MStatus::kSuccess : MStatus::kFailure);
    return attribute() ? MString(attribute()->shortName) : MString();
}

bool MFnAttribute::isArray(MStatus* status) const
{
    report(status, attribute() ? MStatus::kSuccess : MStatus::kFailure);
    return attribute() && attribute()->array;
}

bool MFnAttribute::isKeyable(MStatus* status) const
{
    report(status, attribute() ? MStatus::kSuccess : MStatus::kFailure);
    return attribute() && attribute()->keyable;
}

bool MFnAttribute::isDynamic(MStatus* status) const
{
    report(status, attribute() ? MStatus::kSuccess : MStatus::kFailure);
    return attribute() && attribute()->dynamic;
}

MObject MFnAttribute::parent(MStatus* status) const
{
    const Attribute* a = attribute();
    report(status, a && a->parent ? MStatus::kSuccess : MStatus::kFailure);
    return a && a->parent ? MObject(static_cast<const Attribute*>(a->parent)) : MObject();
}

MFnTypedAttribute::MFnTypedAttribute(const MObject& object, MStatus* status)
{
    if (object.hasFn(MFn::kTypedAttribute)) {
        object_ = object;
        report(status, MStatus::kSuccess);
    } else {
        report(status, MStatus::kInvalidParameter);
    }
}

MFnData::Type MFnTypedAttribute::attrType(MStatus* status) const
{
    const Attribute* a = attribute();
    report(status, a ? MStatus::kSuccess : MStatus::kFailure);
    if (!a) return MFnData::kInvalid;
    if (a->type == AttrType::String) return MFnData::kString;
    const std::string& t = a->dataType;
    if (t == "matrix") return MFnData::kMatrix;
    if (t == "stringArray") return MFnData::kStringArray;
    if (t == "doubleArray") return MFnData::kDoubleArray;
    if (t == "Int32Array" || t == "intArray") return MFnData::kIntArray;
    if (t == "pointArray") return MFnData::kPointArray;
    if (t == "vectorArray") return MFnData::kVectorArray;
    if (t == "componentList") return MFnData::kComponentList;
    if (t == "mesh") return MFnData::kMesh;
    if (t == "nurbsCurve") return MFnData::kNurbsCurve;
    if (t == "nurbsSurface") return MFnData::kNurbsSurface;
    return MFnData::kInvalid;
}

MFnNumericAttribute::MFnNumericAttribute(const MObject& object, MStatus* status)
{
    if (object.hasFn(MFn::kNumericAttribute)) {
        object_ = object;
        report(status, MStatus::kSuccess);
    } else {
        report(status, MStatus::kInvalidParameter);
    }
}

MFnNumericData::Type MFnNumericAttribute::unitType(MStatus* status) const
{
    const Attribute* a = attribute();
    report(status, a ? MStatus::kSuccess : MStatus::kFailure);
    if (!a) return MFnNumericData::kInvalid;
    if (a->type == AttrType::Compound && a->numericCompound && !a->children.empty()) {
        bool isFloat = a->children[0]->type == AttrType::Float;
        bool isInt = a->children[0]->type == AttrType::Int || a->children[0]->type == AttrType::Short;
        size_t n = a->children.size();
        if (n == 2) return isFloat ? MFnNumericData::k2Float : isInt ? MFnNumericData::k2Int : MFnNumericData::k2Double;
        if (n == 3) return isFloat ? MFnNumericData::k3Float : isInt ? MFnNumericData::k3Int : MFnNumericData::k3Double;
        return MFnNumericData::kInvalid;
    }
    switch (a->type) {
    case AttrType::Bool: return MFnNumericData::kBoolean;
    case AttrType::Byte: return MFnNumericData::kByte;
    case AttrType::Short: return MFnNumericData::kShort;
    case AttrType::Int: return MFnNumericData::kInt;
    case AttrType::Float: return MFnNumericData::kFloat;
    case AttrType::Double: return MFnNumericData::kDouble;
    default: return MFnNumericData::kInvalid;
    }
}
