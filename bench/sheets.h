#pragma once

#include <maya/MFloatPointArray.h>
#include <maya/MIntArray.h>

#include <string>
#include <vector>

/// Meshes made of curved sheets that mirror each other in the plane x = 0, exactly.

/// A shell: columns x rows quads between the corners (x0, z0) and (x1, z1).
struct Sheet {
    int columns, rows;
    float x0, x1, z0, z1;

    int faceCount() const { return columns * rows; }
};

/// Adds two sheets beside the plane that are numbered alike.
void addSheetPair(std::vector<Sheet>& sheets, int columns, int rows, float z);

/// A mesh like a head with its parts: nine tenths of the vertices over the plane, the rest in five pairs
/// beside it, each with its own face count.
std::vector<Sheet> headSheets(int vertices);

/// Sheets as mesh creation takes them, one after the other.
struct SheetShape {
    explicit SheetShape(const std::vector<Sheet>& sheets);

    /// Makes an object <name> of it, with the shape <name>Shape.
    void makeMesh(const std::string& name) const;

    /// Numbers vertices and faces at random, the same way for each seed.
    void shuffle(unsigned int seed);

    MFloatPointArray points;
    MIntArray counts;
    MIntArray connects;
};
