#include "core/app/application.h"

#include <QApplication>
#include <QDir>
#include <QStandardPaths>

#include "ai/ai_service_factory.h"
#include "base/helper_program.h"
#include "base/qt_scheduler.h"
#include "calendar/calendar_service.h"
#include "capture/accessibility_authorization.h"
#include "capture/clipboard_selection_capture.h"
#include "capture/output_services.h"
#include "capture/selection_observer.h"
#include "core/app/program_bus.h"
#include "core/app/tray.h"
#include "core/app/window_shortcuts.h"
#include "core/model/app_model.h"
#include "core/settings/settings_store.h"
#include "files/finder_selection_observer.h"
#include "hud/hud_panel_controller.h"
#include "hud/hud_view.h"
#include "hud/hud_window.h"
#include "onboarding/onboarding_window_presenter.h"
#include "platform/atspi/atspi_accessibility.h"
#include "platform/eds/eds_calendar_store.h"
#include "platform/eds/preferred_calendar_store.h"
#include "platform/file_managers/desktop_file_manager.h"
#include "platform/freedesktop/autostart_login_item.h"
#include "platform/freedesktop/canberra_system_sound.h"
#include "platform/freedesktop/desktop_application_catalog.h"
#include "platform/freedesktop/desktop_application_launcher.h"
#include "platform/freedesktop/desktop_url_opener.h"
#include "platform/freedesktop/feedbackd_haptics.h"
#include "platform/freedesktop/file_calendar_store.h"
#include "platform/freedesktop/json_preferences_store.h"
#include "platform/freedesktop/portal_appearance.h"
#include "platform/posix/posix_command_shell.h"
#include "platform/x11/own_windows.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_input.h"
#include "platform/x11/x11_keystroke_sender.h"
#include "platform/x11/x11_panel_window.h"
#include "platform/x11/x11_pasteboard.h"
#include "platform/x11/x11_screens.h"
#include "platform/x11/x11_selection_buffer.h"
#include "platform/x11/x11_workspace.h"
#include "settings_ui/present_window.h"
#include "settings_ui/settings_window.h"
#include "view_kit/view_kit.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

QString configurationFile() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         u"/lumeno/preferences.json"_s;
}

QString stateFile(const QString& name) {
  // The toolkit does not know the folder for state yet.
  const QString folder = qEnvironmentVariable("XDG_STATE_HOME");
  return (folder.startsWith(u'/') ? folder : QDir::homePath() + u"/.local/state"_s) + u"/lumeno/"_s + name;
}

QString runtimeFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + u"/lumeno"_s;
}

Backdrop backdropFor(SeeThrough through) {
  switch (through) {
    case SeeThrough::nothing:
      return Backdrop::opaque;
    case SeeThrough::sharp:
      return Backdrop::translucent;
    case SeeThrough::blurred:
      return Backdrop::blurred;
  }
  Q_UNREACHABLE();
}

PanelShape cardShape(const HudWindow& window) {
  const QRectF card = window.cardRect();
  return {{card.x(), card.y(), card.width(), card.height()}, window.cardRadius()};
}

}  // namespace

// Members are made from top to bottom and go in the opposite order; the order is that of what needs what.
class Application::Private {
 public:
  Private(std::unique_ptr<X11Connection> x11, ProgramBus& programBus)
      : connection(std::move(x11)), bus(programBus) {
    bus.onSummon = forCaller([this] { model.summon(); });
    bus.onShowSettings = forCaller([this] { settingsWindow.show(); });
    bus.onShowWelcome = forCaller([this] { showWelcome(); });
    bus.onGrantAccess = forCaller([this] { authorization.requestAccess(); });
    bus.onActivate = [this] { activate(); };
    bus.isAccessGranted = [this] { return accessibility.isTrusted(); };
    bus.publish();
    backdropChanges = panelWindow.seeThrough().subscribe(
        [this](SeeThrough through) { theme.setBackdrop(backdropFor(through)); });
    preferenceProblems = preferences.problem().subscribe([this](const QString& text) {
      if (!text.isEmpty()) tray.showMessage(text);
    });
    QObject::connect(&window, &HudWindow::cardShapeChanged, &window,
                     [this] { panelWindow.invalidateShape(); });
    QObject::connect(connection.get(), &X11Connection::broken, qApp, &QApplication::quit);
  }

  QtScheduler scheduler;
  std::unique_ptr<X11Connection> connection;
  ProgramBus& bus;

  // The platform.
  OwnWindows ownWindows{*connection};
  X11Screens screens{*connection};
  X11Input input{*connection, ownWindows, scheduler};
  X11Workspace workspace{*connection, ownWindows, scheduler};
  X11KeystrokeSender keystrokes{*connection, workspace, input, scheduler};
  X11Pasteboard pasteboard{*connection, scheduler};
  X11SelectionBuffer selectionBuffer{*connection, scheduler, input, workspace};
  AtspiAccessibility accessibility{workspace,       screens,   input,
                                   selectionBuffer, scheduler, stateFile(u"access-granted"_s)};
  DesktopFileManager fileManager{workspace, screens, accessibility, scheduler};
  DesktopUrlOpener urlOpener;
  DesktopApplicationLauncher launcher;
  DesktopApplicationCatalog applications;
  PosixCommandShell shell{helperProgram(u"lumeno-supervisor"_s)};
  CanberraSystemSound sound;
  FeedbackdHaptics haptics;
  PortalAppearance appearance;
  JsonPreferencesStore preferences{configurationFile()};
  AutostartLoginItem loginItem{QApplication::applicationFilePath()};
  EdsCalendarStore edsCalendar{scheduler, helperProgram(u"lumeno-calendar"_s),
                               stateFile(u"calendar-asked"_s)};
  FileCalendarStore fileCalendar{scheduler, runtimeFolder()};
  PreferredCalendarStore calendarStore{
      edsCalendar, [this](auto done) { return edsCalendar.isAvailable(std::move(done)); }, fileCalendar};

