#include "geometry/ShapesExporter.h"

#include <maya/MDistance.h>
#include <maya/MFnMesh.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MGlobal.h>
#include <maya/MPlug.h>

#include "geometry/BoundingSphere.h"
#include "geometry/MeshExtraction.h"
#include "geometry/ShapeBlocks.h"
#include "geometry/TriangleSet.h"
#include "geometry/TriangleSetText.h"
#include "plugin/HostHelpers.h"

#include <vector>

namespace vqm
{

ShapesExporter::ShapesExporter(bool exportNormals, bool exportColors, bool exportUvs, bool exportSkinWeights,
                               bool exportNurbsCurves, bool binaryFiles, bool verbose, bool floatEpsilon)
    : m_exportNormals(exportNormals), m_exportColors(exportColors), m_exportUvs(exportUvs),
      m_exportSkinWeights(exportSkinWeights), m_exportNurbsCurves(exportNurbsCurves), m_verbose(verbose),
      m_floatEpsilon(floatEpsilon), m_binaryFiles(binaryFiles), m_unitScale(1.0 / MDistance::uiToInternal(1.0))
{
}

MStatus ShapesExporter::exportShapes(const ShapeMap& shapes, const MergeGroupList& mergeGroups,
                                     const AttachmentList& attachments, const BoundingVolumeMap& boundingVolumes,
                                     ShapeBlobList& blobs, std::ostream& out)
{
	if (!m_binaryFiles)
		out << "  <Shapes>\n";
	for (const auto& entry : shapes)
	{
		const ShapeRecord& record = entry.second;
		const MFn::Type type = record.object.apiType();
		if (type == HostType::kMesh)
		{
			exportMeshShape(record, boundingVolumes, blobs, out);
		}
		else if (type == HostType::kNurbsCurve && m_exportNurbsCurves)
		{
			if (!exportNurbsCurve(record, blobs, out))
				return MStatus::kFailure;
		}
	}
	// Attachment shapes need the split shape of their parent, and merged shapes the scene's merge
	// groups; both are exported by stages of their own, which this walk does not run.
	(void)mergeGroups;
	(void)attachments;
	if (!m_binaryFiles)
		out << "  </Shapes>\n";
	return MStatus::kSuccess;
}

void ShapesExporter::exportMeshShape(const ShapeRecord& record, const BoundingVolumeMap& boundingVolumes,
                                     ShapeBlobList& blobs, std::ostream& out)
{
	MFnMesh mesh(record.object);
	const std::string pathName = mesh.partialPathName().str();
	const std::string name = mesh.name().str();
	if (m_verbose)
		MGlobal::displayInfo(MString("IndexedTriangleSet: ") + mesh.name());

	MFnSkinCluster skinCluster;
	bool hasSkinCluster = false;
	MPlug envelope;
	double savedEnvelope = 1.0;
	if (m_exportSkinWeights && findSkinCluster(mesh, skinCluster))
	{
		hasSkinCluster = true;
		envelope = skinCluster.findPlug("en");
		envelope.getValue(savedEnvelope);
		envelope.setValue(0.0);
	}

	std::unique_ptr<IndexedTriangleSet> set =
	    extractIndexedTriangleSet(mesh, skinCluster, hasSkinCluster, m_exportNormals, m_exportUvs, m_exportColors,
	                              m_exportSkinWeights, m_verbose, m_unitScale);
	if (record.cpuMesh)
		set->setMeshUsage(set->meshUsage() | 0x100);
	emitTriangleSet(*set, record.shapeId, name, pathName, record.isSplit, &record.cookRequests, boundingVolumes,
	                blobs, out);
	set.reset();
	if (hasSkinCluster)
		envelope.setValue(savedEnvelope);
}

void ShapesExporter::emitTriangleSet(IndexedTriangleSet& set, uint32_t shapeId, const std::string& name,
                                     const std::string& boundingKey, bool isSplit,
                                     const std::set<CookRequest>* cookRequests,
                                     const BoundingVolumeMap& boundingVolumes, ShapeBlobList& blobs, std::ostream& out)
{
	set.optimize();

	float center[3] = {0.0f, 0.0f, 0.0f};
	float radius = 0.0f;
	auto volume = boundingVolumes.find(boundingKey);
	if (volume != boundingVolumes.end())
	{
		MFnMesh volumeMesh(volume->second.mesh);
		MFnSkinCluster noSkin;
		std::unique_ptr<IndexedTriangleSet> volumeSet =
		    extractIndexedTriangleSet(volumeMesh, noSkin, false, m_exportNormals, m_exportUvs, m_exportColors,
		                              m_exportSkinWeights, m_verbose, m_unitScale);
		std::unique_ptr<BoundingSphere> sphere = volumeSet->computeBoundingSphere();
		sphere->transform(volume->second.matrix);
		std::copy(sphere->center, sphere->center + 3, center);
		radius = sphere->radius;
	}
	else
	{
		std::unique_ptr<BoundingSphere> sphere = set.computeBoundingSphere();
		std::copy(sphere->center, sphere->center + 3, center);
		radius = sphere->radius;
	}

	// A split shape is written as an ordinary shape: its convex pieces are not built here.
	(void)isSplit;
	if (!m_binaryFiles)
	{
		writeTriangleSetText(set, name, shapeId, center, radius, out);
		return;
	}
	std::vector<bool> requestDynamics;
	if (cookRequests)
		for (const CookRequest& request : *cookRequests)
			requestDynamics.push_back(request.dynamic);
	CookedPhysicsList cooked;
	ShapeBlob blob;
	blob.type = ShapeBlobShape;
	blob.size = shapeBlockSize(name, set, cookRequests ? &requestDynamics : nullptr, m_cooking, cooked);
	blob.data.reset(new uint8_t[blob.size]());
	writeShapeBlock(name, shapeId, center, radius, set, cooked, blob.data.get());
	blobs.push_back(std::move(blob));
}

} // namespace vqm
