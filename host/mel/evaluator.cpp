// Runs of texts and calls by name: the outer frame of the evaluator, with errors, limits and interrupts.

#include "mel/evaluator.h"

#include <new>

#include "mel/operators.h"
#include "mel/parser.h"

namespace host::mel {

namespace {

bool isSingleExpression(const Program& program) {
    return program.body.count == 1 &&
           program.statements[program.lists[program.body.first]].kind == Statement::Kind::Expression;
}

}  // namespace

Frame::Frame(const Program& text, const ProcedureMap* procedures, Index localCount)
    : program(text), fileProcedures(procedures), values(localCount), slots(localCount) {
    for (std::size_t i = 0; i < slots.size(); ++i)
        slots[i] = &values[i];
}

/// Connects the program's global names to their variables and makes its procedures known.
void Evaluator::bind(const std::shared_ptr<Program>& program) {
    program->globalValues.reserve(program->globals.size());
    for (const GlobalReference& global : program->globals)
        program->globalValues.push_back(&globals_.findOrCreate(global.name));
    ProcedureMap& local = fileProcedures_[program->fileName];
    for (const Procedure& procedure : program->procedures) {
        ProcedureMap& map = procedure.global ? procedures_ : local;
        // The key is part of the text of the program that is stored with it, so both are replaced together.
        map.erase(procedure.name);
        auto bound = std::make_shared<BoundProcedure>(BoundProcedure{program, &procedure, &local});
        map.emplace(procedure.name, std::move(bound));
    }
}

RunResult Evaluator::run(std::string_view text, std::string_view sourceName, const RunOptions& options) {
    RunResult result;
    if (stopped_) return result;
    const Depth depth(depth_);
    if (depth.count == 1) {
        steps_ = 0;
        isBroken_ = false;
        quiet_ = 0;
    }
    if (depth.count > options_.depthLimit) {
        fail("Too many nested calls.");
        result.ok = false;
    } else {
        Frame* const caller = frame_;
        try {
            result.ok = runText(text, sourceName, options, result.value);
        } catch (const std::bad_alloc&) {
            frame_ = caller;
            failForMemory();
            result.ok = false;
        }
        if (depth.count == 1 && reserve_ == nullptr) takeReserve();
    }
    if (stopped_) result = {};
    if (!result.ok) {
        reportError(depth.count == 1 || options.showErrors);
        result.value = {};
        result.error = std::move(error_);
    }
    error_ = {};
    return result;
}

bool Evaluator::runText(std::string_view text, std::string_view sourceName, const RunOptions& options,
                        Value& value) {
    ParseResult parsed = parse(std::string(text), std::string(sourceName), globals_, options.firstLine);
    if (!parsed.program) {
        if (options.isComposed && frame_ != nullptr) return fail(std::move(parsed.error));
        error_ = {std::move(parsed.error), std::move(parsed.position), false};
        return false;
    }
    bind(parsed.program);
    const Program& program = *parsed.program;
    const ProcedureMap& local = fileProcedures_[program.fileName];
    if (!runProgram(program, local, options.isComposed, value)) return false;
    const bool echoes = options.echoResult || (options.echoSingleCall && isSingleExpression(program));
    if (echoes && !stopped_ && !value.isNone()) output_.result(value.toString());
    return true;
}

/// Only if much more memory is free: after a failure some is needed too, for example to clear a variable.
void Evaluator::takeReserve() {
    constexpr std::size_t kReserve = std::size_t{256} * 1024;
    const std::unique_ptr<char[]> free(new (std::nothrow) char[16 * kReserve]);
    if (free != nullptr) reserve_.reset(new (std::nothrow) char[kReserve]);
}

/// The values that filled the memory may still exist.
void Evaluator::failForMemory() {
    reserve_.reset();
    fail("Out of memory.");
}

bool Evaluator::runProgram(const Program& program, const ProcedureMap& fileProcedures, bool isComposed,
                           Value& value) {
    Frame frame(program, &fileProcedures, program.localCount);
    frame.isComposed = isComposed;
    frame.caller = frame_;
    frame_ = &frame;
    const int quiet = quiet_;
    Flow flow = Flow::Normal;
    try {
        flow = executeBody(frame, value);
    } catch (const std::bad_alloc&) {
        // The frames of the inner calls no longer exist: the place is this text's own statement.
        frame_ = &frame;
        quiet_ = quiet;
        failForMemory();
        flow = Flow::Fail;
    }
    frame_ = frame.caller;
    return flow != Flow::Fail;
}

/// Executes the statements of a text. `value` becomes that of the last one, if it has one.
Evaluator::Flow Evaluator::executeBody(Frame& frame, Value& value) {
    const Program& program = frame.program;
    Flow flow = Flow::Normal;
    for (Index i = 0; i < program.body.count && flow == Flow::Normal; ++i) {
        const Index index = program.lists[program.body.first + i];
        const Statement& statement = program.statements[index];
        const bool last = i + 1 == program.body.count;
        flow = execute(index, frame);
        if (!last || flow != Flow::Normal) continue;
        if (statement.kind == Statement::Kind::Expression) value = std::move(frame.returned);
        if (statement.kind == Statement::Kind::Declare && statement.b != kNoIndex)
            value = variable(statement.a, frame);
    }
    if (flow == Flow::Return) value = std::move(frame.returned);
    return flow;
}

void Evaluator::reportError(bool show) {
    if (!show || error_.shown || isQuiet()) return;
    output_.error(error_.message, error_.position);
    error_.shown = true;
}

CommandResult Evaluator::callCommand(std::string_view name, std::vector<Value> arguments) {
    if (stopped_) return CommandResult::success();
    const Depth depth(depth_);
    CommandResult result;
    if (depth.count == 1) {
        steps_ = 0;
        isBroken_ = false;
    }
    if (depth.count > options_.depthLimit)
        result.ok = fail("Too many nested calls.");
    else
        result.ok = callByName(name, std::move(arguments), result.value);
    if (stopped_) result = {};
    if (!result.ok) {
        result.error = std::move(error_.message);
        result.errorShown = error_.shown;
        result.position = std::move(error_.position);
    }
    error_ = {};
    return result;
}

bool Evaluator::callByName(std::string_view name, std::vector<Value>&& arguments, Value& out) {
    if (const auto bound = findProcedure(name, nullptr))
        return callProcedureByName(*bound, std::move(arguments), out);
    const Index number = builtinNumber(name);
    const BuiltinFunction* builtin = number == kNoIndex ? nullptr : &builtinFunction(number);
    if (builtin && builtin->special == BuiltinFunction::Special::None) {
        if (arguments.size() < builtin->minimumArguments || arguments.size() > builtin->maximumArguments)
            return fail("Wrong number of arguments on call to " + std::string(name) + ".");
        std::vector<Value*> variables;
        variables.reserve(arguments.size());
        for (Value& argument : arguments)
            variables.push_back(&argument);
        BuiltinCall call{*this, variables.data(), variables.data(), variables.size(), {}, {}};
        if (!builtin->function(call)) return fail(std::move(call.error));
        out = std::move(call.result);
        return true;
    }
    if (builtin) return fail(std::string(name) + " is part of the language and cannot be called by name.");
    if (!commands_.has(name)) return callLoaded(name, std::move(arguments), out);
    return finishCommand(commands_.call(name, std::move(arguments), interpreter_), out);
}

/// Calls a procedure that no text before the call has defined: perhaps the script file of its name does.
bool Evaluator::callLoaded(std::string_view name, std::vector<Value>&& arguments, Value& out) {
    if (findProcedure(name, nullptr) == nullptr) {
        std::optional<CommandResult> loading = commands_.loadProcedure(name, interpreter_);
        Value ignored;
        if (loading && !finishCommand(std::move(*loading), ignored)) return false;
    }
    const auto bound = findProcedure(name, nullptr);
    if (!bound) return fail("Cannot find procedure \"" + std::string(name) + "\".");
    return callProcedureByName(*bound, std::move(arguments), out);
}

bool Evaluator::callProcedureByName(const BoundProcedure& bound, std::vector<Value>&& arguments, Value& out) {
    const std::vector<Parameter>& parameters = bound.procedure->parameters;
    if (arguments.size() != parameters.size())
        return fail("Wrong number of arguments on call to " + std::string(bound.procedure->name) + ".");
    Frame callee(*bound.program, bound.fileProcedures, bound.procedure->localCount);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::optional<Value> value = arguments[i].convertedTo(parameters[i].kind);
        if (!value) return fail(conversionError(arguments[i].kind(), parameters[i].kind));
        callee.values[i] = std::move(*value);
    }
    return runProcedure(bound, callee, out);
}

