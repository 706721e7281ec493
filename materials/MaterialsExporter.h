// The Materials and Files sections: one Material per exported lambert-family shader, with its
// colours, texture maps and custom shader data, and the table of the files they refer to.
#pragma once

#include <maya/MFnLambertShader.h>
#include <maya/MObject.h>

#include "plugin/RunState.h"

#include <ostream>
#include <string>

namespace vqm {

// Modes of a shading input: which element a texture behind it becomes.
enum TextureMode { TextureDiffuse = 0, TextureNormal = 1, TextureEmissive = 2, TextureGloss = 3, TextureReflection = 4 };

class MaterialsExporter {
public:
    MaterialsExporter(bool relativePaths, bool verbose, bool floatEpsilon, const std::string& sceneDirectory,
                      const std::string& outputDirectory);

    // Runs the Materials pass, then the Files pass, and writes Files before Materials.
    bool exportMaterialsAndFiles(FileMap& fileMap, CustomFileMap& customFileMap, MaterialMap& materialMap,
                                 bool shapesExported, std::ostream& out);

    bool exportMaterials(MaterialMap& materialMap, bool shapesExported, FileMap& fileMap,
                         CustomFileMap& customFileMap, std::ostream& out);
    bool exportFiles(const FileMap& fileMap, const CustomFileMap& customFileMap, std::ostream& out);

    // Follows a shading input to the file textures behind it; the number of elements written.
    int writeTextureInput(const MFnLambertShader& shader, const MObject& node, FileMap& fileMap, std::ostream& out,
                          TextureMode mode);
    int writeTextureElement(const MObject& node, FileMap& fileMap, TextureMode mode, bool writeBumpDepth,
                            float bumpDepth, float refractiveIndex, std::ostream& out);
    int writeFirstConnectedTexture(const MFnLambertShader& shader, const char* attributeName, FileMap& fileMap,
                                   std::ostream& out, TextureMode mode);
    // Makes the path fit for the document and writes its File element.
    bool writeFileElement(std::string path, uint32_t fileId, const std::string& sourceImagesDirectory,
                          std::ostream& out);

private:
    bool relativePaths_;
    bool verbose_;
    bool floatEpsilon_;  // kept for the command's sake; it changes nothing
    std::string sceneDirectory_, outputDirectory_;
    std::string sceneDirectoryLower_, outputDirectoryLower_;
};

// The number at the start of text: blanks, an optional '-', digits, an optional fraction and
// exponent; it stops at the first character that fits none of these and never fails.
float parseFloat(const char* text);

// The text lower-cased byte by byte, for comparing paths without regard to case.
std::string lowerCase(std::string text);

}  // namespace vqm
