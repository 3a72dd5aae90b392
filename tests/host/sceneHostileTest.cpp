// Scenes that want to do harm or are broken: nothing in them is run, nothing that they name is opened, what
// is saved is escaped, and a scene that cannot be opened leaves the open one as it was.

#include "host/sceneFixture.h"
#include "scene/statement.h"
#include "text/utf8.h"
#if !defined(_WIN32)
#include <sys/stat.h>
#endif

namespace scenetest {
namespace {

void replaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
}

/// A host whose folder has a pipe: whoever opens that to read waits for somebody who writes.
class HostileHost : public SceneHost {
  public:
    HostileHost() {
#if !defined(_WIN32)
        EXPECT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
#endif
    }

    /// The words MARK and PIPE become names of files in the folder.
    std::string named(std::string text) const {
        replaceAll(text, "MARK", path("mark"));
        replaceAll(text, "PIPE", path("pipe"));
        return text;
    }
    bool isHarmed() const {
        return std::filesystem::exists(path("mark"));
    }
};

/// The words that the statements of a text begin with; what is wrong if it cannot be cut.
std::vector<std::string> keywordsOf(const std::string& text, bool isDoubleByte = false) {
    const host::scene::CutText cut = host::scene::cutStatements(text, isDoubleByte);
    if (cut.fault) return {cut.fault.text};
    std::vector<std::string> words;
    words.reserve(cut.statements.size());
    for (const host::scene::Statement& statement : cut.statements) {
        const std::size_t end = text.find_first_of(" \t\n;\"(", statement.begin);
        words.push_back(text.substr(statement.begin, end - statement.begin));
    }
    return words;
}

// --- Commands in scenes

class HostileScene : public testing::TestWithParam<const char*> {};

TEST_P(HostileScene, IsKeptAndDoesNothing) {
    HostileHost host;
    const std::string text = host.named(
        host::geometry::readTextFile(DELVEN_SOURCE_DIR "/tests/host/hostile/" + std::string(GetParam()))
            .text);
    ASSERT_FALSE(text.empty());
    host.open(text);
    EXPECT_EQ(host.saved(), text);
    host.dump();
    host.touchOwnNodes();
    EXPECT_EQ(host.saved(), text);
    host.ok("currentTime 5; file -import -namespace \"again\" \"" + host.write("again.ma", text) + "\"");
    const std::string both = host.saved();
    EXPECT_GT(both.size(), text.size());
    host.ok("file -open -force \"" + host.path("scene.ma") + "\"");
    EXPECT_EQ(host.saved(), both);
    EXPECT_FALSE(host.isHarmed());
}

INSTANTIATE_TEST_SUITE_P(Scenes, HostileScene, testing::Values("scripts.ma", "references.ma"),
                         [](const auto& parameter) {
                             const std::string name = parameter.param;
                             return name.substr(0, name.find('.'));
                         });

TEST(HostileStatement, IsRefusedWithItsPlace) {
    HostileHost host;
    host.ok("createNode transform -n mine");
    const std::string before = host.dump();
    // The sign ^ stands before what is refused.
    for (const char* marked : {
             "^python(\"open('MARK', 'w')\");",
             "^eval \"system(\\\"touch MARK\\\")\";",
             "^`system \"touch MARK\"`;",
             "^$x = 1;",
             "^global proc f() { system(\"touch MARK\"); }",
             "^{ system(\"touch MARK\"); }",
             "^source \"MARK\";",
             "^evalDeferred \"1\";",
             "^scriptNode -eb -n \"a\";",
             "^setAttrs \".t\" 1;",
             "createNode ^`system \"touch MARK\"`;",
             "createNode transform -n ^`system(\"touch MARK\")`;",
             "createNode transform; setAttr \".tx\" ^`system(\"touch MARK\")`;",
             "createNode transform; setAttr \".tx\" (^system(\"touch MARK\"));",
             "createNode transform; setAttr \".tx\" (\"a\" + ^$x);",
             "createNode transform; setAttr \".tx\" (\"a\" + // )\n ^1);",
             "createNode transform; setAttr \".aal\" {system^(\"touch MARK\")};",
             "createNode transform; setAttr \".aal\" {system ^(\"touch MARK\")};",
             "createNode transform; setAttr \".aal\" {\"a\", _f9\n\t^(\"b\")};",
             "requires ^`system(\"touch MARK\")` \"1\";",
             "fileInfo \"a\" (\"b\" + ^`system(\"touch MARK\")`);",
             "connectAttr \"a.b\" ^`system(\"touch MARK\")`;",
             "file -r -op ^`system(\"touch MARK\")` \"a.ma\";",
             "^createNode \"transform; system(\\\"touch MARK\\\");\" -n \"a\";",
             "^createNode \"transform -n \\\"a\\\"; system(\\\"touch MARK\\\"); //\" -n \"b\";",
             "^createNode transform -n \"a;b\";",
             "^createNode transform -n \"$(touch MARK)\";",
             "^createNode transform -n \"a\" -p \"a\";",
         }) {
        std::string text = host.named(marked);
        const std::size_t place = text.find('^');
        text.erase(place, 1);
        const std::string file = host.write("bad.ma", text);
        const std::string where = host::scene::placeText("bad.ma", text, place) + ": ";
        for (const char* command : {"file -open -force \"", "file -import \""}) {
            EXPECT_EQ(host.fails(command + file + '"').substr(0, where.size()), where) << text;
            EXPECT_EQ(host.dump(), before) << text;
        }
    }
    EXPECT_FALSE(host.isHarmed());
}

// --- What scripts set

constexpr const char* kPlain = R"(//Maya ASCII 2024 scene
//Name: scene.ma
requires maya "2024";
createNode transform -n "box";
	addAttr -ci true -sn "note" -ln "note" -dt "string";
	setAttr ".note" -type "string" "";
// End of scene.ma
)";

