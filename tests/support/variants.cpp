#include "support/variants.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>

namespace {

using namespace host::graph;

struct NamedVariant {
    const char* name;
    void (*apply)(HostVariant&);
};

const NamedVariant kVariants[] = {
    {"readingCreates", [](HostVariant& host) { host.readingCreates = true; }},
    {"copyNamesDefault", [](HostVariant& host) { host.copyNames = CopyNames::Default; }},
    {"copyNamesAppended", [](HostVariant& host) { host.copyNames = CopyNames::Appended; }},
    {"faceTieLast", [](HostVariant& host) { host.faceTie = FaceTie::Last; }},
    {"faceTieRandom", [](HostVariant& host) { host.faceTie = FaceTie::Random; }},
    {"neighboursDescending", [](HostVariant& host) { host.neighbourOrder = NeighbourOrder::Descending; }},
    {"neighboursRotated", [](HostVariant& host) { host.neighbourOrder = NeighbourOrder::Rotated; }},
    {"legacyChains", [](HostVariant& host) { host.hasLegacyChains = true; }},
    {"plugsExpire", [](HostVariant& host) { host.plugsExpire = true; }},
    {"noLegacyHandlers", [](HostVariant& host) { host.callsLegacyHandlers = false; }},
    {"earlyDeltasLost", [](HostVariant& host) { host.losesEarlyDeltas = true; }},
    {"lateDeltas", [](HostVariant& host) { host.takesDeltasOnDisconnect = false; }},
    {"namesakesAdded", [](HostVariant& host) { host.addsEveryNamesake = true; }},
    {"argumentsFirst", [](HostVariant& host) { host.refusesArgumentsFirst = true; }},
    {"arraysUnset", [](HostVariant& host) { host.leavesArraysUnset = true; }},
    {"parentsStay", [](HostVariant& host) { host.deletesEmptyParents = false; }},
};

HostVariant named(const std::string& name) {
    HostVariant host;
    const auto found = std::find_if(std::begin(kVariants), std::end(kVariants),
                                    [&](const NamedVariant& entry) { return entry.name == name; });
    if (found != std::end(kVariants)) {
        found->apply(host);
    } else if (name == "everything") {
        for (const NamedVariant& entry : kVariants)
            entry.apply(host);
    } else {
        std::cerr << "DELVEN_HOST_VARIANT: there is no variant '" << name << "'.\n";
        std::exit(2);
    }
    return host;
}

}  // namespace

std::vector<std::string> variantNames() {
    std::vector<std::string> names;
    for (const NamedVariant& entry : kVariants)
        names.emplace_back(entry.name);
    names.emplace_back("everything");
    return names;
}

const HostVariant& variant() {
    static const char* const name = std::getenv("DELVEN_HOST_VARIANT");
    static const HostVariant chosen = name != nullptr && *name != '\0' ? named(name) : HostVariant();
    return chosen;
}
