// Component lists handed out through MObject: element numbers of one kind of component.
#pragma once

#include <maya/MObject.h>

#include <vector>

namespace vqmhost {

struct SingleIndexedComponent : Data {
    MFn::Type kind = MFn::kMeshVertComponent;
    std::vector<int> elements;
    MFn::Type apiType() const override { return kind; }
};

}  // namespace vqmhost
