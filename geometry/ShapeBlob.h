// A binary shape record bound for the .shapes side file: a type and a block the blob owns.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace vqm
{

enum ShapeBlobType : uint32_t
{
	ShapeBlobShape = 1,
	ShapeBlobNurbsCurve = 2,
	ShapeBlobSplitShape = 4,
	ShapeBlobShapeWithAttachments = 5,
};

struct ShapeBlob
{
	uint32_t type = 0;
	std::unique_ptr<uint8_t[]> data;
	uint32_t size = 0;
};

using ShapeBlobList = std::vector<ShapeBlob>;

} // namespace vqm
