#pragma once

#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MFloatPointArray.h>
#include <maya/MObjectHandle.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

#include "correctivePoints.h"
#include "meshObject.h"

/// dv_sculptExtractDeltaMesh: makes a mesh that, as a target before the deformation of another one, turns the
/// deformed mesh into the sculpt.
///
/// How the deformation moves each vertex is found by moving the intermediate shape, whose points are as
/// before afterwards. Where it cannot be inverted, a warning says at how many vertices (correctivePoints.h).
/// Vertices that the sculpt lacks keep their rest position.
///
/// The result is the name of the new mesh; 0 after an error in the arguments; -1 after one that shows only in
/// the meshes. Undo deletes the mesh; redo extracts again, from the meshes as they are then.
class sculptExtractDeltaMesh : public MPxCommand {
  public:
    static constexpr const char* kName = "dv_sculptExtractDeltaMesh";

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& arguments) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

  private:
    bool readMeshes(const MSelectionList& objects, const MString& meshName, const MString& originalName,
                    MString& error);
    bool readCorrective(MFloatPointArray& points, unsigned int& unsolved, MString& error) const;
    bool probe(const MFloatPointArray& rest, ProbedDeformation& deformation, MString& error) const;
    MStatus create(MFloatPointArray& points);

    bool compares_ = false;
    bool isChecked_ = false;  // all checks have passed: there is something to redo
    MeshObject sculpt_;
    MeshObject deformed_;
    MeshObject intermediate_;
    MObjectHandle created_;
};
