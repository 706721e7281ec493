#pragma once
#include <maya/MArrayBase.h>
#include <maya/MPlug.h>
class MPlugArray : public MArrayBase<MPlug> { public: using MArrayBase::MArrayBase; };
