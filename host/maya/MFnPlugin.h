// Function set of a loaded plug-in: its identity and the commands it registers.
#pragma once

#include <maya/MFnBase.h>
#include <maya/MString.h>

typedef void* (*MCreatorFunction)();
typedef void* (*MCreateSyntaxFunction)();

class MFnPlugin : public MFnBase {
public:
    MFnPlugin() = default;
    MFnPlugin(MObject& object, const char* vendor = "Unknown", const char* version = "Unknown",
              const char* requiredApiVersion = "Any", MStatus* status = nullptr);

    MStatus registerCommand(const MString& commandName, MCreatorFunction creator,
                            MCreateSyntaxFunction createSyntax = nullptr);
    MStatus deregisterCommand(const MString& commandName);

    MString vendor(MStatus* status = nullptr) const;
    MString version(MStatus* status = nullptr) const;
    MString apiVersion(MStatus* status = nullptr) const;
    MString name(MStatus* status = nullptr) const;
    MString loadPath(MStatus* status = nullptr) const;
};
