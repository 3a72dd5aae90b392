#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "geometry/objFile.h"

using namespace host::geometry;

/// Any text is read or refused. What was read is written and read again: the same objects, and from then on
/// the same text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ObjResult first = parseObj({reinterpret_cast<const char*>(data), size});
    if (!first.ok()) return 0;
    const std::string text = writeObj(first.objects);
    const ObjResult second = parseObj(text);
    bool same = second.ok() && second.objects.size() == first.objects.size();
    for (std::size_t i = 0; same && i < first.objects.size(); ++i) {
        const Mesh& a = first.objects[i].mesh;
        const Mesh& b = second.objects[i].mesh;
        same = a.points() == b.points() && a.topology().isSameAs(b.topology());
    }
    if (!same) {
        std::fprintf(stderr, "reading back gave something else: %s\n%s", second.error.c_str(), text.c_str());
        std::abort();
    }
    return 0;
}
