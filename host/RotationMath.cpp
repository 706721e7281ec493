// Vectors, matrices, quaternions and Euler rotations with the host's conventions: row vectors,
// p * A * B applies A first, angles in radians.
#include <maya/MEulerRotation.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MQuaternion.h>
#include <maya/MVector.h>

#include <cmath>

const MVector MVector::zero(0.0, 0.0, 0.0);
const MVector MVector::one(1.0, 1.0, 1.0);
const MVector MVector::xAxis(1.0, 0.0, 0.0);
const MVector MVector::yAxis(0.0, 1.0, 0.0);
const MVector MVector::zAxis(0.0, 0.0, 1.0);

MVector MVector::operator*(const MMatrix& m) const
{
    return MVector(x * m(0, 0) + y * m(1, 0) + z * m(2, 0), x * m(0, 1) + y * m(1, 1) + z * m(2, 1),
                   x * m(0, 2) + y * m(1, 2) + z * m(2, 2));
}

const MPoint MPoint::origin;

MPoint MPoint::operator*(const MMatrix& m) const
{
    MPoint result;
    for (unsigned c = 0; c < 4; ++c) result[c] = x * m(0, c) + y * m(1, c) + z * m(2, c) + w * m(3, c);
    return result;
}

// ---- MMatrix

const MMatrix MMatrix::identity;

MMatrix::MMatrix()
{
    setToIdentity();
}

MMatrix::MMatrix(const double m[4][4])
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) matrix[r][c] = m[r][c];
}

MMatrix& MMatrix::setToIdentity()
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) matrix[r][c] = r == c ? 1.0 : 0.0;
    return *this;
}

MMatrix MMatrix::operator*(const MMatrix& right) const
{
    MMatrix result;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) {
            double sum = 0.0;
            for (int k = 0; k < 4; ++k) sum += matrix[r][k] * right.matrix[k][c];
            result.matrix[r][c] = sum;
        }
    return result;
}

MMatrix& MMatrix::operator*=(const MMatrix& right)
{
    *this = *this * right;
    return *this;
}

bool MMatrix::operator==(const MMatrix& other) const
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            if (matrix[r][c] != other.matrix[r][c]) return false;
    return true;
}

MMatrix MMatrix::transpose() const
{
    MMatrix result;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) result.matrix[r][c] = matrix[c][r];
    return result;
}

MMatrix MMatrix::inverse() const
{
    double a[4][8];
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) {
            a[r][c] = matrix[r][c];
            a[r][c + 4] = r == c ? 1.0 : 0.0;
        }
    for (int col = 0; col < 4; ++col) {
        int pivot = col;
        for (int r = col + 1; r < 4; ++r)
            if (std::fabs(a[r][col]) > std::fabs(a[pivot][col])) pivot = r;
        if (std::fabs(a[pivot][col]) < 1.0e-300) return MMatrix();
        if (pivot != col)
            for (int c = 0; c < 8; ++c) std::swap(a[pivot][c], a[col][c]);
        double scale = 1.0 / a[col][col];
        for (int c = 0; c < 8; ++c) a[col][c] *= scale;
        for (int r = 0; r < 4; ++r) {
            if (r == col || a[r][col] == 0.0) continue;
            double f = a[r][col];
            for (int c = 0; c < 8; ++c) a[r][c] -= f * a[col][c];
        }
    }
    MMatrix result;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) result.matrix[r][c] = a[r][c + 4];
    return result;
}

double MMatrix::det3x3() const
{
    const auto& m = matrix;
    return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) - m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
           m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

double MMatrix::det4x4() const
{
    double result = 0.0;
    for (int c = 0; c < 4; ++c) {
        double minor[3][3];
        for (int r = 1; r < 4; ++r)
            for (int k = 0, mc = 0; k < 4; ++k)
                if (k != c) minor[r - 1][mc++] = matrix[r][k];
        double d = minor[0][0] * (minor[1][1] * minor[2][2] - minor[1][2] * minor[2][1]) -
                   minor[0][1] * (minor[1][0] * minor[2][2] - minor[1][2] * minor[2][0]) +
                   minor[0][2] * (minor[1][0] * minor[2][1] - minor[1][1] * minor[2][0]);
        result += (c % 2 ? -1.0 : 1.0) * matrix[0][c] * d;
    }
    return result;
}

