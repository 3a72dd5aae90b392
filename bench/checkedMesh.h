#pragma once

#include <maya/MDagPath.h>

#include <string>
#include <vector>

/// A mesh to look for mirror partners on, about 4 units wide.
struct CheckedForm {
    enum Shape {
        kHead,      // symmetric to the last bit
        kExported,  // nearly: the last digits of every number are lost
        kSculpt,    // the head with a tenth of its vertices sculpted on one side, less and less toward the
                    // border
        kScan       // every vertex is off by up to half the distance to its neighbours
    };
    Shape shape = kHead;
    bool isShuffled = false;  // vertices and faces are numbered at random

    std::string name() const;
};

/// All of them.
std::vector<CheckedForm> checkedForms();

/// The mesh of a form in the scene of a size. One at a time is kept.
MDagPath checkedMesh(int vertices, const CheckedForm& form);
