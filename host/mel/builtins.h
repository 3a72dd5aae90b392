#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "mel/program.h"
#include "mel/value.h"

namespace host::mel {

class Evaluator;

/// A call of a built-in function: arguments in, result or error text out.
struct BuiltinCall {
    Evaluator& evaluator;
    const Value* const* arguments;
    /// The variable that an argument names, for functions that change it; else nullptr.
    Value* const* variables;
    std::size_t count;
    Value result;
    std::string error;

    const Value& argument(std::size_t i) const { return *arguments[i]; }
    std::string text(std::size_t i) const { return arguments[i]->toString(); }
    /// The array variable of the given kind that argument `i` names. An untyped variable gets that kind.
    /// nullptr and an error if the argument is no such variable.
    Value* arrayVariable(std::size_t i, Value::Kind kind);
    /// Sets the error. Use it as `return call.fail(...)`.
    bool fail(std::string text) {
        error = std::move(text);
        return false;
    }
};

/// A function of the language. The evaluator itself handles those that need more than the values of their
/// arguments.
struct BuiltinFunction {
    enum class Special : unsigned char { None, Catch, CatchQuiet, Eval, EvalEcho };

    const char* name;
    std::size_t minimumArguments;
    std::size_t maximumArguments;
    bool (*function)(BuiltinCall&);
    Special special = Special::None;
};

/// Number of the built-in function of that name; kNoIndex if there is none.
Index builtinNumber(std::string_view name);
const BuiltinFunction& builtinFunction(Index number);

}  // namespace host::mel
