// Scenes put together: what the programme shows where one scene alone is not the whole picture.
#pragma once

// sceneLaserBoom bent through "boom" around the middle, over its own blurred copy.
void laserBoomTornApart();

// From sceneRobo to sceneRoom, linearly.
void crossFadeFromRoboToRoom();
// What outlasts one of its frames that isn't drawn.
void advanceCrossFade();

void roomWithCredits();
