// Scene files opened, and saved without edits under their own name.
//
// Opening parses no list of numbers, so neither does its floor: it reads the bytes into memory and looks for
// the ends of the statements. The floor of saving also writes these bytes over another file, and brings it to
// the disk by the same call as the host does. It has no second file that replaces the first.

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "benchFile.h"
#include "graph/graph.h"
#include "nodes/registerTypes.h"
#include "peakMemory.h"
#include "platform/fileSync.h"
#include "rows.h"
#include "scene/sceneSession.h"
#include "sceneFiles.h"
#include "table.h"

namespace {

/// Ends the program when something failed, since the figures would mean nothing.
void require(bool isDone, const std::string& what) {
    if (isDone) return;
    std::fprintf(stderr, "%s\n", what.c_str());
    std::exit(1);
}

/// No warning is expected.
class Strict final : public host::graph::MessageSink {
  public:
    void print(const std::string&) override {}
    void info(const std::string&) override {}
    void warning(const std::string& text) override { require(false, text); }
    void error(const std::string& text) override { require(false, text); }
};

/// The file of a size, and nothing in memory that a program would not have at its start, when it opens one.
const SceneFile& prepare(benchmark::State& state, int size) {
    state.PauseTiming();
    const SceneFile& file = SceneFile::of(size);
    state.counters[kFileBytes] = static_cast<double>(file.bytes());
    returnFreeMemory();
    state.ResumeTiming();
    return file;
}

/// A host with an empty scene.
class SceneHost {
  public:
    static SceneHost& get() {
        static SceneHost host;
        return host;
    }

    void open(const SceneFile& file) {
        const std::string error = session_->open(file.path());
        require(error.empty(), error);
    }
    void save() {
        const std::string error = session_->save();
        require(error.empty(), error);
    }
    void readValues() {
        for (const host::graph::NodeRef& node : graph_.nodes())
            benchmark::DoNotOptimize(node->slots().size());
    }
    /// What was open is gone afterwards.
    void close(const SceneFile& file) {
        require(session_->document().text->statements.size() == file.statements(), "statements are missing");
        session_->startNew();
    }

  private:
    SceneHost() {
        graph_.setMessages(messages_);
        host::nodes::registerTypes(graph_.types());
        host::nodes::setUpScene(graph_);
        session_ = std::make_unique<host::scene::SceneSession>(graph_, host::platform::synchronise);
    }

    Strict messages_;
    host::graph::Graph graph_;
    std::unique_ptr<host::scene::SceneSession> session_;
};

void openScene(benchmark::State& state, int size) {
    SceneHost& host = SceneHost::get();
    const SceneFile& file = prepare(state, size);
    host.open(file);
    state.PauseTiming();
    host.close(file);
    state.ResumeTiming();
}

void openAndSave(benchmark::State& state, int size) {
    SceneHost& host = SceneHost::get();
    const SceneFile& file = prepare(state, size);
    host.open(file);
    host.save();
    state.PauseTiming();
    require(std::filesystem::file_size(file.path()) == file.bytes(), "the file has another size");
    host.close(file);
    state.ResumeTiming();
}

/// Every value of every node for the first time. Building the mesh from its edges belongs to it.
void readValues(benchmark::State& state, int size) {
    SceneHost& host = SceneHost::get();
    const SceneFile& file = prepare(state, size);
    state.PauseTiming();
    state.counters[kNumbers] = static_cast<double>(file.numbers());
    host.open(file);
    state.ResumeTiming();
    host.readValues();
    state.PauseTiming();
    host.close(file);
    state.ResumeTiming();
}

/// The bytes of a file.
struct Bytes {
    explicit Bytes(const SceneFile& file) : size(file.bytes()), text(new char[size]) {
        std::ifstream stream(file.path(), std::ios::binary);
        require(static_cast<bool>(stream.read(text.get(), static_cast<std::streamsize>(size))),
                "cannot read");
    }

    std::size_t size;
    std::unique_ptr<char[]> text;
};

/// The first place of a byte; the end if there is none.
const char* find(const char* at, const char* end, char wanted) {
    const void* const found = std::memchr(at, wanted, static_cast<std::size_t>(end - at));
    return found != nullptr ? static_cast<const char*>(found) : end;
}

/// The number of semicolons that are in no string and in no comment.
std::size_t countStatements(const Bytes& bytes) {
    const char* at = bytes.text.get();
    const char* const end = at + bytes.size;
    const char* semicolon = find(at, end, ';');
    for (std::size_t count = 0;;) {
        if (semicolon < at) semicolon = find(at, end, ';');
        const char* const quote = find(at, semicolon, '"');
        const char* const slash = find(at, quote, '/');
        if (slash != quote) {
            at = end - slash > 1 && slash[1] == '/' ? find(slash, end, '\n') : slash + 1;
        } else if (quote != semicolon) {
            at = quote + 1;
            while (at != end && *at != '"')
                at += *at == '\\' && end - at > 1 ? 2 : 1;
            if (at != end) ++at;
        } else {
            if (semicolon == end) return count;
            ++count;
            at = semicolon + 1;
        }
    }
}

Bytes readAndCut(benchmark::State& state, int size) {
    const SceneFile& file = prepare(state, size);
    Bytes bytes(file);
    require(countStatements(bytes) == file.statements(), "the floor misses statements");
    return bytes;
}

/// Frees the bytes while the clock stands, as what was opened is freed.
void drop(benchmark::State& state, Bytes& bytes) {
    state.PauseTiming();
    bytes.text.reset();
    state.ResumeTiming();
}

void openFloor(benchmark::State& state, int size) {
    Bytes bytes = readAndCut(state, size);
    drop(state, bytes);
}

void openAndSaveFloor(benchmark::State& state, int size) {
    static const BenchFile copy(".ma");
    Bytes bytes = readAndCut(state, size);
    std::ofstream stream(copy.path(), std::ios::binary);
    stream.write(bytes.text.get(), static_cast<std::streamsize>(bytes.size));
    stream.close();
    require(stream && host::platform::synchronise(copy.path().u8string()) == 0, "cannot write");
    drop(state, bytes);
}

}  // namespace

void addSceneFileRows() {
    addFileRow("open scene", openScene, openFloor, 1.5);
    addFileRow("open and save scene", openAndSave, openAndSaveFloor, 1.5);
    addFileRow("read all values", readValues);
}
