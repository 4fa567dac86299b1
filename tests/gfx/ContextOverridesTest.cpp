#include "contextProbe.h"
#include "oz/ozAppearance.h"
#include "oz/ozOverrideGeoProp.h"
#include "support/capture.h"
#include "support/glRecorder.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(ContextTest, HoldsSixteenOverrideAppearances) {
  ozAppearance *const appearance = new ozAppearance;
  appearance->ref();
  EXPECT_EQ(stderrOf([&] {
              for (int i = 0; i < 16; ++i) context->pushOverrideAppearance(appearance);
            }),
            "");
  EXPECT_EQ(appearance->getRefCount(), 17u);
  EXPECT_EQ(stderrOf([&] { context->pushOverrideAppearance(appearance); }),
            "overflow in ozContext override appearance stack\n");
  EXPECT_EQ(appearance->getRefCount(), 17u);
  EXPECT_EQ(stderrOf([&] { context->pushOverrideAppearance(nullptr); }),
            "overflow in ozContext override appearance stack\n");
  for (int i = 0; i < 16; ++i) EXPECT_EQ(context->popOverrideAppearance(), appearance);
  EXPECT_EQ(appearance->getRefCount(), 1u);
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(context->popOverrideAppearance(), nullptr); }),
            "underflow in ozContext override appearance stack\n");
  appearance->unref();
}

TEST_F(ContextTest, RefusesANullOverrideAppearance) {
  EXPECT_EQ(stderrOf([&] { context->pushOverrideAppearance(nullptr); }),
            "pushOverrideAppearance was passed a NULL node.\n");
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(context->popOverrideAppearance(), nullptr); }),
            "underflow in ozContext override appearance stack\n");
}

TEST_F(ContextTest, HoldsSixteenGeometryOverrides) {
  ozOverrideGeoProp *const properties = new ozOverrideGeoProp;
  properties->ref();
  EXPECT_EQ(stderrOf([&] {
              for (int i = 0; i < 16; ++i) context->pushOverrideGeoProp(properties);
            }),
            "");
  EXPECT_EQ(stderrOf([&] { context->pushOverrideGeoProp(properties); }),
            "overflow in ozContext override geometry property stack\n");
  EXPECT_EQ(stderrOf([&] { context->pushOverrideGeoProp(nullptr); }),
            "overflow in ozContext override geometry property stack\n");
  EXPECT_EQ(properties->getRefCount(), 17u);
  for (int i = 0; i < 16; ++i) EXPECT_EQ(context->popOverrideGeoProp(), properties);
  EXPECT_EQ(properties->getRefCount(), 1u);
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(context->popOverrideGeoProp(), nullptr); }),
            "underflow in ozContext override geometry property stack\n");
  properties->unref();
}

TEST_F(ContextTest, RefusesANullGeometryOverride) {
  EXPECT_EQ(stderrOf([&] { context->pushOverrideGeoProp(nullptr); }), "pushOverrideGeoProp was passed a NULL node.\n");
}

TEST_F(ContextTest, LeavesWidthsAloneWhenAPopFindsNothing) {
  CaptureStderr errors;
  context->popOverrideGeoProp();
  EXPECT_EQ(context->getLineWidth(), 1);
}

TEST_F(ContextTest, SendsEverythingAgainAfterAGeometryOverride) {
  context->pushOverrideGeoProp(new ozOverrideGeoProp);
  context->popOverrideGeoProp();
  EXPECT_EQ(context->getCullFace(), -1);
  EXPECT_EQ(context->getLineWidth(), -1);
  EXPECT_EQ(context->getPointSize(), -1);
  GLRecorder rec;
  context->setLineWidth(1);
  context->setPointSize(1);
  context->setCullFace(ozContext::NO_CULL);
  EXPECT_THAT(rec.texts(), ElementsAre("glLineWidth(1)", "glPointSize(1)", "glDisable(GL_CULL_FACE)"));
}

TEST_F(ContextTest, PutsAGeometryOverrideInTheWayOfItsThreeItems) {
  ozOverrideGeoProp *const properties = new ozOverrideGeoProp;
  properties->setLineWidth(6);
  properties->setPointSize(7);
  properties->setCullFace(ozContext::BOTH_CULL);
  context->pushOverrideGeoProp(properties);
  GLRecorder rec;
  context->setLineWidth(3);
  context->setPointSize(4);
  context->setCullFace(ozContext::FRONT_CULL);
  EXPECT_THAT(rec.texts(), ElementsAre("glLineWidth(6)", "glPointSize(7)", "glEnable(GL_CULL_FACE)",
                                       "glCullFace(GL_FRONT_AND_BACK)"));
  EXPECT_EQ(context->getLineWidth(), 6);
  EXPECT_EQ(context->getPointSize(), 7);
  EXPECT_EQ(context->getCullFace(), ozContext::BOTH_CULL);
  EXPECT_EQ(context->getDefaultState().lineWidth, 3);
  EXPECT_EQ(context->getDefaultState().pointSize, 4);
  EXPECT_EQ(context->getDefaultState().cullFace, ozContext::FRONT_CULL);
  context->popOverrideGeoProp();
}

TEST_F(ContextTest, LetsThroughWhatTheGeometryOverrideDoesNotSet) {
  ozOverrideGeoProp *const properties = new ozOverrideGeoProp;
  properties->setPointSize(7);
  context->pushOverrideGeoProp(properties);
  GLRecorder rec;
  context->setLineWidth(3);
  EXPECT_THAT(rec.texts(), ElementsAre("glLineWidth(3)"));
  context->popOverrideGeoProp();
}

TEST_F(ContextTest, AsksOnlyTheGeometryOverrideOnTop) {
  ozOverrideGeoProp *const wide = new ozOverrideGeoProp;
  wide->setLineWidth(6);
  context->pushOverrideGeoProp(wide);
  context->pushOverrideGeoProp(new ozOverrideGeoProp);
  context->setLineWidth(3);
  EXPECT_EQ(context->getLineWidth(), 3);
  context->popOverrideGeoProp();
  context->setLineWidth(3);
  EXPECT_EQ(context->getLineWidth(), 6);
  context->popOverrideGeoProp();
}
