#include "platform/eds/eds_helper_call.h"

#include <QJsonDocument>
#include <QPointer>
#include <utility>

namespace lumeno {

namespace {

constexpr qsizetype longestAnswer = 64 * 1024;

}  // namespace

Job EdsHelperCall::ask(const Question& question, Scheduler& scheduler,
                       std::function<void(const Answer&)> done) {
  // It belongs to nobody and deletes itself when the process has ended: a process dies with its object, and a
  // save must not.
  const QPointer<EdsHelperCall> call = new EdsHelperCall(question, scheduler, std::move(done));
  return Job([call] {
    if (call) call->drop();
  });
}

EdsHelperCall::EdsHelperCall(const Question& question, Scheduler& scheduler,
                             std::function<void(const Answer&)> done)
    : whenDropped_(question.whenDropped), done_(std::move(done)) {
  connect(&process_, &QProcess::readyReadStandardOutput, this, &EdsHelperCall::read);
  connect(&process_, &QProcess::finished, this, &EdsHelperCall::ended);
  // Queued: some failures to start are told at once.
  connect(
      &process_, &QProcess::errorOccurred, this,
      [this](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart) return;
        deleteLater();
        report(Problem::unusable);
      },
      Qt::QueuedConnection);
  process_.setStandardErrorFile(QProcess::nullDevice());
  process_.start(question.program, {});
  process_.write(QJsonDocument(question.request).toJson(QJsonDocument::Compact));
  process_.closeWriteChannel();
  deadline_ = scheduler.after(question.deadline, [this] {
    process_.kill();
    report(Problem::timedOut);
  });
}

void EdsHelperCall::read() {
  output_ += process_.readAllStandardOutput();
  if (output_.size() > longestAnswer) process_.kill();
}

void EdsHelperCall::ended(int exitCode, QProcess::ExitStatus status) {
  deleteLater();
  read();
  const QJsonObject answer = QJsonDocument::fromJson(output_).object();
  if (status == QProcess::NormalExit && exitCode == 0 && !answer.isEmpty()) {
    report(answer);
  } else {
    report(Problem::unusable);
  }
}

void EdsHelperCall::drop() {
  done_ = nullptr;
  if (whenDropped_ == WhenDropped::end) process_.kill();
}

void EdsHelperCall::report(const Answer& answer) {
  deadline_.cancel();
  if (const auto done = std::exchange(done_, nullptr)) done(answer);
}

}  // namespace lumeno
