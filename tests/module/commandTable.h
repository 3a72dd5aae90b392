#pragma once

#include <string>
#include <vector>

#include "fixtures.h"

/// The calls and the help text of every command, a file per command in calls/. commandsTest.cpp runs them
/// all.

using Strings = std::vector<std::string>;
using host::mel::Value;

/// A call and what must come of it.
struct Call {
    std::string name;
    std::string setup;  // run after the scene of addBlendShape was built, before the undo queue is emptied
    std::string text;
    bool ok;
    Value result;  // of a call that succeeds
    Strings errors;
    /// Script that brings a scene to where undo of this call must leave it: empty where undo restores
    /// everything.
    std::string residue;
};

/// What the tests know of one command.
struct CommandTable {
    std::string command;
    std::vector<Call> calls;
    std::string help;  // its help text, as helpTexts.txt has it
    /// Arguments that ask for the help text, also beside flags and objects with which the command would do,
    /// or fail at, something else.
    Strings helpArguments;
};

/// A call that fails, one that only reports an error and has the result 0, and one without errors.
Call failingCall(std::string name, std::string setup, std::string text, Strings errors,
                 std::string residue = {});
Call refusedCall(std::string name, std::string setup, std::string text, std::string error,
                 std::string residue = {});
Call goodCall(std::string name, std::string setup, std::string text, Value result, std::string residue = {});

/// The calls in which a command refuses its objects, which should be a blend shape.
/// @param name  begins the names of the rows
std::vector<Call> refusedObjects(const std::string& name, const std::string& command);

/// All of them, by the commands' names.
const std::vector<CommandTable>& commandTables();

/// Enters the rows of a command. For constants of namespace scope: the tables are complete once main runs.
struct CommandRows {
    CommandRows(std::string command, std::vector<Call> calls,
                Strings helpArguments = {"-h", "-help bs", "-h base", "bs -h"});
};
