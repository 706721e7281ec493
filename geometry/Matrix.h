// Operations on affine float matrices: 16 x f32, columns are the axis images, m[12..14] the translation.
#pragma once

namespace vqm
{

// out = a applied after b. out may be a or b.
void multiplyMatrices(float out[16], const float a[16], const float b[16]);

// False, with out untouched, if |determinant| of the 3 x 3 part is not above 1e-36. out may be m.
bool invertMatrix(float out[16], const float m[16]);

// Lengths of the three axis images; lengths within 0.00001 of 1 become exactly 1.
void extractScale(const float m[16], float scaleOut[3]);

// Rotation angles x, y, z in radians; scale (may be null) is divided out of the axes first.
void extractRotation(const float m[16], float rotationOut[3], const float* scale);

} // namespace vqm
