#include "geometry/MeshExtraction.h"

#include <maya/MColorArray.h>
#include <maya/MDagPath.h>
#include <maya/MDoubleArray.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MFnMesh.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MItGeometry.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MObjectArray.h>
#include <maya/MPlugArray.h>
#include <maya/MPointArray.h>
#include <maya/MStringArray.h>

#include "geometry/MeshBuilder.h"
#include "geometry/TriangleSet.h"
#include "geometry/VertexFlags.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vqm
{

namespace
{

const char* const kNoSkinWeights = "Found vertex with no skin weights. Assigning to first bone";

// Whether something is plugged into normalCamera of the surface shader of one of the groups.
bool anyShaderHasNormalMap(const MObjectArray& shadingGroups)
{
	for (unsigned i = 0; i < shadingGroups.length(); ++i)
	{
		MFnDependencyNode group(shadingGroups[i]);
		MStatus status;
		MPlug surfaceShader = group.findPlug("surfaceShader", true, &status);
		if (!status)
			continue;
		MPlugArray sources;
		if (!surfaceShader.connectedTo(sources, true, false) || sources.length() == 0)
			continue;
		MFnDependencyNode shader(sources[0].node());
		MPlug normalCamera = shader.findPlug("normalCamera", true, &status);
		if (!status)
			continue;
		MPlugArray normalSources;
		if (normalCamera.connectedTo(normalSources, true, false) && normalSources.length() > 0)
			return true;
	}
	return false;
}

// Up to four (weight, influence) pairs per point: the largest weights, the lower influence first
// among equal ones. False when the skin cluster does not deform this mesh.
bool readSkinWeights(const MFnMesh& mesh, const MFnSkinCluster& skinCluster, unsigned numPoints,
                     std::vector<float>& skinWeight, std::vector<uint32_t>& skinBone)
{
	MStatus status;
	const unsigned index = skinCluster.indexForOutputShape(mesh.object(), &status);
	if (!status)
		return false;
	MDagPath path;
	skinCluster.getPathAtIndex(index, path);
	skinWeight.assign(4 * size_t(numPoints), 0.0f);
	skinBone.assign(4 * size_t(numPoints), 0);
	std::vector<std::pair<double, uint32_t>> pairs;
	uint32_t n = 0;
	for (MItGeometry points(path); !points.isDone() && n < numPoints; points.next(), ++n)
	{
		MDoubleArray weights;
		unsigned influenceCount = 0;
		skinCluster.getWeights(path, points.component(), weights, influenceCount);
		pairs.clear();
		for (unsigned j = 0; j < influenceCount && j < weights.length(); ++j)
			if (weights[j] != 0.0)
				pairs.emplace_back(weights[j], j);
		if (pairs.empty())
		{
			MGlobal::displayWarning(kNoSkinWeights);
			pairs.emplace_back(1.0, 0);
		}
		std::stable_sort(pairs.begin(), pairs.end(),
		                 [](const std::pair<double, uint32_t>& a, const std::pair<double, uint32_t>& b) {
			                 return a.first > b.first;
		                 });
		for (size_t j = 0; j < pairs.size() && j < 4; ++j)
		{
			skinWeight[4 * size_t(n) + j] = float(pairs[j].first);
			skinBone[4 * size_t(n) + j] = pairs[j].second;
		}
	}
	return true;
}

bool finite(const MPoint& p)
{
	return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

} // namespace

bool extractMesh(const MFnMesh& mesh, const MFnSkinCluster& skinCluster, bool hasSkinCluster, const float* matrix,
                 const std::vector<uint32_t>* materialRemap, bool exportNormals, bool exportUvs, bool exportColors,
                 bool exportSkinWeights, bool verbose, double unitScale, MeshBuilder& builder)
{
	const MObject meshObject = mesh.object();
	const MString pathName = mesh.partialPathName();
	MItMeshPolygon polygons(meshObject);
	size_t totalTriangles = 0;
	for (; !polygons.isDone(); polygons.next())
	{
		int count = 0;
		if (polygons.numTriangles(count))
			totalTriangles += size_t(std::max(count, 0));
	}
	builder.reserveTriangles(builder.numTriangles() + totalTriangles);
	builder.reserveVertices(builder.numVertices() + 3 * totalTriangles);

	uint32_t flags = builder.vertexFlags();
	MPointArray points;
	mesh.getPoints(points, MSpace::kObject);

	MFloatVectorArray normals;
	if (exportNormals && mesh.getNormals(normals, MSpace::kObject))
		flags |= HasNormal;

	const int numUVSets = mesh.numUVSets();
	MStringArray uvSetNames;
	if (exportUvs && mesh.getUVSetNames(uvSetNames))
		for (int s = 0; s < numUVSets && s < 4; ++s)
			flags |= uvFlag(uint32_t(s));
	const int uvSetsRead = exportUvs ? std::min({numUVSets, 4, int(uvSetNames.length())}) : 0;

	MObjectArray shadingGroups;
	MIntArray shaderIndices;
	mesh.getConnectedShaders(0, shadingGroups, shaderIndices);
	if (exportNormals && anyShaderHasNormalMap(shadingGroups))
		flags |= HasTangent;

	bool hasColors = false;
	MColorArray colors;
	if (exportColors)
	{
		if (mesh.numColors() < 1)
		{
			if (verbose)
				MGlobal::displayInfo(mesh.name() + " has no vertex colors");
		}
		else if (mesh.getColors(colors) && colors.length() > 0)
		{
			hasColors = true;
			flags |= HasColor;
		}
		else
		{
			MGlobal::displayWarning("vqmExport: Vertex colors are not assigned. Vertex colors not exported (" + pathName +
			                        ")");
		}
	}

	std::vector<float> skinWeight;
	std::vector<uint32_t> skinBone;
	bool hasSkin = false;
	if (exportSkinWeights && hasSkinCluster)
	{
		hasSkin = readSkinWeights(mesh, skinCluster, points.length(), skinWeight, skinBone);
		if (hasSkin)
			flags |= HasBlendWeights;
	}

	bool colorsIncomplete = false;
	bool badPositions = false;
	bool badVertexNumbers = false;
	const unsigned numPoints = points.length();
	MIntArray polygonVertices, triangleVertices;
	MPointArray trianglePoints;
	polygons.reset();
	for (unsigned p = 0; !polygons.isDone(); polygons.next(), ++p)
	{
		polygons.getVertices(polygonVertices);
		int shader = p < shaderIndices.length() ? shaderIndices[p] : -1;
		uint32_t materialIndex = shader < 0 ? 0 : uint32_t(shader);
		if (materialRemap && materialRemap->size() > materialIndex)
			materialIndex = (*materialRemap)[materialIndex];

		int numTriangles = 0;
		polygons.numTriangles(numTriangles);
		for (int t = 0; t < numTriangles; ++t)
		{
			if (!polygons.getTriangle(t, trianglePoints, triangleVertices, MSpace::kObject) ||
			    triangleVertices.length() < 3)
				continue;
			int local[3];
			bool usable = true;
			for (unsigned k = 0; k < 3; ++k)
			{
				const int vertex = triangleVertices[k];
				local[k] = -1;
				for (unsigned i = 0; i < polygonVertices.length(); ++i)
					if (polygonVertices[i] == vertex)
					{
						local[k] = int(i);
						break;
					}
				if (vertex < 0 || unsigned(vertex) >= numPoints || local[k] < 0)
				{
					badVertexNumbers = true;
					usable = false;
				}
				else if (!finite(points[unsigned(vertex)]))
				{
					badPositions = true;
					usable = false;
				}
			}
			if (!usable)
				continue;

			BuilderTriangle triangle;
			triangle.materialIndex = materialIndex;
			for (unsigned k = 0; k < 3; ++k)
			{
				const unsigned vertex = unsigned(triangleVertices[k]);
				triangle.indices[k] = builder.numVertices();
				BuilderVertex corner;
				const MPoint& point = points[vertex];
				float x = float(point.x * unitScale), y = float(point.y * unitScale), z = float(point.z * unitScale);
				if (matrix)
				{
					const float* m = matrix;
					corner.position[0] = m[0] * x + m[4] * y + m[8] * z + m[12];
					corner.position[1] = m[1] * x + m[5] * y + m[9] * z + m[13];
					corner.position[2] = m[2] * x + m[6] * y + m[10] * z + m[14];
				}
				else
				{
					corner.position[0] = x;
					corner.position[1] = y;
					corner.position[2] = z;
				}

				if (exportNormals && (flags & HasNormal))
				{
					const int normalIndex = polygons.normalIndex(local[k]);
					if (normalIndex >= 0 && unsigned(normalIndex) < normals.length())
					{
						const MFloatVector& n = normals[unsigned(normalIndex)];
						if (matrix)
						{
							const float* m = matrix;
							float nx = m[0] * n.x + m[4] * n.y + m[8] * n.z;
							float ny = m[1] * n.x + m[5] * n.y + m[9] * n.z;
							float nz = m[2] * n.x + m[6] * n.y + m[10] * n.z;
							const float sq = nx * nx + ny * ny + nz * nz;
							if (sq > 1e-6f)
							{
								const float scale = 1.0f / std::sqrt(sq);
								nx *= scale;
								ny *= scale;
								nz *= scale;
							}
							corner.normal[0] = nx;
							corner.normal[1] = ny;
							corner.normal[2] = nz;
						}
						else
						{
							corner.normal[0] = n.x;
							corner.normal[1] = n.y;
							corner.normal[2] = n.z;
						}
					}
				}

				for (int s = 0; s < uvSetsRead; ++s)
				{
					float2 uv = {0.0f, 0.0f};
					polygons.getUV(local[k], uv, &uvSetNames[unsigned(s)]);
					corner.uv[s][0] = uv[0];
					corner.uv[s][1] = uv[1];
				}

				if (hasColors)
				{
					int colorIndex = -1;
					if (!polygons.getColorIndex(local[k], colorIndex) || colorIndex < 0 ||
					    unsigned(colorIndex) >= colors.length())
					{
						corner.color[0] = corner.color[1] = corner.color[2] = 0.0f;
						corner.color[3] = 1.0f;
						colorsIncomplete = true;
					}
					else
					{
						const MColor& c = colors[unsigned(colorIndex)];
						corner.color[0] = c.r;
						corner.color[1] = c.g;
						corner.color[2] = c.b;
						corner.color[3] = c.a;
					}
				}

				if (hasSkin)
				{
					float sum = 0.0f;
					for (size_t j = 0; j < 4; ++j)
					{
						corner.blendWeights[j] = skinWeight[4 * size_t(vertex) + j];
						corner.blendIndices[j] = uint8_t(skinBone[4 * size_t(vertex) + j] & 0xFF);
						sum += corner.blendWeights[j];
					}
					if (sum == 0.0f)
					{
						MGlobal::displayWarning(kNoSkinWeights);
						corner.blendWeights[0] = 1.0f;
						for (size_t j = 0; j < 4; ++j)
							corner.blendIndices[j] = 0;
					}
				}
				builder.addVertex(corner);
			}
			builder.addTriangle(triangle);
		}
	}

	if (colorsIncomplete)
		MGlobal::displayWarning("vqmExport: Vertex colors are incompletely assigned. Defaulting to 0,0,0 (" + pathName +
		                        ")");
	if (totalTriangles == 0)
		MGlobal::displayWarning("vqmExport: Mesh has no faces (" + pathName + ")");
	if (badVertexNumbers)
		MGlobal::displayWarning("vqmExport: Triangles with vertex numbers out of range are left out (" + pathName + ")");
	if (badPositions)
		MGlobal::displayWarning("vqmExport: Triangles with positions that are not finite numbers are left out (" +
		                        pathName + ")");
	builder.setVertexFlags(flags);
	return true;
}

std::unique_ptr<IndexedTriangleSet> extractIndexedTriangleSet(const MFnMesh& mesh, const MFnSkinCluster& skinCluster,
                                                              bool hasSkinCluster, bool exportNormals, bool exportUvs,
                                                              bool exportColors, bool exportSkinWeights, bool verbose,
                                                              double unitScale)
{
	MeshBuilder builder;
	extractMesh(mesh, skinCluster, hasSkinCluster, nullptr, nullptr, exportNormals, exportUvs, exportColors,
	            exportSkinWeights, verbose, unitScale, builder);
	if (builder.vertexFlags() & HasTangent)
		builder.computeTangents();
	builder.weldVertices();
	return builder.buildIndexedTriangleSet();
}

} // namespace vqm
