// The arguments of a command as the user typed them.
#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>

#include <vector>

class MArgList {
public:
    MArgList() = default;

    unsigned int length(MStatus* status = nullptr) const;
    // Index of "-shortName" or "-longName" in the list, or kInvalidArgIndex.
    unsigned int flagIndex(const char* shortFlag, const char* longFlag = nullptr) const;
    MString asString(unsigned index, MStatus* status = nullptr) const;
    int asInt(unsigned index, MStatus* status = nullptr) const;
    double asDouble(unsigned index, MStatus* status = nullptr) const;
    bool asBool(unsigned index, MStatus* status = nullptr) const;
    MArgList& addArg(const MString& arg);

    static constexpr unsigned int kInvalidArgIndex = 0xffffffffu;

private:
    std::vector<MString> args_;
};
