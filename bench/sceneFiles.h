#pragma once

#include <cstdint>

#include "benchFile.h"

/// A scene file with the mesh of a face and blend shape targets on it, written in the forms, with the line
/// lengths and in the chunks of saved files. The same for each size, apart from its place. Gone at the end.
///
/// A vertex takes about 200 bytes. More than a third of them are the faces, a sixth each the edges, the
/// points and the deltas of the targets, and a tenth the UVs.
class SceneFile {
  public:
    /// @param vertices  of the mesh, about
    explicit SceneFile(int vertices);

    /// The file of a size, written when it is first asked for. All that were made are kept.
    static const SceneFile& of(int vertices);

    std::string path() const { return file_.path().generic_string(); }
    std::uint64_t bytes() const { return bytes_; }
    std::uint64_t statements() const { return statements_; }
    /// Numbers of the values that this host has attributes for: without UVs.
    std::uint64_t numbers() const { return numbers_; }

  private:
    BenchFile file_{".ma"};
    std::uint64_t bytes_ = 0;
    std::uint64_t statements_ = 0;
    std::uint64_t numbers_ = 0;
};
