#pragma once

#include <maya/MObject.h>

#include <memory>

#include "graph/component.h"
#include "graph/data.h"
#include "graph/node.h"

namespace host::api {

/// What a component object stands for. The copies of its handle share it.
struct ComponentBody {
    graph::Component value;
};

/// What a data object stands for: the copies of its handle share the body, the data itself never changes.
struct DataBody {
    graph::DataPtr value;
};

/// Between MObject and what it stands for. Every function is O(1).
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
    /// The node in the scene that the object stands for, otherwise null.
    static graph::NodeRef node(const MObject& object);
    /// As node(), but deleted nodes too.
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
