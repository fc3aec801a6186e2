#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <QApplication>
#include <QQuickWindow>
#include <algorithm>
#include <cstdio>

#include "core/app/application.h"
#include "core/app/launch.h"
#include "core/app/program_bus.h"
#include "core/app/single_instance.h"
#include "core/app/termination.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto noDisplay = "Lumeno needs an X11 display (on Wayland: XWayland), and there is none.\n";

/// What other programs inherit from us must never be able to wait for input.
void detachStandardInput() {
  const int null = open("/dev/null", O_RDONLY | O_CLOEXEC);
  if (null < 0) return;
  dup2(null, STDIN_FILENO);
  if (null != STDIN_FILENO) close(null);
}

/// A program that is always there should hold little: the few threads share one heap, and what it no longer
/// needs goes back to the system (together nearly a megabyte).
void keepHeapSmall() {
  mallopt(M_ARENA_MAX, 1);
  mallopt(M_TOP_PAD, 0);
  mallopt(M_TRIM_THRESHOLD, 64 * 1024);
}

}  // namespace

int main(int argc, char** argv) {
  const auto request = lumeno::launchRequest({argv + std::min(argc, 1), argv + argc});
  if (!request) {
    std::fputs(lumeno::usage(), stderr);
    return 2;
  }
  // The toolkit would abort.
  if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
    std::fputs(noDisplay, stderr);
    return 1;
  }
  keepHeapSmall();
  detachStandardInput();
  // The HUD is a few flat rectangles with text: drawn in software it needs half the memory and nothing while
  // idle.
  if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
  // Lumeno's own views are read and pressed over accessibility as those of any other program. The toolkit
  // looks at this when the accessibility service comes, which may be at any time.
  if (qEnvironmentVariableIsEmpty("QT_LINUX_ACCESSIBILITY_ALWAYS_ON")) {
    qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
  }
  // Our windows are X11 windows also where a Wayland session offers both; those of what we start need not be.
  const bool choosesPlatform =
      qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && !qEnvironmentVariableIsEmpty("DISPLAY");
  if (choosesPlatform) qputenv("QT_QPA_PLATFORM", "xcb");

  QApplication application(argc, argv);
  if (choosesPlatform) qunsetenv("QT_QPA_PLATFORM");
  QApplication::setApplicationName(u"lumeno"_s);
  QApplication::setApplicationDisplayName(u"Lumeno"_s);
  QApplication::setDesktopFileName(u"org.lumeno.Lumeno"_s);
  QApplication::setQuitOnLastWindowClosed(false);

  lumeno::ProgramBus bus;
  lumeno::SingleInstance instance;
  switch (instance.launch(bus, *request)) {
    case lumeno::LaunchOutcome::first:
      break;
    case lumeno::LaunchOutcome::forwarded:
      return 0;
    case lumeno::LaunchOutcome::unanswered:
      std::fputs("Lumeno is already running, but does not answer.\n", stderr);
      return 1;
  }
  auto program = lumeno::Application::create(bus);
  if (!program) {
    std::fputs(noDisplay, stderr);
    return 1;
  }
  program->begin(*request);
  const lumeno::Termination termination([&program] { program->quit(); });
  return QApplication::exec();
}
