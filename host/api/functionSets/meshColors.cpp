// The colour sets of MFnMesh.

#include <maya/MColorArray.h>
#include <maya/MDGModifier.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MStringArray.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "api/handles/modifierAccess.h"
#include "api/handles/objectAccess.h"
#include "api/handles/session.h"
#include "nodes/meshColors.h"
#include "nodes/meshNode.h"

using host::api::answer;
using host::api::checkArguments;
using host::api::missingObject;
using host::api::ModifierAccess;
using host::api::noElement;
using host::api::ObjectAccess;
using host::api::scene;
using host::api::text;
using host::graph::ChangeList;
using host::graph::NodeRef;
using host::nodes::Color;

namespace {

/// Makes a change of the scene. The modifier, if there is one, gets it for its undo.
template <typename Change>
auto changeFor(MDGModifier* modifier, Change change) {
    if (modifier == nullptr) return change();
    auto list = std::make_unique<ChangeList>();
    auto result = [&] {
        const host::graph::RecordingScope recording(scene(), list.get());
        return change();
    }();
    ModifierAccess::addDone(*modifier, std::move(list));
    return result;
}

int vertexCount(const NodeRef& shape) {
    return scene().componentCount(shape, host::graph::ComponentKind::Vertex);
}

/// The vertices as the host takes them.
/// @param status  set to a failure if a number is not a vertex
std::vector<int> verticesOf(const NodeRef& shape, const MIntArray& list, MStatus& status) {
    std::vector<int> vertices = host::api::numbersOf<int>(list);
    const int count = vertexCount(shape);
    status = MStatus::kSuccess;
    for (const int vertex : vertices) {
        if (vertex < 0 || vertex >= count) status = noElement();
    }
    return vertices;
}

Color colorOf(const MColor& color) {
    return {color.r, color.g, color.b, color.a};
}

MStatus writeColors(const NodeRef& shape, const std::vector<int>& vertices, const std::vector<Color>& colors,
                    MDGModifier* modifier) {
    return changeFor(modifier, [&] {
        host::nodes::setVertexColors(scene(), shape, vertices, colors);
        return MStatus(MStatus::kSuccess);
    });
}

}  // namespace

OPENMAYA_MAJOR_NAMESPACE_OPEN

int MFnMesh::numColorSets(MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [](const NodeRef& shape) {
        return static_cast<int>(host::nodes::colorSetNames(scene(), shape).size());
    });
}

MStatus MFnMesh::getColorSetNames(MStringArray& setNames) const {
    setNames.clear();
    const NodeRef shape = ObjectAccess::node(object_);
    if (shape == nullptr) return missingObject();
    for (const std::string& name : host::nodes::colorSetNames(scene(), shape))
        setNames.append(host::api::string(name));
    return MStatus::kSuccess;
}

MString MFnMesh::currentColorSetName(int, MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [](const NodeRef& shape) {
        return host::api::string(host::nodes::currentColorSet(scene(), shape));
    });
}

MStatus MFnMesh::setCurrentColorSetName(const MString& setName, MDGModifier* modifier, MSelectionList*) {
    const NodeRef shape = ObjectAccess::node(object_);
    if (shape == nullptr) return missingObject();
    return checkArguments(
        changeFor(modifier, [&] { return host::nodes::setCurrentColorSet(scene(), shape, text(setName)); }));
}

MString MFnMesh::createColorSetWithName(const MString& colorSetName, MDGModifier* modifier, const MUintArray*,
                                        MStatus* status) {
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& shape) {
        return host::api::string(changeFor(
            modifier, [&] { return host::nodes::createColorSet(scene(), shape, text(colorSetName)); }));
    });
}

MStatus MFnMesh::deleteColorSet(const MString& colorSetName, MDGModifier* modifier, MSelectionList*) {
    const NodeRef shape = ObjectAccess::node(object_);
    if (shape == nullptr) return missingObject();
    return checkArguments(
        changeFor(modifier, [&] { return host::nodes::deleteColorSet(scene(), shape, text(colorSetName)); }));
}

MStatus MFnMesh::clearColors(const MString* colorSet) {
    const NodeRef shape = ObjectAccess::node(object_);
    if (shape == nullptr) return missingObject();
    return checkArguments(
        host::nodes::clearColorSet(scene(), shape, colorSet != nullptr ? text(*colorSet) : ""));
}

MStatus MFnMesh::getVertexColors(MColorArray& colors, const MString* colorSet,
                                 const MColor* defaultUnsetColor) {
    colors.clear();
    const NodeRef shape = ObjectAccess::node(object_);
    if (shape == nullptr) return missingObject();
    const std::vector<Color> stored =
        host::nodes::vertexColors(scene(), shape, colorSet != nullptr ? text(*colorSet) : "");
    if (stored.empty()) return MStatus::kFailure;
    colors.setLength(static_cast<unsigned int>(stored.size()));
    for (unsigned int vertex = 0; vertex < colors.length(); ++vertex) {
        const Color& entry = stored[vertex];
        const bool isUnset = defaultUnsetColor != nullptr && entry == host::nodes::kUnsetColor;
        colors[vertex] = isUnset ? *defaultUnsetColor : MColor(entry[0], entry[1], entry[2], entry[3]);
    }
    return MStatus::kSuccess;
}

MStatus MFnMesh::setVertexColor(MColor& color, int vertexId, MDGModifier* modifier) {
    const NodeRef shape = ObjectAccess::node(object_);
    if (shape == nullptr) return missingObject();
    if (vertexId < 0 || vertexId >= vertexCount(shape)) return noElement();
    return writeColors(shape, {vertexId}, {colorOf(color)}, modifier);
}

MStatus MFnMesh::setVertexColors(MColorArray& colors, MIntArray& vertexList, MDGModifier* modifier) {
    const NodeRef shape = ObjectAccess::node(object_);
    if (shape == nullptr) return missingObject();
    if (colors.length() != vertexList.length()) return MStatus::kInvalidParameter;
    MStatus status;
    const std::vector<int> vertices = verticesOf(shape, vertexList, status);
    if (!status) return status;
    std::vector<Color> values;
    values.reserve(vertices.size());
    for (const MColor& color : colors)
        values.push_back(colorOf(color));
    return writeColors(shape, vertices, values, modifier);
}

MStatus MFnMesh::removeVertexColors(MIntArray& vertexList) {
    const NodeRef shape = ObjectAccess::node(object_);
    if (shape == nullptr) return missingObject();
    MStatus status;
    const std::vector<int> vertices = verticesOf(shape, vertexList, status);
    if (!status) return status;
    host::nodes::removeVertexColors(scene(), shape, vertices);
    return MStatus::kSuccess;
}

bool MFnMesh::displayColors(MStatus* status) const {
    return answer(status, ObjectAccess::node(object_),
                  [](const NodeRef& shape) { return scene().number(shape->plug("displayColors")) != 0.0; });
}

MStatus MFnMesh::setDisplayColors(bool enable) {
    const NodeRef shape = ObjectAccess::node(object_);
    if (shape == nullptr) return missingObject();
    scene().setNumber(shape->plug("displayColors"), enable ? 1.0 : 0.0);
    return MStatus::kSuccess;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
