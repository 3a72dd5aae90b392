// Random sequences of calls: undoing all of them gives the scene before the first, redoing all the scene
// after the last.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "regionFixture.h"
#include "scratchFiles.h"

namespace {

class Random {
  public:
    explicit Random(unsigned int seed) : engine_(seed) {}

    int below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned int>(limit)); }
    std::string anyOf(const std::vector<std::string>& texts) {
        return texts[static_cast<std::size_t>(below(static_cast<int>(texts.size())))];
    }
    std::string target() { return anyOf({"0", "4", "6"}); }
    std::string item() { return anyOf({"6000", "6000", "5500", "5300"}); }
    std::string vertex() { return std::to_string(below(20)); }

  private:
    std::mt19937 engine_;
};

/// How far a step can be taken back. What undo leaves behind may change what the redo of an earlier step
/// finds, so that only a redo right after the undo is sure to give the same scene.
enum class Undo { kExact, kLeavesSomething, kRedoDiffers };

/// A kind of call, and how far it can be taken back.
struct Step {
    const char* name;
    std::string (*text)(Random&);
    Undo undo;
    const char* reason;  // why it is not exact
};

constexpr const char* kOriginal = "-om |base|baseShapeOrig ";

/// Runs `use` on one of the meshes that earlier calls made, if there is one, as $mesh and $shape.
std::string withMade(Random& random, const std::string& use) {
    return "string $made[] = eval(\"ls -type transform \\\"*_*00*\\\"\"); if (size($made) > 0) { string "
           "$mesh = $made[" +
           std::to_string(random.below(7)) +
           " % size($made)]; string $shapes[] = eval(\"listRelatives -shapes -fullPath \" + $mesh); string "
           "$shape = "
           "$shapes[0]; " +
           use + "; }";
}

