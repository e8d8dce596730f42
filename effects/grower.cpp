#include "effects/grower.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "render/random.h"

namespace {

constexpr float pointSize = 15;  // pixels
constexpr float bobHeight = 30;  // model units

}  // namespace

Grower::Grower(Demo* demo) : EffectBase(demo), nodes(1) {}

void Grower::grow() {
    // Ends, since every new node has room.
    int parent;
    do parent = randomNumber() % nodeCount;
    while (nodes[parent].childCount >= std::ssize(nodes[parent].children));

    GrowerNode node = {};
    std::copy_n(nodes[parent].position, 3, node.position);
    nodes[parent].children[nodes[parent].childCount++] = nodeCount++;
    nodes.push_back(node);
}

void Grower::draw() {
    const float lift = std::sin(time()) * bobHeight;
    glPushMatrix();
    glPointSize(pointSize);
    glBegin(GL_POINTS);
    for (int i = 0; i < nodeCount; i++) {
        const float* p = nodes[i].position;
        glVertex3f(p[0], p[1] + lift, p[2]);
    }
    glEnd();
    glPopMatrix();
}
