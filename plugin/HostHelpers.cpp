#include "plugin/HostHelpers.h"

#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MGlobal.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MSelectionList.h>

namespace vqm {

template <typename T>
static bool readValue(const MFnDependencyNode& node, const MString& name, T& value)
{
    MStatus status;
    MPlug plug = node.findPlug(name, &status);
    if (!status) return false;
    T read = value;
    if (!plug.getValue(read, MDGContext::fsNormal)) return false;
    value = read;
    return true;
}

bool readBool(const MFnDependencyNode& node, const MString& name, bool& value)
{
    return readValue(node, name, value);
}

bool readInt(const MFnDependencyNode& node, const MString& name, int& value)
{
    return readValue(node, name, value);
}

bool readFloat(const MFnDependencyNode& node, const MString& name, float& value)
{
    return readValue(node, name, value);
}

bool readString(const MFnDependencyNode& node, const MString& name, MString& value)
{
    return readValue(node, name, value);
}

bool boolAttribute(const MFnDependencyNode& node, const MString& name, bool defaultValue)
{
    bool value = defaultValue;
    return readBool(node, name, value) ? value : defaultValue;
}

bool hasAttribute(const MFnDependencyNode& node, const MString& name)
{
    MStatus status;
    node.findPlug(name, &status);
    return bool(status);
}

bool sourcePlugsOf(const MFnDependencyNode& node, const MString& name, MPlugArray& plugs)
{
    MStatus status;
    MPlug plug = node.findPlug(name, true, &status);
    if (status) plug.connectedTo(plugs, true, false);
    return plugs.length() > 0;
}

MStatus getNodeByName(const MString& name, MObject& object)
{
    MSelectionList list;
    MStatus status = MGlobal::getSelectionListByName(name, list);
    if (!status) {
        object = MObject::kNullObj;
        return status;
    }
    if (list.length() == 0) {
        object = MObject::kNullObj;
        return MStatus::kNotFound;
    }
    if (list.length() > 1)
        MGlobal::displayWarning(MString("vqmExport: getNodeByName: ") + name +
                                " matches more than one node, selecting the one first found");
    status = list.getDependNode(0, object);
    if (!status) object = MObject::kNullObj;
    return status;
}

bool findConnectedNode(const MFnDependencyNode& node, MFnBase& result, MFn::Type type, bool asDestination,
                       bool asSource, bool exact)
{
    MPlugArray connected;
    node.getConnections(connected);
    for (unsigned i = 0; i < connected.length(); ++i) {
        MPlugArray far;
        connected[i].connectedTo(far, asDestination, asSource);
        for (unsigned j = 0; j < far.length(); ++j) {
            MObject other = far[j].node();
            if (exact ? other.apiType() == type : other.hasFn(type)) {
                result.setObject(other);
                return true;
            }
        }
    }
    return false;
}

bool findSkinCluster(const MFnDependencyNode& mesh, MFnSkinCluster& result)
{
    MStatus status;
    MPlug inMesh = mesh.findPlug("inMesh", &status);
    if (!status || !inMesh.isConnected()) return false;
    MItDependencyGraph walk(inMesh, MFn::kInvalid, MItDependencyGraph::kUpstream, MItDependencyGraph::kDepthFirst,
                            MItDependencyGraph::kPlugLevel, &status);
    if (!status) return false;
    walk.disablePruningOnFilter();
    for (; !walk.isDone(); walk.next()) {
        MObject node = walk.currentItem();
        if (node.apiType() == HostType::kSkinCluster) {
            result.setObject(node);
            return true;
        }
    }
    return false;
}

void worldMatrixOf(const MFnDagNode& transform, double unitScale, float matrix[16])
{
    MDagPath path;
    transform.getPath(path);
    toFloatMatrix(path.inclusiveMatrix(), unitScale, matrix);
}

void toFloatMatrix(const MMatrix& source, double unitScale, float target[16])
{
    for (unsigned r = 0; r < 4; ++r)
        for (unsigned c = 0; c < 3; ++c)
            target[r * 4 + c] = float(r == 3 ? source(r, c) * unitScale : source(r, c));
    target[3] = target[7] = target[11] = 0.0f;
    target[15] = 1.0f;
}

double radiansToDegrees(double value)
{
    return value * 57.29577951308232;
}

}  // namespace vqm
