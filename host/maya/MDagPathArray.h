#pragma once
#include <maya/MArrayBase.h>
#include <maya/MDagPath.h>
class MDagPathArray : public MArrayBase<MDagPath> { public: using MArrayBase::MArrayBase; };
