// Pictures: what rays hit, how it is shaded, and what playblast writes.

#include <gtest/gtest.h>
#include <png.h>
#include <tbb/global_control.h>

#include <cmath>
#include <filesystem>
#include <limits>

#include "host/commandsFixture.h"
#include "render/picture.h"
#include "support/scratchFolder.h"

namespace {

using namespace host;
using geometry::Matrix4;
using geometry::Vec3;
using render::Picture;

constexpr int kBackground = 51;  // a fifth of 255

std::array<int, 3> pixel(const Picture& picture, int column, int row) {
    const std::uint8_t* at = picture.bytes.data() + 3 * (row * picture.width + column);
    return {at[0], at[1], at[2]};
}

/// A square of side 2 around the origin, in a plane turned about x so that its normal is (0, sin, cos).
render::Surface tiltedSquare(double cosine, const render::Color& color) {
    const auto sine = static_cast<float>(std::sqrt(1.0 - cosine * cosine));
    const auto depth = static_cast<float>(cosine);
    geometry::MeshResult made = geometry::createMesh(
        {-1, -depth, sine, 1, -depth, sine, 1, depth, -sine, -1, depth, -sine}, {4}, {0, 1, 2, 3});
    render::Surface surface;
    surface.mesh = std::move(made.mesh);
    surface.colors.assign(4, color);
    return surface;
}

render::View viewFrom(double distance, const render::Lens& lens = {}, double aspect = 1.0) {
    return render::viewOf(Matrix4::translation({0, 0, distance}), lens, aspect);
}

struct ShadeCase {
    bool isOrthographic;
    double distance;  // negative: from behind
};

class Shading : public testing::TestWithParam<ShadeCase> {};

TEST_P(Shading, IsTheColourTimesTheCosine) {
    render::Lens lens;
    lens.isOrthographic = GetParam().isOrthographic;
    render::View view = viewFrom(GetParam().distance, lens);
    if (GetParam().distance < 0) {
        const Matrix4 turned = geometry::rotationMatrix({0, geometry::kPi, 0});
        view = render::viewOf(turned * Matrix4::translation({0, 0, GetParam().distance}), lens, 1.0);
    }
    const Picture picture = render::draw({tiltedSquare(0.6, {1, 0, 0.5F})}, view, 201, 201);
    const std::array<int, 3> centre = pixel(picture, 100, 100);
    // 255 * 0.6 and half of it. Rays of a perspective view are tilted by a quarter of a pixel.
    EXPECT_NEAR(centre[0], 153, GetParam().isOrthographic ? 0 : 1);
    EXPECT_EQ(centre[1], 0);
    EXPECT_NEAR(centre[2], 76.5, 1);
    EXPECT_EQ(pixel(picture, 0, 0), (std::array<int, 3>{kBackground, kBackground, kBackground}));
}

INSTANTIATE_TEST_SUITE_P(Cameras, Shading,
                         testing::Values(ShadeCase{true, 5}, ShadeCase{false, 5}, ShadeCase{true, -5},
                                         ShadeCase{false, -50}));

struct FitCase {
    render::FilmFit fit;
    double aspect;
    double halfWidth;  // times the focal length, in millimetres; the film is 36 x 24
};

class FilmFits : public testing::TestWithParam<FitCase> {};

TEST_P(FilmFits, ShowThePartOfTheFilm) {
    render::Lens lens;
    lens.filmFit = GetParam().fit;
    const render::View view = viewFrom(0, lens, GetParam().aspect);
    EXPECT_NEAR(view.halfWidth * lens.focalLength, GetParam().halfWidth, 1e-12);
    EXPECT_NEAR(view.halfHeight * GetParam().aspect, view.halfWidth, 1e-12);
}

INSTANTIATE_TEST_SUITE_P(Fits, FilmFits,
                         testing::Values(FitCase{render::FilmFit::Fill, 2.0, 18.0},
                                         FitCase{render::FilmFit::Fill, 1.0, 12.0},
                                         FitCase{render::FilmFit::Horizontal, 1.0, 18.0},
                                         FitCase{render::FilmFit::Vertical, 2.0, 24.0},
                                         FitCase{render::FilmFit::Overscan, 2.0, 24.0},
                                         FitCase{render::FilmFit::Overscan, 1.0, 18.0}));

TEST(Pictures, LeaveOutWhatIsNotFiniteOrOutsideTheClipPlanes) {
    render::Surface broken = tiltedSquare(1.0, {1, 1, 1});
    broken.mesh.setPoint(2, {std::numeric_limits<double>::quiet_NaN(), 0, 0});
    render::Surface black = tiltedSquare(1.0, {std::numeric_limits<float>::quiet_NaN(), 0, 0});
    const std::array<int, 3> background{kBackground, kBackground, kBackground};
    EXPECT_EQ(pixel(render::draw({}, viewFrom(5), 3, 3), 1, 1), background);
    // The square's other triangle is below the diagonal.
    EXPECT_EQ(pixel(render::draw({broken}, viewFrom(5), 101, 101), 52, 48), background);
    EXPECT_EQ(pixel(render::draw({black}, viewFrom(5), 3, 3), 1, 1), (std::array<int, 3>{}));
    render::Lens lens;
    lens.farClip = 4.0;
    EXPECT_EQ(pixel(render::draw({tiltedSquare(1.0, {1, 1, 1})}, viewFrom(5, lens), 3, 3), 1, 1), background);
    lens.farClip = 6.0;
    EXPECT_NE(pixel(render::draw({tiltedSquare(1.0, {1, 1, 1})}, viewFrom(5, lens), 3, 3), 1, 1), background);
}

TEST(Pictures, AreTheSameForAnyNumberOfThreads) {
    std::vector<render::Surface> surfaces;
    for (int k = 1; k < 40; ++k) {
        surfaces.push_back(tiltedSquare(k / 40.0, {0.5F, 1, 0}));
        surfaces.back().world =
            geometry::rotationMatrix({0.3 * k, 0.7 * k, 0}) * Matrix4::translation({0, k * 0.05 - 1, 0});
    }
    const render::View view = viewFrom(6);
    const Picture many = render::draw(surfaces, view, 160, 120);
    const tbb::global_control one(tbb::global_control::max_allowed_parallelism, 1);
    EXPECT_EQ(render::draw(surfaces, view, 160, 120).bytes, many.bytes);
}

Picture readPng(const std::string& path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    EXPECT_NE(png_image_begin_read_from_file(&image, path.c_str()), 0) << image.message;
    image.format = PNG_FORMAT_RGB;
    Picture picture{static_cast<int>(image.width), static_cast<int>(image.height), {}, {}};
    picture.bytes.resize(PNG_IMAGE_SIZE(image));
    EXPECT_NE(png_image_finish_read(&image, nullptr, picture.bytes.data(), 0, nullptr), 0) << image.message;
    return picture;
}

class Playblast : public testing::Test {
  protected:
    std::string path(const std::string& name) const { return (folder_.path() / name).string(); }
    std::string call(const std::string& name, const std::string& more = "-wh 200 150 -percent 100") const {
        return "playblast -fmt image -fr 1 -fo -cf \"" + path(name) + "\" " + more;
    }

