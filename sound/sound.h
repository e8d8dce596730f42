// The show's sound: Ogg Vorbis streams, mixed into one output, whose position is the clock of the show.
// Use: setOutput, start, openStream, play; then position once a frame. All calls come from one thread and
// return at once; a thread of the module's own decodes, mixes and writes.
#pragma once

#include <memory>

namespace sound {

class Source;
struct Stream;

enum Output { None = 0, Oss = 4, Esd = 5, Alsa = 6 };

// Opens the output with this code, else ALSA, else none, and prints nothing about what failed. Before start;
// any other code counts as ALSA.
void setOutput(int code);
// The code of the output in force. None before setOutput, and after the device was lost in mid-show.
int output();

// Starts the mixer, `rate` Hz stereo, with channels 0..channels-1, and the thread. Without a setOutput
// before, ALSA is the one wanted. The thread ends with the process, whichever way that ends.
void start(int rate, int channels);
// Ends the thread and closes the output; every stream stands from here on. exit calls it by itself.
void stop();

// An Ogg Vorbis file of any rate and number of channels; nullptr if it can't be played. nullptr is a valid
// stream to every call: it stands at 0.
Stream* openStream(const char* path);
// Of what has been opened already, or nullptr; its calls come from the module's thread.
Stream* openStream(std::unique_ptr<Source> source);
// Ends it, on whatever channel it plays; no call may name it afterwards. A stream that nobody closes lives as
// long as the process.
void closeStream(Stream* stream);
// Lets the stream run on the channel from its position on (0 when new), in place of what was playing there.
// A channel that does not exist plays nothing.
void play(int channel, Stream* stream);
// Milliseconds of the stream that were heard by now. While playing it never stands still and never steps
// back, whatever the device does, and runs on in silence after the stream's end.
int position(const Stream* stream);
// Moves to `ms`, no less than 0, also in a pause. Shown at once; what was not heard yet is dropped.
void setPosition(Stream* stream, int ms);
// Silence on the channel, its position held where it is; or goes on from there.
void setPaused(int channel, bool paused);

// Analyses what is heard, from here on; off, the spectrum is all zeros.
void setSpectrumActive(bool active);
// 512 magnitudes from 0 Hz to half the mixing rate, 1 for a sine of full scale. Valid until the next call.
const float* spectrum();

}  // namespace sound
