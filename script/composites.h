// Scenes put together: what the programme shows where one scene alone is not the whole picture.
#pragma once

// sceneLaserBoom bent through "boom" around the middle, over its own blurred copy.
void laserBoomTornApart();

// From sceneRobo to sceneRoom, linearly.
void crossFadeFromRoboToRoom();

void roomWithCredits();
