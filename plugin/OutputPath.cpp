#include "plugin/OutputPath.h"

#include <algorithm>

namespace vqm {

std::string replaceDollarSigns(const std::string& given)
{
    std::string path = given;
    std::replace(path.begin(), path.end(), '$', '/');
    return path;
}

std::string prependWorkingDirectory(const std::string& workingDirectory, const std::string& relativePath)
{
    std::string directory = workingDirectory;
    std::replace(directory.begin(), directory.end(), '\\', '/');
    bool endsInSlash = !directory.empty() && directory.back() == '/';
    bool beginsWithSlash = !relativePath.empty() && relativePath[0] == '/';
    if (!endsInSlash && !beginsWithSlash) directory += '/';
    return directory + relativePath;
}

std::string directoryOf(const std::string& path)
{
    size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(0, slash + 1);
}

}  // namespace vqm
