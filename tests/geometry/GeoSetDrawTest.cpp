// What a draw does ahead of the primitives, and the screen door.

#include "geometry/geometryFixture.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

class GeoSetDraw : public DrawTest {
protected:
  // An immediate-mode set of n triangles with a colour for the set, a primitive or a vertex.
  ozTriSet *coloredSet(int prims, ozGeoSet::ColorBindEnum bind, ozColorSet *colors) {
    ozTriSet *const set = triSet(somePoints(3 * prims), prims);
    set->setColorSet(colors);
    set->setColorBind(bind);
    return set;
  }

  // The state that switches the screen door on.
  void openDoor(ozContext::TranspModeEnum mode = ozContext::SCREEN_DOOR_TRANSP) {
    context->setTranspMode(mode);
    context->setTranspEnable(1);
  }
};

// The pattern of `level` bits of 1024, from the published rule: bit col of row row is set when the interleaved number
// of row ^ col and row, its highest bits from their lowest, is below the level.
std::vector<unsigned int> stipple(int level) {
  std::vector<unsigned int> rows(32);
  for (int row = 0; row < 32; ++row)
    for (int col = 0; col < 32; ++col) {
      int m = 0;
      for (int bit = 0; bit < 5; ++bit) {
        int const from = 4 - bit; // bit 4 comes lowest
        m |= ((row ^ col) >> from & 1) << (2 * bit + 1);
        m |= (row >> from & 1) << (2 * bit);
      }
      if (m < level) rows[static_cast<size_t>(row)] |= 1u << col;
    }
  return rows;
}

std::vector<unsigned int> stippleOf(GLCall const &call) {
  std::vector<unsigned int> rows(32);
  std::vector<unsigned char> bytes;
  for (double value : call.args) bytes.push_back(static_cast<unsigned char>(value));
  EXPECT_EQ(bytes.size(), 128u);
  memcpy(rows.data(), bytes.data(), 128);
  return rows;
}

TEST_F(GeoSetDraw, WithoutCoordinatesNothingIsDrawn) {
  Held<ozTriSet> set(new ozTriSet);
  set->setPrimCount(3);
  EXPECT_EQ(draw(set.get()), Calls());
}

TEST_F(GeoSetDraw, CullsAsTheDefaultStateSaysUntilACullFaceIsSet) {
  context->setCullFace(ozContext::FRONT_CULL);
  Held<ozTriSet> set(triSet(somePoints(3), 1));
  EXPECT_EQ(draw(set.get()).size(), 6u); // the arrays and one call: FRONT_CULL is in force already
  EXPECT_EQ(context->getCullFace(), ozContext::FRONT_CULL);
  set->setCullFace(ozContext::BACK_CULL);
  draw(set.get());
  EXPECT_EQ(context->getCullFace(), ozContext::BACK_CULL);
}

TEST_F(GeoSetDraw, ItsOwnStateDoesNotBecomeTheDefault) {
  Held<ozTriSet> set(triSet(somePoints(3), 1));
  set->setCullFace(ozContext::BACK_CULL);
  draw(set.get());
  EXPECT_EQ(context->getDefaultState().cullFace, ozContext::NO_CULL);
  context->setCullFace(ozContext::FRONT_CULL); // after the draw, setters write the default state again
  EXPECT_EQ(context->getDefaultState().cullFace, ozContext::FRONT_CULL);
}

TEST_F(GeoSetDraw, WithoutColorsItIsWhiteWhereColorsWouldReplaceTheMaterial) {
  Held<ozTriSet> set(triSet(somePoints(3), 1));
  EXPECT_EQ(draw(set.get())[0], "glDisableClientState(GL_COLOR_ARRAY)");
  context->setMaterialModeEnable(ozContext::COLOR_MATERIAL);
  EXPECT_EQ(draw(set.get())[0], "glColor4f(1, 1, 1, 1)");
}

TEST_F(GeoSetDraw, WithColorsItIsNotMadeWhite) {
  context->setMaterialModeEnable(ozContext::COLOR_MATERIAL);
  Held<ozTriSet> set(coloredSet(1, ozGeoSet::OVERALL_COLOR, colorSet({ozVec3f(1, 0, 0)})));
  EXPECT_EQ(draw(set.get())[0], "glColor3fv(1, 0, 0)");
}

