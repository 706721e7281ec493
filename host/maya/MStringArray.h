#pragma once
#include <maya/MArrayBase.h>
#include <maya/MString.h>
class MStringArray : public MArrayBase<MString> { public: using MArrayBase::MArrayBase; };
