// Rotations, quaternions and transformation matrices against references computed another way:
// points turned about axes with Rodrigues' formula, one axis after the other.
#include <maya/MEulerRotation.h>
#include <maya/MMatrix.h>
#include <maya/MQuaternion.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MVector.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <utility>
#include <vector>

namespace {

// p turned by angle about the unit axis, counterclockwise looking down the axis.
MVector turn(const MVector& p, const MVector& axis, double angle)
{
    double c = std::cos(angle), s = std::sin(angle);
    return p * c + (axis ^ p) * s + axis * ((axis * p) * (1.0 - c));
}

const MVector kAxes[3] = {MVector(1, 0, 0), MVector(0, 1, 0), MVector(0, 0, 1)};

// The matrix whose rows are the images of the basis under the turns, first turn first.
MMatrix reference(const std::vector<std::pair<int, double>>& turns)
{
    MMatrix m;
    for (unsigned row = 0; row < 3; ++row) {
        MVector p = kAxes[row];
        for (const auto& t : turns) p = turn(p, kAxes[t.first], t.second);
        for (unsigned c = 0; c < 3; ++c) m(row, c) = p[c];
    }
    return m;
}

// The axes of each MEulerRotation order, first applied first.
const int kOrderAxes[6][3] = {{0, 1, 2}, {1, 2, 0}, {2, 0, 1}, {0, 2, 1}, {1, 0, 2}, {2, 1, 0}};

::testing::AssertionResult near(const MMatrix& a, const MMatrix& b, double tolerance = 1e-12)
{
    if (a.isEquivalent(b, tolerance)) return ::testing::AssertionSuccess();
    auto failure = ::testing::AssertionFailure();
    for (unsigned r = 0; r < 4; ++r)
        failure << "\n" << a(r, 0) << ' ' << a(r, 1) << ' ' << a(r, 2) << ' ' << a(r, 3) << "   |   " << b(r, 0) << ' '
                << b(r, 1) << ' ' << b(r, 2) << ' ' << b(r, 3);
    return failure;
}

TEST(EulerRotation, EachOrderTurnsAboutItsAxesInOrder)
{
    const double angles[3] = {0.3, -1.1, 2.2};
    for (int order = 0; order < 6; ++order) {
        MEulerRotation euler(angles[0], angles[1], angles[2], MEulerRotation::RotationOrder(order));
        std::vector<std::pair<int, double>> turns;
        for (int axis : kOrderAxes[order]) turns.emplace_back(axis, angles[axis]);
        EXPECT_TRUE(near(euler.asMatrix(), reference(turns))) << "order " << order;
        EXPECT_TRUE(near(euler.asQuaternion().asMatrix(), reference(turns))) << "order " << order;
    }
}

TEST(EulerRotation, DecomposeAndReorderKeepTheRotation)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> angle(-M_PI, M_PI);
    for (int trial = 0; trial < 200; ++trial) {
        MEulerRotation euler(angle(random), angle(random), angle(random),
                             MEulerRotation::RotationOrder(trial % 6));
        for (int order = 0; order < 6; ++order) {
            MEulerRotation reordered = euler.reorder(MEulerRotation::RotationOrder(order));
            EXPECT_EQ(reordered.order, order);
            EXPECT_TRUE(near(reordered.asMatrix(), euler.asMatrix(), 1e-9)) << trial << " to " << order;
            // The middle angle of a decomposition stays within a quarter turn.
            if (order != int(euler.order)) {
                EXPECT_LE(std::fabs(reordered[unsigned(kOrderAxes[order][1])]), M_PI / 2 + 1e-12);
            }
        }
    }
    // Angles in range come back as they went in.
    MEulerRotation small(0.1, -0.4, 1.3, MEulerRotation::kYZX);
    EXPECT_TRUE(MEulerRotation::decompose(small.asMatrix(), MEulerRotation::kYZX).isEquivalent(small, 1e-12));
    MEulerRotation copy = small;
    EXPECT_EQ(copy.reorderIt(MEulerRotation::kYZX), small) << "the same order changes nothing";
}

