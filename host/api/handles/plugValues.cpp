// The values of MPlug: reading and writing.

#include <maya/MPlug.h>

#include <limits>
#include <type_traits>
#include <utility>

#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "api/handles/objectAccess.h"
#include "api/handles/plugAccess.h"
#include "api/handles/session.h"

using host::api::Answer;
using host::api::answerIf;
using host::api::failure;
using host::api::incompatible;
using host::api::ObjectAccess;
using host::api::PlugAccess;
using host::api::scene;
using host::graph::DataPtr;
using host::graph::Plug;
using host::graph::ValueKind;

namespace host::api {

namespace {

/// Why the value of a plug cannot be read; success if it can.
MStatus checkReadable(const Plug& place, bool wantsNumber) {
    if (!isUsable(place)) return missingObject();
    const bool fits =
        wantsNumber ? place.isNumber() : place.attribute().kind() == ValueKind::Typed && !place.isArray();
    return fits && place.isFullyIndexed() ? MStatus(MStatus::kSuccess) : incompatible();
}

MStatus checkWritable(const Plug& place) {
    if (!isUsable(place)) return missingObject();
    if (place.attribute().isOutput() || !place.isFullyIndexed()) return incompatible();
    return isLocked(place) ? failure() : MStatus(MStatus::kSuccess);
}

/// If the variants say so, makes the elements on the path of a plug exist when its value is read.
void createWhatIsRead(const Plug& place) {
    if (!scene().variants().readingCreates || place.attribute().isOutput()) return;
    Plug element = place;
    while (element && !element.isElement())
        element = element.parent();
    const graph::RecordingScope silent(scene(), nullptr);
    if (element) scene().createElement(element);
}

MStatus readNumber(const MPlug& plug, double& value) {
    const Plug& place = PlugAccess::place(plug);
    const MStatus status = checkReadable(place, true);
    if (!status) return status;
    createWhatIsRead(place);
    value = scene().number(place);
    return status;
}

template <typename Number>
Number toNumber(double value) {
    if constexpr (std::is_integral_v<Number>) {
        // Casting a double that does not fit is undefined. The nearest end of the range is as good as any
        // value.
        if (value <= static_cast<double>(std::numeric_limits<Number>::min()))
            return std::numeric_limits<Number>::min();
        if (value >= static_cast<double>(std::numeric_limits<Number>::max()))
            return std::numeric_limits<Number>::max();
        return value == value ? static_cast<Number>(value) : Number(0);
    } else {
        return static_cast<Number>(value);
    }
}

template <typename Number>
MStatus read(const MPlug& plug, Number& value) {
    double number = 0.0;
    const MStatus status = readNumber(plug, number);
    if (status) value = toNumber<Number>(number);
    return status;
}

template <typename Number>
Number readAs(const MPlug& plug, MStatus* status) {
    Number value{};
    report(status, read(plug, value));
    return value;
}

template <>
MStatus read(const MPlug& plug, bool& value) {
    double number = 0.0;
    const MStatus status = readNumber(plug, number);
    if (status) value = number != 0.0;
    return status;
}

MStatus writeNumber(MPlug& plug, double value) {
    const Plug& place = PlugAccess::place(plug);
    const MStatus status = checkWritable(place);
    if (!status) return status;
    if (!place.isNumber()) return incompatible();
    scene().setNumber(place, value);
    return MStatus::kSuccess;
}

/// Whether an array data object has no elements.
bool isEmptyArray(const DataPtr& data) {
    const auto isEmpty = [](const auto& typed) { return typed != nullptr && typed->value.empty(); };
    return isEmpty(graph::dataAs<graph::DoubleArrayData>(data)) ||
           isEmpty(graph::dataAs<graph::IntArrayData>(data)) ||
           isEmpty(graph::dataAs<graph::PointArrayData>(data)) ||
           isEmpty(graph::dataAs<graph::VectorArrayData>(data)) ||
           isEmpty(graph::dataAs<graph::StringArrayData>(data));
}

/// Geometry attributes take any geometry. This host has only meshes.
bool takesData(const graph::Attribute& attribute, const graph::Data& data) {
    const std::string& wanted = attribute.spec().dataType;
    return wanted == data.typeName() || (wanted == "geometry" && data.typeName() == "mesh");
}

}  // namespace

}  // namespace host::api

OPENMAYA_MAJOR_NAMESPACE_OPEN

MStatus MPlug::getValue(MObject& value) const {
    MStatus status;
    value = asMObject(&status);
    return status;
}

MStatus MPlug::getValue(double& value) const {
    return host::api::read(*this, value);
}

MStatus MPlug::getValue(float& value) const {
    return host::api::read(*this, value);
}

