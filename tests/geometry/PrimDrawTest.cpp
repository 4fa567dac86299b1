// Every kind of primitive, with every binding, through every draw path, with and without culling: the calls that reach
// OpenGL against what is written down here once more, independently.

#include "geometry/geometryFixture.h"

#include <functional>
#include <sstream>

namespace {

std::string num(double value) {
  std::ostringstream out;
  out << value;
  return out.str();
}

std::string call3(char const *name, double x, double y, double z) {
  return std::string(name) + "(" + num(x) + ", " + num(y) + ", " + num(z) + ")";
}

// Elements that tell which they are; every number is exact in a float.
std::string vertexCall(int i) { return call3("glVertex3fv", i, 2 * i, -i); }
std::string normalCall(int i) { return call3("glNormal3fv", i, 1, 0); }
std::string colorCall(int i) { return call3("glColor3fv", i / 64.0, 0.5, 0.25); }
std::string texCoordCall(int i) { return "glTexCoord2fv(" + num(i / 2.0) + ", 1)"; }

enum IndexMode { NOT_INDEXED, SHARED_INDEX, SPLIT_INDEX };

// The order of the indices: backwards, so that every index differs from its place.
int const ELEMENTS = 24;
int indexed(int i) { return ELEMENTS - 1 - i; }

struct Case {
  char const *name;
  std::function<ozGeoSet *()> make;
  char const *mode;
  int fixed;                // vertices of a primitive; 0 for lengths
  std::vector<int> lengths; // what each primitive holds
  bool culls;
  bool primFirst; // a culled primitive sends its own attributes in immediate mode
};

template <class Set> std::function<ozGeoSet *()> maker() {
  return [] { return new Set; };
}

template <class Set> std::function<ozGeoSet *()> maker(ozMFInt *(Set::*lengthField)() const, std::vector<int> lengths) {
  return [=] {
    Set *const set = new Set;
    setLengths((set->*lengthField)(), lengths);
    return set;
  };
}

std::vector<int> const STRIPS = {4, 3, 5};
std::vector<int> const POLYGONS = {3, 3, 4, 5, 4};

std::vector<Case> const &cases() {
  static std::vector<Case> const all = {
      {"points", maker<ozPointSet>(), "GL_POINTS", 1, {1, 1, 1}, false, false},
      {"lines", maker<ozLineSet>(), "GL_LINES", 2, {2, 2, 2}, false, false},
      {"line strips", maker(&ozLineStripSet::stripLength, STRIPS), "GL_LINE_STRIP", 0, STRIPS, true, false},
      {"triangles", maker<ozTriSet>(), "GL_TRIANGLES", 3, {3, 3, 3}, true, false},
      {"triangle strips", maker(&ozTriStripSet::stripLength, STRIPS), "GL_TRIANGLE_STRIP", 0, STRIPS, true, true},
      {"triangle fans", maker(&ozTriFanSet::fanLength, STRIPS), "GL_TRIANGLE_FAN", 0, STRIPS, true, true},
      {"quads", maker<ozQuadSet>(), "GL_QUADS", 4, {4, 4, 4}, true, false},
      {"polygons", maker(&ozPolySet::polyLength, POLYGONS), "GL_POLYGON", 0, POLYGONS, true, true},
  };
  return all;
}

// What one draw should send.
class Expected {
public:
  Expected(Case const &c, int normal, int color, int texCoord, IndexMode mode)
      : _case(c), _normal(normal), _color(color), _texCoord(texCoord), _mode(mode) {}

  Calls calls(std::vector<bool> const &pass, bool culling) {
    _pass = pass;
    _culling = culling;
    if (_normal == 1) add(normalCall(at(0, splitNormal())));
    if (_color == 1) add(colorCall(at(0, splitColor())));
    bool const perPrim = _normal == 2 || _color == 2;
    bool const split = _mode == SPLIT_INDEX && (_normal || _color || _texCoord);
    if (split)
      immediate();
    else
      arrays(perPrim);
    return _calls;
  }

private:
  void add(std::string const &call) { _calls.push_back(call); }
  bool points() const { return std::string(_case.mode) == "GL_POINTS"; }

  // In split mode only the coordinates are indexed, and everything else goes by its place.
  bool splitNormal() const { return _mode == SPLIT_INDEX; }
  bool splitColor() const { return _mode == SPLIT_INDEX; }
  int at(int place, bool split) const { return _mode == NOT_INDEXED || split ? place : indexed(place); }

  void prim() {
    if (points()) return; // sent with the vertex
    if (_normal == 2) add(normalCall(at(_sentPrims, splitNormal())));
    if (_color == 2) add(colorCall(at(_sentPrims, splitColor())));
    ++_sentPrims;
  }

