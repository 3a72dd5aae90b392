// The meshes of objects, normals, and the walk that the mesh iterators share.

#include "api/functionSets/meshAccess.h"

#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "api/handles/objectAccess.h"
#include "api/handles/pathAccess.h"
#include "api/handles/session.h"
#include "nodes/meshNode.h"
#include "nodes/transformNode.h"

namespace host::api {

nodes::MeshPtr meshOf(const MObject& object) {
    if (const DataBody* body = ObjectAccess::data(object)) return graph::dataAs<nodes::MeshData>(body->value);
    const graph::NodeRef node = ObjectAccess::node(object);
    return node != nullptr && node->isA("mesh") ? nodes::meshOf(scene(), node) : nullptr;
}

MVector faceNormal(const geometry::Mesh& mesh, int face, const geometry::Matrix4* toWorld) {
    const geometry::Vec3 normal = geometry::faceNormal(mesh, face);
    if (toWorld == nullptr) return toVector(normal);
    // Normals are transformed by the transposed inverse, so that they stay perpendicular under uneven scales.
    const geometry::Matrix4 matrix = toWorld->inverse().matrix.transposed();
    return toVector(geometry::normalized(geometry::transformVector(normal, matrix)));
}

MStatus MeshWalk::attach(const MObject& object, const MObject& component) {
    hasWorld = false;
    isAll = true;
    listed.clear();
    at = count = 0;
    mesh = meshOf(object);
    if (mesh == nullptr) return object.isNull() ? missingObject() : incompatible();
    const geometry::Topology& connectivity = topology();
    count = kind == graph::ComponentKind::Vertex ? connectivity.vertexCount()
            : kind == graph::ComponentKind::Edge ? connectivity.edgeCount()
                                                 : connectivity.faceCount();
    if (component.isNull()) return MStatus::kSuccess;
    const graph::Component* elements = ObjectAccess::component(component);
    if (elements == nullptr || elements->kind() != kind) {
        mesh = nullptr;
        return incompatible();
    }
    if (elements->isComplete()) return MStatus::kSuccess;
    isAll = false;
    listed = elements->elements();
    // Ascending, so that numbers that are not elements of this mesh are at the end.
    listed.erase(std::lower_bound(listed.begin(), listed.end(), count), listed.end());
    count = static_cast<int>(listed.size());
    return MStatus::kSuccess;
}

MStatus MeshWalk::attach(const MDagPath& path, const MObject& component) {
    MDagPath shape(path);
    const MStatus extended = shape.extendToShape();
    const MStatus status = attach(shape.node(), component);
    if (!extended || !status) return extended ? status : extended;
    hasWorld = true;
    toWorld = nodes::worldMatrix(scene(), PathAccess::node(shape));
    return MStatus::kSuccess;
}

MStatus MeshWalk::checkSpace(MSpace::Space space) const {
    if (!isValid()) return missingObject();
    return checkArguments(space != MSpace::kWorld || hasWorld);
}

MStatus MeshWalk::next() {
    if (!isValid()) return MStatus::kFailure;
    ++at;
    return MStatus::kSuccess;
}

MStatus MeshWalk::setIndex(int index, int& previous) {
    if (mesh == nullptr) return missingObject();
    int wanted = index;
    if (!isAll) {
        const auto found = std::lower_bound(listed.begin(), listed.end(), index);
        if (found == listed.end() || *found != index) return noElement();
        wanted = static_cast<int>(found - listed.begin());
    }
    if (wanted < 0 || wanted >= count) return noElement();
    previous = isValid() ? current() : -1;
    at = wanted;
    return MStatus::kSuccess;
}

MPoint MeshWalk::point(const geometry::Vec3& point, MSpace::Space space) const {
    return toPoint(space == MSpace::kWorld ? geometry::transformPoint(point, toWorld) : point);
}

}  // namespace host::api
