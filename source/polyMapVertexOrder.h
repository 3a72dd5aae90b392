#pragma once

#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MDagPath.h>
#include <maya/MIntArray.h>
#include <maya/MPxCommand.h>
#include <maya/MSelectionList.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

#include <vector>

#include "symmetryTraversal.h"

/// dv_polyMapVertexOrder: pairs every vertex of a mesh with its mirror partner, by connectivity, and keeps
/// the pairs on the mesh (vertexOrderMap.h).
///
/// Builds the map, extends it from selected edges, copies it, counts its gaps, or selects what it maps. The
/// result is an int: 1, the number of gaps, or -1 where there is no usable map or nothing could be mapped;
/// modes that select set none. Not undoable: a map that was written stays. Problems with single shells are
/// told and leave gaps; a walk that fails leaves the stored map as it was.
class polyMapVertexOrder : public MPxCommand {
  public:
    static constexpr const char* kName = "dv_polyMapVertexOrder";

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& arguments) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

  private:
    void readFlags(const MArgDatabase& arguments);
    MStatus readMesh(const MSelectionList& objects);
    void readComponent(MObject& component);

    bool isQuery() const { return checks_ || copies_ || selectsMapped_ || selectsUnmapped_; }
    MStatus startAtSelectedEdges(std::vector<SymmetryStart>& starts) const;
    MStatus query(bool hasMap, const MIntArray& map);
    MStatus copyMap(const MIntArray& map) const;
    void select(const MIntArray& map) const;
    MStatus buildMap(std::vector<SymmetryStart>& starts, const MIntArray& stored);
    MStatus findStarts(SymmetryMesh& mesh, std::vector<SymmetryStart>& starts, bool& hasErrors) const;
    void showHowToGetDetails(double tolerance) const;

    bool addsToMap_ = false;
    MString axis_ = "x";
    bool checks_ = false;
    bool copies_ = false;
    MString copyTarget_;
    bool selectsFound_ = false;
    bool selectsMapped_ = false;
    bool selectsUnmapped_ = false;
    double tolerance_ = 0.0001;
    int verbose_ = 0;

    MDagPath mesh_;
    bool areVerticesSelected_ = false;
    MIntArray selectedVertices_;
    MIntArray selectedEdges_;
};
