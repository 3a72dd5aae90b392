#include <maya/MGlobal.h>
#include <maya/MPxCommand.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "api/commands/commandAccess.h"
#include "api/commands/scriptValues.h"
#include "api/handles/conversions.h"
#include "api/handles/session.h"

using host::api::PluginCall;
using host::api::Session;
using host::mel::Value;

namespace {

/// Keeps the result of the running command. Outside a command, the result is dropped.
void keepResult(Value value) {
    if (PluginCall* call = Session::current().call()) call->result = std::move(value);
}

template <typename Element>
void append(std::vector<Element> added) {
    PluginCall* call = Session::current().call();
    if (call == nullptr) return;
    Value& result = call->result;
    if (auto* elements = result.getIf<std::vector<Element>>()) {
        elements->insert(elements->end(), added.begin(), added.end());
        return;
    }
    if (const auto* single = result.getIf<Element>()) {
        added.insert(added.begin(), *single);
    } else if (!result.isNone()) {
        return;
    }
    result = Value(std::move(added));
}

}  // namespace

OPENMAYA_MAJOR_NAMESPACE_OPEN

struct MPxCommand::Call {
    std::shared_ptr<const MSyntax> syntax;
};

MPxCommand::MPxCommand() : command(std::make_unique<Call>()) {}
MPxCommand::~MPxCommand() = default;

MStatus MPxCommand::doIt(const MArgList&) {
    return MStatus::kFailure;
}

MStatus MPxCommand::undoIt() {
    return MStatus::kFailure;
}

MStatus MPxCommand::redoIt() {
    return MStatus::kFailure;
}

bool MPxCommand::isUndoable() const {
    return false;
}

bool MPxCommand::hasSyntax() const {
    return command->syntax != nullptr;
}

MSyntax MPxCommand::syntax() const {
    return command->syntax != nullptr ? *command->syntax : MSyntax();
}

void MPxCommand::displayInfo(const MString& message) {
    MGlobal::displayInfo(message);
}

void MPxCommand::displayWarning(const MString& warning, bool) {
    MGlobal::displayWarning(warning);
}

void MPxCommand::displayError(const MString& error, bool) {
    MGlobal::displayError(error);
}

void MPxCommand::clearResult() {
    keepResult({});
}

void MPxCommand::setResult(unsigned int result) {
    keepResult(static_cast<int>(result));
}

void MPxCommand::setResult(int result) {
    keepResult(result);
}

void MPxCommand::setResult(double result) {
    keepResult(result);
}

void MPxCommand::setResult(bool result) {
    keepResult(result);
}

void MPxCommand::setResult(const MString& result) {
    keepResult(host::api::text(result));
}

void MPxCommand::setResult(const char* result) {
    setResult(MString(result));
}

void MPxCommand::setResult(const MIntArray& result) {
    keepResult(host::api::toValue(result));
}

void MPxCommand::setResult(const MDoubleArray& result) {
    keepResult(host::api::toValue(result));
}

void MPxCommand::setResult(const MStringArray& result) {
    keepResult(host::api::toValue(result));
}

void MPxCommand::appendToResult(int result) {
    append<int>({result});
}

void MPxCommand::appendToResult(double result) {
    append<double>({result});
}

void MPxCommand::appendToResult(const MString& result) {
    append<std::string>({host::api::text(result)});
}

void MPxCommand::appendToResult(const MStringArray& result) {
    append(host::api::toValue(result).toStringArray());
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE

namespace host::api {

void CommandAccess::setSyntax(MPxCommand& command, std::shared_ptr<const MSyntax> syntax) {
    command.command->syntax = std::move(syntax);
}

}  // namespace host::api
