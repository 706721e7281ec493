// Reading an export back: the document's sections and references, the blobs of a .shapes file
// and the body of an .anim file, with every inconsistency found on the way.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace vqm {
namespace inspect {

struct BlobSummary {
    uint32_t type = 0;
    uint32_t size = 0;
    std::string name;
    uint32_t shapeId = 0;
    // Triangle set body (types 1, 4, 5)
    uint32_t vertices = 0, indices = 0, subsets = 0, vertexFlags = 0, meshUsage = 0;
    bool wideIndices = false;
    uint32_t physicsBlocks = 0;
    uint32_t attachments = 0;  // type 5
    uint32_t hulls = 0;        // type 4
    // NURBS curve (type 2)
    uint32_t points = 0;
    bool closed = false;
};

// Decodes one blob; problems get one line for each inconsistency.
void decodeShapeBlob(uint32_t type, const uint8_t* data, uint32_t size, BlobSummary& out,
                     std::vector<std::string>& problems);

struct ShapesFileSummary {
    uint32_t version = 0, keyIndex = 0;
    std::vector<BlobSummary> blobs;
};

// Unscrambles and decodes a .shapes file. False when it cannot be read at all.
bool readShapesFile(const std::string& path, ShapesFileSummary& out, std::vector<std::string>& problems);

struct AnimationSummary {
    uint32_t version = 0;
    uint32_t sets = 0, clips = 0, nodes = 0, keys = 0;
};

bool readAnimationFile(const std::string& path, AnimationSummary& out, std::vector<std::string>& problems);
// The body behind the version word.
void decodeAnimationBody(const uint8_t* data, size_t size, AnimationSummary& out, std::vector<std::string>& problems);

struct DocumentSummary {
    std::string name, version;
    std::map<std::string, unsigned> sectionElements;   // section name -> elements directly inside it
    std::map<std::string, unsigned> sceneElements;     // element name -> count, in the Scene section
    std::vector<uint32_t> sceneShapeIds;               // shapeId of Scene elements
    std::set<uint32_t> shapeIds;                       // shapeId of Shapes elements
    std::vector<uint32_t> materialReferences;          // materialIds of Scene elements
    std::set<uint32_t> materialIds;                    // materialId of Material elements
    std::vector<uint32_t> fileReferences;              // fileId, customShaderId, projTextureId uses
    std::set<uint32_t> fileIds;                        // fileId of File elements
    std::string externalShapesFile, externalAnimFile;
};

// Scans the document's XML. False when it is not a vQM document at all.
bool scanDocument(const std::string& text, DocumentSummary& out, std::vector<std::string>& problems);

// References that point nowhere. Material ids of shaders the exporter does not support have no
// Material element by design; strict counts them too.
void crossCheck(const DocumentSummary& document, const ShapesFileSummary* shapes, bool strict,
                std::vector<std::string>& problems, std::vector<std::string>& notes);

}  // namespace inspect
}  // namespace vqm
