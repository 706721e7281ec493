#include "plugin/SideFiles.h"

#include "io/FileLoaderRegistry.h"
#include "io/NativeFileLoader.h"
#include "io/PathUtilities.h"

namespace vqm {

void prepareSideFiles(const std::string& outputPath)
{
    std::string root;
    getDirectory(outputPath, root);
    FileLoaderRegistry::getInstance().addLoader(new NativeFileLoader(root, std::string(), 10));
}

}  // namespace vqm
