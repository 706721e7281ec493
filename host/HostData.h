// Data blocks that plugs hand out through MObject: matrices, strings, component lists.
#pragma once

#include <maya/MObject.h>
#include <maya/MQuaternion.h>
#include <maya/MTransformationMatrix.h>

#include <string>
#include <vector>

namespace vqmhost {

struct MatrixData : Data {
    double values[16];
    // Set when the data came as components (a dagPose's xform matrices): the components, and the
    // joint orient that the composed matrix holds between rotation and rotate pivot.
    bool isTransformation = false;
    MTransformationMatrix transformation;
    MQuaternion jointOrient;

    explicit MatrixData(const double* source)
    {
        for (int i = 0; i < 16; ++i) values[i] = source[i];
    }
    MatrixData(const MTransformationMatrix& components, const MQuaternion& orient);
    MFn::Type apiType() const override { return MFn::kMatrixData; }
};

struct StringData : Data {
    std::string text;
    explicit StringData(std::string value) : text(std::move(value)) {}
    MFn::Type apiType() const override { return MFn::kStringData; }
};

// Raw values of a typed attribute the stand-in does not interpret (yet): the file's words.
struct RawData : Data {
    std::string typeName;
    std::vector<std::string> words;
    MFn::Type apiType() const override { return MFn::kData; }
};

}  // namespace vqmhost
