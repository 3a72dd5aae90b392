#include "mel/variableScopes.h"

namespace host::mel {

Value* GlobalTable::find(std::string_view name) const {
    const auto found = values_.find(name);
    return found == values_.end() ? nullptr : &found->second->second;
}

Value& GlobalTable::findOrCreate(std::string_view name) {
    if (Value* value = find(name)) return *value;
    auto entry = std::make_unique<std::pair<std::string, Value>>(std::string(name), Value());
    Value& value = entry->second;
    const std::string_view key = entry->first;
    values_.emplace(key, std::move(entry));
    return value;
}

void VariableScopes::enterProcedure() {
    inProcedure_ = true;
    procedureLocals_ = 0;
    procedureScopes_.assign(1, {});
}

Index VariableScopes::leaveProcedure() {
    inProcedure_ = false;
    procedureScopes_.clear();
    return procedureLocals_;
}

std::optional<Index> VariableScopes::find(std::string_view name) {
    for (auto scope = scopes().rbegin(); scope != scopes().rend(); ++scope) {
        const auto found = scope->find(name);
        if (found != scope->end()) return found->second.variable;
    }
    if (inProcedure_) return std::nullopt;
    const auto found = globalReferences_.find(name);
    if (found != globalReferences_.end()) return found->second;
    if (!globals_.find(name)) return std::nullopt;
    // Known from an earlier run: it is referred to like a variable that this text declares.
    return globalReference(name, Value::Kind::None);
}

std::optional<Index> VariableScopes::declare(std::string_view name, Value::Kind kind) {
    if (atTopLevel()) return globalReference(name, kind);
    Scope& scope = scopes().back();
    const auto [entry, added] = scope.try_emplace(name);
    if (added) {
        Index& count = inProcedure_ ? procedureLocals_ : program_.localCount;
        entry->second = {count++, kind};
    } else if (entry->second.kind == Value::Kind::None) {
        entry->second.kind = kind;
    } else if (kind != Value::Kind::None && entry->second.kind != kind) {
        return std::nullopt;
    }
    return entry->second.variable;
}

std::optional<Index> VariableScopes::declareGlobal(std::string_view name, Value::Kind kind) {
    const std::optional<Index> variable = globalReference(name, kind);
    if (!variable || atTopLevel()) return variable;
    const auto [entry, added] = scopes().back().try_emplace(name, Entry{*variable, kind});
    if (!added && entry->second.variable != *variable) return std::nullopt;
    return variable;
}

std::optional<Index> VariableScopes::globalReference(std::string_view name, Value::Kind kind) {
    const auto [entry, added] = globalReferences_.try_emplace(name, 0);
    if (added) {
        const Value* existing = globals_.find(name);
        entry->second = kGlobalVariable + static_cast<Index>(program_.globals.size());
        program_.globals.push_back({name, existing ? existing->kind() : Value::Kind::None});
    }
    GlobalReference& global = program_.globals[entry->second - kGlobalVariable];
    if (global.declared == Value::Kind::None)
        global.declared = kind;
    else if (kind != Value::Kind::None && global.declared != kind)
        return std::nullopt;
    return entry->second;
}

}  // namespace host::mel
