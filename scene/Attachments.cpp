// The children of a split mesh: simple single-material meshes that share one material are folded
// into one extra shape that hangs under it; the others are exported as ordinary children.
#include "scene/SceneExporter.h"

#include <maya/MFnMesh.h>

#include "scene/ShapeAttributes.h"

#include <memory>

namespace vqm {

void SceneExporter::exportAttachments(const MFnTransform& parentTransform, const NodeFilterResult& parentResult,
                                      const MFnMesh& parentMesh, bool compoundDynamic, unsigned depth,
                                      std::ostream& out)
{
    AttachmentRecord* record = nullptr;
    bool cpuMesh = parentResult.cpuMesh;
    const std::vector<uint32_t>& children = parentResult.transformChildren;
    for (size_t i = 0; i < children.size(); ++i) {
        MFnTransform child(parentTransform.child(children[i]));
        NodeFilterResult result;
        result.cpuMesh = cpuMesh;  // a child without vQM_cpuMesh takes the value that stood last
        if (!filterNode(child, result)) continue;
        cpuMesh = result.cpuMesh;

        bool folded = false;
        MFnMesh mesh;
        if (result.kind == ElementKind::Mesh && result.mergeGroup == 0 && result.transformChildren.empty() &&
            (i == 0 || record)) {
            mesh.setObject(child.child(result.shapeChild));
            std::vector<uint32_t> ids;
            lookupShadingMaterials(mesh, *run_.materials, ids);
            if (ids.size() == 1) {
                if (!record) {
                    auto created = std::make_unique<AttachmentRecord>();
                    created->materialId = ids[0];
                    created->shapeId = nextShapeId_++;
                    created->parentMesh = parentMesh.object();
                    created->parentTransform = parentTransform.object();
                    record = created.get();
                    run_.attachments->push_back(std::move(created));
                }
                if (record->materialId == ids[0]) {
                    record->meshes.push_back(mesh.object());
                    record->transforms.push_back(child.object());
                    folded = true;
                }
            }
        }
        if (!folded) {
            exportNode(child, result, compoundDynamic, depth, out);
            continue;
        }
        if (i != 0) continue;
        // The folded shape's element stands where the first attachment would.
        const MString name = parentTransform.name() + "Attachments";
        out << std::string(2 * (depth + 2), ' ') << "<Shape";
        writeCommonAttributes(child, *run_.nodes, out, true, false, false, &name);
        out << " shapeId=\"" << record->shapeId << '"';
        writeShadowAttributes(mesh, out);
        writeDecalAttributes(child, out);
        writeMaterialIds(mesh, *run_.materials, out);
        writeElementTail(child, *run_.nodes, out);
        out << "/>\n";
    }
}

}  // namespace vqm
