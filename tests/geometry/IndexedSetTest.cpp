#include "geometryFixture.h"

namespace {

std::vector<int> list(ozMFInt *field) {
  std::vector<int> values;
  for (unsigned int i = 0; i < field->getCount(); ++i) values.push_back(field->get(i));
  return values;
}

std::vector<int> list(ozIndexSet *set) { return set ? list(set->index()) : std::vector<int>{-99}; }

void fill(ozMFInt *field, std::vector<int> const &values) {
  field->setRange(0, static_cast<unsigned int>(values.size()), values.data());
}

typedef std::vector<int> Ints;

std::string textOf(ozObject *object) {
  char *text = nullptr;
  size_t size = 0;
  FILE *const file = open_memstream(&text, &size);
  {
    ozOutput out(file);
    object->write(&out);
  }
  fclose(file);
  std::string const result(text, size);
  free(text);
  return result;
}

/// Two triangles over four points.
ozIndexedFaceSet *twoFaces() {
  ozIndexedFaceSet *const set = new ozIndexedFaceSet;
  set->setCoordSet(coordSet(somePoints(4)));
  fill(set->coordIndex(), {0, 1, 2, -1, 2, 1, 3, -1});
  return set;
}

struct FieldRow {
  char const *name;
  ozType *type;
};

void expectFields(ozContainer &object, int first, std::vector<FieldRow> const &rows) {
  ozType *const type = object.getType();
  ASSERT_EQ(first + static_cast<int>(rows.size()), type->getFieldInfoCount());
  for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
    EXPECT_STREQ(rows[i].name, type->getFieldInfo(first + i)->getName());
    EXPECT_EQ(rows[i].type, type->getFieldInfo(first + i)->getFieldType());
    EXPECT_TRUE(type->getFieldInfo(first + i)->isDefault(&object)) << rows[i].name;
  }
}

TEST(IndexedFaceSet, HasItsFieldsInPlace) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  EXPECT_STREQ("IndexedFaceSet", set->getType()->getName());
  EXPECT_EQ(ozPolySet::getClassType(), set->getType()->getAncestor());
  ozType *const byte = ozSFUByte::getClassType(), *const ints = ozMFInt::getClassType();
  expectFields(*set, 16,
               {{"ccw", byte},
                {"solid", byte},
                {"convex", byte},
                {"creaseAngle", ozSFFloat::getClassType()},
                {"coordIndex", ints},
                {"colorIndex", ints},
                {"texCoordIndex", ints},
                {"normalIndex", ints},
                {"colorPerVertex", byte},
                {"normalPerVertex", byte}});
  EXPECT_EQ(1, set->getCCW());
  EXPECT_EQ(1, set->getSolid());
  EXPECT_EQ(1, set->getConvex());
  EXPECT_EQ(0.0f, set->getCreaseAngle());
  EXPECT_EQ(1, set->getColorPerVertex());
  EXPECT_EQ(1, set->getNormalPerVertex());
}

TEST(IndexedFaceSet, BindsPerVertexAndOwnsAnIndexSetFromTheStart) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  EXPECT_EQ(ozGeoSet::PER_VERTEX_COLOR, set->getColorBind());
  EXPECT_EQ(ozGeoSet::PER_VERTEX_NORMAL, set->getNormalBind());
  ASSERT_NE(nullptr, set->getCoordIndexSet());
  EXPECT_EQ(ozContext::BACK_CULL, set->getCullFace());
}

TEST(IndexedFaceSet, FlattensItsIndicesWhenTheyAreRead) {
  Held<ozIndexedFaceSet> set(twoFaces());
  EXPECT_EQ(0u, list(set->polyLength()).size());
  EXPECT_EQ(2, set->getPrimCount());
  EXPECT_EQ((Ints{3, 3}), list(set->polyLength()));
  EXPECT_EQ((Ints{0, 1, 2, 2, 1, 3}), list(set->getCoordIndexSet()));
}

