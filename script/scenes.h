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

// What a frame of a scene does besides its picture. The programme names them, so that a part of the show can
// be drawn without all that comes before it: see run_up.h.

// What outlasts a frame that isn't drawn, in the order of its scene: the beat, where scene or effect keeps
// house before the frame's end, and the motion of every effect that it draws. Scenes without such have
// none.
void advanceTunnelCubes();
void advanceProbes();
void advanceRobo();
// Whether the tunnel's frame at `time` has a shock, which leaves its strength in "boom".
bool hasTunnelShock(float time);
