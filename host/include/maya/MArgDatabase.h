#pragma once

#include <maya/MArgParser.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// MArgParser that also resolves the objects of the command line in the scene.
class OPENMAYA_EXPORT MArgDatabase : public MArgParser {
  public:
    MArgDatabase(const MSyntax& syntax, const MArgList& arguments, MStatus* status = nullptr);
    ~MArgDatabase() override;

    using MArgParser::getCommandArgument;
    using MArgParser::getFlagArgument;
    using MArgParser::getObjects;

    /// The named objects, components of one object as one item; without any a copy of the active selection,
    /// where the syntax says so.
    MStatus getObjects(MSelectionList& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, MSelectionList& result) const;
    MStatus getCommandArgument(unsigned int index, MSelectionList& result) const;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
