#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "mel/commandTable.h"
#include "mel/value.h"

namespace host::mel {

/// Index into Program::expressions or Program::statements.
using Index = std::uint32_t;
constexpr Index kNoIndex = 0xFFFFFFFF;

enum class Operator : std::uint8_t {
    Assign,
    Add,
    Subtract,
    Multiply,
    Divide,
    Modulo,
    Cross,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    Equal,
    NotEqual,
    And,
    Or,
    Negate,
    Not,
    Increment,
    Decrement
};

/// Added to the offset of a plain word of a command, this makes the word's entry in a list. Such a word is
/// its own text: it needs no node, of which lists of components would take a million. It ends at a blank, at
/// a semicolon or with the source.
constexpr Index kPlainWord = 0x80000000;
constexpr bool isPlainWord(Index entry) {
    return entry >= kPlainWord;
}

/// A run of Program::lists.
struct ListRange {
    Index first = 0;
    Index count = 0;
};

/// A node of the expression tree. The meaning of the fields depends on the kind. A long script has millions
/// of nodes.
struct Expression {
    enum class Kind : std::uint8_t {
        Int,        // number
        Float,      // number
        String,     // text
        Switch,     // text: on/off/true/false/yes/no as a bare command word; number 1 or 0
        Variable,   // a: variable, text: name
        Element,    // a: variable, text: name, b: index, c: column of a matrix or kNoIndex
        Component,  // a: operand, b: 0 to 2
        Vector,     // list: three operands
        Matrix,     // list: operands, a: rows
        Array,      // list: operands
        Word,       // list: operands whose texts form one command word
        Unary,      // op, a: operand
        Step,       // op ++ or --, a: Variable or Element, prefix
        Chain,      // a: first operand, list: pairs of operator and operand, from left to right, of equal
                    // precedence
        Logic,      // op && or ||, list: operands
        Ternary,    // a: condition, b: then, c: else
        Assign,     // op (Assign or the operator of a compound form), a: Variable or Element, b: value
        Call,  // text: name, list: arguments, a: number of a built-in function or kNoIndex, pureArguments
        Cast   // target, a: operand
    };

    Kind kind = Kind::Int;
    Operator op = Operator::Assign;
    Value::Kind target = Value::Kind::None;
    bool prefix = false;
    bool pure = true;  // neither assigns nor calls anything
    bool pureArguments = false;
    Index offset = 0;  // in the source text
    Index a = kNoIndex;
    Index b = kNoIndex;  // or the start of the list
    Index c = kNoIndex;  // or the length of the list
    Index textLength = 0;
    const char* characters = nullptr;
    double number = 0;

    std::string_view text() const { return {characters, textLength}; }
    void setText(std::string_view text) {
        characters = text.data();
        textLength = static_cast<Index>(text.size());
    }
    ListRange list() const { return {b, c}; }
    void setList(const ListRange& range) {
        b = range.first;
        c = range.count;
    }
};

struct Statement {
    enum class Kind : std::uint8_t {
        Expression,  // a
        Declare,  // a: variable, b: initial value or kNoIndex, c: size or kNoIndex, declared, keep; columns
        Block,    // list: statements
        If,       // list: pairs of condition and statement; b: else statement or kNoIndex
        While,    // a: condition, b: body
        DoWhile,  // a: condition, b: body
        For,      // list: initial expressions; a: condition or kNoIndex, b: body, steps
        ForIn,    // c: variable, a: array, b: body
        Switch,  // a: value, list: pairs of case value (kNoIndex for default) and position in `steps`; steps:
                 // body
        Return,  // a or kNoIndex
        Break,
        Continue
    };

    Kind kind = Kind::Expression;
    Value::Kind declared = Value::Kind::None;
    bool keep = false;  // a declaration without initial value that does not change the variable
    Index offset = 0;
    Index a = kNoIndex;
    Index b = kNoIndex;
    Index c = kNoIndex;
    Index columns = kNoIndex;
    ListRange list;
    ListRange steps;
};

/// Variables are numbered: locals of the procedure (or of the top level's blocks) from 0, globals from
/// kGlobalVariable.
constexpr Index kGlobalVariable = 0x80000000;

struct GlobalReference {
    std::string_view name;  // without dollar sign
    Value::Kind declared = Value::Kind::None;
};

struct Parameter {
    Value::Kind kind = Value::Kind::None;
    std::string_view name;
};

/// A procedure. Its parameters are its first locals.
struct Procedure {
    std::string_view name;
    bool global = false;
    Value::Kind returns = Value::Kind::None;
    std::vector<Parameter> parameters;
    Index body = kNoIndex;
    Index localCount = 0;
};

/// A parsed text. Everything refers to `source`, which it owns. The text does not change after parsing.
struct Program {
    std::string source;
    std::string fileName;
    std::vector<Index> lineStarts;
    int firstLine = 1;                // number of the line on which the text begins
    std::deque<std::string> strings;  // literals with escapes
    std::vector<Expression> expressions;
    std::vector<Statement> statements;
    std::vector<Index> lists;  // nodes, statements, or plain words of calls
    std::vector<Procedure> procedures;
    std::vector<GlobalReference> globals;
    std::vector<Value*> globalValues;  // parallel to globals; set when the program is bound to an interpreter
    ListRange body;
    Index localCount = 0;

    SourcePosition position(Index offset) const;
    /// The text of a plain word.
    std::string_view plainWord(Index entry) const;
};

/// How a text ends, for readers that get it line by line.
enum class TextEnd : std::uint8_t {
    Closed,      ///< after a whole statement, or at an error that no further text can repair
    Open,        ///< in a statement that is whole but has no semicolon: more words may follow
    BeforeElse,  ///< after an `if` that may get an `else`
    TooEarly     ///< in the middle of something
};

struct ParseResult {
    std::shared_ptr<Program> program;  // nullptr if there is an error
    std::string error;
    SourcePosition position;
    TextEnd end = TextEnd::Closed;
};

}  // namespace host::mel