  // The services and the model, in the order of the start-up.
  AccessibilityAuthorization authorization{accessibility, scheduler};
  ClipboardSelectionCapture clipboardCapture{pasteboard, keystrokes, selectionBuffer, scheduler};
  SelectionObserver observer{accessibility, workspace, scheduler, clipboardCapture};
  FinderSelectionObserver fileObserver{fileManager,   workspace,        authorization,
                                       accessibility, clipboardCapture, scheduler};
  SettingsStore settings{preferences, loginItem};
  ClipboardService clipboard{pasteboard};
  SelectionReplacer replacer{pasteboard, keystrokes, scheduler};
  FeedbackService feedback{sound, haptics};
  CalendarService calendar{calendarStore, scheduler};

  // The HUD.
  Theme theme{settings, appearance};
  ViewKit viewKit{theme};
  HudWindow window{viewKit};
  X11PanelWindow panelWindow{*connection, window, screens, ownWindows, [this] { return cardShape(window); }};
  HUDPanelController panel{panelWindow, screens, input, appearance};
  AppModel model{{.accessibility = authorization,
                  .settings = settings,
                  .observer = observer,
                  .fileObserver = fileObserver,
                  .panel = panel,
                  .events = input,
                  .clipboard = clipboard,
                  .replacer = replacer,
                  .feedback = feedback,
                  .urlOpener = urlOpener,
                  .shell = shell,
                  .scheduler = scheduler,
                  .aiServices = aiServiceFactory(nullptr),
                  .calendar = &calendar}};
  HudView view{window, panel, model, scheduler};

  // The windows and the tray.
  SettingsWindow settingsWindow{viewKit,
                                scheduler,
                                {.settings = settings,
                                 .keyRecorder = input,
                                 .sound = sound,
                                 .applications = applications,
                                 .modelLister = ollamaModelLister(),
                                 .preferenceProblem = preferences.problem()}};
  OnboardingWindowPresenter onboarding{viewKit,
                                       {.settings = settings,
                                        .accessibility = authorization,
                                        .urlOpener = urlOpener,
                                        .launcher = launcher,
                                        .scheduler = scheduler,
                                        .fileManager = &fileManager,
                                        .calendarStore = &calendarStore,
                                        .isTrayShown = &QSystemTrayIcon::isSystemTrayAvailable}};
  Tray tray{model,
            settings,
            authorization,
            urlOpener,
            theme,
            {.showWelcome = [this] { showWelcome(); },
             .showSettings = [this] { settingsWindow.show(); },
             .quit = [this] { quit(); }}};
  WindowShortcuts windowShortcuts{tray, [this](const QObject* each) { return takesShortcuts(each); }};
  bool isStartedForCaller = false;
  Job quitDeadline;  ///< an X server that hangs must not keep the program
  Subscription backdropChanges;
  Subscription preferenceProblems;

  /// What somebody on the bus asks for; it may be what the program was started for.
  std::function<void()> forCaller(std::function<void()> action) {
    return [this, action = std::move(action)] {
      isStartedForCaller = false;
      action();
    };
  }

  /// Started once more: the user looks for the program.
  void activate() {
    // A desktop that starts the program through the bus says so by a call.
    if (std::exchange(isStartedForCaller, false) && QSystemTrayIcon::isSystemTrayAvailable()) return;
    if (!settings.hasCompletedOnboarding.get()) {
      showWelcome();
    } else {
      settingsWindow.show();
    }
  }

  void showWelcome() {
    if (OnboardingWindow* open = onboarding.window()) {
      presentWindow(*open);
    } else {
      onboarding.show();
    }
  }

  [[nodiscard]] bool takesShortcuts(const QObject* each) const {
    const SettingsQuickWindow* settingsView = settingsWindow.window();
    if (settingsView && each == settingsView) return !settingsView->keepsKeys();
    const OnboardingWindow* welcome = onboarding.window();
    return welcome && each == welcome;
  }

  void begin(LaunchRequest request) {
    isStartedForCaller = request == LaunchRequest::service;
    if (request == LaunchRequest::settings) {
      settingsWindow.show();
    } else if (request == LaunchRequest::summon) {
      model.summon();
    }
    if (!settings.hasCompletedOnboarding.get()) onboarding.show();
  }

  void quit() {
    bus.withdraw();
    // Without us what was copied here would be gone.
    pasteboard.handOver([] { QApplication::quit(); });
    quitDeadline = scheduler.after(std::chrono::seconds(2), [] { QApplication::quit(); });
  }
};

std::unique_ptr<Application> Application::create(ProgramBus& bus) {
  auto connection = X11Connection::open();
  if (!connection) return nullptr;
  return std::unique_ptr<Application>(new Application(std::make_unique<Private>(std::move(connection), bus)));
}

Application::Application(std::unique_ptr<Private> d) : d_(std::move(d)) {}

Application::~Application() = default;

void Application::begin(LaunchRequest request) {
  d_->begin(request);
}

void Application::quit() {
  d_->quit();
}

}  // namespace lumeno
