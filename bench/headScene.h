#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>

#include "benchScene.h"

/// The scene of a size with the mesh "head", made of sheets (sheets.h), and the blend shape "headTargets" on
/// it: its target 0 moves every vertex. The undeformed shape has a map of its vertices.
struct HeadScene {
    explicit HeadScene(int vertices);

    BenchScene& scene;
    MObject blendShape;
    MDagPath original;
    MPlug map;

  private:
    void make(int vertices);
};
