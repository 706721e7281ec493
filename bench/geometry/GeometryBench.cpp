// Builder road and vertex cache optimiser on a generated torus of about 1,000,000 triangles,
// side by side with libmeshoptimizer. One line per comparison: both times and their ratio.
#include "geometry/MeshBuilder.h"
#include "geometry/TriangleSet.h"
#include "geometry/VertexCacheOptimizer.h"

#ifdef VQM_HAVE_MESHOPTIMIZER
#include <meshoptimizer.h>
#endif

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <vector>

// Live and peak heap bytes of the whole program, through a size header in front of each block.
namespace
{
std::atomic<size_t> g_liveBytes{0};
std::atomic<size_t> g_peakBytes{0};
const size_t kHeader = 16;

void* countedAlloc(size_t size)
{
	void* block = malloc(size + kHeader);
	if (!block)
		throw std::bad_alloc();
	memcpy(block, &size, sizeof(size));
	const size_t live = g_liveBytes += size;
	size_t peak = g_peakBytes.load();
	while (live > peak && !g_peakBytes.compare_exchange_weak(peak, live))
	{
	}
	return static_cast<char*>(block) + kHeader;
}

void countedFree(void* pointer)
{
	if (!pointer)
		return;
	char* block = static_cast<char*>(pointer) - kHeader;
	size_t size;
	memcpy(&size, block, sizeof(size));
	g_liveBytes -= size;
	free(block);
}
} // namespace

void* operator new(size_t size)
{
	return countedAlloc(size);
}
void* operator new[](size_t size)
{
	return countedAlloc(size);
}
void operator delete(void* pointer) noexcept
{
	countedFree(pointer);
}
void operator delete[](void* pointer) noexcept
{
	countedFree(pointer);
}
void operator delete(void* pointer, size_t) noexcept
{
	countedFree(pointer);
}
void operator delete[](void* pointer, size_t) noexcept
{
	countedFree(pointer);
}

namespace
{

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point start)
{
	return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// A torus of segments x segments quads, two triangles each, every corner its own vertex.
void makeTorus(uint32_t segments, std::vector<vqm::BuilderVertex>& corners)
{
	const float pi2 = 6.28318530718f;
	const float major = 3.0f, minor = 1.0f;
	auto vertexAt = [&](uint32_t i, uint32_t j) {
		const float u = float(i) / float(segments), v = float(j) / float(segments);
		const float cu = cosf(u * pi2), su = sinf(u * pi2), cv = cosf(v * pi2), sv = sinf(v * pi2);
		vqm::BuilderVertex vertex;
		vertex.position[0] = (major + minor * cv) * cu;
		vertex.position[1] = (major + minor * cv) * su;
		vertex.position[2] = minor * sv;
		vertex.normal[0] = cv * cu;
		vertex.normal[1] = cv * su;
		vertex.normal[2] = sv;
		vertex.uv[0][0] = u;
		vertex.uv[0][1] = v;
		return vertex;
	};

	corners.clear();
	corners.reserve(size_t(segments) * segments * 6);
	for (uint32_t i = 0; i < segments; ++i)
		for (uint32_t j = 0; j < segments; ++j)
		{
			const vqm::BuilderVertex a = vertexAt(i, j), b = vertexAt(i + 1, j), c = vertexAt(i, j + 1), d = vertexAt(i + 1, j + 1);
			for (const vqm::BuilderVertex* v : {&a, &b, &c, &c, &b, &d})
				corners.push_back(*v);
		}
}

void fillBuilder(vqm::MeshBuilder& builder, const std::vector<vqm::BuilderVertex>& corners)
{
	builder.setVertexFlags(vqm::HasNormal | vqm::HasUv0 | vqm::HasTangent);
	builder.reserveVertices(corners.size());
	builder.reserveTriangles(corners.size() / 3);
	for (const vqm::BuilderVertex& corner : corners)
		builder.addVertex(corner);
	for (uint32_t t = 0; t < corners.size() / 3; ++t)
	{
		vqm::BuilderTriangle triangle;
		triangle.indices[0] = 3 * t;
		triangle.indices[1] = 3 * t + 1;
		triangle.indices[2] = 3 * t + 2;
		builder.addTriangle(triangle);
	}
}

std::vector<uint32_t> indicesOf(const vqm::IndexedTriangleSet& set)
{
	std::vector<uint32_t> indices(set.numIndices());
	for (uint32_t i = 0; i < set.numIndices(); ++i)
		indices[i] = set.indexAt(i);
	return indices;
}

// Average cache miss ratio (misses per triangle) of a FIFO cache of cacheSize entries.
double fifoAcmr(const std::vector<uint32_t>& indices, uint32_t numVertices, uint32_t cacheSize)
{
	std::vector<uint64_t> insertedAt(numVertices, UINT64_MAX);
	uint64_t misses = 0;
	for (uint32_t v : indices)
	{
		if (insertedAt[v] != UINT64_MAX && misses - insertedAt[v] <= cacheSize)
			continue;
		insertedAt[v] = misses++;
	}
	return indices.empty() ? 0.0 : double(misses) / double(indices.size() / 3);
}

// Vertex arrays, indices and subsets: any change in the output shows.
uint64_t checksumOf(const vqm::IndexedTriangleSet& set)
{
	uint64_t state = 0;
	set.updateChecksum(state);
	return state;
}

void printComparison(const char* what, double ours, double reference, double target)
{
	printf("%-44s ours %8.1f ms  meshoptimizer %8.1f ms  ratio %5.2f  (target <= %.1f)\n", what, ours, reference, ours / reference, target);
}

} // namespace

