// The builder road: tangents, weld and set building.
#include "geometry/MeshBuilder.h"
#include "geometry/TriangleSet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <tuple>
#include <vector>

using namespace vqm;

namespace
{

BuilderVertex vertexAt(float x, float y, float z)
{
	BuilderVertex v;
	v.position[0] = x;
	v.position[1] = y;
	v.position[2] = z;
	v.normal[2] = 1.0f;
	return v;
}

void addTriangle(MeshBuilder& builder, uint32_t a, uint32_t b, uint32_t c, uint32_t material = 0)
{
	BuilderTriangle t;
	t.indices[0] = a;
	t.indices[1] = b;
	t.indices[2] = c;
	t.materialIndex = material;
	builder.addTriangle(t);
}

// Two triangles of three corners each; the first corners of both lie offset apart in x.
uint32_t weldedCountWithOffset(float offset)
{
	MeshBuilder builder;
	builder.addVertex(vertexAt(0, 0, 0));
	builder.addVertex(vertexAt(1, 0, 0));
	builder.addVertex(vertexAt(0, 1, 0));
	builder.addVertex(vertexAt(offset, 0, 0));
	builder.addVertex(vertexAt(0, 1, 0));
	builder.addVertex(vertexAt(-1, 0, 0));
	addTriangle(builder, 0, 1, 2);
	addTriangle(builder, 3, 4, 5);
	builder.weldVertices();
	return builder.numVertices();
}

} // namespace

TEST(MeshBuilder, EmptyBuilderGivesEmptySet)
{
	MeshBuilder builder;
	builder.setVertexFlags(HasTangent | HasNormal);
	builder.computeTangents();
	builder.weldVertices();
	std::unique_ptr<IndexedTriangleSet> set = builder.buildIndexedTriangleSet();
	EXPECT_EQ(set->numVertices(), 0u);
	EXPECT_EQ(set->numIndices(), 0u);
	EXPECT_EQ(set->numSubsets(), 0u);
	EXPECT_FALSE(set->isOptimized());
}

TEST(MeshBuilder, WeldTolerance)
{
	EXPECT_EQ(weldedCountWithOffset(0.00005f), 4u);
	EXPECT_EQ(weldedCountWithOffset(0.0002f), 5u);

	BuilderVertex a = vertexAt(0, 0, 0), b = vertexAt(0, 0, 0);
	b.uv[3][1] = 0.00005f;
	EXPECT_EQ(compareVertices(a, 0, b, 1), 0);
	b.uv[3][1] = 0.0002f;
	EXPECT_EQ(compareVertices(a, 0, b, 1), -1);
	EXPECT_EQ(compareVertices(b, 1, a, 0), 1);
	b = a;
	b.blendIndices[2] = 200; // bytes compare unsigned and exactly
	EXPECT_EQ(compareVertices(a, 0, b, 1), -1);
	b = a;
	b.position[1] = NAN; // never equal, and no order either
	EXPECT_EQ(compareVertices(a, 0, b, 1), -1);
	EXPECT_EQ(compareVertices(b, 1, a, 0), -1);
}

