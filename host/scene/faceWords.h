#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "geometry/topology.h"

namespace host::scene {

/// Goes through the words of a polyFaces value: `f 3 0 1 2 mu 0 3 7 8 9 ...`. Each is a few letters, for UVs
/// and colours the number of a set, and a list with its length in front.
class FaceWords {
  public:
    /// @param values  must outlive this
    explicit FaceWords(std::string_view values)
        : at_(values.data()), end_(values.data() + values.size()), behind_(at_) {}

    /// Reads the next word.
    /// @return false at the end, and where something else stands (fault)
    bool next();

    std::string_view word() const { return word_; }
    /// The set of a word for UVs (mu) or colours (mc).
    int set() const { return set_; }
    const std::vector<int>& list() const { return list_; }
    /// The whole word with its list, from its first letter on.
    std::string_view text() const { return {word_.data(), static_cast<std::size_t>(behind_ - word_.data())}; }
    /// What is wrong, as the end of a sentence; empty if nothing is.
    const std::string& fault() const { return fault_; }

  private:
    bool readList();
    bool readNumber(int& number);
    void skipBlanks();

    const char* at_;
    const char* end_;
    const char* behind_;
    std::string_view word_{};
    int set_ = 0;
    std::vector<int> list_{};
    std::string fault_{};
};

/// Which colour each corner of a mesh takes, an index or -1 for none, by the number of a colour set.
using CornerColors = std::map<int, const std::vector<int>*>;

/// The word for the colours of one face in one set: `mc 0 3 7 8 9`. Empty if it has none.
std::string colorsWord(const geometry::Topology& topology, int face, const CornerColors::value_type& corners);

}  // namespace host::scene
