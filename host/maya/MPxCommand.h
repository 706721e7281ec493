// Base class of commands a plug-in registers.
#pragma once

#include <maya/MArgList.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

class MPxCommand {
public:
    MPxCommand() = default;
    virtual ~MPxCommand();
    virtual MStatus doIt(const MArgList& args);
    virtual MStatus undoIt();
    virtual MStatus redoIt();
    virtual bool isUndoable() const;
    virtual bool hasSyntax() const;

    static void clearResult();
    static void setResult(const MString& result);
    static void setResult(const char* result) { setResult(MString(result)); }
    static void setResult(int result);
    static void setResult(bool result);
    static void setResult(double result);
    static void appendToResult(const MString& result);

    static void displayInfo(const MString& text);
    static void displayWarning(const MString& text);
    static void displayError(const MString& text);
};
