#pragma once

#include <QDBusAbstractAdaptor>
#include <QObject>
#include <QVariantMap>
#include <functional>

namespace lumeno {

/// The program on the session bus, under the name org.lumeno.Lumeno at /org/lumeno/Lumeno: the desktop (or a
/// script) can reach it. Without a session bus the program runs all the same, unreachable.
class ProgramBus final : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.lumeno.Lumeno")
  Q_PROPERTY(bool AccessGranted READ accessGranted)

 public:
  explicit ProgramBus(QObject* parent = nullptr);

  /// Takes the name; false when another instance holds it.
  [[nodiscard]] bool claim();
  /// Gives the name up, and answers nobody any more: who starts the program from now on starts another one.
  void withdraw();

  std::function<void()> onSummon;
  std::function<void()> onShowSettings;
  std::function<void()> onShowWelcome;
  std::function<void()> onGrantAccess;
  /// The program was started once more.
  std::function<void()> onActivate;
  std::function<bool()> isAccessGranted;

  /// Makes the methods below reachable; called once all callbacks are set.
  void publish();

  [[nodiscard]] bool accessGranted() const { return isAccessGranted && isAccessGranted(); }

 public Q_SLOTS:
  /// As the summon shortcut.
  Q_SCRIPTABLE void Summon();
  Q_SCRIPTABLE void ShowSettings();
  Q_SCRIPTABLE void ShowWelcome();
  /// Lets Lumeno read other applications, as the tray menu's "Enable Accessibility Access…" does.
  Q_SCRIPTABLE void GrantAccess();

 private:
  bool hasName_ = false;
};

/// What desktops call when they start a program from its entry.
class DesktopActivation final : public QDBusAbstractAdaptor {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

 public:
  explicit DesktopActivation(ProgramBus& bus) : QDBusAbstractAdaptor(&bus), bus_(bus) {}

 public Q_SLOTS:
  // The names, and the arguments that nobody needs here, are those of the interface.
  void Activate(const QVariantMap& platformData);
  void Open(const QStringList& uris, const QVariantMap& platformData);
  void ActivateAction(const QString& name, const QVariantList& parameter, const QVariantMap& platformData);

 private:
  ProgramBus& bus_;
};

}  // namespace lumeno
