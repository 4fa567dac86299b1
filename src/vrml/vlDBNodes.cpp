// The classes of a file: which library class stands for each name, which names are refused, and what is done to an
// object once its fields have been read.

#include <string.h>

#include "oz/OzScene3D.h"
#include "oz/vlDB.h"
#include "oz/vlError.h"
#include "oz/vlGeom.h"
#include "oz/vlInput.h"
#include "vrml/readState.h"

/// A row of the table of classes: a name, how to make the object, and what to do once it has been read.
struct vlNodeClass {
  char const *name;
  ozContainer *(*create)();
  void (*adapt)(ozContainer *obj);

  static vlNodeClass const *find(ozName const &name);
  static vlNodeClass const Table[];
};

template <class Class> static ozContainer *make() { return new Class; }

vlNodeClass const vlNodeClass::Table[] = {
    {"LineSet", make<ozLineSet>, nullptr},
    {"LineStripSet", make<ozLineStripSet>, nullptr},
    {"TriSet", make<ozTriSet>, nullptr},
    {"QuadSet", make<ozQuadSet>, nullptr},
    {"PolySet", make<ozPolySet>, nullptr},
    {"TriStripSet", make<ozTriStripSet>, nullptr},
    {"IndexedLineSet", make<ozIndexedLineSet>, nullptr},
    {"IndexSet", make<ozIndexSet>, nullptr},
    {"SphereSensor", make<ozSphereSensor>, nullptr},
    {"PlaneSensor", make<ozPlaneSensor>, nullptr},
    {"Appearance", make<ozAppearance>, vlDB::adaptAppearance},
    {"AudioClip", make<ozAudioClip>, vlDB::adaptAudioClip},
    {"Billboard", make<ozBillboard>, nullptr},
    {"Box", make<ozBox>, nullptr},
    {"Collision", make<ozCollision>, nullptr},
    {"Color", make<ozColorSet3f>, nullptr},
    {"ColorInterpolator", make<ozColorInterpolator>, nullptr},
    {"Cone", make<ozCone>, nullptr},
    {"Coordinate", make<ozCoordSet3f>, nullptr},
    {"CoordinateInterpolator", make<ozCoordinateInterpolator>, nullptr},
    {"Cylinder", make<ozCylinder>, nullptr},
    {"DirectionalLight", make<ozDirectionalLight>, nullptr},
    {"Environment", make<ozEnvironment>, nullptr},
    {"Group", make<ozGroup>, nullptr},
    {"ImageTexture", make<ozImageTexture>, nullptr},
    {"IndexedFaceSet", make<ozIndexedFaceSet>, vlDB::adaptIndexedFaceSet},
    {"Material", make<ozMaterial>, nullptr},
    {"Normal", make<ozNormalSet3f>, nullptr},
    {"NormalInterpolator", make<ozNormalInterpolator>, nullptr},
    {"OrientationInterpolator", make<ozOrientationInterpolator>, nullptr},
    {"PointLight", make<ozPointLight>, nullptr},
    {"PositionInterpolator", make<ozPositionInterpolator>, nullptr},
    {"ScalarInterpolator", make<ozScalarInterpolator>, nullptr},
    {"Shape", make<ozShape>, vlDB::adaptShape},
    {"Sound", make<ozSound>, nullptr},
    {"Sphere", make<ozSphere>, nullptr},
    {"Switch", make<ozSwitch>, nullptr},
    {"TextureCoordinate", make<ozTexCoordSet2f>, nullptr},
    {"TimeSensor", make<ozTimeSensor>, nullptr},
    {"TouchSensor", make<ozTouchSensor>, nullptr},
    {"Transform", make<ozTransform>, nullptr},
    {"Inline", make<ozInline>, vlDB::adaptInline},
};

// IndexedLineSet, PlaneSensor and SphereSensor stand here too and are never reached: meant so.
static char const *const Refused[] = {"Background",
                                      "BoxProximitySensor",
                                      "ClickSensor",
                                      "CylinderSensor",
                                      "DirectedSound",
                                      "DiskSensor",
                                      "ElevationGrid",
                                      "Fog",
                                      "FontStyle",
                                      "GeneralCylinder",
                                      "IndexedLineSet",
                                      "LOD",
                                      "NavigationInfo",
                                      "PlaneSensor",
                                      "PointSet",
                                      "PointSound",
                                      "Script",
                                      "SphereSensor",
                                      "SpotLight",
                                      "Text",
                                      "Texture2Transform",
                                      "Viewpoint",
                                      "WorldInfo",
                                      "WWWAnchor"};

// By the address of the name, which is the same for equal names.
static unsigned long keyOf(ozName const &name) { return reinterpret_cast<unsigned long>(name.getString()); }

