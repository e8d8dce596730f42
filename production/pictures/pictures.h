// Every picture of data/, with the function that paints it. Names and wrap modes are those of the texture
// table.
#pragma once

#include "production/product.h"

void makeTitle(const char* path);
void makeLoading(const char* path);
void makeOverlay(const char* path);
void makeFlashWord(const char* path);
void makeWhite(const char* path);
void makeGreetings(const char* path);
void makeCodeCredit(const char* path);
void makeModelsCredit(const char* path);
void makeGraphicsCredit(const char* path);
void makeMusicCredit(const char* path);
void makeHull(const char* path);
void makeWalls(const char* path);
void makeStudio(const char* path);
void makeRobotChrome(const char* path);
void makeArmChrome(const char* path);
void makeHallReflections(const char* path);
void makeStripes(const char* path);
void makeSpot(const char* path);
void makeRedBand(const char* path);
void makeGreenBand(const char* path);
void makeRobotFace(const char* path);
void makeStars(const char* path);
void makeSmoke(const char* path);

inline constexpr Product pictureProducts[] = {
    {"start.jpg", makeTitle},
    {"loading.jpg", makeLoading},
    {"overlay.jpg", makeOverlay},
    {"vornel.png", makeFlashWord},
    {"white.png", makeWhite},
    {"greetsit.png", makeGreetings},
    {"credits-code.png", makeCodeCredit},
    {"credits-models.png", makeModelsCredit},
    {"credits-gfx.png", makeGraphicsCredit},
    {"credits-music.png", makeMusicCredit},
    {"shiptex.png", makeHull},
    {"cubetex.png", makeWalls},
    {"envmap.png", makeStudio},
    {"envmap2.png", makeRobotChrome},
    {"envmap3.png", makeArmChrome},
    {"envmap4.png", makeHallReflections},
    {"tex.png", makeStripes},
    {"spot.png", makeSpot},
    {"redlaser.png", makeRedBand},
    {"greenlaser.png", makeGreenBand},
    {"roboscreen.png", makeRobotFace},
    {"star2.png", makeStars},
    {"noise1.png", makeSmoke},
};
