// The IndexedTriangleSet element, the triangle set body and the blocks of types 1, 2 and 5,
// checked byte for byte; physics cooking through a recording cooker.
#include "geometry/NurbsCurveWriter.h"
#include "geometry/PhysicsCooking.h"
#include "geometry/ShapeBlocks.h"
#include "geometry/TriangleSet.h"
#include "geometry/TriangleSetText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <sstream>
#include <vector>

using namespace vqm;

namespace
{

// A set of numVertices vertices at (i, 2i, 3i) with the given flags, one subset over all triangles
// (0, 1, 2), (1, 2, 3)...
std::unique_ptr<IndexedTriangleSet> makeSet(uint32_t numVertices, uint32_t numTriangles, uint32_t flags)
{
	auto set = std::make_unique<IndexedTriangleSet>();
	set->allocateVertices(numVertices, flags);
	for (uint32_t v = 0; v < numVertices; ++v)
	{
		set->setPosition(v, float(v), float(2 * v), float(3 * v));
		if (flags & HasNormal)
			set->setNormal(v, 0.0f, 1.0f, 0.0f);
		for (uint32_t s = 0; s < 4; ++s)
			if (flags & uvFlag(s))
				set->setUv(s, v, 0.5f * float(s), 0.25f);
		if (flags & HasColor)
			set->setColor(v, 1.0f, 0.5f, 0.0f, 1.0f);
		if (flags & HasTangent)
			set->setTangent(v, 1.0f, 0.0f, 0.0f, -1.0f);
		if (flags & HasBlendWeights)
		{
			const uint32_t blends = set->blendsPerVertex();
			for (uint32_t j = 0; j < blends; ++j)
				set->blendIndices()[blends * v + j] = uint8_t(v + j);
			if (!(flags & SingleBlendWeights))
				for (uint32_t j = 0; j < 4; ++j)
					set->blendWeights()[4 * v + j] = j == 0 ? 0.75f : (j == 1 ? 0.25f : 0.0f);
		}
		if (flags & HasGeneric)
			set->generics()[v] = -0.5f;
	}
	set->allocateIndices(3 * numTriangles);
	for (uint32_t t = 0; t < numTriangles; ++t)
		for (uint32_t k = 0; k < 3; ++k)
			set->setIndex((t + k) % numVertices, 3 * t + k);
	set->allocateSubsets(1);
	set->setSubset(new Subset{0, numVertices, 0, 3 * numTriangles}, 0);
	return set;
}

uint32_t u32At(const uint8_t* p)
{
	uint32_t v;
	memcpy(&v, p, 4);
	return v;
}

float f32At(const uint8_t* p)
{
	float v;
	memcpy(&v, p, 4);
	return v;
}

class RecordingCooker : public PhysicsCookingInterface
{
public:
	std::vector<bool> calls;      // true for a dynamic cooking
	std::vector<bool> results;    // what the calls give, in order; true once they run out
	bool cookStaticMesh(const IndexedTriangleSet&, uint32_t options, const float scale[3],
	                    std::unique_ptr<uint8_t[]>& data, uint32_t& size) override
	{
		return cook(false, options, scale, data, size);
	}
	bool cookDynamicMesh(const IndexedTriangleSet&, uint32_t options, const float scale[3],
	                     std::unique_ptr<uint8_t[]>& data, uint32_t& size) override
	{
		return cook(true, options, scale, data, size);
	}

private:
	bool cook(bool dynamic, uint32_t options, const float scale[3], std::unique_ptr<uint8_t[]>& data, uint32_t& size)
	{
		EXPECT_EQ(options, 0u);
		EXPECT_EQ(scale[0], 1.0f);
		EXPECT_EQ(scale[2], 1.0f);
		const size_t call = calls.size();
		calls.push_back(dynamic);
		if (call < results.size() && !results[call])
			return false;
		size = dynamic ? 3 : 5;
		data.reset(new uint8_t[size]);
		memset(data.get(), dynamic ? 0xDD : 0x55, size);
		return true;
	}
};

} // namespace

