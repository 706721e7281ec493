// Host-wide services: messages to the user, commands as text, the active selection.
#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>

class MSelectionList;
class MStringArray;
class MIntArray;
class MDoubleArray;

class MGlobal {
public:
    enum MMayaState { kInteractive, kBatch, kLibraryApp, kBaseUIMode };
    enum ListAdjustment { kReplaceList, kXORWithList, kAddToList, kRemoveFromList, kAddToHeadOfList };

    static void displayInfo(const MString& text);
    static void displayWarning(const MString& text);
    static void displayError(const MString& text);

    static MStatus executeCommand(const MString& command, bool displayEnabled = false, bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MString& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, int& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, double& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MStringArray& result, bool displayEnabled = false,
                                  bool undoEnabled = false);

    static MStatus getActiveSelectionList(MSelectionList& list, bool orderedSelectionIfAvailable = false);
    static MStatus setActiveSelectionList(const MSelectionList& list, ListAdjustment mode = kReplaceList);
    static MStatus getSelectionListByName(const MString& name, MSelectionList& list);
    static MStatus selectByName(const MString& name, ListAdjustment mode = kAddToList);

    static MMayaState mayaState(MStatus* status = nullptr);
    static int apiVersion();
    static MString mayaVersion();
};
