// Scans a vQM document: its sections, the elements in them, and the ids that elements define
// and refer to. The document is our own XML: tags with double-quoted attributes, no escaping.
#include "Inspection.h"

#include <cstdlib>

namespace vqm {
namespace inspect {

namespace {

struct Tag {
    std::string name;
    std::vector<std::pair<std::string, std::string>> attributes;
    bool closing = false, selfClosing = false;
    size_t line = 0;
};

bool nextTag(const std::string& text, size_t& position, size_t& line, Tag& tag, std::string& error)
{
    size_t open = text.find('<', position);
    if (open == std::string::npos) return false;
    for (size_t i = position; i < open; ++i) line += text[i] == '\n';
    tag = Tag();
    tag.line = line;
    size_t i = open + 1;
    if (i < text.size() && (text[i] == '?' || text[i] == '!')) {
        size_t end = text.find('>', i);
        if (end == std::string::npos) {
            error = "line " + std::to_string(line) + ": unclosed declaration";
            return false;
        }
        for (size_t k = open; k < end; ++k) line += text[k] == '\n';
        position = end + 1;
        tag.name = "?";
        return true;
    }
    if (i < text.size() && text[i] == '/') {
        tag.closing = true;
        ++i;
    }
    size_t nameEnd = text.find_first_of(" \t\n/>", i);
    if (nameEnd == std::string::npos) {
        error = "line " + std::to_string(line) + ": unclosed tag";
        return false;
    }
    tag.name = text.substr(i, nameEnd - i);
    i = nameEnd;
    for (;;) {
        while (i < text.size() && (text[i] == ' ' || text[i] == '\t' || text[i] == '\n')) line += text[i++] == '\n';
        if (i >= text.size()) {
            error = "line " + std::to_string(tag.line) + ": unclosed tag <" + tag.name;
            return false;
        }
        if (text[i] == '>') {
            position = i + 1;
            return true;
        }
        if (text.compare(i, 2, "/>") == 0) {
            tag.selfClosing = true;
            position = i + 2;
            return true;
        }
        size_t eq = text.find('=', i);
        if (eq == std::string::npos || eq + 1 >= text.size() || text[eq + 1] != '"') {
            error = "line " + std::to_string(line) + ": bad attribute in <" + tag.name;
            return false;
        }
        size_t close = text.find('"', eq + 2);
        if (close == std::string::npos) {
            error = "line " + std::to_string(line) + ": unclosed attribute value in <" + tag.name;
            return false;
        }
        tag.attributes.emplace_back(text.substr(i, eq - i), text.substr(eq + 2, close - eq - 2));
        for (size_t k = i; k < close; ++k) line += text[k] == '\n';
        i = close + 1;
    }
}

const std::string* attribute(const Tag& tag, const char* name)
{
    for (const auto& a : tag.attributes)
        if (a.first == name) return &a.second;
    return nullptr;
}

bool parseId(const std::string& text, uint32_t& id)
{
    char* end = nullptr;
    unsigned long value = strtoul(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || value > 0xffffffffUL) return false;
    id = uint32_t(value);
    return true;
}

}  // namespace

bool scanDocument(const std::string& text, DocumentSummary& out, std::vector<std::string>& problems)
{
    size_t position = 0, line = 1;
    Tag tag;
    std::string error;
    std::vector<std::string> open;
    bool sawRoot = false;
    while (nextTag(text, position, line, tag, error)) {
        if (tag.name == "?") continue;
        if (tag.closing) {
            if (open.empty() || open.back() != tag.name) {
                problems.push_back("line " + std::to_string(tag.line) + ": </" + tag.name + "> closes " +
                                   (open.empty() ? std::string("nothing") : "<" + open.back() + ">"));
                return sawRoot;
            }
            open.pop_back();
            continue;
        }
        if (open.empty()) {
            if (tag.name != "vQM" || sawRoot) {
                problems.push_back("line " + std::to_string(tag.line) + ": <" + tag.name + "> where the root <vQM> belongs");
                return false;
            }
            sawRoot = true;
            if (const std::string* name = attribute(tag, "name")) out.name = *name;
            if (const std::string* version = attribute(tag, "version")) out.version = *version;
        } else if (open.size() == 1) {
            out.sectionElements[tag.name] += 0;
            if (tag.name == "Shapes")
                if (const std::string* external = attribute(tag, "externalShapesFile")) out.externalShapesFile = *external;
            if (tag.name == "Animation")
                if (const std::string* external = attribute(tag, "externalAnimFile")) out.externalAnimFile = *external;
        } else {
            const std::string& section = open[1];
            if (open.size() == 2) ++out.sectionElements[section];
            uint32_t id;
            if (section == "Scene") {
                ++out.sceneElements[tag.name];
                if (const std::string* shapeId = attribute(tag, "shapeId")) {
                    if (parseId(*shapeId, id)) out.sceneShapeIds.push_back(id);
                    else problems.push_back("line " + std::to_string(tag.line) + ": shapeId \"" + *shapeId + "\" is no id");
                }
                if (const std::string* materials = attribute(tag, "materialIds")) {
                    size_t start = 0;
                    while (start <= materials->size()) {
                        size_t comma = materials->find(',', start);
                        if (comma == std::string::npos) comma = materials->size();
                        if (parseId(materials->substr(start, comma - start), id)) out.materialReferences.push_back(id);
                        else problems.push_back("line " + std::to_string(tag.line) + ": materialIds \"" + *materials + "\" holds no id list");
                        start = comma + 1;
                    }
                }
            } else if (section == "Shapes" && open.size() == 2) {
                if (const std::string* shapeId = attribute(tag, "shapeId"))
                    if (parseId(*shapeId, id)) out.shapeIds.insert(id);
            } else if (section == "Materials" && tag.name == "Material") {
                if (const std::string* materialId = attribute(tag, "materialId"))
                    if (parseId(*materialId, id)) out.materialIds.insert(id);
            } else if (section == "Files" && tag.name == "File") {
                if (const std::string* fileId = attribute(tag, "fileId"))
                    if (parseId(*fileId, id)) out.fileIds.insert(id);
            }
            if (section != "Files")
                for (const char* name : {"fileId", "customShaderId", "projTextureId"})
                    if (const std::string* reference = attribute(tag, name))
                        if (parseId(*reference, id)) out.fileReferences.push_back(id);
        }
        if (!tag.selfClosing) open.push_back(tag.name);
    }
    if (!error.empty()) problems.push_back(error);
    else if (!open.empty()) problems.push_back("the document ends inside <" + open.back() + ">");
    if (!sawRoot) problems.push_back("no <vQM> root element");
    return sawRoot;
}

void crossCheck(const DocumentSummary& document, const ShapesFileSummary* shapes, bool strict,
                std::vector<std::string>& problems, std::vector<std::string>& notes)
{
    std::set<uint32_t> shapeIds = document.shapeIds;
    if (shapes)
        for (const BlobSummary& blob : shapes->blobs) shapeIds.insert(blob.shapeId);
    for (uint32_t id : document.sceneShapeIds)
        if (!shapeIds.count(id)) problems.push_back("Scene refers to shape " + std::to_string(id) + ", which no shape bears");
    for (uint32_t id : document.fileReferences)
        if (!document.fileIds.count(id)) {
            std::string text = "a reference to file " + std::to_string(id) + " has no File element";
            (strict ? problems : notes).push_back(text);
        }
    std::set<uint32_t> reported;
    for (uint32_t id : document.materialReferences)
        if (!document.materialIds.count(id) && reported.insert(id).second) {
            std::string text = "material " + std::to_string(id) + " has no Material element (an unsupported shader)";
            (strict ? problems : notes).push_back(text);
        }
}

}  // namespace inspect
}  // namespace vqm
