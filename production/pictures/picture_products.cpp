// Every picture of data/, with the function that makes it. Names and wrap modes are those of the texture
// table.
#include "production/forge.h"
#include "production/pictures/pictures.h"

namespace {

constexpr const char* kit = "kit/picture/";

}  // namespace

const std::vector<Product> pictureProducts = {
    {"start.jpg", makeTitle, "pictures/title.cpp", kit},
    {"loading.jpg", makeLoading, "pictures/loading.cpp", kit},
    {"overlay.jpg", makeOverlay, "pictures/overlay.cpp", kit},
    {"vornel.png", makeFlashWord, "pictures/flash.cpp", kit},
    {"white.png", makeWhite, "pictures/flash.cpp", kit},
    {"greetsit.png", makeGreetings, "pictures/greetings.cpp", kit},
    {"credits-code.png", makeCodeCredit, "pictures/credits.cpp", kit},
    {"credits-models.png", makeModelsCredit, "pictures/credits.cpp", kit},
    {"credits-gfx.png", makeGraphicsCredit, "pictures/credits.cpp", kit},
    {"credits-music.png", makeMusicCredit, "pictures/credits.cpp", kit},
    {"shiptex.png", makeHull, "pictures/", kit},
    {"cubetex.png", makeWalls, "pictures/", kit},
    {"envmap.png", makeStudio, "pictures/reflections.cpp", kit},
    {"envmap2.png", makeRobotChrome, "pictures/reflections.cpp", kit},
    {"envmap3.png", makeArmChrome, "pictures/reflections.cpp", kit},
    {"envmap4.png", makeHallReflections, "pictures/reflections.cpp", kit},
    {"tex.png", makeStripes, "pictures/stripes.cpp", kit},
    {"spot.png", makeSpot, "pictures/spot.cpp", kit},
    {"redlaser.png", makeRedBand, "pictures/robot.cpp", kit},
    {"greenlaser.png", makeGreenBand, "pictures/robot.cpp", kit},
    {"roboscreen.png", makeRobotFace, "pictures/robot.cpp", kit},
    {"star2.png", makeStars, "pictures/stars.cpp", kit},
    {"noise1.png", makeSmoke, "pictures/smoke.cpp", kit},
};