TEST(IndexedFaceSet, AListWithoutALastMarkStillClosesItsFace) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  fill(set->coordIndex(), {0, 1, 2, -1, 2, 1, 3, 4});
  EXPECT_EQ(2, set->getPrimCount());
  EXPECT_EQ((Ints{3, 4}), list(set->polyLength()));
}

TEST(IndexedFaceSet, TwoMarksInARowMakeAFaceOfNoCorners) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  fill(set->coordIndex(), {0, 1, 2, -1, -5, 3, 2, 1, -1});
  EXPECT_EQ(3, set->getPrimCount());
  EXPECT_EQ((Ints{3, 0, 3}), list(set->polyLength()));
}

TEST(IndexedFaceSet, AListThatShrinksKeepsItsStaleTail) {
  Held<ozIndexedFaceSet> set(twoFaces());
  set->getPrimCount();
  set->coordIndex()->setCount(4);
  EXPECT_EQ(2, set->getPrimCount());
  EXPECT_EQ((Ints{3, 3}), list(set->polyLength()));
}

TEST(IndexedFaceSet, AnEmptyListLeavesEverythingAsItWas) {
  Held<ozIndexedFaceSet> set(twoFaces());
  set->getPrimCount();
  set->coordIndex()->setCount(0);
  EXPECT_EQ(2, set->getPrimCount());
  EXPECT_EQ((Ints{0, 1, 2, 2, 1, 3}), list(set->getCoordIndexSet()));
}

TEST(IndexedFaceSet, SolidAndCcwDecideWhichFacesAreCulled) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  set->setCCW(0);
  EXPECT_EQ(ozContext::FRONT_CULL, set->getCullFace());
  set->setSolid(0);
  EXPECT_EQ(ozContext::NO_CULL, set->getCullFace());
  set->setCCW(1);
  EXPECT_EQ(ozContext::NO_CULL, set->getCullFace());
  set->setSolid(1);
  EXPECT_EQ(ozContext::BACK_CULL, set->getCullFace());
}

TEST(IndexedFaceSet, ConvexAndCreaseAngleAreStoredOnly) {
  Held<ozIndexedFaceSet> set(twoFaces());
  set->setConvex(0);
  set->setCreaseAngle(1.5f);
  EXPECT_EQ(0, set->getConvex());
  EXPECT_EQ(1.5f, set->getCreaseAngle());
  EXPECT_EQ(2, set->getPrimCount());
}

TEST(IndexedFaceSet, TheBindingsFollowTheirFlags) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  set->setColorPerVertex(0);
  set->setNormalPerVertex(0);
  EXPECT_EQ(ozGeoSet::PER_PRIM_COLOR, set->getColorBind());
  EXPECT_EQ(ozGeoSet::PER_PRIM_NORMAL, set->getNormalBind());
  set->setColorPerVertex(1);
  set->setNormalPerVertex(1);
  EXPECT_EQ(ozGeoSet::PER_VERTEX_COLOR, set->getColorBind());
  EXPECT_EQ(ozGeoSet::PER_VERTEX_NORMAL, set->getNormalBind());
}

TEST(IndexedFaceSet, PerVertexAnUnwrittenListFollowsTheCoordinatesAndSharesTheirSet) {
  Held<ozIndexedFaceSet> set(twoFaces());
  set->cleanFields();
  EXPECT_EQ(set->getCoordIndexSet(), set->getColorIndexSet());
  EXPECT_EQ(set->getCoordIndexSet(), set->getNormalIndexSet());
  EXPECT_EQ(set->getCoordIndexSet(), set->getTexCoordIndexSet());
}

