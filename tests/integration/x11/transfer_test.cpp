#include "platform/x11/x11_selection_transfer.h"

#include <csignal>

#include "selection_test_support.h"

namespace lumeno {
namespace {

using namespace std::chrono_literals;

class TransferTest : public SelectionTest {
 protected:
  [[nodiscard]] Job ask(const char* target, std::chrono::milliseconds time, qsizetype limit,
                        Awaited<TransferResult>& awaited) {
    return transfers_.start({connection_->atom("CLIPBOARD"), connection_->atom(target),
                             QDeadlineTimer(time, Qt::PreciseTimer), limit},
                            awaited.receiver());
  }

  X11SelectionTransfers transfers_{*connection_, scheduler_};
};

TEST_F(TransferTest, bringsValuesWithTheirTypeAndFormat) {
  ScriptedOwner owner({"UTF8_STRING=gr\xc3\xbc\xc3\x9f", "numbers:INTEGER/32=abcdefgh", "empty="});
  const struct {
    const char* target;
    const char* type;
    uint8_t format;
    const char* bytes;
  } cases[] = {{"UTF8_STRING", "UTF8_STRING", 8, "gr\xc3\xbc\xc3\x9f"},
               {"numbers", "INTEGER", 32, "abcdefgh"},
               {"empty", "empty", 8, ""}};
  // All at once: the answers must not be mixed up.
  Awaited<TransferResult> answers[3];
  Job jobs[3];
  for (int i = 0; i < 3; ++i) jobs[i] = ask(cases[i].target, 2s, 1000, answers[i]);
  for (int i = 0; i < 3; ++i) {
    const TransferResult answer = answers[i].get();
    EXPECT_EQ(answer.outcome, TransferOutcome::delivered) << cases[i].target;
    EXPECT_EQ(answer.value,
              (SelectionValue{connection_->atom(cases[i].type), cases[i].format, cases[i].bytes}));
  }
  Awaited<TransferResult> missing;
  const Job job = ask("nothing-like-it", 2s, 1000, missing);
  EXPECT_EQ(missing.get().outcome, TransferOutcome::refused);
}

TEST_F(TransferTest, refusesWhatIsTooLarge) {
  const struct {
    QStringList options;
    qsizetype limit;
    TransferOutcome outcome;
  } cases[] = {
      {{"--size", "100000"}, 100000, TransferOutcome::delivered},
      {{"--size", "100000"}, 99999, TransferOutcome::tooLarge},
      {{"--size", "1000000"}, 1000000, TransferOutcome::delivered},
      {{"--size", "1000000"}, 999999, TransferOutcome::tooLarge},
      // An owner that promises little and sends much.
      {{"--size", "1000000", "--lie-size", "10"}, 999999, TransferOutcome::tooLarge},
      // One that announces more than it will have: refused at once, without taking any of it.
      {{"--size", "1000000", "--lie-size", "4000000000"}, 16'000'000, TransferOutcome::tooLarge},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.options.join(' ').toStdString());
    ScriptedOwner owner(c.options);
    Awaited<TransferResult> answer;
    const Job job = ask("UTF8_STRING", 5s, c.limit, answer);
    const TransferResult result = answer.get();
    EXPECT_EQ(result.outcome, c.outcome);
    EXPECT_EQ(result.value.bytes.size(), c.outcome == TransferOutcome::delivered ? c.limit : 0);
  }
}

// Some owners do nothing else until every piece has been taken.
TEST_F(TransferTest, anOwnerGetsRidOfWhatNobodyWaitsForAnyMore) {
  ScriptedOwner owner({"--size", "5000000"});
  Awaited<TransferResult> answer;
  Job job = ask("UTF8_STRING", 5s, 10'000'000, answer);
  owner.waitForLines("request ", 1);
  job.cancel();
  owner.waitForLines("sent UTF8_STRING", 1);
  EXPECT_EQ(answer.calls(), 0);

  Awaited<TransferResult> tooLarge;
  job = ask("UTF8_STRING", 5s, 1000, tooLarge);
  EXPECT_EQ(tooLarge.get().outcome, TransferOutcome::tooLarge);
  owner.waitForLines("sent UTF8_STRING", 2);
}

TEST_F(TransferTest, anOwnerThatDoesNotAnswerCostsOnlyTheDeadline) {
  for (const QStringList& options : {QStringList{"--hang"}, QStringList{"--stall"}, QStringList{"stop"}}) {
    SCOPED_TRACE(options.join(' ').toStdString());
    const bool isStopped = options.first() == "stop";
    ScriptedOwner owner(isStopped ? QStringList{"UTF8_STRING=late"} : options + QStringList{"UTF8_STRING=x"});
    const auto pid = static_cast<pid_t>(owner.process().processId());
    if (isStopped) kill(pid, SIGSTOP);
    expectBelow(150, [this] {
      Heartbeat heartbeat;
      QElapsedTimer elapsed;
      elapsed.start();
      Awaited<TransferResult> answer;
      const Job job = ask("UTF8_STRING", 300ms, 1000, answer);
      EXPECT_EQ(answer.get().outcome, TransferOutcome::tooLate);
      EXPECT_GE(elapsed.elapsed(), 290);
      return heartbeat.longestGap();
    });
    if (!isStopped) continue;
    Awaited<TransferResult> answer;
    const Job job = ask("UTF8_STRING", 300ms, 1000, answer);
    EXPECT_EQ(answer.get().outcome, TransferOutcome::tooLate);
    // The late answer must not be taken for the answer to a later question.
    Awaited<TransferResult> other;
    const Job second = ask("nothing-like-it", 5s, 1000, other);
    kill(pid, SIGCONT);
    EXPECT_EQ(other.get().outcome, TransferOutcome::refused);
    EXPECT_EQ(answer.calls(), 1);
  }
}

TEST_F(TransferTest, anOwnerThatDiesIsNotWaitedForForever) {
  ScriptedOwner owner({"--die", "UTF8_STRING=x"});
  Awaited<TransferResult> answer;
  const Job job = ask("UTF8_STRING", 300ms, 1000, answer);
  EXPECT_NE(answer.get().outcome, TransferOutcome::delivered);

  Awaited<TransferResult> nobody;
  const Job second = ask("UTF8_STRING", 5s, 1000, nobody);
  EXPECT_EQ(nobody.get().outcome, TransferOutcome::refused);
}

TEST_F(TransferTest, handlesMayOutliveTheTransfers) {
  ScriptedOwner owner({"--hang", "UTF8_STRING=x"});
  Awaited<TransferResult> answer;
  Job job;
  {
    X11SelectionTransfers brief(*connection_, scheduler_);
    job = brief.start({connection_->atom("CLIPBOARD"), connection_->atom("UTF8_STRING"),
                       QDeadlineTimer(50ms, Qt::PreciseTimer), 1000},
                      answer.receiver());
  }
  job.cancel();
  EXPECT_FALSE(waitUntil([&] { return answer.calls() > 0; }, 100ms));
}

}  // namespace
}  // namespace lumeno
