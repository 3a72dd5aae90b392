#include "api/functionSets/variantSupport.h"

#include "api/handles/session.h"

namespace host::api {

geometry::FaceTieRule faceTieRule() {
    using Kind = geometry::FaceTieRule::Kind;
    const graph::Variants& variants = scene().variants();
    switch (variants.faceTie) {
        case graph::FaceTie::Last:
            return {Kind::Highest, 0};
        case graph::FaceTie::Random:
            return {Kind::Shuffled, variants.seed};
        case graph::FaceTie::First:
            break;
    }
    return {};
}

void arrangeNeighbours(MIntArray& neighbours) {
    const graph::NeighbourOrder order = scene().variants().neighbourOrder;
    if (order == graph::NeighbourOrder::Ascending) return;
    const MIntArray before(neighbours);
    const unsigned int count = before.length();
    for (unsigned int k = 0; k < count; ++k) {
        const bool isReversed = order == graph::NeighbourOrder::Descending;
        neighbours[k] = before[isReversed ? count - 1 - k : (k + count / 2) % count];
    }
}

}  // namespace host::api
