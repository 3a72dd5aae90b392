#pragma once

#include <string>
#include <vector>

#include "walk/draw.h"
#include "walk/walk.h"

namespace delven::walk {

/// How far a step can be taken back. What undo leaves behind may change what the redo of an earlier step
/// finds.
enum class Undo { kExact, kLeavesSomething, kRedoDiffers };

/// A kind of line, and how far it can be taken back.
struct Step {
    const char* name;
    std::string (*text)(Draw&);
    Undo undo = Undo::kExact;
    const char* reason = "";   // why it is not exact
    const char* failure = "";  // what stays when it fails
};

/// A line of this kind.
Line lineOf(const Step& step, Draw& draw);

/// The commands of the host.
const std::vector<Step>& hostSteps();
/// Our commands, on the deformers that are there.
const std::vector<Step>& moduleSteps();

/// A line that makes a mesh with a deformer.
std::string blendShapeOnNew(Draw& draw);

/// Lines that make a face with targets, in-betweens, weights and a region map, and meshes to work with.
std::vector<Line> faceScene();

}  // namespace delven::walk
