// Names of the host's type numbers, as MObject::apiTypeStr gives them.
#include "TypeNames.h"

namespace vqmhost {

const char* apiTypeName(MFn::Type type)
{
    switch (type) {
    case MFn::kInvalid: return "kInvalid";
    case MFn::kBase: return "kBase";
    case MFn::kNamedObject: return "kNamedObject";
    case MFn::kDependencyNode: return "kDependencyNode";
    case MFn::kAnimCurve: return "kAnimCurve";
    case MFn::kAnimCurveTimeToAngular: return "kAnimCurveTimeToAngular";
    case MFn::kAnimCurveTimeToDistance: return "kAnimCurveTimeToDistance";
    case MFn::kAnimCurveTimeToUnitless: return "kAnimCurveTimeToUnitless";
    case MFn::kAnimCurveTimeToTime: return "kAnimCurveTimeToTime";
    case MFn::kBump: return "kBump";
    case MFn::kDagNode: return "kDagNode";
    case MFn::kWorld: return "kWorld";
    case MFn::kTransform: return "kTransform";
    case MFn::kLookAt: return "kLookAt";
    case MFn::kIkEffector: return "kIkEffector";
    case MFn::kIkHandle: return "kIkHandle";
    case MFn::kJoint: return "kJoint";
    case MFn::kManipulator3D: return "kManipulator3D";
    case MFn::kShape: return "kShape";
    case MFn::kCamera: return "kCamera";
    case MFn::kEmitter: return "kEmitter";
    case MFn::kField: return "kField";
    case MFn::kAir: return "kAir";
    case MFn::kGravity: return "kGravity";
    case MFn::kNurbsCurve: return "kNurbsCurve";
    case MFn::kMesh: return "kMesh";
    case MFn::kLight: return "kLight";
    case MFn::kAmbientLight: return "kAmbientLight";
    case MFn::kNonAmbientLight: return "kNonAmbientLight";
    case MFn::kAreaLight: return "kAreaLight";
    case MFn::kLightDataAttribute: return "kLightDataAttribute";
    case MFn::kNonExtendedLight: return "kNonExtendedLight";
    case MFn::kDirectionalLight: return "kDirectionalLight";
    case MFn::kPointLight: return "kPointLight";
    case MFn::kSpotLight: return "kSpotLight";
    case MFn::kParticle: return "kParticle";
    case MFn::kShadingEngine: return "kShadingEngine";
    case MFn::kSet: return "kSet";
    case MFn::kGeometryFilt: return "kGeometryFilt";
    case MFn::kWeightGeometryFilt: return "kWeightGeometryFilt";
    case MFn::kTweak: return "kTweak";
    case MFn::kGroupId: return "kGroupId";
    case MFn::kGroupParts: return "kGroupParts";
    case MFn::kSurfaceShader: return "kSurfaceShader";
    case MFn::kLambert: return "kLambert";
    case MFn::kReflect: return "kReflect";
    case MFn::kBlinn: return "kBlinn";
    case MFn::kPhong: return "kPhong";
    case MFn::kPhongExplorer: return "kPhongExplorer";
    case MFn::kAnisotropy: return "kAnisotropy";
    case MFn::kMaterialInfo: return "kMaterialInfo";
    case MFn::kTexture2d: return "kTexture2d";
    case MFn::kTexture3d: return "kTexture3d";
    case MFn::kTextureEnv: return "kTextureEnv";
    case MFn::kEnvCube: return "kEnvCube";
    case MFn::kEnvSphere: return "kEnvSphere";
    case MFn::kEnvBall: return "kEnvBall";
    case MFn::kEnvChrome: return "kEnvChrome";
    case MFn::kFileTexture: return "kFileTexture";
    case MFn::kPlace2dTexture: return "kPlace2dTexture";
    case MFn::kPlace3dTexture: return "kPlace3dTexture";
    case MFn::kTime: return "kTime";
    case MFn::kComponent: return "kComponent";
    case MFn::kUnknown: return "kUnknown";
    case MFn::kSingleIndexedComponent: return "kSingleIndexedComponent";
    case MFn::kMeshVertComponent: return "kMeshVertComponent";
    case MFn::kMeshEdgeComponent: return "kMeshEdgeComponent";
    case MFn::kMeshPolygonComponent: return "kMeshPolygonComponent";
    case MFn::kAttribute: return "kAttribute";
    case MFn::kNumericAttribute: return "kNumericAttribute";
    case MFn::kUnitAttribute: return "kUnitAttribute";
    case MFn::kTypedAttribute: return "kTypedAttribute";
    case MFn::kCompoundAttribute: return "kCompoundAttribute";
    case MFn::kEnumAttribute: return "kEnumAttribute";
    case MFn::kMessageAttribute: return "kMessageAttribute";
    case MFn::kMatrixAttribute: return "kMatrixAttribute";
    case MFn::kGenericAttribute: return "kGenericAttribute";
    case MFn::kData: return "kData";
    case MFn::kMatrixData: return "kMatrixData";
    case MFn::kStringData: return "kStringData";
    case MFn::kMeshData: return "kMeshData";
    case MFn::kNurbsCurveData: return "kNurbsCurveData";
    case MFn::kPolyCreator: return "kPolyCreator";
    case MFn::kPolyModifier: return "kPolyModifier";
    case MFn::kPolyTweakUV: return "kPolyTweakUV";
    case MFn::kCharacter: return "kCharacter";
    case MFn::kDagPose: return "kDagPose";
    case MFn::kSkinClusterFilter: return "kSkinClusterFilter";
    case MFn::kClip: return "kClip";
    case MFn::kLayeredTexture: return "kLayeredTexture";
    case MFn::kGeoConnector: return "kGeoConnector";
    case MFn::kPluginObject: return "kPluginObject";
    default: return "kInvalid";
    }
}

}  // namespace vqmhost
