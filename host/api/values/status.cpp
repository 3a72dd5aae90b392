#include "api/values/statusMaker.h"

#include <maya/MString.h>

#include <iostream>
#include <string>

namespace host::api {

namespace {

const char* codeName(MStatus::MStatusCode code) {
    switch (code) {
        case MStatus::kSuccess:
            return "kSuccess";
        case MStatus::kFailure:
            return "kFailure";
        case MStatus::kInsufficientMemory:
            return "kInsufficientMemory";
        case MStatus::kInvalidParameter:
            return "kInvalidParameter";
        case MStatus::kLicenseFailure:
            return "kLicenseFailure";
        case MStatus::kUnknownParameter:
            return "kUnknownParameter";
        case MStatus::kNotImplemented:
            return "kNotImplemented";
        case MStatus::kNotFound:
            return "kNotFound";
        case MStatus::kEndOfFile:
            return "kEndOfFile";
    }
    return "unknown code";
}

const char* generalText(MStatus::MStatusCode code) {
    switch (code) {
        case MStatus::kSuccess:
            return "Success";
        case MStatus::kFailure:
            return "Unexpected Internal Failure";
        case MStatus::kInsufficientMemory:
            return "Insufficient memory";
        case MStatus::kInvalidParameter:
            return "Invalid parameter";
        case MStatus::kLicenseFailure:
            return "License failure";
        case MStatus::kUnknownParameter:
            return "Unknown parameter";
        case MStatus::kNotImplemented:
            return "Not implemented";
        case MStatus::kNotFound:
            return "Not found";
        case MStatus::kEndOfFile:
            return "End of file";
    }
    return "Unexpected Internal Failure";
}

std::string errorText(const MStatus& status) {
    return "(" + std::string(codeName(status.statusCode())) + "): " + StatusMaker::text(status);
}

// One write per line, so that lines of several threads do not mix.
void writeErrorLine(const std::string& text) {
    std::cerr << text + "\n" << std::flush;
}

}  // namespace

MStatus StatusMaker::make(MStatus::MStatusCode code, Explanation explanation) {
    MStatus status(code);
    status.explanation_ = static_cast<unsigned char>(explanation);
    return status;
}

const char* StatusMaker::text(const MStatus& status) {
    switch (static_cast<Explanation>(status.explanation_)) {
        case Explanation::OfCode:
            return generalText(status.code_);
        case Explanation::ObjectDoesNotExist:
            return "Object does not exist";
        case Explanation::NoElementAtIndex:
            return "No element at given index";
        case Explanation::IncompatibleObject:
            return "Object is incompatible with this method";
        case Explanation::InternalFailure:
            return "Unexpected Internal Failure";
    }
    return generalText(status.code_);
}

MStatus report(MStatus* destination, const MStatus& status) {
    if (destination != nullptr) *destination = status;
    return status;
}

}  // namespace host::api

OPENMAYA_MAJOR_NAMESPACE_OPEN

void MStatus::clear() {
    *this = MStatus();
}

MString MStatus::errorString() const {
    return MString(host::api::errorText(*this).c_str());
}

void MStatus::perror(const char* text) const {
    host::api::writeErrorLine(std::string(text != nullptr ? text : "") + ": " + host::api::errorText(*this));
}

void MStatus::perror(const MString& text) const {
    perror(text.asChar());
}

void MStatus::pAPIerror(const char* fileName, int lineNumber) const {
    const std::string file(fileName != nullptr ? fileName : "");
    host::api::writeErrorLine("API error detected in " + file + " at line " + std::to_string(lineNumber) +
                              ": " + host::api::errorText(*this));
}

std::ostream& operator<<(std::ostream& out, MStatus& status) {
    return out << host::api::errorText(status);
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
