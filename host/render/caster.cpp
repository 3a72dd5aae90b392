#include "render/caster.h"

#include <embree3/rtcore.h>

namespace host::render {

struct Caster::Scene {
    RTCDevice device = nullptr;
    RTCScene scene = nullptr;

    ~Scene() {
        if (scene != nullptr) rtcReleaseScene(scene);
        if (device != nullptr) rtcReleaseDevice(device);
    }
};

namespace {

/// The buffers are read where they are, with 16 bytes from the last point on: so there is one point more.
void attach(RTCDevice device, RTCScene scene, const Triangles& surface, unsigned number) {
    RTCGeometry geometry = rtcNewGeometry(device, RTC_GEOMETRY_TYPE_TRIANGLE);
    rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, surface.points.data(),
                               0, 3 * sizeof(float), surface.points.size() / 3 - 1);
    rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, surface.vertices.data(),
                               0, 3 * sizeof(unsigned), surface.vertices.size() / 3);
    rtcCommitGeometry(geometry);
    rtcAttachGeometryByID(scene, geometry, number);
    rtcReleaseGeometry(geometry);
}

}  // namespace

Caster::Caster(const std::vector<Triangles>& surfaces) : scene_(std::make_unique<Scene>()) {
    scene_->device = rtcNewDevice("isa=sse2");
    if (scene_->device == nullptr) {
        error_ = "The ray caster does not start on this machine.";
        return;
    }
    scene_->scene = rtcNewScene(scene_->device);
    rtcSetSceneFlags(scene_->scene, RTC_SCENE_FLAG_ROBUST);
    for (std::size_t k = 0; k < surfaces.size(); ++k) {
        if (!surfaces[k].vertices.empty())
            attach(scene_->device, scene_->scene, surfaces[k], static_cast<unsigned>(k));
    }
    rtcCommitScene(scene_->scene);
    if (rtcGetDeviceError(scene_->device) != RTC_ERROR_NONE)
        error_ = "There is not enough memory for a picture of this scene.";
}

Caster::~Caster() = default;

Hit Caster::cast(const Ray& ray) const {
    RTCIntersectContext context;
    rtcInitIntersectContext(&context);
    RTCRayHit found{};
    found.ray.org_x = static_cast<float>(ray.origin.x);
    found.ray.org_y = static_cast<float>(ray.origin.y);
    found.ray.org_z = static_cast<float>(ray.origin.z);
    found.ray.dir_x = static_cast<float>(ray.direction.x);
    found.ray.dir_y = static_cast<float>(ray.direction.y);
    found.ray.dir_z = static_cast<float>(ray.direction.z);
    found.ray.tnear = static_cast<float>(ray.nearest);
    found.ray.tfar = static_cast<float>(ray.farthest);
    found.ray.mask = ~0U;
    found.hit.geomID = RTC_INVALID_GEOMETRY_ID;
    rtcIntersect1(scene_->scene, &context, &found);
    if (found.hit.geomID == RTC_INVALID_GEOMETRY_ID) return {};
    return {static_cast<int>(found.hit.geomID), found.hit.primID, found.hit.u, found.hit.v};
}

}  // namespace host::render
