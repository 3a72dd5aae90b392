#include <maya/MBoundingBox.h>
#include <maya/MMatrix.h>

#include <algorithm>

OPENMAYA_MAJOR_NAMESPACE_OPEN

namespace {

MPoint lower(const MPoint& a, const MPoint& b) {
    return MPoint(std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z));
}

MPoint upper(const MPoint& a, const MPoint& b) {
    return MPoint(std::max(a.x, b.x), std::max(a.y, b.y), std::max(a.z, b.z));
}

}  // namespace

MBoundingBox::MBoundingBox(const MPoint& corner1, const MPoint& corner2)
    : minimum_(lower(corner1, corner2)), maximum_(upper(corner1, corner2)), empty_(false) {}

void MBoundingBox::clear() {
    *this = MBoundingBox();
}

void MBoundingBox::transformUsing(const MMatrix& matrix) {
    if (empty_) return;
    MBoundingBox result;
    for (int corner = 0; corner < 8; ++corner) {
        result.expand(MPoint(corner % 2 == 0 ? minimum_.x : maximum_.x,
                             corner / 2 % 2 == 0 ? minimum_.y : maximum_.y,
                             corner / 4 == 0 ? minimum_.z : maximum_.z) *
                      matrix);
    }
    *this = result;
}

void MBoundingBox::expand(const MPoint& point) {
    expand(MBoundingBox(point, point));
}

void MBoundingBox::expand(const MBoundingBox& box) {
    if (box.empty_) return;
    *this = empty_ ? box : MBoundingBox(lower(minimum_, box.minimum_), upper(maximum_, box.maximum_));
}

bool MBoundingBox::contains(const MPoint& point) const {
    return !empty_ && intersects(MBoundingBox(point, point));
}

bool MBoundingBox::intersects(const MBoundingBox& box, double tol) const {
    const MPoint& a = minimum_;
    const MPoint& b = maximum_;
    return !empty_ && !box.empty_ && a.x <= box.maximum_.x + tol && box.minimum_.x <= b.x + tol &&
           a.y <= box.maximum_.y + tol && box.minimum_.y <= b.y + tol && a.z <= box.maximum_.z + tol &&
           box.minimum_.z <= b.z + tol;
}

double MBoundingBox::width() const {
    return maximum_.x - minimum_.x;
}

double MBoundingBox::height() const {
    return maximum_.y - minimum_.y;
}

double MBoundingBox::depth() const {
    return maximum_.z - minimum_.z;
}

MPoint MBoundingBox::center() const {
    return minimum_ + (maximum_ - minimum_) * 0.5;
}

MPoint MBoundingBox::min() const {
    return minimum_;
}

MPoint MBoundingBox::max() const {
    return maximum_;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