MStatus MPlug::getValue(MInt64& value) const {
    return host::api::read(*this, value);
}

MStatus MPlug::getValue(int& value) const {
    return host::api::read(*this, value);
}

MStatus MPlug::getValue(short& value) const {
    return host::api::read(*this, value);
}

MStatus MPlug::getValue(bool& value) const {
    return host::api::read(*this, value);
}

MStatus MPlug::getValue(MString& value) const {
    MStatus status;
    const MString read = asString(&status);
    if (status) value = read;
    return status;
}

MObject MPlug::asMObject(MStatus* status) const {
    const Plug& place = PlugAccess::place(*this);
    const MStatus readable = host::api::checkReadable(place, false);
    return ObjectAccess::object(answerIf(status, readable, [&]() -> Answer<DataPtr> {
        host::api::createWhatIsRead(place);
        DataPtr data = scene().data(place);
        if (data == nullptr) return failure();
        return data;
    }));
}

double MPlug::asDouble(MStatus* status) const {
    return host::api::readAs<double>(*this, status);
}

float MPlug::asFloat(MStatus* status) const {
    return host::api::readAs<float>(*this, status);
}

MInt64 MPlug::asInt64(MStatus* status) const {
    return host::api::readAs<MInt64>(*this, status);
}

int MPlug::asInt(MStatus* status) const {
    return host::api::readAs<int>(*this, status);
}

short MPlug::asShort(MStatus* status) const {
    return host::api::readAs<short>(*this, status);
}

bool MPlug::asBool(MStatus* status) const {
    return host::api::readAs<bool>(*this, status);
}

MString MPlug::asString(MStatus* status) const {
    const Plug& place = PlugAccess::place(*this);
    const MStatus readable = host::api::checkReadable(place, false);
    return answerIf(status, readable, [&]() -> Answer<MString> {
        if (place.attribute().spec().dataType != "string") return incompatible();
        host::api::createWhatIsRead(place);
        const auto data = host::graph::dataAs<host::graph::StringData>(scene().data(place));
        return data != nullptr ? host::api::string(data->value) : MString();
    });
}

MStatus MPlug::setValue(const MObject& value) {
    const Plug& place = PlugAccess::place(*this);
    const MStatus writable = host::api::checkWritable(place);
    if (!writable) return writable;
    const host::api::DataBody* body = ObjectAccess::data(value);
    if (body == nullptr && !value.isNull()) return incompatible();
    const DataPtr data = body != nullptr ? body->value : nullptr;
    if (place.isArray()) {
        if (data != nullptr && !host::api::isEmptyArray(data)) return incompatible();
        scene().clearElements(place);
        return MStatus::kSuccess;
    }
    if (place.attribute().kind() != ValueKind::Typed) return incompatible();
    if (data != nullptr && !host::api::takesData(place.attribute(), *data)) return incompatible();
    scene().setData(place, data);
    return MStatus::kSuccess;
}

MStatus MPlug::setValue(double value) {
    return host::api::writeNumber(*this, value);
}

MStatus MPlug::setValue(float value) {
    return host::api::writeNumber(*this, static_cast<double>(value));
}

MStatus MPlug::setValue(MInt64 value) {
    return host::api::writeNumber(*this, static_cast<double>(value));
}

MStatus MPlug::setValue(int value) {
    return host::api::writeNumber(*this, value);
}

MStatus MPlug::setValue(short value) {
    return host::api::writeNumber(*this, value);
}

MStatus MPlug::setValue(bool value) {
    return host::api::writeNumber(*this, value ? 1.0 : 0.0);
}

MStatus MPlug::setValue(const MString& value) {
    return setString(value);
}

MStatus MPlug::setValue(const char* value) {
    return setString(MString(value));
}

MStatus MPlug::setMObject(const MObject& value) {
    return setValue(value);
}

MStatus MPlug::setDouble(double value) {
    return setValue(value);
}

MStatus MPlug::setFloat(float value) {
    return setValue(value);
}

MStatus MPlug::setInt64(MInt64 value) {
    return setValue(value);
}

MStatus MPlug::setInt(int value) {
    return setValue(value);
}

MStatus MPlug::setShort(short value) {
    return setValue(value);
}

MStatus MPlug::setBool(bool value) {
    return setValue(value);
}

MStatus MPlug::setString(const MString& value) {
    const Plug& place = PlugAccess::place(*this);
    const MStatus writable = host::api::checkWritable(place);
    if (!writable) return writable;
    if (place.isArray() || place.attribute().kind() != ValueKind::Typed ||
        place.attribute().spec().dataType != "string")
        return incompatible();
    scene().setData(place, std::make_shared<host::graph::StringData>(host::api::text(value)));
    return MStatus::kSuccess;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
