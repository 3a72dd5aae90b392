#include <algorithm>
#include <cstdint>

#include "geometry/objFile.h"
#include "text/numbers.h"

namespace host::geometry {

namespace {

void appendName(std::string& text, const std::string& name) {
    for (char c : name) {
        const bool isPlain = static_cast<unsigned char>(c) > ' ' && c != '#' && c != '\\' && c != 0x7F;
        text += isPlain ? c : '_';
    }
}

template <typename Number>
void appendNumber(std::string& text, Number number) {
    text += ' ';
    text::appendShortest(text, number);
}

void appendVertices(std::string& text, const Mesh& mesh) {
    const std::vector<float>& points = mesh.points();
    for (std::size_t at = 0; at < points.size(); at += 3) {
        text += 'v';
        for (std::size_t axis = 0; axis < 3; ++axis)
            appendNumber(text, points[at + axis]);
        text += '\n';
    }
}

/// A group that begins or ends before a face.
struct GroupChange {
    int face;
    std::size_t group;
    bool begins;
};

std::vector<GroupChange> groupChanges(const std::vector<ObjGroup>& groups) {
    std::vector<GroupChange> changes;
    for (std::size_t group = 0; group < groups.size(); ++group) {
        for (const FaceRun& run : groups[group].runs) {
            changes.push_back({run.first, group, true});
            changes.push_back({run.first + run.count, group, false});
        }
    }
    std::stable_sort(changes.begin(), changes.end(),
                     [](const GroupChange& a, const GroupChange& b) { return a.face < b.face; });
    return changes;
}

/// Writes the faces of one object. `base` vertices come before its first.
class FaceWriter {
  public:
    FaceWriter(std::string& text, const ObjObject& object, std::int64_t base)
        : text_(text), object_(object), base_(base), changes_(groupChanges(object.groups)) {}

    void write() {
        const Topology& topology = object_.mesh.topology();
        for (int face = 0; face < topology.faceCount(); ++face) {
            writeGroups(face);
            text_ += 'f';
            for (int vertex : topology.faceVertices(face))
                appendNumber(text_, base_ + vertex + 1);
            text_ += '\n';
        }
    }

  private:
    void writeGroups(int face) {
        const std::size_t before = next_;
        for (; next_ < changes_.size() && changes_[next_].face <= face; ++next_) {
            const GroupChange& change = changes_[next_];
            const auto at = std::lower_bound(open_.begin(), open_.end(), change.group);
            if (change.begins) {
                open_.insert(at, change.group);
            } else {
                open_.erase(at);
            }
        }
        if (next_ == before) return;
        text_ += 'g';
        if (open_.empty()) text_ += " default";
        for (std::size_t group : open_) {
            text_ += ' ';
            appendName(text_, object_.groups[group].name);
        }
        text_ += '\n';
    }

    std::string& text_;
    const ObjObject& object_;
    std::int64_t base_;
    std::vector<GroupChange> changes_;
    std::size_t next_ = 0;
    std::vector<std::size_t> open_;  ///< groups of the current face, ascending
};

}  // namespace

std::string writeObj(const std::vector<ObjObject>& objects) {
    std::size_t size = 0;
    for (const ObjObject& object : objects) {
        size += object.mesh.points().size() * 11 + object.mesh.topology().faceVertices().size() * 8;
    }
    std::string text;
    text.reserve(size);
    std::int64_t base = 0;
    for (const ObjObject& object : objects) {
        if (objects.size() > 1 || !object.name.empty()) {
            text += "o ";
            appendName(text, object.name);
            text += '\n';
        }
        appendVertices(text, object.mesh);
        FaceWriter(text, object, base).write();
        base += object.mesh.vertexCount();
    }
    return text;
}

}  // namespace host::geometry
