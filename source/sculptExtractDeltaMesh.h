#pragma once

#include <maya/MFloatPointArray.h>
#include <maya/MSelectionList.h>
#include <maya/MString.h>

#include "commandSupport.h"
#include "scene/createdMesh.h"
#include "scene/meshObject.h"
#include "targets/correctivePoints.h"

/// dv_sculptExtractDeltaMesh: makes a corrective mesh. Used as a target before the deformation of another
/// mesh, it turns the deformed mesh into the sculpt.
///
/// The command finds how the deformation moves each vertex by moving the intermediate shape, and then
/// restores its points. If the deformation has no inverse at some vertices, a warning gives their number
/// (correctivePoints.h). Vertices that the sculpt lacks keep their rest position.
///
/// The result is the name of the new mesh. It is 0 after an error in the arguments, and -1 after an error
/// that shows only in the meshes. Undo removes the new mesh. Redo brings the same mesh back and extracts its
/// points again, from the current meshes.
class sculptExtractDeltaMesh : public CommandOf<sculptExtractDeltaMesh> {
  public:
    static constexpr const char* kName = "dv_sculptExtractDeltaMesh";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;
    CallOutcome redo() override;
    CallOutcome restore() override;

  private:
    bool readMeshes(const MSelectionList& objects, const MString& meshName, const MString& originalName,
                    MString& error);
    bool readCorrective(MFloatPointArray& points, unsigned int& unsolved, MString& error) const;
    bool probe(const MFloatPointArray& rest, ProbedDeformation& deformation, MString& error) const;
    CallOutcome extract(MFloatPointArray& points) const;
    CallOutcome create(MFloatPointArray& points);

    bool compares_ = false;
    MeshObject sculpt_;
    MeshObject deformed_;
    MeshObject intermediate_;
    CreatedMesh created_;
};
