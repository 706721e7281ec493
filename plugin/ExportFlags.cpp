#include "plugin/ExportFlags.h"

namespace vqm {

static bool isSet(const MArgList& args, const char* shortName, const char* longName)
{
    return args.flagIndex(shortName, longName) != MArgList::kInvalidArgIndex;
}

ExportFlags readExportFlags(const MArgList& args)
{
    ExportFlags f;
    f.verbose = isSet(args, "v", "verbose");
    f.floatEpsilon = isSet(args, "fe", "floatEpsilon");
    f.shapes = isSet(args, "shap", "shapes");
    f.normals = isSet(args, "n", "normals");
    f.colors = isSet(args, "c", "colors");
    f.textureCoords = isSet(args, "uvs", "textureCoords");
    f.skinWeights = isSet(args, "sw", "skinWeights");
    f.mergeGroups = isSet(args, "mg", "mergeGroups");
    f.nurbsCurves = isSet(args, "nc", "nurbscurves");
    f.relativePaths = isSet(args, "rp", "relativePaths");
    f.ik = isSet(args, "ik", "ik");
    f.lights = isSet(args, "l", "lights");
    f.cameras = isSet(args, "cams", "cameras");
    f.userAttributes = isSet(args, "ua", "userattributes");
    f.defaultCameras = isSet(args, "dcams", "defaultcameras");
    f.particleSystems = isSet(args, "ps", "particlesystems");
    f.animation = isSet(args, "an", "animation");
    f.binaryFiles = isSet(args, "bin", "binaryfiles");
    f.ignoreBindPoses = isSet(args, "ignbp", "ignoreBindPoses");
    f.selection = isSet(args, "sel", "selection");
    return f;
}

}  // namespace vqm
