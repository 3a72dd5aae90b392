// Calls in the evaluator: procedures, built-in functions and commands, catch and eval.

#include <array>

#include "mel/evaluator.h"
#include "mel/numberText.h"
#include "mel/operators.h"

namespace host::mel {

/// Calls a procedure, a built-in function or a command; looked up in this order.
bool Evaluator::evaluateCall(const Expression& call, Frame& frame, Value& out) {
    out = Value();
    frame.offset = call.offset;
    if (const auto bound = findProcedure(call.text(), frame.fileProcedures)) {
        if (!countStep(frame, call.offset)) return false;
        return callProcedure(*bound, call, frame, out);
    }
    if (call.a == kNoIndex) return callTableCommand(call, frame, out);
    if (builtinFunction(call.a).special != BuiltinFunction::Special::None)
        return callSpecial(call, frame, out);
    return callBuiltin(call, frame, out);
}

bool Evaluator::callProcedure(const BoundProcedure& bound, const Expression& call, Frame& frame, Value& out) {
    const std::vector<Parameter>& parameters = bound.procedure->parameters;
    if (call.list().count != parameters.size())
        return failAt(frame, call.offset,
                      "Wrong number of arguments on call to " + std::string(call.text()) + ".");
    Frame callee(*bound.program, bound.fileProcedures, bound.procedure->localCount);
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const Index argument = frame.program.lists[call.list().first + static_cast<Index>(i)];
        if (!bindParameter(parameters[i], argument, frame, callee, i)) return false;
    }
    frame.offset = call.offset;
    return runProcedure(bound, callee, out);
}

/// Array variables are passed by reference. Everything else is converted to the parameter's type.
bool Evaluator::bindParameter(const Parameter& parameter, Index argument, Frame& frame, Frame& callee,
                              std::size_t slot) {
    const Expression expression = argumentNode(argument, frame);
    if (expression.kind == Expression::Kind::Variable && elementKind(parameter.kind) != Value::Kind::None) {
        Value& passed = variable(expression.a, frame);
        if (passed.isNone()) passed = Value::defaultOf(parameter.kind);
        if (passed.kind() == parameter.kind) {
            callee.slots[slot] = &passed;
            return true;
        }
    }
    Value value;
    // A bare `on` is a word for a command, but a number for a procedure that takes one.
    if (expression.kind == Expression::Kind::Switch && parameter.kind != Value::Kind::String)
        value = static_cast<int>(expression.number);
    else if (!evaluate(argument, frame, value))
        return false;
    // A bare number for an int parameter. A command would take it as a float, which may be that large.
    const bool isLiteral = expression.kind == Expression::Kind::Float && parameter.kind == Value::Kind::Int;
    if (isLiteral && !fitsInt(expression.number))
        return failAt(frame, expression.offset, integerTooLarge(value.toString()));
    std::optional<Value> converted = value.convertedTo(parameter.kind);
    if (!converted) return failAt(frame, expression.offset, conversionError(value.kind(), parameter.kind));
    callee.values[slot] = std::move(*converted);
    return true;
}

bool Evaluator::runProcedure(const BoundProcedure& bound, Frame& callee, Value& out) {
    const Depth depth(depth_);
    if (depth.count > options_.depthLimit) return fail("Too many nested calls.");
    const Procedure& procedure = *bound.procedure;
    callee.procedure = &procedure;
    callee.caller = frame_;
    frame_ = &callee;
    const Flow flow = execute(procedure.body, callee);
    frame_ = callee.caller;
    if (flow == Flow::Fail) return false;
    if (procedure.returns == Value::Kind::None) return true;
    if (flow != Flow::Return) {
        out = Value::defaultOf(procedure.returns);
        return true;
    }
    std::optional<Value> converted = callee.returned.convertedTo(procedure.returns);
    if (!converted)
        return failAt(callee, callee.offset, conversionError(callee.returned.kind(), procedure.returns));
    out = std::move(*converted);
    return true;
}

bool Evaluator::callBuiltin(const Expression& call, Frame& frame, Value& out) {
    const Depth large(nesting_, kCallLevels);
    const std::size_t count = call.list().count;
    const BuiltinFunction& builtin = builtinFunction(call.a);
    if (count < builtin.minimumArguments || count > builtin.maximumArguments)
        return failAt(frame, call.offset,
                      "Wrong number of arguments on call to " + std::string(call.text()) + ".");
    constexpr std::size_t kFew = 4;
    std::array<Value, kFew> few;
    std::vector<Value> many(count > kFew ? count : 0);
    Value* const values = count > kFew ? many.data() : few.data();
    std::array<Value*, 2 * kFew> fewPointers{};
    std::vector<Value*> manyPointers(count > kFew ? 2 * count : 0);
    Value** const arguments = count > kFew ? manyPointers.data() : fewPointers.data();
    Value** const variables = arguments + count;
    for (std::size_t i = 0; i < count; ++i) {
        const Index argument = frame.program.lists[call.list().first + static_cast<Index>(i)];
        const Expression expression = argumentNode(argument, frame);
        const bool isVariable = expression.kind == Expression::Kind::Variable;
        variables[i] = isVariable ? &variable(expression.a, frame) : nullptr;
        // An argument that changes a variable must not change the arguments before it.
        const bool byReference = isVariable && call.pureArguments;
        arguments[i] = byReference ? variables[i] : &values[i];
        if (expression.kind == Expression::Kind::Switch)
            values[i] = static_cast<int>(expression.number);
        else if (!byReference && !evaluate(argument, frame, values[i]))
            return false;
    }
    frame.offset = call.offset;
    BuiltinCall invocation{*this, arguments, variables, count, {}, {}};
    if (!builtin.function(invocation)) return failAt(frame, call.offset, std::move(invocation.error));
    out = std::move(invocation.result);
    return true;
}

