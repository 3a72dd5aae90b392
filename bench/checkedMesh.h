#pragma once

#include <maya/MDagPath.h>

#include <array>
#include <string>

/// A mesh to look for mirror partners on, about 4 units wide.
struct CheckedForm {
    enum Shape {
        kHead,    // symmetric to the last bit
        kSculpt,  // the same, with a tenth of the vertices sculpted on one side, less and less toward the
                  // border
        kScan     // every vertex is off by up to half the distance to its neighbours
    };
    Shape shape = kHead;
    bool isShuffled = false;  // vertices and faces are numbered at random

    std::string name() const;
};

constexpr std::array<CheckedForm, 6> kCheckedForms{{{CheckedForm::kHead, false},
                                                    {CheckedForm::kHead, true},
                                                    {CheckedForm::kSculpt, false},
                                                    {CheckedForm::kSculpt, true},
                                                    {CheckedForm::kScan, false},
                                                    {CheckedForm::kScan, true}}};

/// The mesh of a form in the scene of a size. One at a time is kept.
MDagPath checkedMesh(int vertices, const CheckedForm& form);
