#include <QDir>

#include "files/planning/planning.h"
#include "operations.h"

namespace lumeno::probe {

using namespace Qt::StringLiterals;

namespace {

FileSelection selectionOf(const QJsonArray& paths) {
  FileSelection selection;
  for (const QJsonValue path : paths) {
    const QString text = path.toString();
    if (!QDir::isAbsolutePath(text)) throw RequestError{u"field \"paths\" is not a list of absolute paths"_s};
    selection.urls.push_back(fileUrl(text.toUtf8()));
  }
  return selection;
}

}  // namespace

QJsonObject planPrompt(const Request& request) {
  const FileSelection selection = selectionOf(request.array("paths"_L1));
  return {{"prompt"_L1, lumeno::planPrompt(request.string("instruction"_L1), selection)},
          {"workingDirectory"_L1, QString::fromUtf8(localPath(selection.parentDirectory()))}};
}

QJsonObject sanitize(const Request& request) {
  return {{"command"_L1, sanitizeCommand(request.string("output"_L1))}};
}

QJsonObject screen(const Request& request) {
  const auto reason = screenCommand(request.string("command"_L1));
  return {{"blockedReason"_L1, reason ? QJsonValue(*reason) : QJsonValue::Null}};
}

}  // namespace lumeno::probe
