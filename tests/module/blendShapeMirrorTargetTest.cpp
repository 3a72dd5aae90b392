#include <gtest/gtest.h>

#include <ostream>

#include "fixtures.h"

namespace {

using Strings = std::vector<std::string>;

/// The grid of addBlendShape has its plane x = 0 in the middle column: 1 and 3 are partners, and 5 and 9, and
/// 15 and 19; 2, 7, 12 and 17 lie on the plane.
class MirrorTarget : public ::testing::Test {
  protected:
    MirrorTarget() { addBlendShape(scene_); }

    Outcome call(const std::string& arguments) {
        return scene_.run("dv_blendShapeMirrorTarget -om |base|baseShapeOrig " + arguments + " bs");
    }

    /// A call that succeeds without a message.
    void mirror(const std::string& arguments) {
        EXPECT_EQ(
            scene_.mel("dv_blendShapeMirrorTarget -om |base|baseShapeOrig " + arguments + " bs").toInt(), 1);
    }

    void setDeltas(int target, const std::string& vertices, const std::string& points) {
        const std::string item = "bs.it[0].itg[" + std::to_string(target) + "].iti[6000].";
        scene_.mel("setAttr " + item + "ict -type componentList " + vertices);
        scene_.mel("setAttr " + item + "ipt -type pointArray " + points);
    }

    void setMap(const std::string& shape, const std::string& entries) {
        scene_.mel("addAttr -ln dvVertexOrderMap -sn dvvom -h 1 -dt Int32Array " + shape);
        scene_.mel("setAttr -type Int32Array " + shape + ".dvVertexOrderMap " + entries);
    }

