// MArgParser and MArgDatabase.

#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MArgParser.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "api/commands/argumentAccess.h"
#include "api/commands/syntaxAccess.h"
#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "api/handles/selectionAccess.h"
#include "api/handles/session.h"
#include "graph/names.h"
#include "mel/argumentParser.h"

using host::api::Answer;
using host::api::answerIf;
using host::api::ArgumentAccess;
using host::api::failure;
using host::api::report;
using host::api::scene;
using host::api::SelectionAccess;
using host::api::Session;
using host::api::SyntaxAccess;
using host::graph::Selection;
using host::graph::SelectionItem;
using host::mel::Value;

OPENMAYA_MAJOR_NAMESPACE_OPEN

struct MArgParser::Parsed {
    Parsed(const host::api::SyntaxTable& source, const MArgList& words)
        : table(source),
          line(host::mel::parseArguments(table.syntax, std::vector<Value>(ArgumentAccess::words(words)),
                                         scene().framesPerSecond())) {}

    /// The values of one use of a flag; null if the command line did not fit or there is no such use.
    const std::vector<Value>* use(const char* flag, unsigned int index) const {
        if (!isValid || flag == nullptr) return nullptr;
        const int count = line.arguments.uses(flag);
        return static_cast<int>(index) < count && static_cast<int>(index) >= 0
                   ? &line.arguments.values(flag, static_cast<int>(index))
                   : nullptr;
    }

    /// The index-th argument of a flag. The arguments of all its uses are counted one after the other.
    const Value* flagValue(const char* flag, unsigned int index) const {
        for (unsigned int k = 0; const std::vector<Value>* values = use(flag, k); ++k) {
            if (index < values->size()) return &(*values)[index];
            index -= static_cast<unsigned int>(values->size());
        }
        return nullptr;
    }

    const Value* argument(unsigned int index) const {
        const bool exists = isValid && index < line.arguments.arguments().size();
        return exists ? &line.arguments.arguments()[index] : nullptr;
    }

    /// Success if the command line fits the syntax.
    MStatus check() const { return isValid ? MStatus(MStatus::kSuccess) : failure(); }

