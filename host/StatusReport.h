// How the host's calls hand back a status: through the optional pointer the caller passed.
#pragma once

#include <maya/MStatus.h>

namespace vqmhost {

inline MStatus report(MStatus* status, MStatus::MStatusCode code)
{
    if (status) *status = code;
    return code;
}

}  // namespace vqmhost
