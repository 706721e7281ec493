// Function set of matrix data blocks: a plain matrix, or a transformation kept as components.
#pragma once

#include <maya/MFnBase.h>
#include <maya/MMatrix.h>
#include <maya/MTransformationMatrix.h>

class MFnMatrixData : public MFnBase {
public:
    MFnMatrixData() = default;
    MFnMatrixData(MObject& object, MStatus* status = nullptr);
    MFnMatrixData(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override { return MFn::kMatrixData; }

    MObject create(const MMatrix& matrix, MStatus* status = nullptr);
    MObject create(const MTransformationMatrix& transformation, MStatus* status = nullptr);

    MMatrix matrix(MStatus* status = nullptr) const;
    // Components as stored, or decomposed from a plain matrix.
    MTransformationMatrix transformation(MStatus* status = nullptr) const;
    bool isTransformation(MStatus* status = nullptr) const;
    MStatus set(const MMatrix& matrix);
    MStatus set(const MTransformationMatrix& transformation);
};