    host::api::SyntaxTable table;
    host::mel::ArgumentParseResult line;  // points into table
    bool isValid = false;
    Selection objects;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE

namespace {

/// Shows why the arguments do not fit, once per call of a command, and makes that call fail.
void reject(const std::string& error) {
    host::api::PluginCall* call = Session::current().call();
    const bool isRepeated = call != nullptr && call->hasArgumentError;
    if (call != nullptr) call->hasArgumentError = true;
    if (!isRepeated && !Session::current().commands().interpreter().isQuiet())
        scene().messages().error(error);
}

/// Why a number of objects does not fit the syntax; empty if it does.
std::string countError(const host::api::SyntaxTable& table, std::size_t count) {
    if (count < table.minimumObjects) return "Not enough objects or values.";
    return count > table.maximumObjects ? "Too many objects or values." : "";
}

// Converts a value to the type of `result`. A text is not a number.
MStatus convert(const Value* value, bool& result) {
    if (value == nullptr || !value->isNumber()) return failure();
    result = value->toBool();
    return MStatus::kSuccess;
}

MStatus convert(const Value* value, int& result) {
    if (value == nullptr || !value->isNumber()) return failure();
    result = value->toInt();
    return MStatus::kSuccess;
}

MStatus convert(const Value* value, unsigned int& result) {
    if (value == nullptr || !value->isNumber()) return failure();
    result = static_cast<unsigned int>(value->toInt());
    return MStatus::kSuccess;
}

MStatus convert(const Value* value, double& result) {
    if (value == nullptr || !value->isNumber()) return failure();
    result = value->toFloat();
    return MStatus::kSuccess;
}

MStatus convert(const Value* value, MString& result) {
    if (value == nullptr) return failure();
    result = host::api::string(value->toString());
    return MStatus::kSuccess;
}

MStatus convert(const Value* value, MSelectionList& result) {
    if (value == nullptr) return failure();
    result.clear();
    return result.add(host::api::string(value->toString()));
}

template <typename Result>
Result converted(const Value* value, MStatus* status) {
    Result result{};
    report(status, convert(value, result));
    return result;
}

}  // namespace

OPENMAYA_MAJOR_NAMESPACE_OPEN

MArgParser::MArgParser(const MSyntax& syntax, const MArgList& arguments, MStatus* status)
    : parsed_(std::make_unique<Parsed>(SyntaxAccess::table(syntax), arguments)) {
    std::string error = parsed_->line.error;
    const std::size_t count = parsed_->line.arguments.objects().size();
    // Missing names may still come from the selection. Only the database reads it.
    const bool isCountKnown =
        parsed_->table.format != MSyntax::kSelectionList && !parsed_->table.usesSelection;
    if (error.empty() && isCountKnown) error = countError(parsed_->table, count);
    parsed_->isValid = error.empty();
    if (!parsed_->isValid) reject(error);
    report(status, parsed_->check());
}

MArgParser::~MArgParser() = default;

bool MArgParser::isFlagSet(const char* flag, MStatus* status) const {
    return answerIf(status, parsed_->check(), [&]() -> Answer<bool> {
        if (flag == nullptr || parsed_->table.syntax.find(flag) < 0) return MStatus::kInvalidParameter;
        return parsed_->line.arguments.isSet(flag);
    });
}

bool MArgParser::isEdit(MStatus* status) const {
    return answerIf(status, parsed_->check(), [&] { return parsed_->line.arguments.isEdit(); });
}

bool MArgParser::isQuery(MStatus* status) const {
    return answerIf(status, parsed_->check(), [&] { return parsed_->line.arguments.isQuery(); });
}

unsigned int MArgParser::numberOfFlagsUsed() const {
    return parsed_->isValid ? static_cast<unsigned int>(parsed_->line.arguments.flagsSet()) : 0U;
}

unsigned int MArgParser::numberOfFlagUses(const char* flag) const {
    if (!parsed_->isValid || flag == nullptr) return 0;
    return static_cast<unsigned int>(parsed_->line.arguments.uses(flag));
}

MStatus MArgParser::getFlagArgumentList(const char* flag, unsigned int index, MArgList& arguments) const {
    const std::vector<Value>* values = parsed_->use(flag, index);
    if (values == nullptr) return failure();
    ArgumentAccess::words(arguments) = *values;
    return MStatus::kSuccess;
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, bool& result) const {
    return convert(parsed_->flagValue(flag, index), result);
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, int& result) const {
    return convert(parsed_->flagValue(flag, index), result);
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, double& result) const {
    return convert(parsed_->flagValue(flag, index), result);
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, MString& result) const {
    return convert(parsed_->flagValue(flag, index), result);
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, unsigned& result) const {
    return convert(parsed_->flagValue(flag, index), result);
}

bool MArgParser::flagArgumentBool(const char* flag, unsigned int index, MStatus* status) const {
    return converted<bool>(parsed_->flagValue(flag, index), status);
}

int MArgParser::flagArgumentInt(const char* flag, unsigned int index, MStatus* status) const {
    return converted<int>(parsed_->flagValue(flag, index), status);
}

double MArgParser::flagArgumentDouble(const char* flag, unsigned int index, MStatus* status) const {
    return converted<double>(parsed_->flagValue(flag, index), status);
}

MString MArgParser::flagArgumentString(const char* flag, unsigned int index, MStatus* status) const {
    return converted<MString>(parsed_->flagValue(flag, index), status);
}

MStatus MArgParser::getCommandArgument(unsigned int index, bool& result) const {
    return convert(parsed_->argument(index), result);
}

MStatus MArgParser::getCommandArgument(unsigned int index, int& result) const {
    return convert(parsed_->argument(index), result);
}

MStatus MArgParser::getCommandArgument(unsigned int index, double& result) const {
    return convert(parsed_->argument(index), result);
}

MStatus MArgParser::getCommandArgument(unsigned int index, MString& result) const {
    return convert(parsed_->argument(index), result);
}

bool MArgParser::commandArgumentBool(unsigned int index, MStatus* status) const {
    return converted<bool>(parsed_->argument(index), status);
}

int MArgParser::commandArgumentInt(unsigned int index, MStatus* status) const {
    return converted<int>(parsed_->argument(index), status);
}

double MArgParser::commandArgumentDouble(unsigned int index, MStatus* status) const {
    return converted<double>(parsed_->argument(index), status);
}

MString MArgParser::commandArgumentString(unsigned int index, MStatus* status) const {
    return converted<MString>(parsed_->argument(index), status);
}

MStatus MArgParser::getObjects(MStringArray& result) const {
    result.clear();
    if (!parsed_->isValid || parsed_->table.format == MSyntax::kNone) return failure();
    for (const std::string& name : parsed_->line.arguments.objectNames())
        result.append(host::api::string(name));
    if (result.length() > 0 || !parsed_->table.usesSelection) return MStatus::kSuccess;
    MSelectionList selected;
    SelectionAccess::items(selected) = scene().selection().items();
    return selected.getSelectionStrings(result);
}

MArgDatabase::MArgDatabase(const MSyntax& syntax, const MArgList& arguments, MStatus* status)
    : MArgParser(syntax, arguments, status) {
    if (!parsed_->isValid || parsed_->table.format != MSyntax::kSelectionList) return;
    std::string error;
    const std::vector<std::string> names = parsed_->line.arguments.objectNames();
    for (const std::string& name : names) {
        const host::graph::NameMatches matches = host::graph::findAll(scene(), name);
        if (matches.failure != host::graph::NameFailure::None) {
            error = matches.errorText(name);
            break;
        }
        // A selection contains each object once: components of one object become one item.
        for (const SelectionItem& item : matches.items)
            parsed_->objects.add(item);
    }
    if (names.empty() && parsed_->table.usesSelection) parsed_->objects = scene().selection();
    const std::size_t count = names.empty() ? parsed_->objects.items().size() : names.size();
    if (error.empty()) error = countError(parsed_->table, count);
    if (error.empty()) return;
    parsed_->isValid = false;
    reject(error);
    report(status, failure());
}

MArgDatabase::~MArgDatabase() = default;

MStatus MArgDatabase::getObjects(MSelectionList& result) const {
    if (!parsed_->isValid || parsed_->table.format != MSyntax::kSelectionList) return failure();
    SelectionAccess::items(result) = parsed_->objects.items();
    return MStatus::kSuccess;
}

MStatus MArgDatabase::getFlagArgument(const char* flag, unsigned int index, MSelectionList& result) const {
    return convert(parsed_->flagValue(flag, index), result);
}

MStatus MArgDatabase::getCommandArgument(unsigned int index, MSelectionList& result) const {
    return convert(parsed_->argument(index), result);
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
