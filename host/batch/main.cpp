#include <iostream>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "batch/application.h"
#include "platform/streams.h"

namespace {

constexpr int kFailed = 1;
constexpr int kBadUsage = 2;

int run(const host::batch::Options& options, host::batch::Console& console) {
    if (!options.logFile.empty() && !console.openLog(options.logFile)) {
        console.error("The log file " + options.logFile + " cannot be written.");
        return kFailed;
    }
    host::batch::Application application(console);
    if (options.autoloadsPlugins && !application.loadOwnPlugin()) return kFailed;
    for (const host::batch::Action& action : options.actions) {
        const bool succeeded = application.run(action);
        if (application.hasQuit()) return application.quitStatus();
        if (!succeeded) return kFailed;
    }
    return 0;
}

}  // namespace

int main(int count, char** words) {
    host::platform::prepareStreams();
    const host::batch::Options options =
        host::batch::parseOptions(std::vector<std::string>(words + 1, words + count));
    if (!options.error.empty()) {
        std::cerr << "delvenbatch: " << options.error << "\nTry delvenbatch -help.\n";
        return kBadUsage;
    }
    host::batch::Console console;
    int status = 0;
    if (options.showsHelp) {
        console.print(std::string_view(host::batch::helpText()));
    } else if (options.showsVersion) {
        console.print(std::string_view("delvenbatch " DELVEN_VERSION "\n"));
    } else {
        try {
            status = run(options, console);
        } catch (const std::bad_alloc&) {
            console.error(std::string_view("Out of memory."), {});
            status = kFailed;
        }
    }
    const bool hasArrived = console.hasArrived();
    return status == 0 && !hasArrived ? kFailed : status;
}
