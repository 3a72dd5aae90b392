// MItMeshVertex, MItMeshEdge and MItMeshPolygon.

#include <maya/MItMeshEdge.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MVector.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "api/functionSets/meshAccess.h"
#include "api/functionSets/variantSupport.h"
#include "api/handles/answers.h"
#include "api/handles/objectAccess.h"

using host::api::answer;
using host::api::Answer;
using host::api::answerIf;
using host::api::fill;
using host::api::missingObject;
using host::api::noElement;
using host::api::report;
using host::api::succeeded;
using host::geometry::IntSpan;
using host::geometry::Topology;
using host::graph::ComponentKind;

namespace {

using Walk = host::api::MeshWalk;

/// The walk while it is at an element, otherwise null.
const Walk* atElement(const Walk& walk) {
    return walk.isValid() ? &walk : nullptr;
}

/// The component of the walk's current element.
MObject currentComponent(const Walk& walk, MStatus* status) {
    return answer(status, atElement(walk), [](const Walk& at) {
        const int element = at.current();
        return host::api::ObjectAccess::object(
            host::graph::Component(at.kind, host::graph::Run{element, element}));
    });
}

bool isContained(IntSpan values, int value) {
    return std::find(values.begin(), values.end(), value) != values.end();
}

bool isBorderEdge(const Topology& topology, int edge) {
    return topology.edgeFaces(edge).size() < 2;
}

bool hasBorderEdge(const Topology& topology, IntSpan edges) {
    return std::any_of(edges.begin(), edges.end(), [&](int edge) { return isBorderEdge(topology, edge); });
}

/// Adds all edges at a vertex except one.
void appendEdges(const Topology& topology, int vertex, int except, MIntArray& edges) {
    for (const int edge : topology.vertexEdges(vertex)) {
        if (edge != except) edges.append(edge);
    }
}

/// What a list has for the corners of a face: ascending, each once, without the face's own.
void gatherAround(IntSpan corners, const host::geometry::IntLists& lists, IntSpan own, MIntArray& result) {
    std::vector<int> found;
    for (const int corner : corners)
        found.insert(found.end(), lists[corner].begin(), lists[corner].end());
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    const auto isOwn = [&](int value) { return isContained(own, value); };
    found.erase(std::remove_if(found.begin(), found.end(), isOwn), found.end());
    fill(result, found);
}

}  // namespace

// What the three iterators have in common: attaching, stepping, counting.
#define DELVEN_MESH_ITERATOR(Class, elementKind, ObjectArgument, Count)                            \
    struct Class::State : Walk {                                                                   \
        State() : Walk(elementKind) {}                                                             \
    };                                                                                             \
    Class::Class(ObjectArgument polyObject, MStatus* status) : state_(std::make_unique<State>()) { \
        report(status, state_->attach(polyObject, MObject()));                                     \
    }                                                                                              \
    Class::Class(const MDagPath& polyObject, MObject& component, MStatus* status)                  \
        : state_(std::make_unique<State>()) {                                                      \
        report(status, state_->attach(polyObject, component));                                     \
    }                                                                                              \
    Class::~Class() = default;                                                                     \
    bool Class::isDone(MStatus* status) {                                                          \
        return succeeded(status, !state_->isValid());                                              \
    }                                                                                              \
    MStatus Class::next() {                                                                        \
        return state_->next();                                                                     \
    }                                                                                              \
    MStatus Class::reset() {                                                                       \
        state_->at = 0;                                                                            \
        return state_->mesh != nullptr ? MStatus(MStatus::kSuccess) : missingObject();             \
    }                                                                                              \
    MStatus Class::reset(ObjectArgument polyObject) {                                              \
        return state_->attach(polyObject, MObject());                                              \
    }                                                                                              \
    MStatus Class::reset(const MDagPath& polyObject, MObject& component) {                         \
        return state_->attach(polyObject, component);                                              \
    }                                                                                              \
    Count Class::count(MStatus* status) {                                                          \
        report(status, state_->mesh != nullptr ? MStatus(MStatus::kSuccess) : missingObject());    \
        return static_cast<Count>(state_->count);                                                  \
    }                                                                                              \
    MObject Class::currentItem(MStatus* status) {                                                  \
        return currentComponent(*state_, status);                                                  \
    }                                                                                              \
    MStatus Class::setIndex(int index, int& previousIndex) {                                       \
        return state_->setIndex(index, previousIndex);                                             \
    }

OPENMAYA_MAJOR_NAMESPACE_OPEN

DELVEN_MESH_ITERATOR(MItMeshVertex, ComponentKind::Vertex, MObject&, int)
DELVEN_MESH_ITERATOR(MItMeshEdge, ComponentKind::Edge, MObject&, int)
DELVEN_MESH_ITERATOR(MItMeshPolygon, ComponentKind::Face, const MObject&, unsigned int)

