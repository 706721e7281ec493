#pragma once
#include <maya/MArrayBase.h>
#include <maya/MObject.h>
class MObjectArray : public MArrayBase<MObject> { public: using MArrayBase::MArrayBase; };
