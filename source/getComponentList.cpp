#include "getComponentList.h"

#include <maya/MArgDatabase.h>
#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MGlobal.h>
#include <maya/MPlug.h>
#include <maya/MSelectionList.h>

#include "common.h"
#include "scene/plugAccess.h"

namespace {

/// A component of a mesh. Null, which means the whole mesh, for an unknown type.
MObject makeComponent(int type, MIntArray& elements) {
    constexpr MFn::Type kTypes[] = {MFn::kMeshVertComponent, MFn::kMeshEdgeComponent,
                                    MFn::kMeshPolygonComponent};
    if (type < 0 || type > 2) return MObject::kNullObj;
    MFnSingleIndexedComponent component;
    MObject object = component.create(kTypes[type]);
    component.addElements(elements);
    return object;
}

}  // namespace

const CommandInfo& getComponentList::info() {
    static const CommandInfo description{
        kName,
        "Returns a flat index list for the given component attribute.",
        {{"-at", "-attribute", MSyntax::kString, "the component attribute"},
         {"-sl", "-select", MSyntax::kString, "select the components of the given mesh"},
         {"-ct", "-componentType", MSyntax::kLong,
          "type of component selection (0: vertex, 1: edge, 2: face)"}},
        "dv_getComponentList -at <string>",
        "<int> array",
        false,
        ErrorResult::kNothing,
        false};
    return description;
}

CallOutcome getComponentList::read(const MArgDatabase& arguments) {
    readFlag(arguments, "-at", attribute_);
    readFlag(arguments, "-ct", componentType_);
    readFlag(arguments, "-sl", mesh_);
    return CallOutcome();
}

CallOutcome getComponentList::edit() {
    if (attribute_.length() == 0) return CallOutcome();
    // A name that matches nothing leaves the list empty: getPlug reports it.
    MSelectionList list;
    list.add(attribute_);
    MPlug plug;
    const MStatus status = list.getPlug(0, plug);
    MIntArray elements;
    const bool isPresent = status && isPlugPresent(plug);
    if (isPresent) elements = componentListToIndices(plug);
    if (elements.length() == 0 && isPresent && plug.node().hasFn(MFn::kBlendShape)) {
        // Deltas of a connected target mesh do not exist before the deformer has computed them.
        evaluateDeformer(plug.node());
        elements = componentListToIndices(plug);
    }
    MStatus selected;
    if (mesh_.length() == 0 || componentType_ == kNoType) {
        setResult(elements);
    } else {
        selected = select(elements);
    }
    return status && selected ? CallOutcome() : CallOutcome::failed("", status ? selected : status);
}

/// Selects the elements. The selection does not change if the mesh does not exist.
MStatus getComponentList::select(MIntArray& elements) const {
    MSelectionList list;
    list.add(mesh_);
    MDagPath path;
    MStatus status = list.getDagPath(0, path);
    if (status) status = path.extendToShape();
    if (!status) return status;
    MSelectionList selection;
    selection.add(path, makeComponent(componentType_, elements));
    return MGlobal::setActiveSelectionList(selection);
}