int MItMeshVertex::index(MStatus* status) {
    return answer(
        status, atElement(*state_), [](const Walk& walk) { return walk.current(); }, -1);
}

MPoint MItMeshVertex::position(MSpace::Space space, MStatus* status) {
    return answerIf(status, state_->checkSpace(space),
                    [&] { return state_->point(state_->vertex(state_->current()), space); });
}

bool MItMeshVertex::onBoundary(MStatus* status) {
    return answer(status, atElement(*state_), [](const Walk& walk) {
        return hasBorderEdge(walk.topology(), walk.topology().vertexEdges(walk.current()));
    });
}

MStatus MItMeshVertex::numConnectedFaces(int& faceCount) const {
    if (!state_->isValid()) return missingObject();
    faceCount = state_->topology().vertexFaces(state_->current()).size();
    return MStatus::kSuccess;
}

MStatus MItMeshVertex::numConnectedEdges(int& edgeCount) const {
    if (!state_->isValid()) return missingObject();
    edgeCount = state_->topology().vertexEdges(state_->current()).size();
    return MStatus::kSuccess;
}

MStatus MItMeshVertex::getConnectedEdges(MIntArray& edges) {
    if (!state_->isValid()) return missingObject();
    fill(edges, state_->topology().vertexEdges(state_->current()));
    host::api::arrangeNeighbours(edges);
    return MStatus::kSuccess;
}

MStatus MItMeshVertex::getConnectedVertices(MIntArray& vertices) {
    if (!state_->isValid()) return missingObject();
    fill(vertices, state_->topology().vertexNeighbours(state_->current()));
    host::api::arrangeNeighbours(vertices);
    return MStatus::kSuccess;
}

MStatus MItMeshVertex::getConnectedFaces(MIntArray& faces) {
    if (!state_->isValid()) return missingObject();
    fill(faces, state_->topology().vertexFaces(state_->current()));
    host::api::arrangeNeighbours(faces);
    return MStatus::kSuccess;
}

bool MItMeshVertex::connectedToEdge(int index, MStatus* status) {
    return answer(status, atElement(*state_), [&](const Walk& walk) {
        return isContained(walk.topology().vertexEdges(walk.current()), index);
    });
}

bool MItMeshVertex::connectedToFace(int index, MStatus* status) {
    return answer(status, atElement(*state_), [&](const Walk& walk) {
        return isContained(walk.topology().vertexFaces(walk.current()), index);
    });
}

int MItMeshEdge::index(MStatus* status) const {
    return answer(
        status, atElement(*state_), [](const Walk& walk) { return walk.current(); }, -1);
}

int MItMeshEdge::index(int vertexId, MStatus* status) {
    return answer(
        status, atElement(*state_),
        [&](const Walk& walk) -> Answer<int> {
            if (vertexId != 0 && vertexId != 1) return noElement();
            return walk.topology().edge(walk.current())[static_cast<std::size_t>(vertexId)];
        },
        -1);
}

MPoint MItMeshEdge::center(MSpace::Space space, MStatus* status) {
    return answerIf(status, state_->checkSpace(space), [&] {
        const host::geometry::Edge& edge = state_->topology().edge(state_->current());
        return state_->point((state_->vertex(edge[0]) + state_->vertex(edge[1])) * 0.5, space);
    });
}

MPoint MItMeshEdge::point(int index, MSpace::Space space, MStatus* status) {
    return answerIf(status, state_->checkSpace(space), [&]() -> Answer<MPoint> {
        if (index != 0 && index != 1) return noElement();
        const host::geometry::Edge& edge = state_->topology().edge(state_->current());
        return state_->point(state_->vertex(edge[static_cast<std::size_t>(index)]), space);
    });
}

MStatus MItMeshEdge::getLength(double& length, MSpace::Space space) {
    const MStatus possible = state_->checkSpace(space);
    if (possible) length = point(0, space).distanceTo(point(1, space));
    return possible;
}

bool MItMeshEdge::onBoundary(MStatus* status) {
    return answer(status, atElement(*state_),
                  [](const Walk& walk) { return isBorderEdge(walk.topology(), walk.current()); });
}

MStatus MItMeshEdge::numConnectedFaces(int& faceCount) {
    if (!state_->isValid()) return missingObject();
    faceCount = state_->topology().edgeFaces(state_->current()).size();
    return MStatus::kSuccess;
}

MStatus MItMeshEdge::numConnectedEdges(int& edgeCount) {
    if (!state_->isValid()) return missingObject();
    const Topology& topology = state_->topology();
    const host::geometry::Edge& edge = topology.edge(state_->current());
    edgeCount = topology.vertexEdges(edge[0]).size() + topology.vertexEdges(edge[1]).size() - 2;
    return MStatus::kSuccess;
}

