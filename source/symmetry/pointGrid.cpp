#include "symmetry/pointGrid.h"

void PointGrid::setCell(double cell) {
    // Cells are at least this part of the largest coordinate, so that their numbers fit the integers.
    constexpr double kSmallestPart = 0x1p-50;
    // And at least this long, so that the number of cells in a unit fits.
    constexpr double kSmallest = 1e-300;
    cellsPerUnit_ = 1.0 / std::max({cell, bounds_.reach() * kSmallestPart, kSmallest});
}
