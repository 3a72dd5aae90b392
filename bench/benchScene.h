#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MFloatPointArray.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MPointArray.h>

#include <memory>
#include <string>

#include "support/scene.h"

/// A grid of quads with at least `vertices` vertices, as mesh creation takes it.
struct Grid {
    explicit Grid(int vertices);

    MFloatPointArray points;
    MIntArray counts;
    MIntArray connects;
};

/// A scene with a grid "base" and the blend shape "bs" on it, whose target 0 moves every vertex.
class BenchScene {
  public:
    /// The scene of a size. The last one is kept: rows of one size share it.
    static BenchScene& of(int vertices);

    /// Runs script text; ends the program when it fails, since the figures would mean nothing.
    std::string mel(const std::string& text);
    MObject node(const char* name) const;

    MIntArray vertices;
    MPointArray deltas;    // one per entry of `vertices`
    MDoubleArray weights;  // one per entry of `vertices`
    MObject blendShape;
    MObject original;  // the undeformed shape

  private:
    explicit BenchScene(int vertices);

    Scene scene_;
    int size_;
};
