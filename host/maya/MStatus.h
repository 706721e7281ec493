// Result of a host call: a code, and a description for perror.
#pragma once

#include <maya/MTypes.h>

class MStatus {
public:
    enum MStatusCode {
        kSuccess = 0,
        kFailure,
        kInsufficientMemory,
        kInvalidParameter,
        kLicenseFailure,
        kUnknownParameter,
        kNotImplemented,
        kNotFound,
        kEndOfFile,
    };

    MStatus() : code_(kSuccess) {}
    MStatus(MStatusCode code) : code_(code) {}

    bool error() const { return code_ != kSuccess; }
    MStatusCode statusCode() const { return code_; }
    operator bool() const { return code_ == kSuccess; }
    bool operator==(const MStatus& other) const { return code_ == other.code_; }
    bool operator!=(const MStatus& other) const { return code_ != other.code_; }
    bool operator==(MStatusCode code) const { return code_ == code; }
    bool operator!=(MStatusCode code) const { return code_ != code; }
    void clear() { code_ = kSuccess; }

    const char* errorString() const;
    // Reports "<prefix>: <description>" through the host's error display.
    void perror(const char* prefix) const;
    void perror(const MString& prefix) const;

private:
    MStatusCode code_;
};

#define MS MStatus
