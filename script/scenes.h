// The scenes: each places the camera, draws effects and finishes the frame, as a function of `frame` and
// `demo`.
#pragma once

void sceneSweepText();
void sceneLaserIntro();
void sceneLaserBoom();
void sceneStripesTunnel();
void sceneStripesOnly();  // not in the programme
void sceneTunnelCubes();
void sceneProbes();
void sceneRobo();
void sceneRoom();
void sceneCredits();  // over sceneRoom
void sceneFade();     // not in the programme
void sceneGreets();   // not in the programme
