#include <gtest/gtest.h>

#include <sys/stat.h>

#include "oz/vlDB.h"
#include "oz/vlError.h"
#include "oz/vlInput.h"
#include "readText.h"

namespace {

TEST(DB, AFileWithTheHeaderAloneGivesAnEmptyGroup) {
  Reading const r("");
  EXPECT_TRUE(r.ok);
  ASSERT_NE(nullptr, r.root);
  EXPECT_EQ(0, r.count());
  EXPECT_EQ("", r.messages);
  EXPECT_EQ(ozGroup::getClassType(), r.root->getType());
}

TEST(DB, TheRootIsAGroupWithCountZero) {
  TextFile const file("#VRML V2.0 utf8\nGroup { }\n");
  ozContainer *root = nullptr;
  ozPtrArray files;
  EXPECT_TRUE(vlDB::readFile(file.path.c_str(), root, files));
  EXPECT_EQ(0u, root->getRefCount());
  EXPECT_EQ(0u, files.getCount());
  root->unref();
}

TEST(DB, AMissingFileFailsInSilence) {
  ozContainer *root = nullptr;
  ozPtrArray files;
  EXPECT_EQ("", stderrOf([&] { EXPECT_FALSE(vlDB::readFile("there/is/no/such.wrl", root, files)); }));
  EXPECT_EQ(nullptr, root);
}

TEST(DB, OnlyRegularFilesAreRead) {
  mkfifo("pipe.wrl", 0600);
  ozContainer *root = nullptr;
  ozPtrArray files;
  EXPECT_FALSE(vlDB::readFile("pipe.wrl", root, files)); // and does not wait for the other end
  EXPECT_FALSE(vlDB::readFile("/", root, files));
  EXPECT_EQ(nullptr, root);
  unlink("pipe.wrl");
}

TEST(DB, ADeviceIsNoFileAndFailsInSilence) {
  unlink("zero.wrl");
  ASSERT_EQ(0, symlink("/dev/zero", "zero.wrl"));
  ozContainer *root = nullptr;
  ozPtrArray files;
  EXPECT_EQ("", stderrOf([&] { EXPECT_FALSE(vlDB::readFile("zero.wrl", root, files)); }));
  EXPECT_EQ(nullptr, root);
  unlink("zero.wrl");
}

TEST(DB, ABadHeaderIsToldAndTheRestIsRead) {
  Reading const r("Group { }", "#VRML V1.0 ascii\n");
  EXPECT_EQ("vl read error: File does not have a valid header string\n", r.said());
  EXPECT_EQ(1, r.count());
}

TEST(DB, ABadHeaderAndNothingElseFails) { EXPECT_FALSE(Reading("", "#VRML V1.0 ascii\n").ok); }

TEST(DB, NodesAtTheTopAreTheRootsChildrenAndOtherObjectsAreDropped) {
  Reading const r("Group { } Material { } NULL Transform { }");
  EXPECT_TRUE(r.ok);
  ASSERT_EQ(2, r.count());
  EXPECT_EQ(ozGroup::getClassType(), r.child(0)->getType());
  EXPECT_EQ(ozTransform::getClassType(), r.child(1)->getType());
  EXPECT_EQ("", r.messages);
}

TEST(DB, TheResultIsThatOfTheLastStatement) {
  EXPECT_TRUE(Reading("Nonsense { } Group { }").ok);
  EXPECT_FALSE(Reading("Group { } Nonsense { }").ok);
}

TEST(DB, ProtosAreRefusedAndWhatTheyHoldIsRead) {
  Reading const r("PROTO EXTERNPROTO Group { }");
  EXPECT_EQ("vl read error: This version of the parser does not parse PROTOs yet\n"
            "vl read error: This version of the parser does not parse EXTERNPROTOs yet\n",
            r.said());
  EXPECT_EQ(1, r.count());
}

TEST(DB, MessagesGiveTheLine) {
  Reading const r("\n\nNonsense { }");
  EXPECT_EQ("vl read error: Unknown class \"Nonsense\"\n\tOccurred at line   4\n", r.messages);
}

TEST(DB, RefusedAndUnknownClassesAreToldApartAndFlushed) {
  Reading const r("Fog { a { b } \"{\" } } Anchor { c }\nGroup { }"); // the brace in the string counts
  EXPECT_EQ("vl read error: Unsupported class \"Fog\"\nvl read error: Unknown class \"Anchor\"\n", r.said());
  EXPECT_EQ(1, r.count());
}

TEST(DB, DefNamesAndUseShares) {
  Reading const r("DEF a Group { } USE a");
  ASSERT_EQ(2, r.count());
  EXPECT_EQ(r.child(0), r.child(1));
  EXPECT_STREQ("a", r.child(0)->getName());
}

TEST(DB, UseOfANameDefinedLaterFails) {
  Reading const r("USE a DEF a Group { }");
  EXPECT_EQ("vl read error: Unknown reference \"a\"\n", r.said());
  EXPECT_EQ(1, r.count());
}

TEST(DB, ANameDefinedTwiceFindsTheLater) {
  Reading const r("DEF a Group { } DEF a Transform { } USE a");
  ASSERT_EQ(3, r.count());
  EXPECT_EQ(r.child(1), r.child(2));
}

TEST(DB, UseOfANodeInsideItselfIsRefused) {
  Reading const r("DEF a Group { children [ USE a Transform { } ] }");
  EXPECT_EQ("vl read error: Reference to \"a\" inside of itself\n", r.said());
  ASSERT_EQ(1, r.count());
  EXPECT_EQ(1, r.child<ozGroup>(0)->getChildCount());
}

TEST(DB, BrokenDefinitionsAreTold) {
  EXPECT_EQ("vl read error: Premature end of file after USE\n", Reading("USE").said());
  EXPECT_EQ("vl read error: Premature end of file after DEF\n", Reading("DEF").said());
  EXPECT_EQ("vl read error: Premature end of file after DEF\n", Reading("DEF a").said());
  EXPECT_EQ(0u, Reading("DEF 7 Group { }").said().find("vl read error: No name given after \n"));
  EXPECT_EQ(0u, Reading("DEF a 7 { }").said().find("vl read error: Invalid definition of a\n"));
  EXPECT_EQ("vl read error: Expected '{'; got EOF\n", Reading("Group").said());
  EXPECT_EQ(0u, Reading("Group x").said().find("vl read error: Expected '{'; got 'x'\n"));
  EXPECT_EQ("vl read error: Expected '}'; got EOF\n", Reading("Group {").said());
}

TEST(DB, AnUnknownFieldFailsItsNodeAndTheNextIsRead) {
  Reading const r("Group { nothing 1 { } } Transform { }");
  EXPECT_EQ("vl read error: Could not get orbis field nothing\n\nvl read error: Unknown field nothing\n\n", r.said());
  ASSERT_EQ(1, r.count());
  EXPECT_EQ(ozTransform::getClassType(), r.child(0)->getType());
}

TEST(DB, ANodeWithABadFieldIsKeptOutOfTheGraph) {
  Reading const r("Transform { translation 1 2 oops } Group { }");
  EXPECT_EQ("vl read error: Unknown field translation\n\n", r.said());
  EXPECT_EQ(1, r.count());
}

TEST(DB, AnUnknownReferenceUnderASingleReferenceGivesTwoMessages) {
  EXPECT_EQ("vl read error: Unknown reference \"X\"\nvl read error: Unknown field material\n\n",
            Reading("Appearance { material USE X } Group { }").said());
}

TEST(DB, AnUnknownReferenceUnderAListGivesThreeMessages) {
  EXPECT_EQ("vl read error: Unknown reference \"X\"\nvl read error: Couldn't read value for field \"children\"\n"
            "vl read error: Unknown field children\n\n",
            Reading("Group { children USE X } Group { }").said());
}

TEST(DB, ListsTakeOptionalCommasAndOneElementNeedsNoBrackets) {
  Reading const r("Shape { geometry LineSet { coord Coordinate { point [ 1 2 3, 4 5 6 ,7 8 9 ] } } } "
                  "Group { children Shape { } }");
  EXPECT_EQ("", r.messages);
  ozGeoSet *const set = static_cast<ozGeoSet *>(r.child<ozShape>(0)->getGeometry(0));
  ozMFVec3f *const points = static_cast<ozCoordSet3f *>(set->getCoordSet())->point();
  ASSERT_EQ(3u, points->getCount());
  EXPECT_TRUE(points->get(2) == ozVec3f(7, 8, 9));
  EXPECT_EQ(1, r.child<ozGroup>(1)->getChildCount());
}

TEST(DB, AnEmptyListLeavesTheFieldAsItWas) {
  Reading const r("Group { children [ ] }");
  EXPECT_EQ("", r.messages);
  EXPECT_EQ(0, r.child<ozGroup>(0)->getChildCount());
}

TEST(DB, AFailedElementDoesNotEndAList) {
  Reading const r("Transform { children [ Fog { } Shape { } ] }");
  EXPECT_EQ("vl read error: Unsupported class \"Fog\"\n", r.said());
  ASSERT_EQ(1, r.count());
  EXPECT_EQ(1, r.child<ozGroup>(0)->getChildCount());
}

TEST(DB, JunkInAListIsDroppedWordByWord) {
  Reading const r("PositionInterpolator { key [ 0 junk 0.5 ; 1 ] }");
  EXPECT_EQ("vl read error: Skipping \"junk\"\nvl read error: Skipping \";\"\n", r.said());
  ASSERT_EQ(1, r.count());
  EXPECT_EQ(3u, static_cast<ozInterpolator *>(static_cast<ozContainer *>(r.child(0)))->key()->getCount());
}

TEST(DB, TheEndOfTheFileEndsAList) {
  EXPECT_FALSE(Reading("Group { children [ Shape { }").ok);
  EXPECT_FALSE(Reading("PositionInterpolator { key [ 1 2").ok);
}

TEST(DB, JunkAtTheTopIsDroppedWordByWord) {
  Reading const r("} ] 12 Group { }");
  EXPECT_TRUE(r.ok);
  EXPECT_EQ(1, r.count());
  EXPECT_NE(std::string::npos, r.said().find("Skipping \"}\""));
}

TEST(DB, AStatementOrAReferenceInQuotesIsReadAsIfThereWereNone) {
  Reading const r("\"Group\" { children [ \"NULL\" \"Shape\" { } ] } \"PROTO\" Group { }");
  EXPECT_EQ("vl read error: This version of the parser does not parse PROTOs yet\n", r.said());
  ASSERT_EQ(2, r.count());
  EXPECT_EQ(1, r.child<ozGroup>(0)->getChildCount());
}

TEST(DB, NullInAListTakesAPlaceAndInAGroupTheHoleIsClosed) {
  Reading const r("Shape { geometry [ NULL LineSet { } NULL ] } Group { children [ NULL Shape { } ] }");
  EXPECT_EQ("", r.messages);
  ozShape *const shape = r.child<ozShape>(0);
  ASSERT_EQ(2, shape->getGeometryCount());
  EXPECT_EQ(nullptr, shape->getGeometry(0));
  EXPECT_NE(nullptr, shape->getGeometry(1));
  EXPECT_EQ(1, r.child<ozGroup>(1)->getChildCount());
}

TEST(DB, ASingleReferenceTakesNull) {
  Reading const r("Shape { appearance Appearance { material Material { } material NULL } }");
  EXPECT_EQ("", r.messages);
  EXPECT_EQ(nullptr, r.child<ozShape>(0)->getAppearance()->getMaterial());
}

TEST(DB, AVectorIsStoredAlsoAfterAFailedReadAndARotationIsNot) {
  Reading const r("DEF T Transform { translation 1 2 oops } DEF U Transform { rotation 1 2 oops } Group { children [ "
                  "USE T USE U ] }");
  ASSERT_EQ(1, r.count());
  ASSERT_EQ(2, r.child<ozGroup>(0)->getChildCount());
  ozVec3f translation;
  static_cast<ozTransform *>(r.child<ozGroup>(0)->getChild(0))->getTranslation(translation);
  EXPECT_TRUE(translation == ozVec3f(1, 2, 0));
  ozRotation rotation;
  static_cast<ozTransform *>(r.child<ozGroup>(0)->getChild(1))->getRotation(rotation);
  ozRotation unset;
  Reading const plain("Transform { }");
  plain.child<ozTransform>(0)->getRotation(unset);
  EXPECT_TRUE(rotation == unset);
}

TEST(DB, AnObjectOfAWrongClassIsRefusedByTheField) {
  Reading const r("Shape { appearance Material { } } Group { children [ Material { } ] }");
  EXPECT_NE(std::string::npos, r.messages.find("Bad type - Material not derived from"));
  ASSERT_EQ(2, r.count());
  EXPECT_EQ(0, r.child<ozGroup>(1)->getChildCount());
}

TEST(DB, AListTakesSeveralCommasWithAMessageForEachTooMany) {
  Reading const r("PositionInterpolator { key [ 0, , 1 ] }");
  EXPECT_EQ("vl read error: Skipping \",\"\n", r.said());
  EXPECT_EQ(2u, static_cast<ozInterpolator *>(static_cast<ozContainer *>(r.child(0)))->key()->getCount());
}

TEST(DB, AnElementOutsideOfBracketsThatFailsFailsTheNode) {
  Reading const r("PositionInterpolator { key oops } Group { }");
  EXPECT_EQ("vl read error: Couldn't read value for field \"key\"\nvl read error: Unknown field key\n\n", r.said());
  EXPECT_EQ(1, r.count());
}

TEST(DB, IndexSetsAreRead) {
  Reading const r("Shape { geometry TriSet { coordIndexSet IndexSet { index [ 2 1 0 ] } } }");
  EXPECT_EQ("", r.messages);
  ozGeoSet *const set = static_cast<ozGeoSet *>(r.child<ozShape>(0)->getGeometry(0));
  EXPECT_EQ(3u, set->getCoordIndexSet()->index()->getCount());
}

TEST(DB, AFieldWrittenTwiceKeepsTheTailOfTheLongerList) {
  Reading const r("PositionInterpolator { key [ 0 1 2 ] key [ 5 ] }");
  ozMFFloat *const key = static_cast<ozInterpolator *>(static_cast<ozContainer *>(r.child(0)))->key();
  ASSERT_EQ(3u, key->getCount());
  EXPECT_EQ(5.0f, key->get(0));
  EXPECT_EQ(1.0f, key->get(1));
}

TEST(DB, TheGraphGetsNoDeeperThanAThousandLevelsByUse) {
  // Each definition holds the one before: the text is flat and the graph is not.
  std::string text = "DEF g0 Group { }";
  for (int i = 1; i < 3000; ++i)
    text += " DEF g" + std::to_string(i) + " Group { children USE g" + std::to_string(i - 1) + " }";
  Reading const r(text);
  EXPECT_NE(std::string::npos, r.said().find("vl read error: Nodes are nested too deeply (1000)\n"));
  ozBoxBound box;
  r.root->getBoxBound(box); // visits every level
  EXPECT_EQ(0u, Reading("DEF a Group { } DEF b Group { children [ USE a USE a ] } USE b USE b").messages.size());
}

TEST(DB, AGraphThatDoublesAtEachLevelStaysSmallEnoughToWalk) {
  std::string text = "DEF g0 Group { children Shape { geometry LineSet { } } }";
  for (int i = 1; i < 60; ++i) {
    std::string const below = std::to_string(i - 1);
    text += " DEF g" + std::to_string(i) + " Group { children [ USE g" + below + " USE g" + below + " ] }";
  }
  Reading const r(text);
  EXPECT_NE(std::string::npos, r.said().find("vl read error: The graph is too large (10000000)\n"));
  ozTransformAction action;
  action.apply(r.root); // visits everything once for each way that leads there
}

TEST(DB, AGraphThatDoublesByRoutesStaysSmallEnoughToWalk) {
  std::string text = "DEF c0 Group { children Group { } }";
  for (int i = 1; i < 60; ++i) {
    std::string const n = std::to_string(i), below = std::to_string(i - 1);
    text += " DEF c" + n + " Group { children [ DEF b" + n + " Group { } USE b" + n + " ] } ROUTE c" + below +
            ".children TO b" + n + ".children";
  }
  EXPECT_NE(std::string::npos,
            Reading(text).messages.find("A route from children to children would make the graph too large"));
}

TEST(DB, TreeCleaningVisitsEachObjectOnce) {
  std::string text = "DEF g0 Transform { translation 1 2 3 }";
  for (int i = 1; i < 18; ++i) {
    std::string const below = std::to_string(i - 1);
    text += " DEF g" + std::to_string(i) + " Transform { translation 1 2 3 children [ NULL USE g" + below + " USE g" +
            below + " ] }";
  }
  Reading const r(text);
  EXPECT_EQ("", r.messages);
  for (int i = 0; i < 18; ++i) {
    EXPECT_EQ(nullptr, r.child(i)->findFieldObject(3)) << i;
    EXPECT_EQ(i ? 2 : 0, r.child<ozGroup>(i)->getChildCount()) << i;
  }
}

TEST(DB, AFailedRouteAmongFieldsFailsNothing) {
  Reading const r("DEF T Transform { ROUTE a.b TO c.d translation 1 2 3 }");
  EXPECT_TRUE(r.ok);
  ASSERT_EQ(1, r.count());
  ozVec3f translation;
  r.child<ozTransform>(0)->getTranslation(translation);
  EXPECT_TRUE(translation == ozVec3f(1, 2, 3));
}

TEST(DB, AFileWithoutACharacterIsAnEmptyGroup) {
  Reading const r("", "");
  EXPECT_TRUE(r.ok);
  EXPECT_EQ(0, r.count());
  EXPECT_EQ("", r.messages);
}

TEST(DB, AStatementThatEndsInAnErrorMayBeFollowedByCommentsAlone) {
  EXPECT_FALSE(Reading("Group { } Nonsense { } # the end\n").ok);
}

TEST(DB, AppearancesWithTexturesOfOneNameShareOneInTheWholeProcess) {
  std::string const app = "Shape { appearance Appearance { texture ImageTexture { url \"shared-name.png\" } } } ";
  Reading const r(app + app), other(app);
  ozTexture *const texture = r.child<ozShape>(0)->getAppearance()->getTexture();
  ASSERT_NE(nullptr, texture);
  EXPECT_EQ(texture, r.child<ozShape>(1)->getAppearance()->getTexture());
  EXPECT_EQ(texture, other.child<ozShape>(0)->getAppearance()->getTexture());
  EXPECT_EQ(1, r.child<ozShape>(0)->getAppearance()->getTexEnable());
  Reading const third("Shape { appearance Appearance { texture ImageTexture { url \"another-name.png\" } } }");
  EXPECT_NE(texture, third.child<ozShape>(0)->getAppearance()->getTexture());
}

TEST(DB, TexturesWithoutANameShareOneToo) {
  Reading const r("Shape { appearance Appearance { texture ImageTexture { } } } "
                  "Shape { appearance Appearance { texture ImageTexture { } } }");
  EXPECT_EQ(r.child<ozShape>(0)->getAppearance()->getTexture(), r.child<ozShape>(1)->getAppearance()->getTexture());
}

TEST(DB, AChainOfRoutesIsNotOfAnyLength) {
  std::string text = "DEF t0 Transform { }";
  for (int i = 1; i < 30000; ++i) {
    std::string const name = "t" + std::to_string(i);
    text +=
        "\nDEF " + name + " Transform { ROUTE t" + std::to_string(i - 1) + ".translation TO " + name + ".translation }";
  }
  Reading const r(text);
  EXPECT_NE(std::string::npos,
            r.said().find("vl read error: A route from translation to translation would make too long a chain\n"));
  EXPECT_EQ(30000, r.count());
  r.child<ozTransform>(0)->setTranslation(1, 2, 3); // walks the chain, one call inside another
  ozVec3f translation;
  r.child<ozTransform>(500)->getTranslation(translation);
  EXPECT_TRUE(translation == ozVec3f(1, 2, 3));
}

TEST(DB, AChainBuiltFromItsEndIsNotOfAnyLengthEither) {
  std::string text;
  for (int i = 0; i < 3000; ++i) text += "DEF P" + std::to_string(i) + " ScalarInterpolator { key 0 keyValue 0 }\n";
  for (int i = 2999; i > 0; --i)
    text += "ROUTE P" + std::to_string(i - 1) + ".value TO P" + std::to_string(i) + ".fraction\n";
  EXPECT_NE(std::string::npos,
            Reading(text).said().find("A route from value to fraction would make too long a chain\n"));
}

TEST(DB, ANodeUsedManyTimesIsLetGoInReasonableTime) {
  std::string text = "Group { children [ DEF s Shape { }";
  for (int i = 0; i < 100000; ++i)
    text += " USE s"; // taking each parent out by moving all others: 5 thousand million moves
  Reading const r(text + " ] }");
  EXPECT_EQ(100001, r.child<ozGroup>(0)->getChildCount());
}

TEST(DB, AListOfNullsIsCleanedInReasonableTime) {
  std::string text = "Group { children [ ";
  for (int i = 0; i < 100000; ++i) text += "NULL Group{} ";
  Reading const r(text + " ] }");
  EXPECT_EQ(100000, r.child<ozGroup>(0)->getChildCount());
}

TEST(DB, ACircleOfRoutesIsMade) {
  Reading const r("DEF a Transform { } DEF b Transform { } ROUTE a.translation TO b.translation "
                  "ROUTE b.translation TO a.translation");
  EXPECT_EQ("", r.messages);
  r.child<ozTransform>(0)->setTranslation(1, 2, 3);
  ozVec3f translation;
  r.child<ozTransform>(1)->getTranslation(translation);
  EXPECT_TRUE(translation == ozVec3f(1, 2, 3));
}

TEST(DB, RoutesBetweenListsOfChildrenDoNotMakeTheGraphTooDeep) {
  std::string deep;
  for (int i = 0; i < 900; ++i) deep += "Group { children ";
  deep += "DEF b Group { }";
  for (int i = 0; i < 900; ++i) deep += " }";
  std::string tall = "DEF a Group { children ";
  for (int i = 0; i < 900; ++i) tall += "Group { children ";
  tall += "Shape { }" + std::string(901, '}');
  EXPECT_EQ("vl error in vlDB::readRoute(): A route from children to children would make the graph too deep\n",
            Reading(deep + tall + " ROUTE a.children TO b.children").messages);
}

TEST(DB, AFileMayHoldAHundredRoutesBetweenNodes) {
  std::string text = "DEF a Group { }";
  for (int i = 0; i < 101; ++i) {
    std::string const name = "b" + std::to_string(i);
    text += " DEF " + name + " Group { } ROUTE a.children TO " + name + ".children";
  }
  EXPECT_EQ("vl read error: Too many routes between nodes (100)\n", Reading(text).said());
}

TEST(DB, AnObjectOutsideOfTheGraphStaysWhileARouteLeadsToIt) {
  // The material is no node; what keeps it is the route into the graph.
  Reading *const r = new Reading("DEF m Material { diffuseColor 1 0 0 } DEF t Transform { } "
                                 "ROUTE m.diffuseColor TO t.translation");
  ozContainer *const material = r->child(0)->getField("translation")->getInputs()->get(0)->getParent();
  ozVec3f translation;
  r->child<ozTransform>(0)->getTranslation(translation);
  EXPECT_TRUE(translation == ozVec3f(1, 0, 0));
  material->ref();
  delete r;
  EXPECT_EQ(2u, material->getRefCount()); // the reader's and this one
  Reading const next("");
  EXPECT_EQ(1u, material->getRefCount());
  material->unref();
}

TEST(DB, ObjectsOutsideOfTheGraphThatAreConnectedAmongThemselvesGo) {
  int const before = ozTimeSensor::getSensorCount();
  // Nodes with a bad field stay outside.
  Reading const r("DEF a TimeSensor { bad } DEF b TimeSensor { bad } ROUTE a.isActive TO b.enabled Group { }");
  EXPECT_EQ(1, r.count());
  EXPECT_EQ(before, ozTimeSensor::getSensorCount());
}

TEST(DB, EveryFieldClassIsRead) {
  Reading const r("DirectionalLight { intensity 0.5 on FALSE direction 1 0 0 color 0.5 0.25 1 }"
                  "Transform { rotation 0 1 0 1.5 }"
                  "TimeSensor { cycleInterval 2.5 loop TRUE enabled 0 }"
                  "Shape { geometry IndexedFaceSet { creaseAngle 0.5 cullFace 1 } }");
  EXPECT_EQ("", r.messages);
  ASSERT_EQ(4, r.count());
  ozRotation rotation;
  r.child<ozTransform>(1)->getRotation(rotation);
  EXPECT_TRUE(rotation == ozRotation(0, 1, 0, 1.5f));
  ozTimeSensor *const sensor = r.child<ozTimeSensor>(2);
  EXPECT_EQ(2.5, sensor->getCycleInterval().get());
  EXPECT_EQ(1, sensor->getLoop());
  EXPECT_EQ(0, sensor->getEnabled());
}

TEST(DB, AnEnumerationIsANumberAndNeverAName) {
  EXPECT_FALSE(Reading("Shape { geometry IndexedFaceSet { cullFace BACK_CULL } }").ok);
}

TEST(DB, BoundsAreAcceptedAndIgnored) {
  Reading const r("Group { boxBound 0 0 0 1 1 1 }");
  EXPECT_EQ("", r.messages);
  ozBoxBound box;
  r.child(0)->getBoxBound(box);
  EXPECT_TRUE(box.isEmpty());
}

TEST(DB, AFieldClassThatCannotBeReadIsToldByTheReader) {
  Reading const r("Appearance { colorMask 1 1 1 1 } Group { }");
  EXPECT_EQ("vl error in vlDB::readOrbisField()(): Unknown field colorMask\nvl read error: Unknown field colorMask\n\n",
            r.said());
}

TEST(DB, RoutesConnectFieldsByTheirPlainAndTheirEventNames) {
  Reading const r("DEF T TimeSensor { } DEF P PositionInterpolator { } DEF X Transform { }\n"
                  "ROUTE T.fraction_changed TO P.set_fraction ROUTE P.value_changed TO X.translation");
  EXPECT_EQ("", r.messages);
  EXPECT_TRUE(r.ok);
  ozField *const fraction = r.child(1)->getField("fraction");
  ASSERT_EQ(1u, fraction->getInputs()->getCount());
  EXPECT_EQ(r.child(0)->getField("fraction_changed"), fraction->getInputs()->get(0));
  EXPECT_EQ(r.child(1)->getField("value"), r.child(2)->getField("translation")->getInputs()->get(0));
}

TEST(DB, ARouteMayStandAmongFields) {
  Reading const r(
      "DEF T TimeSensor { } DEF P PositionInterpolator { ROUTE T.fraction_changed TO P.fraction key [ 1 ] }");
  EXPECT_EQ("", r.messages);
  EXPECT_NE(nullptr, r.child(1)->getField("fraction")->getInputs());
}

TEST(DB, EverythingThatIsWrongWithARouteIsTold) {
  EXPECT_EQ("vl read error: No node named A to route from\nvl read error: No node named B to route to\n",
            Reading("ROUTE A.x TO B.y").said());
  EXPECT_EQ("vl read error: No field named x to route from\nvl read error: No field named y to route to\n",
            Reading("DEF A Group { } ROUTE A.x TO A.y").said());
  EXPECT_EQ("vl read error: Expected ., got :\nvl read error: Expected TO, got AT\nvl read error: Expected ., got /\n",
            Reading("DEF A Group { } DEF B Group { } ROUTE A:boundMode AT B/boundMode").said());
  EXPECT_EQ(0u, Reading("ROUTE").said().find("vl read error: Expected node name, got EOF\n"));
  EXPECT_FALSE(Reading("ROUTE A.x TO B.y").ok);
}

TEST(DB, ARouteBetweenFieldsOfDifferentClassesIsRefused) {
  Reading const r("DEF T TimeSensor { } DEF X Transform { } ROUTE T.fraction_changed TO X.translation");
  EXPECT_NE("", r.messages);
  EXPECT_FALSE(r.ok);
  ozField *const translation = r.child(1)->findFieldObject(3);
  EXPECT_TRUE(!translation || !translation->getInputs());
}

TEST(DB, ARouteThatWouldMakeANodeContainItselfIsRefused) {
  Reading const r("DEF A Group { children DEF B Group { } } ROUTE A.children TO B.children");
  EXPECT_NE("", r.messages);
  ozBoxBound box;
  r.root->getBoxBound(box);
  EXPECT_EQ(0, static_cast<ozGroup *>(r.child<ozGroup>(0)->getChild(0))->getChildCount());
}

TEST(DB, ARouteMadeAheadOfTheChildrenIsWatchedTheSame) {
  Reading const r("DEF B Group { } DEF A Group { ROUTE A.children TO B.children children USE B }");
  EXPECT_NE("", r.messages);
  ozBoxBound box;
  r.root->getBoxBound(box);
  EXPECT_EQ(0, r.child<ozGroup>(0)->getChildCount());
}

TEST(DB, ARouteBetweenListsOfChildrenIsMadeWhereItHarmsNothing) {
  Reading const r("DEF A Group { children Shape { } } DEF B Group { } ROUTE A.children TO B.children");
  EXPECT_EQ("", r.messages);
  EXPECT_EQ(1, r.child<ozGroup>(1)->getChildCount());
}

TEST(DB, NodesNestAtMostAThousandLevelsDeep) {
  std::string deep;
  for (int i = 0; i < 5000; ++i) deep += "Group { children ";
  deep += "Group { }";
  for (int i = 0; i < 5000; ++i) deep += " }";
  Reading const r(deep + " Transform { }");
  EXPECT_NE(std::string::npos, r.said().find("Nodes are nested too deeply (1000)"));
  EXPECT_TRUE(r.ok);
  std::string fits;
  for (int i = 0; i < 999; ++i) fits += "Group { children ";
  fits += "Group { }";
  for (int i = 0; i < 999; ++i) fits += " }";
  EXPECT_EQ("", Reading(fits).messages);
}

TEST(DB, ATokenWithoutWhiteSpaceIsReadLikeAnyOther) {
  std::string dense = "Group{children[";
  for (int i = 0; i < 20000; ++i) dense += "Group{},";
  Reading const r(dense + "]}");
  EXPECT_EQ("", r.messages);
  ASSERT_EQ(1, r.count());
  EXPECT_EQ(20000, r.child<ozGroup>(0)->getChildCount());
}

TEST(DB, AFinishedSceneKeepsNoUnconnectedFieldObjects) {
  Reading const r("Transform { translation 1 2 3 }");
  EXPECT_EQ(nullptr, r.child(0)->findFieldObject(3));
}

TEST(DB, AShapeWithoutAppearanceIsUnlitAndUntexturedAndSharesThat) {
  Reading const r("Shape { } Shape { } Shape { appearance Appearance { } }");
  ozAppearance *const app = r.child<ozShape>(0)->getAppearance();
  ASSERT_NE(nullptr, app);
  EXPECT_EQ(app, r.child<ozShape>(1)->getAppearance());
  EXPECT_NE(app, r.child<ozShape>(2)->getAppearance());
  EXPECT_EQ(0, app->getLightEnable());
  EXPECT_EQ(0, app->getTexEnable());
}

TEST(DB, AnAppearanceIsLitExactlyIfItHasAMaterial) {
  Reading const r("Shape { appearance Appearance { material Material { } } } Shape { appearance Appearance { } }");
  EXPECT_EQ(1, r.child<ozShape>(0)->getAppearance()->getLightEnable());
  EXPECT_EQ(0, r.child<ozShape>(1)->getAppearance()->getLightEnable());
  EXPECT_EQ(0, r.child<ozShape>(0)->getAppearance()->getTexEnable());
}

TEST(ReadError, GivesMessageAndPlace) {
  vlInput in;
  EXPECT_EQ("vl read error: bad thing 3\n\tOccurred at line   1\n",
            stderrOf([&] { vlReadError::post(&in, "bad %s %d", "thing", 3); }));
}

TEST(DebugError, TakesTheTextOfAnUnopenedFileForThePlaceAndItsNameAsItIs) {
  EXPECT_EQ("vl error in Can't open file: %s\n(): zero%s%n.wrl\n",
            stderrOf([] { vlDebugError::post("Can't open file: %s\n", "%s", "zero%s%n.wrl"); }));
}

TEST(DebugError, GivesPlaceAndMessage) {
  EXPECT_EQ("vl error in here(): bad thing\n", stderrOf([] { vlDebugError::post("here", "bad %s", "thing"); }));
}

TEST(DB, WhatIsWrittenCanBeReadBack) {
  Reading const r("Transform { translation 1 2 3 children [ DEF s Group { } USE s ] }");
  char *text = nullptr;
  size_t size = 0;
  FILE *const memory = open_memstream(&text, &size);
  {
    ozOutput out(memory);
    static_cast<ozObject *>(r.child(0))->write(&out);
  }
  fclose(memory);
  Reading const again(std::string(text, size));
  free(text);
  EXPECT_EQ("", again.messages);
  ASSERT_EQ(1, again.count());
  ozTransform *const transform = again.child<ozTransform>(0);
  ozVec3f translation;
  transform->getTranslation(translation);
  EXPECT_TRUE(translation == ozVec3f(1, 2, 3));
  ASSERT_EQ(2, transform->getChildCount());
  EXPECT_EQ(transform->getChild(0), transform->getChild(1));
}

TEST(DB, AFieldThatIsOnlySetHasNoObject) {
  Reading const r("Shape { appearance Appearance { material Material { transparency 0.5 } } }");
  ozAppearance *const app = r.child<ozShape>(0)->getAppearance();
  EXPECT_EQ(0.5f, app->getMaterial()->getTransparency());
  for (ozContainer *c : {static_cast<ozContainer *>(app), static_cast<ozContainer *>(app->getMaterial())})
    for (int id = 0; id < c->getType()->getFieldInfoCount(); ++id) EXPECT_EQ(nullptr, c->findFieldObject(id)) << id;
}

TEST(DB, AValueBehindARouteReachesTheOtherEnd) {
  Reading const r("DEF A Transform { } DEF B Transform { ROUTE B.translation TO A.translation translation 1 2 3 }");
  ozVec3f translation;
  r.child<ozTransform>(0)->getTranslation(translation);
  EXPECT_TRUE(translation == ozVec3f(1, 2, 3));
}

TEST(DB, AnIndexSetThatIsGivenIsNotMadeAnew) {
  Reading const r("Shape { geometry IndexedFaceSet { coord Coordinate { point [ 0 0 0, 1 0 0, 0 1 0 ] }\n"
                  "coordIndex [ 0, 1, 2, -1 ] normal Normal { vector [ 0 0 1 ] }\n"
                  "normalIndexSet DEF I IndexSet { index [ 0, 0, 0 ] } } }");
  ozIndexedFaceSet *const set = static_cast<ozIndexedFaceSet *>(r.child<ozShape>(0)->getGeometry(0));
  ASSERT_NE(nullptr, set->getNormalIndexSet());
  EXPECT_STREQ("I", set->getNormalIndexSet()->getName());
}

} // namespace
