// The export command: reads its flags, runs the stages in their order and writes the document.
#pragma once

#include <maya/MArgList.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>

class VQMExporter : public MPxCommand {
public:
    ~VQMExporter() override;
    MStatus doIt(const MArgList& args) override;
    static void* creator();
};
