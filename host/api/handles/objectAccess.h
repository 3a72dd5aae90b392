#pragma once

#include <maya/MObject.h>

#include <memory>

#include "graph/component.h"
#include "graph/data.h"
#include "graph/node.h"

namespace host::api {

/// The content of a component object. Copies of its handle share it.
struct ComponentBody {
    graph::Component value;
};

/// The content of a data object. Copies of its handle share the body. The data itself never changes.
struct DataBody {
    graph::DataPtr value;
};

/// Converts between MObject and what it refers to. Every function is O(1).
struct ObjectAccess {
    // A null reference gives a null object.
    static MObject object(const graph::NodeRef& node);
    static MObject object(const graph::NodeRef& owner, const graph::Attribute& attribute);
    static MObject object(graph::Component component);
    static MObject object(graph::DataPtr data);
    static MObject world();
    template <typename Plugin>
    static MObject pluginObject(const std::shared_ptr<Plugin>& plugin) {
        return MObject(MObject::Kind::Plugin, plugin);
    }

    static bool isNode(const MObject& object) { return object.kind_ == MObject::Kind::Node; }
    static bool isWorld(const MObject& object) { return object.kind_ == MObject::Kind::World; }
    static bool isPlugin(const MObject& object) { return object.kind_ == MObject::Kind::Plugin; }
    static const void* identity(const MObject& object) { return object.body_.get(); }
    /// The node in the scene that the object refers to, otherwise null.
    static graph::NodeRef node(const MObject& object);
    /// Like node(), but also for deleted nodes.
    static graph::NodeRef anyNode(const MObject& object);
    static const graph::Attribute* attribute(const MObject& object);
    static graph::Component* component(const MObject& object);
    static DataBody* data(const MObject& object);
    template <typename Plugin>
    static Plugin* plugin(const MObject& object) {
        return isPlugin(object) ? static_cast<Plugin*>(object.body_.get()) : nullptr;
    }
};

}  // namespace host::api
