#pragma once

#include <maya/MFloatPointArray.h>
#include <maya/MFn.h>
#include <maya/MSelectionList.h>
#include <maya/MString.h>

#include <vector>

#include "commandSupport.h"
#include "scene/meshObject.h"
#include "symmetry/positionCheck.h"

/// dv_polySymmetry: checks a mesh, or one shell of it, for mirror images by position; or makes a mesh
/// symmetric by a vertex order map.
///
/// The result of a check is 1 if every vertex has a partner, otherwise 0. A check selects the vertices
/// without partner, unless it was asked to write the partners to the mesh's vertex order map. It also stores
/// a tolerance that suits the mesh in an option variable. Undo restores the points, after a check too. Maps,
/// the selection and the option variable stay.
class polySymmetry : public CommandOf<polySymmetry> {
  public:
    static constexpr const char* kName = "dv_polySymmetry";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;
    CallOutcome restore() override;

  private:
    CallOutcome readObjects(const MSelectionList& objects);
    void readComponent(const MSelectionList& objects);

    /// The side that is made to match the other, as planeSide returns it.
    int targetSide() const { return isPositiveSource_ ? -1 : 1; }
    CallOutcome applyMap();
    CallOutcome check();
    std::vector<int> restrictedVertices() const;
    int firstFace() const;
    CallOutcome readMap(const std::vector<int>& restricted, std::vector<int>& map) const;
    CallOutcome findPartners(const std::vector<int>& restricted, SymmetryFindings& findings) const;
    void showFindings(const std::vector<int>& asymmetric) const;

    bool addsToMap_ = false;
    bool appliesMap_ = false;
    MString axis_ = "x";
    bool isPositiveSource_ = true;
    double tolerance_ = 0.001;

    MeshObject mesh_;
    MeshObject mapSource_;
    MFn::Type componentType_ = MFn::kInvalid;  // of the components given with the mesh; kInvalid: none
    int firstElement_ = -1;
    bool hasSavedPoints_ = false;
    MFloatPointArray savedPoints_;
};
