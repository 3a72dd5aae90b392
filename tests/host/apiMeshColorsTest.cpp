#include <maya/MColorArray.h>
#include <maya/MDGModifier.h>

#include <vector>

#include "apiFixture.h"

using namespace apitest;

namespace {

const MColor kRed(1, 0, 0);
const MColor kUnset(-1, -1, -1, -1);

class MeshColorsTest : public ApiTest {
  protected:
    MeshColorsTest() : mesh(addMesh("box")) {}

    MColorArray colors(const MString* set = nullptr, const MColor* unset = nullptr) {
        MColorArray result;
        mesh.getVertexColors(result, set, unset);
        return result;
    }
    std::string current() { return text(mesh.currentColorSetName()); }

    MFnMesh mesh;
};

TEST_F(MeshColorsTest, WithoutASetThereIsNothingToRead) {
    MColorArray array(3);
    EXPECT_EQ(mesh.numColorSets(), 0);
    EXPECT_EQ(current(), "");
    EXPECT_FALSE(mesh.getVertexColors(array));
    EXPECT_EQ(array.length(), 0U);
    EXPECT_FALSE(mesh.clearColors());
    EXPECT_FALSE(mesh.setCurrentColorSetName("paint"));
    EXPECT_FALSE(mesh.deleteColorSet("paint"));
    EXPECT_FALSE(mesh.displayColors());
    EXPECT_TRUE(mesh.setDisplayColors(true));
    EXPECT_TRUE(mesh.displayColors());
}

TEST_F(MeshColorsTest, TheFirstColoursMakeASet) {
    MColorArray reds(2, kRed);
    const int numbers[] = {6, 2};
    MIntArray vertices(numbers, 2);
    EXPECT_TRUE(mesh.setVertexColors(reds, vertices));
    EXPECT_EQ(current(), "colorSet1");
    MColor blue(0, 0, 1, 0.5F);
    EXPECT_TRUE(mesh.setVertexColor(blue, 0));
    const MColorArray read = colors();
    ASSERT_EQ(read.length(), 8U);
    EXPECT_TRUE(read[6] == kRed && read[2] == kRed && read[0] == blue);
    EXPECT_TRUE(read[1] == kUnset);
    const MColor grey(0.5F, 0.5F, 0.5F);
    EXPECT_TRUE(colors(nullptr, &grey)[1] == grey);
    MIntArray gone(1, 6);
    EXPECT_TRUE(mesh.removeVertexColors(gone));
    EXPECT_TRUE(colors()[6] == kUnset);
    EXPECT_TRUE(mesh.clearColors());
    EXPECT_TRUE(colors()[0] == kUnset);
    EXPECT_EQ(mesh.numColorSets(), 1) << "the emptied set stays";
}

TEST_F(MeshColorsTest, SetsHaveNamesAndColoursOfTheirOwn) {
    EXPECT_EQ(text(mesh.createColorSetWithName("paint")), "paint");
    EXPECT_EQ(text(mesh.createColorSetWithName("paint")), "paint1");
    EXPECT_EQ(current(), "paint");
    MColor red(kRed);
    mesh.setVertexColor(red, 3);
    EXPECT_TRUE(mesh.setCurrentColorSetName("paint1"));
    EXPECT_TRUE(colors()[3] == kUnset);
    const MString paint("paint");
    EXPECT_TRUE(colors(&paint)[3] == kRed);
    MStringArray sets;
    EXPECT_TRUE(mesh.getColorSetNames(sets));
    EXPECT_EQ(texts(sets), (std::vector<std::string>{"paint", "paint1"}));
    MFnMesh copy;
    copy.copy(object("boxShape"));
    EXPECT_EQ(text(copy.currentColorSetName(kMFnMeshInstanceUnspecified)), "paint1");
    MColorArray copied;
    EXPECT_TRUE(copy.getVertexColors(copied, &paint));
    EXPECT_TRUE(copied[3] == kRed);
    EXPECT_TRUE(mesh.deleteColorSet("paint1"));
    EXPECT_EQ(current(), "paint");
}

TEST_F(MeshColorsTest, AModifierTakesAChangeBack) {
    MDGModifier modifier;
    MColorArray reds(1, kRed);
    MIntArray vertices(1, 4);
    EXPECT_TRUE(mesh.setVertexColors(reds, vertices, &modifier));
    EXPECT_TRUE(colors()[4] == kRed);
    EXPECT_TRUE(modifier.doIt());
    EXPECT_TRUE(modifier.undoIt());
    EXPECT_EQ(mesh.numColorSets(), 0);
    EXPECT_TRUE(modifier.doIt());
    EXPECT_TRUE(colors()[4] == kRed);
}

TEST_F(MeshColorsTest, NumbersThatAreNoVertexFail) {
    MColorArray reds(2, kRed);
    MIntArray vertices(1, 0);
    EXPECT_FALSE(mesh.setVertexColors(reds, vertices)) << "one colour for each vertex";
    vertices.append(8);
    EXPECT_FALSE(mesh.setVertexColors(reds, vertices));
    EXPECT_FALSE(mesh.removeVertexColors(vertices));
    MColor red(kRed);
    EXPECT_FALSE(mesh.setVertexColor(red, -1));
    EXPECT_EQ(mesh.numColorSets(), 0);
    EXPECT_FALSE(MFnMesh().setVertexColor(red, 0));
}

}  // namespace
