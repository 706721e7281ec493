#include "geometry/Tangents.h"

#include <cmath>
#include <vector>

namespace vqm
{

namespace
{

inline const float* element(FloatStream stream, size_t i)
{
	return reinterpret_cast<const float*>(reinterpret_cast<const char*>(stream.data) + i * stream.stride);
}

template <typename Index>
inline const Index* triangleAt(const Index* indices, size_t triangleStride, size_t t)
{
	return reinterpret_cast<const Index*>(reinterpret_cast<const char*>(indices) + t * triangleStride);
}

// Gram-Schmidt of the summed s direction against the normal; w from the t direction's side.
void finishTangent(const float* normal, const double tan1[3], const double tan2[3], float* out)
{
	const double n[3] = {normal[0], normal[1], normal[2]};
	const double nDotT = n[0] * tan1[0] + n[1] * tan1[1] + n[2] * tan1[2];
	const double u[3] = {tan1[0] - n[0] * nDotT, tan1[1] - n[1] * nDotT, tan1[2] - n[2] * nDotT};
	const double length2 = u[0] * u[0] + u[1] * u[1] + u[2] * u[2];
	if (length2 > 1e-8)
	{
		const double length = sqrt(length2);
		out[0] = float(u[0] / length);
		out[1] = float(u[1] / length);
		out[2] = float(u[2] / length);
	}
	else
	{
		out[0] = 1.0f;
		out[1] = 0.0f;
		out[2] = 0.0f;
	}

	// the raw sum, not the orthogonalised one
	const double crossNT[3] = {n[1] * tan1[2] - n[2] * tan1[1], n[2] * tan1[0] - n[0] * tan1[2], n[0] * tan1[1] - n[1] * tan1[0]};
	const double side = crossNT[0] * tan2[0] + crossNT[1] * tan2[1] + crossNT[2] * tan2[2];
	out[3] = side >= 0.0 ? 1.0f : -1.0f;
}

// s and t directions of one triangle; false if its UV area is (nearly) zero.
bool triangleDirections(const float* p0, const float* p1, const float* p2, const float* w0, const float* w1, const float* w2,
                        double sdir[3], double tdir[3])
{
	const double e1[3] = {double(p1[0]) - double(p0[0]), double(p1[1]) - double(p0[1]), double(p1[2]) - double(p0[2])};
	const double e2[3] = {double(p2[0]) - double(p0[0]), double(p2[1]) - double(p0[1]), double(p2[2]) - double(p0[2])};
	const double s1 = double(w1[0]) - double(w0[0]);
	const double t1 = double(w1[1]) - double(w0[1]);
	const double s2 = double(w2[0]) - double(w0[0]);
	const double t2 = double(w2[1]) - double(w0[1]);

	const double d = t2 * s1 - t1 * s2;
	if (!(fabs(d) > 1e-8))
		return false;

	const double r = 1.0 / d;
	for (int k = 0; k < 3; ++k)
	{
		sdir[k] = (t2 * e1[k] - t1 * e2[k]) * r;
		tdir[k] = (s1 * e2[k] - s2 * e1[k]) * r;
	}
	return true;
}

template <typename Index>
void computeTangentsImpl(uint32_t numVertices, FloatStream positions, FloatStream normals, FloatStream uvs, uint32_t numTriangles,
                         const Index* indices, size_t triangleStride, float* tangentsOut, size_t tangentStride)
{
	auto tangentAt = [&](size_t i) {
		return reinterpret_cast<float*>(reinterpret_cast<char*>(tangentsOut) + i * tangentStride);
	};
	auto usable = [&](const Index* tri) {
		return tri[0] < numVertices && tri[1] < numVertices && tri[2] < numVertices;
	};

	// How often each vertex is used, saturated at 2. Unshared corners (the usual case) need no
	// per-vertex sums: each vertex's sum is the one term of its own triangle.
	std::vector<uint8_t> uses(numVertices, 0);
	bool shared = false;
	for (size_t t = 0; t < numTriangles; ++t)
	{
		const Index* tri = triangleAt(indices, triangleStride, t);
		if (!usable(tri))
			continue;
		for (int k = 0; k < 3; ++k)
		{
			uint8_t& count = uses[tri[k]];
			shared |= count != 0;
			count = count ? 2 : 1;
		}
	}

	const double zero[3] = {0.0, 0.0, 0.0};

	if (!shared)
	{
		for (size_t t = 0; t < numTriangles; ++t)
		{
			const Index* tri = triangleAt(indices, triangleStride, t);
			if (!usable(tri))
				continue;
			double sdir[3], tdir[3];
			const bool contributes = triangleDirections(element(positions, tri[0]), element(positions, tri[1]), element(positions, tri[2]),
			                                            element(uvs, tri[0]), element(uvs, tri[1]), element(uvs, tri[2]), sdir, tdir);
			// 0.0 + x, as a summing pass would form it (it turns -0.0 into +0.0)
			double tan1[3], tan2[3];
			for (int k = 0; k < 3; ++k)
			{
				tan1[k] = contributes ? 0.0 + sdir[k] : 0.0;
				tan2[k] = contributes ? 0.0 + tdir[k] : 0.0;
			}
			for (int k = 0; k < 3; ++k)
				finishTangent(element(normals, tri[k]), tan1, tan2, tangentAt(tri[k]));
		}
		for (size_t i = 0; i < numVertices; ++i)
			if (uses[i] == 0)
				finishTangent(element(normals, i), zero, zero, tangentAt(i));
		return;
	}

	std::vector<double> sums(size_t(numVertices) * 6, 0.0); // tan1 and tan2 of each vertex
	for (size_t t = 0; t < numTriangles; ++t)
	{
		const Index* tri = triangleAt(indices, triangleStride, t);
		if (!usable(tri))
			continue;
		double sdir[3], tdir[3];
		if (!triangleDirections(element(positions, tri[0]), element(positions, tri[1]), element(positions, tri[2]), element(uvs, tri[0]),
		                        element(uvs, tri[1]), element(uvs, tri[2]), sdir, tdir))
			continue;
		for (int corner = 0; corner < 3; ++corner)
		{
			double* sum = &sums[size_t(tri[corner]) * 6];
			for (int k = 0; k < 3; ++k)
			{
				sum[k] += sdir[k];
				sum[3 + k] += tdir[k];
			}
		}
	}
	for (size_t i = 0; i < numVertices; ++i)
		finishTangent(element(normals, i), &sums[i * 6], &sums[i * 6 + 3], tangentAt(i));
}

} // namespace

void computeTangents(uint32_t numVertices, const float* positions, const float* normals, const float* uvs, uint32_t numTriangles,
                     const uint16_t* indices, float* tangentsOut)
{
	computeTangentsImpl(numVertices, FloatStream{positions, 12}, FloatStream{normals, 12}, FloatStream{uvs, 8}, numTriangles, indices,
	                    3 * sizeof(uint16_t), tangentsOut, 16);
}

void computeTangents(uint32_t numVertices, const float* positions, const float* normals, const float* uvs, uint32_t numTriangles,
                     const uint32_t* indices, float* tangentsOut)
{
	computeTangentsImpl(numVertices, FloatStream{positions, 12}, FloatStream{normals, 12}, FloatStream{uvs, 8}, numTriangles, indices,
	                    3 * sizeof(uint32_t), tangentsOut, 16);
}

void computeTangents(uint32_t numVertices, FloatStream positions, FloatStream normals, FloatStream uvs, uint32_t numTriangles,
                     const uint32_t* indices, size_t triangleStride, float* tangentsOut, size_t tangentStride)
{
	computeTangentsImpl(numVertices, positions, normals, uvs, numTriangles, indices, triangleStride, tangentsOut, tangentStride);
}

} // namespace vqm
