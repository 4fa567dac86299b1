// How lights reach OpenGL: the parameters, the slots, and when a light is defined again.

#include <new>

#include "oz/OzScene3D.h"
#include "support/contextFixture.h"
#include "support/glRecorder.h"

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LightDraw : public ContextTest {
protected:
  void SetUp() override {
    ContextTest::SetUp();
    action.setContext(context);
  }

  template <class Light> Light *made() {
    Light *const light = new Light;
    light->ref();
    lights.push_back(light);
    return light;
  }
  void TearDown() override {
    for (ozLight *light : lights) light->unref();
  }

  std::vector<std::string> callsOf(ozLight *light) {
    GLRecorder rec;
    light->draw(&action);
    return textsOf(rec.without({"glGetFloatv"}));
  }
  int definitionsOf(ozLight *light) {
    GLRecorder rec;
    light->draw(&action);
    int count = 0;
    for (GLCall const &call : rec.named("glLightfv")) count += call.args[1] == GL_POSITION;
    return count;
  }

  ozDrawAction action;
  std::vector<ozLight *> lights;
};

TEST_F(LightDraw, ADirectionalOneShinesFromInfinity) {
  ozDirectionalLight *const light = made<ozDirectionalLight>();
  light->setDirection(0, -2, 0);
  light->setColor(1, 0.5f, 0.25f);
  light->setIntensity(0.5f);
  light->setAmbientIntensity(0.25f);
  EXPECT_THAT(callsOf(light),
              ElementsAre("glEnable(GL_LIGHT7)", "glLightfv(GL_LIGHT7, GL_POSITION, 0, 1, 0, 0)",
                          "glLightfv(GL_LIGHT7, GL_DIFFUSE, 0.5, 0.25, 0.125, 1)",
                          "glLightfv(GL_LIGHT7, GL_SPECULAR, 0.5, 0.25, 0.125, 1)",
                          "glLightfv(GL_LIGHT7, GL_AMBIENT, 0.25, 0.125, 0.0625, 1)",
                          "glLightfv(GL_LIGHT7, GL_SPOT_CUTOFF, 180)", "glLightfv(GL_LIGHT7, GL_SPOT_EXPONENT, 0)",
                          "glLightfv(GL_LIGHT7, GL_CONSTANT_ATTENUATION, 1)",
                          "glLightfv(GL_LIGHT7, GL_LINEAR_ATTENUATION, 0)",
                          "glLightfv(GL_LIGHT7, GL_QUADRATIC_ATTENUATION, 0)"));
}

TEST_F(LightDraw, AZeroDirectionGivesAZeroPosition) {
  ozDirectionalLight *const light = made<ozDirectionalLight>();
  light->setDirection(0, 0, 0);
  EXPECT_EQ(callsOf(light)[1], "glLightfv(GL_LIGHT7, GL_POSITION, 0, 0, 0, 0)");
}

TEST_F(LightDraw, APointOneShinesFromItsLocation) {
  ozPointLight *const light = made<ozPointLight>();
  light->setLocation(1, 2, 3);
  light->setAttenuation(4, 5, 6);
  light->setColor(1, 0.5f, 0.25f);
  light->setIntensity(0.5f);
  light->setAmbientIntensity(0.25f);
  EXPECT_THAT(callsOf(light),
              ElementsAre("glEnable(GL_LIGHT7)", "glLightfv(GL_LIGHT7, GL_POSITION, 1, 2, 3, 1)",
                          "glLightfv(GL_LIGHT7, GL_DIFFUSE, 0.5, 0.25, 0.125, 1)",
                          "glLightfv(GL_LIGHT7, GL_SPECULAR, 0.5, 0.25, 0.125, 1)",
                          "glLightfv(GL_LIGHT7, GL_AMBIENT, 0.25, 0.125, 0.0625, 1)",
                          "glLightfv(GL_LIGHT7, GL_SPOT_CUTOFF, 180)", "glLightfv(GL_LIGHT7, GL_SPOT_EXPONENT, 0)",
                          "glLightfv(GL_LIGHT7, GL_CONSTANT_ATTENUATION, 4)",
                          "glLightfv(GL_LIGHT7, GL_LINEAR_ATTENUATION, 5)",
                          "glLightfv(GL_LIGHT7, GL_QUADRATIC_ATTENUATION, 6)"));
}

TEST_F(LightDraw, ASpotShinesIntoItsCone) {
  ozSpotLight *const light = made<ozSpotLight>();
  light->setLocation(1, 2, 3);
  light->setAttenuation(4, 5, 6);
  light->setDirection(0, -2, 0);
  light->setExponent(8);
  light->setCutOffAngle(45);
  EXPECT_THAT(
      callsOf(light),
      ElementsAre("glEnable(GL_LIGHT7)", "glLightfv(GL_LIGHT7, GL_POSITION, 1, 2, 3, 1)",
                  "glLightfv(GL_LIGHT7, GL_SPOT_DIRECTION, 0, -2, 0)", "glLightfv(GL_LIGHT7, GL_DIFFUSE, 1, 1, 1, 1)",
                  "glLightfv(GL_LIGHT7, GL_SPECULAR, 1, 1, 1, 1)", "glLightfv(GL_LIGHT7, GL_AMBIENT, 0, 0, 0, 1)",
                  "glLightfv(GL_LIGHT7, GL_SPOT_CUTOFF, 45)", "glLightfv(GL_LIGHT7, GL_SPOT_EXPONENT, 8)",
                  "glLightfv(GL_LIGHT7, GL_CONSTANT_ATTENUATION, 4)", "glLightfv(GL_LIGHT7, GL_LINEAR_ATTENUATION, 5)",
                  "glLightfv(GL_LIGHT7, GL_QUADRATIC_ATTENUATION, 6)"));
}

