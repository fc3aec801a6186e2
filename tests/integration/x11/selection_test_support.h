#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTimer>
#include <algorithm>
#include <functional>
#include <memory>
#include <optional>

#include "base/qt_scheduler.h"
#include "platform/x11/x11_connection.h"
#include "support/wait_until.h"

namespace lumeno {

/// Measures the longest time for which the event loop did not come round.
class Heartbeat {
 public:
  Heartbeat() {
    QObject::connect(&timer_, &QTimer::timeout, &timer_,
                     [this] { longest_ = std::max(longest_, sinceLast_.restart()); });
    timer_.setTimerType(Qt::PreciseTimer);
    sinceLast_.start();
    timer_.start(5);
  }
  [[nodiscard]] qint64 longestGap() { return std::max(longest_, sinceLast_.elapsed()); }

 private:
  QTimer timer_;
  QElapsedTimer sinceLast_;
  qint64 longest_ = 0;
};

/// Tries something up to three times, until the time that it returns is below the limit (both in
/// milliseconds): a busy machine is late now and then, whoever waits for another program is late every time.
inline void expectBelow(qint64 limit, const std::function<qint64()>& attempt) {
  qint64 time = limit;
  for (int i = 0; i < 3 && time >= limit; ++i) time = attempt();
  EXPECT_LT(time, limit);
}

/// Another program, ended with the object.
class Program {
 public:
  Program(const QString& program, const QStringList& arguments) {
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(program, arguments);
    EXPECT_TRUE(process_.waitForStarted()) << program.toStdString();
  }
  ~Program() {
    process_.kill();
    process_.waitForFinished();
  }

  [[nodiscard]] QProcess& process() { return process_; }
  [[nodiscard]] bool waitForEnd() {
    return waitUntil([this] { return process_.state() == QProcess::NotRunning; });
  }
  [[nodiscard]] const QByteArray& output() {
    output_ += process_.readAllStandardOutput();
    return output_;
  }

 private:
  QProcess process_;
  QByteArray output_;
};

/// The scripted selection owner; see its source for the options.
class ScriptedOwner : public Program {
 public:
  explicit ScriptedOwner(const QStringList& arguments)
      : Program(QCoreApplication::applicationDirPath() + "/clipboard-owner", arguments) {
    waitForLines("owned ", 1);
  }

  [[nodiscard]] qsizetype lines(const QByteArray& beginning) {
    const QByteArray text = '\n' + output();
    return text.count('\n' + beginning);
  }
  void waitForLines(const QByteArray& beginning, qsizetype count) {
    EXPECT_TRUE(waitUntil([&] { return lines(beginning) >= count; }))
        << "no line " << beginning.toStdString() << " in: " << output().toStdString();
  }
  [[nodiscard]] xcb_window_t window() {
    const QByteArray text = output();
    const qsizetype start = text.indexOf("owned ") + 6;
    return text.mid(start, text.indexOf('\n', start) - start).toUInt();
  }
  void command(const QByteArray& line) { process().write(line + '\n'); }
};

/// Collects one asynchronous answer.
template <typename Answer>
class Awaited {
 public:
  [[nodiscard]] std::function<void(Answer)> receiver() {
    return [this](Answer answer) {
      ++calls_;
      answer_ = std::move(answer);
    };
  }
  /// Waits for the answer; a test failure when it does not come or comes twice.
  Answer get() {
    EXPECT_TRUE(waitUntil([this] { return calls_ > 0; })) << "no answer";
    EXPECT_EQ(calls_, 1);
    return answer_;
  }
  [[nodiscard]] int calls() const { return calls_; }

 private:
  int calls_ = 0;
  Answer answer_{};
};

/// A connection and a scheduler over the real event loop, on a desktop where nothing is selected.
class SelectionTest : public testing::Test {
 protected:
  SelectionTest() : connection_(X11Connection::open()) {
    // What an earlier test left behind, or its end, must not count in this one.
    for (const char* selection : {"CLIPBOARD", "PRIMARY", "CLIPBOARD_MANAGER"}) {
      xcb_set_selection_owner(connection_->xcb(), XCB_WINDOW_NONE, connection_->atom(selection),
                              XCB_CURRENT_TIME);
    }
    connection_->flush();
  }

  std::unique_ptr<X11Connection> connection_;
  QtScheduler scheduler_;
};

/// What xclip reads, as any application would; also its failure as an absent value.
inline std::optional<QByteArray> xclipRead(const QString& selection, const QString& target) {
  Program xclip("xclip", {"-o", "-selection", selection, "-t", target});
  EXPECT_TRUE(xclip.waitForEnd());
  if (xclip.process().exitCode() != 0) return std::nullopt;
  return xclip.output();
}

/// Puts text on a selection with xclip, which stays behind to serve it until somebody else takes the
/// selection.
inline void xclipWrite(const QString& selection, const QString& target, const QByteArray& data) {
  QProcess xclip;
  xclip.setStandardOutputFile(QProcess::nullDevice());
  xclip.start("xclip", {"-i", "-selection", selection, "-t", target});
  ASSERT_TRUE(xclip.waitForStarted());
  xclip.write(data);
  xclip.closeWriteChannel();
  ASSERT_TRUE(waitUntil([&xclip] { return xclip.state() == QProcess::NotRunning; }));
  ASSERT_EQ(xclip.exitCode(), 0);
}

}  // namespace lumeno
