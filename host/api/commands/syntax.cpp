#include <maya/MSyntax.h>

#include <climits>
#include <optional>
#include <string>
#include <utility>

#include "api/commands/syntaxAccess.h"

using host::mel::ArgumentType;

OPENMAYA_MAJOR_NAMESPACE_OPEN

struct MSyntax::Table : host::api::SyntaxTable {};

OPENMAYA_MAJOR_NAMESPACE_CLOSE

namespace {

std::optional<ArgumentType> argumentType(MSyntax::MArgType type) {
    switch (type) {
        case MSyntax::kBoolean:
            return ArgumentType::Boolean;
        case MSyntax::kLong:
            return ArgumentType::Int;
        case MSyntax::kUnsigned:
            return ArgumentType::Unsigned;
        case MSyntax::kDouble:
        case MSyntax::kDistance:
        case MSyntax::kAngle:
        case MSyntax::kTime:
            return ArgumentType::Double;
        case MSyntax::kString:
        case MSyntax::kSelectionItem:
            return ArgumentType::String;
        case MSyntax::kInvalidArgType:
        case MSyntax::kNoArg:
        case MSyntax::kLastArgType:
            break;
    }
    return std::nullopt;
}

int objectLimit(unsigned int limit) {
    return limit > static_cast<unsigned int>(INT_MAX) ? INT_MAX : static_cast<int>(limit);
}

}  // namespace

OPENMAYA_MAJOR_NAMESPACE_OPEN

MSyntax::MSyntax() : table_(std::make_shared<Table>()) {}
MSyntax::MSyntax(std::shared_ptr<Table> table) : table_(std::move(table)) {}
MSyntax::MSyntax(const MSyntax& other) : table_(std::make_shared<Table>(*other.table_)) {}
MSyntax::~MSyntax() = default;

MSyntax& MSyntax::operator=(const MSyntax& other) {
    *table_ = *other.table_;
    return *this;
}

MStatus MSyntax::addFlag(const char* shortName, const char* longName, MArgType argType1, MArgType argType2,
                         MArgType argType3, MArgType argType4, MArgType argType5, MArgType argType6) {
    if (shortName == nullptr || longName == nullptr) return MStatus::kInvalidParameter;
    host::mel::Flag flag;
    flag.shortName = shortName;
    flag.longName = longName;
    for (const MArgType type : {argType1, argType2, argType3, argType4, argType5, argType6}) {
        if (type == kNoArg) break;
        const std::optional<ArgumentType> argument = argumentType(type);
        if (!argument) return MStatus::kInvalidParameter;
        flag.arguments.push_back(*argument);
    }
    return table_->syntax.addFlag(std::move(flag)) ? MStatus(MStatus::kSuccess) : MStatus(MStatus::kFailure);
}

MStatus MSyntax::makeFlagMultiUse(const char* flagName) {
    const bool found = flagName != nullptr && table_->syntax.makeMultiUse(flagName);
    return found ? MStatus(MStatus::kSuccess) : MStatus(MStatus::kInvalidParameter);
}

MStatus MSyntax::addArg(MArgType argType) {
    const std::optional<ArgumentType> argument = argumentType(argType);
    if (!argument) return MStatus::kInvalidParameter;
    if (table_->format != kNone) return MStatus::kFailure;
    table_->syntax.addArgument(*argument);
    return MStatus::kSuccess;
}

MStatus MSyntax::setObjectType(MObjectFormat format, unsigned int minimumObjects) {
    return setObjectType(format, minimumObjects, UINT_MAX);
}

MStatus MSyntax::setObjectType(MObjectFormat format, unsigned int minimumObjects,
                               unsigned int maximumObjects) {
    if (format != kNone && format != kStringObjects && format != kSelectionList)
        return MStatus::kInvalidParameter;
    if (format != kNone && !table_->syntax.arguments().empty()) return MStatus::kFailure;
    table_->format = format;
    table_->minimumObjects = minimumObjects;
    setMaxObjects(maximumObjects);
    return MStatus::kSuccess;
}

void MSyntax::setMinObjects(unsigned int minimumObjects) {
    table_->minimumObjects = minimumObjects;
}

void MSyntax::setMaxObjects(unsigned int maximumObjects) {
    table_->maximumObjects = maximumObjects;
    const auto kind = table_->format == kNone ? host::mel::ObjectKind::None : host::mel::ObjectKind::Strings;
    table_->syntax.objects(kind, 0, objectLimit(maximumObjects));
}

unsigned int MSyntax::minObjects() const {
    return table_->minimumObjects;
}

unsigned int MSyntax::maxObjects() const {
    return table_->maximumObjects;
}

void MSyntax::useSelectionAsDefault(bool enable) {
    table_->usesSelection = enable;
}

void MSyntax::enableEdit(bool supportsEdit) {
    table_->syntax.enableEdit(supportsEdit);
}

void MSyntax::enableQuery(bool supportsQuery) {
    table_->syntax.enableQuery(supportsQuery);
}

bool MSyntax::canEdit() const {
    return table_->syntax.hasEdit();
}

bool MSyntax::canQuery() const {
    return table_->syntax.hasQuery();
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE

namespace host::api {

const SyntaxTable& SyntaxAccess::table(const MSyntax& syntax) {
    return *syntax.table_;
}

MSyntax SyntaxAccess::shared(const MSyntax& syntax) {
    return MSyntax(syntax.table_);
}

}  // namespace host::api
