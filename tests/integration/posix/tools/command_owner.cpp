// Runs a command as the program does, to be killed meanwhile: command-owner SUPERVISOR FOLDER LIMIT_MS
// COMMAND

#include <QCoreApplication>

#include "platform/posix/posix_command_shell.h"

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() != 5) return 2;
  lumeno::PosixCommandShell shell(arguments[1]);
  const lumeno::Job job =
      shell.run(arguments[4], arguments[2].toUtf8(), std::chrono::milliseconds(arguments[3].toInt()),
                [](const lumeno::CommandEnd&) { QCoreApplication::quit(); });
  return QCoreApplication::exec();
}
