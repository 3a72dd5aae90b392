#pragma once

#include <maya/MIntArray.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>

/// Deltas of a target item: vertex indices and points (dx, dy, dz, 1), aligned by position.
struct TargetDeltas {
    MIntArray vertices;
    MPointArray points;

    void append(int vertex, const MPoint& delta) {
        vertices.append(vertex);
        points.append(delta);
    }

    /// The delta at a position. Zero if there is no point: damaged items have fewer points than vertices.
    MPoint pointAt(unsigned int position) const {
        return position < points.length() ? points[position] : MPoint::origin;
    }
};
