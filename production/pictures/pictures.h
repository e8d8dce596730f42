// One function for each picture of data/: paints it and writes it to `path`.
#pragma once

void makeLoading(const char* path);          // loading.jpg
void makeOverlay(const char* path);          // overlay.jpg
void makeStripes(const char* path);          // tex.png
void makeSpot(const char* path);             // spot.png
void makeHull(const char* path);             // shiptex.png
void makeWalls(const char* path);            // cubetex.png
void makeStudio(const char* path);           // envmap.png
void makeRobotChrome(const char* path);      // envmap2.png
void makeArmChrome(const char* path);        // envmap3.png
void makeHallReflections(const char* path);  // envmap4.png
void makeTitle(const char* path);            // start.jpg
void makeRedBand(const char* path);          // redlaser.png
void makeGreenBand(const char* path);        // greenlaser.png
void makeSmoke(const char* path);            // noise1.png
void makeStars(const char* path);            // star2.png
void makeRobotFace(const char* path);        // roboscreen.png
void makeGreetings(const char* path);        // greetsit.png
void makeFlashWord(const char* path);        // vornel.png
void makeMusicCredit(const char* path);      // credits-music.png
void makeCodeCredit(const char* path);       // credits-code.png
void makeGraphicsCredit(const char* path);   // credits-gfx.png
void makeModelsCredit(const char* path);     // credits-models.png
void makeWhite(const char* path);            // white.png