TEST(MeshBuilder, TangentsKeepOrMergeVertices)
{
	BuilderVertex a = vertexAt(0, 0, 0), b = vertexAt(0, 0, 0);
	a.tangent[0] = 1.0f;
	a.tangent[3] = 1.0f;
	b.tangent[0] = -1.0f;
	b.tangent[3] = 1.0f;
	// opposite directions: the earlier vertex in the array comes first, both ways round
	EXPECT_EQ(compareVertices(a, 0, b, 1), -1);
	EXPECT_EQ(compareVertices(b, 1, a, 0), 1);
	EXPECT_EQ(compareVertices(b, 0, a, 1), -1);
	// a differing handedness separates exactly
	b.tangent[0] = 1.0f;
	b.tangent[3] = -1.0f;
	EXPECT_EQ(compareVertices(a, 0, b, 1), 1);
	// perpendicular tangents pass
	b.tangent[0] = 0.0f;
	b.tangent[1] = 1.0f;
	b.tangent[3] = 1.0f;
	EXPECT_EQ(compareVertices(a, 0, b, 1), 0);

	MeshBuilder builder;
	for (float direction : {1.0f, 1.0f, -1.0f})
	{
		BuilderVertex v = vertexAt(0, 0, 0);
		v.tangent[0] = direction;
		v.tangent[1] = direction > 0 ? 1.0f : 0.0f;
		v.tangent[3] = 1.0f;
		builder.addVertex(v);
	}
	addTriangle(builder, 0, 1, 2);
	builder.weldVertices();
	ASSERT_EQ(builder.numVertices(), 2u);
	// the two alike summed to (2, 2, 0) and renormalised; the opposite one kept
	const float* merged = builder.vertexAt(0).tangent;
	EXPECT_NEAR(merged[0], std::sqrt(0.5f), 1e-6f);
	EXPECT_NEAR(merged[1], std::sqrt(0.5f), 1e-6f);
	EXPECT_EQ(merged[3], 1.0f);
	EXPECT_EQ(builder.vertexAt(1).tangent[0], -1.0f);
	EXPECT_EQ(builder.triangleAt(0).indices[0], 0u);
	EXPECT_EQ(builder.triangleAt(0).indices[1], 0u);
	EXPECT_EQ(builder.triangleAt(0).indices[2], 1u);
}

TEST(MeshBuilder, RunsCompareWithTheirFirstVertex)
{
	// both within 0.0001 of the first in every coordinate, 0.00016 apart from each other in y
	MeshBuilder builder;
	builder.addVertex(vertexAt(0, 0, 0));
	builder.addVertex(vertexAt(0.00008f, 0.00008f, 0));
	builder.addVertex(vertexAt(0.00008f, -0.00008f, 0));
	addTriangle(builder, 0, 1, 2);
	builder.weldVertices();
	EXPECT_EQ(builder.numVertices(), 1u);
	EXPECT_EQ(builder.vertexAt(0).position[0], 0.0f);
}

TEST(MeshBuilder, SurvivorsKeepCreationOrderAndLowerIndexWins)
{
	MeshBuilder builder;
	builder.addVertex(vertexAt(5, 0, 0));       // 0
	builder.addVertex(vertexAt(1, 0, 0));       // 1
	builder.addVertex(vertexAt(3, 0, 0));       // 2
	builder.addVertex(vertexAt(1.00005f, 0, 0)); // 3, welds into 1
	builder.addVertex(vertexAt(5.00005f, 0, 0)); // 4, welds into 0
	builder.addVertex(vertexAt(2, 0, 0));       // 5
	addTriangle(builder, 0, 1, 2);
	addTriangle(builder, 3, 4, 5);
	builder.weldVertices();
	ASSERT_EQ(builder.numVertices(), 4u);
	const float expected[4] = {5, 1, 3, 2};
	for (uint32_t i = 0; i < 4; ++i)
		EXPECT_EQ(builder.vertexAt(i).position[0], expected[i]);
	EXPECT_EQ(builder.triangleAt(1).indices[0], 1u);
	EXPECT_EQ(builder.triangleAt(1).indices[1], 0u);
	EXPECT_EQ(builder.triangleAt(1).indices[2], 3u);

	// of two equal vertices the lower index survives, with its own data
	MeshBuilder pair;
	pair.addVertex(vertexAt(0.00005f, 0, 0));
	pair.addVertex(vertexAt(0, 0, 0));
	addTriangle(pair, 0, 1, 1);
	pair.weldVertices();
	ASSERT_EQ(pair.numVertices(), 1u);
	EXPECT_EQ(pair.vertexAt(0).position[0], 0.00005f);
}

