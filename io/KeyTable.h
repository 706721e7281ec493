// The built-in cipher states that scrambled streams are keyed with, picked by key index.
#pragma once

#include <cstdint>

namespace vqm
{

const uint32_t kKeyTableSize = 256;

extern const uint32_t kKeyTable[kKeyTableSize][16];

} // namespace vqm
