// The flag word of a triangle set: which per-vertex attribute arrays exist.
#pragma once

#include <cstdint>

namespace vqm
{

enum VertexFlag : uint32_t
{
	HasNormal = 0x1,           // normals, 3 x f32
	HasUv0 = 0x2,              // uvs[0], 2 x f32
	HasUv1 = 0x4,              // uvs[1]
	HasUv2 = 0x8,              // uvs[2]
	HasUv3 = 0x10,             // uvs[3]
	HasColor = 0x20,           // colors, 4 x f32 (r g b a)
	HasBlendWeights = 0x40,    // blendWeights 4 x f32 and blendIndices 4 x u8
	HasTangent = 0x80,         // tangents, 4 x f32 (x y z, handedness w)
	SingleBlendWeights = 0x100, // with HasBlendWeights: no weights, blendIndices 1 x u8
	HasGeneric = 0x200,        // generics, 1 x f32
};

// The bit of UV set i (0 to 3).
inline uint32_t uvFlag(uint32_t set)
{
	return uint32_t(HasUv0) << set;
}

} // namespace vqm
