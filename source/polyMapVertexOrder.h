#pragma once

#include <maya/MDagPath.h>
#include <maya/MIntArray.h>
#include <maya/MSelectionList.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <vector>

#include "commandSupport.h"
#include "symmetry/symmetryTraversal.h"

/// dv_polyMapVertexOrder: pairs every vertex of a mesh with its mirror partner, by connectivity, and stores
/// the pairs on the mesh (vertexOrderMap.h).
///
/// Builds the map, extends it from selected edges, copies it, counts its gaps, or selects vertices by it. The
/// result is an int: 1, the number of gaps, or -1 if there is no usable map or nothing could be mapped. Modes
/// that select set no result, except that -1. Not undoable: a map stays. Problems with single shells are
/// reported and leave gaps. If a walk fails, the stored map does not change.
class polyMapVertexOrder : public CommandOf<polyMapVertexOrder> {
  public:
    static constexpr const char* kName = "dv_polyMapVertexOrder";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;
    CallOutcome restore() override;

  private:
    /// What a call does, in the order in which one flag overrides another.
    enum class Mode { kCheck, kSelectMapped, kSelectUnmapped, kCopy, kExtend, kBuild };

    void readFlags(const MArgDatabase& arguments);
    static Mode readMode(const MArgDatabase& arguments);
    CallOutcome readMesh(const MSelectionList& objects);
    void readComponent(MObject& component);

    CallOutcome startAtSelectedEdges(std::vector<SymmetryStart>& starts) const;
    CallOutcome query(bool hasMap, const MIntArray& map);
    CallOutcome copyMap(const MIntArray& map) const;
    void select(const MIntArray& map) const;
    CallOutcome buildMap(std::vector<SymmetryStart>& starts, const MIntArray& stored);
    MStatus findStarts(SymmetryMesh& mesh, std::vector<SymmetryStart>& starts, bool& hasErrors) const;
    void showHowToGetDetails(double tolerance) const;

    Mode mode_ = Mode::kBuild;
    bool addsToMap_ = false;  // -addToMap is set: edges are read as for extending, in every mode
    MString axis_ = "x";
    MString copyTarget_;
    bool selectsFound_ = false;
    double tolerance_ = 0.0001;
    int verbose_ = 0;

    MDagPath mesh_;
    bool areVerticesSelected_ = false;
    MIntArray selectedVertices_;
    MIntArray selectedEdges_;
};
