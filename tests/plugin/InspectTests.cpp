// vqminspect's readers on blocks built by hand from the format, on the real side-file writer,
// and on exported documents.
#include "common/ExportHarness.h"

#include "inspect/Inspection.h"
#include "plugin/SideFiles.h"

#include <cstring>
#include <sys/wait.h>

using namespace vqm::inspect;

namespace {

// Builds little-endian blocks field by field.
struct Block {
    std::vector<uint8_t> bytes;
    Block& u32(uint32_t v)
    {
        for (int i = 0; i < 4; ++i) bytes.push_back(uint8_t(v >> (8 * i)));
        return *this;
    }
    Block& u16(uint16_t v)
    {
        bytes.push_back(uint8_t(v));
        bytes.push_back(uint8_t(v >> 8));
        return *this;
    }
    Block& f32(float f)
    {
        uint32_t bits;
        memcpy(&bits, &f, 4);
        return u32(bits);
    }
    Block& name(const std::string& text)
    {
        u32(uint32_t(text.size()));
        bytes.insert(bytes.end(), text.begin(), text.end());
        while ((bytes.size() % 4) != 0) bytes.push_back(0);  // the block starts aligned
        return *this;
    }
    Block& zeros(size_t n)
    {
        bytes.insert(bytes.end(), n, 0);
        return *this;
    }
};

// One triangle, 3 vertices with normals: 16-bit indices, odd count, two bytes of fill.
Block triangleBody(uint16_t lastIndex = 2)
{
    Block b;
    b.u32(3).u32(1).u32(3).u32(0x1 | (7u << 16));
    b.u32(0).u32(3).u32(0).u32(3);
    b.u16(0).u16(1).u16(lastIndex).u16(0);
    b.zeros(3 * 12 + 3 * 12);
    return b;
}

Block shapeBlock(const std::string& name, uint16_t lastIndex = 2)
{
    Block b;
    b.name(name).u32(7).f32(0).f32(0).f32(0).f32(1);
    Block body = triangleBody(lastIndex);
    b.bytes.insert(b.bytes.end(), body.bytes.begin(), body.bytes.end());
    b.u32(1).u32(2).u32(4).zeros(4);  // one dynamic physics block of 4 bytes
    return b;
}

std::vector<std::string> decode(uint32_t type, const Block& b, BlobSummary& out)
{
    std::vector<std::string> problems;
    decodeShapeBlob(type, b.bytes.data(), uint32_t(b.bytes.size()), out, problems);
    return problems;
}

TEST(Inspect, ShapeBlocksDecodeAndFaultsAreFound)
{
    BlobSummary blob;
    EXPECT_TRUE(decode(1, shapeBlock("crate"), blob).empty());
    EXPECT_EQ(blob.name, "crate");
    EXPECT_EQ(blob.shapeId, 7u);
    EXPECT_EQ(blob.vertices, 3u);
    EXPECT_EQ(blob.meshUsage, 7u);
    EXPECT_EQ(blob.physicsBlocks, 1u);
    EXPECT_FALSE(blob.wideIndices);

    EXPECT_EQ(decode(1, shapeBlock("crate", 3), blob).size(), 1u) << "index 3 of 3 vertices";
    Block extra = shapeBlock("abcd");
    extra.zeros(4);
    ASSERT_EQ(decode(1, extra, blob).size(), 1u);
    EXPECT_NE(decode(1, extra, blob)[0].find("4 bytes left over"), std::string::npos);
    Block cut = shapeBlock("abcdefgh");
    cut.bytes.resize(cut.bytes.size() - 5);
    ASSERT_EQ(decode(1, cut, blob).size(), 1u);
    EXPECT_NE(decode(1, cut, blob)[0].find("run past"), std::string::npos);

    Block curve;
    curve.name("arrow").u32(3).u32(1).u32(2).zeros(24);
    EXPECT_TRUE(decode(2, curve, blob).empty());
    EXPECT_TRUE(blob.closed);
    EXPECT_EQ(blob.points, 2u);

    for (uint16_t attachments : {2, 3}) {
        Block withAttachments;
        withAttachments.name("frame").u32(9);
        Block body = triangleBody();
        withAttachments.bytes.insert(withAttachments.bytes.end(), body.bytes.begin(), body.bytes.end());
        withAttachments.u16(attachments);
        for (uint16_t a = 0; a < attachments; ++a) withAttachments.u16(0);
        if (attachments % 2 == 0) withAttachments.u16(0);
        withAttachments.zeros(52 * size_t(attachments));
        EXPECT_TRUE(decode(5, withAttachments, blob).empty()) << attachments;
        EXPECT_EQ(blob.attachments, attachments);
    }

    Block split = shapeBlock("rock");
    split.u16(3).u16(3).u32(1).zeros(3 * 12 + 3 * 20);  // topology: 3 positions, 3 wedges, 1 triangle
    split.u16(0).u16(0).u16(0).u16(0).u16(1).u16(1).u16(2).u16(2);
    split.u32(1).u16(3).u16(3).u32(1).zeros(3 * 12 + 3 * 20);  // one hull
    split.u16(65535).u16(0).u16(0).u16(0).u16(1).u16(1).u16(2).u16(2);
    EXPECT_TRUE(decode(4, split, blob).empty()) << decode(4, split, blob).front();
    EXPECT_EQ(blob.hulls, 1u);
    split.bytes[split.bytes.size() - 16] = 0;  // the hull's triangle claims hull 0 instead of none
    EXPECT_EQ(decode(4, split, blob).size(), 1u);
}

TEST(Inspect, ShapesFileReadsBackWhatTheWriterWrote)
{
    vqmtest::TemporaryDirectory dir;
    std::string output = dir.file("level.vqm");
    vqm::prepareSideFiles(output);
    vqm::ShapeBlobList blobs;
    for (const std::string& name : {std::string("a"), std::string("second")}) {
        Block b = shapeBlock(name);
        vqm::ShapeBlob blob;
        blob.type = 1;
        blob.size = uint32_t(b.bytes.size());
        blob.data.reset(new uint8_t[b.bytes.size()]);
        memcpy(blob.data.get(), b.bytes.data(), b.bytes.size());
        blobs.push_back(std::move(blob));
    }
    std::ostringstream stub;
    ASSERT_TRUE(vqm::writeShapesStub(stub, output, blobs));
    ShapesFileSummary summary;
    std::vector<std::string> problems;
    ASSERT_TRUE(readShapesFile(output + ".shapes", summary, problems));
    EXPECT_TRUE(problems.empty()) << problems.front();
    ASSERT_EQ(summary.blobs.size(), 2u);
    EXPECT_EQ(summary.blobs[1].name, "second");
    EXPECT_EQ(summary.version, 5u);

    // A flipped bit in the scrambled part shows up as an inconsistency, not a crash.
    std::string bytes = vqmtest::readWholeFile(output + ".shapes");
    bytes[12] ^= 0x40;
    std::ofstream(output + ".shapes", std::ios::binary) << bytes;
    ShapesFileSummary damaged;
    problems.clear();
    readShapesFile(output + ".shapes", damaged, problems);
    EXPECT_FALSE(problems.empty());
}

TEST(Inspect, AnimationBody)
{
    Block body;
    body.u32(1).name("hero").u32(1).name("walk").f32(1000.0f).u32(1);
    body.u32(4).u32(2);                                             // node 4, two keys
    body.f32(0).u32(3).zeros(24).f32(500).u32(3).zeros(24);          // translation and rotation
    AnimationSummary summary;
    std::vector<std::string> problems;
    decodeAnimationBody(body.bytes.data(), body.bytes.size(), summary, problems);
    EXPECT_TRUE(problems.empty()) << problems.front();
    EXPECT_EQ(summary.keys, 2u);
    body.bytes[body.bytes.size() - 28] = 1;  // the second key's flags differ
    problems.clear();
    decodeAnimationBody(body.bytes.data(), body.bytes.size(), summary, problems);
    EXPECT_FALSE(problems.empty());
}

TEST(Inspect, DocumentReferences)
{
    const std::string document =
        "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?>\n\n<vQM name=\"x\" version=\"1.6\">\n"
        "  <Files>\n    <File fileId=\"1\" filename=\"a.png\" />\n  </Files>\n"
        "  <Materials>\n    <Material name=\"m\" materialId=\"1\">\n      <Texture fileId=\"1\"/>\n    </Material>\n  </Materials>\n"
        "  <Shapes>\n    <IndexedTriangleSet name=\"s\" shapeId=\"1\">\n    </IndexedTriangleSet>\n  </Shapes>\n"
        "  <Scene>\n    <Shape name=\"s\" shapeId=\"1\" materialIds=\"1,2\"/>\n    <Shape name=\"t\" shapeId=\"2\"/>\n  </Scene>\n"
        "</vQM>\n";
    DocumentSummary summary;
    std::vector<std::string> problems, notes;
    ASSERT_TRUE(scanDocument(document, summary, problems));
    EXPECT_TRUE(problems.empty()) << problems.front();
    EXPECT_EQ(summary.sceneElements["Shape"], 2u);
    crossCheck(summary, nullptr, false, problems, notes);
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_NE(problems[0].find("shape 2"), std::string::npos);
    ASSERT_EQ(notes.size(), 1u) << "material 2 is an unsupported shader's";
    problems.clear();
    notes.clear();
    crossCheck(summary, nullptr, true, problems, notes);
    EXPECT_EQ(problems.size(), 2u);

    DocumentSummary broken;
    problems.clear();
    scanDocument(document.substr(0, document.size() - 8), broken, problems);
    ASSERT_FALSE(problems.empty());
    EXPECT_NE(problems.back().find("ends inside <vQM>"), std::string::npos);
}

TEST(Inspect, ExportedDocumentsAreConsistent)
{
    vqmtest::TemporaryDirectory dir;
    std::string command = std::string("'") + VQM_EXPORT_TOOL + "' --quiet " + VQM_SOURCE_DIR + "/examples/crate.ma -f '" +
                          dir.file("crate.vqm") + "' -shap -n -uvs -l -cams >/dev/null 2>&1";
    ASSERT_EQ(system(command.c_str()), 0);
    std::string inspect = std::string("'") + VQM_INSPECT_TOOL + "' '" + dir.file("crate.vqm") + "' > '" + dir.file("out") + "'";
    int status = system(inspect.c_str());
    EXPECT_EQ(WEXITSTATUS(status), 0) << vqmtest::readWholeFile(dir.file("out"));
    EXPECT_NE(vqmtest::readWholeFile(dir.file("out")).find("consistent"), std::string::npos);
    std::ofstream(dir.file("bad.vqm")) << "<vQM name=\"x\">\n  <Scene>\n    <Shape shapeId=\"3\"/>\n  </Scene>\n</vQM>\n";
    status = system((std::string("'") + VQM_INSPECT_TOOL + "' --quiet '" + dir.file("bad.vqm") + "' 2>/dev/null").c_str());
    EXPECT_EQ(WEXITSTATUS(status), 1);
}

}  // namespace
