#include "scene/ShapeAttributes.h"

#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MObjectArray.h>
#include <maya/MPlugArray.h>

#include "plugin/HostHelpers.h"

namespace vqm {

void writeShadowAttributes(const MFnDependencyNode& node, std::ostream& out)
{
    bool castsShadows = false, receiveShadows = false;
    readBool(node, "castsShadows", castsShadows);
    readBool(node, "receiveShadows", receiveShadows);
    out << " castsShadows=\"" << (castsShadows ? "true" : "false") << "\" receiveShadows=\""
        << (receiveShadows ? "true" : "false") << '"';
}

void writeDecalAttributes(const MFnDependencyNode& transform, std::ostream& out)
{
    int decalLayer = 0;
    readInt(transform, "vQM_decalLayer", decalLayer);
    if (decalLayer != 0) out << " decalLayer=\"" << decalLayer << '"';
    bool nonRenderable = false;
    readBool(transform, "vQM_nonRenderable", nonRenderable);
    if (nonRenderable) out << " nonRenderable=\"true\"";
}

void lookupShadingMaterials(const MFnMesh& mesh, MaterialMap& materials, std::vector<uint32_t>& ids)
{
    MObjectArray groups;
    MIntArray indices;
    mesh.getConnectedShaders(0, groups, indices);
    int last = -2;
    for (unsigned i = 0; i < indices.length(); ++i) last = std::max(last, indices[i]);
    for (int g = 0; g <= last && unsigned(g) < groups.length(); ++g) {
        MFnDependencyNode group(groups[unsigned(g)]);
        MStatus status;
        MPlug surfaceShader = group.findPlug("surfaceShader", true, &status);
        if (!status) {
            MGlobal::displayWarning("vqmExport: ShadingGroup surfaceShader attribute not found (" + group.name() +
                                    ")\n");
            continue;
        }
        MPlugArray sources;
        if (!surfaceShader.connectedTo(sources, true, false) || sources.length() == 0) {
            MGlobal::displayWarning("vqmExport: ShadingGroup surfaceShader attribute source plug not found (" +
                                    group.name() + ")\n");
            continue;
        }
        ids.push_back(insertId(materials, MFnDependencyNode(sources[0].node()).name().str()));
    }
    if (ids.empty()) ids.push_back(insertId(materials, "lambert1"));
}

void writeMaterialIds(const MFnMesh& mesh, MaterialMap& materials, std::ostream& out)
{
    std::vector<uint32_t> ids;
    lookupShadingMaterials(mesh, materials, ids);
    out << " materialIds=\"";
    for (size_t i = 0; i < ids.size(); ++i) out << (i ? "," : "") << ids[i];
    out << '"';
}

}  // namespace vqm