TEST(EulerRotation, GimbalLockStillGivesTheSameRotation)
{
    for (int order = 0; order < 6; ++order) {
        double a[3] = {0.7, 0.2, -0.5};
        a[kOrderAxes[order][1]] = M_PI / 2;  // the middle axis at a quarter turn
        MEulerRotation locked(a[0], a[1], a[2], MEulerRotation::RotationOrder(order));
        for (int target = 0; target < 6; ++target)
            EXPECT_TRUE(near(locked.reorder(MEulerRotation::RotationOrder(target)).asMatrix(), locked.asMatrix(), 1e-9))
                << order << " to " << target;
    }
}

TEST(EulerRotation, KnownReorderings)
{
    // Z by 60, then Y by 45, then X by 30, as XYZ angles (computed independently).
    MEulerRotation zyx(30 * M_PI / 180, 45 * M_PI / 180, 60 * M_PI / 180, MEulerRotation::kZYX);
    MEulerRotation xyz = zyx.reorder(MEulerRotation::kXYZ);
    EXPECT_NEAR(xyz.x * 180 / M_PI, 51.8766, 1e-4);
    EXPECT_NEAR(xyz.y * 180 / M_PI, -7.28625, 1e-4);
    EXPECT_NEAR(xyz.z * 180 / M_PI, 69.1188, 1e-4);
}

TEST(Quaternion, ProductsComposeLikeRowVectorMatrices)
{
    MQuaternion a(0.9, MVector(1, 2, 3)), b(-2.1, MVector(0, 1, -1)), c(0.4, MVector(1, 0, 0));
    EXPECT_TRUE(near((a * b).asMatrix(), a.asMatrix() * b.asMatrix()));
    EXPECT_TRUE(near((a * b * c).asMatrix(), reference({{0, 0.0}}) * a.asMatrix() * b.asMatrix() * c.asMatrix()));
    EXPECT_FALSE(near((a * b).asMatrix(), (b * a).asMatrix(), 1e-6)) << "the product does not commute";
    // Turning about X and then about Z: the left operand applies first.
    MQuaternion x(M_PI / 2, MVector(1, 0, 0)), z(M_PI / 2, MVector(0, 0, 1));
    EXPECT_TRUE(near((x * z).asMatrix(), reference({{0, M_PI / 2}, {2, M_PI / 2}})));
    MQuaternion product = a;
    product *= b;
    EXPECT_TRUE(product.isEquivalent(a * b));
    EXPECT_TRUE((a * a.inverse()).isEquivalent(MQuaternion::identity, 1e-12));
}

TEST(Quaternion, AxisAngleMatrixAndEulerAngles)
{
    MVector axis = MVector(2, -1, 0.5).normal();
    MQuaternion q(1.3, axis);
    MMatrix expected;
    for (unsigned r = 0; r < 3; ++r) {
        MVector image = turn(kAxes[r], axis, 1.3);
        for (unsigned c = 0; c < 3; ++c) expected(r, c) = image[c];
    }
    EXPECT_TRUE(near(q.asMatrix(), expected));
    EXPECT_TRUE(near(q.asEulerRotation().asMatrix(), expected));
    EXPECT_EQ(q.asEulerRotation().order, MEulerRotation::kXYZ);

    MQuaternion quarter(0, 0, std::sqrt(0.5), std::sqrt(0.5));  // a joint orient of 90 degrees about Z
    MEulerRotation e = quarter.asEulerRotation();
    EXPECT_NEAR(e.x, 0, 1e-12);
    EXPECT_NEAR(e.y, 0, 1e-12);
    EXPECT_NEAR(e.z, M_PI / 2, 1e-12);

    MVector gotAxis;
    double gotAngle;
    q.getAxisAngle(gotAxis, gotAngle);
    EXPECT_NEAR(gotAngle, 1.3, 1e-12);
    EXPECT_TRUE(gotAxis.isEquivalent(axis, 1e-12));
}

