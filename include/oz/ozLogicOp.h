#ifndef OZ_LOGIC_OP_H
#define OZ_LOGIC_OP_H

#include "oz/ozGroup.h"

/// A group whose children are combined with what is drawn already by a logical operation on the bits of the colours.
class OZ_API ozLogicOp : public ozGroup {
  OZ_CLASS(ozLogicOp);

public:
  enum LogicOpEnum : int {
    CLEAR_LOP = 0,
    SET_LOP = 1,
    COPY_LOP = 2,
    COPY_INVERTED_LOP = 3,
    NOOP_LOP = 4,
    INVERT_LOP = 5,
    AND_LOP = 6,
    NAND_LOP = 7,
    OR_LOP = 8,
    NOR_LOP = 9,
    XOR_LOP = 10,
    EQUIV_LOP = 11,
    AND_REVERSE_LOP = 12,
    AND_INVERTED_LOP = 13,
    OR_REVERSE_LOP = 14,
    OR_INVERTED_LOP = 15
  };

  ozLogicOp();

  /// NOOP_LOP by default.
  LogicOpEnum getLogicOp();
  void setLogicOp(LogicOpEnum op);

  /// The support level: 0 for none, 1 by an extension, 2 by OpenGL; -1 until the application asks for the detection.
  /// Drawing does not look at it.
  static int isSupported() { return _supported; }
  /// Finds out the support level from the current rendering context.
  static void extensionDetect();

  /// Leaves logical operations switched off, whatever they were before.
  ozTravDirective drawVisit(ozDrawAction *action) override;

private:
  static int _supported;

  LogicOpEnum _logicOp;
};

#endif
