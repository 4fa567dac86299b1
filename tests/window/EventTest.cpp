#include "oz/ozEvent.h"

#include "oz/ozOutput.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <string>

TEST(Event, TypeHasTheParentContainer) {
  EXPECT_STREQ(ozEvent::getClassType()->getName(), "Event");
  EXPECT_EQ(ozEvent::getClassType()->getAncestor(), ozContainer::getClassType());
  EXPECT_EQ(ozType::getType("Event"), ozEvent::getClassType());
}

TEST(Event, KnowsItsType) {
  ozEvent event;
  EXPECT_EQ(event.getType(), ozEvent::getClassType());
}

TEST(Event, TypesAndButtonsHaveTheirNumbers) {
  int const types[] = {ozEvent::RESHAPE_EVENT,        ozEvent::DISPLAY_EVENT,    ozEvent::CLOSE_EVENT,
                       ozEvent::MOUSE_UP_EVENT,       ozEvent::MOUSE_DOWN_EVENT, ozEvent::MOTION_EVENT,
                       ozEvent::PASSIVE_MOTION_EVENT, ozEvent::KEY_DOWN_EVENT,   ozEvent::KEY_UP_EVENT,
                       ozEvent::SPECIAL_DOWN_EVENT,   ozEvent::SPECIAL_UP_EVENT, ozEvent::TIMER_EVENT};
  for (int i = 0; i < 12; ++i) EXPECT_EQ(types[i], i);
  EXPECT_EQ(ozEvent::LEFT_BUTTON, 1);
  EXPECT_EQ(ozEvent::MIDDLE_BUTTON, 2);
  EXPECT_EQ(ozEvent::RIGHT_BUTTON, 4);
  EXPECT_EQ(ozEvent::WHEEL_UP_BUTTON, 8);
  EXPECT_EQ(ozEvent::WHEEL_DOWN_BUTTON, 16);
}

namespace {

template <class T> std::string written(T &value, int indent = 0) {
  char *text = nullptr;
  size_t length = 0;
  FILE *const stream = open_memstream(&text, &length);
  {
    ozOutput out(stream);
    for (int i = 0; i < indent; ++i) out.pushIndent();
    value.write(&out);
  }
  fclose(stream);
  std::string const result(text, length);
  free(text);
  return result;
}

} // namespace

TEST(Event, WritesNothing) {
  ozEvent event;
  EXPECT_EQ(written(event), "");
}

TEST(EventArray, HoldsEvents) {
  ozEvent a, b;
  ozEventArray array(16);
  array.append(&a);
  array.append(&b);
  EXPECT_EQ(array.getCount(), 2u);
  EXPECT_EQ(array.get(0), &a);
  EXPECT_EQ(array[1], &b);
  EXPECT_EQ(array.find(&b), 1);
  EXPECT_EQ(array.remove(&a), 1);
  EXPECT_EQ(array[0], &b);
}

// An event writes nothing itself, so a line is the indentation and the comma.
TEST(EventArray, WritesALineForEachEventThatIsNotNull) {
  ozEvent a, b;
  ozEventArray array(16);
  array.append(&a);
  array.append(nullptr);
  array.append(&b);
  std::string const flat = written(array), deep = written(array, 1);
  EXPECT_EQ(flat, "[\n,\n,\n]");
  std::string const step = deep.substr(2, deep.find(',') - 2);
  EXPECT_GT(step.size(), 0u);
  EXPECT_EQ(step.find_first_not_of(" \t"), std::string::npos);
  EXPECT_EQ(deep, "[\n" + step + ",\n" + step + ",\n" + step + "]");
}
