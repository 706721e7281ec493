// Decodes the blobs of a .shapes file: shapes (1), NURBS curves (2), split shapes (4) and
// shapes with attachments (5), checking every count and index against the block's size.
#include "ByteReader.h"
#include "Inspection.h"

#include "geometry/VertexFlags.h"

namespace vqm {
namespace inspect {

namespace {

std::string where(const BlobSummary& blob)
{
    return "blob of type " + std::to_string(blob.type) + " '" + blob.name + "'";
}

void decodeTriangleSetBody(ByteReader& in, BlobSummary& blob, std::vector<std::string>& problems)
{
    blob.indices = in.u32();
    blob.subsets = in.u32();
    blob.vertices = in.u32();
    uint32_t flags = in.u32();
    blob.vertexFlags = flags & 0xffff;
    blob.meshUsage = flags >> 16;
    if (!in.ok()) return;
    if (blob.indices % 3 != 0) problems.push_back(where(blob) + ": " + std::to_string(blob.indices) + " indices are no whole triangles");
    uint64_t subsetIndices = 0;
    for (uint32_t s = 0; s < blob.subsets && in.ok(); ++s) {
        uint32_t firstVertex = in.u32(), numVertices = in.u32(), firstIndex = in.u32(), numIndices = in.u32();
        if (uint64_t(firstVertex) + numVertices > blob.vertices || uint64_t(firstIndex) + numIndices > blob.indices)
            problems.push_back(where(blob) + ": subset " + std::to_string(s) + " reaches past the set");
        subsetIndices += numIndices;
    }
    if (in.ok() && subsetIndices != blob.indices)
        problems.push_back(where(blob) + ": subsets cover " + std::to_string(subsetIndices) + " of " +
                           std::to_string(blob.indices) + " indices");
    blob.wideIndices = blob.vertices > 65536;
    uint32_t outOfRange = 0;
    for (uint32_t i = 0; i < blob.indices && in.ok(); ++i) {
        uint32_t index = blob.wideIndices ? in.u32() : in.u16();
        if (index >= blob.vertices) ++outOfRange;
    }
    if (outOfRange) problems.push_back(where(blob) + ": " + std::to_string(outOfRange) + " indices out of range");
    if (!blob.wideIndices && blob.indices % 2 == 1 && in.ok()) {
        const uint8_t* fill = in.bytes(2);
        if (fill && (fill[0] || fill[1])) problems.push_back(where(blob) + ": the fill behind odd 16-bit indices is not zero");
    }
    const uint32_t f = blob.vertexFlags, n = blob.vertices;
    if (f & ~0x3ffu) problems.push_back(where(blob) + ": unknown vertex flags " + std::to_string(f));
    size_t perVertex = 12;
    if (f & HasNormal) perVertex += 12;
    if (f & HasTangent) perVertex += 16;
    for (uint32_t set = 0; set < 4; ++set)
        if (f & uvFlag(set)) perVertex += 8;
    if (f & HasColor) perVertex += 16;
    if (f & HasBlendWeights) perVertex += (f & SingleBlendWeights) ? 1 : 20;
    if (f & HasGeneric) perVertex += 4;
    in.skip(perVertex * n);
}

void decodeTopology(ByteReader& in, const std::string& what, uint32_t hullCount, bool ownHull,
                    std::vector<std::string>& problems)
{
    uint32_t positions = in.u16(), wedges = in.u16(), triangles = in.u32();
    in.skip(size_t(positions) * 12 + size_t(wedges) * 20);
    uint32_t bad = 0;
    for (uint32_t t = 0; t < triangles && in.ok(); ++t) {
        uint16_t hull = in.u16();
        in.u16();  // tag
        for (int k = 0; k < 3; ++k) {
            uint16_t position = in.u16(), wedge = in.u16();
            if (position >= positions || wedge >= wedges) ++bad;
        }
        if (ownHull ? hull != 65535 : hull >= hullCount) ++bad;
    }
    if (bad) problems.push_back(what + ": " + std::to_string(bad) + " indices out of range in its topology");
}

}  // namespace

void decodeShapeBlob(uint32_t type, const uint8_t* data, uint32_t size, BlobSummary& blob,
                     std::vector<std::string>& problems)
{
    ByteReader in(data, size);
    blob.type = type;
    blob.size = size;
    blob.name = in.name();
    blob.shapeId = in.u32();
    switch (type) {
    case 1:
    case 4: {
        in.skip(16);  // bvCenter, bvRadius
        decodeTriangleSetBody(in, blob, problems);
        blob.physicsBlocks = in.u32();
        for (uint32_t p = 0; p < blob.physicsBlocks && in.ok(); ++p) {
            uint32_t kind = in.u32(), blockSize = in.u32();
            if (kind != 1 && kind != 2) problems.push_back(where(blob) + ": physics block of kind " + std::to_string(kind));
            in.skip(blockSize);
        }
        if (type == 4 && in.ok()) {
            size_t topologyStart = in.offset();
            ByteReader peek(data + topologyStart, size - topologyStart);
            uint32_t positions = peek.u16(), wedges = peek.u16(), triangles = peek.u32();
            size_t topologySize = 8 + size_t(positions) * 12 + size_t(wedges) * 20 + size_t(triangles) * 16;
            if (topologySize + 4 <= size - topologyStart) {
                ByteReader hullCount(data + topologyStart + topologySize, 4);
                blob.hulls = hullCount.u32();
            }
            decodeTopology(in, where(blob), blob.hulls, false, problems);
            in.u32();
            for (uint32_t h = 0; h < blob.hulls && in.ok(); ++h)
                decodeTopology(in, where(blob) + " hull " + std::to_string(h), 0, true, problems);
        }
        break;
    }
    case 5: {
        decodeTriangleSetBody(in, blob, problems);
        blob.attachments = in.u16();
        uint32_t badFaces = 0;
        for (uint32_t a = 0; a < blob.attachments && in.ok(); ++a)
            if (in.u16() >= blob.indices / 3) ++badFaces;
        if (blob.attachments % 2 == 0) in.skip(2);
        if (badFaces) problems.push_back(where(blob) + ": " + std::to_string(badFaces) + " attachments on faces the shape lacks");
        in.skip(size_t(blob.attachments) * 52);
        break;
    }
    case 2:
        blob.closed = in.u32() != 0;
        blob.points = in.u32();
        in.skip(size_t(blob.points) * 12);
        break;
    default:
        problems.push_back("blob of unknown type " + std::to_string(type));
        return;
    }
    if (!in.ok()) problems.push_back(where(blob) + ": its fields run past its " + std::to_string(size) + " bytes");
    else if (in.remaining()) problems.push_back(where(blob) + ": " + std::to_string(in.remaining()) + " bytes left over");
}

}  // namespace inspect
}  // namespace vqm
