#include "hud/file_action_state.h"

#include <QDir>
#include <QVariantMap>
#include <algorithm>
#include <map>
#include <utility>

#include "base/overloaded.h"
#include "base/text.h"
#include "hud/visible_text.h"
#include "records/file_selection.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

using Stage = FileActionSession::Stage;

QString folderLabel(const QUrl& folder) {
  const QString path = QString::fromUtf8(localPath(folder));
  const QString home = QDir::homePath();
  if (path == home) return u"~"_s;
  if (path.startsWith(home + u'/')) return u'~' + visibleText(QStringView(path).sliced(home.size()));
  return visibleText(path);
}

/// The command with the pieces that its cautions are about, both as they are shown.
void describeCommand(FileActionContent& content, const FileCommand& command,
                     const std::vector<Caution>& cautions) {
  const QStringView text(command.command);
  content.command = visibleText(text);
  content.folder = folderLabel(command.workingDirectory);
  content.blocked = command.blockedReason.has_value();
  content.blockedReason = command.blockedReason.value_or(QString());

  // Places in the command with those in what is shown, found in one pass however many cautions there are.
  std::map<qsizetype, qsizetype> places;
  const auto startOf = [&](const Caution& caution) {
    return std::clamp<qsizetype>(caution.start, 0, text.size());
  };
  const auto endOf = [&](const Caution& caution) {
    return std::clamp<qsizetype>(caution.start + caution.length, startOf(caution), text.size());
  };
  for (const Caution& caution : cautions) {
    places[startOf(caution)] = 0;
    places[endOf(caution)] = 0;
  }
  qsizetype reached = 0;
  qsizetype shown = 0;
  for (auto& [place, inShown] : places) {
    shown += visibleText(text.sliced(reached, place - reached)).size();
    reached = place;
    inShown = shown;
  }

  content.cautions.clear();
  for (const Caution& caution : cautions) {
    const qsizetype start = places[startOf(caution)];
    content.cautions.append(QVariantMap{{u"text"_s, visibleText(caution.text)},
                                        {u"start"_s, start},
                                        {u"length"_s, places[endOf(caution)] - start}});
  }
}

void describeOutcome(FileActionContent& content, const FileActionOutcome& outcome) {
  content.failed = outcome.exitCode != 0 || outcome.wasStopped;
  const bool isHidden = outcome.wasStopped && !text::trimmed(outcome.stdoutText).isEmpty();
  content.stopNotice = isHidden ? visibleText(text::trimmed(outcome.stderrText)) : QString();
}

void describe(FileActionContent& content, const FileActionSession& session) {
  std::visit(Overloaded{
                 [&](const Stage::Input&) { content.stage = u"input"_s; },
                 [&](const Stage::Planning&) { content.stage = u"planning"_s; },
                 [&](const Stage::Preview& preview) {
                   content.stage = u"preview"_s;
                   describeCommand(content, preview.command, session.cautions());
                 },
                 [&](const Stage::Running&) { content.stage = u"running"_s; },
                 [&](const Stage::Result& result) {
                   content.stage = u"result"_s;
                   describeOutcome(content, result.outcome);
                 },
                 [&](const Stage::Error& error) {
                   content.stage = u"error"_s;
                   content.error = error.message;
                 },
             },
             session.stage.get());
}

}  // namespace

FileActionState::FileActionState(std::function<void()> changed) : changed_(std::move(changed)) {}

void FileActionState::follow(std::shared_ptr<FileActionSession> session) {
  subscriptions_.clear();
  session_ = std::move(session);
  if (session_) {
    subscriptions_.push_back(session_->stage.subscribe([this](const auto&) {
      isStageNews_ = true;
      changed_();
    }));
    subscriptions_.push_back(session_->instruction.subscribe([this](const auto&) { changed_(); }));
  }
  changed_();
}

bool FileActionState::publish() {
  if (!session_) return false;
  const bool isOther = published_.lock() != session_;
  published_ = session_;
  if (request_ != session_->instruction.get()) {
    request_ = session_->instruction.get();
    Q_EMIT requestChanged();
  }
  const bool isStageNews = std::exchange(isStageNews_, false);
  if (isStageNews) publishStage();
  if (isOther) Q_EMIT replaced();
  return isStageNews;
}

void FileActionState::publishStage() {
  if (const auto* result = std::get_if<Stage::Result>(&session_->stage.get())) {
    output_ = result->outcome.summary();
    Q_EMIT outputChanged();
  }
  FileActionContent next = content_;
  describe(next, *session_);
  if (next != content_) {
    content_ = next;
    Q_EMIT contentChanged();
  }
}

std::shared_ptr<FileActionSession> FileActionState::shown() const {
  return isReachable_ && published_.lock() == session_ ? session_ : nullptr;
}

void FileActionState::setRequest(const QString& request) {
  const auto session = shown();
  if (!session || request == session->instruction.get()) return;
  // Told at once what it has said itself: what it has typed since must not be undone by it.
  request_ = request;
  session->instruction.set(request);
  Q_EMIT requestChanged();
}

void FileActionState::submit() {
  if (const auto session = shown()) session->submit();
}

void FileActionState::confirm() {
  if (const auto session = shown()) session->confirm();
}

void FileActionState::edit() {
  if (const auto session = shown()) session->edit();
}

void FileActionState::reset() {
  if (const auto session = shown()) session->reset();
}

}  // namespace lumeno