TEST_F(LightDraw, IsDefinedOncePerMatrixAndVersion) {
  ozPointLight *const light = made<ozPointLight>();
  EXPECT_EQ(definitionsOf(light), 1);
  EXPECT_THAT(callsOf(light), IsEmpty());
}

TEST_F(LightDraw, IsDefinedAnewUnderAnotherMatrixInTheSameSlot) {
  ozPointLight *const light = made<ozPointLight>();
  light->draw(&action);
  context->translate(1, 0, 0);
  EXPECT_EQ(callsOf(light)[0], "glLightfv(GL_LIGHT7, GL_POSITION, 0, 0, 0, 1)");
}

TEST_F(LightDraw, MovedAndChangedAtOnceItIsDefinedOnce) {
  ozPointLight *const light = made<ozPointLight>();
  light->draw(&action);
  context->translate(1, 0, 0);
  light->setIntensity(0.5f);
  EXPECT_EQ(definitionsOf(light), 1);
  EXPECT_EQ(definitionsOf(light), 0);
}

TEST_F(LightDraw, AnotherContextDefinesItForItself) {
  ozPointLight *const light = made<ozPointLight>();
  light->draw(&action);
  OffscreenContext other;
  action.setContext(other.context);
  EXPECT_EQ(definitionsOf(light), 1);
  context->makeCurrent(gl.device);
}

TEST_F(LightDraw, EachFieldOfASpotIsAChange) {
  ozSpotLight *const light = made<ozSpotLight>();
  light->draw(&action);
  for (short id = 0; id < 12; ++id) {
    if (id == 2) continue; // switched off and on below
    light->getField(id)->fieldChanged();
    EXPECT_EQ(definitionsOf(light), 1) << id;
  }
}

TEST_F(LightDraw, EachFieldOfADirectionalOneIsAChange) {
  ozDirectionalLight *const light = made<ozDirectionalLight>();
  light->draw(&action);
  for (short id = 0; id < 7; ++id) {
    light->getField(id)->fieldChanged();
    EXPECT_EQ(definitionsOf(light), 1) << id;
  }
}

TEST_F(LightDraw, TheRadiusDefinesItAnewAndChangesNothing) {
  ozPointLight *const light = made<ozPointLight>();
  std::vector<std::string> before = callsOf(light);
  before.erase(before.begin()); // glEnable
  light->setRadius(5);
  EXPECT_EQ(callsOf(light), before);
}

TEST_F(LightDraw, SwitchedOffItIsDisabledAndDefinedOnceMore) {
  ozPointLight *const light = made<ozPointLight>();
  light->draw(&action);
  light->setOn(0);
  std::vector<std::string> calls = callsOf(light);
  EXPECT_EQ(calls.size(), 10u);
  EXPECT_EQ(calls[0], "glDisable(GL_LIGHT7)");
  EXPECT_THAT(callsOf(light), IsEmpty());
}

TEST_F(LightDraw, AConnectedValueIsTakenFirst) {
  ozPointLight source;
  ozSpotLight *const light = made<ozSpotLight>();
  source.connect(3, light, 10);
  light->draw(&action);
  source.setIntensity(0.5f);
  EXPECT_THAT(callsOf(light), Contains("glLightfv(GL_LIGHT7, GL_SPOT_EXPONENT, 0.5)"));
}

TEST_F(LightDraw, NewLightsFillTheSlotsFromTheTop) {
  ozPointLight *const first = made<ozPointLight>(), *const second = made<ozPointLight>();
  first->draw(&action);
  second->draw(&action);
  EXPECT_EQ(context->getLight(7), first);
  EXPECT_EQ(context->getLight(6), second);
}

TEST_F(LightDraw, ANinthLightIsRefusedWithoutACallOrAReference) {
  for (int i = 0; i < 8; ++i) made<ozPointLight>()->draw(&action);
  ozPointLight *const ninth = made<ozPointLight>();
  EXPECT_THAT(callsOf(ninth), IsEmpty());
  EXPECT_EQ(ninth->getRefCount(), 1u);
}

TEST_F(LightDraw, ARefusedLightIsDefinedOnceASlotIsFree) {
  for (int i = 0; i < 8; ++i) made<ozPointLight>()->draw(&action);
  ozPointLight *const ninth = made<ozPointLight>();
  ninth->draw(&action);
  lights[3]->setOn(0);
  lights[3]->draw(&action);
  EXPECT_EQ(definitionsOf(ninth), 1);
}

