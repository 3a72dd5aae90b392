#include "api/handles/plugAccess.h"

#include <new>
#include <utility>

#include "api/handles/session.h"

namespace host::api {

const graph::Plug& PlugAccess::held(const MPlug& plug) {
    static_assert(sizeof(graph::Plug) <= MPlug::kPlaceSize && alignof(graph::Plug) <= alignof(void*),
                  "MPlug holds a graph::Plug in place");
    return *std::launder(reinterpret_cast<const graph::Plug*>(plug.place_));
}

graph::Plug& PlugAccess::held(MPlug& plug) {
    return *std::launder(reinterpret_cast<graph::Plug*>(plug.place_));
}

const graph::Plug& PlugAccess::place(const MPlug& plug) {
    static const graph::Plug nothing;
    const graph::Plug& held = PlugAccess::held(plug);
    const graph::RemovalLog* removals = held ? Session::removals() : nullptr;
    const bool hasExpired = removals != nullptr && removals->hasLost(held, plug.moment_, plug.isNetworked_);
    return hasExpired ? nothing : held;
}

MPlug PlugAccess::plug(graph::Plug place, bool isNetworked) {
    MPlug result;
    held(result) = std::move(place);
    if (const graph::RemovalLog* removals = Session::removals()) result.moment_ = removals->now();
    result.isNetworked_ = isNetworked;
    return result;
}

bool isUsable(const graph::Plug& place) {
    return place && place.node()->isAlive();
}

bool isLocked(const graph::Plug& place) {
    if (place.node()->states().empty()) return false;
    for (graph::Plug at = place; at; at = at.parent()) {
        if (at.node()->state(at.key()).isLocked) return true;
    }
    return false;
}

}  // namespace host::api
