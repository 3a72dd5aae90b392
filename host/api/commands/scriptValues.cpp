#include "api/commands/scriptValues.h"

#include "api/handles/answers.h"
#include "api/handles/conversions.h"

namespace host::api {

namespace {

template <typename Element, typename Array>
MStatus convertArray(const mel::Value& value, Array& result) {
    const auto* elements = value.getIf<std::vector<Element>>();
    if (elements == nullptr) return failure();
    result = Array(elements->data(), static_cast<unsigned int>(elements->size()));
    return MStatus::kSuccess;
}

template <typename Element>
MStatus convertScalar(const mel::Value& value, Element& result) {
    const auto* content = value.getIf<Element>();
    if (content == nullptr) return failure();
    result = *content;
    return MStatus::kSuccess;
}

}  // namespace

MCommandResult::Type typeOf(const mel::Value& value) {
    using Kind = mel::Value::Kind;
    switch (value.kind()) {
        case Kind::None:
            break;
        case Kind::Int:
            return MCommandResult::kInt;
        case Kind::Float:
            return MCommandResult::kDouble;
        case Kind::String:
            return MCommandResult::kString;
        case Kind::Vector:
            return MCommandResult::kVector;
        case Kind::Matrix:
            return MCommandResult::kMatrix;
        case Kind::IntArray:
            return MCommandResult::kIntArray;
        case Kind::FloatArray:
            return MCommandResult::kDoubleArray;
        case Kind::StringArray:
            return MCommandResult::kStringArray;
        case Kind::VectorArray:
            return MCommandResult::kVectorArray;
    }
    return MCommandResult::kInvalid;
}

MStatus convert(const mel::Value& value, int& result) {
    return convertScalar(value, result);
}

MStatus convert(const mel::Value& value, double& result) {
    return convertScalar(value, result);
}

MStatus convert(const mel::Value& value, MString& result) {
    const auto* content = value.getIf<std::string>();
    if (content == nullptr) return failure();
    result = string(*content);
    return MStatus::kSuccess;
}

MStatus convert(const mel::Value& value, MIntArray& result) {
    return convertArray<int>(value, result);
}

MStatus convert(const mel::Value& value, MDoubleArray& result) {
    return convertArray<double>(value, result);
}

MStatus convert(const mel::Value& value, MStringArray& result) {
    const auto* elements = value.getIf<std::vector<std::string>>();
    if (elements == nullptr) return failure();
    result.clear();
    for (const std::string& element : *elements)
        result.append(string(element));
    return MStatus::kSuccess;
}

mel::Value toValue(const MIntArray& array) {
    return mel::Value(numbersOf<int>(array));
}

mel::Value toValue(const MDoubleArray& array) {
    return mel::Value(numbersOf<double>(array));
}

mel::Value toValue(const MStringArray& array) {
    std::vector<std::string> elements;
    elements.reserve(array.length());
    for (unsigned int k = 0; k < array.length(); ++k)
        elements.push_back(text(array[k]));
    return mel::Value(std::move(elements));
}

}  // namespace host::api
