#include <gtest/gtest.h>

#include "fixtures.h"

namespace {

using Ints = std::vector<int>;

TEST(GetBlendShapeIndices, ListsIndicesInUseAscending) {
    Scene scene;
    addBlendShape(scene);
    EXPECT_EQ(scene.mel("dv_getBlendShapeIndices bs"), Ints({0, 4}));
    scene.mel("setAttr bs.weight[2] 0.5");
    EXPECT_EQ(scene.mel("dv_getBlendShapeIndices bs"), Ints({0, 2, 4}));
}

TEST(GetBlendShapeIndices, AnswersEmptyArrayWithoutTargets) {
    Scene scene;
    scene.mel("polyPlane -name base; blendShape -name bs base");
    EXPECT_EQ(scene.mel("dv_getBlendShapeIndices bs"), Ints());
}

TEST(GetBlendShapeIndices, TakesTheSelectionWhenNothingIsNamedAndOnlyItsFirstItem) {
    Scene scene;
    addBlendShape(scene);
    EXPECT_EQ(scene.mel("select -noExpand bs base; dv_getBlendShapeIndices"), Ints({0, 4}));
    const Outcome outcome = scene.run("select baseShape; select -add -noExpand bs; dv_getBlendShapeIndices");
    EXPECT_FALSE(outcome.ok);
    EXPECT_EQ(outcome.errors, std::vector<std::string>{"The node is not a blend shape node."});
}

}  // namespace
