#include "effects/tunnel.h"

#include "effects/tunnel_segments.h"

void Tunnel::draw() {
    glEnable(GL_CULL_FACE);
    drawTunnelSegments(*demo, time());
    glDisable(GL_CULL_FACE);
}
