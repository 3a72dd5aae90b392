// operator new for the programs of the host, on Linux. The arrays of a large mesh are read in an order that
// jumps about, so with pages of 4 KB the processor keeps looking addresses up. Larger blocks ask
// the system for pages of 2 MB: building a mesh of a million vertices takes half the time.

#include <malloc.h>
#include <sys/mman.h>

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;

/// From this size on a block has a mapping of its own, which goes when the block is freed. The library would
/// raise that size by and by, and aligned blocks in the heap leave holes.
constexpr int kMapped = 16 << 20;
/// How much free memory at the end of the heap stays with the program: arrays of one command after the other
/// take it.
constexpr int kKept = 64 << 20;
const bool kIsSet = mallopt(M_MMAP_THRESHOLD, kMapped) != 0 && mallopt(M_TRIM_THRESHOLD, kKept) != 0;

void* allocated(std::size_t size) noexcept {
    if (size < kHugePage) return std::malloc(size != 0 ? size : 1);
    void* block = nullptr;
    if (posix_memalign(&block, kHugePage, size) != 0) return nullptr;
    // Only whole pages: the rest of a block would take 2 MB as well. A system without such pages refuses, and
    // the block stays what it is.
    madvise(block, size / kHugePage * kHugePage, MADV_HUGEPAGE);
    return block;
}

}  // namespace

void* operator new(std::size_t size) {
    for (;;) {
        if (void* const block = allocated(size)) return block;
        const std::new_handler handler = std::get_new_handler();
        if (handler == nullptr) throw std::bad_alloc();
        handler();
    }
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
