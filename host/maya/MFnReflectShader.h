#pragma once
#include <maya/MFnLambertShader.h>
