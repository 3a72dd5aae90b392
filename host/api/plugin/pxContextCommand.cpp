#include <maya/MArgList.h>
#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>

#include <utility>

#include "api/commands/syntaxAccess.h"
#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "api/handles/session.h"
#include "api/plugin/toolAccess.h"

using host::api::failure;
using host::api::PluginCall;
using host::api::report;
using host::api::Session;
using host::api::SyntaxAccess;

namespace {

MStatus keepResult(host::mel::Value value) {
    PluginCall* call = Session::current().call();
    if (call == nullptr) return failure();
    call->result = std::move(value);
    return MStatus::kSuccess;
}

}  // namespace

OPENMAYA_MAJOR_NAMESPACE_OPEN

struct MPxContextCommand::State {
    MSyntax syntax;
    MArgList arguments;
};

MPxContextCommand::MPxContextCommand() : state_(std::make_unique<State>()) {}
MPxContextCommand::~MPxContextCommand() = default;

MStatus MPxContextCommand::doEditFlags() {
    return MStatus::kSuccess;
}

MStatus MPxContextCommand::doQueryFlags() {
    return MStatus::kSuccess;
}

MPxContext* MPxContextCommand::makeObj() {
    return nullptr;
}

MStatus MPxContextCommand::appendSyntax() {
    return MStatus::kSuccess;
}

MStatus MPxContextCommand::setResult(bool result) {
    return keepResult(result);
}

MStatus MPxContextCommand::setResult(int result) {
    return keepResult(result);
}

MStatus MPxContextCommand::setResult(double result) {
    return keepResult(result);
}

MStatus MPxContextCommand::setResult(const MString& result) {
    return keepResult(host::api::text(result));
}

MSyntax MPxContextCommand::syntax(MStatus* status) const {
    report(status, MStatus::kSuccess);
    return SyntaxAccess::shared(state_->syntax);
}

MArgParser MPxContextCommand::parser(MStatus* status) const {
    return MArgParser(state_->syntax, state_->arguments, status);
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE

namespace host::api {

MSyntax& ToolAccess::syntax(MPxContextCommand& command) {
    return command.state_->syntax;
}

void ToolAccess::setArguments(MPxContextCommand& command, const MArgList& arguments) {
    command.state_->arguments = arguments;
}

}  // namespace host::api