  void vertices(int count) {
    for (int i = 0; i < count; ++i, ++_sent) {
      if (_color == 3 || (points() && _color == 2)) add(colorCall(at(_sent, splitColor())));
      if (_normal == 3 || (points() && _normal == 2)) add(normalCall(at(_sent, splitNormal())));
      if (_texCoord) add(texCoordCall(at(_sent, true)));
      add(vertexCall(_mode == NOT_INDEXED ? _sent : indexed(_sent)));
    }
  }

  void immediate() {
    std::string const begin = "glBegin(" + std::string(_case.mode) + ")";
    bool const polygons = std::string(_case.mode) == "GL_POLYGON";
    if (polygons)
      add("glBegin(GL_TRIANGLES)");
    else if (_case.fixed)
      add(begin);
    int last = -1;
    for (size_t i = 0; i < _case.lengths.size(); ++i) {
      bool const drawn = !_culling || _pass[i];
      if (drawn || _case.primFirst) prim();
      if (!drawn) continue;
      int const len = _case.lengths[i];
      if (polygons) {
        if (len == 3 && last != 3) add("glEnd()"), add("glBegin(GL_TRIANGLES)");
        if (len == 4 && last != 4) add("glEnd()"), add("glBegin(GL_QUADS)");
        if (len != 3 && len != 4) add("glEnd()"), add("glBegin(GL_POLYGON)");
        last = len;
        vertices(len);
      } else if (_case.fixed) {
        vertices(len);
      } else {
        add(begin);
        vertices(len);
        add("glEnd()");
      }
    }
    if (_case.fixed || polygons) add("glEnd()");
  }

  void pointer(bool on, char const *array, std::string const &call) {
    add(std::string(on ? "glEnableClientState(" : "glDisableClientState(") + array + ")");
    if (on) add(call);
  }

  void range(int start, int count) {
    if (_mode == NOT_INDEXED) {
      add("glDrawArrays(" + std::string(_case.mode) + ", " + num(start) + ", " + num(count) + ")");
      return;
    }
    std::string text = "glDrawElements(" + std::string(_case.mode) + ", " + num(count) + ", GL_UNSIGNED_INT";
    for (int i = 0; i < count; ++i) text += ", " + num(indexed(start + i));
    add(text + ")");
  }

  void arrays(bool perPrim) {
    pointer(_color == 3 || (points() && _color == 2), "GL_COLOR_ARRAY", "glColorPointer(3, GL_FLOAT, 12, ptr)");
    pointer(_normal == 3 || (points() && _normal == 2), "GL_NORMAL_ARRAY", "glNormalPointer(GL_FLOAT, 12, ptr)");
    pointer(_texCoord, "GL_TEXTURE_COORD_ARRAY", "glTexCoordPointer(2, GL_FLOAT, 8, ptr)");
    pointer(true, "GL_VERTEX_ARRAY", "glVertexPointer(3, GL_FLOAT, 12, ptr)");
    int total = 0;
    for (int len : _case.lengths) total += len;
    if (points() || (_case.fixed && !perPrim && !_culling)) {
      range(0, total);
      return;
    }
    int start = 0;
    for (size_t i = 0; i < _case.lengths.size(); ++i) {
      if (perPrim) prim();
      if (!_culling || _pass[i]) range(start, _case.lengths[i]);
      start += _case.lengths[i];
    }
  }

