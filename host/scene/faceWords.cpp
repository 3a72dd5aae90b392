#include "scene/faceWords.h"

#include <algorithm>
#include <charconv>

#include "scene/lexical.h"

namespace host::scene {

bool FaceWords::next() {
    skipBlanks();
    const char* const first = at_;
    at_ = std::find_if(at_, end_, [](char c) { return c < 'a' || c > 'z'; });
    word_ = {first, static_cast<std::size_t>(at_ - first)};
    if (word_.empty()) {
        if (at_ != end_) fault_ = "has something that belongs to no face.";
        return false;
    }
    const bool isFace = word_ == "f";
    const bool hasSet = word_ == "mu" || word_ == "mc";
    if (!isFace && !hasSet && word_ != "h" && word_ != "mf" && word_ != "mh") {
        fault_ = "has the unknown word '" + std::string(word_) + "'.";
        return false;
    }
    if ((hasSet && !readNumber(set_)) || !readList()) {
        fault_ = isFace ? "has a face with too few edges."
                        : "has too few numbers after '" + std::string(word_) + "'.";
        return false;
    }
    behind_ = at_;
    return true;
}

/// Nothing is reserved: the length may be any number.
bool FaceWords::readList() {
    int count = 0;
    if (!readNumber(count) || count < 0) return false;
    list_.clear();
    for (int k = 0; k < count; ++k) {
        int entry = 0;
        if (!readNumber(entry)) return false;
        list_.push_back(entry);
    }
    return true;
}

bool FaceWords::readNumber(int& number) {
    skipBlanks();
    const auto [stop, code] = std::from_chars(at_, end_, number);
    if (code != std::errc()) return false;
    at_ = stop;
    return true;
}

void FaceWords::skipBlanks() {
    at_ = std::find_if_not(at_, end_, isBlank);
}

std::string colorsWord(const geometry::Topology& topology, int face,
                       const CornerColors::value_type& corners) {
    const int count = topology.faceSize(face);
    const int* const first = corners.second->data() + topology.faceOffsets()[static_cast<std::size_t>(face)];
    if (std::all_of(first, first + count, [](int index) { return index < 0; })) return {};
    std::string text = "mc " + std::to_string(corners.first) + ' ' + std::to_string(count);
    for (int corner = 0; corner < count; ++corner)
        text.append(" ").append(std::to_string(first[corner]));
    return text;
}

}  // namespace host::scene
