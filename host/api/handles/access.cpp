#include "api/handles/access.h"

#include <new>

#include "api/handles/session.h"

namespace host::api {

MObject Access::object(const graph::NodeRef& node) {
    return node != nullptr ? MObject(MObject::Kind::Node, node) : MObject();
}

MObject Access::object(const graph::NodeRef& owner, const graph::Attribute& attribute) {
    // The handle shares the node's ownership: a dynamic attribute lives as long as its node.
    return MObject(MObject::Kind::Attribute,
                   std::shared_ptr<void>(owner, const_cast<graph::Attribute*>(&attribute)));
}

MObject Access::object(graph::Component component) {
    return MObject(MObject::Kind::Component,
                   std::make_shared<ComponentBody>(ComponentBody{std::move(component)}));
}

MObject Access::object(graph::DataPtr data) {
    if (data == nullptr) return MObject();
    return MObject(MObject::Kind::Data, std::make_shared<DataBody>(DataBody{std::move(data)}));
}

MObject Access::world() {
    return MObject(MObject::Kind::World, nullptr);
}

graph::NodeRef Access::node(const MObject& object) {
    graph::NodeRef node = anyNode(object);
    return node != nullptr && node->isAlive() ? node : nullptr;
}

graph::NodeRef Access::anyNode(const MObject& object) {
    return isNode(object) ? std::static_pointer_cast<graph::Node>(object.body_) : nullptr;
}

const graph::Attribute* Access::attribute(const MObject& object) {
    return object.kind_ == MObject::Kind::Attribute ? static_cast<const graph::Attribute*>(object.body_.get())
                                                    : nullptr;
}

graph::Component* Access::component(const MObject& object) {
    return object.kind_ == MObject::Kind::Component ? &static_cast<ComponentBody*>(object.body_.get())->value
                                                    : nullptr;
}

DataBody* Access::data(const MObject& object) {
    return object.kind_ == MObject::Kind::Data ? static_cast<DataBody*>(object.body_.get()) : nullptr;
}

const graph::Plug& Access::held(const MPlug& plug) {
    static_assert(sizeof(graph::Plug) <= MPlug::kPlaceSize && alignof(graph::Plug) <= alignof(void*),
                  "MPlug holds a graph::Plug in place");
    return *std::launder(reinterpret_cast<const graph::Plug*>(plug.place_));
}

graph::Plug& Access::held(MPlug& plug) {
    return *std::launder(reinterpret_cast<graph::Plug*>(plug.place_));
}

const graph::Plug& Access::place(const MPlug& plug) {
    static const graph::Plug nothing;
    const graph::Plug& held = Access::held(plug);
    const graph::RemovalLog* removals = held ? Session::removals() : nullptr;
    const bool hasExpired = removals != nullptr && removals->hasLost(held, plug.moment_, plug.isNetworked_);
    return hasExpired ? nothing : held;
}

MPlug Access::plug(graph::Plug place, bool isNetworked) {
    MPlug result;
    held(result) = std::move(place);
    if (const graph::RemovalLog* removals = Session::removals()) result.moment_ = removals->now();
    result.isNetworked_ = isNetworked;
    return result;
}

MDagPath Access::path(const graph::NodeRef& node) {
    MDagPath result;
    result.node_ = object(node);
    return result;
}

graph::NodeRef Access::node(const MDagPath& path) {
    return node(path.node_);
}

}  // namespace host::api
