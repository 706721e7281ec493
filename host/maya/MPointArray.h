#pragma once
#include <maya/MArrayBase.h>
#include <maya/MPoint.h>
class MPointArray : public MArrayBase<MPoint> { public: using MArrayBase::MArrayBase; };
