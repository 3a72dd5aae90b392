// MFnMesh without its colours (meshColors.cpp).

#include <maya/MFloatPointArray.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MVector.h>

#include <optional>
#include <utility>
#include <vector>

#include "api/functionSets/functionSetAccess.h"
#include "api/functionSets/meshAccess.h"
#include "api/functionSets/variantSupport.h"
#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "api/handles/dag.h"
#include "api/handles/objectAccess.h"
#include "api/handles/session.h"
#include "geometry/closestPoint.h"
#include "geometry/triangulate.h"
#include "nodes/meshNode.h"
#include "nodes/transformNode.h"

using host::api::answer;
using host::api::Answer;
using host::api::answerIf;
using host::api::checkArguments;
using host::api::FunctionSetAccess;
using host::api::missingObject;
using host::api::noElement;
using host::api::ObjectAccess;
using host::api::report;
using host::api::scene;
using host::geometry::Matrix4;
using host::geometry::Mesh;
using host::geometry::Topology;
using host::geometry::Vec3;
using host::graph::NodeRef;
using host::nodes::MeshPtr;

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// What a set keeps of the last mesh that it was asked about.
struct MFnMesh::Held {
    MeshPtr mesh;
    std::optional<host::geometry::ClosestPointTree> tree;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE

namespace {

// The type of the array decides the kind of point of its elements.
MPoint makePoint(const MPointArray&, const Vec3& place) {
    return MPoint(place.x, place.y, place.z);
}
MFloatPoint makePoint(const MFloatPointArray&, const Vec3& place) {
    return MFloatPoint(static_cast<float>(place.x), static_cast<float>(place.y), static_cast<float>(place.z));
}

template <typename Array>
std::vector<float> coordinatesOf(const Array& points, const std::optional<Matrix4>& matrix) {
    std::vector<float> result;
    result.reserve(std::size_t{3} * points.length());
    for (const auto& point : points) {
        Vec3 place{static_cast<double>(point.x), static_cast<double>(point.y), static_cast<double>(point.z)};
        if (matrix) place = host::geometry::transformPoint(place, *matrix);
        result.push_back(static_cast<float>(place.x));
        result.push_back(static_cast<float>(place.y));
        result.push_back(static_cast<float>(place.z));
    }
    return result;
}

template <typename Array>
void copyPoints(const Mesh& mesh, const std::optional<Matrix4>& matrix, Array& points) {
    const float* source = mesh.points().data();
    const auto count = static_cast<unsigned int>(mesh.vertexCount());
    points.setLength(count);
    for (unsigned int v = 0; v < count; ++v, source += 3) {
        Vec3 place{static_cast<double>(source[0]), static_cast<double>(source[1]),
                   static_cast<double>(source[2])};
        if (matrix) place = host::geometry::transformPoint(place, *matrix);
        points[v] = makePoint(points, place);
    }
}

/// Where a new mesh goes: below a transform, into mesh data, or below a new transform at the top.
struct Destination {
    explicit Destination(const MObject& parentOrOwner)
        : parent(ObjectAccess::node(parentOrOwner)), data(ObjectAccess::data(parentOrOwner)) {
        if (data != nullptr) {
            isValid = parentOrOwner.hasFn(MFn::kMeshData);
        } else if (parent != nullptr) {
            isValid = host::api::isTransform(*parent);
        } else {
            isValid = parentOrOwner.isNull() || ObjectAccess::isWorld(parentOrOwner);
        }
    }

