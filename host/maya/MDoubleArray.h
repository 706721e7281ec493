#pragma once
#include <maya/MArrayBase.h>
class MDoubleArray : public MArrayBase<double> { public: using MArrayBase::MArrayBase; };
