#ifndef OZ_CONTEXT_H
#define OZ_CONTEXT_H

#include "oz/ozByteArray.h"
#include "oz/ozClass.h"
#include "oz/ozGfx.h"
#include "oz/ozLightTarget.h"
#include "oz/ozObject.h"
#include "oz/ozPrivate.h"

class ozAppearance;
class ozFog;
class ozOverrideGeoProp;
class ozPtrArray;
class ozRenderContext;
class ozWindow;

/// The one door through which OpenGL state is changed.
///
/// A context owns a rendering context and remembers the value of every state item. A setter issues a call only when the
/// value differs from what OpenGL holds. Called by the application, between drawing, a setter also writes the default
/// state: the values that apply wherever an appearance does not say otherwise.
///
/// One context is current in each thread; make it current ahead of the first setter. A context belongs to the thread
/// where it is current. Contexts and the objects that they draw are made and destroyed by one thread at a time.
///
/// Values of enumerations that are none of the enumerators are kept and change nothing in OpenGL.
class OZ_API ozContext : public ozObject, public ozGfxEnums {
  OZ_OBJECT_CLASS(ozContext);

public:
  enum ColorModeEnum : int { RGBA_COLOR = 0, INDEX_COLOR = 1 };
  /// What clear() clears; may be ORed.
  enum ClearEnum : int { CLEAR_COLOR = 1, CLEAR_DEPTH = 2 };
  enum LimitEnum : int { LEVEL_COUNT = 16, LIGHT_COUNT = 8 };

  /// Makes a rendering context on the device, which stays the caller's and may go first. Makes nothing current.
  explicit ozContext(HDC device);
  ozContext(ozContext const &) = delete;
  ozContext &operator=(ozContext const &) = delete;
  /// Also ends the rendering context, and leaves no thread with this context as its current one.
  ~ozContext() override;

protected:
  ozContext(HDC device, ozType *type);

public:
  /// @name The current context
  /// @{

  /// Makes this the calling thread's context, drawing to the device, and the global ambient light black.
  void makeCurrent(HDC device);
  /// The same with the window's device.
  void makeCurrent(ozWindow *window);
  /// The calling thread's context, null if none. See ozPrivate about threads that the library did not start.
  static ozContext *getCurrent() { return ozPrivate::getContext(); }
  /// Leaves the calling thread without a current context.
  static void releaseCurrent();
  /// The device that this context was last made current on; null before.
  HDC getHDC() const { return _device; }
  ColorModeEnum getColorMode() const { return _colorMode; }
  /// @}

  /// @name State items
  /// Each getter reads what OpenGL holds now, from memory. Objects are not counted: who sets one keeps it; one that is
  /// destroyed is forgotten.
  /// @{
  ozTexture *getTexture() const { return _curState->texture; }
  /// Draws the texture. Null does not unbind the last one: see setTexEnable.
  void setTexture(ozTexture *texture);
  unsigned char getTexEnable() const { return _curState->texEnable; }
  void setTexEnable(unsigned char on);
  TexModeEnum getTexMode() const { return _curState->texMode; }
  /// Only kept.
  void setTexMode(TexModeEnum mode);
  void getTexBlendColor(ozVec4f &color) const { color = _curState->texBlendColor; }
  void getTexBlendColor(float *r, float *g, float *b, float *a) const { _curState->texBlendColor.get(r, g, b, a); }
  void setTexBlendColor(ozVec4f const &color);
  void setTexBlendColor(float r, float g, float b, float a) { setTexBlendColor(ozVec4f(r, g, b, a)); }
  TexEnvEnum getTexEnv() const { return _curState->texEnv; }
  void setTexEnv(TexEnvEnum env);
  ozTexGen *getTexGen() const { return _curState->texGen; }
  void setTexGen(ozTexGen *texGen);
  unsigned char getTexGenEnable() const { return _curState->texGenEnable; }
  void setTexGenEnable(unsigned char on);
  void getTexTransform(ozMatrix4f &matrix) const { matrix = _curState->texTransform; }
  void setTexTransform(ozMatrix4f const &matrix);

  unsigned char getLightEnable() const { return _curState->lightEnable; }
  void setLightEnable(unsigned char on);
  ShadeModelEnum getShadeModel() const { return _curState->shadeModel; }
  void setShadeModel(ShadeModelEnum model);
  ozMaterial *getMaterial() const { return _curState->material; }
  void setMaterial(ozMaterial *material);
  ozMaterial *getBackMaterial() const { return _curState->backMaterial; }
  /// Lights back faces with this material; with null as front faces.
  void setBackMaterial(ozMaterial *material);
  MaterialModeEnum getMaterialModeEnable() const { return _curState->materialModeEnable; }
  /// Whether vertex colours take the place of the materials' ambient and diffuse colours: MaterialModeEnum.
  void setMaterialModeEnable(int mode);

