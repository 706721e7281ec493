#include "scene/LevelOfDetail.h"

#include "plugin/HostHelpers.h"

#include <cstdio>
#include <cstring>

namespace vqm {

void writeLevelOfDetail(const MFnDependencyNode& node, std::ostream& out)
{
    const MString name = node.name();
    if (std::strncmp(name.asChar(), "lod_", 4) == 0) {
        // The name carries the distance at which the node gives way; the switch lies halfway.
        float distance = 100.0f;
        if (std::sscanf(name.asChar() + 4, "%f", &distance) != 1) distance = 100.0f;
        out << " lodDistance=\"0 " << distance * 0.5f << '"';
        return;
    }
    bool enabled = true;
    readBool(node, "vQM_lod", enabled);
    if (!enabled) return;
    float lod1 = 0.0f, lod2 = 0.0f, lod3 = 0.0f;
    readFloat(node, "vQM_lod1", lod1);
    readFloat(node, "vQM_lod2", lod2);
    readFloat(node, "vQM_lod3", lod3);
    if (lod1 == 0.0f) return;
    out << " lodDistance=\"0 " << lod1;
    // A 0 ends the list.
    if (lod2 != 0.0f) {
        out << ' ' << lod2;
        if (lod3 != 0.0f) out << ' ' << lod3;
    }
    out << '"';
}

}  // namespace vqm
