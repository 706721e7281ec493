#include "geometry/PhysicsCooking.h"

namespace vqm
{

void cookPhysics(const IndexedTriangleSet& set, const std::vector<bool>* requestDynamics,
                 PhysicsCookingInterface* cooking, CookedPhysicsList& cooked)
{
	if (!requestDynamics || !cooking)
		return;
	const float unitScale[3] = {1.0f, 1.0f, 1.0f};
	bool staticDone = false, dynamicDone = false;
	for (bool dynamic : *requestDynamics)
	{
		if (staticDone && dynamicDone)
			break;
		if (dynamic ? dynamicDone : staticDone)
			continue;
		CookedPhysicsItem item;
		const bool ok = dynamic ? cooking->cookDynamicMesh(set, 0, unitScale, item.data, item.size)
		                        : cooking->cookStaticMesh(set, 0, unitScale, item.data, item.size);
		if (!ok)
			continue;
		(dynamic ? dynamicDone : staticDone) = true;
		item.kind = dynamic ? PhysicsDynamicMesh : PhysicsStaticMesh;
		cooked.push_back(std::move(item));
	}
}

} // namespace vqm