TEST(MeshBuilder, MaterialSubsetsInAscendingOrder)
{
	MeshBuilder builder;
	for (int i = 0; i < 12; ++i)
		builder.addVertex(vertexAt(float(i), float(i % 3), 0));
	addTriangle(builder, 9, 10, 11, 7);
	addTriangle(builder, 6, 7, 8, 3);
	addTriangle(builder, 3, 4, 5, 0);
	addTriangle(builder, 0, 1, 2, 7);
	builder.weldVertices();
	std::unique_ptr<IndexedTriangleSet> set = builder.buildIndexedTriangleSet();

	ASSERT_EQ(set->numSubsets(), 3u);
	const uint32_t expected[12] = {3, 4, 5, 6, 7, 8, 0, 1, 2, 9, 10, 11};
	for (uint32_t i = 0; i < 12; ++i)
		EXPECT_EQ(set->indexAt(i), expected[i]) << i;
	const Subset* first = set->getSubset(0);
	const Subset* second = set->getSubset(1);
	const Subset* third = set->getSubset(2);
	EXPECT_EQ(first->firstIndex, 0u);
	EXPECT_EQ(first->numIndices, 3u);
	EXPECT_EQ(first->firstVertex, 3u);
	EXPECT_EQ(first->numVertices, 3u);
	EXPECT_EQ(second->firstIndex, 3u);
	EXPECT_EQ(third->firstIndex, 6u);
	EXPECT_EQ(third->numIndices, 6u);
	// material 7 uses vertices 0-2 and 9-11: its range spans those of the others
	EXPECT_EQ(third->firstVertex, 0u);
	EXPECT_EQ(third->numVertices, 12u);
}

TEST(MeshBuilder, BlendWeightsScaledToOne)
{
	MeshBuilder builder;
	builder.setVertexFlags(HasBlendWeights);
	BuilderVertex half = vertexAt(0, 0, 0);
	const float weights[4] = {0.25f, 0.125f, 0.0625f, 0.0625f};
	for (int k = 0; k < 4; ++k)
	{
		half.blendWeights[k] = weights[k];
		half.blendIndices[k] = uint8_t(10 + k);
	}
	builder.addVertex(half);
	builder.addVertex(vertexAt(1, 0, 0)); // four zero weights
	addTriangle(builder, 0, 1, 1);
	builder.weldVertices();
	std::unique_ptr<IndexedTriangleSet> set = builder.buildIndexedTriangleSet();

	ASSERT_NE(set->blendWeights(), nullptr);
	for (int k = 0; k < 4; ++k)
	{
		EXPECT_EQ(set->blendWeights()[k], 2.0f * weights[k]);
		EXPECT_EQ(set->blendIndices()[k], 10 + k);
		EXPECT_EQ(set->blendWeights()[4 + k], 0.0f);
	}

	MeshBuilder rigid;
	rigid.setVertexFlags(HasBlendWeights | SingleBlendWeights);
	rigid.addVertex(half);
	addTriangle(rigid, 0, 0, 0);
	rigid.weldVertices();
	std::unique_ptr<IndexedTriangleSet> single = rigid.buildIndexedTriangleSet();
	EXPECT_EQ(single->blendWeights(), nullptr);
	EXPECT_EQ(single->blendIndices()[0], 10);
}

TEST(MeshBuilder, TangentsWithoutUvsAreTheXAxis)
{
	MeshBuilder builder;
	builder.setVertexFlags(HasNormal | HasTangent);
	builder.addVertex(vertexAt(0, 0, 0));
	builder.addVertex(vertexAt(1, 0, 0));
	builder.addVertex(vertexAt(0, 1, 0));
	addTriangle(builder, 0, 1, 2);
	builder.computeTangents();
	builder.weldVertices();
	std::unique_ptr<IndexedTriangleSet> set = builder.buildIndexedTriangleSet();
	ASSERT_NE(set->tangents(), nullptr);
	for (uint32_t v = 0; v < 3; ++v)
	{
		const float* t = set->tangents() + 4 * v;
		EXPECT_EQ(t[0], 1.0f);
		EXPECT_EQ(t[1], 0.0f);
		EXPECT_EQ(t[2], 0.0f);
		EXPECT_EQ(t[3], 1.0f);
	}
}

