// A handle on something the host owns: a node, an attribute, a data block or a component.
#pragma once

#include <maya/MFn.h>
#include <maya/MTypes.h>

#include <memory>

namespace vqmhost {
// Data blocks and component lists handed out through MObject.
class Data {
public:
    virtual ~Data() = default;
    virtual MFn::Type apiType() const = 0;
};
}  // namespace vqmhost

class MObject {
public:
    MObject() = default;

    bool isNull() const { return node_ == nullptr && attribute_ == nullptr && !data_; }
    MFn::Type apiType() const;
    bool hasFn(MFn::Type type) const;
    const char* apiTypeStr() const;

    bool operator==(const MObject& other) const
    {
        return node_ == other.node_ && attribute_ == other.attribute_ && data_ == other.data_;
    }
    bool operator!=(const MObject& other) const { return !(*this == other); }

    static const MObject kNullObj;

    // Stand-in internals: what the handle refers to.
    explicit MObject(vqmhost::Node* node) : node_(node) {}
    explicit MObject(const vqmhost::Attribute* attribute) : attribute_(attribute) {}
    explicit MObject(std::shared_ptr<vqmhost::Data> data) : data_(std::move(data)) {}
    vqmhost::Node* hostNode() const { return node_; }
    const vqmhost::Attribute* hostAttribute() const { return attribute_; }
    const std::shared_ptr<vqmhost::Data>& hostData() const { return data_; }

private:
    vqmhost::Node* node_ = nullptr;
    const vqmhost::Attribute* attribute_ = nullptr;
    std::shared_ptr<vqmhost::Data> data_;
};
