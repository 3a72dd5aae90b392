#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <vector>

#include "scene/meshObject.h"
#include "weights/weightList.h"

/// The weights of one influence of a skin cluster, as the weights of a target.
class SkinInfluence {
  public:
    /// @param influence  its place among the influences
    /// @param error      what is wrong: the name, the mesh or the place
    bool find(const MString& skinCluster, const MeshObject& mesh, int influence, MString& error);

    /// The weights of the influence at the vertices from 0 up to a count.
    MStatus read(unsigned int vertexCount, WeightList& weights) const;

    /// Makes weights those of the influence; the host normalises. Unless every vertex is listed,
    /// the influence gets 0 at the vertices that are not. What was there before is kept for
    /// restore().
    /// @param weights  of vertices below the count
    MStatus write(unsigned int vertexCount, const WeightList& weights);

    /// Writes back what the last write() found.
    MStatus restore();

  private:
    /// Weights of all influences at some vertices, vertex by vertex.
    struct Block {
        MObject component;
        MDoubleArray weights;
    };

    Block makeBlock(MIntArray vertices) const;
    MStatus readBlock(Block& block) const;
    MStatus writeBlock(Block& block);

    MObjectHandle skinCluster_;
    MeshObject mesh_;
    unsigned int influence_ = 0;
    MIntArray influences_;  // the places of all
    Block before_;
};
