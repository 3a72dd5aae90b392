// The function sets of other data: texts, matrices, meshes, and the bases of all data.

#include <maya/MFnData.h>
#include <maya/MFnGeometryData.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnMeshData.h>
#include <maya/MFnStringData.h>

#include <memory>

#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "api/handles/objectAccess.h"
#include "nodes/meshData.h"

using host::api::answer;
using host::api::missingObject;
using host::api::ObjectAccess;
using host::api::report;
using host::graph::MatrixData;
using host::graph::StringData;

namespace {

/// The data of an object as a T; null if it is not a T.
template <typename T>
const T* dataOf(const MObject& object) {
    const host::api::DataBody* body = ObjectAccess::data(object);
    return body != nullptr ? dynamic_cast<const T*>(body->value.get()) : nullptr;
}

std::shared_ptr<const MatrixData> makeMatrix(const MMatrix& matrix) {
    host::graph::Matrix16 content{};
    for (unsigned int k = 0; k < 16; ++k)
        content[k] = matrix(k / 4, k % 4);
    return std::make_shared<MatrixData>(content);
}

}  // namespace

OPENMAYA_MAJOR_NAMESPACE_OPEN

MFnData::MFnData() = default;
MFnData::~MFnData() = default;

MFn::Type MFnData::type() const {
    return MFn::kData;
}

MFnStringData::MFnStringData() = default;
MFnStringData::~MFnStringData() = default;

MFnStringData::MFnStringData(MObject& object, MStatus* status)
    : MFnStringData(static_cast<const MObject&>(object), status) {}

MFnStringData::MFnStringData(const MObject& object, MStatus* status) {
    report(status, MFnBase::setObject(object));
}

MFn::Type MFnStringData::type() const {
    return MFn::kStringData;
}

MString MFnStringData::string(MStatus* status) const {
    return answer(status, dataOf<StringData>(object_),
                  [](const StringData& data) { return host::api::string(data.value); });
}

MStatus MFnStringData::set(const MString& value) {
    if (dataOf<StringData>(object_) == nullptr) return missingObject();
    ObjectAccess::data(object_)->value = std::make_shared<StringData>(host::api::text(value));
    return MStatus::kSuccess;
}

MObject MFnStringData::create(MStatus* status) {
    return create(MString(), status);
}

MObject MFnStringData::create(const MString& value, MStatus* status) {
    report(status,
           MFnBase::setObject(ObjectAccess::object(std::make_shared<StringData>(host::api::text(value)))));
    return object_;
}

MFnMatrixData::MFnMatrixData() = default;
MFnMatrixData::~MFnMatrixData() = default;

MFnMatrixData::MFnMatrixData(MObject& object, MStatus* status)
    : MFnMatrixData(static_cast<const MObject&>(object), status) {}

MFnMatrixData::MFnMatrixData(const MObject& object, MStatus* status) {
    report(status, MFnBase::setObject(object));
}

MFn::Type MFnMatrixData::type() const {
    return MFn::kMatrixData;
}

const MMatrix& MFnMatrixData::matrix(MStatus* status) const {
    const auto* data = dataOf<MatrixData>(object_);
    report(status, data != nullptr ? MStatus(MStatus::kSuccess) : missingObject());
    matrix_.setToIdentity();
    for (unsigned int k = 0; data != nullptr && k < 16; ++k)
        matrix_(k / 4, k % 4) = data->value[k];
    return matrix_;
}

MStatus MFnMatrixData::set(const MMatrix& matrix) {
    if (dataOf<MatrixData>(object_) == nullptr) return missingObject();
    ObjectAccess::data(object_)->value = makeMatrix(matrix);
    return MStatus::kSuccess;
}

MObject MFnMatrixData::create(MStatus* status) {
    return create(MMatrix(), status);
}

MObject MFnMatrixData::create(const MMatrix& matrix, MStatus* status) {
    report(status, MFnBase::setObject(ObjectAccess::object(makeMatrix(matrix))));
    return object_;
}

MFnGeometryData::MFnGeometryData() = default;
MFnGeometryData::~MFnGeometryData() = default;

MFnGeometryData::MFnGeometryData(MObject& object, MStatus* status)
    : MFnGeometryData(static_cast<const MObject&>(object), status) {}

MFnGeometryData::MFnGeometryData(const MObject& object, MStatus* status) {
    report(status, MFnBase::setObject(object));
}

// The only geometry of this host is meshes.
MFn::Type MFnGeometryData::type() const {
    return MFn::kMeshData;
}

MFnMeshData::MFnMeshData() = default;
MFnMeshData::~MFnMeshData() = default;

MFnMeshData::MFnMeshData(MObject& object, MStatus* status)
    : MFnMeshData(static_cast<const MObject&>(object), status) {}

MFnMeshData::MFnMeshData(const MObject& object, MStatus* status) {
    report(status, MFnBase::setObject(object));
}

MFn::Type MFnMeshData::type() const {
    return MFn::kMeshData;
}

MObject MFnMeshData::create(MStatus* status) {
    const auto empty = std::make_shared<host::nodes::MeshData>(host::geometry::Mesh());
    report(status, MFnBase::setObject(ObjectAccess::object(empty)));
    return object_;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
