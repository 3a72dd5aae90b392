#pragma once

#include <maya/MPoint.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// An axis-aligned box. An empty one reports both corners at the origin, but its first expansion does not
/// include the origin.
class OPENMAYA_EXPORT MBoundingBox {
  public:
    MBoundingBox() = default;
    /// Any two opposite corners.
    MBoundingBox(const MPoint& corner1, const MPoint& corner2);

    void clear();
    /// Becomes the box around its eight transformed corners.
    void transformUsing(const MMatrix& matrix);
    void expand(const MPoint& point);
    void expand(const MBoundingBox& box);

    /// Points on the faces count as inside. An empty box contains nothing.
    bool contains(const MPoint& point) const;
    /// Boxes that touch, or are at most `tol` apart along every axis, count as intersecting.
    bool intersects(const MBoundingBox& box, double tol = 0.0) const;

    /// Extent along x, y and z.
    double width() const;
    double height() const;
    double depth() const;
    MPoint center() const;
    MPoint min() const;
    MPoint max() const;

  private:
    MPoint minimum_;
    MPoint maximum_;
    bool empty_ = true;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