TEST_F(LightDraw, AScopeTakesItOffAgain) {
  ozPointLight *const light = made<ozPointLight>();
  context->pushLights();
  light->draw(&action);
  GLRecorder rec;
  context->popLights();
  EXPECT_THAT(rec.texts(), ElementsAre("glDisable(GL_LIGHT7)"));
  EXPECT_EQ(light->getRefCount(), 1u);
}

TEST_F(LightDraw, MovedInsideAScopeItIsPutBackUnderTheMatrixBelow) {
  ozPointLight *const light = made<ozPointLight>();
  context->translate(1, 2, 3);
  light->draw(&action);
  context->pushLights();
  context->translate(7, 7, 7);
  light->draw(&action);
  GLRecorder rec;
  context->popLights();
  std::vector<std::string> calls = rec.texts();
  ASSERT_EQ(calls.size(), 12u);
  EXPECT_EQ(calls[0], "glPushMatrix()");
  EXPECT_THAT(rec.calls()[1], IsCall("glLoadMatrixf", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1}));
  EXPECT_EQ(calls[2], "glLightfv(GL_LIGHT7, GL_POSITION, 0, 0, 0, 1)");
  EXPECT_EQ(calls[11], "glPopMatrix()");
}

TEST_F(LightDraw, UnchangedInsideAScopeItCostsNothingOnTheWayOut) {
  ozPointLight *const light = made<ozPointLight>();
  light->draw(&action);
  context->pushLights();
  light->draw(&action);
  GLRecorder rec;
  context->popLights();
  EXPECT_THAT(rec.texts(), IsEmpty());
}

TEST_F(LightDraw, ChangedSinceItWasDrawnInAScopeItIsDefinedOnTheWayOut) {
  ozPointLight *const light = made<ozPointLight>();
  light->draw(&action);
  context->pushLights();
  light->draw(&action);
  light->setIntensity(0.5f);
  GLRecorder rec;
  context->popLights();
  EXPECT_EQ(rec.count("glLightfv(GL_LIGHT7, GL_DIFFUSE, 0.5, 0.5, 0.5, 1)"), 1);
}

/// A light in memory that outlives it.
class LightInPlace : public ozPointLight {
public:
  static void operator delete(void *) {}
};

TEST_F(LightDraw, TheLastReferenceSwitchesItOff) {
  alignas(LightInPlace) static unsigned char room[sizeof(LightInPlace)];
  LightInPlace *light = new (room) LightInPlace;
  light->ref();
  light->draw(&action);
  light->unref(); // the context's slot holds the other one
  GLRecorder rec;
  EXPECT_EQ(light->unref(), 1); // as the slot would
  EXPECT_THAT(rec.texts(), ElementsAre("glDisable(GL_LIGHT7)"));
  light = new (room) LightInPlace; // for the slot to let go of
  light->ref();
}

class CountingAction : public ozDrawAction {
public:
  ozTravDirective preVisit(ozNode *node) override { return before.push_back(node), beforeVerdict; }
  ozTravDirective postVisit(ozNode *node) override { return after.push_back(node), afterVerdict; }

  std::vector<ozNode *> before, after;
  ozTravDirective beforeVerdict = TRAV_CONT, afterVerdict = TRAV_CONT;
};

template <class Node> class DrawVisit : public ContextTest {
protected:
  void SetUp() override {
    ContextTest::SetUp();
    action.setContext(context);
    context->setFogEnable(1);
    node = new Node;
    node->ref();
  }
  void TearDown() override { node->unref(); }

  CountingAction action;
  Node *node;
};

typedef ::testing::Types<ozPointLight, ozDirectionalLight, ozSpotLight, ozFog> DrawnNodes;
TYPED_TEST_SUITE(DrawVisit, DrawnNodes);

TYPED_TEST(DrawVisit, DrawsBetweenTheActionsVisits) {
  GLRecorder rec;
  EXPECT_EQ(this->node->drawVisit(&this->action), TRAV_CONT);
  EXPECT_FALSE(rec.calls().empty());
  EXPECT_THAT(this->action.before, ElementsAre(this->node));
  EXPECT_THAT(this->action.after, ElementsAre(this->node));
}

TYPED_TEST(DrawVisit, AVerdictAheadKeepsItFromBeingDrawn) {
  this->action.beforeVerdict = TRAV_PRUNE;
  GLRecorder rec;
  EXPECT_EQ(this->node->drawVisit(&this->action), TRAV_PRUNE);
  EXPECT_THAT(rec.texts(), IsEmpty());
  EXPECT_THAT(this->action.after, ElementsAre(this->node));
}

TYPED_TEST(DrawVisit, GivesTheLargerVerdict) {
  this->action.afterVerdict = TRAV_TERM;
  EXPECT_EQ(this->node->drawVisit(&this->action), TRAV_TERM);
  this->action.beforeVerdict = TRAV_TERM;
  this->action.afterVerdict = TRAV_PRUNE;
  EXPECT_EQ(this->node->drawVisit(&this->action), TRAV_TERM);
}

} // namespace
