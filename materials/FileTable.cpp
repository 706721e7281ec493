// The Files section: every texture and custom file an element refers to, with the path made
// fit for the engine (below the source images directory, or relative to the scene or output).
#include "materials/MaterialsExporter.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MItDependencyNodes.h>

#include "io/PathUtilities.h"
#include "plugin/HostHelpers.h"

#include <algorithm>
#include <cctype>

namespace vqm {

std::string lowerCase(std::string text)
{
    for (char& c : text) c = char(tolower((unsigned char)c));
    return text;
}

bool MaterialsExporter::writeFileElement(std::string path, uint32_t fileId, const std::string& sourceImagesDirectory,
                                         std::ostream& out)
{
    // A path with a drive, a share or a root of its own is not below the source images.
    if (path.find(':') == std::string::npos && !isAbsolutePath(path)) path = sourceImagesDirectory + path;
    std::replace(path.begin(), path.end(), '\\', '/');
    const std::string lowerPath = lowerCase(path);
    if (relativePaths_) {
        if (!sceneDirectory_.empty() && lowerPath.compare(0, sceneDirectoryLower_.size(), sceneDirectoryLower_) == 0)
            path.erase(0, sceneDirectoryLower_.size());
        else
            getRelativePath(outputDirectoryLower_, lowerPath, path, path);
    }
    out << "    <File fileId=\"" << fileId << "\" filename=\"" << path << "\" />\n";
    return true;
}

bool MaterialsExporter::exportFiles(const FileMap& fileMap, const CustomFileMap& customFileMap, std::ostream& out)
{
    std::string sourceImagesDirectory;
    MString root, rule;
    if (MGlobal::executeCommand("workspace -expandName \"\"", root, false, false) &&
        MGlobal::executeCommand("workspace -fileRuleEntry \"sourceImages\"", rule, false, false)) {
        sourceImagesDirectory = root.str() + rule.str();
        if (sourceImagesDirectory.empty() || sourceImagesDirectory.back() != '/') sourceImagesDirectory += '/';
    }
    out << "\n  <Files>\n";
    for (MItDependencyNodes it(MFn::kFileTexture); !it.isDone(); it.next()) {
        MFnDependencyNode node(it.item());
        auto entry = fileMap.find(node.name().str());
        if (entry == fileMap.end()) continue;
        if (verbose_) MGlobal::displayInfo(MString("Texture: ") + node.name());
        MString fileName;
        readString(node, "fileTextureName", fileName);
        writeFileElement(fileName.str(), entry->second, sourceImagesDirectory, out);
    }
    for (const auto& custom : customFileMap) writeFileElement(sceneDirectory_ + custom.first, custom.second, sourceImagesDirectory, out);
    out << "  </Files>\n\n";
    return true;
}

}  // namespace vqm
