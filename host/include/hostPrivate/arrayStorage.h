#pragma once

#include <hostPrivate/arrayPoison.h>
#include <maya/MStatus.h>

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <type_traits>
#include <utility>
#include <vector>

namespace host::api {

/// What the array classes of the API have in common. Not part of the API: a plug-in never names it.
///
/// In `at`, an index out of range is the caller's fault. `set`, `insert` and `remove` report it.
template <typename Element>
class ArrayStorage {
  public:
    ArrayStorage() = default;
    /// The elements are unset.
    explicit ArrayStorage(unsigned int length) : elements_(length, unsetElement<Element>()) {}
    ArrayStorage(unsigned int length, const Element& value) : elements_(length, value) {}
    ArrayStorage(const Element* source, unsigned int count) : elements_(source, source + count) {}

    /// From rows of numbers, such as double[][4]. Each row makes an element.
    template <typename Number, std::size_t width>
    static ArrayStorage fromRows(const Number source[][width], unsigned int count) {
        ArrayStorage storage;
        storage.elements_.reserve(count);
        for (unsigned int i = 0; i < count; ++i) {
            Element& element = storage.elements_.emplace_back();
            for (unsigned int k = 0; k < width; ++k)
                element[k] = static_cast<std::decay_t<decltype(element[k])>>(source[i][k]);
        }
        return storage;
    }

    unsigned int length() const { return static_cast<unsigned int>(elements_.size()); }
    Element& at(unsigned int index) { return elements_[index]; }
    const Element& at(unsigned int index) const { return elements_[index]; }

    MStatus set(const Element& element, unsigned int index) {
        if (index >= length()) return MStatus::kInvalidParameter;
        elements_[index] = element;
        return MStatus::kSuccess;
    }

    /// New elements at the end are unset.
    MStatus setLength(unsigned int length) {
        elements_.resize(length, unsetElement<Element>());
        return MStatus::kSuccess;
    }

    /// `element` may be an element of this array.
    MStatus append(const Element& element) {
        if (elements_.size() < elements_.capacity()) {
            elements_.push_back(element);
            return MStatus::kSuccess;
        }
        Element copy(element);
        elements_.reserve(elements_.size() + std::max<std::size_t>(elements_.size(), sizeIncrement_));
        elements_.push_back(std::move(copy));
        return MStatus::kSuccess;
    }

    MStatus insert(const Element& element, unsigned int index) {
        if (index > length()) return MStatus::kInvalidParameter;
        elements_.insert(elements_.begin() + static_cast<std::ptrdiff_t>(index), element);
        return MStatus::kSuccess;
    }

    MStatus remove(unsigned int index) {
        if (index >= length()) return MStatus::kInvalidParameter;
        elements_.erase(elements_.begin() + static_cast<std::ptrdiff_t>(index));
        return MStatus::kSuccess;
    }

    MStatus copy(const ArrayStorage& source) {
        elements_ = source.elements_;
        return MStatus::kSuccess;
    }

    MStatus clear() {
        elements_.clear();
        return MStatus::kSuccess;
    }

    MStatus get(Element* destination) const {
        std::copy(elements_.begin(), elements_.end(), destination);
        return MStatus::kSuccess;
    }

    /// Like `get`, into rows of numbers.
    template <typename Number, std::size_t width>
    MStatus getRows(Number destination[][width]) const {
        for (std::size_t i = 0; i < elements_.size(); ++i) {
            for (unsigned int k = 0; k < width; ++k)
                destination[i][k] = static_cast<Number>(elements_[i][k]);
        }
        return MStatus::kSuccess;
    }

    /// The least number of elements for which memory is reserved when the array grows.
    void setSizeIncrement(unsigned int increment) { sizeIncrement_ = std::max(increment, 1U); }
    unsigned int sizeIncrement() const { return sizeIncrement_; }

    /// "[a, b, c]"
    void write(std::ostream& out) const {
        out << '[';
        for (std::size_t i = 0; i < elements_.size(); ++i) {
            out << (i == 0 ? "" : ", ") << elements_[i];
        }
        out << ']';
    }

  private:
    std::vector<Element> elements_;
    unsigned int sizeIncrement_ = 1;
};

}  // namespace host::api