TEST(TriangleSetText, ElementWithEveryTextAttribute)
{
	auto set = makeSet(3, 1, HasNormal | HasUv0 | HasUv1 | HasColor | HasBlendWeights | HasTangent | HasGeneric);
	set->setOptimized(true);
	set->setMeshUsage(0x100);
	std::ostringstream out;
	const float center[3] = {1.0f, 2.0f, 1234567.0f};
	writeTriangleSetText(*set, "boxShape", 7, center, 0.5f, out);
	EXPECT_EQ(out.str(),
	          "    <IndexedTriangleSet name=\"boxShape\" shapeId=\"7\" meshUsage=\"256\" bvCenter=\"1 2 1.23457e+06\" "
	          "bvRadius=\"0.5\" isOptimized=\"true\">\n"
	          "      <Vertices count=\"3\" normal=\"true\" uv0=\"true\" uv1=\"true\" color=\"true\" "
	          "blendweights=\"true\" tangent=\"true\" generic=\"true\">\n"
	          "        <v p=\"0 0 0\" n=\"0 1 0\" t0=\"0 0.25\" t1=\"0.5 0.25\" c=\"1 0.5 0 1\" bw=\"0.75 0.25 0 0\" "
	          "bi=\"0 1 2 3\" g=\"-0.5\"/>\n"
	          "        <v p=\"1 2 3\" n=\"0 1 0\" t0=\"0 0.25\" t1=\"0.5 0.25\" c=\"1 0.5 0 1\" bw=\"0.75 0.25 0 0\" "
	          "bi=\"1 2 3 4\" g=\"-0.5\"/>\n"
	          "        <v p=\"2 4 6\" n=\"0 1 0\" t0=\"0 0.25\" t1=\"0.5 0.25\" c=\"1 0.5 0 1\" bw=\"0.75 0.25 0 0\" "
	          "bi=\"2 3 4 5\" g=\"-0.5\"/>\n"
	          "      </Vertices>\n"
	          "      <Triangles count=\"1\">\n"
	          "        <t vi=\"0 1 2\"/>\n"
	          "      </Triangles>\n"
	          "      <Subsets count=\"1\">\n"
	          "        <Subset firstVertex=\"0\" numVertices=\"3\" firstIndex=\"0\" numIndices=\"3\"/>\n"
	          "      </Subsets>\n"
	          "    </IndexedTriangleSet>\n");
}

TEST(TriangleSetText, RadiusZeroSingleBlendAndWideIndices)
{
	auto merged = makeSet(2, 1, HasBlendWeights | SingleBlendWeights);
	std::ostringstream out;
	const float center[3] = {5.0f, 5.0f, 5.0f};
	writeTriangleSetText(*merged, "MergedMesh1", 2, center, 0.0f, out);
	const std::string text = out.str();
	EXPECT_EQ(text.find("bv"), std::string::npos);
	EXPECT_EQ(text.find("isOptimized"), std::string::npos);
	EXPECT_NE(text.find("<Vertices count=\"2\" singleblendweights=\"true\">"), std::string::npos);
	EXPECT_NE(text.find("<v p=\"1 2 3\" bi=\"1\"/>"), std::string::npos);

	auto wide = makeSet(70000, 2, 0);
	wide->setIndex(69999, 5);
	std::ostringstream wideOut;
	writeTriangleSetText(*wide, "w", 1, center, 1.0f, wideOut);
	EXPECT_NE(wideOut.str().find("<t vi=\"1 2 69999\"/>"), std::string::npos);
	EXPECT_NE(wideOut.str().find("<v p=\"69999 139998 209997\"/>"), std::string::npos);
}