/// Text as a string of a script.
std::string inScript(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') result += '\\';
        result += c == '\n' ? std::string("\\n") : std::string(1, c);
    }
    return result + '"';
}

TEST(HostileText, IsEscapedWhereverAScriptPutsIt) {
    for (const std::string text :
         {"\"; system(\"touch MARK\"); //", "\\", "\\\"; system(\"touch MARK\"); //", "\n; system(\"x\");\n",
          "`system(\"touch MARK\")`", "$(touch MARK)", "\" + `system(\"touch MARK\")` + \"",
          "//\" ; createNode transform;", "\t\\t\\n\\\\n"}) {
        HostileHost host;
        host.open(kPlain);
        const std::string script = inScript(host.named(text));
        host.ok("setAttr -type \"string\" box.note " + script);
        host.ok("fileInfo " + script + ' ' + script);
        host.ok("addAttr -ln list -dt \"stringArray\" box; setAttr box.list -type \"stringArray\" 2 " +
                script + ' ' + script);
        // Whether these are taken is not the question here.
        for (const std::string& attempt :
             {"addAttr -ln choice -at \"enum\" -enumName " + script + " box",
              "rename `createNode transform` " + script, "addAttr -at long -ln " + script + " box",
              "addAttr -at long -ln kind -category " + script + " box", "aliasAttr " + script + " box.tx",
              "createNode " + script, "createNode transform -n " + script, "namespace -add " + script,
              "requires " + script + " \"1\""})
            host.run(attempt);
        const std::string saved = host.saved();
        for (const std::string& word : keywordsOf(saved))
            EXPECT_TRUE(word == "requires" || word == "fileInfo" || word == "createNode" ||
                        word == "addAttr" || word == "setAttr" || word == "rename")
                << text << ": " << word;
        host.ok("file -open -force \"" + host.path("scene.ma") + "\"");
        EXPECT_EQ(host.ok("getAttr box.note"), host.named(text)) << saved;
        EXPECT_EQ(host.ok("fileInfo -q " + script), host.named(text));
        EXPECT_EQ(host.saved(), saved);
        EXPECT_FALSE(host.isHarmed());
    }
}

