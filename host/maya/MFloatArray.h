#pragma once
#include <maya/MArrayBase.h>
class MFloatArray : public MArrayBase<float> { public: using MArrayBase::MArrayBase; };
