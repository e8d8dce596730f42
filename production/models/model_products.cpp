// Every mesh file, with the function that makes it.
#include "production/forge.h"
#include "production/models/models.h"

namespace {

constexpr const char* kit = "kit/model/";

}  // namespace

const std::vector<Product> modelProducts = {
    {"laatikko.AML", makeHeapBox, "models/heap_box.cpp", kit},
    {"ship.AML", makeShip, "models/ship.cpp", kit},
    {"tunneli.AML", makeTunnel, "models/tunnel.cpp", kit},
    {"robo_body.AML", makeRobotBody, "models/robot.cpp", kit},
    {"robo_arms.AML", makeRobotArms, "models/robot.cpp", kit},
    {"robo_screen.AML", makeRobotScreen, "models/robot.cpp", kit},
    {"ring.AML", makeRing, "models/ring.cpp", kit},
    {"haromalli.AML", makeSun, "models/sun.cpp", kit},
    {"pallo.AML", makeSky, "models/sky.cpp", kit},
    {"palikka.AML", makeProbe, "models/probe.cpp", kit},
    {"huone_simple.AML", makeRoomCollision, "models/room.cpp", kit},
    {"huone_detail.AML", makeRoom, "models/room.cpp", kit},
    {"tykki.AML", makeStage, "models/", kit},
    {"pallero.AML", makeBallCollision, "models/ball.cpp", kit},
    {"pallero_detail.AML", makeBall, "models/ball.cpp", kit},
    {"block.AML", makeCasing, "models/casing.cpp", kit},
};
