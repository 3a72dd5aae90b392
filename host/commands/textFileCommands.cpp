// The commands about files and folders of any kind: getFileList filetest sysFile, and fopen fclose fprint
// fgetline.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <system_error>

#include "commands/commandSupport.h"
#include "commands/commands.h"

namespace host::commands {

namespace {

using std::filesystem::u8path;

/// Names by ascending name: the order of the file system differs from machine to machine.
CommandResult getFileList(CommandContext&, const ParsedArguments& arguments) {
    if (!arguments.isSet("folder")) return CommandResult::failure("getFileList: No folder was named.");
    const std::string pattern = arguments.text("filespec", "*");
    std::vector<std::string> names;
    // Without such a folder there are no files, as in Maya.
    std::error_code failure;
    std::filesystem::directory_iterator entry(u8path(arguments.text("folder")), failure);
    for (; !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
        std::string name = entry->path().filename().u8string();
        if (graph::matchesPattern(name, pattern)) names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end());
    return CommandResult::success(std::move(names));
}

CommandResult filetest(CommandContext&, const ParsedArguments& arguments) {
    const std::filesystem::path path = u8path(arguments.objectNames().front());
    std::error_code ignored;
    if (arguments.flagsSet() != 1) return CommandResult::failure("filetest: Exactly one test is needed.");
    return CommandResult::success(arguments.isSet("d") ? std::filesystem::is_directory(path, ignored)
                                                       : std::filesystem::is_regular_file(path, ignored));
}

CommandResult sysFile(CommandContext&, const ParsedArguments& arguments) {
    const std::filesystem::path path = u8path(arguments.objectNames().front());
    std::error_code failure;
    if (arguments.flagsSet() != 1) return CommandResult::failure("sysFile: Exactly one action is needed.");
    if (arguments.isSet("makeDir")) {
        // Standard libraries disagree on whether a slash at the end names one more folder.
        std::filesystem::create_directories(path.has_filename() ? path : path.parent_path(), failure);
        return CommandResult::success(!failure && std::filesystem::is_directory(path, failure));
    }
    const bool isFile = std::filesystem::is_regular_file(std::filesystem::symlink_status(path, failure));
    return CommandResult::success(isFile && std::filesystem::remove(path, failure));
}

struct OpenFile {
    std::string path;
    std::fstream stream;
    bool isWritten = false;
};

/// By the number that the script has.
struct OpenFiles {
    std::map<int, OpenFile> byNumber;
    int last = 0;
};

/// Null for a number that is not in use.
OpenFile* openFile(OpenFiles& files, int number) {
    const auto found = files.byNumber.find(number);
    return found != files.byNumber.end() ? &found->second : nullptr;
}

CommandResult notOpen(const std::string& command) {
    return CommandResult::failure(command + ": There is no open file of this number.");
}

/// 0 for a file that cannot be opened.
CommandResult fopen(OpenFiles& files, const ParsedArguments& arguments) {
    const std::vector<std::string> words = arguments.objectNames();
    const std::string mode = words.size() > 1 ? words[1] : "w";
    if (mode != "r" && mode != "w" && mode != "a")
        return CommandResult::failure("fopen: The mode '" + mode + "' is not covered by this host.");
    OpenFile file;
    file.path = words.front();
    file.isWritten = mode != "r";
    // A folder opens for reading on some systems.
    std::error_code ignored;
    if (std::filesystem::is_directory(u8path(file.path), ignored)) return CommandResult::success(0);
    const std::ios::openmode way = mode == "r"   ? std::ios::in
                                   : mode == "w" ? std::ios::out | std::ios::trunc
                                                 : std::ios::out | std::ios::app;
    file.stream.open(u8path(file.path), way | std::ios::binary);
    if (!file.stream.is_open()) return CommandResult::success(0);
    files.byNumber.emplace(++files.last, std::move(file));
    return CommandResult::success(files.last);
}

CommandResult fclose(OpenFiles& files, const ParsedArguments& arguments) {
    const int number = arguments.arguments()[0].toInt();
    OpenFile* file = openFile(files, number);
    if (file == nullptr) return notOpen("fclose");
    file->stream.close();
    const bool isLost = file->isWritten && !file->stream;
    const std::string path = file->path;
    files.byNumber.erase(number);
    return isLost ? CommandResult::failure("fclose: " + path + " could not be written.")
                  : CommandResult::success();
}

CommandResult fprint(OpenFiles& files, const ParsedArguments& arguments) {
    OpenFile* file = openFile(files, arguments.objects()[0].toInt());
    if (file == nullptr) return notOpen("fprint");
    // A write that fails is remembered by the stream; closing reports it.
    file->stream << arguments.objects()[1].toString();
    return CommandResult::success();
}

/// The next line with its line end; empty after the last one.
CommandResult fgetline(OpenFiles& files, const ParsedArguments& arguments) {
    OpenFile* file = openFile(files, arguments.arguments()[0].toInt());
    if (file == nullptr) return notOpen("fgetline");
    std::string line;
    if (std::getline(file->stream, line) && !file->stream.eof()) line += '\n';
    return CommandResult::success(std::move(line));
}

}  // namespace

void registerTextFileCommands(mel::CommandRegistry& registry) {
    Syntax listing;
    listing.flag("fld", "folder", {kText}).flag("fs", "filespec", {kText});
    registry.add("getFileList", listing, getFileList);

    Syntax testing;
    testing.flag("d", "").flag("f", "").objects(ObjectKind::Strings, 1, 1);
    registry.add("filetest", testing, filetest, "b c g h k L p r s u w x");

    Syntax changing;
    changing.flag("md", "makeDir").flag("del", "delete").objects(ObjectKind::Strings, 1, 1);
    registry.add("sysFile", changing, sysFile, "cp copy mov move red removeEmptyDir ren rename");

    const auto files = std::make_shared<OpenFiles>();
    const auto add = [&](const char* name, const Syntax& syntax, auto run) {
        registry.add(name, syntax, [files, run](CommandContext&, const ParsedArguments& arguments) {
            return run(*files, arguments);
        });
    };
    // A text may look like a flag.
    const auto isText = [](const ParsedArguments&) { return true; };
    Syntax opening;
    opening.objects(ObjectKind::Strings, 1, 2).textsFollow(isText);
    add("fopen", opening, fopen);
    Syntax number;
    number.addArgument(kWhole);
    add("fclose", number, fclose);
    add("fgetline", number, fgetline);
    Syntax printing;
    printing.objects(ObjectKind::Values, 2, 2).textsFollow(isText);
    add("fprint", printing, fprint);
}

}  // namespace host::commands
