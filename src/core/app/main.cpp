#include <fcntl.h>
#include <unistd.h>

#include <QApplication>
#include <QQuickWindow>
#include <cstdio>

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

}  // namespace

int main(int argc, char** argv) {
  detachStandardInput();
  // The HUD is a few flat rectangles with text: drawn in software it needs half the memory and nothing while
  // idle.
  if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
  // The windows are found, read and pressed over accessibility as those of any other program.
  if (qEnvironmentVariableIsEmpty("QT_LINUX_ACCESSIBILITY_ALWAYS_ON")) {
    qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
  }
  // Windows of ours are X11 windows also where a Wayland session offers both.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && !qEnvironmentVariableIsEmpty("DISPLAY")) {
    qputenv("QT_QPA_PLATFORM", "xcb");
  }

  QApplication application(argc, argv);
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
