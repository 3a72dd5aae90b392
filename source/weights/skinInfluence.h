#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <vector>

#include "scene/meshObject.h"
#include "weights/weightList.h"

/// The weights of one influence of a skin cluster, read and written like the weights of a target.
class SkinInfluence {
  public:
    /// @param influence  its position among the influences
    /// @param error      what is wrong: the name, the mesh or the position
    bool find(const MString& skinCluster, const MeshObject& mesh, int influence, MString& error);

    /// The weights of the influence at vertices 0 to vertexCount - 1.
    MStatus read(unsigned int vertexCount, WeightList& weights) const;

    /// Sets the weights of the influence; the host normalises. Vertices that are not listed get 0. Keeps the
    /// old weights for restore().
    /// @param weights  of vertices below vertexCount
    MStatus write(unsigned int vertexCount, const WeightList& weights);

    /// Restores the weights from before the last write().
    MStatus restore();

  private:
    /// Weights of all influences at some vertices, grouped by vertex.
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
    MIntArray influences_;  // positions of all influences
    Block before_;
};
