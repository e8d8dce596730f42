// What the beams of a frame cost.
#include "effects/beams.h"
#include "bench/bench.h"
#include "effects/huone.h"
#include "tools/capture/stepped_show.h"

namespace {

constexpr double goal = 0.1;  // ms of one core

}  // namespace

// Of one frame of the room, at the models that its beams see.
Figures benchBeams(const std::string&) {
    SteppedShow show(30);
    show.music.ms = 150000;
    demo->clock.update();
    Huone& room = static_cast<Huone&>(*demo->effects["huone"]);
    room.moveBall();
    const double seconds = bestSeconds(500, [&] {
        for (int source = 0; source < Huone::beamSources; source++) {
            for (int aim = -1; aim <= 1; aim++) {
                const Ray ray = Huone::beam(source, aim);
                traceBeam(room.caster.scene, ray.origin, ray.direction, beamBounces, room.caster.path);
            }
        }
    });
    return {{"the room's fifteen beams", seconds * 1000, "ms", 0, Goal::valueAtMost, goal}};
}
