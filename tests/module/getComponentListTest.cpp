#include <gtest/gtest.h>

#include "fixtures.h"

namespace {

using Strings = std::vector<std::string>;

TEST(GetComponentList, KeepsOrderAndDuplicates) {
    Scene scene;
    addBlendShape(scene);
    const std::string plug = "bs.it[0].itg[0].iti[6000].ict";
    scene.mel("setAttr " + plug + " -type componentList 4 vtx[7] vtx[3] vtx[7] vtx[5:6]");
    EXPECT_EQ(scene.mel("dv_getComponentList -at " + plug), std::vector<int>({7, 3, 7, 5, 6}));
    scene.mel("dv_getComponentList -at " + plug + " -ct 0 -sl base");
    EXPECT_EQ(scene.mel("ls -selection"), (Strings{"base.vtx[3]", "base.vtx[5:7]"}));
}

TEST(GetComponentList, NothingToSelectSelectsNothing) {
    Scene scene;
    addBlendShape(scene);
    for (const char* attribute : {"bs.it[0].itg[1].iti[6000].ict", "bs.ghost"}) {
        scene.mel("select base");
        scene.run(std::string("dv_getComponentList -ct 0 -sl base -at ") + attribute);
        EXPECT_EQ(scene.mel("ls -selection").size(), 0U) << attribute;
    }
}

}  // namespace
