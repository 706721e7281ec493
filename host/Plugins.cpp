// Loading plug-in libraries and MFnPlugin, through which they register their commands.
#include <maya/MFnPlugin.h>

#include "Commands.h"
#include "Session.h"

#include <dlfcn.h>

#include <memory>
#include <vector>

namespace vqmhost {

struct PluginRecord : Data {
    std::string name;
    std::string path;
    std::string vendor = "Unknown";
    std::string version = "Unknown";
    std::string apiVersion;
    void* library = nullptr;
    MFn::Type apiType() const override { return MFn::kPluginObject; }
};

static std::vector<std::shared_ptr<PluginRecord>>& loadedPlugins()
{
    static std::vector<std::shared_ptr<PluginRecord>> plugins;
    return plugins;
}

using EntryPoint = MStatus (*)(MObject);

bool loadPlugin(const std::string& path, std::string& error)
{
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        const char* reason = dlerror();
        error = "cannot load plug-in '" + path + "': " + (reason ? reason : "unknown reason");
        return false;
    }
    auto apiVersion = static_cast<const char*>(dlsym(library, "MApiVersion"));
    auto initialize = reinterpret_cast<EntryPoint>(dlsym(library, "initializePlugin"));
    if (!apiVersion || !initialize || !dlsym(library, "uninitializePlugin")) {
        error = "'" + path + "' is not a plug-in: it lacks MApiVersion, initializePlugin or uninitializePlugin";
        dlclose(library);
        return false;
    }
    auto record = std::make_shared<PluginRecord>();
    record->path = path;
    size_t slash = path.rfind('/');
    std::string file = slash == std::string::npos ? path : path.substr(slash + 1);
    record->name = file.substr(0, file.find('.'));
    record->apiVersion = apiVersion;
    record->library = library;
    MStatus status = initialize(MObject(std::static_pointer_cast<Data>(record)));
    if (!status) {
        error = "initializePlugin of '" + path + "' failed: " + status.errorString();
        dlclose(library);
        return false;
    }
    loadedPlugins().push_back(record);
    return true;
}

void unloadAllPlugins()
{
    auto& plugins = loadedPlugins();
    while (!plugins.empty()) {
        std::shared_ptr<PluginRecord> record = plugins.back();
        plugins.pop_back();
        auto uninitialize = reinterpret_cast<EntryPoint>(dlsym(record->library, "uninitializePlugin"));
        if (uninitialize) uninitialize(MObject(std::static_pointer_cast<Data>(record)));
        dlclose(record->library);
    }
}

}  // namespace vqmhost

using namespace vqmhost;

static PluginRecord* recordOf(const MObject& object)
{
    return dynamic_cast<PluginRecord*>(object.hostData().get());
}

MFnPlugin::MFnPlugin(MObject& object, const char* vendor, const char* version, const char* requiredApiVersion,
                     MStatus* status)
{
    PluginRecord* record = recordOf(object);
    if (!record) {
        if (status) *status = MStatus::kInvalidParameter;
        return;
    }
    object_ = object;
    record->vendor = vendor ? vendor : "Unknown";
    record->version = version ? version : "Unknown";
    (void)requiredApiVersion;  // "Any": the stand-in runs every plug-in it can load
    if (status) *status = MStatus::kSuccess;
}

MStatus MFnPlugin::registerCommand(const MString& commandName, MCreatorFunction creator, MCreateSyntaxFunction)
{
    PluginRecord* record = recordOf(object_);
    if (!record) return MStatus::kFailure;
    return registerPluginCommand(commandName.str(), creator, record->name);
}

MStatus MFnPlugin::deregisterCommand(const MString& commandName)
{
    PluginRecord* record = recordOf(object_);
    if (!record) return MStatus::kFailure;
    return deregisterPluginCommand(commandName.str(), record->name);
}

#define VQM_RECORD_FIELD(NAME, FIELD)                      \
    MString MFnPlugin::NAME(MStatus* status) const         \
    {                                                      \
        PluginRecord* record = recordOf(object_);          \
        if (status) *status = record ? MStatus::kSuccess : MStatus::kFailure; \
        return record ? MString(record->FIELD) : MString(); \
    }
VQM_RECORD_FIELD(vendor, vendor)
VQM_RECORD_FIELD(version, version)
VQM_RECORD_FIELD(apiVersion, apiVersion)
VQM_RECORD_FIELD(name, name)
VQM_RECORD_FIELD(loadPath, path)
#undef VQM_RECORD_FIELD
