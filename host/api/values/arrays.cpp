// Output of the API's arrays to streams, and the switch of hostPrivate/arrayPoison.h.

#include <maya/MColorArray.h>
#include <maya/MDoubleArray.h>
#include <maya/MFloatArray.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MIntArray.h>
#include <maya/MMatrixArray.h>
#include <maya/MPointArray.h>
#include <maya/MStringArray.h>
#include <maya/MUint64Array.h>
#include <maya/MUintArray.h>
#include <maya/MVectorArray.h>

#include <atomic>
#include <ostream>

OPENMAYA_MAJOR_NAMESPACE_OPEN

std::ostream& operator<<(std::ostream& out, const MColorArray& array) {
    array.storage_.write(out);
    return out;
}

std::ostream& operator<<(std::ostream& out, const MDoubleArray& array) {
    array.storage_.write(out);
    return out;
}

std::ostream& operator<<(std::ostream& out, const MFloatArray& array) {
    array.storage_.write(out);
    return out;
}

std::ostream& operator<<(std::ostream& out, const MFloatPointArray& array) {
    array.storage_.write(out);
    return out;
}

std::ostream& operator<<(std::ostream& out, const MFloatVectorArray& array) {
    array.storage_.write(out);
    return out;
}

std::ostream& operator<<(std::ostream& out, const MIntArray& array) {
    array.storage_.write(out);
    return out;
}

std::ostream& operator<<(std::ostream& out, const MMatrixArray& array) {
    array.storage_.write(out);
    return out;
}

std::ostream& operator<<(std::ostream& out, const MPointArray& array) {
    array.storage_.write(out);
    return out;
}

std::ostream& operator<<(std::ostream& out, const MStringArray& array) {
    array.storage_.write(out);
    return out;
}

std::ostream& operator<<(std::ostream& out, const MUint64Array& array) {
    array.storage_.write(out);
    return out;
}

std::ostream& operator<<(std::ostream& out, const MUintArray& array) {
    array.storage_.write(out);
    return out;
}

std::ostream& operator<<(std::ostream& out, const MVectorArray& array) {
    array.storage_.write(out);
    return out;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE

namespace host::api {

namespace {

#if defined(DELVEN_POISON_ARRAYS)
std::atomic<bool> arrayPoison{true};
#else
std::atomic<bool> arrayPoison{false};
#endif

}  // namespace

bool isArrayPoisonOn() {
    return arrayPoison.load(std::memory_order_relaxed);
}

void setArrayPoison(bool isOn) {
    arrayPoison.store(isOn, std::memory_order_relaxed);
}

}  // namespace host::api