bool MMatrix::isEquivalent(const MMatrix& other, double tolerance) const
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            if (std::fabs(matrix[r][c] - other.matrix[r][c]) > tolerance) return false;
    return true;
}

void MMatrix::get(double m[4][4]) const
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) m[r][c] = matrix[r][c];
}

// ---- MEulerRotation

namespace {

// The axes of each order, in the order they apply.
const int kAxes[6][3] = {{0, 1, 2}, {1, 2, 0}, {2, 0, 1}, {0, 2, 1}, {1, 0, 2}, {2, 1, 0}};
// Orders whose axes are an odd permutation of XYZ.
bool isOddOrder(MEulerRotation::RotationOrder order)
{
    return order == MEulerRotation::kXZY || order == MEulerRotation::kYXZ || order == MEulerRotation::kZYX;
}

MMatrix axisRotation(int axis, double angle)
{
    MMatrix m;
    double c = std::cos(angle), s = std::sin(angle);
    int a = (axis + 1) % 3, b = (axis + 2) % 3;
    m(a, a) = c;
    m(a, b) = s;
    m(b, a) = -s;
    m(b, b) = c;
    return m;
}

MQuaternion axisQuaternion(int axis, double angle)
{
    MQuaternion q(0.0, 0.0, 0.0, std::cos(angle * 0.5));
    q[unsigned(axis)] = std::sin(angle * 0.5);
    return q;
}

}  // namespace

const MEulerRotation MEulerRotation::identity;

MEulerRotation::MEulerRotation(const MVector& angles, RotationOrder ord)
    : x(angles.x), y(angles.y), z(angles.z), order(ord)
{
}

MEulerRotation& MEulerRotation::setValue(double xx, double yy, double zz, RotationOrder ord)
{
    x = xx;
    y = yy;
    z = zz;
    order = ord;
    return *this;
}

MVector MEulerRotation::asVector() const
{
    return MVector(x, y, z);
}

MMatrix MEulerRotation::asMatrix() const
{
    const int* axes = kAxes[order];
    return axisRotation(axes[0], (*this)[unsigned(axes[0])]) * axisRotation(axes[1], (*this)[unsigned(axes[1])]) *
           axisRotation(axes[2], (*this)[unsigned(axes[2])]);
}

MQuaternion MEulerRotation::asQuaternion() const
{
    const int* axes = kAxes[order];
    return axisQuaternion(axes[0], (*this)[unsigned(axes[0])]) * axisQuaternion(axes[1], (*this)[unsigned(axes[1])]) *
           axisQuaternion(axes[2], (*this)[unsigned(axes[2])]);
}

MEulerRotation MEulerRotation::decompose(const MMatrix& m, RotationOrder ord)
{
    // Relabel the axes so that the order reads XYZ; an odd relabelling mirrors, which turns
    // every angle around.
    const int* p = kAxes[ord];
    double r[3][3];
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) r[i][j] = m(unsigned(p[i]), unsigned(p[j]));
    // With row vectors Rx(a) * Ry(b) * Rz(c) has r02 = -sin b, r12 / r22 = tan a, r01 / r00 = tan c.
    double a, b, c;
    double cosB = std::sqrt(r[0][0] * r[0][0] + r[0][1] * r[0][1]);
    b = std::atan2(-r[0][2], cosB);
    if (cosB > 1.0e-12) {
        a = std::atan2(r[1][2], r[2][2]);
        c = std::atan2(r[0][1], r[0][0]);
    } else {
        // Gimbal lock: only a + c or a - c is known; the last angle takes 0.
        a = std::atan2(-r[2][1], r[1][1]);
        c = 0.0;
    }
    double sign = isOddOrder(ord) ? -1.0 : 1.0;
    double angles[3];
    angles[p[0]] = sign * a;
    angles[p[1]] = sign * b;
    angles[p[2]] = sign * c;
    return MEulerRotation(angles[0], angles[1], angles[2], ord);
}

