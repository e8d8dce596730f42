// One function for each mesh file of data/: builds the model and writes it to `path` as AML.
#pragma once

void makeHeapBox(const char* path);        // laatikko.AML
void makeShip(const char* path);           // ship.AML
void makeTunnel(const char* path);         // tunneli.AML
void makeRobotBody(const char* path);      // robo_body.AML
void makeRobotArms(const char* path);      // robo_arms.AML
void makeRobotScreen(const char* path);    // robo_screen.AML
void makeRing(const char* path);           // ring.AML
void makeCasing(const char* path);         // block.AML
void makeSun(const char* path);            // haromalli.AML
void makeSky(const char* path);            // pallo.AML
void makeProbe(const char* path);          // palikka.AML
void makeRoomCollision(const char* path);  // huone_simple.AML
void makeRoom(const char* path);           // huone_detail.AML
void makeStage(const char* path);          // tykki.AML
void makeBallCollision(const char* path);  // pallero.AML
void makeBall(const char* path);           // pallero_detail.AML
