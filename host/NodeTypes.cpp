// The node types the stand-in knows, with their type numbers, families and attribute tables.
// Attribute names, short names and defaults are the host's; values are in internal units.
#include "Graph.h"
#include "MeshNodes.h"
#include "NurbsCurveData.h"

#include <cmath>
#include <initializer_list>
#include <map>

namespace vqmhost {
namespace {

const double kDegree = M_PI / 180.0;

class TypeBuilder {
public:
    TypeBuilder(NodeType& type) : type_(type) {}

    Attribute* add(const char* longName, const char* shortName, AttrType attrType, double defaultValue = 0.0,
                   Attribute* parent = nullptr)
    {
        type_.attributes.emplace_back();
        Attribute* a = &type_.attributes.back();
        a->longName = longName;
        a->shortName = shortName;
        a->type = attrType;
        a->defaultValue = defaultValue;
        if (parent) {
            a->parent = parent;
            a->childIndex = int(parent->children.size());
            parent->children.push_back(a);
        } else {
            type_.topLevel.push_back(a);
        }
        type_.byName.emplace(a->longName, a);
        type_.byName.emplace(a->shortName, a);
        return a;
    }

    Attribute* array(Attribute* a)
    {
        a->array = true;
        return a;
    }

    Attribute* data(const char* longName, const char* shortName, const char* dataType, Attribute* parent = nullptr)
    {
        Attribute* a = add(longName, shortName, AttrType::Data, 0.0, parent);
        a->dataType = dataType;
        return a;
    }

    Attribute* compound(const char* longName, const char* shortName, Attribute* parent = nullptr)
    {
        return add(longName, shortName, AttrType::Compound, 0.0, parent);
    }

    // A numeric triple (or pair) whose children take the given names.
    Attribute* numeric(const char* longName, const char* shortName, AttrType childType,
                       std::initializer_list<std::pair<const char*, const char*>> children, double defaultValue,
                       Attribute* parent = nullptr)
    {
        Attribute* a = compound(longName, shortName, parent);
        a->numericCompound = true;
        for (const auto& c : children) add(c.first, c.second, childType, defaultValue, a);
        return a;
    }

    Attribute* xyz(const char* longName, const char* shortName, AttrType childType, const char* childLongStem,
                   const char* childShortStem, double defaultValue, const char* longSuffix = "",
                   const char* shortSuffix = "")
    {
        Attribute* a = compound(longName, shortName);
        a->numericCompound = true;
        static const char* axes[] = {"X", "Y", "Z"};
        static const char* lowerAxes[] = {"x", "y", "z"};
        for (int i = 0; i < 3; ++i) {
            names_.push_back(std::string(childLongStem) + axes[i] + longSuffix);
            names_.push_back(std::string(childShortStem) + lowerAxes[i] + shortSuffix);
        }
        for (int i = 0; i < 3; ++i)
            add(names_[names_.size() - 6 + 2 * i].c_str(), names_[names_.size() - 5 + 2 * i].c_str(), childType,
                defaultValue, a);
        return a;
    }

    Attribute* color(const char* longName, const char* shortName, const char* childShortStem, double defaultValue,
                     Attribute* parent = nullptr)
    {
        Attribute* a = compound(longName, shortName, parent);
        a->numericCompound = true;
        static const char* channels[] = {"R", "G", "B"};
        static const char* lower[] = {"r", "g", "b"};
        for (int i = 0; i < 3; ++i) {
            names_.push_back(std::string(longName) + channels[i]);
            names_.push_back(std::string(childShortStem) + lower[i]);
        }
        for (int i = 0; i < 3; ++i)
            add(names_[names_.size() - 6 + 2 * i].c_str(), names_[names_.size() - 5 + 2 * i].c_str(), AttrType::Float,
                defaultValue, a);
        return a;
    }

private:
    NodeType& type_;
    std::deque<std::string> names_;  // backing store for generated names while building
};

struct Registry {
    std::map<std::string, std::unique_ptr<NodeType>> types;
    NodeType generic;

    NodeType& define(const char* name, MFn::Type apiType, const char* parentName, bool dag = false)
    {
        auto t = std::make_unique<NodeType>();
        t->name = name;
        t->apiType = apiType;
        if (parentName) {
            t->parent = types.at(parentName).get();
            t->dag = t->parent->dag;
        }
        t->dag = t->dag || dag;
        NodeType& ref = *t;
        types[name] = std::move(t);
        return ref;
    }

