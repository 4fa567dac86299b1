#include "Scene.h"
#include "Walk.h"
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string folderOf(std::string const &file) {
  size_t const slash = file.rfind('/');
  return slash == std::string::npos ? "." : slash == 0 ? "/" : file.substr(0, slash);
}

// Why a file does not open; the search has failed already.
std::string whyUnreadable(std::string const &file) {
  struct stat status;
  if (!stat(file.c_str(), &status) && S_ISDIR(status.st_mode)) return strerror(EISDIR);
  int const opened = open(file.c_str(), O_RDONLY | O_NONBLOCK);
  if (opened < 0) return strerror(errno);
  close(opened);
  return "not a regular file";
}

// The reader would go on behind a wrong header, with a message at every word.
bool hasHeader(char const *file) {
  char line[256] = "";
  FILE *const in = fopen(file, "r");
  if (!in) return false;
  bool const good = fgets(line, sizeof line, in) && line[0] == '#' && vlInput::isASCIIHeader(line) > 0;
  fclose(in);
  return good;
}

template <class T> T *as(ozContainer *container) {
  return container->isOfType(T::getClassType()) ? static_cast<T *>(container) : nullptr;
}

} // namespace

Scene::Scene() : _root(new ozGroup), _hasLights(false), _pausedAt(0) { _root->ref(); }

Scene::~Scene() { _root->unref(); }

bool Scene::add(std::string const &file, std::string &reason) {
  ozString found;
  if (!ozGlobal::findFile(file.c_str(), found, ozGlobal::READ_FMODE)) {
    reason = whyUnreadable(file);
    return false;
  }
  if (!hasHeader(found.getString())) {
    reason = "no VRML 2.0 file: its first line does not say \"#VRML V2.0 utf8\"";
    return false;
  }
  // Textures are loaded when they are drawn first, so the folders of all files stay on the path.
  std::string path = folderOf(found.getString());
  if (char const *const before = ozGlobal::getFilePath()) path += std::string(":") + before;
  ozGlobal::setFilePath(path.c_str());

  ozTime const begin = ozTime::getTimeOfDay();
  ozContainer *read = nullptr;
  ozPtrArray files;
  bool const good = vlDB::readFile(file.c_str(), read, files);
  double const seconds = (ozTime::getTimeOfDay() - begin).get();

  ozGroup *const part = read ? as<ozGroup>(read) : nullptr;
  // The verdict of the reader is that of the last statement: a file of which something stands has been read.
  if (!part || (!good && part->getChildCount() == 0)) {
    if (read) {
      read->ref();
      read->unref();
    }
    reason = "nothing in it can be shown";
    return false;
  }
  _root->addChild(part);
  _parts.push_back({file, part, seconds});
  for (ozContainer *container : everythingBelow(part)) {
    if (auto *const clock = as<ozTimeSensor>(container)) _clocks.push_back({clock, ozTime(0.0), false});
    if (auto *const sensor = as<ozPickSensor>(container)) _sensors.push_back(sensor);
    if (as<ozLight>(container)) _hasLights = true;
    if (auto *const clip = as<ozAudioClip>(container)) _clips.push_back(clip);
    if (auto *const material = as<ozMaterial>(container)) _materials.push_back(material);
  }
  return true;
}

void Scene::startClocks(double age) {
  ozTime const now = ozTime::getTimeOfDay();
  for (Clock const &clock : _clocks) {
    ozTime const start = clock.sensor->getStartTime();
    if (start > now)
      clock.sensor->setStartTime(start - age);
    else if (clock.sensor->getLoop() && clock.sensor->getStopTime() <= start)
      clock.sensor->setStartTime(now - age);
  }
}

void Scene::tick() {
  // A clock that ends takes itself off the list, and the tick then passes over its neighbour until the next one.
  for (int i = 0; i < 16; i++) ozTimeSensor::updateSensors();
}

void Scene::wakeClocks() {
  for (Clock const &clock : _clocks) clock.sensor->cleanFields();
}

bool Scene::isRunning() const {
  ozTime const now = ozTime::getTimeOfDay();
  for (Clock const &clock : _clocks) {
    ozTimeSensor *const sensor = clock.sensor;
    if (!sensor->getEnabled()) continue;
    ozTime const start = sensor->getStartTime(), stop = sensor->getStopTime();
    bool const stopped = stop > start && now >= stop;
    bool const over = !sensor->getLoop() && now >= start + sensor->getCycleInterval();
    if (sensor->getIsActive() || !(stopped || over)) return true;
  }
  return false;
}

bool Scene::isSounding() const {
  ozTime const now = ozTime::getTimeOfDay();
  for (ozAudioClip *clip : _clips) {
    if (!clip->getSamples()) continue;
    ozTime const start = clip->getStartTime(), stop = clip->getStopTime();
    if (start > now || clip->getLoop() || (stop > start ? stop > now : !clip->playedOut)) return true;
  }
  return false;
}

void Scene::togglePause() {
  ozTime const now = ozTime::getTimeOfDay();
  if (!isPaused()) {
    _pausedAt = now.get();
    for (Clock &clock : _clocks) {
      clock.stopped = clock.sensor->getEnabled();
      if (!clock.stopped) continue;
      clock.startAtPause = clock.sensor->getStartTime();
      clock.sensor->setEnabled(0);
    }
    return;
  }
  ozTime const pause = now - _pausedAt;
  for (Clock const &clock : _clocks) {
    if (!clock.stopped) continue;
    ozTime const start = clock.sensor->getStartTime(), stop = clock.sensor->getStopTime();
    if (start != clock.startAtPause) { // started anew during the pause
      clock.sensor->setStartTime(now);
    } else {
      clock.sensor->setStartTime(start + pause);
      if (stop > start) clock.sensor->setStopTime(stop + pause);
    }
    clock.sensor->setEnabled(1);
  }
  _pausedAt = 0;
}

bool Scene::isDragging() const {
  for (ozPickSensor *sensor : _sensors)
    if (sensor->getIsActive()) return true;
  return false;
}

bool Scene::isTransparent() const {
  for (ozMaterial *material : _materials)
    if (material->getTransparency() > 0) return true;
  return false;
}
