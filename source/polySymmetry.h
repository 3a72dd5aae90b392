#pragma once

#include <maya/MArgList.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFn.h>
#include <maya/MPxCommand.h>
#include <maya/MSelectionList.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

#include <vector>

#include "meshObject.h"
#include "positionCheck.h"

/// dv_polySymmetry: checks a mesh, or one shell of it, for mirror images by position, or makes it
/// symmetric by a vertex order map.
///
/// The result of a check is 1 when every vertex has a partner; otherwise 0, and the vertices
/// without one are selected, unless the partners found go into the mesh's vertex order map. A check
/// also leaves a tolerance that suits the mesh in an option variable. Undo sets the points as they
/// were, after a check too; maps, the selection and the option variable stay.
class polySymmetry : public MPxCommand {
  public:
    static constexpr const char* kName = "dv_polySymmetry";

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& arguments) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

  private:
    MStatus readObjects(const MSelectionList& objects);
    void readComponent(const MSelectionList& objects);

    /// The side whose vertices follow those of the other, as planeSide tells it.
    int targetSide() const { return isPositiveSource_ ? -1 : 1; }
    MStatus applyMap();
    MStatus check();
    std::vector<int> restrictedVertices() const;
    int firstFace() const;
    MStatus readMap(const std::vector<int>& restricted, std::vector<int>& map) const;
    MStatus findPartners(const std::vector<int>& restricted, SymmetryFindings& findings) const;
    void showFindings(const std::vector<int>& asymmetric) const;

    bool addsToMap_ = false;
    bool appliesMap_ = false;
    MString axis_ = "x";
    bool isPositiveSource_ = true;
    double tolerance_ = 0.001;

    bool isChecked_ = false;
    MeshObject mesh_;
    MeshObject mapSource_;
    MFn::Type componentType_ = MFn::kInvalid;  // of the mesh's item: vertices, edges, faces or nothing
    int firstElement_ = -1;
    MFloatPointArray savedPoints_;
};
