#pragma once
#include <maya/MArrayBase.h>
#include <maya/MColor.h>
class MColorArray : public MArrayBase<MColor> { public: using MArrayBase::MArrayBase; };
