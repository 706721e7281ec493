// Reading the host's scene: attributes by name, connections, nodes by name, matrices. A missing
// attribute is never an error: the read leaves the caller's default alone.
#pragma once

#include <maya/MFn.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MMatrix.h>
#include <maya/MPlugArray.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

class MFnBase;
class MFnDagNode;
class MFnSkinCluster;

namespace vqm {

// Host type numbers the exporter compares against (MFn::Type).
namespace HostType {
constexpr MFn::Type kDagNode = MFn::Type(107);
constexpr MFn::Type kTransform = MFn::Type(110);
constexpr MFn::Type kIkEffector = MFn::Type(119);
constexpr MFn::Type kIkHandle = MFn::Type(120);
constexpr MFn::Type kJoint = MFn::Type(121);
constexpr MFn::Type kManipulator3D = MFn::Type(122);
constexpr MFn::Type kCamera = MFn::Type(250);
constexpr MFn::Type kEmitter = MFn::Type(255);
constexpr MFn::Type kNurbsCurve = MFn::Type(267);
constexpr MFn::Type kMesh = MFn::Type(296);
constexpr MFn::Type kLight = MFn::Type(302);
constexpr MFn::Type kAmbientLight = MFn::Type(303);
constexpr MFn::Type kAreaLight = MFn::Type(305);
constexpr MFn::Type kDepthMapLight = MFn::Type(307);
constexpr MFn::Type kDirectionalLight = MFn::Type(308);
constexpr MFn::Type kPointLight = MFn::Type(309);
constexpr MFn::Type kSpotLight = MFn::Type(310);
constexpr MFn::Type kParticleSystem = MFn::Type(311);
constexpr MFn::Type kShadingGroup = MFn::Type(320);
constexpr MFn::Type kLambertShader = MFn::Type(366);
constexpr MFn::Type kFileTexture = MFn::Type(493);
constexpr MFn::Type kSkinCluster = MFn::Type(678);
constexpr MFn::Type kGeometryConnector = MFn::Type(912);
}  // namespace HostType

// Each gives back whether the attribute was found and read; otherwise value keeps what it held.
bool readBool(const MFnDependencyNode& node, const MString& name, bool& value);
bool readInt(const MFnDependencyNode& node, const MString& name, int& value);
bool readFloat(const MFnDependencyNode& node, const MString& name, float& value);
bool readString(const MFnDependencyNode& node, const MString& name, MString& value);

bool boolAttribute(const MFnDependencyNode& node, const MString& name, bool defaultValue);
bool hasAttribute(const MFnDependencyNode& node, const MString& name);
// What drives the attribute; false (and plugs untouched when there is no such plug) when nothing.
bool sourcePlugsOf(const MFnDependencyNode& node, const MString& name, MPlugArray& plugs);

// The first node of that name; a warning when the name is ambiguous, kNotFound when unknown.
MStatus getNodeByName(const MString& name, MObject& object);
// The first node at the far end of the node's connections that has the type (exact) or belongs
// to its family; attached to result.
bool findConnectedNode(const MFnDependencyNode& node, MFnBase& result, MFn::Type type, bool asDestination,
                       bool asSource, bool exact);
// The skin cluster upstream of the mesh's inMesh.
bool findSkinCluster(const MFnDependencyNode& mesh, MFnSkinCluster& result);

// World matrix of the node's path as floats, translation in the scene's unit.
void worldMatrixOf(const MFnDagNode& transform, double unitScale, float matrix[16]);
void toFloatMatrix(const MMatrix& source, double unitScale, float target[16]);
double radiansToDegrees(double value);

}  // namespace vqm
