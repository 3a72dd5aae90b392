#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace host::scene {

/// The words of a statement that makes a node, or turns to one.
struct NodeWords {
    std::string type{};     ///< empty for a select statement
    std::string name{};     ///< with namespaces and perhaps a colon in front; empty if the file gives none
    std::string parent{};   ///< name or path; empty for the top level
    bool isShared = false;  ///< turns to the node if it exists
};

/// Nothing if the statement has a word that it may not have.
std::optional<NodeWords> readCreateNode(std::string_view statement);
std::optional<NodeWords> readSelect(std::string_view statement);

/// The id in a rename statement.
std::string readUuid(std::string_view statement);

/// What a lockNode statement does to the lock of a node; nothing if it is about other locks.
std::optional<bool> readLock(std::string_view statement);

/// Key and text of a fileInfo statement.
std::pair<std::string, std::string> readFileInfo(std::string_view statement, bool isDoubleByte);

}  // namespace host::scene
