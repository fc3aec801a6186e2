#pragma once

#include <QObject>
#include <QString>
#include <QVariantList>
#include <vector>

#include "base/job.h"
#include "base/observable.h"
#include "base/scheduler.h"
#include "core/model/app_model.h"
#include "hud/file_action_state.h"

namespace lumeno {

/// What the card or the pill shows at one moment. Fields of a phase that has ended keep their last values, so
/// that its view can fade out as it stood.
struct HudContent {
  Q_GADGET
  Q_PROPERTY(QString phase MEMBER phase)
  Q_PROPERTY(bool collapsed MEMBER collapsed)
  Q_PROPERTY(QString headerSymbol MEMBER headerSymbol)
  Q_PROPERTY(QString headerTitle MEMBER headerTitle)
  Q_PROPERTY(QString pillSymbol MEMBER pillSymbol)
  Q_PROPERTY(QString pillTitle MEMBER pillTitle)
  Q_PROPERTY(QString pillTint MEMBER pillTint)
  Q_PROPERTY(int pillCount MEMBER pillCount)
  Q_PROPERTY(QString runningTitle MEMBER runningTitle)
  Q_PROPERTY(QString resultBody MEMBER resultBody)
  Q_PROPERTY(bool usedAI MEMBER usedAI)
  Q_PROPERTY(bool allowReplace MEMBER allowReplace)
  Q_PROPERTY(QString notice MEMBER notice)
  Q_PROPERTY(bool keyboardMode MEMBER keyboardMode)
  Q_PROPERTY(int selectedChip MEMBER selectedChip)
  Q_PROPERTY(QString eventTitle MEMBER eventTitle)
  Q_PROPERTY(QString eventTime MEMBER eventTime)
  Q_PROPERTY(QString eventCalendar MEMBER eventCalendar)
  Q_PROPERTY(bool summoned MEMBER summoned)

 public:
  QString phase;  ///< as `phaseName`, or "files" while there is a file command bar
  bool collapsed = false;
  QString headerSymbol;
  QString headerTitle;
  QString pillSymbol;
  QString pillTitle;
  QString pillTint;
  int pillCount = 0;
  QString runningTitle;
  QString resultBody;
  bool usedAI = false;
  bool allowReplace = false;
  QString notice;
  bool keyboardMode = false;
  int selectedChip = -1;  ///< -1: none
  QString eventTitle;
  QString eventTime;
  QString eventCalendar;
  bool summoned = false;  ///< the HUD took the keyboard when it was shown

  bool operator==(const HudContent&) const = default;
};

/// The model as QML sees it. Changes made in one turn of the event loop arrive together, streamed text at
/// most about 30 times a second, and none while the HUD is not presented: a card that fades out keeps showing
/// what it showed. Main thread.
class HudState : public QObject {
  Q_OBJECT
  Q_PROPERTY(lumeno::HudContent content READ content NOTIFY contentChanged)
  Q_PROPERTY(QVariantList chips READ chips NOTIFY chipsChanged)
  Q_PROPERTY(QString partial READ partial NOTIFY partialChanged)
  Q_PROPERTY(bool morphs READ morphs NOTIFY morphsChanged)
  Q_PROPERTY(lumeno::FileActionState* files READ files CONSTANT)

 public:
  /// Both must outlive the state.
  HudState(AppModel& model, Scheduler& scheduler);

  [[nodiscard]] const HudContent& content() const { return content_; }
  /// The visible chips: maps with "title", "summary", "symbol" and "tint".
  [[nodiscard]] const QVariantList& chips() const { return chips_; }
  /// The text streamed so far, as last published.
  [[nodiscard]] const QString& partial() const { return partial_; }
  /// Whether a change may be animated: not the one that fills a hidden window.
  [[nodiscard]] bool morphs() const { return morphs_; }

  /// The file command bar.
  [[nodiscard]] FileActionState* files() { return &files_; }

  /// The HUD is about to be shown or updated: catches up with the model at once. `fromHidden`: nobody sees it
  /// yet. `takesKeyboard`: it will have the keyboard by itself.
  void present(bool fromHidden, bool takesKeyboard = false);
  /// The HUD is about to go: nothing changes any more.
  void retire();

  // Operations of the views; nothing while the HUD is not presented.
  Q_INVOKABLE void dismiss();
  Q_INVOKABLE void runChip(int index);
  /// Whether there was such a chip (1 is the first).
  Q_INVOKABLE bool runChipNumber(int number);
  Q_INVOKABLE void copyResult();
  Q_INVOKABLE void replaceResult();
  Q_INVOKABLE void back();
  Q_INVOKABLE void moveSelection(int delta);
  Q_INVOKABLE void activate();
  Q_INVOKABLE void expandHint();
  Q_INVOKABLE void confirmCalendar();
  Q_INVOKABLE void copyFileOutput();
  /// The user wants to type.
  Q_INVOKABLE void takeKeyboard();

  /// Return has been pressed or let go. It then counts for nothing for a while.
  Q_INVOKABLE void noteReturn();
  /// Whether a press of Return is meant for what the file command bar shows: not when it began before that
  /// could be read, and not when the key is still held down from before. Notes the press.
  Q_INVOKABLE bool isReturnMeant(bool isRepeat);

 Q_SIGNALS:
  void contentChanged();
  void chipsChanged();
  void partialChanged();
  void morphsChanged();
  /// A hidden HUD is about to be seen: before and after it has caught up with the model.
  void appearing();
  void appeared();
  /// Everything has been told; sizes are final.
  void published();
  void keyboardWanted();

 private:
  void modelChanged();
  void phaseChanged(const HUDPhase& phase);
  void publish();
  void publishPartial();
  void setPartial(const QString& text);
  void setMorphs(bool morphs);

  AppModel& model_;
  Scheduler& scheduler_;
  FileActionState files_{[this] { modelChanged(); }};
  HudContent content_;
  std::vector<ActionSuggestion> suggestions_;  ///< what `chips_` was made from
  QVariantList chips_;
  QString partial_;
  bool isPresented_ = false;
  bool isSummoned_ = false;
  bool morphs_ = false;
  bool isPublishDue_ = false;
  Job publishJob_;
  bool isPartialThrottled_ = false;
  bool isPartialDue_ = false;
  Job throttleJob_;
  Job returnRestJob_;
  bool isReturnResting_ = false;
  std::vector<Subscription> subscriptions_;
};

}  // namespace lumeno
