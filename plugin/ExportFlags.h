// The flags of the export command. Only -f takes a value; every other flag is a switch.
#pragma once

#include <maya/MArgList.h>

namespace vqm {

struct ExportFlags {
    bool verbose = false;          // -v   -verbose
    bool floatEpsilon = false;     // -fe  -floatEpsilon (stored by two stages, read by none)
    bool shapes = false;           // -shap -shapes
    bool normals = false;          // -n   -normals
    bool colors = false;           // -c   -colors
    bool textureCoords = false;    // -uvs -textureCoords
    bool skinWeights = false;      // -sw  -skinWeights
    bool mergeGroups = false;      // -mg  -mergeGroups
    bool nurbsCurves = false;      // -nc  -nurbscurves
    bool relativePaths = false;    // -rp  -relativePaths
    bool ik = false;               // -ik
    bool lights = false;           // -l   -lights
    bool cameras = false;          // -cams -cameras
    bool userAttributes = false;   // -ua  -userattributes
    bool defaultCameras = false;   // -dcams -defaultcameras
    bool particleSystems = false;  // -ps  -particlesystems
    bool animation = false;        // -an  -animation
    bool binaryFiles = false;      // -bin -binaryfiles
    bool ignoreBindPoses = false;  // -ignbp -ignoreBindPoses
    bool selection = false;        // -sel -selection
};

ExportFlags readExportFlags(const MArgList& args);

}  // namespace vqm
