// Reads little-endian fields from a block and remembers the first place where it ran short.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>

namespace vqm {
namespace inspect {

class ByteReader {
public:
    ByteReader(const uint8_t* data, size_t size) : data_(data), size_(size) {}

    bool ok() const { return ok_; }
    size_t offset() const { return offset_; }
    size_t remaining() const { return ok_ ? size_ - offset_ : 0; }

    uint32_t u32() { return uint32_t(take(4, 4)); }
    uint16_t u16() { return uint16_t(take(2, 2)); }
    uint8_t u8() { return uint8_t(take(1, 1)); }
    float f32()
    {
        uint32_t bits = u32();
        float value;
        memcpy(&value, &bits, 4);
        return value;
    }
    // u32 length, the bytes, zero fill up to a multiple of 4 counted from the first byte.
    std::string name()
    {
        uint32_t length = u32();
        if (!need(length)) return std::string();
        std::string text(reinterpret_cast<const char*>(data_ + offset_), length);
        offset_ += length;
        skip((4 - length % 4) % 4);
        return text;
    }
    const uint8_t* bytes(size_t count)
    {
        if (!need(count)) return nullptr;
        const uint8_t* at = data_ + offset_;
        offset_ += count;
        return at;
    }
    void skip(size_t count) { bytes(count); }

private:
    bool need(size_t count)
    {
        if (!ok_ || count > size_ - offset_) ok_ = false;
        return ok_;
    }
    uint64_t take(size_t count, size_t)
    {
        if (!need(count)) return 0;
        uint64_t value = 0;
        for (size_t i = 0; i < count; ++i) value |= uint64_t(data_[offset_ + i]) << (8 * i);
        offset_ += count;
        return value;
    }

    const uint8_t* data_;
    size_t size_;
    size_t offset_ = 0;
    bool ok_ = true;
};

}  // namespace inspect
}  // namespace vqm
