#include "mel/interpreter.h"

#include "mel/evaluator.h"
#include "mel/parser.h"

namespace host::mel {

namespace {

std::string_view withoutDollar(std::string_view name) {
    if (!name.empty() && name.front() == '$') name.remove_prefix(1);
    return name;
}

}  // namespace

CommandResult RunResult::toCommandResult() && {
    CommandResult result;
    result.ok = ok;
    result.value = std::move(value);
    result.error = std::move(error.message);
    result.errorShown = error.shown;
    if (!ok) result.position = std::move(error.position);
    return result;
}

Interpreter::Interpreter(CommandTable& commands, Output& output, InterpreterOptions options)
    : evaluator_(std::make_unique<Evaluator>(*this, commands, output, options)) {}

Interpreter::~Interpreter() = default;

RunResult Interpreter::run(std::string_view text, std::string_view sourceName, const RunOptions& options) {
    return evaluator_->run(text, sourceName, options);
}

TextEnd Interpreter::endOf(std::string_view text) const {
    return parse(std::string(text), {}, evaluator_->globals()).end;
}

CommandResult Interpreter::callCommand(std::string_view name, std::vector<Value> arguments) {
    return evaluator_->callCommand(name, std::move(arguments));
}

bool Interpreter::hasProcedure(std::string_view name) const {
    return evaluator_->findProcedure(name, nullptr) != nullptr;
}

std::optional<std::string> Interpreter::procedureSource(std::string_view name) const {
    const auto bound = evaluator_->findProcedure(name, nullptr);
    return bound ? std::optional<std::string>(bound->program->fileName) : std::nullopt;
}

bool Interpreter::isBuiltinFunction(std::string_view name) {
    return builtinNumber(name) != kNoIndex;
}

const Value* Interpreter::globalVariable(std::string_view name) const {
    const Value* value = evaluator_->globals().find(withoutDollar(name));
    return value && !value->isNone() ? value : nullptr;
}

bool Interpreter::setGlobalVariable(std::string_view name, Value value) {
    Value& variable = evaluator_->globals().findOrCreate(withoutDollar(name));
    std::optional<Value> converted = value.convertedTo(variable.kind());
    if (converted) variable = std::move(*converted);
    return converted.has_value();
}

SourcePosition Interpreter::currentPosition() const {
    return evaluator_->currentPosition();
}
bool Interpreter::isQuiet() const {
    return evaluator_->isQuiet();
}
bool Interpreter::isRunning() const {
    return evaluator_->isRunning();
}
void Interpreter::setInterruptFlag(std::atomic<bool>& flag) {
    evaluator_->setInterruptFlag(flag);
}

void Interpreter::holdInterrupts(bool isHeld) {
    evaluator_->holdInterrupts(isHeld);
}

void Interpreter::stop() {
    evaluator_->stop();
}
bool Interpreter::isStopped() const {
    return evaluator_->isStopped();
}

}  // namespace host::mel