vlNodeClass const *vlNodeClass::find(ozName const &name) {
  static ozDict *rows = nullptr; // never destroyed: files may be read while the process exits
  if (!rows) {
    rows = new ozDict(251);
    for (vlNodeClass const &row : Table) rows->enter(keyOf(ozName(row.name)), const_cast<vlNodeClass *>(&row));
  }
  void *row = nullptr;
  rows->find(keyOf(name), row);
  return static_cast<vlNodeClass const *>(row);
}

ozContainer *vlDB::createInstanceFromName(ozName const &className) {
  vlNodeClass const *const row = vlNodeClass::find(className);
  return row ? row->create() : nullptr;
}

unsigned char vlDB::readNodeInstance(vlInput *in, ozName const &className, ozName *defName, ozContainer *&obj) {
  obj = createInstanceFromName(className);
  if (!obj) {
    bool refused = false;
    for (char const *name : Refused) refused = refused || !strcmp(name, className.getString());
    if (refused)
      vlReadError::post(in, "Unsupported class \"%s\"", className.getString());
    else
      vlReadError::post(in, "Unknown class \"%s\"", className.getString());
    return 0;
  }
  bool const named = defName && !!*defName;
  _state->keep(obj);
  if (named) in->addReference(*defName, obj);
  _state->begin(obj);
  unsigned char const ok = readFields(in, obj);
  vlNodeClass const *const row = vlNodeClass::find(className);
  if (ok && row->adapt) row->adapt(obj);
  _state->end(named);
  return ok;
}

void vlDB::adaptShape(ozContainer *obj) {
  ozShape *const shape = static_cast<ozShape *>(obj);
  if (!shape->getAppearance()) shape->setAppearance(defAppear);
}

// Equal file names share one texture in the whole process.
ozTexture *vlDB::shareTexture(ozTexture *texture) {
  ozString name, other;
  texture->getFileName(name);
  for (unsigned int i = 0; i < textures->getCount(); ++i) {
    ozTexture *const known = static_cast<ozTexture *>(textures->get(i));
    known->getFileName(other);
    if (!strcmp(name.getString() ? name.getString() : "", other.getString() ? other.getString() : "")) return known;
  }
  texture->ref();
  textures->append(texture);
  return texture;
}

void vlDB::adaptAppearance(ozContainer *obj) {
  ozAppearance *const app = static_cast<ozAppearance *>(obj);
  if (ozTexture *texture = app->getTexture()) {
    ozTexture *const shared = shareTexture(texture);
    if (shared != texture) app->setTexture(shared);
    app->setTexEnable(1);
    app->setTexEnv(shared->getComponentCount() >= 3 ? ozContext::REPLACE_TENV : ozContext::MODULATE_TENV);
  } else {
    app->setTexEnable(0);
  }
  app->setLightEnable(app->getMaterial() != nullptr);
}

void vlDB::adaptIndexedFaceSet(ozContainer *obj) {
  ozIndexedFaceSet *const set = static_cast<ozIndexedFaceSet *>(obj);
  if (!set->getNormalSet()) vlGeom::computeNorms(set, set->getCreaseAngle());
  if (set->getTexCoordSet()) set->setTexCoordBind(ozGeoSet::PER_VERTEX_TEX_COORD);
  if (!set->getColorSet()) set->setColorBind(ozGeoSet::NO_COLOR);
  vlGeom::calcStaticBound(set);
}

// The first element of the url is the last one that was read as such, even where this node has none: meant so.
void vlDB::adaptInline(ozContainer *obj) {
  ozString const name(_lastFirstString.getString() ? _lastFirstString.getString() : "");
  vlDebugError::post("vlDB::readNodeInstance", "Reading Inline %s", name.getString());
  if (_state->inlineDepth >= vlReadState::MaxInlineDepth) {
    vlReadError::post(_in, "Inlines are nested too deeply (%d)", vlReadState::MaxInlineDepth);
    return;
  }
  if (*_state->inlines >= vlReadState::MaxInlines) {
    vlReadError::post(_in, "Too many Inlines (%d)", vlReadState::MaxInlines);
    return;
  }
  ++*_state->inlines;
  ozContainer *sub = nullptr;
  readFile(name.getString(), sub, *_files);
  if (!sub) return;
  ozInline *const node = static_cast<ozInline *>(obj);
  node->addChild(static_cast<ozNode *>(sub));
  node->setWhichChild(0);
}

// The samples are loaded at once. A clip without a url gets none.
void vlDB::adaptAudioClip(ozContainer *obj) {
  ozAudioClip *const clip = static_cast<ozAudioClip *>(obj);
  if (clip->url()->getCount() == 0) return;
  ozAudioSamples *const samples = new ozAudioSamples;
  samples->setFileName(clip->url()->get(0));
  samples->load();
  clip->setSamples(samples);
}
