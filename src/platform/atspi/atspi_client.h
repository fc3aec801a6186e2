#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QHash>
#include <QVariantList>
#include <chrono>
#include <optional>
#include <vector>

#include "base/geometry.h"
#include "platform/accessibility.h"
#include "platform/atspi/atspi_types.h"

namespace lumeno::atspi {

/// Blocking calls to applications on the accessibility bus, each with a deadline, all of one round together
/// with another. An application that let a call time out is not asked again for a while, so that a hung one
/// costs one deadline and not one for every question. Worker thread only.
class Client {
 public:
  static constexpr std::chrono::milliseconds callTimeout{250};
  static constexpr std::chrono::milliseconds roundTimeout{1000};
  static constexpr std::chrono::milliseconds hungPause{3000};

  /// Connects when not connected (at most once a second); true when there is a connection. `isNew` is set
  /// when it was made just now.
  bool ensureConnected(bool& isNew);
  void disconnect();
  [[nodiscard]] QDBusConnection connection() const { return connection_; }

  /// Starts the time limit for the calls that follow, all together and each.
  void beginRound(std::chrono::milliseconds limit = roundTimeout,
                  std::chrono::milliseconds callLimit = callTimeout);
  [[nodiscard]] std::chrono::milliseconds timeLeft() const;
  /// Whether a call of this round was not answered in time, or not made because the application or the round
  /// had used up its time: what was read may then lack something.
  [[nodiscard]] bool isIncomplete() const { return isIncomplete_; }

  /// The answer's arguments; absent on any error.
  std::optional<QVariantList> call(const Reference& object, const char* interface, const char* method,
                                   const QVariantList& arguments = {});
  /// A call whose answer is one object; absent also when it is the null object.
  std::optional<Reference> callForReference(const Reference& object, const char* interface,
                                            const char* method, const QVariantList& arguments);
  std::optional<QVariant> property(const Reference& object, const char* interface, const char* name);

  /// The process behind a bus name, remembered; absent when the bus does not know.
  std::optional<ProcessId> processOf(const QString& busName);
  /// Forgets what was remembered of a bus name that has gone.
  void forget(const QString& busName);

  std::optional<uint32_t> role(const Reference& object);
  bool hasState(const Reference& object, int state);
  /// All states, one bit each; absent when the object does not answer.
  std::optional<uint64_t> states(const Reference& object);
  /// Empty when it has none, absent when the object does not answer.
  std::optional<QString> name(const Reference& object);
  std::vector<QString> interfaces(const Reference& object);
  std::vector<Reference> children(const Reference& object);
  /// Objects in the sub-tree that have the focus, by the application's own search; empty where it has none.
  std::vector<Reference> focusedDescendants(const Reference& object);
  /// Device pixels; of the screen, or of the window in toolkits that do not know where their windows are.
  std::optional<Rect> extents(const Reference& object);
  /// Whether the application reports rectangles relative to its window instead of the screen; remembered.
  bool reportsWindowCoordinates(const QString& busName);

 private:
  std::optional<QString> fetchAddress();

  QDBusConnection connection_{QString()};
  QString connectionName_;
  int connectionCount_ = 0;
  QElapsedTimer sinceAttempt_;
  QElapsedTimer round_;
  std::chrono::milliseconds roundLimit_ = roundTimeout;
  std::chrono::milliseconds callLimit_ = callTimeout;
  bool isIncomplete_ = false;
  QHash<QString, ProcessId> processes_;
  QHash<QString, bool> windowCoordinates_;
  QHash<QString, QElapsedTimer> hung_;
};

}  // namespace lumeno::atspi
