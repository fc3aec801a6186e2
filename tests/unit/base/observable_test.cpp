#include "base/observable.h"

#include <gtest/gtest.h>

#include <string>

namespace lumeno {
namespace {

using Values = std::vector<int>;

TEST(Observable, DeliversTheCurrentValueAndThenEveryAssignment) {
  Observable<int> number(1);
  Values all;
  Values distinct;
  const auto everything = number.subscribe([&](int value) { all.push_back(value); });
  const auto changes = number.subscribeDistinct([&](int value) { distinct.push_back(value); });
  for (const int value : {1, 2, 2, 1}) number.set(value);
  EXPECT_EQ(all, (Values{1, 1, 2, 2, 1}));
  EXPECT_EQ(distinct, (Values{1, 2, 1}));
}

TEST(Observable, ObserversMayAssignWhileTheyAreTold) {
  Observable<std::string> text("a");
  std::vector<std::string> seen;
  const auto corrector = text.subscribe([&](const std::string& value) {
    if (value == "b") text.set("corrected");
  });
  const auto second = text.subscribe([&](const std::string& value) { seen.push_back(value); });
  text.set("b");
  EXPECT_EQ(text.get(), "corrected");
  // The outer assignment reaches later observers after the inner one, with its own value.
  EXPECT_EQ(seen, (std::vector<std::string>{"a", "corrected", "b"}));
}

TEST(Signal, ListenersMayComeAndGoDuringACall) {
  Signal<int> signal;
  Values seen;
  Subscription second;
  Subscription late;
  const auto first = signal.connect([&](int value) {
    second.reset();
    if (!late) late = signal.connect([&](int v) { seen.push_back(10 * v); });
    seen.push_back(value);
  });
  second = signal.connect([&](int value) { seen.push_back(100 * value); });
  signal.emit(1);
  EXPECT_EQ(seen, Values{1});
  signal.emit(2);
  EXPECT_EQ(seen, (Values{1, 2, 20}));
}

TEST(Subscription, EndsWithItsHandleAndOutlivesItsSource) {
  Values seen;
  auto number = std::make_unique<Observable<int>>(1);
  auto subscription = number->subscribe([&](int value) { seen.push_back(value); });
  auto moved = std::move(subscription);
  EXPECT_FALSE(subscription);
  number->set(2);
  moved = Subscription();
  number->set(3);
  EXPECT_EQ(seen, (Values{1, 2}));

  auto orphan = number->subscribe([](int) {});
  number.reset();
  orphan.reset();
}

TEST(Subscription, AListenerMayEndItself) {
  Signal<> signal;
  int calls = 0;
  Subscription own;
  own = signal.connect([&] {
    own.reset();
    ++calls;  // the listener's state is still alive
  });
  signal.emit();
  signal.emit();
  EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace lumeno
