#include "base/job.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include "base/qt_scheduler.h"

namespace lumeno {
namespace {

using namespace std::chrono_literals;

TEST(Job, IsCancelledOnceByWhateverComesFirst) {
  int cancelled = 0;
  {
    Job job([&] { ++cancelled; });
    EXPECT_TRUE(job);
    job.cancel();
    EXPECT_FALSE(job);
  }
  EXPECT_EQ(cancelled, 1);
  {
    const Job job([&] { ++cancelled; });
  }
  EXPECT_EQ(cancelled, 2);
  Job first([&] { ++cancelled; });
  Job second([&] { cancelled += 10; });
  first = std::move(second);
  EXPECT_EQ(cancelled, 3);
  EXPECT_FALSE(second);
  first = Job();
  EXPECT_EQ(cancelled, 13);
}

class QtSchedulerTest : public ::testing::Test {
 protected:
  static void runEventsFor(std::chrono::milliseconds span) {
    QEventLoop loop;
    QTimer::singleShot(span, &loop, &QEventLoop::quit);
    loop.exec();
  }

  int argc_ = 1;
  char name_[5] = "test";
  char* argv_[2] = {name_, nullptr};
  QCoreApplication application_{argc_, argv_};
  QtScheduler scheduler_;
};

TEST_F(QtSchedulerTest, ActionsRunFromTheEventLoopUntilTheirHandleGoes) {
  int once = 0;
  int repeated = 0;
  int dropped = 0;
  const Job delay = scheduler_.after(0ms, [&] { ++once; });
  // Destroys its own handle while it runs, and uses what it captured afterwards.
  Job repetition;
  repetition = scheduler_.every(1ms, [&, marker = std::make_shared<int>(1)] {
    repetition = Job();
    repeated += *marker;
  });
  {
    const Job gone = scheduler_.after(0ms, [&] { ++dropped; });
  }
  EXPECT_EQ(once, 0);
  runEventsFor(30ms);
  EXPECT_EQ(once, 1);
  EXPECT_EQ(repeated, 1);
  EXPECT_EQ(dropped, 0);
}

}  // namespace
}  // namespace lumeno
