#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "scene/setStatement.h"
#include "scene/statement.h"

namespace host::scene {

/// A scene file in memory: its bytes, and the statements that they are cut into. It never changes.
struct SceneText {
    std::string fileName{};
    std::string bytes{};
    std::vector<Statement> statements{};
    TextForm form{};

    std::string_view statement(std::uint32_t index) const {
        const Statement& at = statements[index];
        return {bytes.data() + at.begin, static_cast<std::size_t>(at.end - at.begin)};
    }
    /// "<file>, line <n>, column <m>" of a statement.
    std::string place(std::uint32_t index) const {
        return placeText(fileName, bytes, statements[index].begin);
    }
};

/// The name of a file without its folders.
std::string fileNameOf(const std::string& path);

/// A scene file, read and cut, or why that failed.
struct SceneTextResult {
    SceneText text{};
    std::string error{};  ///< names file, line and column; empty on success

    bool ok() const { return error.empty(); }
};

SceneTextResult readSceneText(const std::string& path, const Progress& progress = {});
/// The same for text in memory.
/// @param fileName  for messages
SceneTextResult makeSceneText(std::string bytes, const std::string& fileName, const Progress& progress = {});
/// The text of a scene without nodes that has the header of another one: its version, units and fileInfo.
SceneText headerText(const SceneText& of);
/// The text of a scene without nodes, which counts time in this unit.
SceneText emptySceneText(double framesPerSecond);

}  // namespace host::scene
