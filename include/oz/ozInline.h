#ifndef OZ_INLINE_H
#define OZ_INLINE_H

#include "oz/ozSwitch.h"

/// A place for the contents of another file. The node keeps what a VRML file says of it and does nothing with it:
/// whoever reads the file adds the contents as a child and chooses it.
class OZ_API ozInline : public ozSwitch {
  OZ_CLASS(ozInline);

public:
  ozInline();

  /// Where the contents may be found, best first.
  ozMFString *url() { return _urlField; }
  /// The box that the file promises to fill; it is no bound of this node.
  void getBboxSize(ozVec3f &size);
  void getBboxSize(float *x, float *y, float *z);
  void setBboxSize(ozVec3f const &size);
  void setBboxSize(float x, float y, float z);
  void getBboxCenter(ozVec3f &center);
  void getBboxCenter(float *x, float *y, float *z);
  void setBboxCenter(ozVec3f const &center);
  void setBboxCenter(float x, float y, float z);

private:
  ozStringArray _url;
  ozVec3f _bboxSize;
  ozVec3f _bboxCenter;
  ozMFString *_urlField;
};

#endif
