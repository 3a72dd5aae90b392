#include "api/handles/objectAccess.h"

#include <utility>

namespace host::api {

MObject ObjectAccess::object(const graph::NodeRef& node) {
    return node != nullptr ? MObject(MObject::Kind::Node, node) : MObject();
}

MObject ObjectAccess::object(const graph::NodeRef& owner, const graph::Attribute& attribute) {
    // The handle shares ownership of the node: a dynamic attribute lives as long as its node.
    return MObject(MObject::Kind::Attribute,
                   std::shared_ptr<void>(owner, const_cast<graph::Attribute*>(&attribute)));
}

MObject ObjectAccess::object(graph::Component component) {
    return MObject(MObject::Kind::Component,
                   std::make_shared<ComponentBody>(ComponentBody{std::move(component)}));
}

MObject ObjectAccess::object(graph::DataPtr data) {
    if (data == nullptr) return MObject();
    return MObject(MObject::Kind::Data, std::make_shared<DataBody>(DataBody{std::move(data)}));
}

MObject ObjectAccess::world() {
    return MObject(MObject::Kind::World, nullptr);
}

graph::NodeRef ObjectAccess::node(const MObject& object) {
    graph::NodeRef node = anyNode(object);
    return node != nullptr && node->isAlive() ? node : nullptr;
}

graph::NodeRef ObjectAccess::anyNode(const MObject& object) {
    return isNode(object) ? std::static_pointer_cast<graph::Node>(object.body_) : nullptr;
}

const graph::Attribute* ObjectAccess::attribute(const MObject& object) {
    return object.kind_ == MObject::Kind::Attribute ? static_cast<const graph::Attribute*>(object.body_.get())
                                                    : nullptr;
}

graph::Component* ObjectAccess::component(const MObject& object) {
    return object.kind_ == MObject::Kind::Component ? &static_cast<ComponentBody*>(object.body_.get())->value
                                                    : nullptr;
}

DataBody* ObjectAccess::data(const MObject& object) {
    return object.kind_ == MObject::Kind::Data ? static_cast<DataBody*>(object.body_.get()) : nullptr;
}

}  // namespace host::api
