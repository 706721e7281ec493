// Joins the text of the stages into the document: declaration, root element, the sections in
// their order, closing tag.
#pragma once

#include <cstdint>
#include <ostream>
#include <streambuf>
#include <string>

namespace vqm {

// An output stream into a string it owns, which text() hands out without a copy (a stage's text
// can run to many megabytes).
class TextStream : public std::ostream {
public:
    TextStream() : std::ostream(nullptr) { rdbuf(&buffer_); }
    const std::string& text() const { return buffer_.text; }

private:
    struct Buffer : std::streambuf {
        std::string text;
        int_type overflow(int_type c) override
        {
            if (!traits_type::eq_int_type(c, traits_type::eof())) text.push_back(traits_type::to_char_type(c));
            return traits_type::not_eof(c);
        }
        std::streamsize xsputn(const char* s, std::streamsize n) override
        {
            text.append(s, size_t(n));
            return n;
        }
    };
    Buffer buffer_;
};

struct DocumentParts {
    std::string sceneFileName;
    bool shapes = false, binaryFiles = false, particleSystems = false, animation = false, userAttributes = false;
    const std::string* materials = nullptr;  // the Files and Materials text
    const std::string* shapesText = nullptr;
    const std::string* dynamics = nullptr;
    const std::string* scene = nullptr;
    const std::string* animationText = nullptr;
    const std::string* userAttributesText = nullptr;
    // Side files of a binary export: the stubs stand in place of their sections.
    bool hasShapeBlobs = false;
    uint32_t animationBlobSize = 0;
};

// The root element's name: the scene file's base name without its last extension, or "untitled".
std::string documentName(const std::string& sceneFileName);

// Writes the document. writeShapesStub and writeAnimationStub are called in the place of their
// sections for a binary export; a false from writeShapesStub ends the document where it stands.
template <typename ShapesStub, typename AnimationStub>
bool assembleDocument(std::ostream& out, const DocumentParts& parts, ShapesStub writeShapesStub,
                      AnimationStub writeAnimationStub);

extern const char* const kSchemaLocation;

void writeDocumentHead(std::ostream& out, const std::string& sceneFileName);

template <typename ShapesStub, typename AnimationStub>
bool assembleDocument(std::ostream& out, const DocumentParts& parts, ShapesStub writeShapesStub,
                      AnimationStub writeAnimationStub)
{
    writeDocumentHead(out, parts.sceneFileName);
    out << *parts.materials << '\n';
    if (parts.shapes && !parts.binaryFiles) {
        out << *parts.shapesText << '\n';
    } else if (parts.shapes && parts.binaryFiles && parts.hasShapeBlobs) {
        if (!writeShapesStub(out)) return false;
    }
    if (parts.particleSystems) out << *parts.dynamics << '\n';
    out << *parts.scene << '\n';
    if (parts.animation && !parts.binaryFiles) {
        out << *parts.animationText << '\n';
    } else if (parts.animation && parts.binaryFiles && parts.animationBlobSize > 4) {
        writeAnimationStub(out);
    }
    if (parts.userAttributes) out << *parts.userAttributesText << '\n';
    out << "</vQM>\n";
    return true;
}

}  // namespace vqm
