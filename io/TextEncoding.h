// UTF-8 text measured the way the platform path buffers count it.
#pragma once

#include <cstddef>
#include <string>

namespace vqm
{

// Number of UTF-16 units that the UTF-8 text converts to. A malformed byte counts as one unit,
// since a lenient conversion turns it into one replacement character.
size_t utf16Length(const std::string& text);

// True when the text and its terminator fit a path buffer of bufferUnits UTF-16 units.
// Paths that do not fit fail before any lookup, the way an overflowing conversion would.
bool fitsPathBuffer(const std::string& text, size_t bufferUnits);

// Path buffers of the file layer, in UTF-16 units including the terminator.
const size_t kPathBufferUnits = 521;
const size_t kShortPathBufferUnits = 261;
const size_t kSearchPatternBufferUnits = 520;

} // namespace vqm
