#include "plugin/VQMExporter.h"

#include <maya/MGlobal.h>
#include <maya/MString.h>

#include "materials/MaterialsExporter.h"
#include "plugin/DocumentAssembly.h"
#include "plugin/ExportFlags.h"
#include "plugin/OutputPath.h"
#include "plugin/RunState.h"
#include "plugin/SideFiles.h"
#include "geometry/ShapesExporter.h"
#include "scene/SceneExporter.h"
#include "io/PathUtilities.h"

#include <fstream>
#include <memory>
#include <sstream>
#include <unistd.h>

using namespace vqm;

VQMExporter::~VQMExporter() = default;

void* VQMExporter::creator()
{
    return new VQMExporter();
}

static bool currentWorkingDirectory(std::string& directory)
{
    char buffer[4096];
    if (!getcwd(buffer, sizeof buffer)) return false;
    directory = buffer;
    return true;
}

MStatus VQMExporter::doIt(const MArgList& args)
{
    MStatus status = MStatus::kSuccess;
    const ExportFlags flags = readExportFlags(args);

    unsigned fileIndex = args.flagIndex("f", "file");
    if (fileIndex == MArgList::kInvalidArgIndex || fileIndex + 1 >= args.length()) return MStatus::kFailure;
    std::string outputPath = args.asString(fileIndex + 1).str();

    outputPath = replaceDollarSigns(outputPath);
    std::string workingDirectory;
    if (!isAbsolutePath(outputPath) && currentWorkingDirectory(workingDirectory)) {
        MGlobal::displayInfo(MString("CWD: ") + MString(workingDirectory) + "\n");
        outputPath = prependWorkingDirectory(workingDirectory, outputPath);
    }
    MGlobal::displayInfo(MString("Export scene to: ") + MString(outputPath));

    prepareSideFiles(outputPath);

    std::ostringstream sceneText;
    FileMap fileMap;
    CustomFileMap customFileMap;
    MaterialMap materialMap;
    DynamicMap dynamicMap;
    ShapeMap shapeMap;
    NodeMap nodeMap;
    MergeGroupList mergeGroupList;
    AttachmentList attachmentList;
    BoundingVolumeSourceMap boundingVolumeSources;

    SceneExporter sceneExporter(flags.lights, flags.cameras, flags.defaultCameras, flags.particleSystems,
                                flags.shapes, flags.skinWeights, flags.mergeGroups, flags.nurbsCurves, flags.ik,
                                flags.selection, flags.ignoreBindPoses, flags.verbose);
    // A walk that could not start leaves the Scene section empty; the later stages only need the
    // containers, which stay empty too.
    sceneExporter.exportScene(fileMap, shapeMap, materialMap, dynamicMap, nodeMap, mergeGroupList, attachmentList,
                              boundingVolumeSources, sceneText);

    // Bounding volume meshes are matched to their targets once merge groups are exported.
    BoundingVolumeMap boundingVolumes;

    std::ostringstream dynamicsText;
    TextStream shapesText;
    ShapeBlobList shapeBlobs;
    if (flags.shapes) {
        ShapesExporter shapesExporter(flags.normals, flags.colors, flags.textureCoords, flags.skinWeights,
                                      flags.nurbsCurves, flags.binaryFiles, flags.verbose, flags.floatEpsilon);
        status = shapesExporter.exportShapes(shapeMap, mergeGroupList, attachmentList, boundingVolumes, shapeBlobs,
                                             shapesText);
        if (!status) return MStatus::kFailure;
    }

    MString sceneFileName;
    MGlobal::executeCommand("file -q -sceneName", sceneFileName, flags.verbose, false);
    std::string sceneDirectory = directoryOf(sceneFileName.str());
    std::string outputDirectory = directoryOf(outputPath);

    std::ostringstream materialsText;
    {
        MaterialsExporter materials(flags.relativePaths, flags.verbose, flags.floatEpsilon, sceneDirectory, outputDirectory);
        if (!materials.exportMaterialsAndFiles(fileMap, customFileMap, materialMap, flags.shapes, materialsText))
            return MStatus::kFailure;
    }
    std::ostringstream animationText;
    std::unique_ptr<uint8_t[]> animationBlob;
    uint32_t animationBlobSize = 0;
    std::ostringstream userAttributesText;

    std::ofstream document(outputPath, std::ios::out | std::ios::binary);
    if (!document.is_open()) return MStatus::kFailure;

    const std::string materials = materialsText.str(), dynamics = dynamicsText.str(),
                      scene = sceneText.str(), animation = animationText.str(),
                      userAttributes = userAttributesText.str();
    DocumentParts parts;
    parts.sceneFileName = sceneFileName.str();
    parts.shapes = flags.shapes;
    parts.binaryFiles = flags.binaryFiles;
    parts.particleSystems = flags.particleSystems;
    parts.animation = flags.animation;
    parts.userAttributes = flags.userAttributes;
    parts.materials = &materials;
    parts.shapesText = &shapesText.text();
    parts.dynamics = &dynamics;
    parts.scene = &scene;
    parts.animationText = &animation;
    parts.userAttributesText = &userAttributes;
    parts.hasShapeBlobs = !shapeBlobs.empty();
    parts.animationBlobSize = animationBlobSize;
    bool complete = assembleDocument(
        document, parts, [&](std::ostream& out) { return writeShapesStub(out, outputPath, shapeBlobs); },
        [&](std::ostream& out) { writeAnimationStub(out, outputPath, animationBlob, animationBlobSize); });
    if (!complete) return MStatus::kFailure;

    MGlobal::displayInfo("done.");
    return status;
}