const std::vector<Step>& steps() {
    static const std::vector<Step> all{
        {"select",
         [](Random& r) { return "select base.vtx[" + r.vertex() + "] base.vtx[" + r.vertex() + "]"; },
         Undo::kExact, ""},
        {"selectNothing", [](Random&) { return std::string("select -clear"); }, Undo::kExact, ""},
        {"moveSculpt",
         [](Random& r) {
             return "move -r 0.1 " + std::to_string(r.below(4)) + " 0.2 sculpt.vtx[" + r.vertex() + "]";
         },
         Undo::kExact, ""},
        {"extract",
         [](Random& r) {
             return std::string("dv_blendShapeExtractTarget ") + kOriginal + "-i " + r.target() + " -ti " +
                    r.item() + " bs";
         },
         Undo::kExact, ""},
        {"moveExtracted",
         [](Random& r) { return withMade(r, "move -r 0 0.5 0 ($mesh + \".vtx[" + r.vertex() + "]\")"); },
         Undo::kExact, ""},
        {"renameExtracted", [](Random& r) { return withMade(r, "rename $mesh shape_100"); }, Undo::kExact,
         ""},
        {"deleteExtracted", [](Random& r) { return withMade(r, "delete $mesh"); }, Undo::kExact, ""},
        {"replaceByExtracted",
         [](Random& r) {
             return withMade(r, std::string("eval(\"dv_blendShapeReplaceTarget ") + kOriginal + "-i " +
                                    r.target() + " -ti " + r.item() + " -m \" + $shape + \" bs\")");
         },
         Undo::kExact, ""},
        {"replace",
         [](Random& r) {
             return std::string("dv_blendShapeReplaceTarget -m sculptShape ") + kOriginal + "-i " +
                    r.target() + " -ti " + r.item() + " bs";
         },
         Undo::kExact, ""},
        {"corrective",
         [](Random&) {
             return std::string("dv_sculptExtractDeltaMesh -m |base|baseShape ") + kOriginal + "sculptShape";
         },
         Undo::kExact, ""},
        {"removeDeltas",
         [](Random& r) { return "dv_blendShapeRemoveDeltas -i " + r.target() + " -ti " + r.item() + " bs"; },
         Undo::kExact, ""},
        {"moveInBetween",
         [](Random& r) {
             const std::string to = std::to_string(5100 + r.below(100));
             return "dv_blendShapeSetInbetweenPosition -i 4 -sp " + r.item() + " -tp " + to + " bs";
         },
         Undo::kExact, ""},
        {"mirrorInPlace",
         [](Random& r) {
             const std::string target = r.target();
             return std::string("dv_blendShapeMirrorTarget ") + kOriginal + "-si " + target + " -ti " +
                    target + " -dir " + r.anyOf({"0", "1"}) + " -tit " + r.item() +
                    r.anyOf({" ", " -ob \"\" "}) + "bs";
         },
         Undo::kExact, ""},
        {"mirrorToAnother",
         [](Random& r) {
             return std::string("dv_blendShapeMirrorTarget -t 2 ") + kOriginal + "-si 0 -ti " +
                    r.anyOf({"4", "6"}) + " -tit " + r.item() + " bs";
         },
         Undo::kExact, ""},
        {"mirrorToANew",
         [](Random& r) {
             const std::string index = std::to_string(10 + r.below(4));
             return std::string("dv_blendShapeMirrorTarget -t 1 -m base -tn copied ") + kOriginal +
                    "-si 4 -ti " + index + " bs";
         },
         Undo::kExact, ""},
        {"setWeights",
         [](Random& r) {
             return "dv_blendShapeEditWeights -sw -wi " + r.vertex() + " -w 0.25 -wi 7 -w 0.5 -i " +
                    r.target() + " bs";
         },
         Undo::kExact, ""},
        {"editWeights",
         [](Random& r) {
             return std::string("dv_blendShapeEditWeights ") + kOriginal +
                    r.anyOf({"-iv", "-m", "-t", "-fl 0.5", "-del"}) + " -i " + r.anyOf({"0", "4", "-1"}) +
                    " bs";
         },
         Undo::kExact, ""},
        {"applyMap", [](Random&) { return std::string("dv_polySymmetry -aom base sculpt"); }, Undo::kExact,
         ""},

        {"combineWeights",
         [](Random& r) {
             return std::string("dv_blendShapeEditWeights ") + kOriginal +
                    r.anyOf({"-aw", "-sub", "-im", "-flp"}) + " -fn \"" + scratchFile("undo.json") +
                    "\" -i " + r.target() + " bs";
         },
         Undo::kLeavesSomething, "flipping, adding, subtracting and importing weights are not undone"},
        {"split",
         [](Random& r) {
             return std::string("dv_blendShapeSplitTarget -iv 1 -b 0.5 ") + kOriginal + "-i " +
                    r.anyOf({"0", "4"}) + " bs";
         },
         Undo::kLeavesSomething, "painted weights stay"},
        {"applyMap", [](Random&) { return std::string("dv_polySymmetry -aom |base|baseShapeOrig sculpt"); },
         Undo::kLeavesSomething, "setting points makes the tweaks of a mesh a part of them"},
        {"mirrorOntoAnotherInPlace",
         [](Random& r) {
             return std::string("dv_blendShapeMirrorTarget ") + kOriginal + "-si 0 -ti 6 -dir " +
                    r.anyOf({"0", "1"}) + " bs";
         },
         Undo::kLeavesSomething, "undo writes the source deltas to the other target"},
        {"flip", [](Random&) { return std::string("dv_blendShapeMirrorTarget -f 1 ") + kOriginal + "bs"; },
         Undo::kRedoDiffers, "each redo turns the direction round"},
        {"moveOntoAnother",
         [](Random&) { return std::string("dv_blendShapeSetInbetweenPosition -i 4 -sp 5500 bs"); },
         Undo::kLeavesSomething, "what the new position held is not restored"},
        {"freeze", [](Random&) { return std::string("dv_blendShapeEditWeights -f -i 4 bs"); },
         Undo::kLeavesSomething, "undo restores the deltas of one item, not those of the other in-betweens"},
        {"regions",
         [](Random& r) {
             return "dv_editRegionMap " + r.anyOf({"-atm", "-ap", "-e", "-cl"}) +
                    " -i 2 -m |base|baseShape map";
         },
         Undo::kRedoDiffers, "undo of the region map does nothing"},
    };
    return all;
}

