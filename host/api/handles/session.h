#pragma once

#include <atomic>
#include <string>

#include "graph/graph.h"
#include "mel/commandRegistry.h"

namespace host::api {

/// One call of a plug-in's command while it runs, and later its undo or redo.
struct PluginCall {
    std::string owner;  // the plug-in's name
    mel::Value result{};
    /// The arguments did not fit the command's syntax: the call fails, whatever the command returns.
    bool hasArgumentError = false;
    /// The command has shown an error, perhaps from another thread.
    std::atomic<bool> hasShownError{false};
};

/// Connects the API, whose functions know no scene, to the one running scene. Only one session exists at a
/// time. The registry and its graph must outlive it.
class Session {
  public:
    explicit Session(mel::CommandRegistry& commands);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// The running session. There is one whenever an API call may arrive.
    static Session& current();
    /// What has been removed from the running session's scene (graph::Graph::removals); null if no variant
    /// needs it, or without a session.
    static const graph::RemovalLog* removals();

    graph::Graph& graph() { return commands_.graph(); }
    mel::CommandRegistry& commands() { return commands_; }

    /// The innermost running call; null outside calls.
    PluginCall* call() const { return call_; }

    /// How often a view was asked to draw itself.
    int refreshes() const { return refreshes_; }
    void countRefresh() { ++refreshes_; }

  private:
    friend class CallScope;

    mel::CommandRegistry& commands_;
    PluginCall* call_ = nullptr;
    int refreshes_ = 0;
};

/// Makes a call the running one for a scope. Meanwhile the graph records nothing: a plug-in must undo its own
/// changes.
class CallScope {
  public:
    explicit CallScope(PluginCall& call)
        : outer_(Session::current().call_), silent_(Session::current().graph(), nullptr) {
        Session::current().call_ = &call;
    }
    ~CallScope() { Session::current().call_ = outer_; }
    CallScope(const CallScope&) = delete;
    CallScope& operator=(const CallScope&) = delete;

  private:
    PluginCall* outer_;
    graph::RecordingScope silent_;
};

/// The scene of the running session.
inline graph::Graph& scene() {
    return Session::current().graph();
}

}  // namespace host::api
