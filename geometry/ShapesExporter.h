// The Shapes stage: turns the shapes the Scene stage collected into IndexedTriangleSet elements
// (or, with binary files, into blobs for the .shapes file), and NURBS curves into their element
// or blob. Ids come from the Scene stage; the stage hands out none.
#pragma once

#include <maya/MStatus.h>

#include "geometry/ShapeBlob.h"
#include "plugin/RunState.h"

#include <cstdint>
#include <ostream>
#include <set>
#include <string>

namespace vqm
{

class IndexedTriangleSet;
class PhysicsCookingInterface;

class ShapesExporter
{
public:
	ShapesExporter(bool exportNormals, bool exportColors, bool exportUvs, bool exportSkinWeights,
	               bool exportNurbsCurves, bool binaryFiles, bool verbose, bool floatEpsilon);

	// The cooking of physics meshes for binary shapes; none by default, and then shapes carry
	// no physics blocks.
	void setCookingInterface(PhysicsCookingInterface* cooking) { m_cooking = cooking; }

	// Shapes in key order. Failure stops the walk without closing the section.
	MStatus exportShapes(const ShapeMap& shapes, const MergeGroupList& mergeGroups, const AttachmentList& attachments,
	                     const BoundingVolumeMap& boundingVolumes, ShapeBlobList& blobs, std::ostream& out);

	// One mesh; a skin cluster that feeds it is held at envelope 0 meanwhile.
	void exportMeshShape(const ShapeRecord& record, const BoundingVolumeMap& boundingVolumes, ShapeBlobList& blobs,
	                     std::ostream& out);

	// Optimises the set, finds its bounds and writes it as text or as a blob of type 1.
	void emitTriangleSet(IndexedTriangleSet& set, uint32_t shapeId, const std::string& name,
	                     const std::string& boundingKey, bool isSplit, const std::set<CookRequest>* cookRequests,
	                     const BoundingVolumeMap& boundingVolumes, ShapeBlobList& blobs, std::ostream& out);

	// One NURBS curve; failure only when its control points cannot be read.
	MStatus exportNurbsCurve(const ShapeRecord& record, ShapeBlobList& blobs, std::ostream& out);

	double unitScale() const { return m_unitScale; }

private:
	bool m_exportNormals;
	bool m_exportColors;
	bool m_exportUvs;
	bool m_exportSkinWeights;
	bool m_exportNurbsCurves;
	bool m_verbose;
	bool m_floatEpsilon;
	bool m_binaryFiles;
	double m_unitScale;
	PhysicsCookingInterface* m_cooking = nullptr;
};

} // namespace vqm
