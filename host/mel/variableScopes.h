#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "mel/program.h"

namespace host::mel {

/// Global variables by name, without dollar sign. A variable of kind None was never assigned and has no type
/// yet. Values keep their address, so that programs may point to them.
class GlobalTable {
  public:
    Value* find(std::string_view name) const;
    Value& findOrCreate(std::string_view name);

  private:
    std::unordered_map<std::string_view, std::unique_ptr<std::pair<std::string, Value>>> values_;
};

/// Which variable a name means at a place in the text, while it is parsed.
///
/// At top level, names outside braces are global variables, and names first used inside braces are locals of
/// that block. A procedure sees its own locals and the globals that it declares.
class VariableScopes {
  public:
    VariableScopes(Program& program, const GlobalTable& globals) : program_(program), globals_(globals) {}

    void enterProcedure();
    /// @return number of locals that the procedure needs
    Index leaveProcedure();
    void enterBlock() { scopes().emplace_back(); }
    void leaveBlock() { scopes().pop_back(); }
    bool inProcedure() const { return inProcedure_; }
    /// Whether a new name becomes a global variable here.
    bool atTopLevel() const { return !inProcedure_ && topScopes_.empty(); }

    std::optional<Index> find(std::string_view name);
    /// The variable of that name in the innermost scope. It is made if there is none. Nothing if there is one
    /// of another type. Kind None means a type that the first assignment will give.
    std::optional<Index> declare(std::string_view name, Value::Kind kind);
    std::optional<Index> declareGlobal(std::string_view name, Value::Kind kind);

  private:
    struct Entry {
        Index variable = 0;
        Value::Kind kind = Value::Kind::None;
    };
    using Scope = std::unordered_map<std::string_view, Entry>;

    std::vector<Scope>& scopes() { return inProcedure_ ? procedureScopes_ : topScopes_; }
    std::optional<Index> globalReference(std::string_view name, Value::Kind kind);

    Program& program_;
    const GlobalTable& globals_;
    std::vector<Scope> topScopes_;
    std::vector<Scope> procedureScopes_;
    std::unordered_map<std::string_view, Index> globalReferences_;
    bool inProcedure_ = false;
    Index procedureLocals_ = 0;
};

}  // namespace host::mel
