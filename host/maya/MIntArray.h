#pragma once
#include <maya/MArrayBase.h>
class MIntArray : public MArrayBase<int> { public: using MArrayBase::MArrayBase; };
