#include "oz/ozTime.h"

#include <gtest/gtest.h>

#include <limits.h>
#include <math.h>
#include <string>
#include <time.h>

namespace {

std::string format(double seconds, char const *pattern) {
  ozString text = ozTime(seconds).format(pattern);
  return text.getString() ? text.getString() : "(null)";
}

TEST(Time, IsOneDouble) { EXPECT_EQ(sizeof(double), sizeof(ozTime)); }

TEST(Time, IsMadeFromSeconds) { EXPECT_EQ(2.5, ozTime(2.5).get()); }

TEST(Time, IsMadeFromSecondsAndMicroseconds) {
  EXPECT_EQ(1.5, ozTime(1, 500000).get());
  EXPECT_EQ(-0.75, ozTime(-1, 250000).get());
}

TEST(Time, SetsItsValueInBothForms) {
  ozTime t;
  t.setValue(3.25);
  EXPECT_EQ(3.25, t.get());
  t.setValue(2, 500000);
  EXPECT_EQ(2.5, t.get());
}

TEST(Time, TheSecondFormOfGetGivesTheSecondsAndTheSecondsLess6) {
  long sec, usec;
  ozTime(10.75).get(sec, usec);
  EXPECT_EQ(10, sec);
  EXPECT_EQ(4, usec);
  ozTime(-1.5).get(sec, usec); // cut towards zero
  EXPECT_EQ(-1, sec);
  EXPECT_EQ(-7, usec);
}

TEST(Time, GetIsDefinedForEveryDouble) {
  long sec, usec;
  ozTime(INFINITY).get(sec, usec);
  EXPECT_EQ(LONG_MAX, sec);
  EXPECT_EQ(LONG_MAX, usec);
  ozTime(-INFINITY).get(sec, usec);
  EXPECT_EQ(LONG_MIN, sec);
  EXPECT_EQ(LONG_MIN, usec);
  ozTime(NAN).get(sec, usec);
  EXPECT_EQ(0, sec);
  EXPECT_EQ(0, usec);
}

TEST(Time, GivesMillisecondsCutToAnInteger) {
  EXPECT_EQ(1999ul, ozTime(1.9999).getMsec());
  EXPECT_EQ(0ul, ozTime(0.0).getMsec());
  EXPECT_EQ(static_cast<unsigned long>(-1500L), ozTime(-1.5).getMsec());
}

TEST(Time, MillisecondsAreDefinedForEveryDouble) {
  EXPECT_EQ(ULONG_MAX, ozTime(INFINITY).getMsec());
  EXPECT_EQ(static_cast<unsigned long>(LONG_MIN), ozTime(-INFINITY).getMsec());
  EXPECT_EQ(0ul, ozTime(NAN).getMsec());
  EXPECT_EQ(10000000000000000000ul, ozTime(1e16).getMsec());
}

TEST(Time, ZeroAndMaxTime) {
  EXPECT_EQ(0.0, ozTime::zero().get());
  EXPECT_EQ(2e9, ozTime::maxTime().get());
}

TEST(Time, TheTimeOfDayCountsFromTheEpochInMillisecondsOrFiner) {
  timespec before, after;
  clock_gettime(CLOCK_REALTIME, &before);
  double now = ozTime::getTimeOfDay().get();
  ozTime set(0.0);
  set.setToTimeOfDay();
  clock_gettime(CLOCK_REALTIME, &after);
  EXPECT_GE(now, before.tv_sec + before.tv_nsec * 1e-9 - 0.001);
  EXPECT_LE(now, after.tv_sec + after.tv_nsec * 1e-9 + 0.001);
  EXPECT_GE(set.get(), now);
  EXPECT_LE(set.get(), after.tv_sec + after.tv_nsec * 1e-9 + 0.001);
}

TEST(Time, TheTimeOfDayMovesByLessThanASecond) {
  double first = ozTime::getTimeOfDay().get(), next = first;
  timespec pause = {0, 5000000};
  for (int i = 0; i < 100 && next == first; ++i) {
    nanosleep(&pause, nullptr);
    next = ozTime::getTimeOfDay().get();
  }
  EXPECT_GT(next, first);
  EXPECT_LT(next, first + 0.9);
}

TEST(Time, Compares) {
  ozTime one(1.0), two(2.0);
  EXPECT_TRUE(one == ozTime(1.0));
  EXPECT_FALSE(one == two);
  EXPECT_TRUE(one != two);
  EXPECT_FALSE(one != ozTime(1.0));
  EXPECT_TRUE(one < two);
  EXPECT_FALSE(two < one);
  EXPECT_FALSE(one < one);
  EXPECT_TRUE(one <= one);
  EXPECT_FALSE(two <= one);
  EXPECT_TRUE(two > one);
  EXPECT_FALSE(one > one);
  EXPECT_TRUE(two >= two);
  EXPECT_FALSE(one >= two);
}

TEST(Time, Calculates) {
  ozTime a(6.0), b(1.5);
  EXPECT_EQ(-6.0, (-a).get());
  EXPECT_EQ(7.5, (a + b).get());
  EXPECT_EQ(4.5, (a - b).get());
  EXPECT_EQ(12.0, (a * 2.0).get());
  EXPECT_EQ(12.0, (2.0 * a).get());
  EXPECT_EQ(3.0, (a / 2.0).get());
  EXPECT_EQ(4.0, a / b);
}

TEST(Time, CalculatesInPlace) {
  ozTime t(6.0);
  EXPECT_EQ(&t, &(t += ozTime(2.0)));
  EXPECT_EQ(8.0, t.get());
  EXPECT_EQ(&t, &(t -= ozTime(3.0)));
  EXPECT_EQ(5.0, t.get());
  EXPECT_EQ(&t, &(t *= 4.0));
  EXPECT_EQ(20.0, t.get());
  EXPECT_EQ(&t, &(t /= 8.0));
  EXPECT_EQ(2.5, t.get());
}

TEST(Time, TheRemainderFollowsTheFloor) {
  EXPECT_EQ(2.0, ozTime(7).operator%(ozTime(5)).get());
  EXPECT_EQ(4.0, (ozTime(-1) % ozTime(5)).get());
  EXPECT_EQ(-4.0, (ozTime(1) % ozTime(-5)).get());
  EXPECT_EQ(0.0, (ozTime(10) % ozTime(2.5)).get());
}

TEST(TimeFormat, GivesTheTotals) { // 2 days, 3 hours, 4 minutes, 5.678912 seconds
  const double t = 2 * 86400 + 3 * 3600 + 4 * 60 + 5.678912;
  EXPECT_EQ("2", format(t, "%D"));
  EXPECT_EQ("51", format(t, "%H"));
  EXPECT_EQ("3064", format(t, "%M"));
  EXPECT_EQ("183845", format(t, "%S"));
  EXPECT_EQ("183845678", format(t, "%I"));
  EXPECT_EQ("183845678912", format(t, "%U"));
}

TEST(TimeFormat, GivesTheParts) {
  const double t = 2 * 86400 + 3 * 3600 + 4 * 60 + 5.0078125; // 2^-7: exact
  EXPECT_EQ("03", format(t, "%h"));
  EXPECT_EQ("04", format(t, "%m"));
  EXPECT_EQ("05", format(t, "%s"));
  EXPECT_EQ("007", format(t, "%i"));
  EXPECT_EQ("007812", format(t, "%u"));
  EXPECT_EQ("01:01:01.250", format(3661.25, "%h:%m:%s.%i"));
}

TEST(TimeFormat, PutsTheSignBeforeTotalsOnly) {
  EXPECT_EQ("-1 30", format(-90.5, "%M %s"));
  EXPECT_EQ("-0 -0 -1 -90 -90500 -90500000", format(-90.5, "%D %H %M %S %I %U"));
  EXPECT_EQ("00 01 30 500 500000", format(-90.5, "%h %m %s %i %u"));
}

TEST(TimeFormat, GivesMinusZeroNoSign) { EXPECT_EQ("0 0 00", format(-0.0, "%D %U %s")); }

TEST(TimeFormat, CopiesWhatIsNoConversion) {
  EXPECT_EQ("plain text", format(1, "plain text"));
  EXPECT_EQ("100%", format(1, "100%%"));
  EXPECT_EQ("%q", format(1, "%q"));
  EXPECT_EQ("%d%", format(1, "%d%%"));
  EXPECT_EQ("%\n", format(1, "%\n"));
}

TEST(TimeFormat, EndsAtAPercentSignAtTheEnd) {
  EXPECT_EQ("", format(1, "%"));
  EXPECT_EQ("ab", format(1, "ab%"));
}

TEST(TimeFormat, OfAnEmptySpecificationIsAnEmptyString) {
  ozString text = ozTime(1.0).format("");
  ASSERT_NE(nullptr, text.getString());
  EXPECT_STREQ("", text.getString());
  EXPECT_EQ("", format(1, nullptr));
}

TEST(TimeFormat, StopsOnceItHasGrownPast192Characters) {
  EXPECT_EQ(std::string(192, 'x'), format(1, std::string(192, 'x').c_str()));
  EXPECT_EQ(std::string(193, 'x'), format(1, std::string(193, 'x').c_str()));
  EXPECT_EQ(std::string(193, 'x'), format(1, std::string(194, 'x').c_str()));
  EXPECT_EQ(std::string(193, 'x'), format(1, std::string(5000, 'x').c_str()));
}

TEST(TimeFormat, OneItemMayPassTheMark) {
  std::string mark(192, 'x');
  EXPECT_EQ(mark + "%q", format(1, (mark + "%qrest").c_str()));
  EXPECT_EQ(mark + "-1000000", format(-1, (mark + "%Urest").c_str()));
  EXPECT_EQ(mark + "y", format(1, (mark + "y%U").c_str()));
}

TEST(TimeFormat, OfInfinitiesAndNaNEnds) {
  const double worst[] = {INFINITY, -INFINITY, NAN, -NAN, 1e300, -1e300, 9.3e18, -9.3e12};
  for (double t : worst) {
    std::string pattern = std::string(170, 'x') + "%D%H%M%S%I%U%h%m%s%i%u%D%H%M%S%I%U%h%m%s%i%u";
    std::string text = format(t, pattern.c_str());
    EXPECT_LE(text.size(), 192u + 21u) << t;
    EXPECT_EQ(std::string(170, 'x'), text.substr(0, 170)) << t;
  }
  EXPECT_EQ("0 0 00", format(NAN, "%D %U %s"));
  EXPECT_EQ("9223372036854775807", format(INFINITY, "%S"));
  EXPECT_EQ("-9223372036854775807", format(-INFINITY, "%S"));
}

} // namespace
