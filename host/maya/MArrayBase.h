// The host's value arrays share one shape: a length, indexed access, append and remove.
#pragma once

#include <maya/MStatus.h>

#include <vector>

template <typename T>
class MArrayBase {
public:
    MArrayBase() = default;
    MArrayBase(unsigned count, const T& value = T()) : items_(count, value) {}
    MArrayBase(const T* values, unsigned count) : items_(values, values + count) {}

    unsigned int length() const { return unsigned(items_.size()); }
    T& operator[](unsigned index) { return items_[index]; }
    const T& operator[](unsigned index) const { return items_[index]; }
    MStatus append(const T& value) { items_.push_back(value); return MStatus::kSuccess; }
    MStatus clear() { items_.clear(); return MStatus::kSuccess; }
    MStatus setLength(unsigned count) { items_.resize(count); return MStatus::kSuccess; }
    MStatus remove(unsigned index)
    {
        if (index >= items_.size()) return MStatus::kFailure;
        items_.erase(items_.begin() + index);
        return MStatus::kSuccess;
    }
    MStatus insert(const T& value, unsigned index)
    {
        if (index > items_.size()) return MStatus::kFailure;
        items_.insert(items_.begin() + index, value);
        return MStatus::kSuccess;
    }
    MStatus set(const T& value, unsigned index)
    {
        if (index >= items_.size()) return MStatus::kFailure;
        items_[index] = value;
        return MStatus::kSuccess;
    }
    MStatus get(T* out) const
    {
        for (size_t i = 0; i < items_.size(); ++i) out[i] = items_[i];
        return MStatus::kSuccess;
    }

    typename std::vector<T>::const_iterator begin() const { return items_.begin(); }
    typename std::vector<T>::const_iterator end() const { return items_.end(); }

protected:
    std::vector<T> items_;
};