TEST_F(GeoSetDraw, BringsItsSetsUpToDateFirst) {
  Held<ozTriSet> set(triSet(somePoints(3), 1));
  Held<ozCoordSet3f> source(coordSet({ozVec3f(0, 0, 0), ozVec3f(1, 0, 0), ozVec3f(0, 1, 0)}));
  source->connect(0, set->getCoordSet(), 0);
  Held<ozTriSet> counter(new ozTriSet);
  counter->connect(2, set.get(), 2);
  source->point()->set(2, ozVec3f(7, 8, 9));
  counter->setPrimCount(1);
  set->setNormalSet(normalSet({ozVec3f(0, 0, 1)}));
  set->setNormalBind(ozGeoSet::OVERALL_NORMAL);
  set->setNormalIndexSet(indexSet({0})); // its own index: immediate mode
  Calls const calls = draw(set.get());
  ASSERT_EQ(calls.size(), 6u);
  EXPECT_EQ(calls[4], "glVertex3fv(7, 8, 9)");
}

TEST_F(GeoSetDraw, ClientArraysAreSetAnewByEveryDraw) {
  Held<ozTriSet> second(triSet(somePoints(3), 1));
  {
    Held<ozTriSet> first(coloredSet(1, ozGeoSet::PER_VERTEX_COLOR, colorSet(somePoints(3))));
    EXPECT_EQ(draw(first.get())[0], "glEnableClientState(GL_COLOR_ARRAY)");
  }
  // The first set's colours are gone.
  EXPECT_EQ(draw(second.get()),
            (Calls{"glDisableClientState(GL_COLOR_ARRAY)", "glDisableClientState(GL_NORMAL_ARRAY)",
                   "glDisableClientState(GL_TEXTURE_COORD_ARRAY)", "glEnableClientState(GL_VERTEX_ARRAY)",
                   "glVertexPointer(3, GL_FLOAT, 12, ptr)", "glDrawArrays(GL_TRIANGLES, 0, 3)"}));
}

// ---- the screen door

TEST_F(GeoSetDraw, TheScreenDoorTakesTheFourthFloatAsTransparency) {
  openDoor();
  struct {
    float alpha;
    int level;
  } const rows[] = {{0, 1024}, {1, 0}, {0.5f, 512}, {0.25f, 768}, {-3, 1024}, {7, 0}, {0.9996f, 0}, {0.9995f, 1}};
  for (auto const &row : rows) {
    ozColorSet4f *const colors = new ozColorSet4f;
    colors->color()->set(0, ozVec4f(1, 0, 0, row.alpha));
    Held<ozTriSet> set(coloredSet(1, ozGeoSet::OVERALL_COLOR, colors));
    GLRecorder rec;
    set->draw(&action);
    ASSERT_EQ(rec.count("glPolygonStipple"), 1) << row.alpha;
    EXPECT_EQ(stippleOf(rec.named("glPolygonStipple")[0]), stipple(row.level)) << row.alpha;
    EXPECT_EQ(rec.find("glPolygonStipple") + 1, rec.find("glColor4fv"));
  }
}

TEST_F(GeoSetDraw, TheScreenDoorIsSafeForAColorThatIsNoNumber) {
  openDoor();
  ozColorSet4f *const colors = new ozColorSet4f;
  colors->color()->set(0, ozVec4f(1, 0, 0, std::numeric_limits<float>::quiet_NaN()));
  Held<ozTriSet> set(coloredSet(1, ozGeoSet::OVERALL_COLOR, colors));
  GLRecorder rec;
  set->draw(&action);
  EXPECT_EQ(stippleOf(rec.named("glPolygonStipple").at(0)), stipple(1024));
}

TEST_F(GeoSetDraw, TheScreenDoorReadsTheNextColorBehindThreeFloats) {
  openDoor(ozContext::FAST_TRANSP);
  // Per primitive: behind the first stands the second's red, behind the last nothing, which is 0.
  Held<ozTriSet> set(coloredSet(2, ozGeoSet::PER_PRIM_COLOR, colorSet({ozVec3f(1, 0, 0), ozVec3f(0.75f, 0, 0)})));
  GLRecorder rec;
  set->draw(&action);
  auto const stipples = rec.named("glPolygonStipple");
  ASSERT_EQ(stipples.size(), 2u);
  EXPECT_EQ(stippleOf(stipples[0]), stipple(256));
  EXPECT_EQ(stippleOf(stipples[1]), stipple(1024));
}

TEST_F(GeoSetDraw, TheScreenDoorDoesNotFollowTheIndex) {
  openDoor();
  ozColorSet4f *const colors = new ozColorSet4f;
  colors->color()->set(0, ozVec4f(1, 1, 1, 0.5f));
  colors->color()->set(1, ozVec4f(1, 1, 1, 1));
  Held<ozTriSet> set(coloredSet(2, ozGeoSet::PER_PRIM_COLOR, colors));
  set->setColorIndexSet(indexSet({1, 1}));
  GLRecorder rec;
  set->draw(&action);
  EXPECT_EQ(rec.count("glColor4fv(1, 1, 1, 1)"), 2);
  ASSERT_EQ(rec.count("glPolygonStipple"), 2);
  for (GLCall const &call : rec.named("glPolygonStipple")) EXPECT_EQ(stippleOf(call), stipple(512));
}

