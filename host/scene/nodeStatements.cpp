#include "scene/nodeStatements.h"

#include "graph/names.h"
#include "scene/words.h"

namespace host::scene {

std::optional<NodeWords> readCreateNode(std::string_view statement) {
    WordScanner words(statement);
    words.next();
    NodeWords node;
    for (Word word = words.next(); !word.isEnd(); word = words.next()) {
        if (word.isBare("-n") || word.isBare("-name")) {
            node.name = words.next().text();
        } else if (word.isBare("-p") || word.isBare("-parent")) {
            node.parent = words.next().text();
        } else if (word.isBare("-s") || word.isBare("-shared")) {
            node.isShared = true;
        } else if (!word.isFlag() && node.type.empty()) {
            node.type = word.text();
        } else if (!word.isBare("-ss") && !word.isBare("-skipSelect")) {
            return std::nullopt;
        }
    }
    // The type is written back as a bare word.
    return graph::isLegalName(node.type) ? std::optional(std::move(node)) : std::nullopt;
}

std::optional<NodeWords> readSelect(std::string_view statement) {
    WordScanner words(statement);
    words.next();
    NodeWords node;
    for (Word word = words.next(); !word.isEnd(); word = words.next()) {
        if (!word.isFlag() && node.name.empty()) {
            node.name = word.text();
        } else if (!word.isBare("-ne") && !word.isBare("-noExpand")) {
            return std::nullopt;
        }
    }
    return node.name.empty() ? std::nullopt : std::optional(std::move(node));
}

std::string readUuid(std::string_view statement) {
    WordScanner words(statement);
    words.next();
    words.next();
    return words.next().text();
}

std::optional<bool> readLock(std::string_view statement) {
    WordScanner words(statement);
    words.next();
    bool hasFlag = false;
    for (Word word = words.next(); !word.isEnd(); word = words.next()) {
        if (!word.isFlag()) continue;
        if (word.isBare("-l") || word.isBare("-lock")) return words.next().isOn();
        hasFlag = true;
    }
    return hasFlag ? std::nullopt : std::optional(true);
}

std::pair<std::string, std::string> readFileInfo(std::string_view statement, bool isDoubleByte) {
    WordScanner words(statement, isDoubleByte);
    words.next();
    std::string key = words.next().text();
    return {std::move(key), words.next().text()};
}

}  // namespace host::scene
