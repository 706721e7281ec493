// MTransformationMatrix: a transformation kept as components, and the matrix they compose to.
#include <maya/MTransformationMatrix.h>

#include <cmath>

const MTransformationMatrix MTransformationMatrix::identity;

namespace {

MMatrix translationMatrix(const MVector& v)
{
    MMatrix m;
    m(3, 0) = v.x;
    m(3, 1) = v.y;
    m(3, 2) = v.z;
    return m;
}

}  // namespace

MTransformationMatrix::MTransformationMatrix(const MMatrix& m)
{
    // Rows: row0 = sx*R0, row1 = sy*(xy*R0 + R1), row2 = sz*(xz*R0 + yz*R1 + R2). Undo them in
    // turn, as a Gram-Schmidt orthogonalisation.
    MVector row0(m(0, 0), m(0, 1), m(0, 2)), row1(m(1, 0), m(1, 1), m(1, 2)), row2(m(2, 0), m(2, 1), m(2, 2));
    translation_ = MVector(m(3, 0), m(3, 1), m(3, 2));
    scale_[0] = row0.length();
    MVector r0 = row0.normal();
    double xy = row1 * r0;
    MVector rest1 = row1 - r0 * xy;
    scale_[1] = rest1.length();
    MVector r1 = rest1.normal();
    double xz = row2 * r0, yz = row2 * r1;
    MVector rest2 = row2 - r0 * xz - r1 * yz;
    scale_[2] = rest2.length();
    MVector r2 = rest2.normal();
    if ((r0 ^ r1) * r2 < 0.0) {
        // A mirroring matrix: the mirror goes into the last scale factor.
        scale_[2] = -scale_[2];
        r2 = -r2;
    }
    shear_[0] = scale_[1] != 0.0 ? xy / scale_[1] : 0.0;
    shear_[1] = scale_[2] != 0.0 ? xz / scale_[2] : 0.0;
    shear_[2] = scale_[2] != 0.0 ? yz / scale_[2] : 0.0;
    MMatrix rotation;
    for (unsigned c = 0; c < 3; ++c) {
        rotation(0, c) = r0[c];
        rotation(1, c) = r1[c];
        rotation(2, c) = r2[c];
    }
    rotation_ = MEulerRotation::decompose(rotation, MEulerRotation::kXYZ);
}

MMatrix MTransformationMatrix::asScaleMatrix() const
{
    MMatrix s, sh;
    s(0, 0) = scale_[0];
    s(1, 1) = scale_[1];
    s(2, 2) = scale_[2];
    sh(1, 0) = shear_[0];
    sh(2, 0) = shear_[1];
    sh(2, 1) = shear_[2];
    return translationMatrix(-scalePivot_) * s * sh * translationMatrix(scalePivot_);
}

MMatrix MTransformationMatrix::asRotateMatrix() const
{
    return translationMatrix(-rotatePivot_) * rotateOrientation_.asMatrix() * rotation_.asMatrix() *
           translationMatrix(rotatePivot_);
}

MMatrix MTransformationMatrix::asMatrix() const
{
    return asScaleMatrix() * translationMatrix(scalePivotTranslation_) * asRotateMatrix() *
           translationMatrix(rotatePivotTranslation_) * translationMatrix(translation_);
}

MVector MTransformationMatrix::getTranslation(MSpace::Space, MStatus* status) const
{
    if (status) *status = MStatus::kSuccess;
    return translation_;
}

MStatus MTransformationMatrix::setTranslation(const MVector& vector, MSpace::Space)
{
    translation_ = vector;
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::getRotation(double rotation[3], RotationOrder& order) const
{
    rotation[0] = rotation_.x;
    rotation[1] = rotation_.y;
    rotation[2] = rotation_.z;
    order = RotationOrder(int(rotation_.order) + 1);
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::setRotation(const double rotation[3], RotationOrder order)
{
    if (order <= kInvalid || order >= kLast) return MStatus::kInvalidParameter;
    rotation_ = MEulerRotation(rotation[0], rotation[1], rotation[2], MEulerRotation::RotationOrder(int(order) - 1));
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::rotateTo(const MEulerRotation& rotation)
{
    rotation_ = rotation;
    return MStatus::kSuccess;
}

MQuaternion MTransformationMatrix::rotation(MStatus* status) const
{
    if (status) *status = MStatus::kSuccess;
    return rotation_.asQuaternion();
}

MTransformationMatrix::RotationOrder MTransformationMatrix::rotationOrder(MStatus* status) const
{
    if (status) *status = MStatus::kSuccess;
    return RotationOrder(int(rotation_.order) + 1);
}

MStatus MTransformationMatrix::getScale(double scale[3], MSpace::Space) const
{
    for (int i = 0; i < 3; ++i) scale[i] = scale_[i];
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::setScale(const double scale[3], MSpace::Space)
{
    for (int i = 0; i < 3; ++i) scale_[i] = scale[i];
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::getShear(double shear[3], MSpace::Space) const
{
    for (int i = 0; i < 3; ++i) shear[i] = shear_[i];
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::setShear(const double shear[3], MSpace::Space)
{
    for (int i = 0; i < 3; ++i) shear_[i] = shear[i];
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::setRotationOrientation(const MQuaternion& orientation)
{
    rotateOrientation_ = orientation;
    return MStatus::kSuccess;
}

MVector MTransformationMatrix::scalePivot(MSpace::Space, MStatus* status) const
{
    if (status) *status = MStatus::kSuccess;
    return scalePivot_;
}

MStatus MTransformationMatrix::setScalePivot(const MVector& point, MSpace::Space, bool)
{
    scalePivot_ = point;
    return MStatus::kSuccess;
}

MVector MTransformationMatrix::scalePivotTranslation(MSpace::Space, MStatus* status) const
{
    if (status) *status = MStatus::kSuccess;
    return scalePivotTranslation_;
}

MStatus MTransformationMatrix::setScalePivotTranslation(const MVector& vector, MSpace::Space)
{
    scalePivotTranslation_ = vector;
    return MStatus::kSuccess;
}

MVector MTransformationMatrix::rotatePivot(MSpace::Space, MStatus* status) const
{
    if (status) *status = MStatus::kSuccess;
    return rotatePivot_;
}

MStatus MTransformationMatrix::setRotatePivot(const MVector& point, MSpace::Space, bool)
{
    rotatePivot_ = point;
    return MStatus::kSuccess;
}

MVector MTransformationMatrix::rotatePivotTranslation(MSpace::Space, MStatus* status) const
{
    if (status) *status = MStatus::kSuccess;
    return rotatePivotTranslation_;
}

MStatus MTransformationMatrix::setRotatePivotTranslation(const MVector& vector, MSpace::Space)
{
    rotatePivotTranslation_ = vector;
    return MStatus::kSuccess;
}

bool MTransformationMatrix::isEquivalent(const MTransformationMatrix& other, double tolerance) const
{
    return asMatrix().isEquivalent(other.asMatrix(), tolerance);
}
