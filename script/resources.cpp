#include "script/resources.h"

#include <iterator>

#include "effects/cube_heap.h"
#include "effects/fake_stripes.h"
#include "effects/huone.h"
#include "effects/laser_tunnel.h"
#include "effects/probes.h"
#include "effects/robo.h"
#include "effects/sweep_text.h"
#include "effects/tunnel.h"
#include "render/demo.h"
#include "render/random.h"

namespace {

constexpr int expandAndUpload = 1;

const MeshRow meshTable[] = {
    {"data/laatikko.AML", "laatikko", 135},  // up and down among its copies; a storey itself is shorter
    {"data/ship.AML", "ship", 361},
    {"data/tunneli.AML", "tunnel", 340, true},
    {"data/robo_body.AML", "robo body", 205},
    {"data/robo_arms.AML", "robo arms", 205},
    {"data/robo_screen.AML", "robo screen", 205, false, [] { demo->remapTexCoords("robo screen", 0, 2); }},
    {"data/ring.AML", "ring", 115},
    {"data/haromalli.AML", "haromalli", 6001},
    {"data/pallo.AML", "sphere", 4000},
    {"data/palikka.AML", "palikka", 52},
    {"data/huone_simple.AML", "huone", 1000, true},
    {"data/huone_detail.AML", "huone2", 1000},
    {"data/tykki.AML", "tykki", 1000},
    {"data/pallero.AML", "pallero", 42.01f, true},
    {"data/pallero_detail.AML", "pallero2", 44},
    {"data/block.AML", "block", 115},
};

// The lasers end in T, so that a beam's edge does not come back on its other side.
const TextureRow textureTable[] = {
    {"data/loading.jpg", "loading", GL_REPEAT, GL_REPEAT, 512, 512},
    {"data/overlay.jpg", "overlay", GL_REPEAT, GL_REPEAT, 800, 600},
    {"data/tex.png", "koe", GL_REPEAT, GL_REPEAT, 256, 256},
    {"data/spot.png", "spot", GL_REPEAT, GL_REPEAT, 64, 64},
    {"data/shiptex.png", "shiptex", GL_REPEAT, GL_REPEAT, 256, 256},
    {"data/cubetex.png", "cubetex", GL_REPEAT, GL_REPEAT, 256, 256},
    {"data/envmap.png", "envmap", GL_REPEAT, GL_REPEAT, 256, 256},
    {"data/envmap2.png", "envmap2", GL_REPEAT, GL_REPEAT, 256, 256},
    {"data/envmap4.png", "envmap4", GL_REPEAT, GL_REPEAT, 256, 256},
    {"data/envmap3.png", "envmap3", GL_REPEAT, GL_REPEAT, 256, 256},
    {"data/start.jpg", "start", GL_REPEAT, GL_REPEAT, 512, 512},
    {"data/redlaser.png", "lasertex", GL_REPEAT, GL_CLAMP_TO_EDGE, 256, 256},
    {"data/greenlaser.png", "lasertex2", GL_REPEAT, GL_CLAMP_TO_EDGE, 256, 256},
    {"data/noise1.png", "noise1", GL_REPEAT, GL_REPEAT, 256, 256},
    {"data/star2.png", "star", GL_REPEAT, GL_REPEAT, 128, 128},
    {"data/roboscreen.png", "roboscreen", GL_REPEAT, GL_REPEAT, 256, 256},
    {"data/greetsit.png", "greetsit", GL_REPEAT, GL_REPEAT, 2048, 512},
    {"data/vornel.png", "mix", GL_REPEAT, GL_REPEAT, 512, 512},
    {"data/credits-music.png", "music", GL_REPEAT, GL_REPEAT, 512, 512},
    {"data/credits-code.png", "code", GL_REPEAT, GL_REPEAT, 512, 512},
    {"data/credits-gfx.png", "gfx", GL_REPEAT, GL_REPEAT, 512, 512},
    {"data/credits-models.png", "models", GL_REPEAT, GL_REPEAT, 512, 512},
    {"data/white.png", "white", GL_REPEAT, GL_REPEAT, 64, 64},
};
static_assert(std::size(textureTable) <= firstTarget, "the records of render targets come next");

const EffectRow effectTable[] = {
    {"cubes1", []() -> EffectBase* { return new CubeHeap(demo, "laatikko"); }},
    {"stripes", []() -> EffectBase* { return new FakeStripes(demo, "haromalli", "koe"); }},
    {"sweep", []() -> EffectBase* { return new SweepText(demo, "start"); }},
    {"laser", []() -> EffectBase* { return new LaserTunnel(demo, "spot"); }},
    {"tunnel", []() -> EffectBase* { return new Tunnel(demo); }},
    {"robo", []() -> EffectBase* { return new Robo(demo); }},
    {"probes", []() -> EffectBase* { return new Probes(demo); }},
    {"huone", []() -> EffectBase* { return new Huone(demo, "spot"); }},
};

const ShaderRow shaderTable[] = {
    {"data/shaders/smoke", "smoke"},         {"data/shaders/smoke2", "smoke2"},
    {"data/shaders/distort", "distort"},     {"data/shaders/boom", "boom"},
    {"data/shaders/antiariel", "antiariel"},
};

}  // namespace

std::span<const MeshRow> meshRows() {
    return meshTable;
}
std::span<const TextureRow> textureRows() {
    return textureTable;
}
std::span<const EffectRow> effectRows() {
    return effectTable;
}
std::span<const ShaderRow> shaderRows() {
    return shaderTable;
}

void Loader::load(const MeshRow& row) {
    demo->loadMesh(row.path, row.key, expandAndUpload);
    if (row.afterwards) row.afterwards();
}

void Loader::load(const TextureRow& row) {
    demo->loadTexture(row.path, row.key, row.wrapS, row.wrapT);
    demo->setTextureSize(row.key, row.width, row.height);
}

void Loader::load(const ShaderRow& row) {
    demo->loadShader(row.base, row.key);
}

void loadResources(Loader& loader) {
    const auto loadRows = [](const auto& rows, const auto& load) {
        for (const auto& row : rows) {
            load(row);
            demo->drawLoadingScreen();
        }
    };
    const auto load = [&](const auto& row) { loader.load(row); };
    loadRows(textureRows().first(1), load);
    loadRows(meshTable, load);
    demo->drawLoadingScreen();
    loadRows(textureRows().subspan(1), load);
    demo->drawLoadingScreen();
    loadRows(effectTable, [](const EffectRow& row) { demo->effects[row.key] = row.create(); });
    demo->drawLoadingScreen();
    loadRows(shaderTable, load);
    demo->drawLoadingScreen();
}

void deleteEffects() {
    for (const auto& [key, effect] : demo->effects) delete effect;
    demo->effects.clear();
}

void restartEffects() {
    // Each loading screen takes a number.
    const auto skip = [](size_t screens) {
        for (size_t i = 0; i < screens; i++) randomNumber();
    };
    restartRandomNumbers();
    skip(std::size(meshTable) + 1 + std::size(textureTable) + 1);
    for (const EffectRow& row : effectTable) {
        EffectBase*& effect = demo->effects[row.key];
        delete effect;
        effect = row.create();
        skip(1);
    }
    skip(1 + std::size(shaderTable) + 1);
}
