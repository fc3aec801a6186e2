#include "base/helper_program.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace lumeno {

using namespace Qt::StringLiterals;

QString helperProgram(const QString& name) {
  const QString own = QCoreApplication::applicationDirPath();
  const QString beside = own + u'/' + name;
  return QFile::exists(beside) ? beside : QDir::cleanPath(own + u"/../libexec/lumeno/"_s + name);
}

}  // namespace lumeno
