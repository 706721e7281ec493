// Names of the host's type numbers.
#pragma once

#include <maya/MFn.h>

namespace vqmhost {

const char* apiTypeName(MFn::Type type);

}  // namespace vqmhost
