// Reads the side files of an export: the .shapes file through the unscrambling stream, with the
// same division into reads as the writer used; the .anim file plain.
#include "ByteReader.h"
#include "Inspection.h"

#include "io/NativeFile.h"
#include "io/UGCProtection.h"

#include <fstream>
#include <iterator>
#include <memory>

namespace vqm {
namespace inspect {

namespace {

uint32_t word(const uint8_t* b)
{
    return uint32_t(b[0]) | uint32_t(b[1]) << 8 | uint32_t(b[2]) << 16 | uint32_t(b[3]) << 24;
}

}  // namespace

bool readShapesFile(const std::string& path, ShapesFileSummary& out, std::vector<std::string>& problems)
{
    auto* file = new NativeFile();
    if (!file->open(path, FileModeRead, false)) {
        delete file;
        problems.push_back(path + ": cannot open");
        return false;
    }
    uint64_t fileSize = file->getSize();
    uint8_t bytes[4];
    if (file->read(bytes, 4) != 4) {
        delete file;
        problems.push_back(path + ": no header word");
        return false;
    }
    out.version = word(bytes) & 0xffff;
    out.keyIndex = word(bytes) >> 16;
    if (out.version != 5) problems.push_back(path + ": container version " + std::to_string(out.version) + ", not 5");
    if (out.keyIndex < 1 || out.keyIndex > 255) problems.push_back(path + ": key index " + std::to_string(out.keyIndex) + " out of 1 to 255");
    UGCProtection plain(out.keyIndex, file, true);
    if (plain.read(bytes, 4) != 4) {
        problems.push_back(path + ": no blob count");
        return true;
    }
    uint32_t count = word(bytes);
    if (count == 0) problems.push_back(path + ": holds no blob");
    uint64_t consumed = 8;
    for (uint32_t i = 0; i < count; ++i) {
        uint8_t type[4], size[4];
        if (plain.read(type, 4) != 4 || plain.read(size, 4) != 4) {
            problems.push_back(path + ": blob " + std::to_string(i) + " of " + std::to_string(count) + " is missing");
            return true;
        }
        uint32_t blobSize = word(size);
        if (blobSize > fileSize - consumed) {
            problems.push_back(path + ": blob " + std::to_string(i) + " claims " + std::to_string(blobSize) + " bytes, more than the file holds");
            return true;
        }
        std::vector<uint8_t> body(blobSize);
        if (blobSize && plain.read(body.data(), blobSize) != int32_t(blobSize)) {
            problems.push_back(path + ": blob " + std::to_string(i) + " is cut short");
            return true;
        }
        consumed += 8 + blobSize;
        BlobSummary blob;
        decodeShapeBlob(word(type), body.data(), blobSize, blob, problems);
        out.blobs.push_back(blob);
    }
    if (consumed != fileSize) problems.push_back(path + ": " + std::to_string(fileSize - consumed) + " bytes behind the last blob");
    return true;
}

void decodeAnimationBody(const uint8_t* data, size_t size, AnimationSummary& out, std::vector<std::string>& problems)
{
    ByteReader in(data, size);
    out.sets = in.u32();
    for (uint32_t s = 0; s < out.sets && in.ok(); ++s) {
        in.name();
        uint32_t clips = in.u32();
        out.clips += clips;
        for (uint32_t c = 0; c < clips && in.ok(); ++c) {
            in.name();
            in.f32();  // duration
            uint32_t nodes = in.u32();
            out.nodes += nodes;
            for (uint32_t n = 0; n < nodes && in.ok(); ++n) {
                in.u32();  // node id
                uint32_t keys = in.u32();
                out.keys += keys;
                uint32_t firstFlags = 0;
                for (uint32_t k = 0; k < keys && in.ok(); ++k) {
                    in.f32();  // time
                    uint32_t flags = in.u32();
                    if (k == 0) firstFlags = flags;
                    if (flags != firstFlags || flags > 7)
                        problems.push_back("animation: node " + std::to_string(n) + " has keys with differing or unknown flags");
                    in.skip(12 * size_t((flags & 1) + ((flags >> 1) & 1) + ((flags >> 2) & 1)));
                }
            }
        }
    }
    if (!in.ok()) problems.push_back("animation: its fields run past its " + std::to_string(size) + " bytes");
    else if (in.remaining()) problems.push_back("animation: " + std::to_string(in.remaining()) + " bytes left over");
}

bool readAnimationFile(const std::string& path, AnimationSummary& out, std::vector<std::string>& problems)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        problems.push_back(path + ": cannot open");
        return false;
    }
    std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (bytes.size() < 4) {
        problems.push_back(path + ": no version word");
        return false;
    }
    out.version = word(bytes.data());
    if (out.version != 5) problems.push_back(path + ": version " + std::to_string(out.version) + ", not 5");
    decodeAnimationBody(bytes.data() + 4, bytes.size() - 4, out, problems);
    return true;
}

}  // namespace inspect
}  // namespace vqm
