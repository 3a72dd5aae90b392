#pragma once

#include <cstddef>
#include <string>

#include "mel/program.h"
#include "mel/value.h"

namespace host::mel {

/// `left = left op right` with MEL's promotion: int, float, vector, string; the wider operand decides.
/// Arithmetic on ints wraps at 32 bits and divides without a remainder. Comparisons give 1 or 0.
/// @param sizeLimit  bytes that a string may have
/// @return false and a text in `error` if the operation does not exist for these kinds, or divides by zero
bool applyBinary(Operator op, Value& left, const Value& right, std::size_t sizeLimit, std::string& error);

/// The negative or the logical opposite of a value, in place.
bool applyUnary(Operator op, Value& operand, std::string& error);

Vector crossProduct(const Vector& a, const Vector& b);
double dotProduct(const Vector& a, const Vector& b);

/// "Cannot convert data of type X to type Y."
std::string conversionError(Value::Kind from, Value::Kind to);

}  // namespace host::mel