TEST(IndexedFaceSet, PerFaceAnUnwrittenListGoesByTheFacesOrder) {
  Held<ozIndexedFaceSet> set(twoFaces());
  set->setColorPerVertex(0);
  set->setNormalPerVertex(0);
  EXPECT_EQ(nullptr, set->getColorIndexSet());
  EXPECT_EQ(nullptr, set->getNormalIndexSet());
  set->setColorPerVertex(1);
  EXPECT_EQ(set->getCoordIndexSet(), set->getColorIndexSet());
}

TEST(IndexedFaceSet, AWrittenListGetsAnIndexSetOfItsOwn) {
  Held<ozIndexedFaceSet> set(twoFaces());
  fill(set->colorIndex(), {5, 4, 3, -1, 2, 1, 0, -1});
  fill(set->normalIndex(), {1, 1, 1, -1, 0, 0, 0, -1});
  fill(set->texCoordIndex(), {7, 8, 9});
  EXPECT_EQ((Ints{5, 4, 3, 2, 1, 0}), list(set->getColorIndexSet()));
  EXPECT_EQ((Ints{1, 1, 1, 0, 0, 0}), list(set->getNormalIndexSet()));
  EXPECT_EQ((Ints{7, 8, 9}), list(set->getTexCoordIndexSet()));
  EXPECT_NE(set->getColorIndexSet(), set->getNormalIndexSet());
  set->colorIndex()->setCount(0);
  EXPECT_EQ(set->getCoordIndexSet(), set->getColorIndexSet());
}

TEST(IndexedFaceSet, AnIndexSetFromTheApplicationStays) {
  Held<ozIndexedFaceSet> set(twoFaces());
  ozIndexSet *const mine = indexSet({0, 0, 0, 1, 1, 1});
  set->setNormalIndexSet(mine);
  set->cleanFields();
  set->setNormalPerVertex(0);
  EXPECT_EQ(mine, set->getNormalIndexSet());
}

TEST(IndexedFaceSet, AChangeOfTheListMakesTheBoundStale) {
  Held<ozIndexedFaceSet> set(twoFaces());
  ozBoxBound box;
  set->getBoxBound(box);
  EXPECT_TRUE(box.max == ozVec3f(3, 6, 0));
  set->coordIndex()->set(6, 1);
  set->getBoxBound(box);
  EXPECT_TRUE(box.max == ozVec3f(2, 4, 0));
}

TEST(IndexedFaceSet, ACloneHasIndexSetsOfItsOwn) {
  for (int mode = 0; mode < 3; ++mode) {
    Held<ozIndexedFaceSet> set(twoFaces());
    fill(set->normalIndex(), {1, 1, 1, -1, 0, 0, 0, -1});
    set->cleanFields();
    Held<ozIndexedFaceSet> copy(static_cast<ozIndexedFaceSet *>(set->clone(static_cast<ozContainer::CloneEnum>(mode))));
    EXPECT_NE(set->getCoordIndexSet(), copy->getCoordIndexSet());
    EXPECT_NE(set->getNormalIndexSet(), copy->getNormalIndexSet());
    EXPECT_EQ(copy->getCoordIndexSet(), copy->getColorIndexSet());
    EXPECT_EQ((Ints{0, 1, 2, 2, 1, 3}), list(copy->getCoordIndexSet()));
    EXPECT_EQ((Ints{1, 1, 1, 0, 0, 0}), list(copy->getNormalIndexSet()));
    copy->coordIndex()->set(0, 3);
    EXPECT_EQ((Ints{3, 1, 2, 2, 1, 3}), list(copy->getCoordIndexSet()));
    EXPECT_EQ((Ints{0, 1, 2, 2, 1, 3}), list(set->getCoordIndexSet()));
    EXPECT_EQ(2, copy->getPrimCount());
  }
}

