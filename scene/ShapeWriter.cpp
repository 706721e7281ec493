// The Shape element of a mesh (with its rigid-body attributes and the physics meshes it asks for)
// and of a NURBS curve; both enter the shape into ShapeMap, which hands out the shape ids.
#include "scene/SceneExporter.h"

#include <maya/MFnMesh.h>
#include <maya/MFnNurbsCurve.h>

#include "plugin/HostHelpers.h"
#include "scene/AttributeTables.h"
#include "scene/ShapeAttributes.h"

namespace vqm {

// The entry under key; a new key takes the next shape id. The object is the last one met.
ShapeRecord& SceneExporter::enterShape(const std::string& key, const MObject& object, bool isSplit, bool cpuMesh)
{
    auto inserted = run_.shapes->emplace(key, ShapeRecord());
    ShapeRecord& record = inserted.first->second;
    if (inserted.second) {
        record.shapeId = nextShapeId_++;
        record.isSplit = isSplit;
        record.cpuMesh = cpuMesh;
    }
    record.object = object;
    return record;
}

void SceneExporter::writeMeshShape(const MFnTransform& transform, const MFnMesh& mesh, bool cpuMesh,
                                   bool compoundDynamic, std::ostream& out)
{
    bool isStatic = true, kinematic = false, dynamic = false, compoundChild = false;
    readBool(transform, "vQM_static", isStatic);
    readBool(transform, "vQM_kinematic", kinematic);
    readBool(transform, "vQM_dynamic", dynamic);
    readBool(transform, "vQM_compoundChild", compoundChild);
    const bool rigidBody = isStatic || kinematic || dynamic || compoundChild;
    int splitType = 0;
    if (rigidBody) readInt(transform, "vQM_splitType", splitType);

    std::string key = mesh.partialPathName().str();
    if (splitType != 0) key += "*SplitShape*";
    ShapeRecord& record = enterShape(key, mesh.object(), splitType != 0, cpuMesh);

    out << "<Shape";
    writeCommonAttributes(transform, *run_.nodes, out, true, false, true, nullptr);
    out << " shapeId=\"" << record.shapeId << '"';
    if (!compoundChild) {
        if (kinematic) out << " kinematic=\"true\"";
        else if (dynamic) out << " dynamic=\"true\"";
        else if (isStatic) out << " static=\"true\"";
    }
    if (rigidBody) {
        writeAttributeTable(transform, RigidBodyAttributeTable, out);
        if (splitType == 0) {
            bool trigger = false;
            readBool(transform, "vQM_trigger", trigger);
            CookRequest request;
            request.dynamic = compoundChild ? compoundDynamic : (dynamic || kinematic || trigger);
            record.cookRequests.insert(request);
        }
    }
    if (splitType != 0) {
        float values[5] = {0.0f, 0.0f, 0.0f, 0.0f, 0.0f};
        const char* const names[5] = {"vQM_splitMinU", "vQM_splitMinV", "vQM_splitMaxU", "vQM_splitMaxV",
                                      "vQM_splitUvWorldScale"};
        bool complete = true;
        for (int i = 0; i < 5; ++i) complete = readFloat(transform, names[i], values[i]) && complete;
        if (complete)
            out << " splitUvs=\"" << values[0] << ' ' << values[1] << ' ' << values[2] << ' ' << values[3] << ' '
                << values[4] << '"';
    }
    writeShadowAttributes(mesh, out);
    writeDecalAttributes(transform, out);
    writeMaterialIds(mesh, *run_.materials, out);
}

void SceneExporter::writeCurveShape(const MFnTransform& transform, const MFnNurbsCurve& curve, std::ostream& out)
{
    out << "<Shape";
    ShapeRecord& record = enterShape(curve.partialPathName().str(), curve.object(), false, true);
    writeCommonAttributes(transform, *run_.nodes, out, true, false, true, nullptr);
    out << " shapeId=\"" << record.shapeId << '"';
    writeDecalAttributes(transform, out);
}

}  // namespace vqm
