#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "mel/builtins.h"
#include "mel/interpreter.h"
#include "mel/program.h"
#include "mel/variableScopes.h"

namespace host::mel {

/// A procedure, with the text that contains it and the file-local procedures that it sees.
struct BoundProcedure;
using ProcedureMap = std::unordered_map<std::string_view, std::shared_ptr<const BoundProcedure>>;
struct BoundProcedure {
    std::shared_ptr<const Program> program;
    const Procedure* procedure = nullptr;
    const ProcedureMap* fileProcedures = nullptr;
};

/// The variables of one procedure call, or of the blocks of one run. A slot points to a value of this frame
/// or, for an array parameter, to the caller's variable.
struct Frame {
    Frame(const Program& text, const ProcedureMap* procedures, Index localCount);

    const Program& program;
    const ProcedureMap* fileProcedures;
    std::vector<Value> values;
    std::vector<Value*> slots;
    Value returned;
    Index offset = 0;  // of the current statement or call
    Frame* caller = nullptr;
    const Procedure* procedure = nullptr;  // null for a text's own statements
    bool isComposed = false;               // the text was composed by a command
};

/// Evaluates the parsed text. Every step that can fail returns false and leaves the error in `error_`.
/// `catch` or the run takes it from there.
class Evaluator {
  public:
    Evaluator(Interpreter& interpreter, CommandTable& commands, Output& output, InterpreterOptions options)
        : interpreter_(interpreter), commands_(commands), output_(output), options_(options) {}

    RunResult run(std::string_view text, std::string_view sourceName, const RunOptions& options);
    CommandResult callCommand(std::string_view name, std::vector<Value> arguments);

    std::shared_ptr<const BoundProcedure> findProcedure(std::string_view name,
                                                        const ProcedureMap* fileProcedures) const;
    GlobalTable& globals() { return globals_; }
    Output& output() { return output_; }
    const InterpreterOptions& options() const { return options_; }
    SourcePosition currentPosition() const;
    bool isQuiet() const { return quiet_ > 0; }
    bool isRunning() const { return depth_ > 0; }
    void stop() { stopped_ = true; }
    bool isStopped() const { return stopped_; }
    void setInterruptFlag(std::atomic<bool>& flag) { interrupt_ = &flag; }
    void holdInterrupts(bool isHeld) { heldInterrupts_ += isHeld ? 1 : -1; }

    std::uint64_t& randomState() { return randomState_; }

  private:
    enum class Flow { Normal, Break, Continue, Return, Fail };
    struct Depth;

    // evaluator.cpp: runs and calls by name
    bool runText(std::string_view text, std::string_view sourceName, const RunOptions& options, Value& value);
    void takeReserve();
    void failForMemory();
    void bind(const std::shared_ptr<Program>& program);
    Flow executeBody(Frame& frame, Value& value);
    bool runProgram(const Program& program, const ProcedureMap& fileProcedures, bool isComposed,
                    Value& value);
    void reportError(bool show);
    bool callByName(std::string_view name, std::vector<Value>&& arguments, Value& out);
    bool callLoaded(std::string_view name, std::vector<Value>&& arguments, Value& out);
    bool callProcedureByName(const BoundProcedure& bound, std::vector<Value>&& arguments, Value& out);

    // evaluateStatements.cpp
    Flow execute(Index index, Frame& frame);
    Flow executeList(const ListRange& list, Index from, Frame& frame);
    bool executeExpression(Index expression, Frame& frame);
    bool declare(const Statement& statement, Frame& frame);
    bool reserveDeclared(const Statement& statement, Frame& frame, Value& value);
    Flow executeIf(const Statement& statement, Frame& frame);
    Flow executeWhile(const Statement& statement, Frame& frame);
    Flow executeFor(const Statement& statement, Frame& frame);
    Flow executeForIn(const Statement& statement, Frame& frame);
    Flow executeSwitch(const Statement& statement, Frame& frame);
    Flow executeReturn(const Statement& statement, Frame& frame);
    bool condition(Index expression, Frame& frame, bool& result);

    // evaluateExpressions.cpp
    bool evaluate(Index index, Frame& frame, Value& out);
    const Value* operand(Index index, Frame& frame, Value& scratch);
    bool evaluateElement(const Expression& expression, Frame& frame, Value& out);
    bool evaluateComponent(const Expression& expression, Frame& frame, Value& out);
    bool evaluateVector(const Expression& expression, Frame& frame, Value& out);
    bool evaluateMatrix(const Expression& expression, Frame& frame, Value& out);
    bool evaluateArray(const Expression& expression, Frame& frame, Value& out);
    bool evaluateWord(const Expression& expression, Frame& frame, Value& out);
    bool evaluateUnary(const Expression& expression, Frame& frame, Value& out);
    bool evaluateChain(const Expression& expression, Frame& frame, Value& out);
    bool evaluateLogic(const Expression& expression, Frame& frame, Value& out);
    bool evaluateTernary(const Expression& expression, Frame& frame, Value& out);
    bool evaluateCast(const Expression& expression, Frame& frame, Value& out);

