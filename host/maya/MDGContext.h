// Evaluation context of a plug read. The stand-in evaluates in the normal context only.
#pragma once

class MDGContext {
public:
    MDGContext() = default;
    bool isNormal() const { return true; }
    static MDGContext fsNormal;
};
