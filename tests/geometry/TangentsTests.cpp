// Per-vertex tangents: directions, handedness, fallbacks, and both index widths.
#include "geometry/Tangents.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

using namespace vqm;

namespace
{

struct Corners
{
	std::vector<float> positions, normals, uvs;
	std::vector<uint32_t> indices;

	void add(float x, float y, float u, float v, float nx = 0, float ny = 0, float nz = 1)
	{
		positions.insert(positions.end(), {x, y, 0.0f});
		normals.insert(normals.end(), {nx, ny, nz});
		uvs.insert(uvs.end(), {u, v});
	}
	uint32_t count() const { return uint32_t(positions.size() / 3); }

	std::vector<float> tangents() const
	{
		std::vector<float> out(4 * count(), -7.0f);
		computeTangents(count(), positions.data(), normals.data(), uvs.data(), uint32_t(indices.size() / 3), indices.data(), out.data());
		return out;
	}
};

} // namespace

TEST(Tangents, FollowUvDirectionAndHandedness)
{
	Corners mesh;
	mesh.add(0, 0, 0, 0);
	mesh.add(1, 0, 1, 0);
	mesh.add(0, 1, 0, 1);
	// mirrored in u
	mesh.add(0, 0, 0, 0);
	mesh.add(1, 0, -1, 0);
	mesh.add(0, 1, 0, 1);
	mesh.indices = {0, 1, 2, 3, 4, 5};
	const std::vector<float> t = mesh.tangents();
	for (int v = 0; v < 3; ++v)
	{
		EXPECT_EQ(t[4 * v], 1.0f);
		EXPECT_EQ(t[4 * v + 1], 0.0f);
		EXPECT_EQ(t[4 * v + 3], 1.0f);
		EXPECT_EQ(t[4 * (v + 3)], -1.0f);
		EXPECT_EQ(t[4 * (v + 3) + 3], -1.0f);
	}
}

TEST(Tangents, FallBackToTheXAxis)
{
	Corners mesh;
	// all UVs alike: the triangle adds nothing
	mesh.add(0, 0, 0.5f, 0.5f);
	mesh.add(1, 0, 0.5f, 0.5f);
	mesh.add(0, 1, 0.5f, 0.5f);
	// the s direction is (1, 0, 0) and the normal is parallel to it
	mesh.add(0, 0, 0, 0, 1, 0, 0);
	mesh.add(1, 0, 1, 0, 1, 0, 0);
	mesh.add(0, 1, 0, 1, 1, 0, 0);
	// a vertex no triangle uses
	mesh.add(9, 9, 0, 0);
	mesh.indices = {0, 1, 2, 3, 4, 5, 6, 6, 99};
	const std::vector<float> t = mesh.tangents();
	for (int v = 0; v < 7; ++v)
	{
		EXPECT_EQ(t[4 * v], 1.0f) << v;
		EXPECT_EQ(t[4 * v + 1], 0.0f) << v;
		EXPECT_EQ(t[4 * v + 2], 0.0f) << v;
		EXPECT_EQ(t[4 * v + 3], 1.0f) << v;
	}
}

TEST(Tangents, SharedVerticesSumTheirTriangles)
{
	// two triangles with s directions (1, 0, 0) and (0, 1, 0) share vertex 0
	Corners mesh;
	mesh.add(0, 0, 0, 0);
	mesh.add(1, 0, 1, 0);
	mesh.add(0, 1, 0, 1);
	mesh.add(0, 1, 1, 0);
	mesh.add(-1, 0, 0, 1);
	mesh.indices = {0, 1, 2, 0, 3, 4};
	const std::vector<float> t = mesh.tangents();
	EXPECT_NEAR(t[0], std::sqrt(0.5f), 1e-6f);
	EXPECT_NEAR(t[1], std::sqrt(0.5f), 1e-6f);
	EXPECT_EQ(t[4 * 3 + 1], 1.0f);

	// unshared corners give bit for bit what the summing pass gives: a shared degenerate
	// triangle (which adds nothing) forces that pass
	Corners split;
	split.add(0.3f, -0.2f, 0.1f, 0.7f, 0.0f, 0.6f, 0.8f);
	split.add(1.7f, 0.1f, 0.9f, 0.2f, 0.0f, 0.6f, 0.8f);
	split.add(0.2f, 1.3f, 0.4f, 1.1f, 0.0f, 0.6f, 0.8f);
	split.indices = {0, 1, 2};
	const std::vector<float> single = split.tangents();
	split.indices = {0, 1, 2, 0, 0, 0};
	const std::vector<float> summed = split.tangents();
	EXPECT_EQ(memcmp(single.data(), summed.data(), single.size() * sizeof(float)), 0);
}

TEST(Tangents, BothIndexWidthsAgree)
{
	Corners mesh;
	for (int i = 0; i < 30; ++i)
		mesh.add(float(i % 5) + 0.1f * i, float(i / 5), 0.03f * i, 0.5f * float(i % 4), 0.1f * float(i % 3), 0.2f, 0.9f);
	for (uint32_t i = 0; i + 2 < 30; ++i)
		mesh.indices.insert(mesh.indices.end(), {i, i + 1, i + 2});
	const std::vector<float> wide = mesh.tangents();

	std::vector<uint16_t> narrow(mesh.indices.begin(), mesh.indices.end());
	std::vector<float> out(4 * 30);
	computeTangents(30, mesh.positions.data(), mesh.normals.data(), mesh.uvs.data(), uint32_t(narrow.size() / 3), narrow.data(), out.data());
	EXPECT_EQ(memcmp(wide.data(), out.data(), out.size() * sizeof(float)), 0);
}