    // evaluateAssignments.cpp
    bool step(const Expression& expression, Frame& frame, Value* out);
    bool assign(const Expression& expression, Frame& frame, Value* out);
    bool assignElement(const Expression& target, Frame& frame, Value&& value);
    bool store(Value& variable, Value&& value, Frame& frame, Index offset);
    bool storeElement(Value& array, std::size_t index, Value&& value, Frame& frame, Index offset);
    bool storeMatrixElement(const Expression& target, Matrix& matrix, Frame& frame, const Value& value);
    bool matrixIndex(const Expression& element, const Matrix& matrix, Frame& frame, std::size_t& index);
    bool arrayIndex(Index expression, Frame& frame, std::size_t& index);

    // evaluateCalls.cpp
    bool evaluateCall(const Expression& call, Frame& frame, Value& out);
    bool callProcedure(const BoundProcedure& bound, const Expression& call, Frame& frame, Value& out);
    bool bindParameter(const Parameter& parameter, Index argument, Frame& frame, Frame& callee,
                       std::size_t slot);
    bool runProcedure(const BoundProcedure& bound, Frame& callee, Value& out);
    bool callBuiltin(const Expression& call, Frame& frame, Value& out);
    bool callSpecial(const Expression& call, Frame& frame, Value& out);
    bool evaluateCatch(const Expression& call, Frame& frame, Value& out);
    bool evaluateCaught(Index argument, Frame& frame);
    bool evaluateText(const Expression& call, Frame& frame, Value& out);
    bool runText(const std::string& text, Value& out);
    bool callTableCommand(const Expression& call, Frame& frame, Value& out);
    bool finishCommand(CommandResult&& result, Value& out);

    Value& variable(Index number, Frame& frame) const {
        return number >= kGlobalVariable ? *frame.program.globalValues[number - kGlobalVariable]
                                         : *frame.slots[number];
    }
    const Expression& node(Index expression, const Frame& frame) const {
        return frame.program.expressions[expression];
    }
    static Expression argumentNode(Index argument, const Frame& frame);
    bool evaluateArguments(const Expression& call, Frame& frame, std::vector<Value>& arguments);
    static SourcePosition positionIn(const Frame& frame, Index offset);
    bool breakOff(const Frame& frame, Index offset, std::string message);
    bool countStep(Frame& frame, Index offset);
    bool fail(std::string message);
    bool failAt(const Frame& frame, Index offset, std::string message);

    Interpreter& interpreter_;
    CommandTable& commands_;
    Output& output_;
    InterpreterOptions options_;
    GlobalTable globals_;
    ProcedureMap procedures_;
    std::unordered_map<std::string, ProcedureMap> fileProcedures_;  // by file name
    Frame* frame_ = nullptr;
    ScriptError error_;
    bool stopped_ = false;
    bool isBroken_ = false;  // the current runs end with an error that no `catch` catches
    std::atomic<bool>* interrupt_ = nullptr;
    int heldInterrupts_ = 0;
    std::unique_ptr<char[]> reserve_;  // freed to report an allocation that failed
    int quiet_ = 0;
    int depth_ = 0;
    int nesting_ = 0;
    std::uint64_t steps_ = 0;
    std::uint64_t randomState_ = 1;
};

/// Counts the levels of evaluation, to limit the use of the machine's stack.
struct Evaluator::Depth {
    explicit Depth(int& counter, int levels = 1)
        : count(counter += levels), counter_(counter), levels_(levels) {}
    ~Depth() { counter_ -= levels_; }
    Depth(const Depth&) = delete;
    Depth& operator=(const Depth&) = delete;

    const int count;

  private:
    int& counter_;
    int levels_;
};

/// How deep expressions and statements may be nested while a script runs, over all its procedure calls. A
/// level takes up to 300 bytes of the machine's stack. On Windows, the main thread has 1 MB of it. What takes
/// more counts as several levels.
constexpr int kMaximumEvaluationDepth = 2000;
/// How many levels these count in addition to their own.
constexpr int kCallLevels = 2;  // of built-in functions and commands
constexpr int kElementLevels = 1;
constexpr int kChainLevels = 1;

}  // namespace host::mel
