#include "support/variants.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>

namespace {

using namespace host::graph;

struct NamedVariant {
    const char* name;
    void (*apply)(Variants&);
};

const NamedVariant kVariants[] = {
    {"readingCreates", [](Variants& host) { host.readingCreates = true; }},
    {"copyNamesDefault", [](Variants& host) { host.copyNames = CopyNames::Default; }},
    {"copyNamesAppended", [](Variants& host) { host.copyNames = CopyNames::Appended; }},
    {"faceTieLast", [](Variants& host) { host.faceTie = FaceTie::Last; }},
    {"faceTieRandom", [](Variants& host) { host.faceTie = FaceTie::Random; }},
    {"neighboursDescending", [](Variants& host) { host.neighbourOrder = NeighbourOrder::Descending; }},
    {"neighboursRotated", [](Variants& host) { host.neighbourOrder = NeighbourOrder::Rotated; }},
    {"legacyChains", [](Variants& host) { host.hasLegacyChains = true; }},
    {"plugsExpire", [](Variants& host) { host.plugsExpire = true; }},
    {"noLegacyHandlers", [](Variants& host) { host.callsLegacyHandlers = false; }},
    {"earlyDeltasLost", [](Variants& host) { host.losesEarlyDeltas = true; }},
    {"lateDeltas", [](Variants& host) { host.takesDeltasOnDisconnect = false; }},
    {"namesakesAdded", [](Variants& host) { host.addsEveryNamesake = true; }},
    {"argumentsFirst", [](Variants& host) { host.refusesArgumentsFirst = true; }},
    {"parentsStay", [](Variants& host) { host.deletesEmptyParents = false; }},
};

Variants named(const std::string& name) {
    Variants host;
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

const host::graph::Variants& variant() {
    static const char* const name = std::getenv("DELVEN_HOST_VARIANT");
    static const Variants chosen = name != nullptr && *name != '\0' ? named(name) : Variants();
    return chosen;
}