bool Evaluator::callSpecial(const Expression& call, Frame& frame, Value& out) {
    using Special = BuiltinFunction::Special;
    if (call.list().count < builtinFunction(call.a).minimumArguments ||
        call.list().count > builtinFunction(call.a).maximumArguments)
        return failAt(frame, call.offset,
                      "Wrong number of arguments on call to " + std::string(call.text()) + ".");
    const Special special = builtinFunction(call.a).special;
    const bool isCatch = special == Special::Catch || special == Special::CatchQuiet;
    return isCatch ? evaluateCatch(call, frame, out) : evaluateText(call, frame, out);
}

/// 1 if the argument fails, 0 otherwise. It catches neither the end of the program nor a used-up step limit.
bool Evaluator::evaluateCatch(const Expression& call, Frame& frame, Value& out) {
    const bool quiet = builtinFunction(call.a).special == BuiltinFunction::Special::CatchQuiet;
    quiet_ += quiet ? 1 : 0;
    const bool ok = evaluateCaught(frame.program.lists[call.list().first], frame);
    quiet_ -= quiet ? 1 : 0;
    if (!ok && (stopped_ || isBroken_)) return false;
    if (!ok) {
        if (!quiet) reportError(true);
        error_ = {};
    }
    out = ok ? 0 : 1;
    return true;
}

bool Evaluator::evaluateCaught(Index argument, Frame& frame) {
    Value value;
    if (!evaluate(argument, frame, value)) return false;
    const Expression::Kind kind = argumentNode(argument, frame).kind;
    const bool isText = kind == Expression::Kind::String || kind == Expression::Kind::Chain ||
                        kind == Expression::Kind::Variable;
    // catch("command text") runs the text. The result of a call or an assignment is not run.
    if (!isText || !value.isString()) return true;
    return runText(value.toString(), value);
}

/// eval: joins the arguments with blanks and runs them as a text of its own, which sees only global
/// variables.
bool Evaluator::evaluateText(const Expression& call, Frame& frame, Value& out) {
    std::string text;
    for (Index i = 0; i < call.list().count; ++i) {
        Value scratch;
        const Value* part = operand(frame.program.lists[call.list().first + i], frame, scratch);
        if (!part) return false;
        if (i > 0) text += ' ';
        part->appendTo(text);
    }
    frame.offset = call.offset;
    if (builtinFunction(call.a).special == BuiltinFunction::Special::EvalEcho) output_.info(text);
    return runText(text, out);
}

bool Evaluator::runText(const std::string& text, Value& out) {
    const SourcePosition here = currentPosition();
    RunResult result = run(text, {}, {});
    if (stopped_) return false;
    out = std::move(result.value);
    if (result.ok) return true;
    error_ = std::move(result.error);
    // A line number inside composed text helps little. The statement that composed it can be found.
    if (error_.position.file.empty()) error_.position = here;
    return false;
}

bool Evaluator::callTableCommand(const Expression& call, Frame& frame, Value& out) {
    const Depth large(nesting_, kCallLevels);
    std::vector<Value> arguments;
    if (!evaluateArguments(call, frame, arguments)) return false;
    frame.offset = call.offset;
    if (!commands_.has(call.text())) return callLoaded(call.text(), std::move(arguments), out);
    return finishCommand(commands_.call(call.text(), std::move(arguments), interpreter_), out);
}

bool Evaluator::evaluateArguments(const Expression& call, Frame& frame, std::vector<Value>& arguments) {
    const Index* words = frame.program.lists.data() + call.list().first;
    const bool isDeep = nesting_ >= kMaximumEvaluationDepth;  // an error that evaluating a word finds
    arguments.reserve(call.list().count);
    for (Index i = 0; i < call.list().count; ++i) {
        if (isPlainWord(words[i]) && !isDeep) {
            arguments.emplace_back(frame.program.plainWord(words[i]));
            continue;
        }
        arguments.emplace_back();
        if (!evaluate(words[i], frame, arguments.back())) return false;
    }
    return true;
}

/// The node of an argument. A plain word gets one that is not stored.
Expression Evaluator::argumentNode(Index argument, const Frame& frame) {
    if (!isPlainWord(argument)) return frame.program.expressions[argument];
    Expression word;
    word.kind = Expression::Kind::String;
    word.offset = argument - kPlainWord;
    word.setText(frame.program.plainWord(argument));
    return word;
}

bool Evaluator::finishCommand(CommandResult&& result, Value& out) {
    if (stopped_) return false;
    out = std::move(result.value);
    if (result.ok) return true;
    error_ = {std::move(result.error), result.position ? std::move(*result.position) : currentPosition(),
              result.errorShown};
    return false;
}

}  // namespace host::mel