TEST(TriangleSetText, AttachmentsWithAndWithoutPlacement)
{
	auto set = makeSet(3, 1, HasGeneric);
	AttachmentFace faces[2] = {{4, 0}, {9, 1}};
	AttachmentPlacement placements[2];
	placements[0].bvRadius = 1.5f;
	placements[1].matrix[0] = 2.0f; // scale x 2
	placements[1].matrix[12] = 3.0f;
	placements[1].bvCenter[1] = 1.0f;
	placements[1].bvRadius = 0.25f;
	std::ostringstream out;
	writeAttachmentShapeText(*set, "crateAttachmentsShape", 3, faces, placements, 2, out);
	const std::string text = out.str();
	EXPECT_EQ(text.find("bvCenter=\"0 0 0\" bvRadius=\"0\""), std::string::npos);
	EXPECT_NE(text.find("meshUsage=\"0\" isAttachment=\"true\">\n"), std::string::npos);
	EXPECT_NE(text.find("      <Attachments count=\"2\">\n"
	                    "        <Attachment faceIndex=\"4\" bvCenter=\"0 0 0\" bvRadius=\"1.5\"/>\n"
	                    "        <Attachment faceIndex=\"9\" bvCenter=\"0 1 0\" bvRadius=\"0.25\" "
	                    "translation=\"3 0 0\" scale=\"2 1 1\"/>\n"
	                    "      </Attachments>\n"
	                    "    </IndexedTriangleSet>\n"),
	          std::string::npos);
	EXPECT_EQ(text.find("rotation"), std::string::npos);
}

TEST(ShapeBlocks, BodyWithOddIndexCountIsFilledAndSized)
{
	auto set = makeSet(3, 1, HasNormal | HasTangent | HasUv0 | HasColor | HasBlendWeights);
	set->setMeshUsage(0x10);
	const uint32_t size = triangleSetBodySize(*set);
	EXPECT_EQ(size, 16u + 16 + 6 + 2 + 3 * (12 + 12 + 16 + 8 + 16 + 16 + 4));
	std::vector<uint8_t> body(size + 8, 0xEE);
	uint8_t* end = writeTriangleSetBody(*set, body.data());
	ASSERT_EQ(end, body.data() + size);
	EXPECT_EQ(body[size], 0xEE);
	EXPECT_EQ(u32At(&body[0]), 3u);
	EXPECT_EQ(u32At(&body[4]), 1u);
	EXPECT_EQ(u32At(&body[8]), 3u);
	EXPECT_EQ(u32At(&body[12]), uint32_t(set->vertexFlags() | (0x10 << 16)));
	EXPECT_EQ(u32At(&body[16 + 12]), 3u); // subset numIndices
	const size_t indices = 32;
	EXPECT_EQ(body[indices + 2], 1);
	EXPECT_EQ(body[indices + 6], 0); // the fill
	EXPECT_EQ(body[indices + 7], 0);
	const size_t positions = indices + 8;
	EXPECT_EQ(f32At(&body[positions + 12]), 1.0f);
	EXPECT_EQ(f32At(&body[positions + 36 + 4]), 1.0f);         // normal y of vertex 0
	EXPECT_EQ(f32At(&body[positions + 72 + 12]), -1.0f);       // tangent w of vertex 0, after the normals
	EXPECT_EQ(f32At(&body[positions + 72 + 48 + 4]), 0.25f);   // uv0 v of vertex 0
	EXPECT_EQ(f32At(&body[positions + 72 + 48 + 24]), 1.0f);   // colour r of vertex 0
	const size_t weights = positions + 72 + 48 + 24 + 48;
	EXPECT_EQ(f32At(&body[weights]), 0.75f);
	EXPECT_EQ(body[weights + 48 + 4 * 2 + 3], 5); // last blend index of vertex 2 closes the body
	EXPECT_EQ(weights + 48 + 12, size_t(size));
}

