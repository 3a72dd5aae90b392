#pragma once

#include <hostPrivate/access.h>
#include <maya/MArgList.h>
#include <maya/MCommandResult.h>
#include <maya/MDGModifier.h>
#include <maya/MDagPath.h>
#include <maya/MEvent.h>
#include <maya/MFnBase.h>
#include <maya/MFnDagNode.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MPxCommand.h>
#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>
#include <maya/MSelectionList.h>
#include <maya/MSyntax.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "api/values/statusMaker.h"
#include "graph/graph.h"
#include "mel/tools.h"
#include "mel/value.h"

namespace host::api {

/// What a component object stands for. The copies of its handle share it.
struct ComponentBody {
    graph::Component value;
};

/// What a data object stands for: the copies of its handle share the body, the data itself never changes.
struct DataBody {
    graph::DataPtr value;
};

struct SyntaxTable;

/// Between the API's classes and the host's. Every conversion is O(1) but for lists.
struct Access {
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

    /// The place that a plug stands for; an empty one where the plug has expired (graph::Variants).
    static const graph::Plug& place(const MPlug& plug);
    /// What a plug holds, expired or not.
    static graph::Plug& held(MPlug& plug);
    static const graph::Plug& held(const MPlug& plug);
    /// @param isNetworked  the plug is one of a connection
    static MPlug plug(graph::Plug place, bool isNetworked = false);

    static MDagPath path(const graph::NodeRef& node);
    static graph::NodeRef node(const MDagPath& path);

    static const MObject& object(const MFnBase& functionSet) { return functionSet.object_; }
    static bool hasPath(const MFnDagNode& functionSet) { return functionSet.hasPath_; }

    static void setContent(MCommandResult& result, mel::Value value);
    static std::vector<mel::Value>& words(MArgList& list);
    static const std::vector<mel::Value>& words(const MArgList& list);
    static const SyntaxTable& table(const MSyntax& syntax);
    /// The same syntax, not a copy: flags added to it are added to the other one. Copies of it are copies.
    static MSyntax shared(const MSyntax& syntax);
    /// Gives a new command object the syntax that was made at registration.
    static void setSyntax(MPxCommand& command, std::shared_ptr<const MSyntax> syntax);

    /// Gives a modifier a change that has been made, to take back.
    static void addDone(MDGModifier& modifier, std::unique_ptr<graph::ChangeList> change);

    static MEvent event(const mel::MouseEvent& source);
    // What a tool has told of itself, and the command that made it.
    static std::string title(const MPxContext& context);
    static std::string help(const MPxContext& context);
    static std::string cursor(const MPxContext& context);
    static void setCommandName(MPxContext& context, std::string name);
    /// Gives the command object of a tool the arguments of a call, which it reads in doEditFlags() and
    /// doQueryFlags(). @return its syntax
    static MSyntax& syntax(MPxContextCommand& command);
    static void setArguments(MPxContextCommand& command, const MArgList& arguments);
    static MHWRender::MUIDrawManager& drawManager();
    static MHWRender::MFrameContext& frameContext();

    static std::vector<graph::SelectionItem>& items(MSelectionList& list);
    static const std::vector<graph::SelectionItem>& items(const MSelectionList& list);
};

inline std::string text(const MString& string) {
    return std::string(string.asChar(), string.length());
}

inline MString string(std::string_view text) {
    return MString(text.data(), static_cast<int>(text.size()));
}

// The statuses that the API's functions report most.
inline MStatus missingObject() {
    return StatusMaker::make(MStatus::kFailure, Explanation::objectDoesNotExist);
}
inline MStatus unknownObject() {
    return StatusMaker::make(MStatus::kInvalidParameter, Explanation::objectDoesNotExist);
}
inline MStatus noElement() {
    return StatusMaker::make(MStatus::kInvalidParameter, Explanation::noElementAtIndex);
}
inline MStatus incompatible() {
    return StatusMaker::make(MStatus::kInvalidParameter, Explanation::incompatibleObject);
}
inline MStatus failure() {
    return StatusMaker::make(MStatus::kFailure, Explanation::internalFailure);
}

/// Reports the status and gives the value that a failing function returns.
template <typename T>
T failed(MStatus* destination, const MStatus& status, T value) {
    report(destination, status);
    return value;
}

}  // namespace host::api
