// Entry points of the plug-in library.
#include <maya/MFnPlugin.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

#include "plugin/VQMExporter.h"

PLUGIN_EXPORT const char MApiVersion[] = "201600";

PLUGIN_EXPORT MStatus initializePlugin(MObject object)
{
    MFnPlugin plugin(object, "vQM exporter team", "6.0.3", "Any");
    MStatus status = plugin.registerCommand("VQMExporter", VQMExporter::creator, nullptr);
    if (!status) status.perror("registerCommand");
    return status;
}

PLUGIN_EXPORT MStatus uninitializePlugin(MObject object)
{
    MFnPlugin plugin(object, "Unknown", "Unknown", "Any");
    MStatus status = plugin.deregisterCommand("VQMExporter");
    if (!status) status.perror("deregisterCommand");
    return status;
}
