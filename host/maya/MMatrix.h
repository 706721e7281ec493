// A 4 by 4 matrix of doubles, row-major. Points are row vectors, so p * A * B applies A first.
#pragma once

#include <maya/MTypes.h>

class MMatrix {
public:
    MMatrix();  // identity
    explicit MMatrix(const double m[4][4]);

    double operator()(unsigned row, unsigned column) const { return matrix[row][column]; }
    double& operator()(unsigned row, unsigned column) { return matrix[row][column]; }
    const double* operator[](unsigned row) const { return matrix[row]; }
    double* operator[](unsigned row) { return matrix[row]; }

    MMatrix operator*(const MMatrix& right) const;
    MMatrix& operator*=(const MMatrix& right);
    bool operator==(const MMatrix& other) const;
    bool operator!=(const MMatrix& other) const { return !(*this == other); }

    MMatrix transpose() const;
    // Full inverse by Gauss-Jordan elimination; a singular matrix gives the identity.
    MMatrix inverse() const;
    double det4x4() const;
    double det3x3() const;
    MMatrix& setToIdentity();
    bool isEquivalent(const MMatrix& other, double tolerance = 1.0e-10) const;
    void get(double m[4][4]) const;

    static const MMatrix identity;

    double matrix[4][4];
};
