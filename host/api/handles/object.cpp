// MObject and MObjectHandle.

#include <maya/MObject.h>
#include <maya/MObjectHandle.h>

#include <functional>
#include <utility>

#include "api/handles/functionSetTable.h"
#include "api/handles/objectAccess.h"

OPENMAYA_MAJOR_NAMESPACE_OPEN

using host::api::ObjectAccess;

MObject MObject::kNullObj;

MObject::MObject() = default;
MObject::MObject(const MObject& other) = default;
MObject::~MObject() = default;
MObject& MObject::operator=(const MObject& other) = default;

MObject::MObject(Kind kind, std::shared_ptr<void> body) : body_(std::move(body)), kind_(kind) {}

bool MObject::operator==(const MObject& other) const {
    return kind_ == other.kind_ && body_ == other.body_;
}

bool MObject::operator!=(const MObject& other) const {
    return !(*this == other);
}

bool MObject::isNull() const {
    return kind_ == Kind::Null;
}

bool MObject::hasFn(MFn::Type fs) const {
    switch (kind_) {
        case Kind::Null:
            return false;
        case Kind::Node: {
            const auto* node = static_cast<const host::graph::Node*>(body_.get());
            return node->isAlive() && host::api::hasFunctionSet(node->type(), fs);
        }
        case Kind::Attribute:
            return host::api::hasFunctionSet(*ObjectAccess::attribute(*this), fs);
        case Kind::World:
            return fs == MFn::kWorld || fs == MFn::kBase;
        case Kind::Plugin:
            return fs == MFn::kPlugin || fs == MFn::kBase;
        case Kind::Component:
            return fs == MFn::kSingleIndexedComponent || fs == MFn::kComponent || fs == MFn::kMeshComponent ||
                   fs == MFn::kBase || fs == apiType();
        case Kind::Data:
            return fs == apiType() || fs == MFn::kData || fs == MFn::kBase ||
                   (fs == MFn::kMesh && apiType() == MFn::kMeshData);
    }
    return false;
}

MFn::Type MObject::apiType() const {
    switch (kind_) {
        case Kind::Null:
            break;
        case Kind::Node: {
            const auto* node = static_cast<const host::graph::Node*>(body_.get());
            return node->isAlive() ? host::api::functionSetOf(node->type()) : MFn::kInvalid;
        }
        case Kind::World:
            return MFn::kWorld;
        case Kind::Attribute:
            return host::api::functionSetOf(*ObjectAccess::attribute(*this));
        case Kind::Component:
            return host::api::functionSetOf(ObjectAccess::component(*this)->kind());
        case Kind::Data:
            return host::api::functionSetOfData(ObjectAccess::data(*this)->value->typeName());
        case Kind::Plugin:
            return MFn::kPlugin;
    }
    return MFn::kInvalid;
}

const char* MObject::apiTypeStr() const {
    return host::api::enumeratorName(apiType());
}

MObjectHandle::MObjectHandle() = default;
MObjectHandle::MObjectHandle(const MObject& object) : object_(object) {}
MObjectHandle::MObjectHandle(const MObjectHandle& other) = default;
MObjectHandle::~MObjectHandle() = default;
MObjectHandle& MObjectHandle::operator=(const MObjectHandle& other) = default;

MObjectHandle& MObjectHandle::operator=(const MObject& object) {
    object_ = object;
    return *this;
}

MObject MObjectHandle::object() const {
    return isValid() ? object_ : MObject();
}

const MObject& MObjectHandle::objectRef() const {
    return isValid() ? object_ : MObject::kNullObj;
}

unsigned int MObjectHandle::hashCode() const {
    return objectHashCode(object_);
}

unsigned int MObjectHandle::objectHashCode(const MObject& object) {
    // The hash of a node is its creation number, so that a script gives the same numbers in every run.
    if (const host::graph::NodeRef node = ObjectAccess::anyNode(object))
        return static_cast<unsigned int>(node->id());
    return static_cast<unsigned int>(std::hash<const void*>{}(ObjectAccess::identity(object)));
}

bool MObjectHandle::isValid() const {
    return ObjectAccess::isNode(object_) ? ObjectAccess::node(object_) != nullptr : !object_.isNull();
}

bool MObjectHandle::isAlive() const {
    return !object_.isNull();
}

bool MObjectHandle::operator==(const MObjectHandle& other) const {
    return object_ == other.object_;
}

bool MObjectHandle::operator==(const MObject& object) const {
    return object_ == object;
}

bool MObjectHandle::operator!=(const MObjectHandle& other) const {
    return !(*this == other);
}

bool MObjectHandle::operator!=(const MObject& object) const {
    return !(*this == object);
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