class UndoOfSequences : public ::testing::TestWithParam<int> {
  protected:
    UndoOfSequences() {
        addBlendShape(scene_);
        writeScratchFile("undo.json", "{\n\t\"3\": 0.5,\n\t\"12\": 0.25\n}");
        scene_.mel("setAttr bs.w[6] 0; duplicate -name sculpt base; delete sculpt|baseShapeOrig;");
        scene_.mel(
            "move -r 0 1 0 sculpt.vtx[6]; setAttr bs.w[0] 0.5; dv_polyMapVertexOrder |base|baseShapeOrig");
        scene_.mel("setAttr bs.it[0].itg[4].iti[6000].ict -type componentList 3 vtx[5] vtx[6] vtx[19]");
        scene_.mel("setAttr bs.it[0].itg[6].iti[6000].ict -type componentList 1 vtx[9]");
        scene_.mel("setAttr bs.it[0].itg[6].iti[6000].ipt -type pointArray 1 0 1 1 1");
        scene_.mel("setAttr bs.it[0].itg[4].tw[5] 0.5; setAttr bs.it[0].bw[2] 0.5");
        scene_.mel(regionNodeScript() + "flushUndo");
    }

    /// Runs a sequence of steps that are at most as inexact as `worst`.
    void runSteps(Undo worst) {
        Random random(static_cast<unsigned int>(GetParam()));
        for (int count = 0; count < 25;) {
            const Step& step =
                steps()[static_cast<std::size_t>(random.below(static_cast<int>(steps().size())))];
            if (step.undo > worst) continue;
            ++count;
            const std::string text = step.text(random);
            scene_.run(text);
            trace_ += text + '\n';
            // One step back and forth between the others.
            if (random.below(3) == 0) goBackAndForth(step);
            // A later step that changes nothing is not on the queue, and this one would be taken back in its
            // place.
            if (step.undo == Undo::kRedoDiffers) scene_.run("flushUndo");
        }
    }

    void goBackAndForth(const Step& step) {
        const std::string after = scene_.dump();
        if (scene_.run("undo").warnings.empty()) scene_.run("redo");
        trace_ += "undo; redo\n";
        if (step.undo != Undo::kRedoDiffers) {
            EXPECT_EQ(scene_.changes(after), "") << trace_;
        }
    }

    void repeat(const std::string& word) {
        for (int k = 0; k < 1000; ++k) {
            if (!scene_.run(word).warnings.empty()) return;
        }
        FAIL() << "no end of " << word;
    }

    Scene scene_;
    std::string trace_;
};

TEST_P(UndoOfSequences, GivesTheSceneBeforeAndRedoTheSceneAfter) {
    const std::string before = scene_.dump();
    runSteps(Undo::kExact);
    const std::string after = scene_.dump();
    repeat("undo");
    EXPECT_EQ(scene_.changes(before), "") << trace_;
    repeat("redo");
    EXPECT_EQ(scene_.changes(after), "") << trace_;
}

TEST_P(UndoOfSequences, FollowedByRedoGivesTheSceneAfterWhereSomethingStays) {
    runSteps(Undo::kRedoDiffers);
}

TEST(UndoTable, EveryExceptionHasAReason) {
    for (const Step& step : steps())
        EXPECT_EQ(std::string(step.reason).empty(), step.undo == Undo::kExact) << step.name;
}

INSTANTIATE_TEST_SUITE_P(Random, UndoOfSequences, ::testing::Range(1, 41));

}  // namespace
