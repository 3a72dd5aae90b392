#pragma once

#include <maya/MStatus.h>

#include <type_traits>
#include <utility>

#include "api/values/statusMaker.h"

/// How API functions report their outcome: frequent statuses, a value or the status that says why there is
/// none, and functions that return the value and report the status to the caller.
namespace host::api {

// The statuses that API functions report most often.
inline MStatus missingObject() {
    return StatusMaker::make(MStatus::kFailure, Explanation::ObjectDoesNotExist);
}
inline MStatus unknownObject() {
    return StatusMaker::make(MStatus::kInvalidParameter, Explanation::ObjectDoesNotExist);
}
inline MStatus noElement() {
    return StatusMaker::make(MStatus::kInvalidParameter, Explanation::NoElementAtIndex);
}
inline MStatus incompatible() {
    return StatusMaker::make(MStatus::kInvalidParameter, Explanation::IncompatibleObject);
}
inline MStatus failure() {
    return StatusMaker::make(MStatus::kFailure, Explanation::InternalFailure);
}

/// Success if the arguments of a call fit.
inline MStatus checkArguments(bool fit) {
    return fit ? MStatus(MStatus::kSuccess) : MStatus(MStatus::kInvalidParameter);
}

/// A value, or the status that says why there is none. The value is moved on its way. Handles only copy,
/// which costs: for these, answer with what the handle is made from.
template <typename T>
struct Answer {
    Answer(T found) : value(std::move(found)) {}
    Answer(const MStatus& failure) : status(failure) {}
    Answer(MStatus::MStatusCode failure) : status(failure) {}

    MStatus status{};
    T value{};
};

/// The type of a function's result, given in an Answer or directly.
template <typename Given>
struct AnswerOf {
    using Type = Given;
};
template <typename T>
struct AnswerOf<Answer<T>> {
    using Type = T;
};

/// Reports success and gives the value.
template <typename T>
T succeeded(MStatus* status, T value) {
    report(status, MStatus::kSuccess);
    return value;
}

/// The result of give() if the check succeeds. If it fails, or give() returns a failure itself, the result is
/// made from `otherwise`; without that it is a default one. The status is reported.
/// @param give  returns a value or an Answer
template <typename Give, typename... Otherwise>
auto answerIf(MStatus* status, const MStatus& check, const Give& give, const Otherwise&... otherwise) {
    using Given = decltype(give());
    using Result = typename AnswerOf<Given>::Type;
    if constexpr (std::is_same_v<Given, Result>) {
        report(status, check);
        return check ? give() : Result(otherwise...);
    } else {
        Given given = check ? give() : Given(check);
        report(status, given.status);
        return given.status ? std::move(given.value) : Result(otherwise...);
    }
}

/// Like answerIf(). The check is that `asked` exists.
/// @param asked  the argument of give(): a shared pointer, or a plain one, which give() takes by reference
template <typename Asked, typename Give, typename... Otherwise>
auto answer(MStatus* status, const Asked& asked, const Give& give, const Otherwise&... otherwise) {
    const auto giveFrom = [&] {
        if constexpr (std::is_pointer_v<Asked>) {
            return give(*asked);
        } else {
            return give(asked);
        }
    };
    return answerIf(status, asked != nullptr ? MStatus(MStatus::kSuccess) : missingObject(), giveFrom,
                    otherwise...);
}

}  // namespace host::api