#if !defined(_WIN32)
/// The name stands in two comments, which end with their line.
TEST(HostileText, InTheNameOfAFileEndsNoComment) {
    for (const char* lineEnd : {"\n", "\r", "\r\n"}) {
        HostileHost host;
        host.open(kPlain);
        const std::string name = "a" + std::string(lineEnd) + "system(\"touch mark\");" + lineEnd + "b.ma";
        std::string script = inScript(host.path(name));
        replaceAll(script, "\r", "\\r");
        host.ok("file -rename " + script + "; file -save");
        const std::vector<std::string> expected = linesOf(kPlain);
        const std::string saved = host.read(name);
        EXPECT_EQ(linesOf(saved).size(), expected.size()) << saved;
        EXPECT_EQ(keywordsOf(saved), keywordsOf(kPlain)) << saved;
        EXPECT_EQ(saved.find('\r'), std::string::npos) << saved;
    }
}
#endif

// --- Code pages

class CodePage : public testing::TestWithParam<const char*> {
  protected:
    static std::string scene(const std::string& note) {
        std::string text = kPlain;
        replaceAll(text, "//Name", "//Codeset: " + std::string(GetParam()) + "\n//Name");
        replaceAll(text, "\"\";", '"' + note + "\";");
        return text;
    }
    /// Also for a name that no release writes.
    static bool isUtf8() {
        return std::string(GetParam()).find_first_not_of("0123456789") == 0 ||
               std::string(GetParam()).size() > 5;
    }
    static bool isDoubleByte() {
        const std::string page = GetParam();
        return page == "932" || page == "936" || page == "949" || page == "950";
    }
};

TEST_P(CodePage, KeepsBytesThatItDoesNotKnow) {
    for (const char* note : {"caf\xE9", "\x83\x5A\x83\x62", "\x80\xFF", "\xA0"}) {
        SceneHost host;
        const std::string text = scene(note);
        host.open(text);
        EXPECT_EQ(host.ok("getAttr box.note"), note);
        host.touchOwnNodes();
        EXPECT_EQ(host.saved(), text);
        host.ok("setAttr box.tx 1; duplicate -n twin box");
        const std::string saved = host.saved();
        // Where a string would stay open, the page is not that of the header.
        const bool isRead = isDoubleByte() && !host::scene::cutStatements(text, true).fault;
        EXPECT_EQ(keywordsOf(saved, isRead).size(), keywordsOf(text).size() + 6) << saved;
        host.ok("file -open -force \"" + host.path("scene.ma") + "\"");
        EXPECT_EQ(host.ok("getAttr twin.note"), note);
        EXPECT_EQ(host.saved(), saved);
    }
}

/// The second byte of a character may be a backslash.
TEST_P(CodePage, ReadsAndWritesABackslashAsSecondByte) {
    SceneHost host;
    const std::string two = "\x95\\";
    host.open(scene(isDoubleByte() ? two : "\x95\\\\"));
    EXPECT_EQ(host.ok("getAttr box.note"), two);
    host.ok("duplicate -n twin box; setAttr -type \"string\" box.note (`getAttr twin.note` + \"\\\"\")");
    const std::string saved = host.saved();
    host.ok("file -open -force \"" + host.path("scene.ma") + "\"");
    EXPECT_EQ(host.ok("getAttr twin.note"), two);
    EXPECT_EQ(host.ok("getAttr box.note"), two + '"');
    EXPECT_EQ(host.saved(), saved);
    EXPECT_FALSE(host::scene::cutStatements(saved, isDoubleByte()).fault) << saved;
}

/// In a double-byte code page a text of another one could take the quotation mark at its end with it.
TEST_P(CodePage, NoTextEndsItsStringOtherwise) {
    for (const std::string note : {"\xE6\x97\xA5\"; system(\"touch MARK\"); //", "\xE6\x97\xA5", "a\xA5\n"}) {
        SceneHost host;
        const std::string text = scene("");
        host.open(text);
        host.ok("setAttr -type \"string\" box.note " + inScript(note));
        const bool isRefused = isDoubleByte() || (!isUtf8() && host::text::hasWideCharacters(note));
        if (isRefused) {
            const std::string error = host.fails("file -save");
            EXPECT_EQ(error.find("The scene is in code page " + std::string(GetParam())), 0U) << error;
            EXPECT_EQ(host.read("scene.ma"), text);
            EXPECT_EQ(host.ok("file -q -modified"), "1");
            host.ok("setAttr -type \"string\" box.note \"plain\"");
        }
        const std::string saved = host.saved();
        EXPECT_EQ(keywordsOf(saved, isDoubleByte()), keywordsOf(text)) << saved;
        host.ok("file -open -force \"" + host.path("scene.ma") + "\"");
        EXPECT_EQ(host.ok("getAttr box.note"), isRefused ? "plain" : note);
    }
}

