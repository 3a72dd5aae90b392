#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <system_error>

#include "geometry/objFile.h"
#include "geometry/textFile.h"
#include "support/fileWriterTests.h"
#include "support/meshZoo.h"

namespace {

using namespace host::geometry;

ObjResult parsed(std::string_view text) {
    ObjResult result = parseObj(text);
    EXPECT_TRUE(result.ok()) << result.error;
    return result;
}

class ObjOfZoo : public testing::TestWithParam<zoo::NamedMesh> {};

INSTANTIATE_TEST_SUITE_P(Zoo, ObjOfZoo, testing::ValuesIn(zoo::allMeshes()),
                         [](const auto& animal) { return animal.param.name; });

TEST_P(ObjOfZoo, writtenAndReadIsTheSameMesh) {
    const Mesh& mesh = GetParam().mesh;
    const std::string text = writeObj({{"", mesh, {}}});
    const ObjResult read = parsed(text);
    if (mesh.vertexCount() == 0) {
        EXPECT_TRUE(read.objects.empty());
        return;
    }
    ASSERT_EQ(read.objects.size(), 1U);
    EXPECT_EQ(read.objects[0].mesh.points(), mesh.points());
    EXPECT_EQ(read.objects[0].mesh.topology().faceOffsets(), mesh.topology().faceOffsets());
    EXPECT_EQ(read.objects[0].mesh.topology().faceVertices(), mesh.topology().faceVertices());
    EXPECT_EQ(writeObj(read.objects), text);
}

TEST(Obj, allZooMeshesInOneTextKeepNamesVerticesAndFaces) {
    std::vector<ObjObject> objects;
    for (const auto& [name, mesh] : zoo::allMeshes()) {
        if (mesh.vertexCount() > 0) objects.push_back({name, mesh, {}});
    }
    const std::string text = writeObj(objects);
    const ObjResult read = parsed(text);
    ASSERT_EQ(read.objects.size(), objects.size());
    for (std::size_t i = 0; i < objects.size(); ++i) {
        EXPECT_EQ(read.objects[i].name, objects[i].name);
        EXPECT_EQ(read.objects[i].mesh.points(), objects[i].mesh.points());
        EXPECT_EQ(read.objects[i].mesh.topology().faceVertices(), objects[i].mesh.topology().faceVertices());
    }
    EXPECT_EQ(writeObj(read.objects), text);
}

TEST(Obj, everyFloatComesBackAsItWas) {
    using Limits = std::numeric_limits<float>;
    const std::vector<float> points{0.1F,          -0.0F,          1.0F / 3.0F,
                                    Limits::max(), -Limits::min(), Limits::denorm_min(),
                                    1e-7F,         16777217.0F,    123456.789F};
    const ObjResult read = parsed(writeObj({{"", createMesh(points, {}, {}).mesh, {}}}));
    ASSERT_EQ(read.objects.size(), 1U);
    EXPECT_EQ(read.objects[0].mesh.points(), points);
    EXPECT_TRUE(std::signbit(read.objects[0].mesh.points()[1]));
}

TEST(Obj, formsOfCornersNumbersAndLinesThatMeanTheSame) {
    const char* const table[] = {
        "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nf 1 2 3 4\n",
        "v 0 0 0\r\nv 1 0 0\r\nv 1 1 0\r\nv 0 1 0\r\nf 1 2 3 4\r\n",
        "v 0 0 0\rv 1 0 0\rv 1 1 0\rv 0 1 0\rf 1 2 3 4",
        "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nf -4 -3 -2 -1",
        "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nvt 0 0\nf 1/1 2/1 3/1 4/-1",
        "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nvn 0 0 1\nf 1//1 2//1 3//-1 4//1",
        "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nvt 0 0\nvn 0 0 1\nf 1/1/1 2/1/1 3/1/1 4/1/1",
        "# C:\\folder\\\nv 0 0 0\nv 1 0 0 # one\n\tv  1\t1 0 1.0\nv 0 1 0 0.5 0.5 0.5\n\n#f\nf 1 2 3 4 #5\n",
        "\xEF\xBB\xBFv 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nfo 1 2 3 4\n",
        "mtllib a.mtl\nv 0 0 0\nv +1 0. .0e1\nusemtl b\ns off\nv 1e0 1 1e-400\nv 0 1 0\nl 1 2\nf 1 \\\n2 "
        "3\\\r\n 4",
    };
    const ObjResult expected = parsed(table[0]);
    for (const char* text : table) {
        SCOPED_TRACE(text);
        const ObjResult read = parsed(text);
        ASSERT_EQ(read.objects.size(), 1U);
        EXPECT_EQ(read.objects[0].mesh.points(), expected.objects[0].mesh.points());
        EXPECT_EQ(read.objects[0].mesh.topology().faceVertices(), (std::vector<int>{0, 1, 2, 3}));
    }
}

TEST(Obj, oneMeshKeepsEveryVertexInFileOrder) {
    const ObjResult read = parsed("v 9 9 9\nv 1 0 0\nv 0 0 0\nv 1 1 0\nf 4 2 3\nv 5 5 5\n");
    ASSERT_EQ(read.objects.size(), 1U);
    EXPECT_EQ(read.objects[0].name, "");
    EXPECT_EQ(read.objects[0].mesh.points(),
              (std::vector<float>{9, 9, 9, 1, 0, 0, 0, 0, 0, 1, 1, 0, 5, 5, 5}));
    EXPECT_EQ(read.objects[0].mesh.topology().faceVertices(), (std::vector<int>{3, 1, 2}));
}

TEST(Obj, objectsGetTheirOwnVertexListsInFileOrder) {
    const ObjResult read = parsed(
        "v 0 0 0\nv 1 0 0\no first\nv 2 0 0\nv 3 0 0\nf 4 2 1\no empty\no second one \nv 4 0 0\nv 5 0 0\nf 6 "
        "1 4\n"
        "o points\nv 6 0 0\n");
    ASSERT_EQ(read.objects.size(), 3U);
    EXPECT_EQ(read.objects[0].name, "first");
    // Vertex 3 is used by nobody and stands under "first".
    EXPECT_EQ(read.objects[0].mesh.points(), (std::vector<float>{0, 0, 0, 1, 0, 0, 2, 0, 0, 3, 0, 0}));
    EXPECT_EQ(read.objects[0].mesh.topology().faceVertices(), (std::vector<int>{3, 1, 0}));
    EXPECT_EQ(read.objects[1].name, "second one");
    EXPECT_EQ(read.objects[1].mesh.points(), (std::vector<float>{0, 0, 0, 3, 0, 0, 4, 0, 0, 5, 0, 0}));
    EXPECT_EQ(read.objects[1].mesh.topology().faceVertices(), (std::vector<int>{3, 0, 1}));
    EXPECT_EQ(read.objects[2].mesh.vertexCount(), 1);
}

TEST(Obj, groupsOverlapEndAndComeBack) {
    const std::string text =
        "v 0 0 0\nv 1 0 0\nv 1 1 0\nf 1 2 3\ng a b a\nf 1 2 3\nf 1 2 3\ng b\nf 1 2 3\ng default\nf 1 2 3\ng "
        "a\n"
        "f 1 2 3\ng unused\n";
    const ObjResult read = parsed(text);
    const std::vector<ObjGroup>& groups = read.objects[0].groups;
    ASSERT_EQ(groups.size(), 2U);
    EXPECT_EQ(groups[0].name, "a");
    EXPECT_EQ(groups[0].faces(), (std::vector<int>{1, 2, 5}));
    EXPECT_EQ(groups[1].faces(), (std::vector<int>{1, 2, 3}));
    const ObjResult again = parsed(writeObj(read.objects));
    ASSERT_EQ(again.objects[0].groups.size(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(again.objects[0].groups[i].name, groups[i].name);
        EXPECT_EQ(again.objects[0].groups[i].faces(), groups[i].faces());
    }
}

TEST(Obj, groupsOfOneObjectDoNotReachTheNext) {
    const ObjResult read =
        parsed("v 0 0 0\nv 1 0 0\nv 1 1 0\no a\ng g\nf 1 2 3\no b\nf 1 2 3\ng g\nf 1 2 3\n");
    ASSERT_EQ(read.objects.size(), 2U);
    EXPECT_EQ(read.objects[0].groups[0].faces(), (std::vector<int>{0}));
    EXPECT_EQ(read.objects[1].groups[0].faces(), (std::vector<int>{1}));
}

TEST(Obj, namesThatWouldNotReadBackAreReplaced) {
    const std::string text = writeObj({{"a b\n#c\\", zoo::singleFace(), {{"g\th", {{0, 1}}}}}});
    const ObjResult read = parsed(text);
    EXPECT_EQ(read.objects[0].name, "a_b__c_");
    EXPECT_EQ(read.objects[0].groups[0].name, "g_h");
}

TEST(Obj, malformedTextsNameTheirLine) {
    const std::string triangle = "v 0 0 0\nv 1 0 0\nv 1 1 0\n";
    const std::vector<std::pair<std::string, std::string>> table{
        {triangle + "f 1 2 99\n", "line 4: face refers to vertex 99, but only 3 are defined"},
        {triangle + "f 1 2 0", "line 4: face refers to vertex 0, but only 3 are defined"},
        {triangle + "f 1 2 -4", "line 4: face refers to vertex -4, but only 3 are defined"},
        {triangle + "f 1 2 99999999999999999999999",
         "line 4: face refers to vertex 99999999999999999999999, but only "
         "3 are defined"},
        {triangle + "f 1 2 -99999999999999999999",
         "line 4: face refers to vertex -99999999999999999999, but only 3 "
         "are defined"},
        {triangle + "f 1 2 4294967297", "line 4: face refers to vertex 4294967297, but only 3 are defined"},
        {triangle + "f 1/1 2/1 3/1", "line 4: face refers to texture coordinate 1, but only 0 are defined"},
        {triangle + "vt 0 0\nf 1/1/1 2/1/1 3/1/1", "line 5: face refers to normal 1, but only 0 are defined"},
        {triangle + "f 1 2\n", "line 4: a face needs three corners, but has 2"},
        {triangle + "\\\n\nf", "line 6: a face needs three corners, but has 0"},
        {triangle + "f 1 2 2 3", "line 4: face has vertex 2 at two neighbouring corners"},
        {triangle + "f 1 2 3 1", "line 4: face has vertex 1 at two neighbouring corners"},
        {triangle + "f 1 2 x", "line 4: 'x' is not a face corner"},
        {triangle + "f 1 2 3.5", "line 4: '3.5' is not a face corner"},
        {triangle + "f 1 2 3/", "line 4: '3/' is not a face corner"},
        {triangle + "f 1 2 3//", "line 4: '3//' is not a face corner"},
        {triangle + "vt 0\nvn 0 0 1\nf 1 2 3/1/1/1", "line 6: '3/1/1/1' is not a face corner"},
        {triangle + "f 1 2 /3", "line 4: '/3' is not a face corner"},
        {triangle + "f 1 2 3\\", "line 4: '3\\' is not a face corner"},
        {"v 0 0", "line 1: a vertex needs three numbers"},
        {"v 0 0 # 0", "line 1: a vertex needs three numbers"},
        {"v 0 0 nan", "line 1: 'nan' is not a number"},
        {"v 0 -inf 0", "line 1: '-inf' is not a number"},
        {"v 0 +-1 0", "line 1: '+-1' is not a number"},
        {"v 0 1,5 0", "line 1: '1,5' is not a number"},
        {"v 0 0x10 0", "line 1: '0x10' is not a number"},
        {"v 0 1e39 0", "line 1: '1e39' is too large"},
        {"v 0 0 0\n\ncurv 0 1 2", "line 3: 'curv' is not supported"},
        {std::string("v 0 0 0\n\0", 9), std::string("line 2: '\0' is not supported", 28)},
        {triangle + "f 1 2 3#4", "line 4: '3#4' is not a face corner"},
    };
    for (const auto& [text, error] : table) {
        const ObjResult result = parseObj(text);
        EXPECT_EQ(result.error, error);
        EXPECT_TRUE(result.objects.empty());
    }
}

TEST(Obj, everyTruncationIsReadOrRefused) {
    const std::string whole = writeObj({{"a", zoo::cube(), {{"g", {{1, 3}}}}}, {"b", zoo::fan(), {}}});
    int refused = 0;
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        const ObjResult result = parseObj(std::string_view(whole).substr(0, length));
        refused += !result.ok();
        EXPECT_LE(result.objects.size(), 2U);
    }
    EXPECT_GT(refused, 0);
    EXPECT_LT(refused, static_cast<int>(whole.size()));
}

/// Groups that overlap everywhere are where memory could become quadratic in the text.
TEST(Obj, manyGroupNamesOnManyFacesStayLinear) {
    std::string text = "v 0 0 0\nv 1 0 0\nv 1 1 0\ng";
    for (int i = 0; i < 50000; ++i)
        text += " n" + std::to_string(i);
    text += '\n';
    for (int i = 0; i < 50000; ++i)
        text += "f 1 2 3\n";
    const ObjResult read = parsed(text);
    ASSERT_EQ(read.objects[0].groups.size(), 50000U);
    EXPECT_EQ(read.objects[0].groups[49999].runs.size(), 1U);
    EXPECT_EQ(read.objects[0].groups[49999].runs[0].count, 50000);
}

bool writes(const std::string& path, const std::string& text) {
    return writeTextFile(path, text).empty();
}

INSTANTIATE_TEST_SUITE_P(TextFile, FileWriter, testing::Values(&writes));
#if defined(__linux__)
INSTANTIATE_TEST_SUITE_P(TextFile, FileWriterWithoutRights, testing::Values(&writes));
#endif

TEST(TextFile, bytesComeBackAndFailuresAreNamed) {
    const std::string path = testing::TempDir() + "delvenGeometryTextFile.obj";
    const std::string bytes("a\r\n\0\xFFz", 6);
    ASSERT_EQ(writeTextFile(path, bytes), "");
    EXPECT_EQ(readTextFile(path).text, bytes);
    ASSERT_EQ(writeTextFile(path, "v 1 2 x"), "");
    EXPECT_EQ(readObjFile(path).error, path + ", line 1: 'x' is not a number");
    std::remove(path.c_str());

    const FileText missing = readTextFile(path);
    EXPECT_FALSE(missing.ok());
    EXPECT_NE(missing.error.find(path), std::string::npos);
    EXPECT_EQ(readObjFile(path).error, missing.error);
    EXPECT_FALSE(readTextFile(testing::TempDir()).ok());
    const std::string nowhere = testing::TempDir() + "no/such/folder/x.obj";
    const std::string reason = std::make_error_code(std::errc::no_such_file_or_directory).message();
    EXPECT_EQ(writeTextFile(nowhere, "x"), "cannot write '" + nowhere + "': " + reason);
}

TEST(TextFile, aFileOfAnySizeIsReadToItsEnd) {
    const std::string path = testing::TempDir() + "delvenGeometrySizes.txt";
    for (const int size : {0, 1, 262143, 262144, 262145, 524287, 524288, 524289, 1000003}) {
        std::string bytes;
        for (int k = 0; k < size; ++k)
            bytes += static_cast<char>(k % 251);
        ASSERT_EQ(writeTextFile(path, bytes), "");
        EXPECT_TRUE(readTextFile(path).text == bytes) << size;
    }
    std::remove(path.c_str());
}

#if defined(__linux__)
TEST(TextFile, aFileThatTheSystemNamesNoSizeForIsReadToItsEnd) {
    EXPECT_NE(readTextFile("/proc/self/status").text.find("VmRSS"), std::string::npos);
}
#endif

}  // namespace