TEST_F(GeoSetDraw, TheScreenDoorSendsTheNormalFirst) {
  openDoor();
  Held<ozTriSet> set(coloredSet(1, ozGeoSet::OVERALL_COLOR, colorSet({ozVec3f(1, 0, 0)})));
  set->setNormalSet(normalSet({ozVec3f(0, 0, 1)}));
  set->setNormalBind(ozGeoSet::OVERALL_NORMAL);
  GLRecorder rec;
  set->draw(&action);
  EXPECT_EQ(rec.find("glNormal3fv"), 0);
  EXPECT_EQ(rec.find("glPolygonStipple"), 1);
  EXPECT_EQ(rec.find("glColor3fv"), 2);
}

TEST_F(GeoSetDraw, TheScreenDoorIsForItsModesAlone) {
  for (int mode = 0; mode < 4; ++mode)
    for (int on = 0; on < 2; ++on) {
      context->setTranspMode(static_cast<ozContext::TranspModeEnum>(mode));
      context->setTranspEnable(static_cast<unsigned char>(on));
      for (ozGeoSet::ColorBindEnum bind : {ozGeoSet::OVERALL_COLOR, ozGeoSet::PER_PRIM_COLOR}) {
        Held<ozTriSet> set(coloredSet(1, bind, colorSet({ozVec3f(1, 0, 0)})));
        GLRecorder rec;
        set->draw(&action);
        EXPECT_EQ(rec.count("glPolygonStipple"), on && (mode == 0 || mode == 3) ? 1 : 0) << mode << on << bind;
        EXPECT_EQ(rec.count("glColor3fv(1, 0, 0)"), 1);
      }
    }
}

TEST_F(GeoSetDraw, ColorsOfVerticesHaveNoStipple) {
  openDoor();
  Held<ozTriSet> set(coloredSet(1, ozGeoSet::PER_VERTEX_COLOR, colorSet(somePoints(3))));
  GLRecorder rec;
  set->draw(&action);
  EXPECT_EQ(rec.count("glPolygonStipple"), 0);
}

TEST_F(GeoSetDraw, ATightViewOfColorsIsDrawnWithoutAStipple) {
  openDoor();
  ozData *const data = new (12) ozData;
  ozColorSet3f *const colors = new ozColorSet3f(data, 12, 0);
  colors->color()->setCount(1);
  Held<ozTriSet> set(coloredSet(1, ozGeoSet::OVERALL_COLOR, colors));
  GLRecorder rec;
  set->draw(&action);
  EXPECT_EQ(rec.count("glPolygonStipple"), 0);
  EXPECT_EQ(rec.count("glColor3fv"), 1);
}

// ---- widths and sizes

TEST_F(GeoSetDraw, LinesAreAsWideAsTheDefaultUntilAWidthIsSet) {
  context->setLineWidth(4);
  Held<ozLineSet> lines(new ozLineSet);
  lines->setCoordSet(coordSet(somePoints(2)));
  lines->setPrimCount(1);
  EXPECT_EQ(lines->getWidth(), 1.0f);
  draw(lines.get());
  EXPECT_EQ(context->getLineWidth(), 4.0f);
  lines->setWidth(1);
  Calls const calls = draw(lines.get());
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "glLineWidth(1)"), 1);
  EXPECT_EQ(context->getDefaultState().lineWidth, 4.0f);
  context->setLineWidth(4); // writes the default state: the draw has left it to
  EXPECT_EQ(context->getDefaultState().lineWidth, 4.0f);
}

TEST_F(GeoSetDraw, LineStripsHaveAWidthAlike) {
  Held<ozLineStripSet> lines(new ozLineStripSet);
  lines->setCoordSet(coordSet(somePoints(2)));
  setLengths(lines->stripLength(), {2});
  lines->setPrimCount(1);
  EXPECT_EQ(draw(lines.get()).size(), 6u);
  lines->setWidth(3);
  EXPECT_EQ(draw(lines.get())[0], "glLineWidth(3)");
}

TEST_F(GeoSetDraw, PointsAreAsLargeAsTheDefaultUntilASizeIsSet) {
  context->setPointSize(4);
  Held<ozPointSet> points(new ozPointSet);
  points->setCoordSet(coordSet(somePoints(2)));
  points->setPrimCount(2);
  EXPECT_EQ(points->getSize(), 1.0f);
  EXPECT_EQ(draw(points.get()).size(), 6u);
  points->setSize(2);
  EXPECT_EQ(draw(points.get())[0], "glPointSize(2)");
  EXPECT_EQ(context->getDefaultState().pointSize, 4.0f);
}

} // namespace
