#include "regions/regionFile.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <locale>
#include <sstream>

namespace {

std::string written(RegionFile& file, FileForm form) {
    RegionArrays map;
    map.vertexCount = file.vertexCount();
    for (std::size_t region = 0; region < kRegionCount; ++region)
        map.regions[region] = file.weights[region].data();
    std::string text;
    writeRegionFile(file.settings, map, form, [&](std::string_view piece) { text += piece; });
    return text;
}

/// Settings and weights in one line.
std::string shown(const RegionFile& file) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::fixed << std::setprecision(3) << file.settings << '|';
    for (std::size_t vertex = 0; vertex < file.vertexCount(); ++vertex) {
        for (const std::vector<double>& weights : file.weights)
            text << ' ' << weights.at(vertex);
        text << ';';
    }
    if (file.malformedLine > 0) text << " line " << file.malformedLine;
    return text.str();
}

TEST(RegionFile, IsLaidOutByteForByte) {
    RegionFile file{"brow,lip", {{{1.0 / 3.0, 0}, {0, 1}, {0, 0}, {0, 1.23e-7}, {0.5, 0}, {0, 0.25}}}};
    EXPECT_EQ(written(file, FileForm::kJson),
              "{\n\t\"settings\": \"brow,lip\",\n"
              "\t\"0\": [\n\t\t0.333333,\n\t\t0,\n\t\t0,\n\t\t0,\n\t\t0.5,\n\t\t0\n\t],\n"
              "\t\"1\": [\n\t\t0,\n\t\t1,\n\t\t0,\n\t\t1.23e-07,\n\t\t0,\n\t\t0.25\n\t]\n}");
    EXPECT_EQ(written(file, FileForm::kPlain), "brow,lip\n0 0.333333 0 0 0 0.5 0\n1 0 1 0 1.23e-07 0 0.25");
    RegionFile empty;
    EXPECT_EQ(written(empty, FileForm::kJson), "{\n\t\"settings\": \"\",\n}");
    EXPECT_EQ(written(empty, FileForm::kPlain), "\n");
}

TEST(RegionFile, ComesBackFromBothLayouts) {
    RegionFile file;
    file.settings = "brow:1[x],{lip}";
    // More than is written in one piece.
    for (int vertex = 0; vertex < 5000; ++vertex) {
        for (std::size_t region = 0; region < kRegionCount; ++region)
            file.weights[region].push_back((vertex % 32) / 32.0 + static_cast<double>(region));
    }
    for (const FileForm form : {FileForm::kJson, FileForm::kPlain}) {
        const RegionFile read = parseRegionFile(written(file, form), form);
        EXPECT_EQ(read.settings, file.settings);
        EXPECT_TRUE(read.weights == file.weights);
    }
}

TEST(RegionFile, FaultsGiveWhatCanBeRead) {
    const struct {
        FileForm form;
        const char* text;
        const char* shown;
    } rows[] = {
        {FileForm::kJson, "", "|"},
        {FileForm::kJson, "{\"settings\": \"a b\" lost\n\"0\": [1,2,3,4,5,6]",
         "ab| 1.000 2.000 3.000 4.000 5.000 6.000;"},
        {FileForm::kJson, "{\"0\":[1, 2 ,\r\n3,4,x,]}", "| 1.000 2.000 3.000 4.000 0.000 0.000;"},
        {FileForm::kJson, "{\"settings\": a,\n\"0\": [1,2,3,4,5],\"1\": [1,2,3,4,5,6,7],\"2\": [1,2,3,4,5,6",
         "a,|"},
        {FileForm::kJson, "\"settings\": {\n\"x:[\": 1", "|"},
        {FileForm::kJson, "{\n\"settings\": \"a\nb \"c\" [1]: d\",\n\"0\": [1,2,3,4,5,6]",
         "a| 1.000 2.000 3.000 4.000 5.000 6.000;"},
        {FileForm::kJson, "\"0\": 0.5,\n\"1\": 0.25", "0.5,|"},
        {FileForm::kPlain, "", "|"},
        {FileForm::kPlain, "a \"b\"\r\n0 1 2 3 4 5 6\r\n\n", "a \"b\"| 1.000 2.000 3.000 4.000 5.000 6.000;"},
        {FileForm::kJson,
         "\xEF\xBB\xBF{\"settings\": \"a\",\n\"0\": [1,2,3,4,5,6],\"1\": [1,2,3,4,5,1e39],\"2\": "
         "[1e999,2,3,4,5,6]}",
         "a| 1.000 2.000 3.000 4.000 5.000 6.000;"},
        {FileForm::kPlain,
         "\xEF\xBB\xBF\xEF\xBB\xBF"
         "a\n\n \t\n  0  1 2 3 4 5 6 \n\n",
         "a| 1.000 2.000 3.000 4.000 5.000 6.000;"},
        {FileForm::kPlain, "a\n0 1 2 3 4 5 6\n1 1 2 3 4 5\n2 1 2 3 4 5 6\nx",
         "a| 1.000 2.000 3.000 4.000 5.000 6.000; 1.000 2.000 3.000 4.000 5.000 6.000; line 3"},
        {FileForm::kPlain, "a\n0 1 2 3 4 5 \n1 1 2 3 4 5 6",
         "a| 1.000 2.000 3.000 4.000 5.000 6.000; line 2"},
        {FileForm::kPlain, "a\n0 1 2 3 4 5 6 7", "a| line 2"},
        {FileForm::kPlain, "a\n0 1 2 3 4 5 6,", "a| line 2"},
        {FileForm::kPlain, "a\nx 1 2 3 4 5 6", "a| line 2"},
        {FileForm::kPlain, "a\n-1 1 2 3 4 5 6", "a| line 2"},
        {FileForm::kPlain, "a\n2147483648 1 2 3 4 5 6", "a| line 2"},
        {FileForm::kPlain, "a\n0.5 1 2 3 4 5", "a| line 2"},
        {FileForm::kPlain, "a\n0 1 2 3-4 5 6", "a| line 2"},
        {FileForm::kPlain, "a\n0 1 2 nan 4 5 6", "a| line 2"},
        {FileForm::kPlain, "a\n0 1 2 3 4 5 1e39", "a| line 2"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(shown(parseRegionFile(row.text, row.form)), row.shown) << row.text;
}

}  // namespace
