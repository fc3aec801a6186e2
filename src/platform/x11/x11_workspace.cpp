#include "platform/x11/x11_workspace.h"

#include <QCoreApplication>
#include <QFile>
#include <QLocale>
#include <QPointer>
#include <QThreadPool>

#include "platform/x11/x11_client.h"
#include "platform/x11/x11_known_applications.h"
#include "platform/x11/x11_property.h"

namespace lumeno {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// How long no window may be active before the last application no longer counts as being in front: window
// managers leave a gap while they hand the focus on.
constexpr auto longestGap = 500ms;

// How long after the entries have been read an application without one is no reason to read them again.
constexpr auto entriesHold = 1min;

const QString ownIdentifier = u"org.lumeno.Lumeno"_s;
const QString ownName = u"Lumeno"_s;

// The name of the process, for windows that say nothing about themselves.
QString processName(ProcessId process) {
  QFile file(u"/proc/%1/comm"_s.arg(process));
  if (process == 0 || !file.open(QIODevice::ReadOnly)) return u"unknown"_s;
  return QString::fromUtf8(file.readAll()).trimmed();
}

}  // namespace

X11Workspace::X11Workspace(X11Connection& connection, OwnWindows& ownWindows, Scheduler& scheduler)
    : connection_(connection), ownWindows_(ownWindows), scheduler_(scheduler) {
  const xcb_atom_t active = connection_.atom("_NET_ACTIVE_WINDOW");
  connection_.addWindowEventMask(connection_.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
  rootProperties_ = connection_.onEvent(XCB_PROPERTY_NOTIFY, [this, active](const auto& event) {
    const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (property.window == connection_.root() && property.atom == active) refresh();
  });
  // Some window managers leave the property as it is when the last window goes.
  destroyed_ = connection_.onEvent(XCB_DESTROY_NOTIFY, [this](const auto& event) {
    const auto& destroy = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
    if (frontmost_ && frontmost_->window == destroy.window) refresh();
  });
  ownFocus_ = ownWindows_.focused().subscribe([this](const auto&) { refresh(); });
  loadEntries();
}

X11Workspace::~X11Workspace() = default;

Subscription X11Workspace::onActivation(
    std::function<void(const std::optional<RunningApplication>&)> handler) {
  return activation_.connect(std::move(handler));
}

std::optional<QString> X11Workspace::ownBundleIdentifier() {
  return ownIdentifier;
}

// Some hundred files: read aside, so that a slow disk does not hold up the start. Until then applications go
// by their window class.
void X11Workspace::loadEntries() {
  reloadPause_ = scheduler_.after(entriesHold, [this] { reloadPause_.cancel(); });
  QThreadPool::globalInstance()->start([self = QPointer(this)] {
    auto entries = DesktopEntries::load(applicationDataFolders(), QLocale::system().name());
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [self, entries = std::move(entries)]() mutable {
          if (!self) return;
          self->entries_ = std::move(entries);
          self->identities_.clear();
          self->refresh();
        },
        Qt::QueuedConnection);
  });
}

// An application without an entry may have been installed after we started.
void X11Workspace::reloadEntries() {
  if (!reloadPause_) loadEntries();
}

void X11Workspace::refresh() {
  if (const xcb_window_t own = ownWindows_.focused().get()) {
    setFrontmost(ownApplication(own));
    return;
  }
  const auto active = static_cast<xcb_window_t>(
      firstCardinal(connection_, connection_.root(), connection_.atom("_NET_ACTIVE_WINDOW")));
  if (ownWindows_.contains(active)) {
    setFrontmost(ownApplication(active));
  } else if (active != 0 && exists(active)) {
    connection_.addWindowEventMask(active, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    setFrontmost(describe(active));
  } else if (!gap_ && frontmost_) {
    gap_ = scheduler_.after(longestGap, [this] { setFrontmost(std::nullopt); });
  }
}

bool X11Workspace::exists(xcb_window_t window) const {
  const auto cookie = xcb_get_window_attributes(connection_.xcb(), window);
  return XcbPtr<xcb_get_window_attributes_reply_t>(
             xcb_get_window_attributes_reply(connection_.xcb(), cookie, nullptr)) != nullptr;
}

void X11Workspace::setFrontmost(std::optional<RunningApplication> application) {
  gap_.cancel();
  if (application == frontmost_) return;
  frontmost_ = std::move(application);
  const auto current = frontmost_;
  activation_.emit(current);
}

RunningApplication X11Workspace::ownApplication(xcb_window_t window) const {
  return {ownIdentifier, ownName, static_cast<ProcessId>(QCoreApplication::applicationPid()),
          window,        false,   ownIdentifier.toLower()};
}

RunningApplication X11Workspace::describe(xcb_window_t window) {
  const QByteArray windowClass = byteProperty(connection_, window, XCB_ATOM_WM_CLASS);
  const ProcessId process = processOf(window);
  auto identity = identities_.constFind(windowClass);
  if (identity == identities_.cend() || windowClass.isEmpty()) {
    const QList<QByteArray> names = windowClass.split('\0');  // instance, class, nothing
    QString className = QString::fromUtf8(names.value(1));
    if (className.isEmpty()) className = QString::fromUtf8(names.value(0));
    if (className.isEmpty()) className = processName(process);
    identity = identities_.insert(windowClass, identify(QString::fromUtf8(names.value(0)), className));
  }
  if (!identity->isInstalled) reloadEntries();
  return {identity->bundleIdentifier, identity->name,         process, window,
          identity->isTerminal,       identity->applicationId};
}

X11Workspace::Identity X11Workspace::identify(const QString& instanceName, const QString& className) const {
  const auto entry = entries_.find(instanceName, className);
  const QString id = entry ? entry->id : className;
  auto known = knownBundleIdentifier(className);
  if (!known) known = knownBundleIdentifier(id);
  return {known.value_or(id), entry ? entry->name : className,
          isKnownTerminal(className) || isKnownTerminal(instanceName) || (entry && entry->isTerminal),
          className.toLower(), entry.has_value()};
}

ProcessId X11Workspace::processOf(xcb_window_t window) const {
  if (const uint32_t named = firstCardinal(connection_, window, connection_.atom("_NET_WM_PID"))) {
    return static_cast<ProcessId>(named);
  }
  return processOfWindow(connection_, window).value_or(0);
}

}  // namespace lumeno
