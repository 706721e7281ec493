#pragma once
#include <maya/MFnAttribute.h>