int main(int argc, char** argv)
{
	const uint32_t segments = argc > 1 ? uint32_t(atoi(argv[1])) : 708;
	std::vector<vqm::BuilderVertex> corners;
	makeTorus(segments, corners);
	const size_t numCorners = corners.size();
	printf("torus %u x %u: %zu triangles, %zu corners of %zu bytes\n", segments, segments, numCorners / 3, numCorners, sizeof(vqm::BuilderVertex));

	// our whole road, with its peak heap use measured against the size of its input corners
	std::unique_ptr<vqm::IndexedTriangleSet> unoptimized;
	double oursTangents, oursWeld, oursBuild, oursOptimize, oursRoad;
	double peakRatio;
	{
		vqm::MeshBuilder builder;
		fillBuilder(builder, corners);
		const size_t inputBytes = numCorners * sizeof(vqm::BuilderVertex) + numCorners / 3 * sizeof(vqm::BuilderTriangle);
		const size_t baseline = g_liveBytes.load();
		g_peakBytes = baseline;

		const Clock::time_point start = Clock::now();
		builder.computeTangents();
		oursTangents = millisecondsSince(start);
		Clock::time_point step = Clock::now();
		builder.weldVertices();
		oursWeld = millisecondsSince(step);
		step = Clock::now();
		std::unique_ptr<vqm::IndexedTriangleSet> set = builder.buildIndexedTriangleSet();
		oursBuild = millisecondsSince(step);
		unoptimized = set->clone(); // outside the timing, but inside the memory peak: counted against us
		step = Clock::now();
		set->optimize();
		oursOptimize = millisecondsSince(step);
		oursRoad = millisecondsSince(start);

		peakRatio = double(g_peakBytes.load() - baseline + inputBytes) / double(inputBytes);
		printf("our road: tangents %.1f ms, weld %.1f ms, build %.1f ms, optimize %.1f ms; %u vertices, %u subsets\n", oursTangents, oursWeld,
		       oursBuild, oursOptimize, set->numVertices(), set->numSubsets());
		printf("peak heap of our road: %.2f x its input corners (%.1f MB; target <= 1.5)\n", peakRatio, inputBytes / 1048576.0);
		printf("checksum of our road's set: welded %016llx, optimized %016llx\n", (unsigned long long)checksumOf(*unoptimized),
		       (unsigned long long)checksumOf(*set));
	}

	const uint32_t numVertices = unoptimized->numVertices();
	const std::vector<uint32_t> welded = indicesOf(*unoptimized);

	// our optimize alone, on a fresh copy of the welded set
	std::unique_ptr<vqm::IndexedTriangleSet> copy = unoptimized->clone();
	Clock::time_point start = Clock::now();
	copy->optimize();
	const double oursOptimizeOnly = millisecondsSince(start);
	const std::vector<uint32_t> oursOut = indicesOf(*copy);

	start = Clock::now();
	std::vector<uint32_t> orderOnly(welded.size());
	vqm::optimizeTriangleOrder(uint32_t(welded.size() / 3), 0, numVertices, welded.data(), orderOnly.data());
	const double oursOrderOnly = millisecondsSince(start);

#ifdef VQM_HAVE_MESHOPTIMIZER
	std::vector<uint32_t> meshoptOut(welded.size());
	start = Clock::now();
	meshopt_optimizeVertexCache(meshoptOut.data(), welded.data(), welded.size(), numVertices);
	const double meshoptOptimize = millisecondsSince(start);

	// the reference road: weld by exact bytes, remap, cache-optimise
	std::vector<uint32_t> remap(numCorners);
	start = Clock::now();
	const size_t unique = meshopt_generateVertexRemap(remap.data(), nullptr, numCorners, corners.data(), numCorners, sizeof(vqm::BuilderVertex));
	std::vector<vqm::BuilderVertex> remapped(unique);
	meshopt_remapVertexBuffer(remapped.data(), corners.data(), numCorners, sizeof(vqm::BuilderVertex), remap.data());
	std::vector<uint32_t> remappedIndices(numCorners);
	meshopt_remapIndexBuffer(remappedIndices.data(), nullptr, numCorners, remap.data());
	const double meshoptWeld = millisecondsSince(start);
	std::vector<uint32_t> meshoptRoadOut(numCorners);
	meshopt_optimizeVertexCache(meshoptRoadOut.data(), remappedIndices.data(), numCorners, unique);
	const double meshoptRoad = millisecondsSince(start);
	printf("meshoptimizer road: weld and remap %.1f ms, optimize %.1f ms; %zu vertices\n", meshoptWeld, meshoptRoad - meshoptWeld, unique);

	printComparison("optimize (whole set: order, renumber, move)", oursOptimizeOnly, meshoptOptimize, 2.0);
	printComparison("triangle order only", oursOrderOnly, meshoptOptimize, 2.0);
	printComparison("road (tangents, weld, build, optimize)", oursRoad, meshoptRoad, 2.5);
	for (uint32_t cacheSize : {16u, 32u})
		printf("ACMR fifo %2u: ours %.3f  meshoptimizer %.3f (same input) %.3f (its road)  unoptimized %.3f\n", cacheSize,
		       fifoAcmr(oursOut, numVertices, cacheSize), fifoAcmr(meshoptOut, numVertices, cacheSize),
		       fifoAcmr(meshoptRoadOut, uint32_t(unique), cacheSize), fifoAcmr(welded, numVertices, cacheSize));
#else
	printf("optimize %.1f ms, triangle order only %.1f ms (no meshoptimizer to compare with)\n", oursOptimizeOnly, oursOrderOnly);
	for (uint32_t cacheSize : {16u, 32u})
		printf("ACMR fifo %2u: ours %.3f  unoptimized %.3f\n", cacheSize, fifoAcmr(oursOut, numVertices, cacheSize),
		       fifoAcmr(welded, numVertices, cacheSize));
#endif
	return 0;
}
