// The function sets of array data: doubles, integers, points and texts.

#include <maya/MDoubleArray.h>
#include <maya/MFnDoubleArrayData.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnStringArrayData.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MStringArray.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "api/handles/objectAccess.h"

namespace host::api {

namespace {

// Converts an element of the host's array to one of the API's, and back.
double toApi(double value) {
    return value;
}
int toApi(int value) {
    return value;
}
MPoint toApi(const graph::Point4& value) {
    return MPoint(value[0], value[1], value[2], value[3]);
}
MString toApi(const std::string& value) {
    return string(value);
}
double toHost(double value) {
    return value;
}
int toHost(int value) {
    return value;
}
graph::Point4 toHost(const MPoint& value) {
    return {value.x, value.y, value.z, value.w};
}
std::string toHost(const MString& value) {
    return text(value);
}

/// The numbers, points or texts of a data object; null if it is not of this type.
template <typename HostData>
auto contentOf(const MObject& object) -> decltype(&std::declval<const HostData&>().value) {
    const DataBody* body = ObjectAccess::data(object);
    const auto* data = body != nullptr ? dynamic_cast<const HostData*>(body->value.get()) : nullptr;
    return data != nullptr ? &data->value : nullptr;
}

template <typename Array, typename Content>
Array copyToApi(const Content& content) {
    Array result;
    // Makes room at once, without a value for every element that would be replaced.
    result.setSizeIncrement(static_cast<unsigned int>(content.size()));
    for (const auto& element : content)
        result.append(toApi(element));
    result.setSizeIncrement(Array().sizeIncrement());
    return result;
}

template <typename HostData, typename Array>
graph::DataPtr copyToHost(const Array& array) {
    decltype(HostData::value) content;
    content.reserve(array.length());
    for (unsigned int k = 0; k < array.length(); ++k)
        content.push_back(toHost(array[k]));
    return std::make_shared<HostData>(std::move(content));
}

template <typename HostData>
unsigned int lengthOf(const MObject& object, MStatus* status) {
    return answer(status, contentOf<HostData>(object),
                  [](const auto& content) { return static_cast<unsigned int>(content.size()); });
}

/// The element; a default one if it does not exist.
template <typename HostData, typename Element>
Element elementOf(const MObject& object, unsigned int index) {
    const auto* content = contentOf<HostData>(object);
    return content != nullptr && index < content->size() ? toApi((*content)[index]) : Element();
}

template <typename HostData, typename Element>
MStatus setElement(const MObject& object, const Element& element, unsigned int index) {
    const auto* content = contentOf<HostData>(object);
    if (content == nullptr) return missingObject();
    if (index >= content->size()) return noElement();
    // Changed in place while nobody else has the data. If a plug has it, the plug keeps the old data.
    graph::DataPtr& held = ObjectAccess::data(object)->value;
    if (held.use_count() > 1) held = std::make_shared<HostData>(*content);
    std::const_pointer_cast<HostData>(graph::dataAs<HostData>(held))->value[index] = toHost(element);
    return MStatus::kSuccess;
}

template <typename HostData, typename Array>
MStatus copyOut(const MObject& object, Array& destination) {
    const auto* content = contentOf<HostData>(object);
    if (content == nullptr) return missingObject();
    destination = copyToApi<Array>(*content);
    return MStatus::kSuccess;
}

template <typename HostData, typename Array>
MStatus setAll(const MObject& object, const Array& source) {
    if (contentOf<HostData>(object) == nullptr) return missingObject();
    ObjectAccess::data(object)->value = copyToHost<HostData>(source);
    return MStatus::kSuccess;
}

}  // namespace

}  // namespace host::api

using host::api::ObjectAccess;
using host::api::report;

// The members that the four classes of array data have in common. Each calls the templates above.
#define DELVEN_ARRAY_DATA(Class, HostData, Array, Element, ElementArgument, functionSet)                   \
    Class::Class() = default;                                                                              \
    Class::~Class() = default;                                                                             \
    Class::Class(MObject& object, MStatus* status) : Class(static_cast<const MObject&>(object), status) {} \
    Class::Class(const MObject& object, MStatus* status) {                                                 \
        report(status, MFnBase::setObject(object));                                                        \
    }                                                                                                      \
    MFn::Type Class::type() const {                                                                        \
        return MFn::functionSet;                                                                           \
    }                                                                                                      \
    unsigned int Class::length(MStatus* status) const {                                                    \
        return host::api::lengthOf<HostData>(object_, status);                                             \
    }                                                                                                      \
    MStatus Class::set(ElementArgument element, unsigned int index) {                                      \
        return host::api::setElement<HostData, Element>(object_, element, index);                          \
    }                                                                                                      \
    MStatus Class::copyTo(Array& destination) const {                                                      \
        return host::api::copyOut<HostData>(object_, destination);                                         \
    }                                                                                                      \
    MStatus Class::set(const Array& source) {                                                              \
        return host::api::setAll<HostData>(object_, source);                                               \
    }                                                                                                      \
    Array Class::array(MStatus* status) {                                                                  \
        Array result;                                                                                      \
        report(status, copyTo(result));                                                                    \
        return result;                                                                                     \
    }                                                                                                      \
    MObject Class::create(MStatus* status) {                                                               \
        return create(Array(), status);                                                                    \
    }                                                                                                      \
    MObject Class::create(const Array& values, MStatus* status) {                                          \
        report(status, MFnBase::setObject(ObjectAccess::object(host::api::copyToHost<HostData>(values)))); \
        return object_;                                                                                    \
    }

OPENMAYA_MAJOR_NAMESPACE_OPEN

const MPoint& MFnPointArrayData::operator[](unsigned int index) const {
    element_ = host::api::elementOf<host::graph::PointArrayData, MPoint>(object_, index);
    return element_;
}
double MFnDoubleArrayData::operator[](unsigned int index) const {
    return host::api::elementOf<host::graph::DoubleArrayData, double>(object_, index);
}
int MFnIntArrayData::operator[](unsigned int index) const {
    return host::api::elementOf<host::graph::IntArrayData, int>(object_, index);
}
const MString& MFnStringArrayData::operator[](unsigned int index) const {
    element_ = host::api::elementOf<host::graph::StringArrayData, MString>(object_, index);
    return element_;
}

DELVEN_ARRAY_DATA(MFnPointArrayData, host::graph::PointArrayData, MPointArray, MPoint, MPoint&,
                  kPointArrayData)
DELVEN_ARRAY_DATA(MFnDoubleArrayData, host::graph::DoubleArrayData, MDoubleArray, double, double,
                  kDoubleArrayData)
DELVEN_ARRAY_DATA(MFnIntArrayData, host::graph::IntArrayData, MIntArray, int, int, kIntArrayData)
DELVEN_ARRAY_DATA(MFnStringArrayData, host::graph::StringArrayData, MStringArray, MString, const MString&,
                  kStringArrayData)

OPENMAYA_MAJOR_NAMESPACE_CLOSE