std::shared_ptr<const BoundProcedure> Evaluator::findProcedure(std::string_view name,
                                                               const ProcedureMap* fileProcedures) const {
    if (fileProcedures && !fileProcedures->empty()) {
        const auto found = fileProcedures->find(name);
        if (found != fileProcedures->end()) return found->second;
    }
    const auto found = procedures_.find(name);
    return found == procedures_.end() ? nullptr : found->second;
}

SourcePosition Evaluator::currentPosition() const {
    return frame_ ? positionIn(*frame_, frame_->offset) : SourcePosition();
}

/// @param frame  the innermost one, or the one that has just been left
SourcePosition Evaluator::positionIn(const Frame& frame, Index offset) {
    constexpr std::size_t kShown = 8;
    if (frame.isComposed && frame.caller != nullptr) return positionIn(*frame.caller, frame.caller->offset);
    SourcePosition position = frame.program.position(offset);
    for (const Frame* at = &frame; at != nullptr; at = at->caller) {
        if (at->procedure == nullptr) continue;
        if (position.procedures.size() == kShown) {
            position.procedures.emplace_back("...");
            break;
        }
        position.procedures.emplace_back(at->procedure->name);
    }
    return position;
}

bool Evaluator::countStep(Frame& frame, Index offset) {
    if (stopped_ || isBroken_) return false;
    // Usually a turn costs only a plain load. Only a flag that is set is exchanged.
    if (interrupt_ != nullptr && interrupt_->load(std::memory_order_relaxed) && heldInterrupts_ == 0 &&
        interrupt_->exchange(false))
        return breakOff(frame, offset, "Interrupted.");
    if (++steps_ <= options_.stepLimit || options_.stepLimit == 0) return true;
    return breakOff(frame, offset, "The script takes too many steps.");
}

bool Evaluator::breakOff(const Frame& frame, Index offset, std::string message) {
    isBroken_ = true;
    return failAt(frame, offset, std::move(message));
}

bool Evaluator::fail(std::string message) {
    error_ = {std::move(message), currentPosition(), false};
    return false;
}

bool Evaluator::failAt(const Frame& frame, Index offset, std::string message) {
    error_ = {std::move(message), positionIn(frame, offset), false};
    return false;
}

}  // namespace host::mel
