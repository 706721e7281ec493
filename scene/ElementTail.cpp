// The end of every element's attribute list: object mask, clip distance and the node id.
#include "scene/SceneExporter.h"

#include "plugin/HostHelpers.h"

namespace vqm {

void SceneExporter::writeElementTail(const MFnTransform& transform, NodeMap& nodeMap, std::ostream& out)
{
    int objectMask = 255;
    if (readInt(transform, "vQM_objectMask", objectMask) && objectMask != 255)
        out << " objectMask=\"" << objectMask << '"';
    float clipDistance = 0.0f;
    if (readFloat(transform, "vQM_clipDistance", clipDistance) && clipDistance != 0.0f)
        out << " clipDistance=\"" << clipDistance << '"';

    // Elements whose common attributes came from another node (a Dynamic's emitter) have no
    // entry yet; an instance met again takes the later id.
    auto entry = nodeMap.find(transform.partialPathName().str());
    if (entry != nodeMap.end()) {
        entry->second.nodeId = nextNodeId_;
    } else {
        NodeRecord record;
        record.nodeId = nextNodeId_;
        nodeMap.emplace(transform.partialPathName().str(), record);
    }
    out << " nodeId=\"" << nextNodeId_ << '"';
    ++nextNodeId_;
}

}  // namespace vqm
