#include "plugin/DocumentAssembly.h"

namespace vqm {

const char* const kSchemaLocation = "https://schemas.vqm-format.org/schema/vqm-1.6.xsd";

std::string documentName(const std::string& sceneFileName)
{
    size_t slash = sceneFileName.rfind('/');
    std::string base = slash == std::string::npos ? sceneFileName : sceneFileName.substr(slash + 1);
    size_t dot = base.rfind('.');
    if (dot != std::string::npos) base.resize(dot);
    return base.empty() ? std::string("untitled") : base;
}

void writeDocumentHead(std::ostream& out, const std::string& sceneFileName)
{
    out << "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?>\n\n";
    out << "<vQM name=\"" << documentName(sceneFileName) << "\" version=\"1.6\""
        << " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
        << " xsi:noNamespaceSchemaLocation=\"" << kSchemaLocation << "\">\n";
}

}  // namespace vqm
