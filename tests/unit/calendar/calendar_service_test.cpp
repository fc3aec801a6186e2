#include "calendar/calendar_service.h"

#include <gtest/gtest.h>

#include "calendar/calendar_error.h"
#include "support/fake_calendar_store.h"
#include "support/manual_scheduler.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

using Failure = CalendarStore::Failure;

class CalendarServiceTest : public testing::Test {
 protected:
  CalendarServiceTest() {
    for (const char* variable : {"LC_ALL", "TZ"}) before.push_back({variable, qgetenv(variable)});
    qputenv("LC_ALL", "en_US.UTF-8");
    qputenv("TZ", "Europe/Berlin");
  }
  ~CalendarServiceTest() override {
    for (const auto& [variable, value] : before) {
      value.isNull() ? qunsetenv(variable) : qputenv(variable, value);
    }
  }

  /// The draft from a text; what failed is in `message`.
  CalendarDraft draft(const QString& text) {
    CalendarDraft result;
    message.clear();
    bool isAnswered = false;
    const Job job = service.makeDraft(text, [&](const std::variant<CalendarDraft, CalendarFailure>& answer) {
      isAnswered = true;
      if (const auto* failure = std::get_if<CalendarFailure>(&answer)) {
        message = failure->message;
      } else {
        result = std::get<CalendarDraft>(answer);
      }
    });
    EXPECT_FALSE(isAnswered) << "answered before the call returned";
    scheduler.advance(0);
    EXPECT_TRUE(isAnswered);
    return result;
  }
  /// What adding says, of success or failure.
  QString add(const CalendarDraft& draft) {
    QString text;
    const Job job = service.add(draft, [&](const std::variant<CalendarAddition, CalendarFailure>& answer) {
      const auto* failure = std::get_if<CalendarFailure>(&answer);
      text = failure ? failure->message : std::get<CalendarAddition>(answer).message;
    });
    EXPECT_TRUE(text.isEmpty()) << "answered before the call returned";
    scheduler.advance(0);
    return text;
  }
  [[nodiscard]] QDateTime local(int day, int hour, int minute = 0) const {
    return QDateTime(QDate(2026, 11, day), QTime(hour, minute), zone);
  }

  const QTimeZone zone{"Europe/Berlin"};
  QString message;
  ManualScheduler scheduler;
  FakeCalendarStore store{scheduler};
  CalendarService service{store, scheduler, [this] {
                            return detect::Surroundings{local(13, 10), zone, QLocale(u"en_US"_s)};
                          }};
  const CalendarDraft sync{u"Team sync"_s, local(16, 15), local(16, 16), u"Work"_s};

 private:
  std::vector<std::pair<const char*, QByteArray>> before;
};

const QString denied =
    u"Lumeno needs Calendar access. Grant it in System Settings \u203A Privacy & Security \u203A Calendars."_s;
const QString noDate = u"Couldn't find a date or time in the selection."_s;
const QString noCalendar = u"No default calendar is set up to add events to."_s;

TEST_F(CalendarServiceTest, DraftsTheFirstDateInTheText) {
  const struct {
    QString text;
    CalendarDraft draft;
  } cases[] = {
      {u"Dentist tomorrow at 3pm"_s, {u"Dentist tomorrow at 3pm"_s, local(14, 15), local(14, 16), u"Work"_s}},
      {u"Review on Nov 20 from 2pm to 4pm, then dinner on Nov 21"_s,
       {u"Review on Nov 20 from 2pm to 4pm, then dinner on Nov 21"_s, local(20, 14), local(20, 16),
        u"Work"_s}},
      {u"\nLate shift\nNov 17, 2026 11:30 PM"_s,
       {u"Late shift"_s, local(17, 23, 30), local(18, 0, 30), u"Work"_s}},
  };
  store.calendar = CalendarStore::Calendar{u"Work"_s};
  for (const auto& test : cases) EXPECT_EQ(draft(test.text), test.draft) << test.text.toStdString();
  EXPECT_EQ(cases[2].draft.dateRangeText(), u"Tuesday, November 17, 2026 · 11:30 PM – 12:30 AM"_s);
}

TEST_F(CalendarServiceTest, WithoutADateNothingIsAsked) {
  draft(u"Budget review"_s);
  EXPECT_EQ(message, noDate);
  EXPECT_EQ(store.requests, 0);
}

TEST_F(CalendarServiceTest, FailuresHaveTheirMessages) {
  const QString text = u"Dentist tomorrow at 3pm"_s;
  for (const auto access : {CalendarStore::Access::refused, CalendarStore::Access::failed}) {
    store.access = access;
    draft(text);
    EXPECT_EQ(message, denied);
    EXPECT_EQ(add(sync), denied);
  }
  EXPECT_TRUE(store.saved.empty());
  store.access = CalendarStore::Access::granted;
  const std::pair<Failure, QString> failures[] = {
      {{Failure::Reason::refused, {}}, denied},
      {{Failure::Reason::noCalendar, {}}, noCalendar},
      {{Failure::Reason::other, u"The disk is full."_s}, u"The disk is full."_s},
  };
  for (const auto& [failure, expected] : failures) {
    store.calendar = failure;
    store.saveAnswer = failure;
    draft(text);
    EXPECT_EQ(message, expected);
    EXPECT_EQ(add(sync), expected);
  }
}

TEST_F(CalendarServiceTest, AddingTellsWhereTheEventWent) {
  store.saveAnswer = CalendarStore::Saved{u"Home"_s};
  EXPECT_EQ(add(sync), u"Added “Team sync” to Home on Nov 16, 2026 at 3:00 PM."_s);
  EXPECT_EQ(store.saved, (std::vector{CalendarEvent{sync.title, sync.startDate, sync.endDate}}));
  store.saveAnswer = CalendarStore::Saved{u"Planner"_s, CalendarStore::Saved::State::opened};
  EXPECT_EQ(add(sync), u"Opened in Planner. Confirm it there."_s);
}

TEST_F(CalendarServiceTest, DroppingAHandleDropsTheAnswerButNotTheSave) {
  int answers = 0;
  Job drafting = service.makeDraft(u"Dentist tomorrow"_s, [&](const auto&) { ++answers; });
  Job adding = service.add(sync, [&](const auto&) { ++answers; });
  drafting.cancel();
  adding.cancel();
  scheduler.advance(0);
  EXPECT_EQ(answers, 0);
  EXPECT_EQ(store.saved.size(), 1U);
  EXPECT_EQ(scheduler.pendingCount(), 0U);
}

}  // namespace
}  // namespace lumeno
