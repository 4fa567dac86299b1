#ifndef OZVIEW_FRAME_METER_H
#define OZVIEW_FRAME_METER_H

/// Frames per second. A pause in which no frame was asked for does not count.
class FrameMeter {
public:
  /// Counts a frame: when it began, when it ended, and whether it followed another one without a pause. Seconds.
  void count(double begin, double end, bool follows) {
    _spent += end - (follows ? _last : begin);
    _last = end;
    _frames++;
    if (_spent < 0.5 && _known) return;
    if (_spent > 0) _rate = _frames / _spent;
    if (_spent < 0.5) return; // a first estimate, until there is a better one
    _known = true;
    _frames = 0;
    _spent = 0;
  }

  double rate() const { return _rate; }
  /// Seconds a frame, 0 ahead of the first.
  double time() const { return _rate > 0 ? 1 / _rate : 0; }

private:
  int _frames = 0;
  bool _known = false;
  double _spent = 0, _last = 0, _rate = 0;
};

#endif
