// Import and export of twenty sculpted targets, where their folder is at hand.

#include <cmath>

#include "makeHumanFixture.h"
#include "scratchFiles.h"

namespace {

using MakeHumanData = MakeHuman;

constexpr int kTargets = 20;

/// The export of all targets, with their aliases as names.
std::string exportAll(Scene& scene, const std::string& node, const std::string& file) {
    const std::string path = scratchFile(file);
    std::string command = "dv_blendShapeExportData -d -fn \"" + path + "\"";
    for (int target = 0; target < kTargets; ++target) {
        const std::string index = std::to_string(target);
        command +=
            " -i " + index + " -cn " + scene.mel("aliasAttr -query " + node + ".w[" + index + "]").toString();
    }
    EXPECT_EQ(scene.mel(command + " " + node).toInt(), 1);
    return path;
}

TEST_F(MakeHumanData, TargetsSurviveTheWayThroughAFile) {
    const std::string file = path("face-targets.json");
    import("base.obj", "base");
    import("eye-left-closure.obj", "eye");
    scene_.mel("duplicate -name copy base; blendShape -name face base; blendShape -name again copy");
    EXPECT_EQ(scene_.mel("size(`dv_blendShapeImportData -ld -fn \"" + file + "\"`)").toInt(), kTargets);
    EXPECT_EQ(scene_.mel("dv_blendShapeImportData -d -fn \"" + file + "\" face").toInt(), 1);

    const std::string exported = exportAll(scene_, "face", "face.json");
    EXPECT_EQ(fileBytes(exported), fileBytes(file)) << "it has three decimals and legal names";
    EXPECT_EQ(scene_.mel("dv_blendShapeImportData -d -fn \"" + exported + "\" again").toInt(), 1);
    EXPECT_EQ(fileBytes(exportAll(scene_, "again", "again.json")), fileBytes(exported));

    const std::vector<double> neutral = scene_.points("base");
    for (int target = 0; target < kTargets; ++target) {
        const std::string plug = ".w[" + std::to_string(target) + "]";
        scene_.mel("setAttr face" + plug + " 1; setAttr again" + plug + " 1");
        const std::vector<double> shape = scene_.points("base");
        EXPECT_NE(shape, neutral) << "target " << target;
        EXPECT_EQ(scene_.points("copy"), shape) << "target " << target;
        if (target == 0) {
            const std::vector<double> sculpted = scene_.points("eye");
            for (std::size_t k = 0; k < sculpted.size(); ++k)
                ASSERT_NEAR(shape[k], sculpted[k], 1e-3) << "coordinate " << k;
        }
        scene_.mel("setAttr face" + plug + " 0; setAttr again" + plug + " 0");
    }
}

}  // namespace
