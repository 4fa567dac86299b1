// Numbers: ids by which an object learns whether a context has seen its latest version, and names of texture objects.

#include <GL/gl.h>

#include "gfx/ozContextTables.h"

namespace {

enum : int { FIRST_GL_NAME = 10000 };
enum : unsigned int { MOST_TEXTURE_NAMES = 20000 };

} // namespace

int ozContext::newId(int n) {
  Tables &shared = tables();
  ozIntArray &freed = shared.freeIds;
  if (n == 1 && shared.freeIdHead < freed.getCount()) return freed[shared.freeIdHead++];
  int const first = shared.nextId;
  shared.nextId += n;
  return first;
}

void ozContext::freeId(int first, int n) {
  forEachContext([=](ozContext &context) {
    for (int id = first; id < first + n; ++id)
      if (context.fitVersions(id)) context._objectVersions.getArray()[id] = 0;
  });

  Tables &shared = tables();
  ozIntArray &freed = shared.freeIds;
  // The ids that were taken make room now and then, so that the queue grows no longer than what waits in it.
  if (shared.freeIdHead >= 32 && shared.freeIdHead * 2 >= freed.getCount()) {
    unsigned int const left = freed.getCount() - shared.freeIdHead;
    freed.setRange(0, left, freed.getArray() + shared.freeIdHead);
    freed.setCount(left);
    shared.freeIdHead = 0;
  }
  for (int id = first; id < first + n; ++id) freed.append(id);
}

// Doubles the capacity until it holds the id; false for no id, or without memory.
bool ozContext::fitVersions(int id) {
  if (id < 0) return false;
  unsigned int size = _objectVersions.getSize();
  if (static_cast<unsigned int>(id) < size) return true;
  while (size <= static_cast<unsigned int>(id)) size *= 2;
  _objectVersions.setSize(size);
  return static_cast<unsigned int>(id) < _objectVersions.getSize();
}

// isDirty() compares by order, not by equality: an id seen for the first time reads as version 0.
unsigned char ozContext::seeVersion(int id, int version) {
  if (fitVersions(id)) _objectVersions.getArray()[id] = version;
  return 1;
}

unsigned char ozContext::setDefaultQtyTextureNames(unsigned int n) {
  if (_ClassType || n > MOST_TEXTURE_NAMES) return 0;
  tables().textureNameCount = n;
  return 1;
}

int ozContext::newTextureName() {
  getClassType(); // gives the table its size
  Tables &shared = tables();
  int const name = shared.freedTop >= 0 ? shared.freedTextureNames[static_cast<unsigned int>(shared.freedTop--)]
                                        : static_cast<int>(shared.textureNames.find(0));
  if (name >= 0) shared.textureNames.set(static_cast<unsigned int>(name), name + FIRST_GL_NAME);
  return name;
}

void ozContext::deleteTextureName(int name) {
  Tables &shared = tables();
  if (static_cast<unsigned int>(name) >= shared.textureNames.getCount()) return;
  shared.textureNames.set(static_cast<unsigned int>(name), 0);
  // The top starts at -1 and only rises here, so the list stays empty and the lowest free name is reused. Meant.
  if (shared.freedTop > 0) shared.freedTextureNames.set(static_cast<unsigned int>(shared.freedTop++), name);
}

int ozContext::getGLTextureName(int name) {
  ozIntArray const &names = tables().textureNames;
  return static_cast<unsigned int>(name) < names.getCount() ? names[static_cast<unsigned int>(name)] : 0;
}

unsigned int ozContext::claimTextureObject(int name) {
  int &object = _textureObjects.getArray()[name];
  GLuint const glName = static_cast<GLuint>(name + FIRST_GL_NAME);
  if (object < 1) {
    if (object == -1) glDeleteTextures(1, &glName);
    object = static_cast<int>(glName);
  }
  return static_cast<unsigned int>(object);
}

void ozContext::dropTextureObjects(int name) {
  GLuint const glName = static_cast<GLuint>(name + FIRST_GL_NAME);
  forEachContext([=](ozContext &context) {
    int &object = context._textureObjects.getArray()[name];
    if (context.isThreadsCurrent()) {
      glDeleteTextures(1, &glName);
      object = 0;
    } else {
      object = -1;
    }
  });
}

void ozContext::cleanTextureObjects() {
  if (!_isCurrent) return;
  for (unsigned int name = 0; name < _textureObjects.getCount(); ++name) {
    if (_textureObjects[name] != -1) continue;
    GLuint const glName = name + FIRST_GL_NAME;
    glDeleteTextures(1, &glName);
    _textureObjects.set(name, 0);
  }
}
