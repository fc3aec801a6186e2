#include "platform/eds/preferred_calendar_store.h"

#include <gtest/gtest.h>

#include "support/fake_calendar_store.h"
#include "support/manual_scheduler.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

struct Fixture {
  Fixture() {
    preferred.calendar = CalendarStore::Calendar{u"Service"_s};
    other.calendar = CalendarStore::Calendar{u"Application"_s};
    other.status = CalendarStore::AuthorizationStatus::restricted;
    other.access = CalendarStore::Access::refused;
  }

  ManualScheduler scheduler;
  FakeCalendarStore preferred{scheduler};
  FakeCalendarStore other{scheduler};
  bool isAvailable = true;
  PreferredCalendarStore store{preferred,
                               [this](std::function<void(bool)> done) {
                                 return scheduler.after(std::chrono::milliseconds(10),
                                                        [this, done] { done(isAvailable); });
                               },
                               other};
  const CalendarEvent event{u"Tea"_s, QDateTime(), QDateTime()};
};

TEST(PreferredCalendarStore, DecidesAtEachUse) {
  Fixture f;
  QStringList titles;
  QList<CalendarStore::AuthorizationStatus> statuses;
  QList<CalendarStore::Access> answers;
  for (const bool isAvailable : {true, false}) {
    f.isAvailable = isAvailable;
    const Job jobs[] = {
        f.store.defaultCalendar([&](const auto& answer) { titles << std::get<0>(answer).title; }),
        f.store.authorizationStatus([&](auto status) { statuses << status; }),
        f.store.requestWriteAccess([&](auto access) { answers << access; }),
        f.store.save(f.event, [&](const auto& answer) { titles << std::get<0>(answer).calendarTitle; }),
    };
    f.scheduler.advance(10);
  }
  EXPECT_EQ(titles, (QStringList{u"Service"_s, u"Personal"_s, u"Application"_s, u"Personal"_s}));
  EXPECT_EQ(f.preferred.saved.size(), 1U);
  EXPECT_EQ(f.other.saved.size(), 1U);
  EXPECT_EQ(statuses, (QList{CalendarStore::AuthorizationStatus::granted,
                             CalendarStore::AuthorizationStatus::restricted}));
  EXPECT_EQ(answers, (QList{CalendarStore::Access::granted, CalendarStore::Access::refused}));
}

TEST(PreferredCalendarStore, DroppedHandlesEndEverythingButASave) {
  Fixture f;
  int answers = 0;
  f.store.defaultCalendar([&](const auto&) { ++answers; }).cancel();
  f.store.save(f.event, [&](const auto&) { ++answers; }).cancel();
  f.scheduler.advance(10);
  EXPECT_EQ(answers, 0);
  EXPECT_EQ(f.preferred.saved.size(), 1U);
  EXPECT_EQ(f.scheduler.pendingCount(), 0U);
}

}  // namespace
}  // namespace lumeno