MEulerRotation MEulerRotation::reorder(RotationOrder ord) const
{
    if (ord == order) return *this;
    return decompose(asMatrix(), ord);
}

MEulerRotation& MEulerRotation::reorderIt(RotationOrder ord)
{
    *this = reorder(ord);
    return *this;
}

bool MEulerRotation::isEquivalent(const MEulerRotation& o, double tolerance) const
{
    return order == o.order && std::fabs(x - o.x) <= tolerance && std::fabs(y - o.y) <= tolerance &&
           std::fabs(z - o.z) <= tolerance;
}

bool MEulerRotation::isZero(double tolerance) const
{
    return std::fabs(x) <= tolerance && std::fabs(y) <= tolerance && std::fabs(z) <= tolerance;
}

// ---- MQuaternion

const MQuaternion MQuaternion::identity;

MQuaternion::MQuaternion(double angle, const MVector& axis)
{
    MVector n = axis.normal();
    double s = std::sin(angle * 0.5);
    x = n.x * s;
    y = n.y * s;
    z = n.z * s;
    w = std::cos(angle * 0.5);
}

MQuaternion MQuaternion::operator*(const MQuaternion& r) const
{
    // The Hamilton product r (x) this: with row vectors this rotation applies first.
    return MQuaternion(r.w * x + w * r.x + (r.y * z - r.z * y), r.w * y + w * r.y + (r.z * x - r.x * z),
                       r.w * z + w * r.z + (r.x * y - r.y * x), r.w * w - (r.x * x + r.y * y + r.z * z));
}

MQuaternion& MQuaternion::operator*=(const MQuaternion& right)
{
    *this = *this * right;
    return *this;
}

MQuaternion& MQuaternion::operator=(const MEulerRotation& rotation)
{
    *this = rotation.asQuaternion();
    return *this;
}

bool MQuaternion::isEquivalent(const MQuaternion& o, double tolerance) const
{
    return std::fabs(x - o.x) <= tolerance && std::fabs(y - o.y) <= tolerance && std::fabs(z - o.z) <= tolerance &&
           std::fabs(w - o.w) <= tolerance;
}

MMatrix MQuaternion::asMatrix() const
{
    MMatrix m;
    m(0, 0) = 1.0 - 2.0 * (y * y + z * z);
    m(0, 1) = 2.0 * (x * y + z * w);
    m(0, 2) = 2.0 * (x * z - y * w);
    m(1, 0) = 2.0 * (x * y - z * w);
    m(1, 1) = 1.0 - 2.0 * (x * x + z * z);
    m(1, 2) = 2.0 * (y * z + x * w);
    m(2, 0) = 2.0 * (x * z + y * w);
    m(2, 1) = 2.0 * (y * z - x * w);
    m(2, 2) = 1.0 - 2.0 * (x * x + y * y);
    return m;
}

MEulerRotation MQuaternion::asEulerRotation() const
{
    return MEulerRotation::decompose(normal().asMatrix(), MEulerRotation::kXYZ);
}

MQuaternion MQuaternion::normal() const
{
    double l = std::sqrt(x * x + y * y + z * z + w * w);
    return l > 0.0 ? MQuaternion(x / l, y / l, z / l, w / l) : MQuaternion();
}

MQuaternion& MQuaternion::normalizeIt()
{
    *this = normal();
    return *this;
}

MQuaternion MQuaternion::inverse() const
{
    double l2 = x * x + y * y + z * z + w * w;
    return l2 > 0.0 ? MQuaternion(-x / l2, -y / l2, -z / l2, w / l2) : MQuaternion();
}

bool MQuaternion::getAxisAngle(MVector& axis, double& angle) const
{
    MQuaternion n = normal();
    double s = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
    angle = 2.0 * std::atan2(s, n.w);
    axis = s > 0.0 ? MVector(n.x / s, n.y / s, n.z / s) : MVector(0.0, 0.0, 1.0);
    return true;
}
