// MFnMatrixData over the matrix blocks that plugs hand out.
#include <maya/MFnMatrixData.h>

#include "StatusReport.h"
#include "HostData.h"
#include "TransformNodes.h"

using namespace vqmhost;

static MatrixData* matrixData(const MObject& object)
{
    return dynamic_cast<MatrixData*>(object.hostData().get());
}

MFnMatrixData::MFnMatrixData(MObject& object, MStatus* status) : MFnMatrixData(static_cast<const MObject&>(object), status) {}

MFnMatrixData::MFnMatrixData(const MObject& object, MStatus* status)
{
    if (matrixData(object)) {
        object_ = object;
        report(status, MStatus::kSuccess);
    } else {
        report(status, MStatus::kInvalidParameter);
    }
}

MObject MFnMatrixData::create(const MMatrix& matrix, MStatus* status)
{
    double values[16];
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) values[r * 4 + c] = matrix(unsigned(r), unsigned(c));
    object_ = MObject(std::make_shared<MatrixData>(values));
    report(status, MStatus::kSuccess);
    return object_;
}

MObject MFnMatrixData::create(const MTransformationMatrix& transformation, MStatus* status)
{
    object_ = MObject(std::make_shared<MatrixData>(transformation, MQuaternion()));
    report(status, MStatus::kSuccess);
    return object_;
}

MMatrix MFnMatrixData::matrix(MStatus* status) const
{
    MatrixData* data = matrixData(object_);
    report(status, data ? MStatus::kSuccess : MStatus::kInvalidParameter);
    MMatrix m;
    if (data)
        for (int r = 0; r < 4; ++r)
            for (int c = 0; c < 4; ++c) m(unsigned(r), unsigned(c)) = data->values[r * 4 + c];
    return m;
}

MTransformationMatrix MFnMatrixData::transformation(MStatus* status) const
{
    MatrixData* data = matrixData(object_);
    report(status, data ? MStatus::kSuccess : MStatus::kInvalidParameter);
    if (!data) return MTransformationMatrix();
    if (data->isTransformation) return data->transformation;
    return MTransformationMatrix(matrix());
}

bool MFnMatrixData::isTransformation(MStatus* status) const
{
    MatrixData* data = matrixData(object_);
    report(status, data ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return data && data->isTransformation;
}

MStatus MFnMatrixData::set(const MMatrix& m)
{
    MatrixData* data = matrixData(object_);
    if (!data) return MStatus::kInvalidParameter;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) data->values[r * 4 + c] = m(unsigned(r), unsigned(c));
    data->isTransformation = false;
    return MStatus::kSuccess;
}

MStatus MFnMatrixData::set(const MTransformationMatrix& transformation)
{
    MatrixData* data = matrixData(object_);
    if (!data) return MStatus::kInvalidParameter;
    *data = MatrixData(transformation, MQuaternion());
    return MStatus::kSuccess;
}
