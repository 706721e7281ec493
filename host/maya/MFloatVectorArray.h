#pragma once
#include <maya/MArrayBase.h>
#include <maya/MFloatVector.h>
class MFloatVectorArray : public MArrayBase<MFloatVector> { public: using MArrayBase::MArrayBase; };