TEST(ShapeBlocks, EvenAndWideIndicesHaveNoFill)
{
	auto even = makeSet(4, 2, 0);
	EXPECT_EQ(triangleSetBodySize(*even), 16u + 16 + 12 + 48);
	auto wide = makeSet(70000, 1, HasBlendWeights | SingleBlendWeights);
	const uint32_t size = triangleSetBodySize(*wide);
	EXPECT_EQ(size, 16u + 16 + 12 + 70000u * 12 + 70000u);
	std::vector<uint8_t> body(size);
	EXPECT_EQ(writeTriangleSetBody(*wide, body.data()), body.data() + size);
	EXPECT_EQ(u32At(&body[32 + 8]), 2u);
	EXPECT_EQ(body[size - 1], uint8_t(69999));
}

TEST(ShapeBlocks, NameFieldsOfFiveAndEightBytes)
{
	auto set = makeSet(3, 1, 0);
	CookedPhysicsList none;
	const float center[3] = {1.0f, 2.0f, 3.0f};
	for (const std::string name : {"abcde", "abcdefgh"})
	{
		const uint32_t size = shapeBlockSize(name, *set, nullptr, nullptr, none);
		const uint32_t fill = name.size() == 5 ? 3 : 0;
		EXPECT_EQ(size, 4 + name.size() + fill + 4 + 16 + triangleSetBodySize(*set) + 4);
		std::vector<uint8_t> block(size, 0xEE);
		ASSERT_EQ(writeShapeBlock(name, 9, center, 0.0f, *set, none, block.data()), block.data() + size);
		EXPECT_EQ(u32At(&block[0]), uint32_t(name.size()));
		EXPECT_EQ(memcmp(&block[4], name.data(), name.size()), 0);
		for (uint32_t i = 0; i < fill; ++i)
			EXPECT_EQ(block[4 + name.size() + i], 0);
		const size_t after = 4 + name.size() + fill;
		EXPECT_EQ(u32At(&block[after]), 9u);
		EXPECT_EQ(f32At(&block[after + 8]), 2.0f);
		EXPECT_EQ(f32At(&block[after + 16]), 0.0f); // radius 0 keeps its field
		EXPECT_EQ(u32At(&block[size - 4]), 0u);          // no physics blocks
	}
}

TEST(PhysicsCooking, OneStaticAndOneDynamicInRequestOrderWithRetries)
{
	auto set = makeSet(3, 1, 0);
	RecordingCooker cooker;
	cooker.results = {false, true, true, true};
	const std::vector<bool> requests = {false, false, true, true, false};
	CookedPhysicsList cooked;
	const uint32_t size = shapeBlockSize("s", *set, &requests, &cooker, cooked);
	// the first static cooking fails, the second static request tries again, the dynamic then runs once
	EXPECT_EQ(cooker.calls, (std::vector<bool>{false, false, true}));
	ASSERT_EQ(cooked.size(), 2u);
	EXPECT_EQ(cooked[0].kind, uint32_t(PhysicsStaticMesh));
	EXPECT_EQ(cooked[1].kind, uint32_t(PhysicsDynamicMesh));
	EXPECT_EQ(size, 8u + 4 + 16 + triangleSetBodySize(*set) + 4 + (8 + 5) + (8 + 3));

	std::vector<uint8_t> block(size);
	const float center[3] = {0, 0, 0};
	ASSERT_EQ(writeShapeBlock("s", 1, center, 1.0f, *set, cooked, block.data()), block.data() + size);
	EXPECT_TRUE(cooked.empty());
	const size_t physics = size - (4 + 13 + 11);
	EXPECT_EQ(u32At(&block[physics]), 2u);
	EXPECT_EQ(u32At(&block[physics + 4]), 1u);
	EXPECT_EQ(u32At(&block[physics + 8]), 5u);
	EXPECT_EQ(block[physics + 12 + 4], 0x55);
	EXPECT_EQ(u32At(&block[physics + 17]), 2u); // packed with no alignment
	EXPECT_EQ(u32At(&block[physics + 21]), 3u);
	EXPECT_EQ(block[size - 1], 0xDD);

	// dynamic first when its request comes first; nothing without a cooker
	RecordingCooker second;
	const std::vector<bool> dynamicFirst = {true, false};
	CookedPhysicsList order;
	cookPhysics(*set, &dynamicFirst, &second, order);
	ASSERT_EQ(order.size(), 2u);
	EXPECT_EQ(order[0].kind, uint32_t(PhysicsDynamicMesh));
	CookedPhysicsList nothing;
	cookPhysics(*set, &dynamicFirst, nullptr, nothing);
	EXPECT_TRUE(nothing.empty());
}