TEST(IndexedFaceSet, ACopyConstructedOneIsASetOfItsOwn) {
  Held<ozIndexedFaceSet> set(twoFaces());
  set->setColorPerVertex(0);
  set->cleanFields();
  Held<ozIndexedFaceSet> copy(new ozIndexedFaceSet(*set));
  EXPECT_EQ(ozGeoSet::PER_PRIM_COLOR, copy->getColorBind());
  EXPECT_NE(set->getCoordIndexSet(), copy->getCoordIndexSet());
  EXPECT_EQ((Ints{0, 1, 2, 2, 1, 3}), list(copy->getCoordIndexSet()));
  EXPECT_EQ(set->getCoordSet(), copy->getCoordSet());
  Held<ozIndexedFaceSet> assigned(new ozIndexedFaceSet);
  *assigned = *set;
  EXPECT_EQ((Ints{0, 1, 2, 2, 1, 3}), list(assigned->getCoordIndexSet()));
  EXPECT_NE(set->getCoordIndexSet(), assigned->getCoordIndexSet());
  EXPECT_EQ(2, assigned->getPrimCount());
}

TEST(IndexedFaceSet, WritesItsFieldsInAnOrderOfItsOwn) {
  Held<ozIndexedFaceSet> set(twoFaces());
  set->setColorSet(colorSet({ozVec3f(1, 0, 0)}));
  set->setNormalSet(normalSet({ozVec3f(0, 0, 1)}));
  fill(set->colorIndex(), {0, 0, 0});
  fill(set->normalIndex(), {0, 0, 0});
  fill(set->texCoordIndex(), {0, 0, 0});
  set->setColorPerVertex(0);
  set->setNormalPerVertex(0);
  set->setSolid(0);
  set->setCCW(0);
  set->setConvex(0);
  set->setCreaseAngle(1);
  std::string const text = textOf(set.get());
  size_t at = 0;
  for (char const *name : {"\nIndexedFaceSet {\n  boxBound ", "\n  colorPerVertex 0x0", "\n  normalPerVertex 0x0",
                           "\n  colorSet ", "\n  normalSet ", "\n  coordSet ", "\n  colorIndex ", "\n  normalIndex ",
                           "\n  texCoordIndex ", "\n  coordIndex "}) {
    at = text.find(name, at);
    ASSERT_NE(std::string::npos, at) << name << text;
  }
  for (char const *name : {"ccw", "solid", "convex", "creaseAngle", "polyLength", "primCount", "cullFace", "IndexSet"})
    EXPECT_EQ(std::string::npos, text.find(name)) << name;
  EXPECT_EQ("\n}", text.substr(text.size() - 2));
}

class IndexedDraw : public DrawTest {};

TEST_F(IndexedDraw, FacesGoThroughVertexArraysWhileAllFollowTheCoordinates) {
  Held<ozIndexedFaceSet> set(twoFaces());
  set->setNormalSet(normalSet(somePoints(4)));
  GLRecorder rec;
  set->draw(&action);
  EXPECT_EQ(2, rec.count("glDrawElements"));
  EXPECT_EQ(0, rec.count("glBegin"));
}

TEST_F(IndexedDraw, AConcaveFaceIsOnePolygonWhateverConvexSays) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  set->setCoordSet(coordSet(somePoints(5)));
  fill(set->coordIndex(), {0, 1, 2, 3, 4, -1});
  set->setConvex(0);
  GLRecorder rec;
  set->draw(&action);
  ASSERT_EQ(1, rec.count("glDrawElements"));
  EXPECT_EQ(0u, textsOf(rec.named("glDrawElements"))[0].find("glDrawElements(GL_POLYGON, 5,"));
}

TEST_F(IndexedDraw, FacesWithAListOfTheirOwnGoVertexByVertex) {
  Held<ozIndexedFaceSet> set(twoFaces());
  set->setNormalSet(normalSet(somePoints(4)));
  fill(set->normalIndex(), {3, 3, 3, -1, 2, 2, 2, -1});
  GLRecorder rec;
  set->draw(&action);
  EXPECT_EQ(0, rec.count("glDrawElements"));
  EXPECT_EQ(6, rec.count("glVertex3fv"));
  EXPECT_EQ((Calls{"glNormal3fv(3, 6, -3)", "glNormal3fv(3, 6, -3)", "glNormal3fv(3, 6, -3)", "glNormal3fv(2, 4, -2)",
                   "glNormal3fv(2, 4, -2)", "glNormal3fv(2, 4, -2)"}),
            textsOf(rec.named("glNormal3fv")));
}

