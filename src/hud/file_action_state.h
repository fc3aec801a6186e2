#pragma once

#include <QObject>
#include <QString>
#include <QVariantList>
#include <functional>
#include <memory>
#include <vector>

#include "base/observable.h"
#include "files/file_action_session.h"

namespace lumeno {

/// What the file command bar shows at one moment. Fields of a stage that has ended keep their last values, so
/// that its view can fade out as it stood.
struct FileActionContent {
  Q_GADGET
  Q_PROPERTY(QString stage MEMBER stage)
  Q_PROPERTY(QString command MEMBER command)
  Q_PROPERTY(QString folder MEMBER folder)
  Q_PROPERTY(bool blocked MEMBER blocked)
  Q_PROPERTY(QString blockedReason MEMBER blockedReason)
  Q_PROPERTY(QVariantList cautions MEMBER cautions)
  Q_PROPERTY(bool failed MEMBER failed)
  Q_PROPERTY(QString stopNotice MEMBER stopNotice)
  Q_PROPERTY(QString error MEMBER error)

 public:
  QString stage;    ///< "input", "planning", "preview", "running", "result" or "error"
  QString command;  ///< as `visibleText`
  QString folder;   ///< where the command is to run, "~" for the home folder
  bool blocked = false;
  QString blockedReason;
  QVariantList cautions;  ///< maps with "text", and "start" and "length" in `command`
  bool failed = false;
  QString stopNotice;  ///< why the command was stopped, unless its output says so already
  QString error;

  bool operator==(const FileActionContent&) const = default;
};

/// The file command bar as QML sees it. What the session does is shown when `publish` is called; operations
/// reach only a session that is shown. Main thread.
class FileActionState : public QObject {
  Q_OBJECT
  Q_PROPERTY(lumeno::FileActionContent content READ content NOTIFY contentChanged)
  Q_PROPERTY(QString request READ request WRITE setRequest NOTIFY requestChanged)
  Q_PROPERTY(QString output READ output NOTIFY outputChanged)

 public:
  /// `changed` is called whenever there is something to publish.
  explicit FileActionState(std::function<void()> changed);

  [[nodiscard]] const FileActionContent& content() const { return content_; }
  /// The request as it is typed; the view writes it too.
  [[nodiscard]] const QString& request() const { return request_; }
  void setRequest(const QString& request);
  /// What the command that has ended is summed up with, as it was written.
  [[nodiscard]] const QString& output() const { return output_; }

  /// From now on this session is the one; null when there is none.
  void follow(std::shared_ptr<FileActionSession> session);
  /// Catches up with the session; tells whether it has come to another stage.
  bool publish();
  /// While false, no operation does anything.
  void setReachable(bool reachable) { isReachable_ = reachable; }

  // Operations of the view.
  Q_INVOKABLE void submit();
  Q_INVOKABLE void confirm();
  Q_INVOKABLE void edit();
  Q_INVOKABLE void reset();

 Q_SIGNALS:
  void contentChanged();
  void requestChanged();
  void outputChanged();
  /// Another session is shown than before; its request and stage are published already.
  void replaced();

 private:
  /// The session that the view shows, while it may be reached.
  [[nodiscard]] std::shared_ptr<FileActionSession> shown() const;
  void publishStage();

  std::function<void()> changed_;
  std::shared_ptr<FileActionSession> session_;
  std::weak_ptr<FileActionSession> published_;
  bool isStageNews_ = false;
  FileActionContent content_;
  QString request_;
  QString output_;
  bool isReachable_ = false;
  std::vector<Subscription> subscriptions_;
};

}  // namespace lumeno
