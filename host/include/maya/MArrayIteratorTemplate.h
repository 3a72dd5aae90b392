#pragma once

#include <maya/MTypes.h>

#include <cstddef>
#include <iterator>
#include <utility>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Steps through an array of the API, forwards and backwards, one element at a time.
///
/// Made for range-based loops and nothing else: a constant iterator can be neither dereferenced nor compared,
/// and there is no postfix step and no arithmetic. So most algorithms of the standard library do not accept
/// it.
template <typename Array, typename Element>
class MArrayIteratorTemplate {
  public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = Element;
    using difference_type = std::ptrdiff_t;
    using reference = Element&;

    MArrayIteratorTemplate(Array& array, unsigned int index) : array_(&array), index_(index) {}

    reference operator*() { return (*array_)[index_]; }
    MArrayIteratorTemplate& operator++() {
        ++index_;
        return *this;
    }
    MArrayIteratorTemplate& operator--() {
        --index_;
        return *this;
    }
    bool operator==(const MArrayIteratorTemplate& other) {
        return array_ == other.array_ && index_ == other.index_;
    }
    bool operator!=(const MArrayIteratorTemplate& other) { return !(*this == other); }

  private:
    Array* array_;
    unsigned int index_;
};

/// Like MArrayIteratorTemplate, for reading. It gives the result of the array's constant `[]`, which is a
/// value in some classes.
template <typename Array, typename Element>
class MArrayConstIteratorTemplate {
  public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = Element;
    using difference_type = std::ptrdiff_t;
    using reference = decltype(std::declval<const Array&>()[0U]);

    MArrayConstIteratorTemplate(const Array& array, unsigned int index) : array_(&array), index_(index) {}

    reference operator*() { return (*array_)[index_]; }
    MArrayConstIteratorTemplate& operator++() {
        ++index_;
        return *this;
    }
    MArrayConstIteratorTemplate& operator--() {
        --index_;
        return *this;
    }
    bool operator==(const MArrayConstIteratorTemplate& other) {
        return array_ == other.array_ && index_ == other.index_;
    }
    bool operator!=(const MArrayConstIteratorTemplate& other) { return !(*this == other); }

  private:
    const Array* array_;
    unsigned int index_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