TEST(ShapeBlocks, AttachmentsBlockFillsAfterAnEvenCount)
{
	auto set = makeSet(3, 1, HasGeneric);
	for (uint32_t count : {2u, 3u})
	{
		std::vector<AttachmentFace> faces(count);
		std::vector<AttachmentPlacement> placements(count);
		for (uint32_t i = 0; i < count; ++i)
		{
			faces[i].faceIndex = uint16_t(10 + i);
			placements[i].matrix[13] = float(i);
			placements[i].bvRadius = 2.0f;
		}
		std::unique_ptr<uint8_t[]> data;
		uint32_t size = 0;
		EXPECT_EQ(writeAttachmentsBlock("attach", 4, faces.data(), *set, placements.data(), count, data, size), 5u);
		const uint32_t body = triangleSetBodySize(*set);
		const uint32_t facesBytes = count == 2 ? 2 + 4 + 2 : 2 + 6;
		ASSERT_EQ(size, 4 + 8 + 4 + body + facesBytes + 52 * count);
		const uint8_t* p = data.get() + 16 + body;
		EXPECT_EQ(p[0] | (p[1] << 8), int(count));
		EXPECT_EQ(p[2], 10);
		if (count == 2)
		{
			EXPECT_EQ(p[6] | p[7], 0);
		}
		const uint8_t* last = data.get() + size - 52;
		EXPECT_EQ(f32At(last + 12), 1.0f);                 // scale x
		EXPECT_EQ(f32At(last + 28), float(count - 1));     // translation y
		EXPECT_EQ(f32At(last + 48), 2.0f);                 // radius
	}
}

TEST(NurbsCurveWriter, TextAndBlobConvertInTheirOwnOrder)
{
	// 0.1 survives f32 differently depending on whether it is scaled before or after
	const double points[6] = {0.1, 0.0, -2.0, 1.0, 3.0, 0.0};
	std::ostringstream out;
	writeNurbsCurveText("curveShape1", 2, 3, 2, points, 2, 0.01, out);
	std::string expected = "    <NurbsCurve name=\"curveShape1\" shapeId=\"2\" degree=\"3\" form=\"closed\">\n"
	                       "          <cv c=\"";
	char buffer[64];
	snprintf(buffer, sizeof buffer, "%g", double(float(0.1)) * 0.01);
	expected += buffer;
	expected += " 0 -0.02\"/>\n          <cv c=\"0.01 0.03 0\"/>\n    </NurbsCurve>\n";
	EXPECT_EQ(out.str(), expected);

	std::ostringstream open;
	writeNurbsCurveText("c", 1, 1, 0, points, 0, 1.0, open);
	EXPECT_EQ(open.str(), "    <NurbsCurve name=\"c\" shapeId=\"1\" degree=\"1\" form=\"open\">\n    </NurbsCurve>\n");

	ShapeBlob blob = makeNurbsCurveBlob("abcde", 5, true, points, 2, 0.01);
	EXPECT_EQ(blob.type, 2u);
	ASSERT_EQ(blob.size, 4u + 8 + 12 + 24);
	EXPECT_EQ(u32At(&blob.data[0]), 5u);
	EXPECT_EQ(blob.data[9] | blob.data[10] | blob.data[11], 0);
	EXPECT_EQ(u32At(&blob.data[12]), 5u);
	EXPECT_EQ(u32At(&blob.data[16]), 1u);
	EXPECT_EQ(u32At(&blob.data[20]), 2u);
	EXPECT_EQ(f32At(&blob.data[24]), float(0.1 * 0.01));
	EXPECT_EQ(f32At(&blob.data[32]), float(-2.0 * 0.01));
}