TEST(Matrix, InverseDeterminantAndRowVectors)
{
    MTransformationMatrix t;
    double scale[3] = {2, 3, -0.5};
    t.setScale(scale, MSpace::kTransform);
    t.rotateTo(MEulerRotation(0.3, 0.2, 0.1));
    t.setTranslation(MVector(4, 5, 6), MSpace::kTransform);
    MMatrix m = t.asMatrix();
    EXPECT_TRUE(near(m * m.inverse(), MMatrix::identity, 1e-12));
    EXPECT_NEAR(m.det4x4(), -3.0, 1e-12);
    EXPECT_NEAR(m.det3x3(), -3.0, 1e-12);
    EXPECT_TRUE(near(m.transpose().transpose(), m, 0));
    MVector v = MVector(1, 0, 0) * MEulerRotation(0, 0, M_PI / 2).asMatrix();
    EXPECT_TRUE(v.isEquivalent(MVector(0, 1, 0), 1e-15)) << "x turns onto y";
}

TEST(TransformationMatrix, ComposesPivotsAroundScaleAndRotation)
{
    MTransformationMatrix t;
    t.setRotatePivot(MVector(1, 0, 0), MSpace::kTransform, false);
    t.rotateTo(MEulerRotation(0, 0, M_PI / 2));
    // The origin swings about the pivot at (1, 0, 0) to (1, -1, 0).
    MMatrix m = t.asMatrix();
    EXPECT_NEAR(m(3, 0), 1, 1e-12);
    EXPECT_NEAR(m(3, 1), -1, 1e-12);

    MTransformationMatrix s;
    double scale[3] = {2, 2, 2};
    s.setScale(scale, MSpace::kTransform);
    s.setScalePivot(MVector(0, 1, 0), MSpace::kTransform, false);
    s.setScalePivotTranslation(MVector(0, 0, 5), MSpace::kTransform);
    s.setRotatePivotTranslation(MVector(1, 0, 0), MSpace::kTransform);
    s.setTranslation(MVector(0, 0, 1), MSpace::kTransform);
    s.setRotationOrientation(MQuaternion(M_PI, MVector(0, 1, 0)));
    // Origin: scaled about (0, 1, 0) to (0, -1, 0), then +spt, turned half about Y, +rpt, +t.
    m = s.asMatrix();
    EXPECT_NEAR(m(3, 0), 1, 1e-12);
    EXPECT_NEAR(m(3, 1), -1, 1e-12);
    EXPECT_NEAR(m(3, 2), -5 + 1, 1e-12);
}

TEST(TransformationMatrix, DecomposesAMatrixIntoItsComponents)
{
    MTransformationMatrix original;
    double scale[3] = {1.5, 0.5, 2}, shear[3] = {0.2, -0.1, 0.3};
    original.setScale(scale, MSpace::kTransform);
    original.setShear(shear, MSpace::kTransform);
    original.rotateTo(MEulerRotation(0.4, -0.3, 1.2));
    original.setTranslation(MVector(-1, 2, 7), MSpace::kTransform);
    MTransformationMatrix back(original.asMatrix());
    double gotScale[3], gotShear[3], gotRotation[3];
    back.getScale(gotScale, MSpace::kTransform);
    back.getShear(gotShear, MSpace::kTransform);
    MTransformationMatrix::RotationOrder order;
    back.getRotation(gotRotation, order);
    EXPECT_EQ(order, MTransformationMatrix::kXYZ);
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(gotScale[i], scale[i], 1e-12);
        EXPECT_NEAR(gotShear[i], shear[i], 1e-12);
    }
    EXPECT_NEAR(gotRotation[0], 0.4, 1e-12);
    EXPECT_NEAR(gotRotation[1], -0.3, 1e-12);
    EXPECT_NEAR(gotRotation[2], 1.2, 1e-12);
    EXPECT_TRUE(back.translation(MSpace::kTransform).isEquivalent(MVector(-1, 2, 7), 1e-12));
    EXPECT_TRUE(near(back.asMatrix(), original.asMatrix(), 1e-12));

    double mirror[3] = {1, 1, -1};
    original.setScale(mirror, MSpace::kTransform);
    EXPECT_TRUE(near(MTransformationMatrix(original.asMatrix()).asMatrix(), original.asMatrix(), 1e-12))
        << "a mirroring matrix decomposes too";
}

}  // namespace
