#include "sheets.h"

#include <maya/MFloatPoint.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MObject.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

namespace {

MFloatPoint pointOf(const Sheet& sheet, int row, int column) {
    // Counted from the middle, so that mirror images are exact.
    const auto fromMiddle =
        static_cast<float>(2 * column - sheet.columns) / static_cast<float>(2 * sheet.columns);
    const float x = (sheet.x0 + sheet.x1) / 2.0F + (sheet.x1 - sheet.x0) * fromMiddle;
    const float z =
        sheet.z0 + (sheet.z1 - sheet.z0) * static_cast<float>(row) / static_cast<float>(sheet.rows);
    return MFloatPoint(x, 0.1F * std::cos(x * 3.0F) + 0.2F * std::sin(z), z);
}

void add(const Sheet& sheet, SheetShape& shape) {
    const int first = static_cast<int>(shape.points.length());
    for (int row = 0; row <= sheet.rows; ++row) {
        for (int column = 0; column <= sheet.columns; ++column)
            shape.points.append(pointOf(sheet, row, column));
    }
    const int width = sheet.columns + 1;
    for (int row = 0; row < sheet.rows; ++row) {
        for (int column = 0; column < sheet.columns; ++column) {
            const int corner = first + row * width + column;
            shape.counts.append(4);
            for (const int vertex : {corner, corner + width, corner + width + 1, corner + 1})
                shape.connects.append(vertex);
        }
    }
}

}  // namespace

void addSheetPair(std::vector<Sheet>& sheets, int columns, int rows, float z) {
    sheets.push_back({columns, rows, 1.0F, 2.0F, z, z + 1.0F});
    sheets.push_back({columns, rows, -1.0F, -2.0F, z, z + 1.0F});
}

std::vector<Sheet> headSheets(int vertices) {
    std::vector<Sheet> sheets;
    const int half = static_cast<int>(std::sqrt(0.9 * vertices) / 2.0);
    sheets.push_back({2 * half, 2 * half, -2.0F, 2.0F, 0.0F, 4.0F});
    const int side = static_cast<int>(std::sqrt(0.01 * vertices));
    for (int pair = 0; pair < 5; ++pair)
        addSheetPair(sheets, side, side + pair, 5.0F + 2.0F * static_cast<float>(pair));
    return sheets;
}

SheetShape::SheetShape(const std::vector<Sheet>& sheets) {
    for (const Sheet& sheet : sheets)
        add(sheet, *this);
}

void SheetShape::shuffle(unsigned int seed) {
    constexpr unsigned int kCorners = 4;
    std::mt19937 random(seed);
    const auto shuffled = [&](unsigned int count) {
        std::vector<unsigned int> order(count);
        std::iota(order.begin(), order.end(), 0U);
        std::shuffle(order.begin(), order.end(), random);
        return order;
    };
    const std::vector<unsigned int> numbers = shuffled(points.length());
    const std::vector<unsigned int> faces = shuffled(counts.length());
    const MFloatPointArray oldPoints(points);
    const MIntArray oldConnects(connects);
    for (unsigned int vertex = 0; vertex < points.length(); ++vertex)
        points[numbers[vertex]] = oldPoints[vertex];
    for (unsigned int corner = 0; corner < connects.length(); ++corner) {
        const int old = oldConnects[kCorners * faces[corner / kCorners] + corner % kCorners];
        connects[corner] = static_cast<int>(numbers[static_cast<std::size_t>(old)]);
    }
}

void SheetShape::makeMesh(const std::string& name) const {
    MFnMesh mesh;
    const MObject transform = mesh.create(static_cast<int>(points.length()),
                                          static_cast<int>(counts.length()), points, counts, connects);
    MFnDagNode(transform).setName(name.c_str());
    mesh.setName((name + "Shape").c_str());
}
