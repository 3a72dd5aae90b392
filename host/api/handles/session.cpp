#include "api/handles/session.h"

#include <cassert>

namespace host::api {

namespace {

Session* currentSession = nullptr;

}  // namespace

Session::Session(mel::CommandRegistry& commands) : commands_(commands) {
    assert(currentSession == nullptr);
    currentSession = this;
}

Session::~Session() {
    currentSession = nullptr;
}

const graph::RemovalLog* Session::removals() {
    return currentSession != nullptr ? currentSession->graph().removals() : nullptr;
}

Session& Session::current() {
    assert(currentSession != nullptr);
    return *currentSession;
}

}  // namespace host::api
