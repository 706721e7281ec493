// The Materials pass: each lambert-family shader with its colours, texture maps, reflection and
// refraction maps and custom shader data; then the Files pass, whose text goes first.
#include "materials/MaterialsExporter.h"

#include <maya/MColor.h>
#include <maya/MFnAttribute.h>
#include <maya/MGlobal.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MPlugArray.h>

#include "plugin/HostHelpers.h"

#include <cctype>
#include <cmath>
#include <sstream>
#include <utility>
#include <vector>

namespace vqm {

namespace {

// What a shader's dynamic attributes ask for.
struct ShaderAttributes {
    bool hasCustomShader = false;
    std::string customShaderPath, customShaderVariation;
    std::vector<std::pair<std::string, std::string>> customParameters, customTextures;
    float reflectionBumpScale = 0.1f;
    int32_t reflectionResolution = 512;
};

void readShaderAttributes(const MFnDependencyNode& shader, ShaderAttributes& result)
{
    for (unsigned i = 0; i < shader.attributeCount(); ++i) {
        MObject attribute = shader.attribute(i);
        if (shader.attributeClass(attribute) != MFnDependencyNode::kLocalDynamicAttr) continue;
        MPlug plug = shader.findPlug(attribute);
        const std::string name = plug.partialName().str();
        bool isString = false, isNumber = false;
        std::string text;
        float number = 0.0f;
        if (attribute.hasFn(MFn::kTypedAttribute) && MFnTypedAttribute(attribute).attrType() == MFnData::kString) {
            MString value;
            isString = bool(plug.getValue(value));
            text = value.str();
        } else if (attribute.hasFn(MFn::kNumericAttribute)) {
            MFnNumericData::Type unit = MFnNumericAttribute(attribute).unitType();
            if (unit == MFnNumericData::kInt || unit == MFnNumericData::kFloat || unit == MFnNumericData::kDouble)
                isNumber = bool(plug.getValue(number));
        }
        if (!isString && !isNumber) continue;
        if (name == "customShader") {
            if (isString) {
                result.customShaderPath = text;
                result.hasCustomShader = true;
            }
        } else if (name == "customShaderVariation") {
            if (isString) result.customShaderVariation = text;
        } else if (name.compare(0, 16, "customParameter_") == 0) {
            if (isString) result.customParameters.emplace_back(name.substr(16), text);
        } else if (name.compare(0, 14, "customTexture_") == 0) {
            if (isString) result.customTextures.emplace_back(name.substr(14), text);
        } else if (name == "reflectionMapBumpScale") {
            result.reflectionBumpScale = isString ? parseFloat(text.c_str()) : number;
        } else if (name == "reflectionMapResolution") {
            result.reflectionResolution = isString ? int32_t(strtol(text.c_str(), nullptr, 10)) : int32_t(number);
        }
    }
}

void writeColor(std::ostream& out, const char* name, float r, float g, float b)
{
    out << " " << name << "=\"" << r << " " << g << " " << b << "\"";
}

}  // namespace

MaterialsExporter::MaterialsExporter(bool relativePaths, bool verbose, bool floatEpsilon,
                                     const std::string& sceneDirectory, const std::string& outputDirectory)
    : relativePaths_(relativePaths), verbose_(verbose), floatEpsilon_(floatEpsilon), sceneDirectory_(sceneDirectory),
      outputDirectory_(outputDirectory), sceneDirectoryLower_(lowerCase(sceneDirectory)),
      outputDirectoryLower_(lowerCase(outputDirectory))
{
}

bool MaterialsExporter::exportMaterialsAndFiles(FileMap& fileMap, CustomFileMap& customFileMap, MaterialMap& materialMap,
                                                bool shapesExported, std::ostream& out)
{
    std::ostringstream materials, files;
    bool ok = exportMaterials(materialMap, shapesExported, fileMap, customFileMap, materials);
    ok = exportFiles(fileMap, customFileMap, files) && ok;
    out << files.str() << materials.str();
    return ok;
}

bool MaterialsExporter::exportMaterials(MaterialMap& materialMap, bool shapesExported, FileMap& fileMap,
                                        CustomFileMap& customFileMap, std::ostream& out)
{
    out << "  <Materials>\n";
    for (MItDependencyNodes it(MFn::kLambert); !it.isDone(); it.next()) {
        MObject node = it.item();
        MFnLambertShader shader(node);
        const MFn::Type type = node.apiType();
        if (type != MFn::kPhong && type != MFn::kLambert && type != MFn::kBlinn) {
            MGlobal::displayWarning(MString("Unsupported shader type (only lambert and phong supported): ") +
                                    shader.name() + " is of type " + node.apiTypeStr());
            continue;
        }
        const std::string name = shader.name().str();
        auto entry = materialMap.find(name);
        if (entry == materialMap.end() && shapesExported) continue;
        const uint32_t materialId = insertId(materialMap, name);
        if (verbose_) MGlobal::displayInfo(MString("Shader: ") + shader.name());

        const bool isPhong = type == MFn::kPhong, isBlinn = type == MFn::kBlinn;
        MColor ambientColor = shader.ambientColor();
        float ambient[3] = {ambientColor.r, ambientColor.g, ambientColor.b};
        if (ambient[0] == 0.0f && ambient[1] == 0.0f && ambient[2] == 0.0f) ambient[0] = ambient[1] = ambient[2] = 1.0f;
        const bool isEmissive = shader.glowIntensity() == 1.0f;
        std::ostringstream childText;

        bool hasColor = false;
        float color[4] = {0.0f, 0.0f, 0.0f, 1.0f};
        MPlugArray plugs;
        int diffuseWritten = 0;
        if (sourcePlugsOf(shader, "color", plugs))
            diffuseWritten = writeTextureInput(shader, plugs[0].node(), fileMap, childText,
                                               isEmissive ? TextureEmissive : TextureDiffuse);
        if (diffuseWritten == 0) {
            MColor c = shader.color();
            color[0] = c.r;
            color[1] = c.g;
            color[2] = c.b;
            hasColor = true;
        }
        float hue, saturation, value;
        shader.transparency().get(MColor::kHSV, hue, saturation, value);
        color[3] = 1.0f - value;
        MPlugArray normalPlugs;
        if (sourcePlugsOf(shader, "normalCamera", normalPlugs))
            writeTextureInput(shader, normalPlugs[0].node(), fileMap, childText, TextureNormal);

        float specular[3] = {0.0f, 0.0f, 0.0f};
        float cosPower = 0.0f;
        bool hasCubeReflection = false;
        if (isPhong || isBlinn) {
            specular[0] = specular[1] = specular[2] = 1.0f;
            if (isPhong) {
                cosPower = MFnPhongShader(node).cosPower();
            } else {
                MFnBlinnShader blinn(node);
                float p = blinn.eccentricity() * blinn.specularRollOff();
                cosPower = 1.0f / std::log(0.7f * p + 1.01f) / p;
            }
            hasCubeReflection = writeFirstConnectedTexture(shader, "reflectedColor", fileMap, childText, TextureReflection) > 0;
            if (writeFirstConnectedTexture(shader, "specularColor", fileMap, childText, TextureGloss) == 0) {
                MColor s = MFnReflectShader(node).specularColor();
                specular[0] = s.r;
                specular[1] = s.g;
                specular[2] = s.b;
            }
            if (isBlinn)
                MGlobal::displayWarning(MString("Blinn shader type is not directly supported, approximating to phong shader "
                                                "(only lambert and phong supported): ") +
                                        shader.name());
        }
        const bool translucent = shader.translucenceCoeff() != 0.0f;

        out << "    <Material name=\"" << name << "\" materialId=\"" << materialId << "\"";
        if (hasColor)
            out << " " << (isEmissive ? "emissiveColor" : "diffuseColor") << "=\"" << color[0] << " " << color[1] << " "
                << color[2] << " " << color[3] << "\"";
        if (isPhong || isBlinn) out << " cosPower=\"" << cosPower << "\"";
        writeColor(out, "specularColor", specular[0], specular[1], specular[2]);
        writeColor(out, "ambientColor", ambient[0], ambient[1], ambient[2]);
        if (translucent) out << " alphaBlending=\"true\"";

        ShaderAttributes attributes;
        readShaderAttributes(shader, attributes);
        if (attributes.hasCustomShader) {
            uint32_t fileId = insertId(fileMap, "materialCustomShaderFile_" + attributes.customShaderPath);
            customFileMap.emplace(attributes.customShaderPath, fileId);
            out << " customShaderId=\"" << fileId << "\"";
            if (!attributes.customShaderVariation.empty())
                out << " customShaderVariation=\"" << attributes.customShaderVariation << "\"";
        }
        out << ">\n";

        const float refractiveIndex = shader.refractiveIndex();
        if (!hasCubeReflection && refractiveIndex != 1.0f) {
            out << "      <Reflectionmap type=\"planar\" refractiveIndex=\"" << refractiveIndex << "\" bumpScale=\""
                << attributes.reflectionBumpScale << "\"";
            if (attributes.reflectionResolution != 512) out << " resolution=\"" << attributes.reflectionResolution << "\"";
            out << "/>\n";
        }
        bool refractions = false;
        readBool(shader, "refractions", refractions);
        if (refractions) {
            float absorbance = 1.0f;
            readFloat(shader, "lightAbsorbance", absorbance);
            out << "      <Refractionmap type=\"planar\" coeff=\"" << 1.0f - absorbance << "\" bumpScale=\"0.1\"/>\n";
        }
        if (attributes.hasCustomShader) {
            for (const auto& parameter : attributes.customParameters)
                out << "      <CustomParameter name=\"" << parameter.first << "\" value=\"" << parameter.second << "\"/>\n";
            for (const auto& texture : attributes.customTextures) {
                uint32_t fileId = insertId(fileMap, "materialCustomShaderTexture_" + texture.second);
                customFileMap.emplace(texture.second, fileId);
                out << "      <Custommap name=\"" << texture.first << "\" fileId=\"" << fileId << "\"/>\n";
            }
        }
        out << childText.str() << "    </Material>\n";
    }
    out << "  </Materials>\n\n";
    return true;
}

}  // namespace vqm
