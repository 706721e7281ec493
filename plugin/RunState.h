// The containers of one export run. The command owns them; the stages fill and read them.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace vqm {

// Ordered maps from a name to an id. A new key gets the entry count before the insertion plus 1;
// an existing key keeps its id.
using IdMap = std::map<std::string, uint32_t>;
using FileMap = IdMap;
using CustomFileMap = IdMap;
using MaterialMap = IdMap;
using DynamicMap = IdMap;

inline uint32_t insertId(IdMap& map, const std::string& key)
{
    auto found = map.find(key);
    if (found != map.end()) return found->second;
    uint32_t id = uint32_t(map.size()) + 1;
    map.emplace(key, id);
    return id;
}

}  // namespace vqm