/// Statements are copied from scene to scene word for word.
TEST_P(CodePage, TakesNothingThatEndsElsewhereInAnother) {
    SceneHost host;
    host.open(scene("plain"));
    const std::string before = host.dump();
    const std::string other = isDoubleByte() ? "1252" : "932";
    const std::string statements = "createNode network -n \"n\";\n\tsetAttr \".x\" -type \"stringArray\" 2 ";
    const std::string head = "//Maya ASCII 2024 scene\n//Codeset: " + other + "\n" + statements;
    const std::string shifted = isDoubleByte() ? "\"\x95\\\" ; requires \\\"evil\\\"; //\" \"\";\n"
                                               : "\"\x95\\\" \"; requires \\\"evil\\\"; //\";\n";
    const std::string file = host.write("other.ma", head + shifted);
    EXPECT_NE(host.fails("file -import \"" + file + "\"").find("code page"), std::string::npos);
    EXPECT_EQ(host.dump(), before);
    host.write("other.ma", head + "\"\x83\x62\" \"\";\n");
    host.ok("file -import \"" + file + "\"");
    const std::string saved = host.saved();
    EXPECT_EQ(keywordsOf(saved, true), keywordsOf(saved, false));
    EXPECT_NE(saved.find("\"\x83\x62\" \"\";"), std::string::npos) << saved;
}

INSTANTIATE_TEST_SUITE_P(Pages, CodePage,
                         testing::Values("1252", "932", "936", "949", "950", "1251", "UTF-8", "nonsense",
                                         "99999999999999999999", "-1"),
                         [](const auto& parameter) { return "page" + std::to_string(parameter.index); });

// --- Broken

constexpr const char* kSmall = R"(//Maya ASCII 2024 scene
requires maya "2024";
createNode transform -n "a";
	addAttr -ci true -sn "note" -ln "note" -dt "string";
	setAttr ".t" -type "double3" 1 2 3 ;
	setAttr ".note" -type "string" ( "a;\"" // b"
		+ "c" );
createNode mesh -n "aShape" -p "a";
	setAttr -s 3 ".vt[0:2]"  0 0 0 1 0 0 0 1 0;
	setAttr -s 3 ".ed[0:2]"  0 1 0 1 2 0 2 0 0;
	setAttr ".fc[0]" -type "polyFaces" f 3 0 1 2 ;
connectAttr "aShape.iog" ":initialShadingGroup.dsm" -na;
)";

TEST(BrokenScene, CutOffAnywhereIsKeptOrRefusedWithItsPlace) {
    const std::string whole = kSmall;
    SceneHost host;
    host.ok("createNode transform -n mine");
    const std::string before = host.dump();
    int refused = 0;
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const std::string text = whole.substr(0, length);
        const std::string file = host.write("scene.ma", text);
        const host::mel::RunResult result = host.run("file -open -force \"" + file + "\"");
        if (result.ok) {
            host.dump();
            host.touchOwnNodes();
            EXPECT_EQ(host.saved(), text) << length;
            host.ok("file -new -force; createNode transform -n mine");
        } else {
            ++refused;
            EXPECT_EQ(result.error.message.rfind("scene.ma, line ", 0), 0U) << result.error.message;
            EXPECT_NE(result.error.message.find(", column "), std::string::npos) << result.error.message;
        }
        EXPECT_EQ(host.dump(), before) << length;
    }
    EXPECT_GT(refused, 300);
}

TEST(BrokenScene, WithOtherBytesBetweenItsLinesIsKept) {
    for (const std::string& lineEnd : {std::string("\r\n"), std::string("\r"), std::string("\n\r"),
                                       std::string("\n\0\n", 3), std::string(" \f\v\n")}) {
        std::string text = kSmall;
        replaceAll(text, "\n", lineEnd);
        // Between statements a zero byte belongs to none.
        const bool isRefused = lineEnd.find('\0') != std::string::npos;
        SceneHost host;
        const host::mel::RunResult result =
            host.run("file -open -force \"" + host.write("scene.ma", text) + "\"");
        EXPECT_EQ(result.ok, !isRefused) << result.error.message;
        host.touchOwnNodes();
        if (!isRefused) {
            EXPECT_EQ(host.saved(), text);
        }
    }
    // In a string it is a byte like others.
    std::string text = kSmall;
    text.replace(text.find("a;"), 1, std::string("\0", 1));
    SceneHost host;
    host.open(text);
    host.dump();
    host.touchOwnNodes();
    EXPECT_EQ(host.saved(), text);
}

