#pragma once

#include <maya/MFloatPointArray.h>
#include <maya/MSelectionList.h>
#include <maya/MString.h>

#include "commandSupport.h"
#include "scene/createdMesh.h"
#include "scene/meshObject.h"
#include "targets/correctivePoints.h"

/// dv_sculptExtractDeltaMesh: makes a mesh that, as a target before the deformation of another one, turns the
/// deformed mesh into the sculpt.
///
/// How the deformation moves each vertex is found by moving the intermediate shape, whose points are as
/// before afterwards. Where it cannot be inverted, a warning says at how many vertices (correctivePoints.h).
/// Vertices that the sculpt lacks keep their rest position.
///
/// The result is the name of the new mesh; 0 after an error in the arguments; -1 after one that shows only in
/// the meshes. Undo removes the mesh; redo brings the same mesh back, with its points extracted again from
/// the meshes as they are then.
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
