// A text reserves a range of display lists of its own, which is its id as well. The first text of a font records the
// glyphs into its range; the others draw with that. Each range has one owner, who frees it: a text, or, once the text
// that it came from has taken another font or is gone, the font, whose last user frees it.

#include "oz/ozScreenAlignedText.h"

#include <GL/gl.h>
#include <limits.h>

#include "geometry/ozFontLists.h"
#include "geometry/ozUseMaterials.h"
#include "gfx/ozUnpackState.h"
#include "oz/ozDrawAction.h"
#include "platform/ozFontRecord.h"

static int const NO_FONT = INT_MIN;

OZ_DEFINE_INSTANCES(ozScreenAlignedText)

OZ_DEFINE_TYPE(ozScreenAlignedText, "ScreenAlignedText", ozGeometry) {
  static char const *const names[] = {"TIMES",     "TIMES_ITALIC",      "TIMES_BOLD",     "TIMES_BOLD_ITALIC",
                                      "HELVETICA", "HELVETICA_OBLIQUE", "HELVETICA_BOLD", "HELVETICA_BOLD_OBLIQUE"};
  static int const values[] = {TIMES,     TIMES_ITALIC,      TIMES_BOLD,     TIMES_BOLD_ITALIC,
                               HELVETICA, HELVETICA_OBLIQUE, HELVETICA_BOLD, HELVETICA_BOLD_OBLIQUE};
  ozSFString::addTypeField(type, "text", 2, ozString(""), &ozScreenAlignedText::_text);
  ozSFVec3f::addTypeField(type, "position", 3, ozVec3f(0, 0, 0), &ozScreenAlignedText::_position);
  ozSFVec4f::addTypeField(type, "color", 4, ozVec4f(1, 1, 1, 1), &ozScreenAlignedText::_color);
  ozSFInt::addTypeField(type, "fontSize", 5, 12, &ozScreenAlignedText::_fontSize);
  ozSFEnum::addTypeField(type, "fontFace", 6, HELVETICA, &ozScreenAlignedText::_fontFace);
  type->defineEnums(6, 8, names, values);
}

ozScreenAlignedText::ozScreenAlignedText(ozType *type) : ozGeometry(type) { init(); }

ozScreenAlignedText::ozScreenAlignedText(ozScreenAlignedText const &other) : ozGeometry(other) {
  init();
  ozCopyFields(_ClassType, this, &other);
}

ozScreenAlignedText &ozScreenAlignedText::operator=(ozScreenAlignedText const &other) {
  if (this == &other) return *this;
  ozGeometry::operator=(other);
  ozAssignFields(_ClassType, this, &other);
  return *this;
}

ozScreenAlignedText::~ozScreenAlignedText() {
  leaveFont();
  glDeleteLists(static_cast<unsigned int>(_ownBase), ozFontLists::COUNT);
  ozContext::freeId(_ownBase, ozFontLists::COUNT);
  destroyFieldContents(_ClassType);
}

void ozScreenAlignedText::init() {
  initFieldDefaults(_ClassType);
  _ownBase = _listBase = ozContext::newId(ozFontLists::COUNT);
  _fontKey = NO_FONT;
  _version = 1;
}

// Looks at no bound mode: meant so.
void ozScreenAlignedText::fieldChanged(short id) {
  propagateSideEffect(0);
  touchField(id);
  ++_version;
}

// The text itself has no size: meant so.
void ozScreenAlignedText::cleanSideEffect(short id) {
  if (id != 0) {
    ozContainer::cleanSideEffect(id);
    return;
  }
  ozVec3f const reach(0.0001f, 0.0001f, 0.0001f);
  _boxBound.min.sub(_position, reach);
  _boxBound.max.add(_position, reach);
  touchField(0);
}

// ---- fonts

ozFontLists &ozFontLists::table() {
  static ozFontLists &lists = *new ozFontLists;
  return lists;
}

void ozFontLists::add(int key, int base) {
  keys.append(key);
  bases.append(base);
  users.append(1);
  versions.append(++lastVersion);
}

void ozFontLists::remove(unsigned int entry) {
  keys.removeIndex(entry);
  bases.removeIndex(entry);
  users.removeIndex(entry);
  versions.removeIndex(entry);
}

