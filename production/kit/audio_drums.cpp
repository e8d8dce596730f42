#include "production/kit/audio_drums.h"

#include <cmath>

#include "production/kit/audio_effects.h"
#include "production/kit/audio_envelope.h"
#include "production/kit/audio_filter.h"
#include "production/kit/audio_oscillator.h"

Stereo kickDrum(float tone, float length, float punch) {
    Stereo sound(frameAt(length * 1.5));
    Decay body(length), drop(0.09f), snap(0.028f), click(0.006f);
    Noise noise(1);
    float phase = 0;
    for (size_t i = 0; i < sound.frames(); i++) {
        phase += stepOf(tone * (1 + 2.2f * drop.next() + 9 * punch * snap.next()));
        const float hold = std::min(1.0f, float(sound.frames() - i) / 400);
        const float value = body.next() * sineOf(phase) * hold + 0.35f * punch * click.next() * noise.next();
        sound.left[i] = sound.right[i] = value;
    }
    saturate(sound, 4 + 6 * punch);
    return sound;
}
