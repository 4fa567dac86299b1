#ifndef OZ_EVENT_H
#define OZ_EVENT_H

#include "oz/ozClass.h"
#include "oz/ozPtrArray.h"

class ozWindow;

/// One piece of input of a window. The window owns its events and uses them again: a member that an event's type does
/// not set keeps what the record held before.
class OZ_API ozEvent : public ozObject {
  OZ_OBJECT_CLASS(ozEvent);

public:
  /// In brackets, the members that are set beside type and window.
  enum EventEnum : int {
    RESHAPE_EVENT = 0,        ///< (x and y: the new width and height)
    DISPLAY_EVENT = 1,        ///< the window's contents are to be drawn again
    CLOSE_EVENT = 2,          ///< the user asks for the window to be closed
    MOUSE_UP_EVENT = 3,       ///< (x, y, buttons: the one button, modifiers)
    MOUSE_DOWN_EVENT = 4,     ///< (x, y, buttons: the one button, modifiers)
    MOTION_EVENT = 5,         ///< a button is held (x, y, buttons: all that are held, modifiers)
    PASSIVE_MOTION_EVENT = 6, ///< no button is held (x, y, buttons: 0, modifiers)
    KEY_DOWN_EVENT = 7,       ///< (key, x, y, buttons: all that are held, modifiers)
    KEY_UP_EVENT = 8,         ///< (key, x, y, buttons: all that are held, modifiers)
    SPECIAL_DOWN_EVENT = 9,   ///< (key, x, y, buttons: all that are held, modifiers)
    SPECIAL_UP_EVENT = 10,    ///< (key, x, y, buttons: all that are held, modifiers)
    TIMER_EVENT = 11          ///< a shot of the window's timer
  };
  /// Bits of `buttons`. The wheel comes as the press and the release of a button.
  enum ButtonEnum : int {
    LEFT_BUTTON = 1,
    MIDDLE_BUTTON = 2,
    RIGHT_BUTTON = 4,
    WHEEL_UP_BUTTON = 8,
    WHEEL_DOWN_BUTTON = 16
  };

  ozEvent();

  /// Writes nothing.
  void write(ozOutput *out) override;

  int type;         ///< an EventEnum
  int key;          ///< the character, or the toolkit's code of a special key
  ozWindow *window; ///< whose input it is
  int x;            ///< pixels from the window's left edge
  int y;            ///< pixels from the window's bottom edge
  int buttons;      ///< a mask of ButtonEnum
  int modifiers;    ///< 1 shift, 2 control, 4 alt
};

/// An array of events. It owns none of them. Null entries are left out when it is written.
class OZ_API ozEventArray : public ozPtrArrayOf<ozEventArray, ozEvent> {
public:
  using ozPtrArrayOf::ozPtrArrayOf;
  void write(ozOutput *out) const;
};

#endif