  Case const &_case;
  int _normal, _color, _texCoord;
  IndexMode _mode;
  std::vector<bool> _pass;
  bool _culling = false;
  int _sent = 0, _sentPrims = 0;
  Calls _calls;
};

ozGeoSet *makeSet(Case const &c, int normal, int color, int texCoord, IndexMode mode) {
  ozGeoSet *const set = c.make();
  std::vector<ozVec3f> points, normals, colors;
  ozTexCoordSet2f *const texCoords = new ozTexCoordSet2f;
  for (int i = 0; i < ELEMENTS; ++i) {
    float const f = static_cast<float>(i);
    points.push_back(ozVec3f(f, 2 * f, -f));
    normals.push_back(ozVec3f(f, 1, 0));
    colors.push_back(ozVec3f(f / 64, 0.5f, 0.25f));
    texCoords->point()->set(static_cast<unsigned int>(i), ozVec2f(f / 2, 1));
  }
  set->setCoordSet(coordSet(points));
  set->setNormalSet(normalSet(normals));
  set->setColorSet(colorSet(colors));
  set->setTexCoordSet(texCoords);
  set->setPrimCount(static_cast<int>(c.lengths.size()));
  set->setNormalBindHack(normal);
  set->setColorBindHack(color);
  set->setTexCoordBindHack(texCoord);
  if (mode != NOT_INDEXED) {
    std::vector<int> order;
    for (int i = 0; i < ELEMENTS; ++i) order.push_back(indexed(i));
    ozIndexSet *const index = indexSet(order);
    set->setCoordIndexSet(index);
    if (mode == SHARED_INDEX) {
      set->setNormalIndexSet(index);
      set->setColorIndexSet(index);
      set->setTexCoordIndexSet(index);
    }
  }
  return set;
}

class PrimDraw : public DrawTest {
protected:
  // Calls visit for every combination of bindings and indices.
  void forAll(Case const &c, std::function<void(ozGeoSet *, Expected)> const &visit) {
    for (int normal = 0; normal < 4; ++normal)
      for (int color = 0; color < 4; ++color)
        for (int texCoord = 0; texCoord < 2; ++texCoord)
          for (IndexMode mode : {NOT_INDEXED, SHARED_INDEX, SPLIT_INDEX}) {
            SCOPED_TRACE(std::string(c.name) + ", normal " + num(normal) + ", color " + num(color) + ", texCoord " +
                         num(texCoord) + ", index " + num(mode));
            Held<ozGeoSet> set(makeSet(c, normal, color, texCoord, mode));
            visit(set.get(), Expected(c, normal, color, texCoord, mode));
          }
  }
};

TEST_F(PrimDraw, EveryBindingReachesOpenGLThroughItsPath) {
  for (Case const &c : cases())
    forAll(c, [&](ozGeoSet *set, Expected expected) { EXPECT_EQ(draw(set), expected.calls({}, false)); });
}

TEST_F(PrimDraw, ASecondDrawSendsTheSame) {
  for (Case const &c : cases())
    forAll(c, [&](ozGeoSet *set, Expected) {
      Calls const first = draw(set);
      EXPECT_EQ(draw(set), first);
    });
}

// A point that the mode lets pass has the threshold 0, another 2, which no cosine reaches.
void giveCullData(ozGeoSet *set, std::vector<bool> const &front) {
  size_t const count = front.size();
  ozVec3f *const points = static_cast<ozVec3f *>(calloc(count, sizeof(ozVec3f)));
  ozVec3f *const centers = static_cast<ozVec3f *>(calloc(count, sizeof(ozVec3f)));
  float *const deltas = static_cast<float *>(calloc(count, sizeof(float)));
  for (size_t i = 0; i < count; ++i) {
    centers[i].set(0.0f, 0.0f, 1.0f);
    deltas[i] = front[i] ? 0.0f : 2.0f;
  }
  set->setBPCullPoint(points);
  set->setBPCullCenter(centers);
  set->setBPCullDelta(deltas);
}

TEST_F(PrimDraw, PrimitivesThatFaceAwayAreLeftOutInEveryPath) {
  action.setBPCullMode(ozDrawAction::FRONT_BPC);
  for (Case const &c : cases()) {
    std::vector<bool> front(c.lengths.size(), true);
    front[1] = false;
    forAll(c, [&](ozGeoSet *set, Expected expected) {
      giveCullData(set, front);
      EXPECT_EQ(draw(set), expected.calls(front, c.culls));
    });
  }
}

TEST_F(PrimDraw, TheOtherModesDrawThosePrimitivesThatFaceAway) {
  for (int mode : {2, 7}) {
    action.setBPCullMode(static_cast<ozDrawAction::BpcModeEnum>(mode));
    for (Case const &c : cases()) {
      std::vector<bool> front(c.lengths.size(), true), away(c.lengths.size(), false);
      front[1] = false;
      away[1] = true;
      forAll(c, [&](ozGeoSet *set, Expected expected) {
        giveCullData(set, front);
        EXPECT_EQ(draw(set), expected.calls(away, c.culls));
      });
    }
  }
}

TEST_F(PrimDraw, WithoutDataModeOneDrawsAllAndTheOthersNone) {
  for (Case const &c : cases()) {
    std::vector<bool> const all(c.lengths.size(), true), none(c.lengths.size(), false);
    action.setBPCullMode(ozDrawAction::FRONT_BPC);
    forAll(c, [&](ozGeoSet *set, Expected expected) { EXPECT_EQ(draw(set), expected.calls(all, c.culls)); });
    action.setBPCullMode(ozDrawAction::BACK_BPC);
    forAll(c, [&](ozGeoSet *set, Expected expected) { EXPECT_EQ(draw(set), expected.calls(none, c.culls)); });
  }
}

TEST_F(PrimDraw, TheArraysOfTheSetsAreWhatOpenGLReads) {
  Held<ozGeoSet> set(makeSet(cases()[3], 3, 3, 1, NOT_INDEXED));
  GLRecorder rec;
  set->draw(&action);
  auto const address = [&](char const *name) { return rec.named(name).at(0).args.back(); };
  EXPECT_EQ(address("glVertexPointer"), addressArg(static_cast<ozCoordSet3f *>(set->getCoordSet())->point()->edit()));
  EXPECT_EQ(address("glNormalPointer"),
            addressArg(static_cast<ozNormalSet3f *>(set->getNormalSet())->vector()->edit()));
  EXPECT_EQ(address("glColorPointer"), addressArg(static_cast<ozColorSet3f *>(set->getColorSet())->color()->edit()));
  EXPECT_EQ(address("glTexCoordPointer"),
            addressArg(static_cast<ozTexCoordSet2f *>(set->getTexCoordSet())->point()->edit()));
}

TEST_F(PrimDraw, NoPrimitivesSendAnEmptyGroupInImmediateMode) {
  Held<ozGeoSet> set(makeSet(cases()[3], 0, 3, 0, SPLIT_INDEX));
  set->setPrimCount(0);
  EXPECT_EQ(draw(set.get()), (Calls{"glBegin(GL_TRIANGLES)", "glEnd()"}));
}

TEST_F(PrimDraw, AStripOfOneVertexSendsTwoInImmediateMode) {
  Held<ozTriStripSet> set(new ozTriStripSet);
  set->setCoordSet(coordSet(somePoints(6)));
  set->setCoordIndexSet(indexSet({0, 1, 2, 3, 4, 5}));
  set->setNormalSet(normalSet({ozVec3f(0, 0, 1)}));
  set->setNormalBind(ozGeoSet::OVERALL_NORMAL);
  setLengths(set->stripLength(), {1, 3});
  set->setPrimCount(2);
  EXPECT_EQ(draw(set.get()),
            (Calls{"glNormal3fv(0, 0, 1)", "glBegin(GL_TRIANGLE_STRIP)", vertexCall(0), vertexCall(1), "glEnd()",
                   "glBegin(GL_TRIANGLE_STRIP)", vertexCall(2), vertexCall(3), vertexCall(4), "glEnd()"}));
}

TEST_F(PrimDraw, ALineStripWithoutVerticesSendsOneInImmediateMode) {
  Held<ozLineStripSet> set(new ozLineStripSet);
  set->setCoordSet(coordSet(somePoints(6)));
  set->setCoordIndexSet(indexSet({0, 1, 2, 3, 4, 5}));
  set->setNormalSet(normalSet({ozVec3f(0, 0, 1)}));
  set->setNormalBind(ozGeoSet::OVERALL_NORMAL);
  setLengths(set->stripLength(), {0, 2});
  set->setPrimCount(2);
  EXPECT_EQ(draw(set.get()), (Calls{"glNormal3fv(0, 0, 1)", "glBegin(GL_LINE_STRIP)", vertexCall(0), "glEnd()",
                                    "glBegin(GL_LINE_STRIP)", vertexCall(1), vertexCall(2), "glEnd()"}));
}

TEST_F(PrimDraw, TheFoldOfAPointSetLastsUntilTheBindingsChange) {
  Held<ozPointSet> set(new ozPointSet);
  set->setCoordSet(coordSet(somePoints(2)));
  set->setColorSet(colorSet({ozVec3f(0, 0, 0), ozVec3f(1, 1, 1)}));
  set->setColorBind(ozGeoSet::PER_PRIM_COLOR);
  set->setPrimCount(2);
  for (int i = 0; i < 2; ++i) {
    GLRecorder rec;
    set->draw(&action);
    EXPECT_EQ(rec.count("glEnableClientState(GL_COLOR_ARRAY)"), 1);
  }
  set->calcBindings(); // undoes the fold, and the next draw redoes it
  {
    GLRecorder rec;
    set->draw(&action);
    EXPECT_EQ(rec.count("glEnableClientState(GL_COLOR_ARRAY)"), 1);
  }
  set->setColorBind(ozGeoSet::NO_COLOR);
  GLRecorder rec;
  set->draw(&action);
  EXPECT_EQ(rec.count("glDisableClientState(GL_COLOR_ARRAY)"), 1);
}

TEST_F(PrimDraw, ShortNormalsAndColorsWithAlphaAreSentAsTheyAre) {
  Held<ozTriSet> set(triSet(somePoints(3), 1));
  ozNormalSet3s *const normals = new ozNormalSet3s;
  normals->vector()->set(0, ozVec3s(1, 2, 32767));
  ozColorSet4f *const colors = new ozColorSet4f;
  colors->color()->set(0, ozVec4f(0.25f, 0.5f, 0.75f, 1));
  set->setNormalSet(normals);
  set->setNormalBind(ozGeoSet::OVERALL_NORMAL);
  set->setColorSet(colors);
  set->setColorBind(ozGeoSet::OVERALL_COLOR);
  Calls const calls = draw(set.get());
  ASSERT_GE(calls.size(), 2u);
  EXPECT_EQ(calls[0], "glNormal3sv(1, 2, 32767)");
  EXPECT_EQ(calls[1], "glColor4fv(0.25, 0.5, 0.75, 1)");
}

} // namespace
