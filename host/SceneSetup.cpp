// The current scene, and what a new scene of the host holds before anything is loaded.
#include "Graph.h"
#include "Session.h"

#include <cmath>

namespace vqmhost {

static std::unique_ptr<Scene>& sceneSlot()
{
    static std::unique_ptr<Scene> scene;
    return scene;
}

static void setNumber(Node* node, const char* attribute, double value)
{
    PlugPath path;
    if (parsePlugPath(node, attribute, path, false, AttrType::Generic, nullptr)) {
        PlugData* data = node->plugData(path, true);
        data->value.kind = Value::Number;
        data->value.number = value;
    }
}

static Node* createDefault(Scene& scene, const char* type, const char* name)
{
    Node* node = scene.createNode(*findNodeType(type), name, nullptr);
    node->isDefault = true;
    return node;
}

// The startup cameras are ordinary nodes the user may delete; they are not default nodes.
static void createStartupCamera(Scene& scene, const char* name, double tx, double ty, double tz, double rx,
                                double ry, bool orthographic)
{
    Node* transform = scene.createNode(*findNodeType("transform"), name, nullptr);
    Node* shape = scene.createNode(*findNodeType("camera"), std::string(name) + "Shape", transform);
    const double degree = M_PI / 180.0;
    setNumber(transform, "tx", tx);
    setNumber(transform, "ty", ty);
    setNumber(transform, "tz", tz);
    setNumber(transform, "rx", rx * degree);
    setNumber(transform, "ry", ry * degree);
    setNumber(transform, "v", orthographic ? 0 : 1);
    setNumber(shape, "o", orthographic ? 1 : 0);
    if (orthographic) {
        setNumber(shape, "ow", 30);
        setNumber(shape, "coi", 100.1);
    }
}

static void populateNewScene(Scene& scene)
{
    createStartupCamera(scene, "persp", 28, 21, 28, -27.938, 45, false);
    createStartupCamera(scene, "top", 0, 100.1, 0, -90, 0, true);
    createStartupCamera(scene, "front", 0, 0, 100.1, 0, 0, true);
    createStartupCamera(scene, "side", 100.1, 0, 0, 0, 90, true);

    createDefault(scene, "time", "time1");
    createDefault(scene, "sequenceManager", "sequenceManager1");
    createDefault(scene, "renderGlobals", "defaultRenderGlobals");
    createDefault(scene, "resolution", "defaultResolution");
    createDefault(scene, "hardwareRenderGlobals", "hardwareRenderGlobals");
    createDefault(scene, "partition", "renderPartition");
    createDefault(scene, "partition", "characterPartition");
    createDefault(scene, "renderGlobalsList", "renderGlobalsList1");
    createDefault(scene, "defaultLightList", "defaultLightList1");
    createDefault(scene, "defaultShaderList", "defaultShaderList1");
    createDefault(scene, "postProcessList", "postProcessList1");
    createDefault(scene, "defaultRenderUtilityList", "defaultRenderUtilityList1");
    createDefault(scene, "defaultRenderingList", "defaultRenderingList1");
    createDefault(scene, "lightList", "lightList1");
    createDefault(scene, "defaultTextureList", "defaultTextureList1");
    createDefault(scene, "objectSet", "defaultLightSet");
    createDefault(scene, "objectSet", "defaultObjectSet");
    Node* lambert = createDefault(scene, "lambert", "lambert1");
    Node* initialShadingGroup = createDefault(scene, "shadingEngine", "initialShadingGroup");
    // The default shader shades the default group from the start; scene files take it as given.
    PlugPath outColor, surfaceShader;
    if (parsePlugPath(lambert, "oc", outColor, false, AttrType::Generic, nullptr) &&
        parsePlugPath(initialShadingGroup, "ss", surfaceShader, false, AttrType::Generic, nullptr))
        scene.connect(lambert, outColor, initialShadingGroup, surfaceShader, nullptr);
    createDefault(scene, "shadingEngine", "initialParticleSE");
    createDefault(scene, "materialInfo", "initialMaterialInfo");
    createDefault(scene, "ikSystem", "ikSystem");
    createDefault(scene, "hardwareRenderingGlobals", "hardwareRenderingGlobals");
    createDefault(scene, "colorManagementGlobals", "defaultColorMgtGlobals");
}

Scene& currentScene()
{
    auto& slot = sceneSlot();
    if (!slot) resetScene();
    return *slot;
}

void resetScene()
{
    auto& slot = sceneSlot();
    slot.reset();
    slot = std::make_unique<Scene>();
    populateNewScene(*slot);
}

void newScene()
{
    resetScene();
}

}  // namespace vqmhost
