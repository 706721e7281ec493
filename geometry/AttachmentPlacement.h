// Where the attachments folded into one shape sit: per attachment the face of the parent it hangs
// on, its local matrix and its bounds.
#pragma once

#include <cstdint>

namespace vqm
{

struct AttachmentFace
{
	uint16_t faceIndex = 0;
	uint16_t attachmentIndex = 0;
};

struct AttachmentPlacement
{
	float matrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}; // translation in exported units
	float bvCenter[3] = {0.0f, 0.0f, 0.0f}; // in the space of the folded shape
	float bvRadius = 0.0f;
};

} // namespace vqm
