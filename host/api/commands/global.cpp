#include <maya/MCommandResult.h>
#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>
#include <maya/MTypes.h>

#include <utility>
#include <variant>

#include "api/commands/commandAccess.h"
#include "api/commands/scriptValues.h"
#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "api/handles/objectAccess.h"
#include "api/handles/selectionAccess.h"
#include "api/handles/session.h"

using host::api::CommandAccess;
using host::api::failure;
using host::api::ObjectAccess;
using host::api::report;
using host::api::scene;
using host::api::SelectionAccess;
using host::api::Session;
using host::api::succeeded;
using host::api::text;
using host::graph::NodeRef;
using host::graph::OptionVariables;
using host::graph::Selection;
using host::graph::SelectionItem;

namespace {

host::mel::RunResult runText(const MString& command, bool displayEnabled, bool undoEnabled) {
    return Session::current().commands().executeText({command.asChar(), command.length()},
                                                     {undoEnabled, displayEnabled});
}

template <typename Result>
MStatus runForResult(const MString& command, Result& result, bool displayEnabled, bool undoEnabled) {
    const host::mel::RunResult run = runText(command, displayEnabled, undoEnabled);
    return run.ok ? host::api::convert(run.value, result) : failure();
}

const OptionVariables::Value* findVariable(const MString& name, bool* exists) {
    const OptionVariables::Value* found = scene().optionVariables().find(text(name));
    if (exists != nullptr) *exists = found != nullptr;
    return found;
}

/// An int or float variable as a number; 0 for any other variable.
double numberOf(const OptionVariables::Value* variable) {
    if (variable == nullptr) return 0.0;
    if (const int* whole = std::get_if<int>(variable)) return *whole;
    const double* number = std::get_if<double>(variable);
    return number != nullptr ? *number : 0.0;
}

Selection adjusted(const std::vector<SelectionItem>& items, MGlobal::ListAdjustment adjustment) {
    const bool startsEmpty = adjustment == MGlobal::kReplaceList || adjustment == MGlobal::kAddToHeadOfList;
    Selection selection = startsEmpty ? Selection() : scene().selection();
    for (const SelectionItem& item : items) {
        if (!item.node->isAlive()) continue;
        if (adjustment == MGlobal::kXORWithList) {
            selection.toggle(item);
        } else if (adjustment == MGlobal::kRemoveFromList) {
            selection.remove(item);
        } else {
            selection.add(item);
        }
    }
    if (adjustment == MGlobal::kAddToHeadOfList) {
        for (const SelectionItem& item : scene().selection().items())
            selection.add(item);
    }
    return selection;
}

}  // namespace

OPENMAYA_MAJOR_NAMESPACE_OPEN

MGlobal::MMayaState MGlobal::mayaState(MStatus* status) {
    return succeeded(status, kBatch);
}

MString MGlobal::mayaVersion() {
    return "2025";
}

int MGlobal::apiVersion() {
    return MAYA_API_VERSION;
}

void MGlobal::displayInfo(const MString& message) {
    scene().messages().info(text(message));
}

void MGlobal::displayWarning(const MString& warning) {
    scene().messages().warning(text(warning));
}

void MGlobal::displayError(const MString& error) {
    if (host::api::PluginCall* call = Session::current().call()) call->hasShownError = true;
    scene().messages().error(text(error));
}

MStatus MGlobal::executeCommand(const MString& command, bool displayEnabled, bool undoEnabled) {
    return runText(command, displayEnabled, undoEnabled).ok ? MStatus(MStatus::kSuccess) : failure();
}

MStatus MGlobal::executeCommand(const MString& command, int& result, bool displayEnabled, bool undoEnabled) {
    return runForResult(command, result, displayEnabled, undoEnabled);
}

MStatus MGlobal::executeCommand(const MString& command, MIntArray& result, bool displayEnabled,
                                bool undoEnabled) {
    return runForResult(command, result, displayEnabled, undoEnabled);
}

MStatus MGlobal::executeCommand(const MString& command, double& result, bool displayEnabled,
                                bool undoEnabled) {
    return runForResult(command, result, displayEnabled, undoEnabled);
}

MStatus MGlobal::executeCommand(const MString& command, MDoubleArray& result, bool displayEnabled,
                                bool undoEnabled) {
    return runForResult(command, result, displayEnabled, undoEnabled);
}

MStatus MGlobal::executeCommand(const MString& command, MString& result, bool displayEnabled,
                                bool undoEnabled) {
    return runForResult(command, result, displayEnabled, undoEnabled);
}

MStatus MGlobal::executeCommand(const MString& command, MStringArray& result, bool displayEnabled,
                                bool undoEnabled) {
    return runForResult(command, result, displayEnabled, undoEnabled);
}

MStatus MGlobal::executeCommand(const MString& command, MCommandResult& result, bool displayEnabled,
                                bool undoEnabled) {
    host::mel::RunResult run = runText(command, displayEnabled, undoEnabled);
    if (!run.ok) return failure();
    CommandAccess::setContent(result, std::move(run.value));
    return MStatus::kSuccess;
}

MString MGlobal::executeCommandStringResult(const MString& command, bool displayEnabled, bool undoEnabled,
                                            MStatus* status) {
    MString result;
    report(status, runForResult(command, result, displayEnabled, undoEnabled));
    return result;
}

MStatus MGlobal::getActiveSelectionList(MSelectionList& destination, bool) {
    SelectionAccess::items(destination) = scene().selection().items();
    return MStatus::kSuccess;
}

MStatus MGlobal::setActiveSelectionList(const MSelectionList& source, ListAdjustment adjustment) {
    scene().select(adjusted(SelectionAccess::items(source), adjustment));
    return MStatus::kSuccess;
}

MStatus MGlobal::selectByName(const MString& name, ListAdjustment adjustment) {
    MSelectionList list;
    const MStatus status = list.add(name);
    return status ? setActiveSelectionList(list, adjustment) : status;
}

MStatus MGlobal::getSelectionListByName(const MString& name, MSelectionList& list) {
    return list.add(name);
}

MStatus MGlobal::clearSelectionList() {
    scene().select(Selection());
    return MStatus::kSuccess;
}

MStatus MGlobal::deleteNode(MObject& object) {
    const NodeRef node = ObjectAccess::node(object);
    if (node == nullptr) return host::api::missingObject();
    scene().deleteNodes({node});
    return MStatus::kSuccess;
}

bool MGlobal::optionVarExists(const MString& name) {
    return findVariable(name, nullptr) != nullptr;
}

int MGlobal::optionVarIntValue(const MString& name, bool* exists) {
    return static_cast<int>(numberOf(findVariable(name, exists)));
}

double MGlobal::optionVarDoubleValue(const MString& name, bool* exists) {
    return numberOf(findVariable(name, exists));
}

MString MGlobal::optionVarStringValue(const MString& name, bool* exists) {
    const OptionVariables::Value* variable = findVariable(name, exists);
    const auto* value = variable != nullptr ? std::get_if<std::string>(variable) : nullptr;
    return value != nullptr ? host::api::string(*value) : MString();
}

bool MGlobal::setOptionVarValue(const MString& name, int value) {
    scene().optionVariables().set(text(name), value);
    return true;
}

bool MGlobal::setOptionVarValue(const MString& name, double value) {
    scene().optionVariables().set(text(name), value);
    return true;
}

bool MGlobal::setOptionVarValue(const MString& name, MString value) {
    scene().optionVariables().set(text(name), text(value));
    return true;
}

void MGlobal::removeOptionVar(const MString& name) {
    scene().optionVariables().remove(text(name));
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