  unsigned char getTranspEnable() const { return _curState->transpEnable; }
  /// Blending or polygon stipple, whichever transpMode says, on or off. Sets the blend functions.
  void setTranspEnable(unsigned char on);
  TranspModeEnum getTranspMode() const { return _curState->transpMode; }
  void setTranspMode(TranspModeEnum mode);
  AlphaFuncEnum getAlphaFunc() const { return _curState->alphaFunc; }
  void setAlphaFunc(AlphaFuncEnum func);
  float getAlphaRef() const { return _curState->alphaRef; }
  void setAlphaRef(float ref);
  void getBlendColor(ozVec4f &color) const { color = _curState->blendColor; }
  void getBlendColor(float *r, float *g, float *b, float *a) const { _curState->blendColor.get(r, g, b, a); }
  /// Only kept.
  void setBlendColor(ozVec4f const &color);
  void setBlendColor(float r, float g, float b, float a) { setBlendColor(ozVec4f(r, g, b, a)); }
  SrcBlendFuncEnum getSrcBlendFunc() const { return _curState->srcBlendFunc; }
  void setSrcBlendFunc(SrcBlendFuncEnum func);
  DstBlendFuncEnum getDstBlendFunc() const { return _curState->dstBlendFunc; }
  void setDstBlendFunc(DstBlendFuncEnum func);
  /// Both at once, without entering either in a mask.
  void setBlendFuncs(SrcBlendFuncEnum src, DstBlendFuncEnum dst);

  void getColorMask(ozVec4ub &mask) const { mask = _curState->colorMask; }
  void getColorMask(unsigned char *r, unsigned char *g, unsigned char *b, unsigned char *a) const {
    _curState->colorMask.get(r, g, b, a);
  }
  /// A channel is written where its number is not 0.
  void setColorMask(ozVec4ub const &mask);
  void setColorMask(unsigned char r, unsigned char g, unsigned char b, unsigned char a) {
    setColorMask(ozVec4ub(r, g, b, a));
  }
  unsigned char getDepthEnable() const { return _curState->depthEnable; }
  void setDepthEnable(unsigned char on);
  DepthFuncEnum getDepthFunc() const { return _curState->depthFunc; }
  void setDepthFunc(DepthFuncEnum func);
  unsigned char getDepthMask() const { return _curState->depthMask; }
  void setDepthMask(unsigned char on);
  unsigned char getFogEnable() const { return _curState->fogEnable; }
  /// Inside the scope of a fog of its own, fog stays off unless that one is on.
  void setFogEnable(unsigned char on);

  PolyModeEnum getPolyMode() const { return _curState->polyMode; }
  void setPolyMode(PolyModeEnum mode);
  unsigned int getLineStipplePattern() const { return _curState->lineStipplePattern; }
  /// The low 16 bits are the pattern; 65535 is a whole line.
  void setLineStipplePattern(unsigned int pattern);
  unsigned int getLineStippleFactor() const { return _curState->lineStippleFactor; }
  void setLineStippleFactor(unsigned int factor);
  CullFaceEnum getCullFace() const { return _curState->cullFace; }
  /// These three give way to an override of geometry properties.
  void setCullFace(CullFaceEnum face);
  float getLineWidth() const { return _curState->lineWidth; }
  /// Pixels.
  void setLineWidth(float width);
  float getPointSize() const { return _curState->pointSize; }
  /// Pixels.
  void setPointSize(float size);

  /// Sets the items of the mask to the values of the record, in the order of their numbers.
  void setStateElts(ozBitMask const &mask, _ozGfx const &values);

  /// What OpenGL holds, and what holds where no appearance speaks.
  _ozGfx const &getCurState() const { return *_curState; }
  _ozGfx const &getDefaultState() const { return *_defaultState; }
  /// @}

  /// @name State outside the levels
  /// @{
  unsigned char getNormalizeEnable() const { return _normalizeEnable; }
  /// Whether OpenGL brings normals to unit length.
  void setNormalizeEnable(unsigned char on);
  unsigned char getLocalViewer() const { return _localViewer; }
  /// Whether highlights are computed for a viewer at the origin of the eye frame.
  void setLocalViewer(unsigned char on);
  /// @}

