#include "geometry/Matrix.h"

#include <cmath>
#include <cstring>

namespace vqm
{

void multiplyMatrices(float out[16], const float a[16], const float b[16])
{
	float result[16];
	for (int column = 0; column < 4; ++column)
	{
		const float* bc = b + 4 * column;
		for (int row = 0; row < 3; ++row)
			result[4 * column + row] = a[row] * bc[0] + a[4 + row] * bc[1] + a[8 + row] * bc[2];
		result[4 * column + 3] = 0.0f;
	}
	for (int row = 0; row < 3; ++row)
		result[12 + row] += a[12 + row];
	result[15] = 1.0f;
	memcpy(out, result, sizeof(result));
}

bool invertMatrix(float out[16], const float m[16])
{
	// cofactors of the 3 x 3 part, already transposed into the inverse's layout
	float inverse[16];
	inverse[0] = m[5] * m[10] - m[6] * m[9];
	inverse[1] = m[2] * m[9] - m[1] * m[10];
	inverse[2] = m[1] * m[6] - m[2] * m[5];
	inverse[4] = m[6] * m[8] - m[4] * m[10];
	inverse[5] = m[0] * m[10] - m[2] * m[8];
	inverse[6] = m[2] * m[4] - m[0] * m[6];
	inverse[8] = m[4] * m[9] - m[5] * m[8];
	inverse[9] = m[1] * m[8] - m[0] * m[9];
	inverse[10] = m[0] * m[5] - m[1] * m[4];

	const float determinant = m[0] * inverse[0] + m[4] * inverse[1] + m[8] * inverse[2];
	if (!(fabsf(determinant) > 1e-36f))
		return false;

	const float scale = 1.0f / determinant;
	for (int column = 0; column < 3; ++column)
		for (int row = 0; row < 3; ++row)
			inverse[4 * column + row] *= scale;

	for (int row = 0; row < 3; ++row)
		inverse[12 + row] = -(inverse[row] * m[12] + inverse[4 + row] * m[13] + inverse[8 + row] * m[14]);
	inverse[3] = inverse[7] = inverse[11] = 0.0f;
	inverse[15] = 1.0f;

	memcpy(out, inverse, sizeof(inverse));
	return true;
}

void extractScale(const float m[16], float scaleOut[3])
{
	for (int axis = 0; axis < 3; ++axis)
	{
		const float* a = m + 4 * axis;
		float length = sqrtf(a[0] * a[0] + a[1] * a[1] + a[2] * a[2]);
		// rounding noise of a pure rotation must not read as a scale
		if (length > 0.99999f && length < 1.00001f)
			length = 1.0f;
		scaleOut[axis] = length;
	}
}

void extractRotation(const float m[16], float rotationOut[3], const float* scale)
{
	float inverseScale[3] = {1.0f, 1.0f, 1.0f};
	if (scale)
		for (int axis = 0; axis < 3; ++axis)
			if (scale[axis] != 0.0f)
				inverseScale[axis] = 1.0f / scale[axis];

	const float isx = inverseScale[0], isy = inverseScale[1], isz = inverseScale[2];
	const float s = -isx * m[2];
	const float q = 1.0f - s * s;

	if (q > 1e-6f)
	{
		const float c = sqrtf(q);
		rotationOut[0] = atan2f(isy * m[6] / c, isz * m[10] / c);
		rotationOut[1] = atan2f(s, c);
		rotationOut[2] = atan2f(isx * m[1] / c, isx * m[0] / c);
	}
	else
	{
		// gimbal lock: x and z turn about the same axis, x takes it all
		rotationOut[0] = atan2f(-isz * m[9], isy * m[5]);
		rotationOut[1] = atan2f(s, 0.0f);
		rotationOut[2] = 0.0f;
	}
}

} // namespace vqm
