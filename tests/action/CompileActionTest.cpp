#include "oz/ozCompileAction.h"

#include "action/drawFixture.h"

typedef DrawFixture CompileAction;

TEST_F(CompileAction, LendsADrawActionThatNothingWasAppliedTo) {
  ozCompileAction compile;
  ASSERT_NE(compile.getDrawAction(), nullptr);
  EXPECT_EQ(compile.getDrawAction()->getType(), ozDrawAction::getClassType());
  EXPECT_EQ(compile.getDrawAction()->getCamera(), nullptr);
  EXPECT_EQ(compile.getDrawAction()->getBPCullMode(), 0);
  EXPECT_EQ(compile.getUncompile(), 0);
}

TEST_F(CompileAction, KeepsTheUncompileFlag) {
  ozCompileAction compile;
  compile.setUncompile(1);
  EXPECT_EQ(compile.getUncompile(), 1);
}

TEST_F(CompileAction, ApplyFixesTheContextAndVisitsNothing) {
  Held<ProbeNode> node;
  node->verdict = TRAV_TERM;
  Hooked<ozCompileAction> compile;
  EXPECT_EQ(compile.apply(node), TRAV_CONT);
  EXPECT_EQ(compile.apply(nullptr), TRAV_CONT);
  EXPECT_TRUE(node->visits.empty());
  EXPECT_TRUE(compile.log.empty());
  ozContext::releaseCurrent();
  EXPECT_EQ(compile.getContext(), context);
  EXPECT_EQ(compile.getDrawAction()->getContext(), context);
  compile.apply(nullptr);
  EXPECT_EQ(compile.getContext(), nullptr);
  EXPECT_EQ(compile.getDrawAction()->getContext(), nullptr);
  context->makeCurrent(device);
}

TEST_F(CompileAction, GetContextTakesTheCurrentOneAndHandsItOn) {
  ozCompileAction compile;
  EXPECT_EQ(compile.getContext(), context);
  compile.getDrawAction()->setContext(nullptr);
  ozContext::releaseCurrent();
  EXPECT_EQ(compile.getContext(), context);
  EXPECT_EQ(compile.getDrawAction()->getContext(), context);
  context->makeCurrent(device);
}

TEST_F(CompileAction, CopiesShareTheDrawAction) {
  auto *first = new ozCompileAction;
  ozCompileAction const copy(*first);
  ozCompileAction assigned;
  assigned = *first;
  EXPECT_EQ(copy.getDrawAction(), first->getDrawAction());
  EXPECT_EQ(assigned.getDrawAction(), first->getDrawAction());
  first->unref();
  EXPECT_EQ(copy.getDrawAction()->getBPCullMode(), 0);
}