  /// @name Levels of state, lights and fog
  /// Pushes and pops must balance. There are 16 levels; deeper ones share the sixteenth.
  /// @{
  void pushState();
  /// Takes the items that either level has touched back to the lower level's values, then the default state's over
  /// them.
  void popState();
  /// Applies an appearance, merged with the override on top; null for none. With force 0, one that was the last to be
  /// applied is passed over.
  void drawApp(ozAppearance *appearance, unsigned char force);
  /// @}

  /// @name Matrices
  /// Each is one call on OpenGL's current matrix stack; angles are degrees.
  /// @{
  void pushMatrix();
  void pushIdentMatrix();
  void popMatrix();
  /// The number of matrices on the stack, as far as this context pushed them.
  int getMatrixDepth() const { return _matrixDepth; }
  void loadIdentMatrix();
  void loadMatrix(ozMatrix4f const &matrix);
  void multMatrix(ozMatrix4f const &matrix);
  /// The modelview matrix.
  void getMatrix(ozMatrix4f &matrix);
  void translate(float x, float y, float z);
  void scale(float x, float y, float z);
  void rotate(float x, float y, float z, float angle);
  /// @}

  /// @name Buffers and viewport
  /// @{

  /// Clears what ClearEnum says; colour to opaque black, depth to 1.
  void clear(int what);
  void clear(int what, float r, float g, float b, float a);
  /// Pixels; x and y of the lower left corner.
  void setViewport(int x, int y, int width, int height);
  void getViewport(int &x, int &y, int &width, int &height) const;
  /// @}

  /// @name Overrides
  /// Two stacks of 16, held by reference; only the top counts. A push on a full stack or of null and a pop of an empty
  /// one print a line and change nothing. A pop drops the stack's reference: what it gives may be gone.
  /// @{

  /// The fields that this appearance sets win over those of the shapes.
  void pushOverrideAppearance(ozAppearance *appearance);
  ozAppearance *popOverrideAppearance();
  /// Wins over cull face, line width and point size of the geometry.
  void pushOverrideGeoProp(ozOverrideGeoProp *properties);
  ozOverrideGeoProp *popOverrideGeoProp();
  /// @}

  /// @name Lights
  /// @{

  /// Opens a scope: lights that come into being in it go out with it.
  void pushLights();
  void popLights();
  /// Finds the OpenGL light for a light about to be defined, and switches it on or off. `match` becomes the same number
  /// when nothing has changed for this light, otherwise -1. A ninth light gets -1, no call and no reference.
  int getLightTarget(ozLight *light, ozMatrix4f const &matrix, int &match);
  /// Switches a light off that is about to go. The calls go to the calling thread's current context.
  static void disableLight(ozLight *light);
  /// Switches off all lights of this level.
  void disableLightTargets();
  /// The light in an OpenGL light of this level; null if there is none or no such light.
  ozLight *getLight(int i) const;
  /// @}

  /// @name Fog
  /// @{

  /// Opens a scope with a fog of its own; null keeps the present one.
  void pushFog(ozFog *fog);
  void popFog();
  /// Fog on or off as this fog says, unless the default state has it off. Returns whether it is on.
  unsigned char syncFogState(ozFog *fog);
  /// @}

  /// @name Object ids and versions
  /// Whatever has an OpenGL image that can go stale takes an id and counts its changes from 1.
  /// @{

  /// A number for n objects, or display lists, with consecutive ids.
  static int newId(int n);
  /// Gives n ids back; every context forgets them.
  static void freeId(int first, int n);
  /// Whether this version is newer than the last that this context was asked about. Asking counts as seeing it.
  unsigned char isDirty(int id, int version) {
    bool const known = static_cast<unsigned int>(id) < _objectVersions.getSize();
    return known && version <= _objectVersions.getArray()[id] ? 0 : seeVersion(id, version);
  }
  /// @}

  /// @name Names of texture objects
  /// Small numbers; OpenGL's name is 10000 more, in every context.
  /// @{

  /// How many names there are, at most 20000. Returns 0, and changes nothing, once the class is in use.
  static unsigned char setDefaultQtyTextureNames(unsigned int n);
  /// The lowest free name; negative when all are taken.
  static int newTextureName();
  static void deleteTextureName(int name);
  /// OpenGL's name of a texture name in use; 0 if it is none.
  static int getGLTextureName(int name);
  /// OpenGL's name of this context's object; an object of an earlier texture is deleted. This context must be current.
  unsigned int claimTextureObject(int name);
  /// Deletes the object of every context: at once in the calling thread's current context, in others when they are next
  /// asked for it or cleaned.
  static void dropTextureObjects(int name);
  /// Deletes the objects that were dropped while another context was current. Does nothing unless this one is current.
  void cleanTextureObjects();
  /// Whether makeCurrent cleans texture objects.
  void setTextureObjectClean(int clean) { _textureObjectClean = clean; }
  /// @}

