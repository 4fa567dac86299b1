// The scope of lights and fog.

#include <functional>

#include "oz/OzScene3D.h"
#include "support/contextFixture.h"
#include "support/glRecorder.h"

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

/// A child that answers as told and looks around.
class Spy : public ozNode {
public:
  Spy() : ozNode(ozNode::getClassType()) {}
  ozContainer *instantiate() override { return new Spy; }
  ozTravDirective drawVisit(ozDrawAction *) override {
    ++visits;
    if (look) look();
    return verdict;
  }

  int visits = 0;
  ozTravDirective verdict = TRAV_CONT;
  std::function<void()> look;
};

class VisitAction : public ozDrawAction {
public:
  ozTravDirective preVisit(ozNode *) override { return ++pre, preVerdict; }
  ozTravDirective postVisit(ozNode *) override { return ++post, postVerdict; }

  int pre = 0, post = 0;
  ozTravDirective preVerdict = TRAV_CONT, postVerdict = TRAV_CONT;
};

class Environment : public ContextTest {
protected:
  void SetUp() override {
    ContextTest::SetUp();
    action.setContext(context);
    environment = new ozEnvironment;
    environment->ref();
    spy = new Spy;
    environment->addChild(spy);
  }
  void TearDown() override { environment->unref(); }

  ozTravDirective draw() { return environment->drawVisit(&action); }

  VisitAction action;
  ozEnvironment *environment;
  Spy *spy;
};

TEST_F(Environment, IsAGroupWithLightsAndAFog) {
  EXPECT_STREQ(environment->getType()->getName(), "Environment");
  EXPECT_EQ(environment->getType()->getAncestor(), ozGroup::getClassType());
  EXPECT_EQ(environment->getField("light"), environment->light());
  EXPECT_EQ(environment->light()->getId(), 3);
  EXPECT_EQ(environment->light()->getType(), ozMFRef::getClassType());
  EXPECT_EQ(environment->light()->getCount(), 0u);
  EXPECT_EQ(environment->getField("fog")->getId(), 4);
  EXPECT_EQ(environment->getField("fog")->getType(), ozSFRef::getClassType());
  EXPECT_EQ(environment->getFog(), nullptr);
}

TEST_F(Environment, HoldsACountOnItsFogAndLights) {
  ozFog *const fog = new ozFog;
  ozLight *const light = new ozPointLight;
  environment->setFog(fog);
  environment->light()->append(light);
  EXPECT_EQ(environment->getFog(), fog);
  EXPECT_EQ(fog->getRefCount(), 1u);
  EXPECT_EQ(light->getRefCount(), 1u);
  fog->ref();
  environment->setFog(nullptr);
  EXPECT_EQ(fog->getRefCount(), 1u);
  fog->unref();
}

TEST_F(Environment, ItsLightsShineOnItsChildrenOnly) {
  ozLight *const first = new ozPointLight, *const second = new ozDirectionalLight;
  environment->light()->append(first);
  environment->light()->append(nullptr);
  environment->light()->append(second);
  spy->look = [&] {
    EXPECT_EQ(context->getLight(7), first);
    EXPECT_EQ(context->getLight(6), second);
    EXPECT_TRUE(glIsEnabled(GL_LIGHT7));
  };
  draw();
  EXPECT_EQ(spy->visits, 1);
  EXPECT_EQ(context->getLight(7), nullptr);
  EXPECT_FALSE(glIsEnabled(GL_LIGHT7));
  EXPECT_FALSE(glIsEnabled(GL_LIGHT6));
}

TEST_F(Environment, ALightAmongItsDescendantsEndsWithIt) {
  ozGroup *const group = new ozGroup;
  group->setBoundMode(ozNode::STATIC);
  ozLight *const light = new ozPointLight;
  environment->insertChild(0, light);
  spy->look = [&] { EXPECT_EQ(context->getLight(7), light); };
  draw();
  EXPECT_EQ(context->getLight(7), nullptr);
  group->unref();
}

TEST_F(Environment, ALightAfterAShapeDoesNotLightIt) {
  environment->addChild(new ozPointLight);
  spy->look = [&] { EXPECT_EQ(context->getLight(7), nullptr); };
  draw();
  EXPECT_EQ(spy->visits, 1);
}

TEST_F(Environment, ItsFogIsInForceForItsChildrenOnly) {
  context->setFogEnable(1);
  ozFog *const fog = new ozFog;
  fog->setDensity(0.5f);
  environment->setFog(fog);
  float density = 0;
  spy->look = [&] { glGetFloatv(GL_FOG_DENSITY, &density); };
  draw();
  EXPECT_EQ(density, 0.5f);
  glGetFloatv(GL_FOG_DENSITY, &density);
  EXPECT_EQ(density, 1.0f); // of the context's own fog
}

TEST_F(Environment, AFogThatIsOffTurnsFogOffForTheSubtree) {
  context->setFogEnable(1);
  ozFog *const fog = new ozFog;
  fog->setOn(0);
  environment->setFog(fog);
  GLboolean on = 1;
  spy->look = [&] { on = glIsEnabled(GL_FOG); };
  context->pushState();
  draw();
  context->popState();
  EXPECT_FALSE(on);
  EXPECT_TRUE(glIsEnabled(GL_FOG));
}