    ScratchFolder folder_;
    commandstest::Host host_;
};

class CubePicture : public Playblast, public testing::WithParamInterface<const char*> {};

/// Columns and rows, from the first to the last, of what is not background.
std::array<int, 4> extent(const Picture& picture) {
    std::array<int, 4> box{picture.width, 0, picture.height, 0};
    for (int row = 0; row < picture.height; ++row) {
        for (int column = 0; column < picture.width; ++column) {
            if (pixel(picture, column, row)[0] == kBackground) continue;
            box = {std::min(box[0], column), std::max(box[1], column), std::min(box[2], row),
                   std::max(box[3], row)};
        }
    }
    return box;
}

/// The corners are projected by hand: the camera's matrix, the lens, and the height of the picture as that of
/// the film, because the picture is narrower.
TEST_P(CubePicture, ShowsACubeWithinItsProjectedCorners) {
    const std::string camera = GetParam();
    host_.ok("polyCube; setAttr pCube1.rotate 20 30 0; viewFit -f 0.7 " + camera + " pCube1; lookThru " +
             camera);
    EXPECT_EQ(host_.ok(call("a.png")), path("a.png"));
    const Picture picture = readPng(path("a.png"));
    ASSERT_EQ(picture.width, 200);
    ASSERT_EQ(picture.height, 150);
    const auto numbers = [&](const std::string& text) {
        const mel::RunResult result = host_.run(text);
        std::vector<double> list;
        for (std::size_t k = 0; k < result.value.size(); ++k)
            list.push_back(result.value.element(k).toFloat());
        return list;
    };
    const std::vector<double> matrix = numbers("xform -q -ws -m " + camera);
    const bool isOrthographic = host_.ok("getAttr " + camera + "Shape.orthographic") == "1";
    const double width = numbers("float $w[] = {`getAttr " + camera + "Shape.orthographicWidth`}")[0];
    const double scale = isOrthographic ? width / 2 : 12.0 / 35.0 * 200 / 150;
    std::array<double, 4> expected{1e9, -1e9, 1e9, -1e9};
    for (int corner = 0; corner < 8; ++corner) {
        const std::vector<double> place = numbers("pointPosition pCube1.vtx[" + std::to_string(corner) + "]");
        std::array<double, 3> seen{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            for (std::size_t k = 0; k < 3; ++k)
                seen[axis] += (place[k] - matrix[12 + k]) * matrix[4 * axis + k];
        }
        const double depth = isOrthographic ? 1.0 : -seen[2];
        const double column = (seen[0] / (scale * depth) + 1) * 100;
        const double row = (1 - seen[1] / (scale * 0.75 * depth)) * 75;
        expected = {std::min(expected[0], column), std::max(expected[1], column), std::min(expected[2], row),
                    std::max(expected[3], row)};
    }
    const std::array<int, 4> box = extent(picture);
    for (std::size_t side = 0; side < 4; ++side)
        EXPECT_NEAR(box[side] + 0.5, expected[side], 1.0) << side;
}

INSTANTIATE_TEST_SUITE_P(Cameras, CubePicture, testing::Values("persp", "top", "front", "side"));

TEST_F(Playblast, NamesFilesByTheirFrames) {
    host_.ok("polyCube; currentTime 5");
    const std::string stem = path("shot");
    EXPECT_EQ(host_.ok("playblast -fmt image -st 3 -et 4 -wh 8 8 -p 100 -f \"" + stem + "\""),
              stem + ".####.png");
    EXPECT_TRUE(std::filesystem::exists(stem + ".0003.png") && std::filesystem::exists(stem + ".0004.png"));
    EXPECT_EQ(host_.ok("currentTime -q"), "5");
    host_.ok("playblast -fmt image -fr 7 -fr 9 -wh 8 8 -p 100 -fp 2 -f \"" + stem + "\"");
    EXPECT_TRUE(std::filesystem::exists(stem + ".00.png") && std::filesystem::exists(stem + ".01.png"));
    host_.ok("playblast -fmt image -fr 7 -rfn -wh 8 8 -p 100 -fp 1 -f \"" + stem + "\"");
    EXPECT_TRUE(std::filesystem::exists(stem + ".7.png"));
    EXPECT_EQ(readPng(stem + ".7.png").width, 8);
    const std::string before = host_.dump();
    for (const auto& [command, error] : {
             std::pair{"playblast -fmt image -fr 7 -rfn -fp 1 -f \"" + stem + "\"",
                       "playblast: " + stem + ".7.png is there already. Add -forceOverwrite to replace it."},
             std::pair{
                 std::string("playblast -fr 1"),
                 std::string(
                     "playblast: The format 'movie' is not covered by this host. Use -format \"image\".")},
             std::pair{
                 "playblast -fmt image -c jpg -fr 1 -cf \"" + stem + "\"",
                 std::string("playblast: The compression 'jpg' is not covered by this host. Use -compression "
                             "\"png\".")},
             std::pair{std::string("playblast -fmt image -fr 1"),
                       std::string("playblast: Name the pictures with -filename or -completeFilename.")},
             std::pair{call("b.png", "-wh 0 9"),
                       std::string("playblast: A picture needs a width and a height.")},
             std::pair{call("b.png", "-w 8193 -p 100"),
                       std::string("playblast: A picture may have up to 8192 pixels a side.")},
             std::pair{call("b.png", "-p 5"), std::string("playblast: -percent is from 10 to 100.")},
             std::pair{
                 call("b.png", "-fr 2"),
                 std::string(
                     "playblast: -completeFilename names one file. Give one -frame, or use -filename.")},
         }) {
        EXPECT_EQ(host_.fails(command), error);
    }
    EXPECT_NE(host_.fails(call("none/b.png")).find("b.png"), std::string::npos);
    host_.ok("setAttr perspShape.focalLength 0");
    for (const std::string& command : {call("b.png"), std::string("viewFit persp")}) {
        EXPECT_NE(host_.fails(command).find("perspShape: its focalLength must be above 0."),
                  std::string::npos);
    }
    host_.ok("undo");
    EXPECT_FALSE(std::filesystem::exists(path("b.png")));
    EXPECT_EQ(host_.dump(), before);
}

TEST_F(Playblast, ShowsColoursVisibilityAndIsolatedFaces) {
    host_.ok("polyPlane -sx 2 -sy 1 -w 2 -h 2; lookThru top; camera -e -ow 2 top;");
    const auto shot = [&] {
        host_.ok(call("a.png", "-wh 40 40 -p 100"));
        return readPng(path("a.png"));
    };
    EXPECT_EQ(pixel(shot(), 10, 20), (std::array<int, 3>{128, 128, 128}));
    host_.ok("select pPlane1.vtx[0] pPlane1.vtx[3]; polyColorPerVertex -rgb 1 0 0 -cdo on;");
    const std::array<int, 3> painted = pixel(shot(), 1, 20);
    EXPECT_GT(painted[0], 240);
    EXPECT_LT(painted[1], 20);
    host_.ok("headlessIsolate pPlane1.f[1]");
    EXPECT_EQ(pixel(shot(), 10, 20)[0], kBackground);
    EXPECT_EQ(pixel(shot(), 30, 20)[0], 128);
    host_.ok("duplicate -n other pPlane1; delete pPlane1");
    EXPECT_NE(pixel(shot(), 10, 20)[0], kBackground) << "what is isolated is gone";
    host_.ok("undo; undo");
    EXPECT_EQ(host_.fails("headlessIsolate pPlane1.vtx[0]"), "headlessIsolate: pPlane1.vtx[0] are no faces.");
    host_.ok("headlessIsolate -clear; group pPlane1; setAttr group1.visibility 0");
    EXPECT_EQ(pixel(shot(), 30, 20)[0], kBackground);
}

}  // namespace
