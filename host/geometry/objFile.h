#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "geometry/mesh.h"

namespace host::geometry {

/// The faces of a mesh from `first` on, `count` of them.
struct FaceRun {
    int first = 0;
    int count = 0;
};

/// A named part of a mesh. It keeps runs instead of a list of faces, so that memory stays linear for a text
/// in which many groups overlap.
struct ObjGroup {
    std::string name;
    std::vector<FaceRun> runs;  ///< ascending, none of them empty

    /// Ascending face numbers.
    std::vector<int> faces() const;
};

struct ObjObject {
    std::string name;  ///< empty if the file names no object
    Mesh mesh;
    std::vector<ObjGroup> groups;  ///< as the file first names them, without "default"
};

/// What an OBJ text holds, or which line of it is wrong.
struct ObjResult {
    std::vector<ObjObject> objects;
    std::string error;

    bool ok() const { return error.empty(); }
};

/// Meshes of an OBJ text. Linear cost.
///
/// A text without `o` lines gives one mesh with every vertex in file order, including vertices without a
/// face. With `o` lines, each line gives a mesh. It has the vertices that its faces use, and the vertices
/// below its `o` line that no face of the text uses, in file order. What comes before the first `o` line
/// makes an object without a name. An object without vertices is left out. An `o` line ends the groups of the
/// object before it.
///
/// Read: v (a fourth number or a colour after the point is ignored), f with the forms 1, 1/2, 1//3, 1/2/3 and
/// negative numbers, any number of corners, o, g, comments, `\` at the end of a line, both line ends. Texture
/// coordinates, normals, smoothing, materials, lines and points are skipped, but references of faces to vt
/// and vn are checked. An unknown keyword is an error, and so are free-form surfaces. Errors name the line:
/// "line 12: face refers to vertex 99, but only 8 are defined".
ObjResult parseObj(std::string_view text);

/// OBJ text of the objects. Each object has an `o` line if there are several or if the only one has a name. A
/// `g` line is written where the groups of the faces change. Coordinates are the shortest text that reads
/// back as the same float. Blanks and control characters, `#` and `\` in names become `_`. Apart from such
/// names, reading the text back gives the same objects.
std::string writeObj(const std::vector<ObjObject>& objects);

/// parseObj for a file. The error names the file.
ObjResult readObjFile(const std::string& path);

}  // namespace host::geometry
