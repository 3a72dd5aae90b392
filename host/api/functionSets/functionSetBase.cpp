#include <maya/MFnBase.h>

#include "api/handles/answers.h"

OPENMAYA_MAJOR_NAMESPACE_OPEN

using host::api::answer;

MFnBase::MFnBase() = default;
MFnBase::~MFnBase() = default;

MFn::Type MFnBase::type() const {
    return MFn::kBase;
}

bool MFnBase::hasObj(MFn::Type type) const {
    return object_.hasFn(type);
}

bool MFnBase::hasObj(const MObject& object) const {
    return object.hasFn(type());
}

MObject MFnBase::object(MStatus* status) const {
    return answer(status, object_.hasFn(type()) ? &object_ : nullptr,
                  [](const MObject& object) { return object; });
}

MStatus MFnBase::setObject(MObject& object) {
    return setObject(static_cast<const MObject&>(object));
}

MStatus MFnBase::setObject(const MObject& object) {
    if (object.hasFn(type())) {
        object_ = object;
        return MStatus::kSuccess;
    }
    const MStatus status = object.isNull() ? host::api::missingObject() : host::api::incompatible();
    object_ = MObject();
    return status;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
