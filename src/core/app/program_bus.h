#pragma once

#include <QObject>
#include <functional>

namespace lumeno {

/// The program on the session bus, under the name org.lumeno.Lumeno at /org/lumeno/Lumeno: only one instance
/// runs, and the desktop (or a script) can reach it. Without a session bus the program runs all the same,
/// unreachable.
class ProgramBus final : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.lumeno.Lumeno")
  Q_PROPERTY(bool AccessGranted READ accessGranted)

 public:
  explicit ProgramBus(QObject* parent = nullptr);

  /// Whether another instance holds the name.
  [[nodiscard]] bool isAlreadyRunning() const { return isAlreadyRunning_; }

  std::function<void()> onSummon;
  std::function<void()> onGrantAccess;
  std::function<bool()> isAccessGranted;

  /// Makes the methods below reachable; called once all callbacks are set.
  void publish();

  [[nodiscard]] bool accessGranted() const { return isAccessGranted && isAccessGranted(); }

 public Q_SLOTS:
  /// As the summon shortcut.
  Q_SCRIPTABLE void Summon();
  /// Lets Lumeno read other applications, as the tray menu's "Enable Accessibility Access…" does.
  Q_SCRIPTABLE void GrantAccess();

 private:
  bool isAlreadyRunning_ = false;
};

}  // namespace lumeno
