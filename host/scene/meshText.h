#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "nodes/meshData.h"
#include "scene/faceWords.h"
#include "scene/sceneText.h"
#include "text/numbers.h"

namespace host::scene {

/// Whether a root attribute of a mesh is part of its shape: points, edges, faces. They are read together.
bool isMeshPart(std::string_view root);
/// Whether it is the points.
bool isMeshPoints(std::string_view root);
/// Whether it is the faces.
bool isMeshFaces(std::string_view root);
/// The elements that a name ends with: "vt[0:165]", "vt[7]". Nothing if it does not.
std::optional<text::IndexRange> elementRange(std::string_view path);

/// A mesh read from a file, or why it cannot be read.
struct MeshTextResult {
    nodes::MeshPtr mesh{};  ///< null on failure, and if no statement has a value
    std::string error{};    ///< says where in the file
};

/// Reads the points, edges and faces of one mesh from their statements, which may come in any order.
/// Edges keep the numbers and directions of the file.
MeshTextResult readMesh(const SceneText& text, const std::vector<std::uint32_t>& statements);

/// The statements that hold a mesh's points, or its edges and faces, each with a line end. The host writes at
/// most so many elements a statement.
std::string pointsText(const geometry::Mesh& mesh, std::string_view lineEnd);
std::string facesText(const geometry::Mesh& mesh, const CornerColors& corners, std::string_view lineEnd);

/// A statement of points anew, after points moved: without indentation and line end. Nothing if the statement
/// does not set points, or none of its points moved.
/// @param path  the points that it sets: "vt[0:165]"
std::optional<std::string> movedPointsText(const geometry::Mesh& now, const geometry::Mesh& then,
                                           std::string_view path);

}  // namespace host::scene