    NodeRef parent;
    host::api::DataBody* data;
    bool isValid = false;
};

/// The matrix from object to world for world space; nothing for object space.
/// @param status  set if the space is not possible
std::optional<Matrix4> spaceMatrix(const MFnMesh& set, MSpace::Space space, MStatus& status) {
    status = MStatus::kSuccess;
    if (space != MSpace::kWorld) return std::nullopt;
    const NodeRef node = ObjectAccess::node(FunctionSetAccess::object(set));
    if (node != nullptr && FunctionSetAccess::hasPath(set)) return host::nodes::worldMatrix(scene(), node);
    status = MStatus::kInvalidParameter;
    return std::nullopt;
}

template <typename Array>
MStatus readPoints(const MFnMesh& set, Array& points, MSpace::Space space) {
    const MeshPtr mesh = host::api::meshOf(FunctionSetAccess::object(set));
    if (mesh == nullptr) return missingObject();
    MStatus status;
    const std::optional<Matrix4> matrix = spaceMatrix(set, space, status);
    if (status) copyPoints(mesh->mesh, matrix, points);
    return status;
}

template <typename Array>
MStatus writePoints(const MFnMesh& set, const Array& points, MSpace::Space space) {
    const MObject& object = FunctionSetAccess::object(set);
    const MeshPtr mesh = host::api::meshOf(object);
    if (mesh == nullptr) return missingObject();
    if (points.length() != static_cast<unsigned int>(mesh->mesh.vertexCount()))
        return MStatus::kInvalidParameter;
    MStatus status;
    std::optional<Matrix4> matrix = spaceMatrix(set, space, status);
    if (!status) return status;
    if (matrix) {
        const host::geometry::InverseMatrix inverse = matrix->inverse();
        if (!inverse.ok) return MStatus::kFailure;
        matrix = inverse.matrix;
    }
    std::vector<float> coordinates = coordinatesOf(points, matrix);
    if (host::api::DataBody* body = ObjectAccess::data(object)) {
        Mesh changed = mesh->mesh;
        changed.setPoints(std::move(coordinates));
        body->value = std::make_shared<host::nodes::MeshData>(std::move(changed), mesh->groups);
    } else {
        host::nodes::setMeshPoints(scene(), ObjectAccess::node(object), std::move(coordinates));
    }
    return MStatus::kSuccess;
}

/// Puts a new mesh into the scene or into data.
/// @param attached  set to the shape or the data
/// @return the new transform if one was made, else the same as `attached`
MObject placeMesh(Mesh mesh, const MObject& parentOrOwner, const Destination& destination,
                  MObject& attached) {
    if (destination.data != nullptr) {
        destination.data->value = std::make_shared<host::nodes::MeshData>(std::move(mesh));
        return attached = parentOrOwner;
    }
    if (destination.parent != nullptr) {
        const NodeRef shape = host::nodes::createMeshShape(scene(), std::move(mesh), {}, *destination.parent);
        return attached = ObjectAccess::object(shape);
    }
    const NodeRef shape = host::nodes::createMesh(scene(), std::move(mesh), {}, nullptr);
    attached = ObjectAccess::object(shape);
    return ObjectAccess::object(shape->parent()->ref());
}

/// The mesh of a list of faces; nothing if the lists do not fit together.
template <typename Array>
std::optional<Mesh> meshFromFaces(int numVertices, int numPolygons, const Array& points,
                                  const MIntArray& counts, const MIntArray& connects) {
    if (numVertices < 0 || points.length() != static_cast<unsigned int>(numVertices)) return std::nullopt;
    if (numPolygons < 0 || counts.length() != static_cast<unsigned int>(numPolygons)) return std::nullopt;
    host::geometry::MeshResult made =
        host::geometry::createMesh(coordinatesOf(points, std::nullopt), host::api::numbersOf<int>(counts),
                                   host::api::numbersOf<int>(connects));
    if (!made.ok()) return std::nullopt;
    return std::move(made.mesh);
}

}  // namespace

OPENMAYA_MAJOR_NAMESPACE_OPEN

MFnMesh::MFnMesh() = default;
MFnMesh::~MFnMesh() = default;

MFnMesh::MFnMesh(MObject& object, MStatus* status) : MFnMesh(static_cast<const MObject&>(object), status) {}

MFnMesh::MFnMesh(const MObject& object, MStatus* status) {
    report(status, MFnDagNode::setObject(object));
}

MFnMesh::MFnMesh(const MDagPath& object, MStatus* status) {
    report(status, MFnDagNode::setObject(object));
}

MFn::Type MFnMesh::type() const {
    return MFn::kMesh;
}

MObject MFnMesh::create(int numVertices, int numPolygons, const MPointArray& vertexArray,
                        const MIntArray& polygonCounts, const MIntArray& polygonConnects,
                        MObject parentOrOwner, MStatus* status) {
    const Destination destination(parentOrOwner);
    std::optional<Mesh> mesh =
        meshFromFaces(numVertices, numPolygons, vertexArray, polygonCounts, polygonConnects);
    return answerIf(status, checkArguments(destination.isValid && mesh), [&] {
        hasPath_ = false;
        return placeMesh(std::move(*mesh), parentOrOwner, destination, object_);
    });
}

MObject MFnMesh::create(int numVertices, int numPolygons, const MFloatPointArray& vertexArray,
                        const MIntArray& polygonCounts, const MIntArray& polygonConnects,
                        MObject parentOrOwner, MStatus* status) {
    const Destination destination(parentOrOwner);
    std::optional<Mesh> mesh =
        meshFromFaces(numVertices, numPolygons, vertexArray, polygonCounts, polygonConnects);
    return answerIf(status, checkArguments(destination.isValid && mesh), [&] {
        hasPath_ = false;
        return placeMesh(std::move(*mesh), parentOrOwner, destination, object_);
    });
}

MObject MFnMesh::copy(const MObject& source, MObject parentOrOwner, MStatus* status) {
    const Destination destination(parentOrOwner);
    NodeRef shape = ObjectAccess::node(source);
    if (shape != nullptr && shape->type().isDag()) shape = scene().shapeOf(shape);
    const MeshPtr mesh = host::api::meshOf(shape != nullptr ? ObjectAccess::object(shape) : source);
    return answerIf(status, checkArguments(destination.isValid && mesh != nullptr), [&] {
        hasPath_ = false;
        if (destination.data != nullptr || shape == nullptr)
            return placeMesh(mesh->mesh, parentOrOwner, destination, object_);
        const NodeRef copied = host::nodes::copyMesh(scene(), shape, destination.parent.get());
        object_ = ObjectAccess::object(copied);
        return destination.parent != nullptr ? object_ : ObjectAccess::object(copied->parent()->ref());
    });
}

int MFnMesh::numVertices(MStatus* status) const {
    return answer(status, host::api::meshOf(object_),
                  [](const MeshPtr& mesh) { return mesh->mesh.vertexCount(); });
}

int MFnMesh::numEdges(MStatus* status) const {
    return answer(status, host::api::meshOf(object_),
                  [](const MeshPtr& mesh) { return mesh->mesh.edgeCount(); });
}

int MFnMesh::numPolygons(MStatus* status) const {
    return answer(status, host::api::meshOf(object_),
                  [](const MeshPtr& mesh) { return mesh->mesh.faceCount(); });
}

int MFnMesh::numFaceVertices(MStatus* status) const {
    return answer(status, host::api::meshOf(object_),
                  [](const MeshPtr& mesh) { return mesh->mesh.topology().cornerCount(); });
}

int MFnMesh::polygonVertexCount(int polygonId, MStatus* status) const {
    return answer(status, host::api::meshOf(object_), [&](const MeshPtr& mesh) -> Answer<int> {
        if (polygonId < 0 || polygonId >= mesh->mesh.faceCount()) return noElement();
        return mesh->mesh.topology().faceSize(polygonId);
    });
}

MStatus MFnMesh::getVertices(MIntArray& vertexCount, MIntArray& vertexList) const {
    const MeshPtr mesh = host::api::meshOf(object_);
    if (mesh == nullptr) return missingObject();
    const Topology& topology = mesh->mesh.topology();
    const auto faces = static_cast<unsigned int>(topology.faceCount());
    vertexCount.setLength(faces);
    for (unsigned int face = 0; face < faces; ++face)
        vertexCount[face] = topology.faceSize(static_cast<int>(face));
    host::api::fill(vertexList, topology.faceVertices());
    return MStatus::kSuccess;
}

MStatus MFnMesh::getPolygonVertices(int polygonId, MIntArray& vertexList) const {
    const MeshPtr mesh = host::api::meshOf(object_);
    if (mesh == nullptr) return missingObject();
    if (polygonId < 0 || polygonId >= mesh->mesh.faceCount()) return noElement();
    host::api::fill(vertexList, mesh->mesh.topology().faceVertices(polygonId));
    return MStatus::kSuccess;
}

MStatus MFnMesh::getEdgeVertices(int edgeId, int2& vertexList) const {
    const MeshPtr mesh = host::api::meshOf(object_);
    if (mesh == nullptr) return missingObject();
    if (edgeId < 0 || edgeId >= mesh->mesh.edgeCount()) return noElement();
    const host::geometry::Edge& edge = mesh->mesh.topology().edge(edgeId);
    vertexList[0] = edge[0];
    vertexList[1] = edge[1];
    return MStatus::kSuccess;
}

MStatus MFnMesh::getTriangles(MIntArray& triangleCounts, MIntArray& triangleVertices) const {
    const MeshPtr mesh = host::api::meshOf(object_);
    if (mesh == nullptr) return missingObject();
    const host::geometry::Triangulation triangulation = host::geometry::triangulate(mesh->mesh);
    const auto faces = static_cast<unsigned int>(triangulation.faces.size());
    triangleCounts.setLength(faces);
    for (unsigned int face = 0; face < faces; ++face)
        triangleCounts[face] = triangulation.offsets[face + 1] - triangulation.offsets[face];
    const auto corners = static_cast<unsigned int>(3 * triangulation.triangles.size());
    triangleVertices.setLength(corners);
    for (unsigned int corner = 0; corner < corners; ++corner)
        triangleVertices[corner] = triangulation.triangles[corner / 3][corner % 3];
    return MStatus::kSuccess;
}

MStatus MFnMesh::getPoints(MPointArray& vertexArray, MSpace::Space space) const {
    return readPoints(*this, vertexArray, space);
}

MStatus MFnMesh::getPoints(MFloatPointArray& vertexArray, MSpace::Space space) const {
    return readPoints(*this, vertexArray, space);
}

MStatus MFnMesh::setPoints(MPointArray& vertexArray, MSpace::Space space) {
    return writePoints(*this, vertexArray, space);
}

MStatus MFnMesh::setPoints(MFloatPointArray& vertexArray, MSpace::Space space) {
    return writePoints(*this, vertexArray, space);
}

MStatus MFnMesh::getPoint(int vertexId, MPoint& position, MSpace::Space space) const {
    const MeshPtr mesh = host::api::meshOf(object_);
    if (mesh == nullptr) return missingObject();
    if (vertexId < 0 || vertexId >= mesh->mesh.vertexCount()) return noElement();
    MStatus status;
    const std::optional<Matrix4> matrix = spaceMatrix(*this, space, status);
    if (!status) return status;
    const Vec3 place = mesh->mesh.point(vertexId);
    position = host::api::toPoint(matrix ? host::geometry::transformPoint(place, *matrix) : place);
    return MStatus::kSuccess;
}

const float* MFnMesh::getRawPoints(MStatus* status) const {
    return answer(status, host::api::meshOf(object_), [&](const MeshPtr& mesh) {
        if (held_ == nullptr || held_->mesh != mesh) held_ = std::make_shared<Held>(Held{mesh, std::nullopt});
        return mesh->mesh.points().data();
    });
}

// Every write marks what depends on the mesh. Nothing is left to do.
MStatus MFnMesh::updateSurface() {
    return host::api::meshOf(object_) != nullptr ? MStatus(MStatus::kSuccess) : missingObject();
}

MStatus MFnMesh::getClosestPoint(const MPoint& toThisPoint, MPoint& closestPoint, MSpace::Space space,
                                 int* closestPolygon) const {
    const MeshPtr mesh = host::api::meshOf(object_);
    if (mesh == nullptr) return missingObject();
    MStatus status;
    const std::optional<Matrix4> matrix = spaceMatrix(*this, space, status);
    if (!status) return status;
    if (held_ == nullptr || held_->mesh != mesh) held_ = std::make_shared<Held>(Held{mesh, std::nullopt});
    // Distances are measured in the space of the query: the tree of a world query contains the mesh in world
    // space.
    std::optional<host::geometry::ClosestPointTree> worldTree;
    if (matrix) {
        worldTree.emplace(host::geometry::transformed(mesh->mesh, *matrix), Matrix4(),
                          host::api::faceTieRule());
    } else if (!held_->tree) {
        held_->tree.emplace(mesh->mesh, Matrix4(), host::api::faceTieRule());
    }
    const auto found = (matrix ? *worldTree : *held_->tree).query(host::api::fromPoint(toThisPoint));
    if (!found) return MStatus::kFailure;
    closestPoint = host::api::toPoint(found->point);
    if (closestPolygon != nullptr) *closestPolygon = found->face;
    return MStatus::kSuccess;
}

MStatus MFnMesh::getPolygonNormal(int polygonId, MVector& normal, MSpace::Space space) const {
    const MeshPtr mesh = host::api::meshOf(object_);
    if (mesh == nullptr) return missingObject();
    if (polygonId < 0 || polygonId >= mesh->mesh.faceCount()) return noElement();
    MStatus status;
    const std::optional<Matrix4> matrix = spaceMatrix(*this, space, status);
    if (status) normal = host::api::faceNormal(mesh->mesh, polygonId, matrix ? &*matrix : nullptr);
    return status;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
