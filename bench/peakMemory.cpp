#include "peakMemory.h"

#include <cmath>
#include <fstream>
#include <string>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

/// A value of the process, in megabytes.
double statusValue(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double kilobytes = 0.0;
        if (word == name && status >> kilobytes) return kilobytes / 1024.0;
    }
    return std::nan("");
}

}  // namespace

void returnFreeMemory() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

PeakMemory::PeakMemory() {
    returnFreeMemory();                             // what is kept for later would hide what is taken
    std::ofstream("/proc/self/clear_refs") << "5";  // starts the peak anew
    before_ = statusValue("VmRSS:");
}

double PeakMemory::megabytes() const {
    return statusValue("VmHWM:") - before_;
}