  /// Makes a player for each port of the installed audio output (see ozAudioOutput) that can be opened; those that
  /// cannot cost a line on the standard error stream each. The first sound calls it.
  static void initSound();

  /// @name For destructors
  /// Every context forgets the object, so that a new one at the same address is never taken for it.
  /// @{
  static void forget(ozTexture *texture);
  static void forget(ozTexGen *texGen);
  static void forget(ozMaterial *material);
  static void forget(ozAppearance *appearance);
  /// @}

protected:
  /// @name Sound
  /// Of the whole process; never destroyed, since sounds may die while it exits.
  /// @{
  static unsigned char SoundInitialized; ///< initSound() has run
  static ozPtrArray &SoundsArray;        ///< the ozSound objects to play, each once
  static ozPtrArray &SoundPlayersArray;  ///< ozSoundPlayer objects, with a reference each
  /// @}

private:
  friend class ozAudioOutput; // these three keep the lists of sound
  friend class ozSound;
  friend class ozSoundAction;
  friend class ozGeometry;      // turns whichSetState while it draws, and reads the default state
  friend struct ozContextProbe; // the tests' way in

  struct Tables; // what all contexts share
  static Tables &tables();

  void init(HDC device);
  static void dropSoundPlayers();
  template <class Visit> static void forEachContext(Visit visit);
  template <class T> static void forgetMember(T *_ozGfx::*member, T *object);
  bool isThreadsCurrent() const;

  template <class T> void keepDefault(int item, T _ozGfx::*member, T const &value);
  template <class T> bool change(int item, T _ozGfx::*member, T const &value);
  template <class T> bool setItem(int item, T _ozGfx::*member, T const &value);
  void drawOverridden(ozAppearance *over, ozAppearance *appearance, unsigned char force);
  void applyAppearance(ozAppearance *source, unsigned char force, void const *known);
  void applyItem(int item, _ozGfx const &values);
  void applyItems(ozBitMask const &mask, _ozGfx const &values);
  void issueAlphaFunc();
  void issueLineStipple();
  void issueSrcBlendFunc();
  void issueDstBlendFunc();
  void issueBlendFunc();
  void setStipple(bool on);
  ozOverrideGeoProp *findOverride(int item) const;

  glLightTarget *lightLevel(int level) { return _lightTargets[slot(level)]; }
  static void releaseLight(glLightTarget &target);
  void putLight(glLightTarget &target, ozLight *light);
  bool fitVersions(int id);
  unsigned char seeVersion(int id, int version);

  // The deepest levels share the last slot of their stack.
  static int slot(int level) { return level < LEVEL_COUNT ? level : LEVEL_COUNT - 1; }

  ColorModeEnum _colorMode = RGBA_COLOR;
  unsigned char _viewportKnown = 0;
  int _viewport[4] = {};

  void const *_lastAppearance = nullptr; // only compared; 1 stands for what equals no appearance
  ozBitMask _lastSetMask;
  unsigned char _stateDirty = 1; // the last appearance must not be taken as still standing
  ozAppearance *_ownAppearance = nullptr;

  ozRenderContext *_renderContext = nullptr;
  HDC _device = nullptr;
  unsigned char _isCurrent = 0;

  _ozGfx *_curState = nullptr;      // what OpenGL holds: _stateStack[slot(_stateLevel)]
  _ozGfx *_defaultState = nullptr;  // what the application has set: _defaultGfx
  _ozGfx *_whichSetState = nullptr; // _defaultState, or _curState while something is being applied

  int _matrixDepth = 1;

  ozAppearance *_overrideAppearances[LEVEL_COUNT];
  int _overrideAppearanceTop = -1;
  ozOverrideGeoProp *_overrideGeoProps[LEVEL_COUNT];
  int _overrideGeoPropTop = -1;

  glLightTarget _lightTargets[LEVEL_COUNT][LIGHT_COUNT];
  int _lightLevel = 0;
  ozFog *_fogStack[LEVEL_COUNT];
  int _fogLevel = 0;

  _ozGfx _stateStack[LEVEL_COUNT];
  _ozGfx _defaultGfx;
  int _stateLevel = 0;

  unsigned char _normalizeEnable = 0;
  unsigned char _localViewer = 0;
  unsigned char _twoSided = 0; // what OpenGL holds: a forgotten back material leaves it on

  ozIntArray _objectVersions; // by object id: the last version seen
  ozIntArray _textureObjects; // by texture name: 0 for none, OpenGL's name, -1 for one to be deleted
  int _textureObjectClean = 0;
};

#endif
