#include "plugin/SideFiles.h"

#include "io/FileLoaderRegistry.h"
#include "io/NativeFileLoader.h"
#include "io/PathUtilities.h"
#include "io/UGCProtection.h"

#include <cstdlib>

namespace vqm {

static const uint32_t kSideFileVersion = 5;

void prepareSideFiles(const std::string& outputPath)
{
    std::string root;
    getDirectory(outputPath, root);
    FileLoaderRegistry::getInstance().addLoader(new NativeFileLoader(root, std::string(), 10));
}

uint32_t shapesKeyIndex()
{
    if (const char* fixed = getenv("VQM_SHAPES_KEY_INDEX")) {
        char* end = nullptr;
        long value = strtol(fixed, &end, 10);
        if (*fixed && *end == '\0' && value >= 1 && value <= long(getMaxKeyIndex())) return uint32_t(value);
    }
    return chooseKeyIndex();
}

// Side files are little-endian whatever the machine.
static void writeWord(File& file, uint32_t value)
{
    uint8_t bytes[4] = {uint8_t(value), uint8_t(value >> 8), uint8_t(value >> 16), uint8_t(value >> 24)};
    file.write(bytes, 4);
}

static std::string nameInDocument(const std::string& sideFilePath)
{
    std::string name;
    getFileName(sideFilePath, name, true);
    return name;
}

bool writeShapesStub(std::ostream& document, const std::string& outputPath, ShapeBlobList& blobs)
{
    const std::string path = outputPath + ".shapes";
    document << "  <Shapes externalShapesFile=\"" << nameInDocument(path) << "\"";
    File* file = FileLoaderRegistry::getInstance().openFile(path, FileModeWrite);
    if (!file || !file->isOpen()) {
        delete file;
        return false;
    }
    uint32_t keyIndex = shapesKeyIndex();
    writeWord(*file, (keyIndex << 16) | kSideFileVersion);
    // Each write through the scrambler starts a fresh keystream block, so the division into
    // writes is part of the format: the count, then type, size and body of each blob.
    {
        UGCProtection scrambled(keyIndex, file, true);  // owns the file and closes it
        writeWord(scrambled, uint32_t(blobs.size()));
        for (ShapeBlob& blob : blobs) {
            writeWord(scrambled, blob.type);
            writeWord(scrambled, blob.size);
            scrambled.write(blob.data.get(), blob.size);
            blob.data.reset();
        }
    }
    document << ">\n  </Shapes>\n\n";
    return true;
}

void writeAnimationStub(std::ostream& document, const std::string& outputPath, std::unique_ptr<uint8_t[]>& blob,
                        uint32_t size)
{
    const std::string path = outputPath + ".anim";
    document << "\n  <Animation externalAnimFile=\"" << nameInDocument(path) << "\"";
    std::unique_ptr<File> file(FileLoaderRegistry::getInstance().openFile(path, FileModeWrite));
    if (file && file->isOpen()) {
        writeWord(*file, kSideFileVersion);
        file->write(blob.get(), size);
        blob.reset();
    }
    document << " />\n";
}

}  // namespace vqm
