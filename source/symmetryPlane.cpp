#include "symmetryPlane.h"

#include <cmath>

bool isAxisText(const MString& text) {
    return text == "x" || text == "y" || text == "z";
}

int axisIndex(const MString& text) {
    if (text == "y") return 1;
    return text == "z" ? 2 : 0;
}

float round5(float value) {
    return std::round(value * 100000.0F) / 100000.0F;
}

double round5(double value) {
    return std::round(value * 100000.0) / 100000.0;
}