TEST_F(IndexedDraw, ColoursPerFaceGoByTheFacesOrder) {
  Held<ozIndexedFaceSet> set(twoFaces());
  set->setColorSet(colorSet({ozVec3f(1, 0, 0), ozVec3f(0, 1, 0)}));
  set->setColorPerVertex(0);
  GLRecorder rec;
  set->draw(&action);
  EXPECT_EQ((Calls{"glColor3fv(1, 0, 0)", "glColor3fv(0, 1, 0)"}), textsOf(rec.named("glColor3fv")));
}

// ---- lines

ozIndexedLineSet *twoLines() {
  ozIndexedLineSet *const set = new ozIndexedLineSet;
  set->setCoordSet(coordSet(somePoints(4)));
  fill(set->coordIndex(), {0, 1, 2, -1, 3, 0, -1});
  return set;
}

TEST(IndexedLineSet, HasItsFieldsInPlace) {
  Held<ozIndexedLineSet> set(new ozIndexedLineSet);
  EXPECT_STREQ("IndexedLineSet", set->getType()->getName());
  EXPECT_EQ(ozLineStripSet::getClassType(), set->getType()->getAncestor());
  expectFields(*set, 17,
               {{"coordIndex", ozMFInt::getClassType()},
                {"colorIndex", ozMFInt::getClassType()},
                {"colorPerVertex", ozSFUByte::getClassType()}});
  EXPECT_EQ(ozGeoSet::PER_VERTEX_COLOR, set->getColorBind());
  EXPECT_EQ(1, set->getColorPerVertex());
  EXPECT_EQ(1, set->getBPCullPrimNormModeEnable());
}

TEST(IndexedLineSet, FlattensItsIndicesAtOnce) {
  Held<ozIndexedLineSet> set(twoLines());
  EXPECT_EQ((Ints{3, 2}), list(set->stripLength()));
  EXPECT_EQ((Ints{0, 1, 2, 3, 0}), list(set->getCoordIndexSet()));
  EXPECT_EQ(2, set->getPrimCount());
}

TEST(IndexedLineSet, AListThatShrinksKeepsItsStaleTail) {
  Held<ozIndexedLineSet> set(twoLines());
  set->coordIndex()->setCount(4);
  EXPECT_EQ((Ints{3, 2}), list(set->stripLength()));
  EXPECT_EQ(2, set->getPrimCount());
  set->coordIndex()->setCount(0);
  EXPECT_EQ((Ints{0, 1, 2, 3, 0}), list(set->getCoordIndexSet()));
}

TEST(IndexedLineSet, AListWithoutALastMarkStillClosesItsLine) {
  Held<ozIndexedLineSet> set(new ozIndexedLineSet);
  fill(set->coordIndex(), {0, 1, -1, -1, 2, 1});
  EXPECT_EQ((Ints{2, 0, 2}), list(set->stripLength()));
  EXPECT_EQ(3, set->getPrimCount());
}

TEST(IndexedLineSet, ColoursFollowTheCoordinatesUnlessTheyHaveAList) {
  Held<ozIndexedLineSet> set(twoLines());
  EXPECT_EQ(set->getCoordIndexSet(), set->getColorIndexSet());
  fill(set->colorIndex(), {4, 3, 2, -1, 1, 0, -1});
  EXPECT_EQ((Ints{4, 3, 2, 1, 0}), list(set->getColorIndexSet()));
  set->colorIndex()->setCount(0);
  set->setColorPerVertex(0);
  EXPECT_EQ(ozGeoSet::PER_PRIM_COLOR, set->getColorBind());
  EXPECT_EQ(nullptr, set->getColorIndexSet());
}

