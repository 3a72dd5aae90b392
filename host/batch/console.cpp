#include "batch/console.h"

#include <filesystem>
#include <iostream>

namespace host::batch {

namespace {

/// "file: scene.mel line 3.5 in inner, outer: ", as far as it is known.
std::string placeText(const mel::SourcePosition& position) {
    if (position.line == 0) return {};
    std::string text = position.file.empty() ? std::string() : "file: " + position.file + ' ';
    text += "line " + std::to_string(position.line) + '.' + std::to_string(position.column);
    const char* separator = " in ";
    for (const std::string& procedure : position.procedures) {
        text += separator + procedure;
        separator = ", ";
    }
    return text + ": ";
}

std::string message(std::string_view kind, std::string_view text) {
    return "// " + std::string(kind) + std::string(text) + " //\n";
}

}  // namespace

bool Console::openLog(const std::string& path) {
    logPath_ = path;
    log_.open(std::filesystem::u8path(path), std::ios::binary | std::ios::trunc);
    if (log_.is_open()) return true;
    // The caller reports it. Nothing had to be written to the log yet.
    log_.clear();
    return false;
}

int Console::openCopy(const std::string& path) {
    std::ofstream copy(std::filesystem::u8path(path), std::ios::binary | std::ios::trunc);
    if (!copy.is_open()) return -1;
    const std::lock_guard<std::mutex> lock(mutex_);
    copies_.emplace(++lastCopy_, std::move(copy));
    return lastCopy_;
}

bool Console::closeCopy(int number) {
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto copy = copies_.find(number);
    if (copy == copies_.end()) return false;
    copy->second.close();
    const bool isWhole = static_cast<bool>(copy->second);
    copies_.erase(copy);
    return isWhole;
}

std::vector<int> Console::copies() {
    const std::lock_guard<std::mutex> lock(mutex_);
    std::vector<int> numbers;
    for (const auto& [number, copy] : copies_)
        numbers.push_back(number);
    return numbers;
}

void Console::follow(const mel::Interpreter* interpreter) {
    interpreter_ = interpreter;
    thread_ = std::this_thread::get_id();
}

/// Another thread than the script's may not look at what the script is doing.
mel::SourcePosition Console::place() const {
    if (interpreter_ == nullptr || std::this_thread::get_id() != thread_) return {};
    return interpreter_->currentPosition();
}

void Console::print(std::string_view text) {
    write(text, false);
}

void Console::info(std::string_view text) {
    write("// " + std::string(text) + '\n', true);
}

void Console::warning(std::string_view text, const mel::SourcePosition& position) {
    write(message("Warning: ", placeText(position) + std::string(text)), true);
}

void Console::error(std::string_view text, const mel::SourcePosition& position) {
    write(message("Error: ", placeText(position) + std::string(text)), true);
}

void Console::result(std::string_view text) {
    write(message("Result: ", text), false);
}

void Console::flush() {
    const std::lock_guard<std::mutex> lock(mutex_);
    std::cout.flush();
}

bool Console::hasArrived() {
    const std::lock_guard<std::mutex> lock(mutex_);
    std::cout.flush();
    // A stream remembers the failure of any write.
    if (!std::cout) std::cerr << message("Error: ", "Standard output could not be written.");
    if (!log_) std::cerr << message("Error: ", "The log file " + logPath_ + " could not be written.");
    return std::cout && log_;
}

void Console::write(std::string_view text, bool isMessage) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (isMessage) std::cout.flush();
    (isMessage ? std::cerr : std::cout) << text;
    if (log_.is_open()) {
        log_ << text;
        log_.flush();
    }
    for (auto& [number, copy] : copies_)
        copy << text;
}

}  // namespace host::batch
