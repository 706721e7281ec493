#include "geometry/ShapeBlocks.h"

#include "geometry/Matrix.h"
#include "geometry/ShapeBlob.h"
#include "geometry/TriangleSet.h"

#include <cstring>

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "the arrays of a block are copied as they lie in memory, which must be little-endian"
#endif

namespace vqm
{

namespace
{

uint8_t* putU32(uint8_t* p, uint32_t value)
{
	p[0] = uint8_t(value);
	p[1] = uint8_t(value >> 8);
	p[2] = uint8_t(value >> 16);
	p[3] = uint8_t(value >> 24);
	return p + 4;
}

uint8_t* putU16(uint8_t* p, uint16_t value)
{
	p[0] = uint8_t(value);
	p[1] = uint8_t(value >> 8);
	return p + 2;
}

uint8_t* putBytes(uint8_t* p, const void* source, size_t size)
{
	if (size > 0)
		memcpy(p, source, size);
	return p + size;
}

uint8_t* putFloats(uint8_t* p, const float* values, size_t count)
{
	return putBytes(p, values, count * sizeof(float));
}

uint32_t roundUp4(uint32_t n)
{
	return (n + 3u) & ~3u;
}

const uint32_t kAttachmentRecordSize = 52;

} // namespace

uint32_t nameFieldSize(const std::string& name)
{
	return 4 + roundUp4(uint32_t(name.size()));
}

uint8_t* writeNameField(const std::string& name, uint8_t* destination)
{
	const uint32_t length = uint32_t(name.size());
	uint8_t* p = putU32(destination, length);
	p = putBytes(p, name.data(), length);
	for (uint32_t i = length; i < roundUp4(length); ++i)
		*p++ = 0;
	return p;
}

uint32_t triangleSetBodySize(const IndexedTriangleSet& set)
{
	const uint32_t flags = set.vertexFlags();
	const uint32_t n = set.numVertices();
	const uint32_t numIndices = set.numIndices();
	uint32_t size = 16 + 16 * set.numSubsets();
	if (set.uses16BitIndices())
		size += 2 * numIndices + ((numIndices & 1) ? 2 : 0);
	else
		size += 4 * numIndices;
	size += 12 * n;
	if (flags & HasNormal)
		size += 12 * n;
	if (flags & HasTangent)
		size += 16 * n;
	for (uint32_t s = 0; s < 4; ++s)
		if (flags & uvFlag(s))
			size += 8 * n;
	if (flags & HasColor)
		size += 16 * n;
	if (flags & HasBlendWeights)
		size += (flags & SingleBlendWeights) ? n : 16 * n + 4 * n;
	if (flags & HasGeneric)
		size += 4 * n;
	return size;
}

uint8_t* writeTriangleSetBody(const IndexedTriangleSet& set, uint8_t* destination)
{
	const uint32_t flags = set.vertexFlags();
	const uint32_t n = set.numVertices();
	const uint32_t numIndices = set.numIndices();
	uint8_t* p = putU32(destination, numIndices);
	p = putU32(p, set.numSubsets());
	p = putU32(p, n);
	p = putU32(p, (flags & 0xFFFFu) | (set.meshUsage() << 16));
	for (uint32_t i = 0; i < set.numSubsets(); ++i)
	{
		const Subset empty;
		const Subset* subset = set.getSubset(i) ? set.getSubset(i) : &empty;
		p = putU32(p, subset->firstVertex);
		p = putU32(p, subset->numVertices);
		p = putU32(p, subset->firstIndex);
		p = putU32(p, subset->numIndices);
	}
	if (set.uses16BitIndices())
	{
		p = putBytes(p, set.indices16(), 2 * size_t(numIndices));
		if (numIndices & 1)
			p = putU16(p, 0);
	}
	else
	{
		p = putBytes(p, set.indices32(), 4 * size_t(numIndices));
	}
	p = putFloats(p, set.positions(), 3 * size_t(n));
	if (flags & HasNormal)
		p = putFloats(p, set.normals(), 3 * size_t(n));
	if (flags & HasTangent)
		p = putFloats(p, set.tangents(), 4 * size_t(n));
	for (uint32_t s = 0; s < 4; ++s)
		if (flags & uvFlag(s))
			p = putFloats(p, set.uvs(s), 2 * size_t(n));
	if (flags & HasColor)
		p = putFloats(p, set.colors(), 4 * size_t(n));
	if (flags & HasBlendWeights)
	{
		if (!(flags & SingleBlendWeights))
			p = putFloats(p, set.blendWeights(), 4 * size_t(n));
		p = putBytes(p, set.blendIndices(), size_t(set.blendsPerVertex()) * n);
	}
	if (flags & HasGeneric)
		p = putFloats(p, set.generics(), n);
	return p;
}

uint32_t shapeBlockSize(const std::string& name, const IndexedTriangleSet& set,
                        const std::vector<bool>* requestDynamics, PhysicsCookingInterface* cooking,
                        CookedPhysicsList& cooked)
{
	cookPhysics(set, requestDynamics, cooking, cooked);
	// name length word, shapeId, centre, radius and the physics block count: 28 bytes
	uint32_t size = roundUp4(uint32_t(name.size())) + triangleSetBodySize(set) + 28;
	for (const CookedPhysicsItem& item : cooked)
		size += 8 + item.size;
	return size;
}

uint8_t* writeShapeBlock(const std::string& name, uint32_t shapeId, const float bvCenter[3], float bvRadius,
                         const IndexedTriangleSet& set, CookedPhysicsList& cooked, uint8_t* destination)
{
	uint8_t* p = writeNameField(name, destination);
	p = putU32(p, shapeId);
	p = putFloats(p, bvCenter, 3);
	p = putFloats(p, &bvRadius, 1);
	p = writeTriangleSetBody(set, p);
	p = putU32(p, uint32_t(cooked.size()));
	for (const CookedPhysicsItem& item : cooked)
	{
		p = putU32(p, item.kind);
		p = putU32(p, item.size);
		p = putBytes(p, item.data.get(), item.size);
	}
	cooked.clear();
	return p;
}

uint32_t writeAttachmentsBlock(const std::string& name, uint32_t shapeId, const AttachmentFace* faces,
                               const IndexedTriangleSet& set, const AttachmentPlacement* placements,
                               uint32_t numAttachments, std::unique_ptr<uint8_t[]>& dataOut, uint32_t& sizeOut)
{
	// count and faces, filled to a multiple of 4
	const uint32_t facesSize = roundUp4(2 + 2 * numAttachments);
	const uint32_t size =
	    nameFieldSize(name) + 4 + triangleSetBodySize(set) + facesSize + kAttachmentRecordSize * numAttachments;
	std::unique_ptr<uint8_t[]> data(new uint8_t[size]());
	uint8_t* p = writeNameField(name, data.get());
	p = putU32(p, shapeId);
	p = writeTriangleSetBody(set, p);
	uint8_t* facesStart = p;
	p = putU16(p, uint16_t(numAttachments));
	for (uint32_t i = 0; i < numAttachments; ++i)
		p = putU16(p, faces[i].faceIndex);
	p = facesStart + facesSize;
	for (uint32_t i = 0; i < numAttachments; ++i)
	{
		const AttachmentPlacement& placement = placements[i];
		float scale[3], rotation[3];
		extractScale(placement.matrix, scale);
		extractRotation(placement.matrix, rotation, scale);
		p = putFloats(p, rotation, 3);
		p = putFloats(p, scale, 3);
		p = putFloats(p, placement.matrix + 12, 3);
		p = putFloats(p, placement.bvCenter, 3);
		p = putFloats(p, &placement.bvRadius, 1);
	}
	dataOut = std::move(data);
	sizeOut = size;
	return ShapeBlobShapeWithAttachments;
}

} // namespace vqm