TEST_F(Environment, AFogUnderADefaultStateWithoutFogHasNoEffect) {
  environment->setFog(new ozFog);
  GLRecorder rec;
  spy->look = [&] { EXPECT_THAT(rec.texts(), IsEmpty()); };
  draw();
  EXPECT_EQ(spy->visits, 1);
  EXPECT_FALSE(glIsEnabled(GL_FOG));
}

TEST_F(Environment, DrawsLightsThenFogThenChildren) {
  context->setFogEnable(1);
  environment->light()->append(new ozPointLight);
  environment->setFog(new ozFog);
  GLRecorder rec;
  int callsAhead = 0;
  spy->look = [&] { callsAhead = static_cast<int>(rec.calls().size()); };
  draw();
  int const light = rec.find("glEnable(GL_LIGHT7)"), fog = rec.find("glFogi");
  EXPECT_GE(light, 0);
  EXPECT_GT(fog, light);
  EXPECT_GT(callsAhead, fog);
}

TEST_F(Environment, AStopEndsTheChildrenAndClosesTheScope) {
  Spy *const next = new Spy;
  environment->addChild(next);
  environment->light()->append(new ozPointLight);
  spy->verdict = TRAV_TERM;
  EXPECT_EQ(draw(), TRAV_TERM);
  EXPECT_EQ(next->visits, 0);
  EXPECT_EQ(action.post, 1);
  EXPECT_EQ(context->getLight(7), nullptr);
}

TEST_F(Environment, APruneOfAChildHasNoEffect) {
  Spy *const next = new Spy;
  environment->addChild(next);
  spy->verdict = TRAV_PRUNE;
  EXPECT_EQ(draw(), TRAV_CONT);
  EXPECT_EQ(next->visits, 1);
}

TEST_F(Environment, AVerdictAheadPassesTheSubtreeOver) {
  environment->light()->append(new ozPointLight);
  action.preVerdict = TRAV_PRUNE;
  GLRecorder rec;
  EXPECT_EQ(draw(), TRAV_PRUNE);
  EXPECT_EQ(spy->visits, 0);
  EXPECT_EQ(action.post, 1);
  EXPECT_THAT(rec.texts(), IsEmpty());
}

TEST_F(Environment, GivesTheLargerVerdict) {
  action.postVerdict = TRAV_TERM;
  EXPECT_EQ(draw(), TRAV_TERM);
  action.preVerdict = TRAV_PRUNE;
  EXPECT_EQ(draw(), TRAV_TERM);
}

TEST_F(Environment, PassesNullChildrenOver) {
  environment->setChildCount(3);
  EXPECT_EQ(draw(), TRAV_CONT);
  EXPECT_EQ(spy->visits, 1);
}

TEST_F(Environment, AChildMayTakeItsSiblingsOut) {
  environment->addChild(new Spy);
  environment->addChild(new Spy);
  spy->look = [&] { environment->setChildCount(1); };
  EXPECT_EQ(draw(), TRAV_CONT);
}

TEST_F(Environment, IsNeverCulled) {
  ozPerspCamera *const camera = new ozPerspCamera;
  camera->ref();
  action.setCamera(camera);
  ozBoxBound behind;
  behind.min.set(0, 0, 1000);
  behind.max.set(1, 1, 1001);
  environment->setBoundMode(ozNode::STATIC);
  environment->setBoxBound(behind);
  action.apply(environment);
  EXPECT_EQ(spy->visits, 1);
  action.setCamera(nullptr);
  camera->unref();
}

TEST_F(Environment, AFogThatIsReplacedOnTheWayLeavesTheScopesInBalance) {
  context->setFogEnable(1);
  environment->setFog(new ozFog);
  spy->look = [&] { environment->setFog(nullptr); };
  draw();
  ozFog *const outer = new ozFog;
  outer->ref();
  context->pushFog(outer); // would be the second level if one were left
  outer->setOn(0);
  context->popFog();
  EXPECT_EQ(outer->getRefCount(), 1u);
  outer->unref();
}

TEST_F(Environment, SeventeenNestedScopesStayInBalance) {
  ozGroup *innermost = environment;
  for (int i = 0; i < 20; ++i) {
    ozEnvironment *const next = new ozEnvironment;
    next->light()->append(new ozPointLight);
    next->setFog(new ozFog);
    innermost->addChild(next);
    innermost = next;
  }
  Spy *const deep = new Spy;
  innermost->addChild(deep);
  draw();
  EXPECT_EQ(deep->visits, 1);
  EXPECT_EQ(context->getLight(7), nullptr);
}

TEST_F(Environment, APlainGroupIsNoScope) {
  ozLight *const light = new ozPointLight;
  ozGroup *const group = new ozGroup;
  group->addChild(light);
  group->ref();
  light->drawVisit(&action);
  EXPECT_EQ(context->getLight(7), light);
  group->unref();
}

} // namespace