    Scene scene_;
};

struct Mirrored {
    const char* name;
    const char* arguments;
    const char* deltas;  // of target 2, mirrored from one with vertices on both sides and on the plane
};

void PrintTo(const Mirrored& mirrored, std::ostream* out) {
    *out << mirrored.name;
}

class MirrorTargetTo : public MirrorTarget, public ::testing::WithParamInterface<Mirrored> {};

TEST_P(MirrorTargetTo, GivesTheDeltas) {
    // 3 is on the positive side, 7 on the plane, 5 and 15 on the negative side.
    setDeltas(2, "4 vtx[3] vtx[7] vtx[5] vtx[15]", "4 1 2 3 1 4 5 6 1 7 8 9 1 10 11 12 1");
    mirror("-si 2 " + std::string(GetParam().arguments));
    EXPECT_EQ(deltas(scene_, 2, 6000), GetParam().deltas);
}

INSTANTIATE_TEST_SUITE_P(
    Modes, MirrorTargetTo,
    ::testing::Values(
        Mirrored{"PositiveToNegative", "-ti 2", "1 -1 2 3\n7 0 5 6\n3 1 2 3\n"},
        Mirrored{"NegativeToPositive", "-ti 2 -dir 0",
                 "7 0 5 6\n9 -7 8 9\n19 -10 11 12\n5 7 8 9\n15 10 11 12\n"},
        // A vertex keeps its own delta where none comes to it, but only on the source side: which is the
        // negative one, since a flip turns the direction.
        Mirrored{"Flip", "-ti 2 -f 1", "1 -1 2 3\n7 0 5 6\n9 -7 8 9\n19 -10 11 12\n5 7 8 9\n15 10 11 12\n"},
        Mirrored{"FlipTheOtherWay", "-ti 2 -f 1 -dir 0",
                 "1 -1 2 3\n7 0 5 6\n9 -7 8 9\n19 -10 11 12\n3 1 2 3\n"},
        // Another target takes both sides, and what lies on the plane as it is.
        Mirrored{"ToATarget", "-t 2 -ti 2", "1 -1 2 3\n7 -4 5 6\n9 -7 8 9\n19 -10 11 12\n"},
        Mirrored{"SkippedComponents", "-ti 2 -sc \"base.vtx[3] base.vtx[7:8]\"", ""},
        Mirrored{"SkippedSource", "-ti 2 -dir 0 -sc \"base.vtx[15]\"", "7 0 5 6\n9 -7 8 9\n5 7 8 9\n"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(MirrorTarget, TakesAnyAxis) {
    // Vertex 3 is in the first row, which has the greatest z; 18 is opposite to it.
    setDeltas(2, "1 vtx[3]", "1 1 2 3 1");
    mirror("-si 2 -ti 2 -ax z");
    EXPECT_EQ(deltas(scene_, 2, 6000), "18 1 2 -3\n3 1 2 3\n");
    // The whole grid lies on the plane y = 0.
    setDeltas(2, "1 vtx[3]", "1 1 2 3 1");
    mirror("-si 2 -ti 2 -ax y");
    EXPECT_EQ(deltas(scene_, 2, 6000), "3 1 0 3\n");
}

TEST_F(MirrorTarget, RepeatedVerticesStayRepeatedOnTheOtherSide) {
    setDeltas(2, "3 vtx[3] vtx[1] vtx[3]", "3 1 0 0 1 2 0 0 1 3 0 0 1");
    mirror("-si 2 -ti 2");
    EXPECT_EQ(deltas(scene_, 2, 6000), "1 -1 0 0\n1 -3 0 0\n3 1 0 0\n");
    // Each mention in the list of skipped components removes one entry, the last first.
    setDeltas(2, "3 vtx[3] vtx[1] vtx[3]", "3 1 0 0 1 2 0 0 1 3 0 0 1");
    mirror("-si 2 -ti 2 -sc \"base.vtx[3]\"");
    EXPECT_EQ(deltas(scene_, 2, 6000), "1 -1 0 0\n3 1 0 0\n");
}

TEST_F(MirrorTarget, ANewTargetGetsNameWeightAndMirroredDeltas) {
    mirror("-t 1 -ti 1 -tn right -m base");
    EXPECT_EQ(scene_.mel("aliasAttr -q bs.weight[1]").toString(), "right");
    EXPECT_EQ(scene_.mel("objExists right").toInt(), 0) << "the mesh that it was made from is gone";
    EXPECT_EQ(deltas(scene_, 1, 6000), "1 0 1 0\n7 -0.5 0 0\n12 0 0 -2\n");
    scene_.mel("setAttr bs.right 1");
    EXPECT_EQ(scene_.mel("pointPosition -local base.vtx[7]").toFloatArray()[0], -0.5);
}

TEST_F(MirrorTarget, UndoAndRedoOfANewTargetLeaveNothingBehind) {
    const std::string before = scene_.dump();
    mirror("-t 1 -ti 1 -tn right -m base");
    const std::string after = scene_.dump();
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(scene_.run("undo").errors, Strings());
        EXPECT_EQ(scene_.changes(before), "");
        EXPECT_EQ(scene_.run("redo").errors, Strings());
        EXPECT_EQ(scene_.changes(after), "");
    }
}

TEST_F(MirrorTarget, AnInBetweenGoesToTheTargetThatIsThere) {
    const std::string before = scene_.dump();
    mirror("-t 1 -si 4 -ti 0 -tit 5500 -ib 1 -tn half -m base -dir 0");
    EXPECT_EQ(deltas(scene_, 0, 5500), "9 0 0.25 0\n");
    EXPECT_EQ(scene_.mel("aliasAttr -q bs.weight[0]").toString(), "smile");
    scene_.mel("undo");
    EXPECT_EQ(deltas(scene_, 0, 5500), "");
    // What the host remembers of an in-between beside its deltas is left.
    scene_.mel("removeMultiInstance -b 1 bs.inbetweenInfoGroup[0]");
    EXPECT_EQ(scene_.changes(before), "");
}

TEST_F(MirrorTarget, ATakenNameIsReplacedByTheOneThatTheHostGives) {
    scene_.mel("group -empty -name right");
    mirror("-t 1 -ti 1 -tn right -m base");
    EXPECT_EQ(scene_.mel("aliasAttr -q bs.weight[1]").toString(), "right1");
}

TEST_F(MirrorTarget, EachRedoOfAFlipTurnsTheDirection) {
    setDeltas(2, "2 vtx[3] vtx[5]", "2 1 2 3 1 7 8 9 1");
    scene_.mel("flushUndo");
    mirror("-si 2 -ti 2 -f 1");
    const std::string negative = "1 -1 2 3\n9 -7 8 9\n5 7 8 9\n";
    const std::string positive = "1 -1 2 3\n9 -7 8 9\n3 1 2 3\n";
    EXPECT_EQ(deltas(scene_, 2, 6000), negative);
    scene_.mel("undo; redo");
    EXPECT_EQ(deltas(scene_, 2, 6000), positive);
    scene_.mel("undo; redo");
    EXPECT_EQ(deltas(scene_, 2, 6000), negative);
}

TEST_F(MirrorTarget, UndoInPlaceForgetsWhatWasSkipped) {
    scene_.mel("flushUndo");
    mirror("-sc \"base.vtx[7]\"");
    EXPECT_EQ(deltas(scene_, 0, 6000), "1 0 1 0\n12 0 0 -2\n3 0 1 0\n");
    scene_.mel("undo");
    EXPECT_EQ(deltas(scene_, 0, 6000), "3 0 1 0\n12 0 0 -2\n");
}

TEST_F(MirrorTarget, AFailureForgetsNothing) {
    scene_.mel("flushUndo");
    const std::string before = scene_.dump();
    EXPECT_EQ(call("-tol -1 -sc \"base.vtx[7]\"").value.toInt(), 0);
    scene_.mel("undo");
    EXPECT_EQ(scene_.changes(before), "");
}

TEST_F(MirrorTarget, TheMapDecidesAndTellsWhatItSkips) {
    // 3 goes to 0, 7 has no partner, and 12's does not exist.
    setMap("baseShapeOrig", "20 0 1 2 0 4 5 6 -1 8 9 10 11 20 13 14 15 16 17 18 19");
    const Outcome outcome = call("-ob \"\" -sc \"base.vtx[3]\"");
    EXPECT_EQ(outcome.value.toInt(), 1);
    EXPECT_EQ(outcome.infos, Strings{"Skipped 2 asymmetrical components."});
    EXPECT_EQ(deltas(scene_, 0, 6000), "0 0 1 0\n3 0 1 0\n7 0.5 0 0\n12 0 0 -2\n")
        << "the list of skipped components is for positions";
}

TEST_F(MirrorTarget, AnotherMeshMayCarryTheMap) {
    scene_.mel("duplicate -name other base");
    setMap("otherShape", "20 4 3 2 1 0 9 8 7 6 5 14 13 12 11 10 19 18 17 16 15");
    mirror("-ob other");
    EXPECT_EQ(deltas(scene_, 0, 6000), "1 0 1 0\n7 0 0 0\n12 0 0 -2\n3 0 1 0\n");
}

TEST_F(MirrorTarget, TweaksFollowOnAThirdMeshAndAreUndone) {
    scene_.mel("duplicate -name other base; duplicate -name tweaked base; setAttr tweaked.pnts[1] 5 6 7");
    setMap("otherShape", "20 4 3 2 1 0 9 8 7 6 5 14 13 12 11 10 19 18 17 16 15");
    scene_.mel("flushUndo");
    const auto tweak = [&](int vertex) {
        return scene_.mel("getAttr tweakedShape.pnts[" + std::to_string(vertex) + "]").toFloatArray();
    };
    mirror("-ob other -tm tweaked");
    EXPECT_EQ(tweak(1), (std::vector<double>{0, 1, 0}));
    EXPECT_EQ(tweak(12), (std::vector<double>{0, 0, -2}));
    scene_.mel("undo");
    EXPECT_EQ(tweak(1), (std::vector<double>{5, 6, 7}));
    EXPECT_EQ(tweak(12), (std::vector<double>{0, 0, 0}));
    EXPECT_EQ(deltas(scene_, 0, 6000), "3 0 1 0\n7 0.5 0 0\n12 0 0 -2\n");
    // Without a mesh of its own for the map the tweak mesh takes that place, and gets no tweaks.
    mirror("-tm tweaked");
    EXPECT_EQ(tweak(1), (std::vector<double>{5, 6, 7}));
}

/// The tolerance is divided by the scale where positions are compared, and taken as it is beside the plane.
TEST_F(MirrorTarget, ScaleNarrowsTheMatchOnly) {
    // 1 lies 0.0005 off the mirror image of 3; 7 lies 0.00005 off the plane.
    scene_.mel(
        "setAttr baseShapeOrig.pnts[1].pntx 0.0005; setAttr baseShapeOrig.pnts[7].pntx 0.00005; setAttr "
        "bs.w[2] 0");
    mirror("-t 2 -ti 2");
    scene_.mel("setAttr base.scale 100 100 100; flushUndo");
    const std::string before = scene_.dump();
    EXPECT_EQ(call("-ti 0").errors,
              Strings{"Unable to find 2 mirrored points. Please increase the tolerance to "
                      "account for non-symmetrical points."});
    EXPECT_EQ(scene_.changes(before), "") << "the mirrored copy is gone";
    mirror("-tol 0.1");
    EXPECT_EQ(deltas(scene_, 0, 6000).substr(0, 16), "1 0 1 0\n7 0 0 0\n")
        << "7 counts as lying on the plane";
}

TEST_F(MirrorTarget, ATenthOfTheToleranceTellsWhatLiesOnThePlane) {
    scene_.mel("setAttr baseShapeOrig.pnts[7].pntx 0.0003; setAttr baseShapeOrig.pnts[12].pntx 0.00005");
    setDeltas(2, "2 vtx[7] vtx[12]", "2 4 5 6 1 4 5 6 1");
    mirror("-si 2 -ti 2 -tol 0.001");
    EXPECT_EQ(deltas(scene_, 2, 6000), "7 -4 5 6\n12 0 5 6\n");
}

TEST_F(MirrorTarget, DeltasBeyondTheMeshHaveNoPartner) {
    setDeltas(0, "2 vtx[3] vtx[4000000]", "2 0 1 0 1 0 2 0 1");
    EXPECT_EQ(call("").errors,
              Strings{"Unable to find 1 mirrored points. Please increase the tolerance to account "
                      "for non-symmetrical points."});
    scene_.mel("dv_polyMapVertexOrder baseShapeOrig");
    EXPECT_EQ(call("-ob \"\"").infos, Strings{"Skipped 1 asymmetrical components."});
    EXPECT_EQ(deltas(scene_, 0, 6000), "1 0 1 0\n3 0 1 0\n4000000 0 2 0\n");
    EXPECT_EQ(call("-ob \"\" -t 2 -ti 4").infos, Strings{"Skipped 1 asymmetrical components."});
    EXPECT_EQ(deltas(scene_, 4, 6000), "3 0 1 0\n1 0 1 0\n") << "they stay only in place";
}

TEST_F(MirrorTarget, NodesDeletedByHandDoNoHarm) {
    scene_.mel("undoInfo -stateWithoutFlush off; undoInfo -stateWithoutFlush on; flushUndo");
    mirror("");
    scene_.mel("undoInfo -stateWithoutFlush off; delete bs; undoInfo -stateWithoutFlush on");
    EXPECT_EQ(scene_.run("undo").errors, Strings());
    EXPECT_EQ(scene_.run("redo").errors.front(),
              "The blend shape node or the original mesh is not in the scene any more.");
}

}  // namespace
