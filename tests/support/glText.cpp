#include "support/glText.h"
#include <GL/gl.h>
#include <GL/glext.h>
#include <cstdio>

namespace {

typedef std::map<unsigned int, char const *> Names;

Names const &names() {
  static Names const all = {
#define GL_NAME(name) {name, #name},
#include "support/glNames.inc"
#undef GL_NAME
  };
  return all;
}

#define BIT(name)                                                                                                      \
  { name, #name }
Names const clearBits = {BIT(GL_COLOR_BUFFER_BIT), BIT(GL_DEPTH_BUFFER_BIT), BIT(GL_ACCUM_BUFFER_BIT),
                         BIT(GL_STENCIL_BUFFER_BIT)};
Names const attribBits = {BIT(GL_CURRENT_BIT),
                          BIT(GL_POINT_BIT),
                          BIT(GL_LINE_BIT),
                          BIT(GL_POLYGON_BIT),
                          BIT(GL_POLYGON_STIPPLE_BIT),
                          BIT(GL_PIXEL_MODE_BIT),
                          BIT(GL_LIGHTING_BIT),
                          BIT(GL_FOG_BIT),
                          BIT(GL_DEPTH_BUFFER_BIT),
                          BIT(GL_ACCUM_BUFFER_BIT),
                          BIT(GL_STENCIL_BUFFER_BIT),
                          BIT(GL_VIEWPORT_BIT),
                          BIT(GL_TRANSFORM_BIT),
                          BIT(GL_ENABLE_BIT),
                          BIT(GL_COLOR_BUFFER_BIT),
                          BIT(GL_HINT_BIT),
                          BIT(GL_EVAL_BIT),
                          BIT(GL_LIST_BIT),
                          BIT(GL_TEXTURE_BIT),
                          BIT(GL_SCISSOR_BIT)};
Names const clientBits = {BIT(GL_CLIENT_PIXEL_STORE_BIT), BIT(GL_CLIENT_VERTEX_ARRAY_BIT)};
#undef BIT

char const *const primitiveModes[] = {"GL_POINTS",     "GL_LINES",          "GL_LINE_LOOP",    "GL_LINE_STRIP",
                                      "GL_TRIANGLES",  "GL_TRIANGLE_STRIP", "GL_TRIANGLE_FAN", "GL_QUADS",
                                      "GL_QUAD_STRIP", "GL_POLYGON"};

std::string print(double value, bool isFloat) {
  char text[40];
  std::snprintf(text, sizeof text, isFloat ? "%g" : "%.0f", value);
  return text;
}

std::string enumerator(double value) {
  std::string const name = glName(value);
  return name.empty() ? print(value, false) : name;
}

std::string bits(double value, Names const &known, unsigned int all, char const *allName) {
  unsigned int left = value;
  if (left == all) return allName;
  std::string text;
  for (auto &bit : known)
    if (left & bit.first) {
      text += (text.empty() ? "" : " | ") + std::string(bit.second);
      left &= ~bit.first;
    }
  if (left || text.empty()) text += (text.empty() ? "" : " | ") + print(left, false);
  return text;
}

bool takesEnumerator(double pname) {
  switch (unsigned(pname)) {
  case GL_TEXTURE_ENV_MODE:
  case GL_TEXTURE_MAG_FILTER:
  case GL_TEXTURE_MIN_FILTER:
  case GL_TEXTURE_WRAP_S:
  case GL_TEXTURE_WRAP_T:
  case GL_TEXTURE_GEN_MODE:
  case GL_FOG_MODE:
  case GL_LIGHT_MODEL_COLOR_CONTROL:
    return true;
  }
  return false;
}

int valuesOf(double pname) {
  switch (unsigned(pname)) {
  case GL_AMBIENT:
  case GL_DIFFUSE:
  case GL_SPECULAR:
  case GL_EMISSION:
  case GL_AMBIENT_AND_DIFFUSE:
  case GL_POSITION:
  case GL_LIGHT_MODEL_AMBIENT:
  case GL_FOG_COLOR:
  case GL_TEXTURE_ENV_COLOR:
  case GL_TEXTURE_BORDER_COLOR:
  case GL_OBJECT_PLANE:
  case GL_EYE_PLANE:
    return 4;
  case GL_SPOT_DIRECTION:
  case GL_COLOR_INDEXES:
    return 3;
  }
  return 1;
}

double index(void const *indices, double type, int i) {
  switch (unsigned(type)) {
  case GL_UNSIGNED_BYTE:
    return static_cast<GLubyte const *>(indices)[i];
  case GL_BYTE:
    return static_cast<GLbyte const *>(indices)[i];
  case GL_UNSIGNED_SHORT:
    return static_cast<GLushort const *>(indices)[i];
  case GL_SHORT:
    return static_cast<GLshort const *>(indices)[i];
  case GL_UNSIGNED_INT:
    return static_cast<GLuint const *>(indices)[i];
  case GL_INT:
    return static_cast<GLint const *>(indices)[i];
  case GL_FLOAT:
    return static_cast<GLfloat const *>(indices)[i];
  }
  return 0;
}

} // namespace

std::string glName(unsigned int value) {
  auto found = names().find(value);
  return found == names().end() ? "" : found->second;
}

GLCall const &GLTeller::call() {
  if (_call.text.empty()) _call.text = _call.name + "(" + _arguments + ")";
  return _call;
}

void GLTeller::put(double value, std::string const &text) {
  _call.args.push_back(value);
  _arguments += (_arguments.empty() ? "" : ", ") + text;
}

std::string GLTeller::number(double value, bool isFloat) const {
  return takesEnumerator(_pname) ? enumerator(value) : print(value, isFloat);
}

void GLTeller::addScalar(double value, bool isFloat) {
  char const kind = *_shape++;
  switch (kind) {
  case 'e':
    put(value, enumerator(value));
    break;
  case 'z':
    put(value, value == 0 ? "GL_ZERO" : value == 1 ? "GL_ONE" : enumerator(value));
    break;
  case 'm':
    put(value, value < 10 ? primitiveModes[int(value)] : print(value, false));
    break;
  case 't':
    put(value, value == 0 ? "GL_FALSE" : value == 1 ? "GL_TRUE" : print(value, false));
    break;
  case 'B':
    put(value, bits(value, clearBits, ~0u, "~0"));
    break;
  case 'A':
    put(value, bits(value, attribBits, GL_ALL_ATTRIB_BITS, "GL_ALL_ATTRIB_BITS"));
    break;
  case 'C':
    put(value, bits(value, clientBits, ~0u, "GL_CLIENT_ALL_ATTRIB_BITS"));
    break;
  case 'V':
    put(value, number(value, isFloat));
    break;
  default:
    put(value, print(value, isFloat));
  }
  if (kind == 'e') _pname = value;
  if (kind == 'i') _lastNumber = value;
}

int GLTeller::vectorLength() const {
  switch (*_shape) {
  case '1':
  case '2':
  case '3':
  case '4':
    return *_shape - '0';
  case 'W':
    return 16;
  case 'S':
    return 128;
  case 'P':
    return valuesOf(_pname);
  case 'N':
    return _lastNumber;
  }
  return -1;
}

void GLTeller::addPointer(void const *pointer) {
  if (*_shape == 'I' && pointer) return addIndices(pointer);
  _shape++;
  put(addressArg(pointer), pointer ? "ptr" : "NULL");
}

void GLTeller::addIndices(void const *indices) {
  _shape++;
  for (int i = 0; i < _lastNumber; i++) {
    double const value = index(indices, _pname, i);
    put(value, print(value, unsigned(_pname) == GL_FLOAT));
  }
}
