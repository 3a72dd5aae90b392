#include <maya/MCommandResult.h>

#include <utility>

#include "api/commands/commandAccess.h"
#include "api/commands/scriptValues.h"
#include "api/values/statusMaker.h"

OPENMAYA_MAJOR_NAMESPACE_OPEN

struct MCommandResult::Content {
    host::mel::Value value;
};

MCommandResult::MCommandResult(MStatus* status) : content_(std::make_unique<Content>()) {
    host::api::report(status, MStatus::kSuccess);
}

MCommandResult::~MCommandResult() = default;

MCommandResult::Type MCommandResult::resultType() const {
    return host::api::typeOf(content_->value);
}

MStatus MCommandResult::getResult(int& result) const {
    return host::api::convert(content_->value, result);
}

MStatus MCommandResult::getResult(MIntArray& result) const {
    return host::api::convert(content_->value, result);
}

MStatus MCommandResult::getResult(double& result) const {
    return host::api::convert(content_->value, result);
}

MStatus MCommandResult::getResult(MDoubleArray& result) const {
    return host::api::convert(content_->value, result);
}

MStatus MCommandResult::getResult(MString& result) const {
    return host::api::convert(content_->value, result);
}

MStatus MCommandResult::getResult(MStringArray& result) const {
    return host::api::convert(content_->value, result);
}

MString MCommandResult::stringResult(MStatus* status) const {
    MString result;
    host::api::report(status, getResult(result));
    return result;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE

namespace host::api {

void CommandAccess::setContent(MCommandResult& result, mel::Value value) {
    result.content_->value = std::move(value);
}

}  // namespace host::api
