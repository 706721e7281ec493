// The lambert family of shader function sets and MItDependencyNodes.
#include <maya/MFnLambertShader.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MPlug.h>

#include "StatusReport.h"
#include "Graph.h"

using namespace vqmhost;

#define VQM_SHADER_CONSTRUCTORS(CLASS, FAMILY)                                         \
    CLASS::CLASS(MObject& object, MStatus* status) : CLASS(static_cast<const MObject&>(object), status) {} \
    CLASS::CLASS(const MObject& object, MStatus* status)                               \
    {                                                                                  \
        if (object.hasFn(FAMILY)) {                                                    \
            object_ = object;                                                          \
            report(status, MStatus::kSuccess);                                         \
        } else {                                                                       \
            report(status, MStatus::kInvalidParameter);                                \
        }                                                                              \
    }
VQM_SHADER_CONSTRUCTORS(MFnLambertShader, MFn::kLambert)
VQM_SHADER_CONSTRUCTORS(MFnReflectShader, MFn::kReflect)
VQM_SHADER_CONSTRUCTORS(MFnPhongShader, MFn::kPhong)
VQM_SHADER_CONSTRUCTORS(MFnBlinnShader, MFn::kBlinn)
#undef VQM_SHADER_CONSTRUCTORS

MColor MFnLambertShader::readColor(const char* attribute, MStatus* status) const
{
    MStatus found;
    MPlug plug = findPlug(attribute, &found);
    if (!found || plug.numChildren() != 3) {
        report(status, MStatus::kFailure);
        return MColor();
    }
    report(status, MStatus::kSuccess);
    return MColor(plug.child(0).asFloat(), plug.child(1).asFloat(), plug.child(2).asFloat());
}

float MFnLambertShader::readFloatAttribute(const char* attribute, MStatus* status) const
{
    MStatus found;
    MPlug plug = findPlug(attribute, &found);
    float value = 0.0f;
    report(status, found ? plug.getValue(value).statusCode() : MStatus::kFailure);
    return value;
}

MColor MFnLambertShader::color(MStatus* status) const { return readColor("color", status); }
MColor MFnLambertShader::transparency(MStatus* status) const { return readColor("transparency", status); }
MColor MFnLambertShader::ambientColor(MStatus* status) const { return readColor("ambientColor", status); }
MColor MFnLambertShader::incandescence(MStatus* status) const { return readColor("incandescence", status); }
float MFnLambertShader::diffuseCoeff(MStatus* status) const { return readFloatAttribute("diffuse", status); }
float MFnLambertShader::translucenceCoeff(MStatus* status) const { return readFloatAttribute("translucence", status); }
float MFnLambertShader::glowIntensity(MStatus* status) const { return readFloatAttribute("glowIntensity", status); }
float MFnLambertShader::refractiveIndex(MStatus* status) const { return readFloatAttribute("refractiveIndex", status); }
bool MFnLambertShader::hideSource(MStatus* status) const { return readFloatAttribute("hideSource", status) != 0.0f; }
MColor MFnReflectShader::specularColor(MStatus* status) const { return readColor("specularColor", status); }
float MFnReflectShader::reflectivity(MStatus* status) const { return readFloatAttribute("reflectivity", status); }
MColor MFnReflectShader::reflectedColor(MStatus* status) const { return readColor("reflectedColor", status); }
float MFnPhongShader::cosPower(MStatus* status) const { return readFloatAttribute("cosinePower", status); }
float MFnBlinnShader::eccentricity(MStatus* status) const { return readFloatAttribute("eccentricity", status); }
float MFnBlinnShader::specularRollOff(MStatus* status) const { return readFloatAttribute("specularRollOff", status); }

MItDependencyNodes::MItDependencyNodes(MFn::Type filter, MStatus* status) : filter_(filter)
{
    report(status, MStatus::kSuccess);
    reset();
}

MStatus MItDependencyNodes::reset()
{
    nodes_.clear();
    position_ = 0;
    Scene& scene = currentScene();
    for (const auto& node : scene.nodes()) {
        if (node.get() == scene.world()) continue;
        if (filter_ == MFn::kInvalid || node->hasFn(filter_)) nodes_.push_back(MObject(node.get()));
    }
    return MStatus::kSuccess;
}

bool MItDependencyNodes::isDone(MStatus* status) const
{
    report(status, MStatus::kSuccess);
    return position_ >= nodes_.size();
}

MStatus MItDependencyNodes::next()
{
    if (position_ >= nodes_.size()) return MStatus::kFailure;
    ++position_;
    return MStatus::kSuccess;
}

MObject MItDependencyNodes::item(MStatus* status) const
{
    if (position_ >= nodes_.size()) {
        report(status, MStatus::kFailure);
        return MObject();
    }
    report(status, MStatus::kSuccess);
    return nodes_[position_];
}
