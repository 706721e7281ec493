// The containers of one export run. The command owns them; the stages fill and read them.
#pragma once

#include <maya/MObject.h>
#include <maya/MQuaternion.h>

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <vector>

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

// What later stages need to know of an exported transform; keyed by its partial path name.
struct NodeRecord {
    bool hasRotateOrientation = false;
    MQuaternion rotateOrientation;
    bool hasJointOrient = false;
    MQuaternion jointOrient;
    uint32_t nodeId = 0;        // 0 until the element's tail is written
    int32_t rotationOrder = 1;  // MTransformationMatrix::RotationOrder: 1 is XYZ
};
using NodeMap = std::map<std::string, NodeRecord>;

// A physics mesh wanted for a shape.
struct CookRequest {
    int32_t x = 40, y = 40, z = 40;
    bool dynamic = false;
    bool operator<(const CookRequest& o) const
    {
        return std::tie(dynamic, x, y, z) < std::tie(o.dynamic, o.x, o.y, o.z);
    }
};

// An exported mesh or NURBS curve shape; keyed by the shape's partial path name.
struct ShapeRecord {
    MObject object;
    uint32_t shapeId = 0;
    std::set<CookRequest> cookRequests;
    bool isSplit = false;  // the key carries the suffix "*SplitShape*"
    bool cpuMesh = false;
};
using ShapeMap = std::map<std::string, ShapeRecord>;

// Meshes marked with one vQM_mergeGroup number, exported as one shape.
struct MergeGroupRecord {
    std::vector<MObject> meshes;
    std::vector<MObject> transforms;
    std::vector<std::vector<uint32_t>> memberMaterials;
    std::vector<std::vector<uint32_t>> memberMaterialIndices;
    uint32_t shapeId = 0;
    uint32_t groupId = 0;
    bool rootSeen = false;
    bool cpuMesh = false;
};
// Sorted by groupId, one record for each id.
using MergeGroupList = std::vector<std::unique_ptr<MergeGroupRecord>>;

// Meshes folded into one shape below a split mesh.
struct AttachmentRecord {
    std::vector<MObject> meshes;
    std::vector<MObject> transforms;
    MObject parentMesh;
    MObject parentTransform;
    uint32_t materialId = 0;
    uint32_t shapeId = 0;
};
using AttachmentList = std::vector<std::unique_ptr<AttachmentRecord>>;

// Meshes that stand for the bounds of another shape, keyed by their vQM_boundingVolume value.
struct BoundingVolumeSource {
    MObject transform;
    MObject mesh;
};
using BoundingVolumeSourceMap = std::map<std::string, BoundingVolumeSource>;

struct BoundingVolumeEntry {
    MObject mesh;
    float matrix[16];
};
using BoundingVolumeMap = std::map<std::string, BoundingVolumeEntry>;

}  // namespace vqm
