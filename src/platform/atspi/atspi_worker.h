#pragma once

#include <QDBusMessage>
#include <QObject>
#include <functional>
#include <memory>

#include "platform/atspi/atspi_client.h"
#include "platform/atspi/atspi_element.h"
#include "platform/atspi/atspi_focus.h"
#include "platform/atspi/atspi_round.h"

namespace lumeno::atspi {

/// Lives on the accessibility worker thread: holds the connection to the accessibility bus, receives its
/// events and makes elements.
class Worker final : public QObject {
  Q_OBJECT
 public:
  enum class Event { focus, selection, caret };
  /// `onEvent` is called on the worker thread for every event, with the process it came from.
  explicit Worker(std::function<void(ProcessId, Event)> onEvent);

  /// Everything that follows belongs to `round`, until the next call.
  void beginRound(std::shared_ptr<const Round> round);
  /// Connects and listens when the connection is missing.
  void ensureListening();

  ElementPtr focusedElement();
  ElementPtr applicationElement(ProcessId process);
  /// Whether the focused element was read in this round and said that nothing is selected.
  [[nodiscard]] bool focusHasNoSelection() const;
  /// Whether everything asked in this round was answered in time.
  [[nodiscard]] bool isRoundComplete() const { return !client_.isIncomplete(); }

  /// Closes the connection: nothing is heard or remembered any more until `ensureListening`.
  void shutDown();

 private Q_SLOTS:
  void focusChanged(const QDBusMessage& message);
  void selectionChanged(const QDBusMessage& message);
  void caretMoved(const QDBusMessage& message);
  void windowActivated(const QDBusMessage& message);
  void nameOwnerChanged(const QString& name, const QString& oldOwner, const QString& newOwner);

 private:
  void listen();
  void registerEvents();
  void report(const QDBusMessage& message, Event event);

  std::function<void(ProcessId, Event)> onEvent_;
  Client client_;
  FocusTracker focus_;
  std::shared_ptr<const Round> round_ = std::make_shared<Round>();
  std::shared_ptr<Element> focused_;
};

}  // namespace lumeno::atspi