TEST(BrokenScene, NamesThatStandTwiceMeanOneNodeEachOrNone) {
    SceneHost host;
    const std::string twice = std::string(kSmall) + "createNode transform -n \"a\";\n";
    host.open(twice);
    EXPECT_EQ(host.ok("size(`ls -type transform`)"), "6");
    EXPECT_EQ(host.saved(), twice);
    const std::string before = host.dump();
    const std::string file = host.write("bad.ma", twice + "createNode mesh -p \"a\";\n");
    EXPECT_EQ(host.fails("file -open -force \"" + file + "\""),
              "bad.ma, line 14, column 1: The parent 'a' is not in the scene, or there are several.");
    EXPECT_EQ(host.dump(), before);
}

/// What is below itself would never be walked to its end.
TEST(BrokenScene, ParentStatementsMakeNoRing) {
    SceneHost host;
    const std::string text = std::string(kSmall) +
                             "createNode transform -n \"b\" -p \"a\";\n"
                             "parent -s -nc -r -add \"|a\" \"b\" ;\nparent \"|a|b\" \"|a|b\" ;\n"
                             "connectAttr \"a.tx\" \"a.tx\";\nconnectAttr \"b.tx\" \"a.ty\";\n"
                             "connectAttr \"a.ty\" \"b.tx\";\n";
    host.open(text);
    EXPECT_EQ(host.ok("listRelatives -allDescendents a"), "aShape b");
    host.run("getAttr a.ty; getAttr b.worldMatrix; getAttr a.tx");
    host.touchOwnNodes();
    EXPECT_EQ(host.saved(), text);
}

/// Values that no list can have. More about memory is in batchLimitsTest.cpp.
TEST(BrokenScene, HugeAndNegativeIndicesAreKept) {
    for (const std::string statement : {"-s 4000000000 \".vt\"",
                                        "-s -1 \".vt\"",
                                        "-ch 4000000000 \".pt\"",
                                        "\".vt[-1]\" 1 2 3",
                                        "\".vt[2147483648]\" 1 2 3",
                                        "\".pt[0:2147483647]\" 1 2 3",
                                        "\".pt[-1]\" -type \"float3\" 1 2 3",
                                        "\".pt[3:1]\" 1 2 3",
                                        "\".pt[99999999999999999999].px\" 1",
                                        "\".pt[2147483647].px\" 1",
                                        "\".fc[0:2]\" -type \"polyFaces\" f 3 0 1 2",
                                        "\".fc[1]\" -type \"polyFaces\" f -3 0 1 2",
                                        "\".fc[1]\" -type \"polyFaces\" f 3 0 1",
                                        "\".fc[1]\" -type \"polyFaces\" f 3 0 1 -9",
                                        "\".fc[1]\" -type \"polyFaces\" f 99999999999 0",
                                        "\".ed[-1]\" 0 1 0",
                                        "\".ed[3]\" -1 7 0",
                                        "\".x\" -type \"doubleArray\" 4000000000 1",
                                        "\".x\" -type \"pointArray\" 1e15 1",
                                        "\".x\" -type \"stringArray\" 4000000000 \"a\"",
                                        "\".x\" -type \"componentList\" 9 \"vtx[0:4e9]\"",
                                        "\".x\" -type \"componentList\" 1 \"vtx[-5:2147483647]\"",
                                        "\".x\" -type \"matrix\" 1 0"}) {
        std::string text = kSmall;
        text.insert(text.find("connectAttr"), "\tsetAttr " + statement + ";\n");
        SceneHost host;
        host.open(text);
        host.dump();
        host.run("polyEvaluate -vertex aShape; getAttr aShape.x; pointPosition aShape.vtx[0]");
        host.touchOwnNodes();
        EXPECT_EQ(host.saved(), text) << statement;
    }
}

}  // namespace
}  // namespace scenetest