TEST(IndexedLineSet, ACloneHasIndexSetsOfItsOwn) {
  for (int mode = 0; mode < 3; ++mode) {
    Held<ozIndexedLineSet> set(twoLines());
    Held<ozIndexedLineSet> copy(static_cast<ozIndexedLineSet *>(set->clone(static_cast<ozContainer::CloneEnum>(mode))));
    EXPECT_NE(set->getCoordIndexSet(), copy->getCoordIndexSet());
    EXPECT_EQ((Ints{0, 1, 2, 3, 0}), list(copy->getCoordIndexSet()));
    EXPECT_EQ(copy->getCoordIndexSet(), copy->getColorIndexSet());
    copy->coordIndex()->set(0, 3);
    EXPECT_EQ(0, set->getCoordIndexSet()->index()->get(0));
    EXPECT_EQ(3, copy->getCoordIndexSet()->index()->get(0));
  }
}

TEST(IndexedLineSet, WritesItsFieldsInAnOrderOfItsOwn) {
  Held<ozIndexedLineSet> set(twoLines());
  set->setColorSet(colorSet({ozVec3f(1, 0, 0)}));
  set->setColorPerVertex(0);
  fill(set->colorIndex(), {0, 0});
  set->setWidth(5);
  std::string const text = textOf(set.get());
  size_t at = 0;
  for (char const *name : {"\nIndexedLineSet {\n  boxBound ", "\n  colorPerVertex 0x0", "\n  colorSet ",
                           "\n  coordSet ", "\n  colorIndex ", "\n  coordIndex "}) {
    at = text.find(name, at);
    ASSERT_NE(std::string::npos, at) << name << text;
  }
  for (char const *name : {"width", "stripLength", "primCount", "IndexSet"})
    EXPECT_EQ(std::string::npos, text.find(name)) << name;
}

TEST_F(IndexedDraw, LinesAreNeverLitOrTexturedAndTheApplicationsSettingsStand) {
  Held<ozIndexedLineSet> set(twoLines());
  context->setLightEnable(1);
  context->setTexEnable(1);
  GLRecorder rec;
  set->draw(&action);
  int const drawn = rec.find("glDrawElements");
  ASSERT_GE(drawn, 0);
  EXPECT_LT(rec.find("glDisable(GL_LIGHTING)"), drawn);
  EXPECT_LT(rec.find("glDisable(GL_TEXTURE_2D)"), drawn);
  EXPECT_GT(rec.find("glEnable(GL_LIGHTING)"), drawn);
  EXPECT_GT(rec.find("glEnable(GL_TEXTURE_2D)"), drawn);
  EXPECT_EQ(1, context->getLightEnable());
  EXPECT_EQ(1, context->getTexEnable());
}

TEST_F(IndexedDraw, UnlitLinesAreDrawnDirectly) {
  Held<ozIndexedLineSet> set(twoLines());
  GLRecorder rec;
  set->draw(&action);
  EXPECT_EQ(0, rec.count("glDisable(GL_LIGHTING)"));
  EXPECT_EQ(0, rec.count("glColor3f"));
}

TEST_F(IndexedDraw, LinesWithoutAColourBindingAreWhite) {
  Held<ozIndexedLineSet> set(twoLines());
  set->setColorBind(ozGeoSet::NO_COLOR);
  GLRecorder rec;
  set->draw(&action);
  EXPECT_EQ(1, rec.count("glColor3f(1, 1, 1)"));
}

TEST_F(IndexedDraw, TheWidthOfIndexedLinesIsNotDrawnWith) {
  Held<ozIndexedLineSet> set(twoLines());
  set->setWidth(5);
  GLRecorder rec;
  set->draw(&action);
  EXPECT_EQ(0, rec.count("glLineWidth(5)"));
}

} // namespace