TEST(MeshBuilder, QuadWithUvsWeldsToFourVerticesWithTangents)
{
	MeshBuilder builder;
	builder.setVertexFlags(HasNormal | HasUv0 | HasTangent);
	const float corners[6][2] = {{0, 0}, {1, 0}, {0, 1}, {0, 1}, {1, 0}, {1, 1}};
	for (const auto& c : corners)
	{
		BuilderVertex v = vertexAt(c[0], c[1], 0);
		v.uv[0][0] = c[0];
		v.uv[0][1] = c[1];
		builder.addVertex(v);
	}
	addTriangle(builder, 0, 1, 2);
	addTriangle(builder, 3, 4, 5);
	builder.computeTangents();
	builder.weldVertices();
	std::unique_ptr<IndexedTriangleSet> set = builder.buildIndexedTriangleSet();
	ASSERT_EQ(set->numVertices(), 4u);
	ASSERT_EQ(set->numIndices(), 6u);
	EXPECT_EQ(set->uvs(1), nullptr);
	for (uint32_t v = 0; v < 4; ++v)
	{
		EXPECT_NEAR(set->tangents()[4 * v], 1.0f, 1e-6f);
		EXPECT_EQ(set->tangents()[4 * v + 3], 1.0f);
		EXPECT_EQ(set->uvs(0)[2 * v], set->positions()[3 * v]);
	}
}

TEST(MeshBuilder, DropsBrokenTrianglesAndUnusedVertices)
{
	MeshBuilder builder;
	for (int i = 0; i < 6; ++i)
		builder.addVertex(vertexAt(float(i), 0, 0));
	addTriangle(builder, 0, 1, 99); // out of range
	addTriangle(builder, 2, 3, 4);  // vertices 0, 1 and 5 end up unused
	builder.weldVertices();
	EXPECT_EQ(builder.numTriangles(), 1u);
	ASSERT_EQ(builder.numVertices(), 3u);
	EXPECT_EQ(builder.vertexAt(0).position[0], 2.0f);
	EXPECT_EQ(builder.triangleAt(0).indices[2], 2u);
}

// The triangle order of the set against a plain sort of the triangles, with many materials,
// repeated triangles and first indices, and once with an index beyond the vertices (no weld ran).
TEST(MeshBuilder, TrianglesSortedByMaterialThenIndices)
{
	std::mt19937 rng(77);
	for (int round = 0; round < 20; ++round)
	{
		MeshBuilder builder;
		const uint32_t numVertices = 1 + rng() % 300;
		for (uint32_t v = 0; v < numVertices; ++v)
			builder.addVertex(vertexAt(float(v), 0, 0));
		std::vector<BuilderTriangle> triangles;
		const uint32_t numTriangles = 1 + rng() % 2000;
		const uint32_t numMaterials = round % 3 == 0 ? 1 : 1 + rng() % 9;
		for (uint32_t t = 0; t < numTriangles; ++t)
		{
			BuilderTriangle triangle;
			for (uint32_t& index : triangle.indices)
				index = rng() % std::min<uint32_t>(numVertices, 6);
			triangle.materialIndex = 5 * (rng() % numMaterials);
			if (round == 19 && t == numTriangles / 2)
				triangle.indices[0] = numVertices + 3;
			triangles.push_back(triangle);
			builder.addTriangle(triangle);
		}
		std::unique_ptr<IndexedTriangleSet> set = builder.buildIndexedTriangleSet();

		std::sort(triangles.begin(), triangles.end(), [](const BuilderTriangle& a, const BuilderTriangle& b) {
			return std::make_tuple(a.materialIndex, a.indices[0], a.indices[1], a.indices[2]) <
			       std::make_tuple(b.materialIndex, b.indices[0], b.indices[1], b.indices[2]);
		});
		ASSERT_EQ(set->numIndices(), 3 * numTriangles);
		for (uint32_t t = 0; t < numTriangles; ++t)
			for (int k = 0; k < 3; ++k)
				ASSERT_EQ(set->indexAt(3 * t + k), triangles[t].indices[k]) << "round " << round << ", triangle " << t;
	}
}
