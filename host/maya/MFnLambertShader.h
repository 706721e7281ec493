// Function sets of the lambert family of surface shaders: lambert, and through reflect, phong
// and blinn. Colours are read as plug values; a connected colour reads what drives it.
#pragma once

#include <maya/MColor.h>
#include <maya/MFnDependencyNode.h>

class MFnLambertShader : public MFnDependencyNode {
public:
    MFnLambertShader() = default;
    MFnLambertShader(MObject& object, MStatus* status = nullptr);
    MFnLambertShader(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override { return MFn::kLambert; }

    MColor color(MStatus* status = nullptr) const;
    MColor transparency(MStatus* status = nullptr) const;
    MColor ambientColor(MStatus* status = nullptr) const;
    MColor incandescence(MStatus* status = nullptr) const;
    float diffuseCoeff(MStatus* status = nullptr) const;
    float translucenceCoeff(MStatus* status = nullptr) const;
    float glowIntensity(MStatus* status = nullptr) const;
    float refractiveIndex(MStatus* status = nullptr) const;
    bool hideSource(MStatus* status = nullptr) const;

protected:
    MColor readColor(const char* attribute, MStatus* status) const;
    float readFloatAttribute(const char* attribute, MStatus* status) const;
};

class MFnReflectShader : public MFnLambertShader {
public:
    MFnReflectShader() = default;
    MFnReflectShader(MObject& object, MStatus* status = nullptr);
    MFnReflectShader(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override { return MFn::kReflect; }

    MColor specularColor(MStatus* status = nullptr) const;
    float reflectivity(MStatus* status = nullptr) const;
    MColor reflectedColor(MStatus* status = nullptr) const;
};

class MFnPhongShader : public MFnReflectShader {
public:
    MFnPhongShader() = default;
    MFnPhongShader(MObject& object, MStatus* status = nullptr);
    MFnPhongShader(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override { return MFn::kPhong; }

    float cosPower(MStatus* status = nullptr) const;
};

class MFnBlinnShader : public MFnReflectShader {
public:
    MFnBlinnShader() = default;
    MFnBlinnShader(MObject& object, MStatus* status = nullptr);
    MFnBlinnShader(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override { return MFn::kBlinn; }

    float eccentricity(MStatus* status = nullptr) const;
    float specularRollOff(MStatus* status = nullptr) const;
};