int MItMeshEdge::getConnectedFaces(MIntArray& faces, MStatus* status) const {
    faces.clear();
    return answer(status, atElement(*state_), [&](const Walk& walk) {
        fill(faces, walk.topology().edgeFaces(walk.current()));
        host::api::arrangeNeighbours(faces);
        return static_cast<int>(faces.length());
    });
}

int MItMeshEdge::getConnectedEdges(MIntArray& edges, MStatus* status) const {
    edges.clear();
    return answer(status, atElement(*state_), [&](const Walk& walk) {
        const int own = walk.current();
        for (const int vertex : walk.topology().edge(own))
            appendEdges(walk.topology(), vertex, own, edges);
        host::api::arrangeNeighbours(edges);
        return static_cast<int>(edges.length());
    });
}

unsigned int MItMeshPolygon::index(MStatus* status) {
    return answer(status, atElement(*state_),
                  [](const Walk& walk) { return static_cast<unsigned int>(walk.current()); });
}

MPoint MItMeshPolygon::center(MSpace::Space space, MStatus* status) {
    return answerIf(status, state_->checkSpace(space), [&] {
        return state_->point(host::geometry::faceCentre(state_->mesh->mesh, state_->current()), space);
    });
}

unsigned int MItMeshPolygon::polygonVertexCount(MStatus* status) {
    return answer(status, atElement(*state_), [](const Walk& walk) {
        return static_cast<unsigned int>(walk.topology().faceSize(walk.current()));
    });
}

unsigned int MItMeshPolygon::vertexIndex(int index, MStatus* status) {
    return answer(status, atElement(*state_), [&](const Walk& walk) -> Answer<unsigned int> {
        const IntSpan corners = walk.topology().faceVertices(walk.current());
        if (index < 0 || index >= corners.size()) return noElement();
        return static_cast<unsigned int>(corners[index]);
    });
}

MStatus MItMeshPolygon::getVertices(MIntArray& vertices) {
    if (!state_->isValid()) return missingObject();
    fill(vertices, state_->topology().faceVertices(state_->current()));
    return MStatus::kSuccess;
}

MStatus MItMeshPolygon::getEdges(MIntArray& edges) {
    if (!state_->isValid()) return missingObject();
    fill(edges, state_->topology().faceEdges(state_->current()));
    return MStatus::kSuccess;
}

void MItMeshPolygon::getPoints(MPointArray& points, MSpace::Space space, MStatus* status) {
    points.clear();
    const MStatus possible = state_->checkSpace(space);
    report(status, possible);
    if (!possible) return;
    for (const int vertex : state_->topology().faceVertices(state_->current()))
        points.append(state_->point(state_->vertex(vertex), space));
}

MStatus MItMeshPolygon::getNormal(MVector& normal, MSpace::Space space) const {
    const MStatus possible = state_->checkSpace(space);
    if (!possible) return possible;
    const bool isWorld = space == MSpace::kWorld;
    normal =
        host::api::faceNormal(state_->mesh->mesh, state_->current(), isWorld ? &state_->toWorld : nullptr);
    return MStatus::kSuccess;
}

MStatus MItMeshPolygon::getConnectedFaces(MIntArray& faces) {
    if (!state_->isValid()) return missingObject();
    fill(faces, state_->topology().faceNeighbours(state_->current()));
    host::api::arrangeNeighbours(faces);
    return MStatus::kSuccess;
}

MStatus MItMeshPolygon::getConnectedEdges(MIntArray& edges) {
    if (!state_->isValid()) return missingObject();
    const Topology& topology = state_->topology();
    const int face = state_->current();
    gatherAround(topology.faceVertices(face), topology.vertexEdges(), topology.faceEdges(face), edges);
    host::api::arrangeNeighbours(edges);
    return MStatus::kSuccess;
}

MStatus MItMeshPolygon::getConnectedVertices(MIntArray& vertices) {
    if (!state_->isValid()) return missingObject();
    const Topology& topology = state_->topology();
    const IntSpan corners = topology.faceVertices(state_->current());
    gatherAround(corners, topology.vertexNeighbours(), corners, vertices);
    host::api::arrangeNeighbours(vertices);
    return MStatus::kSuccess;
}

MStatus MItMeshPolygon::numConnectedFaces(int& faceCount) const {
    if (!state_->isValid()) return missingObject();
    faceCount = static_cast<int>(state_->topology().faceNeighbours(state_->current()).size());
    return MStatus::kSuccess;
}

bool MItMeshPolygon::onBoundary(MStatus* status) {
    return answer(status, atElement(*state_), [](const Walk& walk) {
        return hasBorderEdge(walk.topology(), walk.topology().faceEdges(walk.current()));
    });
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
