#include "scene/sceneText.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "geometry/textFile.h"
#include "scene/words.h"
#include "text/numbers.h"
#include "text/units.h"

namespace host::scene {

namespace {

/// Newer releases write "UTF-8", older ones the number. A name that is neither says nothing.
int codePageNamed(std::string_view name) {
    const auto number = text::readNumber<int>(name);
    constexpr int kLargest = 65535;
    return number.value > 0 && number.value <= kLargest ? number.value : kUtf8;
}

/// The code page that a comment at the top of the file names; UTF-8 if none does.
int codePageOf(std::string_view bytes) {
    constexpr std::string_view kMark = "//Codeset: ";
    while (bytes.substr(0, 2) == "//") {
        const std::string_view line = bytes.substr(0, bytes.find_first_of("\r\n"));
        if (line.substr(0, kMark.size()) == kMark) return codePageNamed(line.substr(kMark.size()));
        bytes.remove_prefix(std::min(bytes.find_first_not_of("\r\n", line.size()), bytes.size()));
    }
    return kUtf8;
}

bool isDoubleByte(int codePage) {
    return codePage == 932 || codePage == 936 || codePage == 949 || codePage == 950;
}

std::string lineEndOf(std::string_view bytes) {
    const std::size_t line = std::min(bytes.find_first_of("\r\n"), bytes.size());
    if (bytes.substr(line, 2) == "\r\n") return "\r\n";
    return bytes.substr(line, 1) == "\r" ? "\r" : "\n";
}

/// Takes the units from the statements that set them. They hold for the whole file.
void readUnits(SceneText& text) {
    for (std::uint32_t k = 0; k < text.statements.size(); ++k) {
        if (text.statements[k].kind == StatementKind::CreateNode) return;
        if (text.statements[k].kind != StatementKind::CurrentUnit) continue;
        WordScanner words(text.statement(k));
        words.next();
        for (Word flag = words.next(); flag.isFlag(); flag = words.next())
            setUnit(text.form.units, flag.raw, words.next().text());
    }
}

}  // namespace

std::string fileNameOf(const std::string& path) {
    return std::filesystem::u8path(path).filename().u8string();
}

SceneTextResult readSceneText(const std::string& path, const Progress& progress) {
    geometry::FileText file = geometry::readTextFile(path);
    if (file.ok()) return makeSceneText(std::move(file.text), fileNameOf(path), progress);
    SceneTextResult failed;
    failed.error = std::move(file.error);
    return failed;
}

SceneTextResult makeSceneText(std::string bytes, const std::string& fileName, const Progress& progress) {
    SceneTextResult result;
    SceneText& text = result.text;
    text.fileName = fileName;
    text.bytes = std::move(bytes);
    text.form.lineEnd = lineEndOf(text.bytes);
    text.form.codePage = codePageOf(text.bytes);
    text.form.isDoubleByte = isDoubleByte(text.form.codePage);
    CutText cut = cutStatements(text.bytes, text.form.isDoubleByte, progress);
    if (cut.fault && text.form.isDoubleByte) {
        // Some files have strings of another code page than their header says.
        CutText plain = cutStatements(text.bytes);
        if (!plain.fault) {
            cut = std::move(plain);
            text.form.isDoubleByte = false;
        }
    }
    if (cut.fault) {
        result.error = placeText(text.fileName, text.bytes, cut.fault.offset) + ": " + cut.fault.text;
        return result;
    }
    text.statements = std::move(cut.statements);
    text.statements.shrink_to_fit();
    readUnits(text);
    return result;
}

SceneText headerText(const SceneText& of) {
    const std::size_t first = of.statements.empty() ? of.bytes.size() : of.statements.front().begin;
    std::string header = of.bytes.substr(0, first);
    for (std::uint32_t k = 0; k < of.statements.size(); ++k) {
        const StatementKind kind = of.statements[k].kind;
        if (kind == StatementKind::CreateNode) break;
        if (kind != StatementKind::Requires && kind != StatementKind::CurrentUnit &&
            kind != StatementKind::FileInfo)
            continue;
        header += of.statement(k);
        header += of.form.lineEnd;
    }
    header += "// End of " + of.fileName + of.form.lineEnd;
    return makeSceneText(std::move(header), of.fileName).text;
}

SceneText emptySceneText(double framesPerSecond) {
    std::string header =
        "//Maya ASCII 2025 scene\n//Name: untitled\n//Codeset: UTF-8\nrequires maya \"2025\";\n"
        "currentUnit -l centimeter -a degree -t ";
    header += text::timeUnitName(framesPerSecond);
    header +=
        ";\nfileInfo \"application\" \"maya\";\nfileInfo \"product\" \"Maya 2025\";\n"
        "fileInfo \"version\" \"2025\";\n// End of untitled\n";
    return makeSceneText(std::move(header), "untitled").text;
}

}  // namespace host::scene
