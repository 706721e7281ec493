// The IndexedTriangleSet element of the Shapes section, at four blanks of indentation.
#pragma once

#include "geometry/AttachmentPlacement.h"

#include <cstdint>
#include <ostream>
#include <string>

namespace vqm
{

class IndexedTriangleSet;

// The whole element of a shape; a radius of 0 leaves out bvCenter and bvRadius.
void writeTriangleSetText(const IndexedTriangleSet& set, const std::string& name, uint32_t shapeId,
                          const float bvCenter[3], float bvRadius, std::ostream& out);

// The element of a shape that holds attachments: isAttachment, no bounds of its own, and an
// Attachments child with one entry per placement.
void writeAttachmentShapeText(const IndexedTriangleSet& set, const std::string& name, uint32_t shapeId,
                              const AttachmentFace* faces, const AttachmentPlacement* placements,
                              uint32_t numAttachments, std::ostream& out);

} // namespace vqm
