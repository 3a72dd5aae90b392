#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <memory>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// The arguments of a command call, parsed by the command's syntax.
///
/// If the arguments do not fit the syntax, the constructor fails: the host shows why, and every accessor
/// fails from then on. The script statement that called the command fails, whatever the command returns.
class OPENMAYA_EXPORT MArgParser {
  public:
    MArgParser(const MSyntax& syntax, const MArgList& arguments, MStatus* status = nullptr);
    virtual ~MArgParser();

    bool isFlagSet(const char* flag, MStatus* status = nullptr) const;
    bool isEdit(MStatus* status = nullptr) const;
    bool isQuery(MStatus* status = nullptr) const;
    unsigned int numberOfFlagsUsed() const;
    unsigned int numberOfFlagUses(const char* flag) const;
    /// The arguments of one use of a flag, as a list.
    MStatus getFlagArgumentList(const char* flag, unsigned int index, MArgList& arguments) const;

    MStatus getFlagArgument(const char* flag, unsigned int index, bool& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, int& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, double& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, MString& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, unsigned& result) const;
    bool flagArgumentBool(const char* flag, unsigned int index, MStatus* status = nullptr) const;
    int flagArgumentInt(const char* flag, unsigned int index, MStatus* status = nullptr) const;
    double flagArgumentDouble(const char* flag, unsigned int index, MStatus* status = nullptr) const;
    MString flagArgumentString(const char* flag, unsigned int index, MStatus* status = nullptr) const;

    MStatus getCommandArgument(unsigned int index, bool& result) const;
    MStatus getCommandArgument(unsigned int index, int& result) const;
    MStatus getCommandArgument(unsigned int index, double& result) const;
    MStatus getCommandArgument(unsigned int index, MString& result) const;
    bool commandArgumentBool(unsigned int index, MStatus* status = nullptr) const;
    int commandArgumentInt(unsigned int index, MStatus* status = nullptr) const;
    double commandArgumentDouble(unsigned int index, MStatus* status = nullptr) const;
    MString commandArgumentString(unsigned int index, MStatus* status = nullptr) const;

    MStatus getObjects(MStringArray& result) const;

  protected:
    struct Parsed;
    std::unique_ptr<Parsed> parsed_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
