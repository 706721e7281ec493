// The .shapes and .anim side files and their stubs in the document.
#include "common/ExportHarness.h"

#include "io/NativeFile.h"
#include "io/UGCProtection.h"
#include "plugin/SideFiles.h"

#include <cstring>
#include <sstream>

namespace {

vqm::ShapeBlob makeBlob(uint32_t type, const std::string& body)
{
    vqm::ShapeBlob blob;
    blob.type = type;
    blob.size = uint32_t(body.size());
    blob.data.reset(new uint8_t[body.size() + 1]);
    memcpy(blob.data.get(), body.data(), body.size());
    return blob;
}

uint32_t word(const uint8_t* bytes)
{
    return uint32_t(bytes[0]) | uint32_t(bytes[1]) << 8 | uint32_t(bytes[2]) << 16 | uint32_t(bytes[3]) << 24;
}

// Reads a .shapes file back the way the engine does: the plain header, then the scrambled
// records in the same sizes as they were written.
struct ShapesFile {
    uint32_t version = 0, keyIndex = 0;
    std::vector<std::pair<uint32_t, std::string>> blobs;
};

bool readShapesFile(const std::string& path, ShapesFile& out)
{
    auto* file = new vqm::NativeFile();
    if (!file->open(path, vqm::FileModeRead, false)) {
        delete file;
        return false;
    }
    uint8_t header[4];
    if (file->read(header, 4) != 4) {
        delete file;
        return false;
    }
    out.version = word(header) & 0xffff;
    out.keyIndex = word(header) >> 16;
    vqm::UGCProtection plain(out.keyIndex, file, true);
    uint8_t bytes[4];
    if (plain.read(bytes, 4) != 4) return false;
    uint32_t count = word(bytes);
    for (uint32_t i = 0; i < count; ++i) {
        uint8_t type[4], size[4];
        if (plain.read(type, 4) != 4 || plain.read(size, 4) != 4) return false;
        std::string body(word(size), '\0');
        if (word(size) && plain.read(&body[0], word(size)) != int32_t(word(size))) return false;
        out.blobs.emplace_back(word(type), body);
    }
    return plain.read(bytes, 1) == 0;  // nothing behind the last blob
}

TEST(SideFiles, ShapesFileHoldsTheBlobsScrambledAndTheStubNamesIt)
{
    vqmtest::TemporaryDirectory dir;
    std::string output = dir.file("level.vqm");
    vqm::prepareSideFiles(output);
    vqm::ShapeBlobList blobs;
    blobs.push_back(makeBlob(1, "first shape body"));
    blobs.push_back(makeBlob(2, ""));
    blobs.push_back(makeBlob(5, std::string(65, 'x')));
    std::ostringstream document;
    ASSERT_TRUE(vqm::writeShapesStub(document, output, blobs));
    EXPECT_EQ(document.str(), "  <Shapes externalShapesFile=\"level.vqm.shapes\">\n  </Shapes>\n\n");
    for (const vqm::ShapeBlob& b : blobs) EXPECT_EQ(b.data, nullptr) << "bodies are freed once written";

    ShapesFile file;
    ASSERT_TRUE(readShapesFile(output + ".shapes", file));
    EXPECT_EQ(file.version, 5u);
    EXPECT_GE(file.keyIndex, 1u);
    EXPECT_LE(file.keyIndex, 255u);
    ASSERT_EQ(file.blobs.size(), 3u);
    EXPECT_EQ(file.blobs[0], std::make_pair(1u, std::string("first shape body")));
    EXPECT_EQ(file.blobs[1], std::make_pair(2u, std::string()));
    EXPECT_EQ(file.blobs[2], std::make_pair(5u, std::string(65, 'x')));

    // The scrambled part is no plain copy of the bodies.
    std::string raw = vqmtest::readWholeFile(output + ".shapes");
    EXPECT_EQ(raw.find("first shape body"), std::string::npos);
}

TEST(SideFiles, AFixedKeyIndexGivesIdenticalBytes)
{
    vqmtest::TemporaryDirectory dir;
    std::string output = dir.file("a.vqm");
    vqm::prepareSideFiles(output);
    setenv("VQM_SHAPES_KEY_INDEX", "77", 1);
    std::string bytes[2];
    for (std::string& b : bytes) {
        vqm::ShapeBlobList blobs;
        blobs.push_back(makeBlob(1, "same body"));
        std::ostringstream document;
        ASSERT_TRUE(vqm::writeShapesStub(document, output, blobs));
        b = vqmtest::readWholeFile(output + ".shapes");
    }
    unsetenv("VQM_SHAPES_KEY_INDEX");
    EXPECT_EQ(bytes[0], bytes[1]);
    ASSERT_GE(bytes[0].size(), 4u);
    EXPECT_EQ(word(reinterpret_cast<const uint8_t*>(bytes[0].data())), 5u + 65536u * 77u);
    setenv("VQM_SHAPES_KEY_INDEX", "256", 1);
    EXPECT_NE(vqm::shapesKeyIndex(), 256u) << "an index out of range is not taken";
    unsetenv("VQM_SHAPES_KEY_INDEX");
}

TEST(SideFiles, AShapesFileThatCannotBeOpenedFailsWithTheStubOpen)
{
    vqmtest::TemporaryDirectory dir;
    std::string output = dir.file("blocked.vqm");
    vqm::prepareSideFiles(output);
    // A directory where the file should go cannot be opened for writing, whoever runs the test.
    ASSERT_EQ(mkdir((output + ".shapes").c_str(), 0755), 0);
    vqm::ShapeBlobList blobs;
    blobs.push_back(makeBlob(1, "body"));
    std::ostringstream document;
    EXPECT_FALSE(vqm::writeShapesStub(document, output, blobs));
    EXPECT_EQ(document.str(), "  <Shapes externalShapesFile=\"blocked.vqm.shapes\"");
}

TEST(SideFiles, AnimationFileStartsWithItsVersionWord)
{
    vqmtest::TemporaryDirectory dir;
    std::string output = dir.file("walk.vqm");
    vqm::prepareSideFiles(output);
    std::unique_ptr<uint8_t[]> blob(new uint8_t[6]{1, 2, 3, 4, 5, 6});
    std::ostringstream document;
    vqm::writeAnimationStub(document, output, blob, 6);
    EXPECT_EQ(document.str(), "\n  <Animation externalAnimFile=\"walk.vqm.anim\" />\n");
    EXPECT_EQ(blob, nullptr);
    EXPECT_EQ(vqmtest::readWholeFile(output + ".anim"), std::string("\x05\x00\x00\x00\x01\x02\x03\x04\x05\x06", 10));

    // No .anim file can be made: the stub stays, and that is no failure.
    std::string blocked = dir.file("run.vqm");
    ASSERT_EQ(mkdir((blocked + ".anim").c_str(), 0755), 0);
    std::unique_ptr<uint8_t[]> other(new uint8_t[8]());
    std::ostringstream second;
    vqm::writeAnimationStub(second, blocked, other, 8);
    EXPECT_EQ(second.str(), "\n  <Animation externalAnimFile=\"run.vqm.anim\" />\n");
    EXPECT_NE(other, nullptr) << "nothing was written, so the run still owns the blob";
}

TEST(SideFiles, ABinaryExportWithNothingToWriteMakesNoSideFile)
{
    vqmtest::ExportHarness h;
    ASSERT_TRUE(h.loadScene("createNode transform -n \"empty\";\n"));
    vqmtest::ExportRun r = h.run("-shap -bin -an");
    ASSERT_TRUE(r.ok);
    EXPECT_EQ(r.document.find("<Shapes"), std::string::npos);
    EXPECT_EQ(r.document.find("<Animation"), std::string::npos);
    EXPECT_FALSE(vqmtest::fileExists(r.outputPath + ".shapes"));
    EXPECT_FALSE(vqmtest::fileExists(r.outputPath + ".anim"));
}

}  // namespace
