// The audio output that comes with the library. A port is a source of OpenAL with a ring of buffers; sources play what
// they are given as it is, since distance and intensity have been reckoned with already.

#include "oz/ozAudioOutput.h"

#ifdef OZ_HAVE_OPENAL

#include <AL/al.h>
#include <AL/alc.h>

namespace {

/// Makes a context current for as long as it lives: an application may have one of its own.
class Current {
public:
  explicit Current(ALCcontext *context) : _before(alcGetCurrentContext()) {
    if (_before != context) alcMakeContextCurrent(context);
    _changed = _before != context;
  }
  ~Current() {
    if (_changed) alcMakeContextCurrent(_before);
  }

private:
  ALCcontext *_before;
  bool _changed;
};

class Port {
public:
  bool open();
  void close();
  bool isOpen() const { return _isOpen; }
  int getRoom();
  int write(short const *samples, int frames, int channels, int rate);

private:
  enum { BUFFERS = 64, MOST_SAMPLES = 32768 };

  void takeBack(int count);
  void takeBackPlayed();

  bool _isOpen = false;
  ALuint _source = 0;
  ALuint _buffers[BUFFERS];
  int _sizes[BUFFERS]; // samples in each
  int _first = 0;      // of the buffers in the queue, which follow each other in the ring
  int _queued = 0;
  int _samples = 0; // in the queue
  ALenum _format = 0;
  int _rate = 0;
};

bool Port::open() {
  alGetError();
  alGenSources(1, &_source);
  if (alGetError() != AL_NO_ERROR) return false;
  alGenBuffers(BUFFERS, _buffers);
  if (alGetError() != AL_NO_ERROR) {
    alDeleteSources(1, &_source);
    return false;
  }
  alSourcei(_source, AL_SOURCE_RELATIVE, AL_TRUE);
  alSourcef(_source, AL_ROLLOFF_FACTOR, 0);
  _first = _queued = _samples = 0;
  _isOpen = true;
  return true;
}

void Port::close() {
  alSourceStop(_source);
  alSourcei(_source, AL_BUFFER, 0);
  alDeleteSources(1, &_source);
  alDeleteBuffers(BUFFERS, _buffers);
  _isOpen = false;
}

void Port::takeBack(int count) {
  for (; count > 0 && _queued > 0; --count, --_queued) {
    ALuint buffer;
    alSourceUnqueueBuffers(_source, 1, &buffer);
    _samples -= _sizes[_first];
    _first = (_first + 1) % BUFFERS;
  }
}

void Port::takeBackPlayed() {
  ALint played = 0;
  alGetSourcei(_source, AL_BUFFERS_PROCESSED, &played);
  takeBack(played);
}

int Port::getRoom() {
  takeBackPlayed();
  return _queued < BUFFERS ? MOST_SAMPLES - _samples : 0;
}

ALenum formatFor(int channels) {
  switch (channels) {
  case 1:
    return AL_FORMAT_MONO16;
  case 2:
    return AL_FORMAT_STEREO16;
  case 4:
    return alGetEnumValue("AL_FORMAT_QUAD16");
  case 6:
    return alGetEnumValue("AL_FORMAT_51CHN16");
  case 8:
    return alGetEnumValue("AL_FORMAT_71CHN16");
  default:
    return 0;
  }
}

int Port::write(short const *samples, int frames, int channels, int rate) {
  ALenum const format = formatFor(channels);
  if (format <= 0 || rate < 1) return 0;
  takeBackPlayed();
  if (_queued && (format != _format || rate != _rate)) { // a queue is all of one format
    alSourceStop(_source);
    takeBack(_queued);
  }
  int const room = getRoom() / channels;
  if (frames > room) frames = room;
  if (frames < 1) return 0;

  alGetError();
  int const last = (_first + _queued) % BUFFERS;
  alBufferData(_buffers[last], format, samples, frames * channels * static_cast<int>(sizeof(short)), rate);
  alSourceQueueBuffers(_source, 1, &_buffers[last]);
  if (alGetError() != AL_NO_ERROR) return 0;
  _format = format;
  _rate = rate;
  _sizes[last] = frames * channels;
  _samples += _sizes[last];
  ++_queued;
  ALint state = 0;
  alGetSourcei(_source, AL_SOURCE_STATE, &state);
  if (state != AL_PLAYING) alSourcePlay(_source);
  return frames;
}

class OpenALOutput : public ozAudioOutput {
public:
  ~OpenALOutput() override {
    for (int i = 0; i < PORTS; ++i) close(i);
    if (_context) alcDestroyContext(_context);
    if (_device) alcCloseDevice(_device);
  }

  bool start() {
    _device = alcOpenDevice(nullptr);
    if (_device) _context = alcCreateContext(_device, nullptr);
    return _context != nullptr;
  }

  int getNumChannels() override {
    int count = 0;
    for (Port const &port : _ports) count += !port.isOpen();
    return count;
  }

  int open() override {
    Current current(_context);
    for (int i = 0; i < PORTS; ++i)
      if (!_ports[i].isOpen()) return _ports[i].open() ? i : -1;
    return -1;
  }

  int getRoom(int port) override {
    if (!isOpen(port)) return 0;
    Current current(_context);
    return _ports[port].getRoom();
  }

  int write(int port, short const *samples, int frames, int channels, float rate) override {
    if (!isOpen(port) || !(rate < 1e6f)) return 0;
    Current current(_context);
    return _ports[port].write(samples, frames, channels, static_cast<int>(rate > 0 ? rate + 0.5f : 0));
  }

  void close(int port) override {
    if (!isOpen(port)) return;
    Current current(_context);
    _ports[port].close();
  }

private:
  enum { PORTS = 16 };

  bool isOpen(int port) const { return port >= 0 && port < PORTS && _ports[port].isOpen(); }

  ALCdevice *_device = nullptr;
  ALCcontext *_context = nullptr;
  Port _ports[PORTS];
};

} // namespace

ozAudioOutput *ozAudioOutput::createOpenAL() {
  OpenALOutput *const output = new OpenALOutput;
  if (output->start()) return output;
  delete output;
  return nullptr;
}

#else

ozAudioOutput *ozAudioOutput::createOpenAL() { return nullptr; }

#endif
