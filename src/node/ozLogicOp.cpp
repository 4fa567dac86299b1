#include "oz/ozLogicOp.h"

#include <GL/gl.h>

#include "node/glSupport.h"
#include "node/visit.h"
#include "oz/ozDrawAction.h"

int ozLogicOp::_supported = -1;

OZ_DEFINE_CLASS(ozLogicOp, "LogicOp", ozGroup) {
  ozSFEnum::addTypeField(type, "logicOp", 3, NOOP_LOP, &ozLogicOp::_logicOp);
}

ozLogicOp::LogicOpEnum ozLogicOp::getLogicOp() { return read(3, _logicOp); }
void ozLogicOp::setLogicOp(LogicOpEnum op) { store(3, _logicOp, op); }

void ozLogicOp::extensionDetect() {
  static char *extensions = nullptr;
  _supported = ozSupportLevel(extensions, "GL_EXT_blend_logic_op", "logic op");
}

ozTravDirective ozLogicOp::drawVisit(ozDrawAction *action) {
  static GLenum const ops[] = {GL_CLEAR,       GL_SET,          GL_COPY,       GL_COPY_INVERTED, GL_NOOP, GL_INVERT,
                               GL_AND,         GL_NAND,         GL_OR,         GL_NOR,           GL_XOR,  GL_EQUIV,
                               GL_AND_REVERSE, GL_AND_INVERTED, GL_OR_REVERSE, GL_OR_INVERTED};
  cleanFields();
  return ozCulledFrame(this, _boxBound, action, [&] {
    GLint before = GL_COPY;
    glGetIntegerv(GL_LOGIC_OP_MODE, &before);
    if (_logicOp >= 0 && _logicOp < 16) glLogicOp(ops[_logicOp]);
    glEnable(GL_COLOR_LOGIC_OP);
    ozTravDirective const verdict = ozVisitChildren<&ozNode::drawVisit>(_children, action);
    glLogicOp(static_cast<GLenum>(before));
    glDisable(GL_COLOR_LOGIC_OP); // also where it was on before: meant
    return verdict;
  });
}
