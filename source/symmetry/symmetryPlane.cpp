#include "symmetry/symmetryPlane.h"

bool isAxisText(const MString& text) {
    return text == "x" || text == "y" || text == "z";
}

int axisIndex(const MString& text) {
    if (text == "y") return 1;
    return text == "z" ? 2 : 0;
}

int planeSide(float coordinate) {
    const float rounded = round5(coordinate);
    return rounded > 0.0F ? 1 : rounded < 0.0F ? -1 : 0;
}

bool isOnPlane(const MPoint& position, unsigned int axis, double tolerance) {
    MPoint projected = position;
    projected[axis] = 0.0;
    return position.isEquivalent(projected, tolerance);
}
