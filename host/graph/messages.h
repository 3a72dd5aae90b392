#pragma once

#include <string>

namespace host::graph {

/// Receives messages. Implementations may be called from several threads at once.
class MessageSink {
  public:
    virtual ~MessageSink() = default;
    MessageSink() = default;
    MessageSink(const MessageSink&) = delete;
    MessageSink& operator=(const MessageSink&) = delete;

    /// Prints the text unchanged. No line break is added.
    virtual void print(const std::string& text) = 0;
    virtual void info(const std::string& text) = 0;
    virtual void warning(const std::string& text) = 0;
    virtual void error(const std::string& text) = 0;
};

}  // namespace host::graph