    Registry();
};

void defineDependNode(Registry& r)
{
    NodeType& node = r.define("node", MFn::kDependencyNode, nullptr);
    TypeBuilder b(node);
    b.add("message", "msg", AttrType::Message);
    b.add("caching", "cch", AttrType::Bool);
    b.add("frozen", "fzn", AttrType::Bool);
    b.add("isHistoricallyInteresting", "ihi", AttrType::Byte, 2);
    b.add("nodeState", "nds", AttrType::Enum);
    b.add("binMembership", "bnm", AttrType::String);
}

void defineDag(Registry& r)
{
    NodeType& world = r.define("world", MFn::kWorld, "node", true);
    (void)world;
    NodeType& dag = r.define("dagNode", MFn::kDagNode, "node", true);
    TypeBuilder b(dag);
    b.add("visibility", "v", AttrType::Bool, 1);
    b.add("intermediateObject", "io", AttrType::Bool);
    b.add("template", "tmp", AttrType::Bool);
    b.add("lodVisibility", "lodv", AttrType::Bool, 1);
    b.add("matrix", "m", AttrType::Matrix);
    b.array(b.add("worldMatrix", "wm", AttrType::Matrix));
    b.array(b.add("parentMatrix", "pm", AttrType::Matrix));
    b.add("overrideEnabled", "ove", AttrType::Bool);
    b.add("overrideVisibility", "ovv", AttrType::Bool, 1);
    b.add("overrideDisplayType", "ovdt", AttrType::Enum);
    Attribute* iog = b.array(b.compound("instObjGroups", "iog"));
    Attribute* og = b.array(b.compound("objectGroups", "og", iog));
    b.data("objectGrpCompList", "gcl", "componentList", og);
    b.add("objectGroupId", "gid", AttrType::Int, 0, og);
    b.add("objectGrpColor", "gco", AttrType::Short, 0, og);

    NodeType& transform = r.define("transform", MFn::kTransform, "dagNode");
    TypeBuilder t(transform);
    t.xyz("translate", "t", AttrType::Distance, "translate", "t", 0);
    t.xyz("rotate", "r", AttrType::Angle, "rotate", "r", 0);
    t.xyz("scale", "s", AttrType::Double, "scale", "s", 1);
    Attribute* shear = t.compound("shear", "sh");
    shear->numericCompound = true;
    t.add("shearXY", "shxy", AttrType::Double, 0, shear);
    t.add("shearXZ", "shxz", AttrType::Double, 0, shear);
    t.add("shearYZ", "shyz", AttrType::Double, 0, shear);
    Attribute* ro = t.add("rotateOrder", "ro", AttrType::Enum);
    ro->enumFields = {{"xyz", 0}, {"yzx", 1}, {"zxy", 2}, {"xzy", 3}, {"yxz", 4}, {"zyx", 5}};
    t.xyz("rotateAxis", "ra", AttrType::Angle, "rotateAxis", "ra", 0);
    t.xyz("rotatePivot", "rp", AttrType::Distance, "rotatePivot", "rp", 0);
    t.xyz("rotatePivotTranslate", "rpt", AttrType::Distance, "rotatePivotTranslate", "rpt", 0);
    t.xyz("scalePivot", "sp", AttrType::Distance, "scalePivot", "sp", 0);
    t.xyz("scalePivotTranslate", "spt", AttrType::Distance, "scalePivotTranslate", "spt", 0);
    t.add("inheritsTransform", "it", AttrType::Bool, 1);
    t.add("displayHandle", "dh", AttrType::Bool);
    t.add("displayRotatePivot", "drp", AttrType::Bool);
    t.add("displayScalePivot", "dsp", AttrType::Bool);
    t.add("displayLocalAxis", "dla", AttrType::Bool);
    t.xyz("minTransLimit", "mtl", AttrType::Distance, "minTrans", "mt", -1, "Limit", "l");
    t.xyz("maxTransLimit", "xtl", AttrType::Distance, "maxTrans", "xt", 1, "Limit", "l");
    t.xyz("minTransLimitEnable", "mtle", AttrType::Bool, "minTrans", "mt", 0, "LimitEnable", "e");
    t.xyz("maxTransLimitEnable", "xtle", AttrType::Bool, "maxTrans", "xt", 0, "LimitEnable", "e");
    t.xyz("minRotLimit", "mnrl", AttrType::Angle, "minRot", "mr", -360 * kDegree, "Limit", "l");
    t.xyz("maxRotLimit", "mxrl", AttrType::Angle, "maxRot", "xr", 360 * kDegree, "Limit", "l");
    t.xyz("minRotLimitEnable", "mrle", AttrType::Bool, "minRot", "mr", 0, "LimitEnable", "e");
    t.xyz("maxRotLimitEnable", "xrle", AttrType::Bool, "maxRot", "xr", 0, "LimitEnable", "e");
    t.xyz("minScaleLimit", "msl", AttrType::Double, "minScale", "ms", -1, "Limit", "l");
    t.xyz("maxScaleLimit", "xsl", AttrType::Double, "maxScale", "xs", 1, "Limit", "l");
    t.xyz("minScaleLimitEnable", "msle", AttrType::Bool, "minScale", "ms", 0, "LimitEnable", "e");
    t.xyz("maxScaleLimitEnable", "xsle", AttrType::Bool, "maxScale", "xs", 0, "LimitEnable", "e");

    NodeType& joint = r.define("joint", MFn::kJoint, "transform");
    TypeBuilder j(joint);
    j.xyz("jointOrient", "jo", AttrType::Angle, "jointOrient", "jo", 0);
    j.add("segmentScaleCompensate", "ssc", AttrType::Bool, 1);
    j.add("radius", "radi", AttrType::Double, 1);
    j.xyz("preferredAngle", "pa", AttrType::Angle, "preferredAngle", "pa", 0);
    j.add("drawStyle", "ds", AttrType::Enum);
    j.add("bindPose", "bps", AttrType::Matrix);
    j.xyz("inverseScale", "is", AttrType::Double, "inverseScale", "is", 1);
    j.add("jointTypeX", "jtx", AttrType::Bool, 1);
    j.add("jointTypeY", "jty", AttrType::Bool, 1);
    j.add("jointTypeZ", "jtz", AttrType::Bool, 1);

    r.define("ikHandle", MFn::kIkHandle, "transform");
    r.define("ikEffector", MFn::kIkEffector, "transform");
    r.define("lookAt", MFn::kLookAt, "transform");

    NodeType& shape = r.define("shape", MFn::kShape, "dagNode");
    (void)shape;
}

void defineShapes(Registry& r)
{
    NodeType& camera = r.define("camera", MFn::kCamera, "shape");
    TypeBuilder c(camera);
    c.add("focalLength", "fl", AttrType::Double, 35);
    c.add("orthographic", "o", AttrType::Bool);
    c.add("orthographicWidth", "ow", AttrType::Distance, 30);
    c.add("nearClipPlane", "ncp", AttrType::Distance, 0.1);
    c.add("farClipPlane", "fcp", AttrType::Distance, 10000);
    c.add("centerOfInterest", "coi", AttrType::Distance, 5);
    c.add("renderable", "rnd", AttrType::Bool, 1);
    Attribute* cap = c.compound("cameraAperture", "cap");
    cap->numericCompound = true;
    c.add("horizontalFilmAperture", "hfa", AttrType::Double, 1.41732, cap);
    c.add("verticalFilmAperture", "vfa", AttrType::Double, 0.94488, cap);
    c.add("lensSqueezeRatio", "lsr", AttrType::Double, 1);
    c.add("filmFit", "ff", AttrType::Enum, 1);
    c.add("imageName", "imn", AttrType::String);
    c.add("depthName", "den", AttrType::String);
    c.add("maskName", "man", AttrType::String);
    c.add("homeCommand", "hc", AttrType::String);
    c.add("locatorScale", "lls", AttrType::Double, 1);

    NodeType& mesh = r.define("mesh", MFn::kMesh, "shape");
    TypeBuilder m(mesh);
    m.data("inMesh", "i", "mesh");
    m.data("outMesh", "o", "mesh");
    m.array(m.data("worldMesh", "w", "mesh"));
    m.data("cachedInMesh", "ci", "mesh");
    m.array(m.numeric("vrts", "vt", AttrType::Distance, {{"vrtx", "vx"}, {"vrty", "vy"}, {"vrtz", "vz"}}, 0));
    m.array(m.numeric("pnts", "pt", AttrType::Distance, {{"pntx", "px"}, {"pnty", "py"}, {"pntz", "pz"}}, 0));
    m.array(m.add("edge", "ed", AttrType::Generic));
    m.array(m.data("face", "fc", "polyFaces"));
    m.array(m.numeric("normals", "n", AttrType::Float, {{"normalx", "nx"}, {"normaly", "ny"}, {"normalz", "nz"}}, 0));
    Attribute* uvSet = m.array(m.compound("uvSet", "uvst"));
    m.add("uvSetName", "uvsn", AttrType::String, 0, uvSet);
    m.array(m.numeric("uvSetPoints", "uvsp", AttrType::Float, {{"uvPointsU", "uvpu"}, {"uvPointsV", "uvpv"}}, 0, uvSet));
    m.add("uvSetTweakLocation", "uvtw", AttrType::Generic, 0, uvSet);
    m.add("currentUVSet", "cuvs", AttrType::String);
    Attribute* colorSet = m.array(m.compound("colorSet", "clst"));
    m.add("colorName", "clsn", AttrType::String, 0, colorSet);
    m.array(m.add("colorSetPoints", "clsp", AttrType::Generic, 0, colorSet));
    m.add("representation", "rprt", AttrType::Enum, 3, colorSet);
    m.add("currentColorSet", "ccls", AttrType::String);
    m.add("displayColors", "dcol", AttrType::Bool);
    m.add("castsShadows", "csh", AttrType::Bool, 1);
    m.add("receiveShadows", "rcsh", AttrType::Bool, 1);
    mesh.readFromFile = readMeshFileValues;

    NodeType& curve = r.define("nurbsCurve", MFn::kNurbsCurve, "shape");
    TypeBuilder n(curve);
    n.data("create", "cr", "nurbsCurve");
    n.data("local", "l", "nurbsCurve");
    n.array(n.data("worldSpace", "ws", "nurbsCurve"));
    n.data("cached", "cc", "nurbsCurve");
    n.add("form", "f", AttrType::Enum);
    n.add("degree", "d", AttrType::Int, 3);
    n.add("spans", "s", AttrType::Int, 1);
    curve.readFromFile = readCurveFileValues;
    curve.compute = computeCurveValue;

    NodeType& light = r.define("light", MFn::kLight, "shape");
    TypeBuilder l(light);
    l.color("color", "cl", "c", 1);
    l.add("intensity", "in", AttrType::Float, 1);
    l.add("useRayTraceShadows", "urs", AttrType::Bool);
    l.color("shadowColor", "sc", "sc", 0);
    NodeType& ambient = r.define("ambientLight", MFn::kAmbientLight, "light");
    TypeBuilder a(ambient);
    a.add("ambientShade", "as", AttrType::Float, 0.45);
    NodeType& nonAmbient = r.define("nonAmbientLightShapeNode", MFn::kNonAmbientLight, "light");
    TypeBuilder na(nonAmbient);
    na.add("decayRate", "de", AttrType::Enum);
    na.add("emitDiffuse", "edi", AttrType::Bool, 1);
    na.add("emitSpecular", "esp", AttrType::Bool, 1);
    NodeType& nonExtended = r.define("nonExtendedLightShapeNode", MFn::kNonExtendedLight, "nonAmbientLightShapeNode");
    TypeBuilder ne(nonExtended);
    ne.add("useDepthMapShadows", "dms", AttrType::Bool);
    ne.add("dmapResolution", "dr", AttrType::Int, 512);
    r.define("areaLight", MFn::kAreaLight, "nonExtendedLightShapeNode");
    r.define("directionalLight", MFn::kDirectionalLight, "nonExtendedLightShapeNode");
    r.define("pointLight", MFn::kPointLight, "nonExtendedLightShapeNode");
    NodeType& spot = r.define("spotLight", MFn::kSpotLight, "nonExtendedLightShapeNode");
    TypeBuilder s(spot);
    s.add("coneAngle", "ca", AttrType::Angle, 40 * kDegree);
    s.add("penumbraAngle", "pa", AttrType::Angle, 0);
    s.add("dropoff", "dro", AttrType::Double, 0);

    r.define("particle", MFn::kParticle, "shape");
    r.define("pointEmitter", MFn::kEmitter, "transform");
}

void defineShading(Registry& r)
{
    NodeType& set = r.define("objectSet", MFn::kSet, "node");
    TypeBuilder s(set);
    s.array(s.add("dagSetMembers", "dsm", AttrType::Message));
    s.array(s.add("dnSetMembers", "dnsm", AttrType::Message));
    s.array(s.add("groupNodes", "gn", AttrType::Message));
    s.array(s.add("partition", "pa", AttrType::Message));
    s.add("verticesOnlySet", "vo", AttrType::Bool);
    s.add("annotation", "an", AttrType::String);

    NodeType& engine = r.define("shadingEngine", MFn::kShadingEngine, "objectSet");
    TypeBuilder e(engine);
    e.color("surfaceShader", "ss", "ss", 0);
    e.color("volumeShader", "vs", "vs", 0);
    e.color("displacementShader", "ds", "ds", 0);
    e.add("renderableOnlySet", "ro", AttrType::Bool);

    NodeType& lambert = r.define("lambert", MFn::kLambert, "node");
    TypeBuilder l(lambert);
    l.color("color", "c", "c", 0.5);
    l.color("transparency", "it", "it", 0);
    l.color("ambientColor", "ambc", "ac", 0);
    l.color("incandescence", "ic", "i", 0);
    l.add("diffuse", "dc", AttrType::Float, 0.8);
    l.add("translucence", "tc", AttrType::Float, 0);
    l.add("translucenceDepth", "trsd", AttrType::Float, 0.5);
    l.add("translucenceFocus", "tcf", AttrType::Float, 0.5);
    l.add("glowIntensity", "gi", AttrType::Float, 0);
    l.add("refractions", "rfn", AttrType::Bool);
    l.add("refractiveIndex", "rfi", AttrType::Float, 1);
    l.add("refractionLimit", "rdl", AttrType::Short, 6);
    l.add("lightAbsorbance", "la", AttrType::Float, 0);
    l.add("surfaceThickness", "stk", AttrType::Float, 0);
    l.add("shadowAttenuation", "fakc", AttrType::Float, 0.5);
    l.add("hideSource", "hs", AttrType::Bool);
    l.add("matteOpacityMode", "mom", AttrType::Enum, 2);
    l.add("matteOpacity", "mog", AttrType::Float, 1);
    Attribute* n = l.compound("normalCamera", "n");
    n->numericCompound = true;
    l.add("normalCameraX", "nx", AttrType::Float, 1, n);
    l.add("normalCameraY", "ny", AttrType::Float, 1, n);
    l.add("normalCameraZ", "nz", AttrType::Float, 1, n);
    l.color("outColor", "oc", "oc", 0);
    l.color("outTransparency", "ot", "ot", 0);
    l.color("outGlowColor", "ogc", "og", 0);

    NodeType& reflect = r.define("reflect", MFn::kReflect, "lambert");
    TypeBuilder rf(reflect);
    rf.color("specularColor", "sc", "s", 0.5);
    rf.add("reflectivity", "rfl", AttrType::Float, 0.5);
    rf.color("reflectedColor", "rc", "r", 0);
    rf.add("reflectionLimit", "rl", AttrType::Short, 1);
    rf.add("reflectionSpecularity", "rsp", AttrType::Float, 1);

    NodeType& blinn = r.define("blinn", MFn::kBlinn, "reflect");
    TypeBuilder bl(blinn);
    bl.add("eccentricity", "ec", AttrType::Float, 0.3);
    bl.add("specularRollOff", "sro", AttrType::Float, 0.7);
    NodeType& phong = r.define("phong", MFn::kPhong, "reflect");
    TypeBuilder ph(phong);
    ph.add("cosinePower", "cp", AttrType::Float, 20);
    NodeType& anisotropic = r.define("anisotropic", MFn::kAnisotropy, "reflect");
    TypeBuilder an(anisotropic);
    an.add("angle", "a", AttrType::Float, 0);
    an.add("roughness", "rn", AttrType::Float, 0.7);
    r.define("phongE", MFn::kPhongExplorer, "reflect");
    r.define("surfaceShader", MFn::kSurfaceShader, "node");
    r.define("materialInfo", MFn::kMaterialInfo, "node");

    NodeType& tex2d = r.define("texture2d", MFn::kTexture2d, "node");
    TypeBuilder t2(tex2d);
    t2.color("outColor", "oc", "oc", 0);
    t2.add("outAlpha", "oa", AttrType::Float, 0);
    NodeType& file = r.define("file", MFn::kFileTexture, "texture2d");
    TypeBuilder f(file);
    f.add("fileTextureName", "ftn", AttrType::String);
    f.add("colorSpace", "cs", AttrType::String);
    f.add("filterType", "ft", AttrType::Enum, 3);
    NodeType& bump = r.define("bump2d", MFn::kBump, "node");
    TypeBuilder bu(bump);
    bu.add("bumpValue", "bv", AttrType::Float, 0);
    bu.add("bumpDepth", "bd", AttrType::Float, 1);
    bu.add("bumpInterp", "bi", AttrType::Enum, 0);
    Attribute* on = bu.compound("outNormal", "o");
    on->numericCompound = true;
    bu.add("outNormalX", "ox", AttrType::Float, 0, on);
    bu.add("outNormalY", "oy", AttrType::Float, 0, on);
    bu.add("outNormalZ", "oz", AttrType::Float, 0, on);
    NodeType& layered = r.define("layeredTexture", MFn::kLayeredTexture, "node");
    TypeBuilder la(layered);
    Attribute* inputs = la.array(la.compound("inputs", "cs"));
    la.color("color", "c", "c", 0, inputs);
    la.add("alpha", "a", AttrType::Float, 1, inputs);
    la.add("blendMode", "bm", AttrType::Enum, 1, inputs);
    la.add("isVisible", "iv", AttrType::Bool, 1, inputs);
    la.color("outColor", "oc", "oc", 0);
    la.add("outAlpha", "oa", AttrType::Float, 0);
    NodeType& env = r.define("textureEnv", MFn::kTextureEnv, "node");
    TypeBuilder en(env);
    en.color("outColor", "oc", "oc", 0);
    NodeType& envSphere = r.define("envSphere", MFn::kEnvSphere, "textureEnv");
    TypeBuilder es(envSphere);
    es.color("image", "i", "i", 0);
    NodeType& envCube = r.define("envCube", MFn::kEnvCube, "textureEnv");
    TypeBuilder ec(envCube);
    ec.color("right", "ri", "ri", 0);
    ec.color("left", "le", "le", 0);
    ec.color("top", "to", "to", 0);
    ec.color("bottom", "bo", "bo", 0);
    ec.color("front", "fr", "fr", 0);
    ec.color("back", "ba", "ba", 0);
    r.define("place2dTexture", MFn::kPlace2dTexture, "node");
}

void defineDeformers(Registry& r)
{
    NodeType& groupId = r.define("groupId", MFn::kGroupId, "node");
    TypeBuilder g(groupId);
    g.add("groupId", "id", AttrType::Int);
    NodeType& groupParts = r.define("groupParts", MFn::kGroupParts, "node");
    TypeBuilder gp(groupParts);
    gp.data("inputGeometry", "ig", "geometry");
    gp.data("outputGeometry", "og", "geometry");
    gp.data("inputComponents", "ic", "componentList");
    gp.add("groupId", "gi", AttrType::Int);

    NodeType& filter = r.define("geometryFilter", MFn::kGeometryFilt, "node");
    TypeBuilder f(filter);
    Attribute* input = f.array(f.compound("input", "ip"));
    f.data("inputGeometry", "ig", "geometry", input);
    f.add("groupId", "gi", AttrType::Int, 0, input);
    f.array(f.data("outputGeometry", "og", "geometry"));
    f.add("envelope", "en", AttrType::Float, 1);
    r.define("weightGeometryFilter", MFn::kWeightGeometryFilt, "geometryFilter");
    r.define("tweak", MFn::kTweak, "geometryFilter");
    NodeType& skin = r.define("skinCluster", MFn::kSkinClusterFilter, "geometryFilter");
    TypeBuilder s(skin);
    Attribute* wl = s.array(s.compound("weightList", "wl"));
    s.array(s.add("weights", "w", AttrType::Double, 0, wl));
    s.array(s.add("bindPreMatrix", "pm", AttrType::Matrix));
    s.array(s.add("matrix", "ma", AttrType::Matrix));
    s.add("geomMatrix", "gm", AttrType::Matrix);
    s.add("maxInfluences", "mi", AttrType::Int, 5);
    s.add("skinningMethod", "sm", AttrType::Enum, 0);
    s.add("normalizeWeights", "nw", AttrType::Enum, 1);
    s.array(s.add("lockWeights", "lw", AttrType::Bool));
    s.array(s.add("dropoff", "dpf", AttrType::Double, 4));
    s.array(s.add("paintTrans", "ptt", AttrType::Message));
    s.array(s.add("influenceColor", "ic", AttrType::Double));

    NodeType& pose = r.define("dagPose", MFn::kDagPose, "node");
    TypeBuilder p(pose);
    p.array(p.add("members", "m", AttrType::Message));
    p.array(p.add("worldMatrix", "wm", AttrType::Matrix));
    p.array(p.add("xformMatrix", "xm", AttrType::Matrix));
    p.array(p.add("parents", "p", AttrType::Message));
    p.add("world", "w", AttrType::Message);
    p.add("bindPose", "bp", AttrType::Bool);
    p.add("global", "g", AttrType::Bool);

    r.define("time", MFn::kTime, "node");
    NodeType& curveTA = r.define("animCurveTA", MFn::kAnimCurveTimeToAngular, "node");
    (void)curveTA;
    r.define("animCurveTL", MFn::kAnimCurveTimeToDistance, "node");
    r.define("animCurveTU", MFn::kAnimCurveTimeToUnitless, "node");
    r.define("animCurveTT", MFn::kAnimCurveTimeToTime, "node");
    r.define("character", MFn::kCharacter, "objectSet");
    r.define("polyTweakUV", MFn::kPolyTweakUV, "node");
}

// Types of the host that this exporter never reads. They are known, so a file that holds them
// loads without a warning; they carry whatever the file sets on them.
const char* const kPlainTypes[] = {
    "lightLinker", "shapeEditorManager", "poseInterpolatorManager", "displayLayerManager", "displayLayer",
    "renderLayerManager", "renderLayer", "script", "hyperGraphInfo", "hyperView", "hyperLayout",
    "nodeGraphEditorInfo", "polyCube", "polySphere", "polyPlane", "polyCylinder", "polyExtrudeFace",
    "polyBevel", "polySplitRing", "polySoftEdge", "polyNormal", "polyMergeVert", "polyTweak", "polyUnite",
    "polyAutoProj", "polyMapCut", "polyMapSewMove", "polyDelEdge", "polySplit", "polyCut", "deleteComponent",
    "sequenceManager", "partition", "renderGlobals", "renderGlobalsList", "defaultLightList", "defaultShaderList",
    "postProcessList", "defaultRenderUtilityList", "defaultRenderingList", "lightList", "defaultTextureList",
    "hardwareRenderGlobals", "hardwareRenderingGlobals", "resolution", "colorManagementGlobals",
    "ikSystem", "ikRPsolver", "ikSCsolver", "ikSplineSolver", "unitConversion", "makeNurbCircle",
    "brush", "strokeGlobals", "objectRenderFilter", "objectTypeFilter", "dof", "reference", "mentalrayItemsList",
    "mentalrayGlobals", "mentalrayOptions", "mentalrayFramebuffer", "aiOptions", "aiAOVFilter", "aiAOVDriver",
    "gammaCorrect", "bump3d", "plusMinusAverage", "multiplyDivide", "reverse", "condition", "blendColors",
    "container", "timeEditor", "timeEditorTracks", "nodeGraphEditorBookmarks", "polyTriangulate", "polyQuad",
};

Registry::Registry()
{
    defineDependNode(*this);
    defineDag(*this);
    defineShapes(*this);
    defineShading(*this);
    defineDeformers(*this);
    for (const char* name : kPlainTypes) define(name, MFn::kDependencyNode, "node");
    types.at("polyTweakUV")->parent = types.at("node").get();
    generic.name = "unknown";
    generic.apiType = MFn::kUnknown;
    generic.parent = types.at("node").get();
}

Registry& registry()
{
    static Registry r;
    return r;
}

}  // namespace

const NodeType* findNodeType(const std::string& name)
{
    auto& types = registry().types;
    auto it = types.find(name);
    if (it == types.end()) return nullptr;
    // Abstract families are not creatable by name.
    if (name == "world" || name == "dagNode" || name == "shape" || name == "light" || name == "node" ||
        name == "texture2d" || name == "textureEnv" || name == "geometryFilter" || name == "weightGeometryFilter" ||
        name == "nonAmbientLightShapeNode" || name == "nonExtendedLightShapeNode" || name == "reflect")
        return name == "world" ? it->second.get() : nullptr;
    return it->second.get();
}

const NodeType& genericNodeType()
{
    return registry().generic;
}

}  // namespace vqmhost
