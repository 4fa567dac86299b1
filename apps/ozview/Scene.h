#ifndef OZVIEW_SCENE_H
#define OZVIEW_SCENE_H

#include <oz/OzScene3D.h>
#include <string>
#include <vector>

/// The files that are shown together, and their clocks.
class Scene {
public:
  /// One file that was read.
  struct Part {
    std::string file;
    ozGroup *root;
    double readSeconds;
  };

  Scene();
  ~Scene();
  Scene(Scene const &) = delete;
  Scene &operator=(Scene const &) = delete;

  /// Reads a file and adds it. On failure `reason` tells why, in a few words.
  bool add(std::string const &file, std::string &reason);

  ozGroup *root() const { return _root; }
  std::vector<Part> const &parts() const { return _parts; }

  /// Starts the scene's clocks: a clock that runs for ever from a start in the past starts now, and every clock is
  /// moved to where it stands `age` seconds after that. Comes ahead of the first frame.
  void startClocks(double age);
  /// Lets all clocks tick once, and those that one tick passes over.
  static void tick();
  /// Takes over what routes have brought to the clocks, which wakes those that it starts anew.
  void wakeClocks();
  /// Whether a clock runs or waits for its start.
  bool isRunning() const;
  /// Whether a clip sounds, or will of itself.
  bool isSounding() const;

  bool isPaused() const { return _pausedAt > 0; }
  /// Stops the clocks, or lets them go on from where they stopped.
  void togglePause();

  /// Whether a sensor follows a drag of the mouse.
  bool isDragging() const;
  /// Whether anything in the scene answers to the mouse.
  bool isTouchable() const { return !_sensors.empty(); }
  /// Whether a material lets through what lies behind.
  bool isTransparent() const;
  /// Whether the scene brings lights of its own.
  bool hasLights() const { return _hasLights; }

private:
  struct Clock {
    ozTimeSensor *sensor;
    ozTime startAtPause;
    bool stopped; // by togglePause
  };

  ozGroup *_root;
  std::vector<Part> _parts;
  std::vector<Clock> _clocks;
  std::vector<ozPickSensor *> _sensors;
  std::vector<ozMaterial *> _materials;
  std::vector<ozAudioClip *> _clips;
  bool _hasLights;
  double _pausedAt;
};

#endif
