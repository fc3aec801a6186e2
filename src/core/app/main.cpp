#include <fcntl.h>
#include <unistd.h>

#include <QApplication>
#include <QQuickWindow>
#include <cstdio>
#include <utility>

#include "core/app/application.h"
#include "core/app/program_bus.h"
#include "core/app/termination.h"

using namespace Qt::StringLiterals;

namespace {

/// What other programs inherit from us must never be able to wait for input.
void detachStandardInput() {
  const int null = open("/dev/null", O_RDONLY | O_CLOEXEC);
  if (null < 0) return;
  dup2(null, STDIN_FILENO);
  if (null != STDIN_FILENO) close(null);
}

/// Sets a variable that the toolkit reads while it starts, unless the user has set it, and takes it away
/// again before any other program could inherit it.
class OwnEnvironment {
 public:
  OwnEnvironment(const char* name, const char* value) : name_(name) {
    isOurs_ = *value && qEnvironmentVariableIsEmpty(name);
    if (isOurs_) qputenv(name, value);
  }
  void restore() {
    if (std::exchange(isOurs_, false)) qunsetenv(name_);
  }

 private:
  const char* name_;
  bool isOurs_ = false;
};

}  // namespace

int main(int argc, char** argv) {
  detachStandardInput();
  // The HUD is a few flat rectangles with text: drawn in software it needs half the memory and nothing while
  // idle.
  if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
  // Lumeno's own views are read and pressed over accessibility as those of any other program, and its windows
  // are X11 windows also where a Wayland session offers both. What we start is none of that.
  OwnEnvironment accessibility("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
  OwnEnvironment platform("QT_QPA_PLATFORM", qEnvironmentVariableIsEmpty("DISPLAY") ? "" : "xcb");

  QApplication application(argc, argv);
  accessibility.restore();
  platform.restore();
  QApplication::setApplicationName(u"lumeno"_s);
  QApplication::setApplicationDisplayName(u"Lumeno"_s);
  QApplication::setDesktopFileName(u"org.lumeno.Lumeno"_s);
  QApplication::setQuitOnLastWindowClosed(false);

  lumeno::ProgramBus bus;
  if (bus.isAlreadyRunning()) {
    std::puts("Lumeno is already running.");
    return 0;
  }
  auto program = lumeno::Application::create(bus);
  if (!program) {
    std::fputs("Lumeno needs an X11 display (on Wayland: XWayland), and there is none.\n", stderr);
    return 1;
  }
  const lumeno::Termination termination([&program] { program->quit(); });
  return QApplication::exec();
}
