#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "geometry/mesh.h"

namespace host::geometry {

/// Faces first .. first + count of a mesh.
struct FaceRun {
    int first = 0;
    int count = 0;
};

/// A named part of a mesh. Runs instead of a list of faces keep a text in which many groups overlap linear in
/// memory.
struct ObjGroup {
    std::string name;
    std::vector<FaceRun> runs;  ///< ascending, none of them empty

    /// Ascending face numbers.
    std::vector<int> faces() const;
};

struct ObjObject {
    std::string name;  ///< empty when the file names no object
    Mesh mesh;
    std::vector<ObjGroup> groups;  ///< as the file first names them; without the group "default"
};

/// What an OBJ text holds, or in which line it is wrong.
struct ObjResult {
    std::vector<ObjObject> objects;
    std::string error;

    bool ok() const { return error.empty(); }
};

/// Meshes of an OBJ text.
///
/// A text without `o` lines gives one mesh that has every vertex in file order, vertices without a face among
/// them. With `o` lines each gives a mesh with the vertices that its faces use and those that stand under its
/// `o` line and that no face of the text uses, in file order; what stands before the first `o` line makes an
/// object without a name. An object without a vertex is left out. An `o` line ends the groups of the one
/// before.
///
/// Read: v (a fourth number or a colour after the point is ignored), f with the forms 1, 1/2, 1//3, 1/2/3 and
/// negative numbers, any number of corners, o, g, comments, `\` at a line's end, both line ends. Texture
/// coordinates, normals, smoothing, materials, lines and points are passed over: the numbers of vt and vn are
/// checked as far as faces refer to them. An unknown keyword, free-form surfaces among them, is an error.
/// Errors name the line: "line 12: face refers to vertex 99, but only 8 are defined". Linear cost.
ObjResult parseObj(std::string_view text);

/// OBJ text of the objects, with an `o` line each when there are several or the only one has a name, and a
/// `g` line where the groups of the faces change. Coordinates are the shortest text that reads back as the
/// same float. Blanks and control characters, `#` and `\` in names become `_`. Reading the text back gives
/// the same objects.
std::string writeObj(const std::vector<ObjObject>& objects);

/// parseObj of a file; the error names the file.
ObjResult readObjFile(const std::string& path);

}  // namespace host::geometry
