// Following a shading input to the file textures behind it: directly, through an environment
// texture, a bump node or (nested) layered textures.
#include "materials/MaterialsExporter.h"

#include <maya/MPlugArray.h>

#include "plugin/HostHelpers.h"

namespace vqm {

static const char* const kElementOfMode[] = {"Texture", "Normalmap", "Emissivemap", "Glossmap", "Reflectionmap"};

int MaterialsExporter::writeTextureElement(const MObject& node, FileMap& fileMap, TextureMode mode, bool writeBumpDepth,
                                           float bumpDepth, float refractiveIndex, std::ostream& out)
{
    if (node.apiType() != MFn::kFileTexture) return 0;
    uint32_t fileId = insertId(fileMap, MFnDependencyNode(node).name().str());
    out << "      <" << kElementOfMode[mode] << " fileId=\"" << fileId << "\"";
    if (mode == TextureNormal && writeBumpDepth) out << " bumpDepth=\"" << bumpDepth << "\"";
    if (mode == TextureReflection)
        out << " type=\"cube\" wrap=\"false\" refractiveIndex=\"" << refractiveIndex << "\" bumpScale=\"0.1\"";
    out << "/>\n";
    return 1;
}

int MaterialsExporter::writeTextureInput(const MFnLambertShader& shader, const MObject& node, FileMap& fileMap,
                                         std::ostream& out, TextureMode mode)
{
    const float refractiveIndex = shader.refractiveIndex();
    if (node.hasFn(MFn::kFileTexture)) return writeTextureElement(node, fileMap, mode, false, 0.0f, refractiveIndex, out);
    MFnDependencyNode input(node);
    MPlugArray plugs;
    if (node.hasFn(MFn::kTextureEnv)) {
        if (mode != TextureReflection) return 0;
        int written = 0;
        if (sourcePlugsOf(input, "image", plugs))
            for (unsigned i = 0; i < plugs.length(); ++i)
                written += writeTextureElement(plugs[i].node(), fileMap, mode, false, 0.0f, refractiveIndex, out);
        return written;
    }
    if (node.hasFn(MFn::kBump)) {
        if (mode != TextureNormal) return 0;
        float depth = 1.0f;
        bool writeDepth = readFloat(input, "bumpDepth", depth) && depth != 1.0f;
        int written = 0;
        if (sourcePlugsOf(input, "bumpValue", plugs))
            for (unsigned i = 0; i < plugs.length(); ++i)
                written += writeTextureElement(plugs[i].node(), fileMap, mode, writeDepth, depth, refractiveIndex, out);
        return written;
    }
    if (node.hasFn(MFn::kLayeredTexture)) {
        if (mode != TextureDiffuse) return 0;
        int written = 0;
        MPlug inputs = input.findPlug("inputs");
        for (unsigned i = 0; i < inputs.numElements(); ++i) {
            MPlug layer = inputs.elementByPhysicalIndex(i);
            if (!layer.isCompound()) continue;
            layer.child(0).connectedTo(plugs, true, true);
            for (unsigned k = 0; k < plugs.length(); ++k)
                written += writeTextureInput(shader, plugs[k].node(), fileMap, out, TextureDiffuse);
        }
        return written;
    }
    return 0;
}

int MaterialsExporter::writeFirstConnectedTexture(const MFnLambertShader& shader, const char* attributeName,
                                                  FileMap& fileMap, std::ostream& out, TextureMode mode)
{
    MPlugArray plugs;
    if (!sourcePlugsOf(shader, attributeName, plugs)) return 0;
    return writeTextureInput(shader, plugs[0].node(), fileMap, out, mode);
}

}  // namespace vqm
