// Every mesh file of data/, with the function that builds it.
#pragma once

#include "production/product.h"

void makeHeapBox(const char* path);
void makeShip(const char* path);
void makeTunnel(const char* path);
void makeRobotBody(const char* path);
void makeRobotArms(const char* path);
void makeRobotScreen(const char* path);
void makeRing(const char* path);
void makeCasing(const char* path);
void makeLanterns(const char* path);
void makeSky(const char* path);
void makeProbe(const char* path);
void makeRoomCollision(const char* path);
void makeRoom(const char* path);
void makeStage(const char* path);
void makeBallCollision(const char* path);
void makeBall(const char* path);

inline constexpr Product modelProducts[] = {
    {"laatikko.AML", makeHeapBox},
    {"ship.AML", makeShip},
    {"tunneli.AML", makeTunnel},
    {"robo_body.AML", makeRobotBody},
    {"robo_arms.AML", makeRobotArms},
    {"robo_screen.AML", makeRobotScreen},
    {"ring.AML", makeRing},
    {"haromalli.AML", makeLanterns},
    {"pallo.AML", makeSky},
    {"palikka.AML", makeProbe},
    {"huone_simple.AML", makeRoomCollision},
    {"huone_detail.AML", makeRoom},
    {"tykki.AML", makeStage},
    {"pallero.AML", makeBallCollision},
    {"pallero_detail.AML", makeBall},
    {"block.AML", makeCasing},
};
