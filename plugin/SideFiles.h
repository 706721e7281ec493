// The binary side files of an export: shapes go to "<output>.shapes" (scrambled) and animation
// to "<output>.anim", and the document holds a stub element that names each file.
#pragma once

#include "geometry/ShapeBlob.h"

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>

namespace vqm {

// Registers a loader rooted at the output's directory, through which the side files are opened.
// It stays registered for the rest of the process.
void prepareSideFiles(const std::string& outputPath);

// The key index of a .shapes file: from the environment variable VQM_SHAPES_KEY_INDEX (1 to 255)
// when it is set, for builds that need identical bytes; else one that varies from run to run.
uint32_t shapesKeyIndex();

// Writes the Shapes stub and the .shapes file, freeing each blob's body once it is written.
// False when the file cannot be opened; the document then ends inside the stub's opening tag.
bool writeShapesStub(std::ostream& document, const std::string& outputPath, ShapeBlobList& blobs);

// Writes the Animation stub and the .anim file (version word, then the blob). A file that
// cannot be opened is no failure: the stub stays without data behind it.
void writeAnimationStub(std::ostream& document, const std::string& outputPath, std::unique_ptr<uint8_t[]>& blob,
                        uint32_t size);

}  // namespace vqm
