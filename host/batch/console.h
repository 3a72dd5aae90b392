#pragma once

#include <fstream>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "graph/messages.h"
#include "mel/commandTable.h"
#include "mel/interpreter.h"

namespace host::batch {

/// The program's output. What scripts print, and the results of typed lines, go to standard output. Messages
/// go to standard error, in the forms of the script editor. All of it also goes to the log file, if there is
/// one.
///
/// Warnings and errors say where in a script they arose, and in which procedures. Commands do not know this:
/// their messages name the statement that is being executed.
///
/// Any thread may call it. The text of each call comes out in one piece.
class Console final : public mel::Output, public graph::MessageSink {
  public:
    /// Copies all further output to a file, and replaces that file.
    /// @return false if it cannot be written
    bool openLog(const std::string& path);
    /// Copies all further output to one more file, and replaces that file.
    /// @return a number for `closeCopy`; -1 if it cannot be written
    int openCopy(const std::string& path);
    /// @return false if there is no such copy, or not all of it reached its file
    bool closeCopy(int number);
    /// The numbers of the open copies.
    std::vector<int> copies();

    /// Names the interpreter whose statements the messages of commands belong to, if they come from the
    /// thread of this call.
    /// @param interpreter  null: no statements from now on
    void follow(const mel::Interpreter* interpreter);

    void print(std::string_view text) override;
    void info(std::string_view text) override;
    void warning(std::string_view text, const mel::SourcePosition& position) override;
    void error(std::string_view text, const mel::SourcePosition& position) override;
    void result(std::string_view text) override;

    void print(const std::string& text) override { print(std::string_view(text)); }
    void info(const std::string& text) override { info(std::string_view(text)); }
    void warning(const std::string& text) override { warning(text, place()); }
    void error(const std::string& text) override { error(text, place()); }

    /// Whether everything printed so far has reached standard output, and everything at all the log. Names on
    /// standard error what has not.
    bool hasArrived();

    /// Flushes standard output, so that a question that follows appears after it.
    void flush();

  private:
    mel::SourcePosition place() const;
    void write(std::string_view text, bool isMessage);

    const mel::Interpreter* interpreter_ = nullptr;
    std::thread::id thread_;  // the thread on which the interpreter runs
    std::mutex mutex_;
    std::string logPath_;
    std::ofstream log_;
    std::map<int, std::ofstream> copies_;
    int lastCopy_ = 0;
};

}  // namespace host::batch