ozFontRecord *ozScreenAlignedText::queryFont() const {
  static struct {
    int weight, italic, family;
  } const faces[] = {{400, 0, ozFontRecord::ROMAN}, {400, 1, ozFontRecord::ROMAN}, {700, 0, ozFontRecord::ROMAN},
                     {700, 1, ozFontRecord::ROMAN}, {400, 0, ozFontRecord::SWISS}, {400, 1, ozFontRecord::SWISS},
                     {700, 0, ozFontRecord::SWISS}, {700, 1, ozFontRecord::SWISS}};
  auto const &face = faces[_fontFace];
  return ozFontRecord::create(_fontSize, face.weight, face.italic, face.family);
}

void ozScreenAlignedText::takeFont(int key) {
  ozFontLists &fonts = ozFontLists::table();
  long int const found = fonts.find(key);
  if (found < 0) {
    fonts.add(key, _listBase);
  } else {
    unsigned int const entry = static_cast<unsigned int>(found);
    _listBase = fonts.bases[entry];
    fonts.users.set(entry, fonts.users[entry] + 1);
  }
  _fontKey = key;
}

// The text draws with its own lists again.
void ozScreenAlignedText::leaveFont() {
  if (_fontKey != NO_FONT) {
    ozFontLists &fonts = ozFontLists::table();
    unsigned int const entry = static_cast<unsigned int>(fonts.find(_fontKey));
    int const users = fonts.users[entry] - 1;
    if (users) {
      fonts.users.set(entry, users);
      if (_listBase == _ownBase) _ownBase = ozContext::newId(ozFontLists::COUNT);
    } else {
      fonts.remove(entry);
      if (_listBase != _ownBase) {
        glDeleteLists(static_cast<unsigned int>(_listBase), ozFontLists::COUNT);
        ozContext::freeId(_listBase, ozFontLists::COUNT);
      }
    }
  }
  _fontKey = NO_FONT;
  _listBase = _ownBase;
}

static void recordGlyphs(ozFontRecord &font, int base) {
  ozUnpackState const state;
  for (int i = 0; i < ozFontLists::COUNT; ++i) {
    ozFontRecord::Glyph const glyph = font.glyph(static_cast<unsigned char>(i));
    glNewList(static_cast<unsigned int>(base + i), GL_COMPILE);
    glBitmap(glyph.width, glyph.height, static_cast<float>(-glyph.left), static_cast<float>(-glyph.bottom),
             static_cast<float>(glyph.advance), 0, glyph.bits);
    glEndList();
  }
}

// Takes the font that the fields ask for, and sees to its lists in this context. Without one the text is left with
// lists that do not exist.
void ozScreenAlignedText::buildFont(ozContext *context) {
  bool const exists = _fontFace >= TIMES && _fontFace <= HELVETICA_BOLD_OBLIQUE && ozFontRecord::hasHeight(_fontSize);
  int const key = exists ? _fontFace + _fontSize * 8 : NO_FONT;
  if (_fontKey != key) {
    leaveFont();
    if (exists) takeFont(key);
  }
  if (exists) {
    ozFontLists &fonts = ozFontLists::table();
    unsigned int const entry = static_cast<unsigned int>(fonts.find(key));
    // The second number of the range says whether a context has the lists; the first is the id of the text that lent
    // it.
    if (!context->isDirty(_listBase + 1, fonts.versions[entry])) return;
    if (ozFontRecord *const font = queryFont()) {
      recordGlyphs(*font, _listBase);
      delete font;
      return;
    }
    leaveFont();
  }
  glDeleteLists(static_cast<unsigned int>(_listBase), ozFontLists::COUNT);
}

// ---- drawing

// One call for the whole text, or for what stands between bytes that have no list.
static void callLists(char const *text) {
  auto const isCharacter = [](char c) { return static_cast<unsigned char>(c) < ozFontLists::COUNT; };
  do {
    int length = 0;
    while (text[length] && isCharacter(text[length])) ++length;
    glCallLists(length, GL_UNSIGNED_BYTE, text);
    text += length;
    while (!isCharacter(*text)) ++text;
  } while (*text);
}

void ozScreenAlignedText::draw(ozDrawAction *action) {
  cleanFields();
  ozContext *const context = action->getContext();
  ozUseMaterials(context);
  if (context->isDirty(_ownBase, _version)) buildFont(context);
  glColor4f(_color[0], _color[1], _color[2], _color[3]);
  glRasterPos3f(_position[0], _position[1], _position[2]);
  char const *text = _text.getString();
  if (text && _listBase >= 1) {
    ozUnpackState const state;
    glListBase(static_cast<unsigned int>(_listBase));
    callLists(text);
  }
  glColor4f(1, 1, 1, 1);
}
