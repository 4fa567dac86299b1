#include "oz/ozDispatch.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "oz/ozClass.h"

namespace {

class Tool : public ozDispatch {
  OZ_OBJECT_CLASS(Tool);

public:
  Tool() : ozDispatch(getClassType()) {}

protected:
  explicit Tool(ozType *type) : ozDispatch(type) {}
};
OZ_DEFINE_TYPE(Tool, "Tool", ozDispatch) {}

class FineTool : public Tool {
  OZ_OBJECT_CLASS(FineTool);

public:
  FineTool() : Tool(getClassType()) {}
};
OZ_DEFINE_TYPE(FineTool, "FineTool", Tool) {}

class Thing : public ozObject {
  OZ_OBJECT_CLASS(Thing);

public:
  Thing() : ozObject(getClassType()) {}

protected:
  explicit Thing(ozType *type) : ozObject(type) {}
};
OZ_DEFINE_TYPE(Thing, "Thing", ozObject) {}

class SmallThing : public Thing {
  OZ_OBJECT_CLASS(SmallThing);

public:
  SmallThing() : Thing(getClassType()) {}
};
OZ_DEFINE_TYPE(SmallThing, "SmallThing", Thing) {}

class LateThing : public Thing {
  OZ_OBJECT_CLASS(LateThing);

public:
  LateThing() : Thing(getClassType()) {}
};
OZ_DEFINE_TYPE(LateThing, "LateThing", Thing) {}

struct Call {
  std::string name;
  ozDispatch *tool;
  ozObject *thing;
};
std::vector<Call> Calls;

template <char Name> void called(ozDispatch *tool, ozObject *thing) {
  Calls.push_back({std::string(1, Name), tool, thing});
}

/// The function that a tool finds for a thing; "" for the one that does nothing.
std::string found(ozDispatch &tool, ozObject &thing) {
  Calls.clear();
  tool.apply(&thing);
  if (Calls.empty()) return "";
  EXPECT_EQ(Calls.size(), 1u);
  EXPECT_EQ(Calls[0].tool, &tool);
  EXPECT_EQ(Calls[0].thing, &thing);
  return Calls[0].name;
}

} // namespace

// The bindings of a process last, so the tests of this one build on each other in this order.

TEST(Dispatch, IsRegisteredBelowObject) {
  EXPECT_STREQ(ozDispatch::getClassType()->getName(), "ozDispatch");
  EXPECT_EQ(ozDispatch::getClassType()->getAncestor(), ozObject::getClassType());
}

TEST(Dispatch, DispatchersHaveARowAndAColumnOthersAColumn) {
  int const first = ozDispatch::getClassType()->getDispatchID();
  EXPECT_EQ(first, 0);
  EXPECT_EQ(Tool::getClassType()->getDispatchID(), 1);
  EXPECT_EQ(FineTool::getClassType()->getDispatchID(), 2);
  EXPECT_GT(FineTool::getClassType()->getObjectID(), Tool::getClassType()->getObjectID());
  EXPECT_EQ(Thing::getClassType()->getDispatchID(), -1);
  EXPECT_GE(Thing::getClassType()->getObjectID(), 0);
  EXPECT_EQ(ozObject::getClassType()->getObjectID(), 0);
}

TEST(Dispatch, WithoutABindingNothingHappens) {
  Tool tool;
  FineTool fine;
  SmallThing thing;
  EXPECT_EQ(found(tool, thing), "");
  EXPECT_EQ(found(fine, thing), "");
  EXPECT_EQ(found(tool, tool), "");
}

TEST(Dispatch, ABindingOnObjectServesEveryClassAndDerivedDispatchers) {
  ozDispatch::bindFunction(Tool::getClassType(), ozObject::getClassType(), called<'a'>);
  Tool tool;
  FineTool fine;
  Thing thing;
  SmallThing small;
  EXPECT_EQ(found(tool, thing), "a");
  EXPECT_EQ(found(tool, small), "a");
  EXPECT_EQ(found(fine, small), "a");
  EXPECT_EQ(found(fine, tool), "a");
}

TEST(Dispatch, ANearerBindingWins) {
  ozDispatch::bindFunction(Tool::getClassType(), Thing::getClassType(), called<'b'>);
  Tool tool;
  FineTool fine;
  SmallThing small;
  EXPECT_EQ(found(tool, small), "b");
  EXPECT_EQ(found(fine, small), "b");
  EXPECT_EQ(found(tool, tool), "a");
}

TEST(Dispatch, TheDispatchersOwnBindingBeatsItsParentsOnANearerClass) {
  ozDispatch::bindFunction(Tool::getClassType(), SmallThing::getClassType(), called<'c'>);
  ozDispatch::bindFunction(FineTool::getClassType(), Thing::getClassType(), called<'d'>);
  Tool tool;
  FineTool fine;
  Thing thing;
  SmallThing small;
  EXPECT_EQ(found(tool, small), "c");
  EXPECT_EQ(found(fine, small), "d");
  EXPECT_EQ(found(fine, thing), "d");
  EXPECT_EQ(found(fine, tool), "a");
}

TEST(Dispatch, AClassRegisteredAfterALookUpIsSeenByTheNext) {
  Tool tool;
  FineTool fine;
  LateThing late;
  EXPECT_EQ(found(tool, late), "b");
  EXPECT_EQ(found(fine, late), "d");
}
