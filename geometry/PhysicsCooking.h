// Physics meshes cooked ahead of run time for the binary form of a shape. The cooking itself sits
// behind an interface; without one, shapes carry no physics data.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace vqm
{

class IndexedTriangleSet;

enum PhysicsBlockKind : uint32_t
{
	PhysicsStaticMesh = 1,
	PhysicsDynamicMesh = 2,
};

struct CookedPhysicsItem
{
	uint32_t kind = 0;
	std::unique_ptr<uint8_t[]> data;
	uint32_t size = 0;
};
using CookedPhysicsList = std::vector<CookedPhysicsItem>;

class PhysicsCookingInterface
{
public:
	virtual ~PhysicsCookingInterface() = default;
	// Each gives true with the cooked bytes, or false and leaves data and size alone.
	virtual bool cookStaticMesh(const IndexedTriangleSet& set, uint32_t options, const float scale[3],
	                            std::unique_ptr<uint8_t[]>& data, uint32_t& size) = 0;
	virtual bool cookDynamicMesh(const IndexedTriangleSet& set, uint32_t options, const float scale[3],
	                             std::unique_ptr<uint8_t[]>& data, uint32_t& size) = 0;
};

// Walks the requests in order (true: for a moving body) and cooks at most one static and one
// dynamic mesh, in the order their first successful request comes. A failed cooking leaves no
// trace; the next request of its kind tries again. Nothing happens without requests or cooking.
void cookPhysics(const IndexedTriangleSet& set, const std::vector<bool>* requestDynamics,
                 PhysicsCookingInterface* cooking, CookedPhysicsList& cooked);

} // namespace vqm
