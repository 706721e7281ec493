// The binary forms of shapes for the .shapes side file: the triangle set body they share, the
// block of a shape (type 1) and of a shape with attachments (type 5). Little-endian throughout;
// names are length-prefixed and filled with zero bytes to a multiple of 4.
#pragma once

#include "geometry/AttachmentPlacement.h"
#include "geometry/PhysicsCooking.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vqm
{

class IndexedTriangleSet;

// Bytes of the name field: the length word and the name filled to a multiple of 4.
uint32_t nameFieldSize(const std::string& name);
uint8_t* writeNameField(const std::string& name, uint8_t* destination);

uint32_t triangleSetBodySize(const IndexedTriangleSet& set);
// Fills the body at destination and gives the position behind it.
uint8_t* writeTriangleSetBody(const IndexedTriangleSet& set, uint8_t* destination);

// Size of a block of type 1. Cooks the physics meshes the requests ask for into cooked, which
// writeShapeBlock then writes and empties.
uint32_t shapeBlockSize(const std::string& name, const IndexedTriangleSet& set,
                        const std::vector<bool>* requestDynamics, PhysicsCookingInterface* cooking,
                        CookedPhysicsList& cooked);
// Fills a cleared block of shapeBlockSize bytes; gives the position behind it.
uint8_t* writeShapeBlock(const std::string& name, uint32_t shapeId, const float bvCenter[3], float bvRadius,
                         const IndexedTriangleSet& set, CookedPhysicsList& cooked, uint8_t* destination);

// Allocates, clears and fills a block of type 5; the result is its type.
uint32_t writeAttachmentsBlock(const std::string& name, uint32_t shapeId, const AttachmentFace* faces,
                               const IndexedTriangleSet& set, const AttachmentPlacement* placements,
                               uint32_t numAttachments, std::unique_ptr<uint8_t[]>& dataOut, uint32_t& sizeOut);

} // namespace vqm
