// What Ctrl-C does to the program.
#include "host/batchFixture.h"

#if defined(__linux__)

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>

namespace {

using namespace batchTest;

/// The program with its standard input in the hand of the test. No test waits for a fixed time: it waits for
/// what the program says, and each wait ends after ten seconds.
class Interrupted : public Batch {
  protected:
    void start() {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        start(ends[0], ends[1]);
    }
    /// At a terminal of its own, whose keys the test presses.
    void startAtTerminal() {
        const int keys = posix_openpt(O_RDWR | O_NOCTTY);
        ASSERT_TRUE(keys != -1 && grantpt(keys) == 0 && unlockpt(keys) == 0);
        start(open(ptsname(keys), O_RDWR | O_NOCTTY), keys);
    }
    void start(int childEnd, int ownEnd) {
        written("out", {});
        written("err", {});
        input_ = ownEnd;
        child_ = fork();
        ASSERT_NE(child_, -1);
        if (child_ == 0) {
            std::signal(SIGINT, SIG_DFL);
            setsid();
            ioctl(childEnd, TIOCSCTTY, 0);  // without effect where it is no terminal
            dup2(childEnd, STDIN_FILENO);
            close(ownEnd);
            dup2(isatty(childEnd) ? childEnd : open(path("out").c_str(), O_WRONLY | O_APPEND), STDOUT_FILENO);
            dup2(open(path("err").c_str(), O_WRONLY | O_APPEND), STDERR_FILENO);
            execl(DELVEN_BINARY_DIR "/delvenbatch", "delvenbatch", "-noAutoloadPlugins", "-prompt", nullptr);
            _exit(127);
        }
        close(childEnd);
    }
    void type(const std::string& text) const {
        ASSERT_EQ(write(input_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    /// @return whether the program said `text` so often, within ten seconds
    bool hasSaid(const std::string& text, int times = 1, int tenths = 100) const {
        for (int turn = 0; turn < 4 * tenths; ++turn) {
            const std::string said = readTextFile(path("err")).text;
            int count = 0;
            for (std::size_t at = said.find(text); at != std::string::npos; at = said.find(text, at + 1))
                ++count;
            if (count >= times) return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(25));
        }
        return false;
    }
    void awaitMessage(const std::string& text) const { ASSERT_TRUE(hasSaid(text)) << "never said: " << text; }
    /// Types again when nothing came of it for two seconds: what is pressed just when a script ends was meant
    /// for that.
    void typeUntil(const std::string& text, const std::string& message, int times) const {
        for (int turn = 0; turn < 5; ++turn) {
            type(text);
            if (hasSaid(message, times, 20)) return;
        }
        FAIL() << "never said: " << message;
    }
    void interrupt() const { kill(child_, SIGINT); }
    void endInput() const { close(input_); }
    /// Waits for the end of the program. @return what waitpid tells
    int awaitEnd(bool isInterrupting = false) const {
        for (int turn = 0; turn < 400; ++turn) {
            if (isInterrupting) interrupt();
            int status = 0;
            if (waitpid(child_, &status, WNOHANG) == child_) return status;
            std::this_thread::sleep_for(std::chrono::milliseconds(25));
        }
        kill(child_, SIGKILL);
        int status = 0;
        waitpid(child_, &status, 0);
        return status;
    }

  private:
    pid_t child_ = -1;
    int input_ = -1;
};

TEST_F(Interrupted, TheScriptThatRunsStopsAndTheSceneStays) {
    start();
    type(
        "polyCube -n kept -ch 0;\nwarning \"first\"; catch(`eval \"warning \\\"loops\\\"; while (1) "
        "{}\"`); warning \"held\";\n");
    awaitMessage("loops");
    interrupt();
    awaitMessage("Interrupted.");
    type("warning \"second\"; for (;;) { int $x = 1; }\n");
    awaitMessage("second");
    interrupt();
    type("print (`objExists kept` + \" on\\n\");\n");
    endInput();
    const int status = awaitEnd();
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 1);
    EXPECT_EQ(readTextFile(path("out")).text, "// Result: kept //\n1 on\n");
    const std::string messages = readTextFile(path("err")).text;
    EXPECT_NE(messages.find("// Error: line 3."), std::string::npos) << messages;
    EXPECT_EQ(messages.find("held"), std::string::npos) << "no catch holds an interrupt";
}

TEST_F(Interrupted, AtATerminalTheKeyStopsAScriptAndAtAnEmptyLineSaysHowToLeave) {
    const std::string key = "\x03";
    startAtTerminal();
    type("polyCube -n kept -ch 0; warning \"loops\"; while (1) {}\r");
    awaitMessage("loops");
    type(key);
    awaitMessage("Interrupted.");
    typeUntil(key, "// Type quit; to leave.", 1);
    typeUntil("select nonsense" + key, "// Type quit; to leave.", 2);
    type("if (`objExists kept`) warning \"still there\";\r");
    awaitMessage("still there");
    type("quit;\r");
    const int status = awaitEnd();
    endInput();
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    EXPECT_EQ(readTextFile(path("err")).text.find("nonsense"), std::string::npos);
}

TEST_F(Interrupted, AProgramThatWaitsForAPipeEnds) {
    start();
    type("warning \"waits\";\n");
    awaitMessage("waits");
    const int status = awaitEnd(true);
    endInput();
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT);
}

}  // namespace

#endif
