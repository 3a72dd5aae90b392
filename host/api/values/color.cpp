#include <maya/MColor.h>

#include <ostream>

OPENMAYA_MAJOR_NAMESPACE_OPEN

const MColor MColor::kOpaqueBlack;

bool MColor::get(float color[3]) const {
    color[0] = r;
    color[1] = g;
    color[2] = b;
    return true;
}

bool MColor::operator==(const MColor& other) const {
    return r == other.r && g == other.g && b == other.b && a == other.a;
}

bool MColor::operator!=(const MColor& other) const {
    return !(*this == other);
}

std::ostream& operator<<(std::ostream& out, const MColor& color) {
    return out << '(' << color.r << ", " << color.g << ", " << color.b << ", " << color.a << ')';
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
