#pragma once

#include <maya/MArgParser.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// An MArgParser that also looks up the objects of the command line in the scene.
class OPENMAYA_EXPORT MArgDatabase : public MArgParser {
  public:
    MArgDatabase(const MSyntax& syntax, const MArgList& arguments, MStatus* status = nullptr);
    ~MArgDatabase() override;

    using MArgParser::getCommandArgument;
    using MArgParser::getFlagArgument;
    using MArgParser::getObjects;

    /// The named objects. Components of one object are one item. Without names, a copy of the active
    /// selection if the syntax says so.
    MStatus getObjects(MSelectionList& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, MSelectionList& result) const;
    MStatus getCommandArgument(unsigned int index, MSelectionList& result) const;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
