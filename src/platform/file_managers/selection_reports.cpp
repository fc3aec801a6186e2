#include "platform/file_managers/selection_reports.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <utility>

#include "records/file_selection.h"
#include "records/uri_list.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

constexpr auto objectPath = "/org/lumeno/FileSelection"_L1;
// Windows come and go; what is known of closed ones is dropped when there are too many.
constexpr qsizetype mostWindows = 100;
constexpr qsizetype mostSenders = 100;
constexpr qsizetype mostFiles = 100'000;

}  // namespace

SelectionReports::SelectionReports(QObject* parent) : QObject(parent) {
  QDBusConnection::sessionBus().registerObject(objectPath, this, QDBusConnection::ExportScriptableSlots);
}

SelectionReports::~SelectionReports() {
  QDBusConnection::sessionBus().unregisterObject(objectPath);
}

std::optional<std::vector<QUrl>> SelectionReports::selection(ProcessId process, uint64_t window) const {
  const auto report = byWindow_.constFind(window);
  if (report == byWindow_.cend() || report->process != process) return std::nullopt;
  return report->urls;
}

void SelectionReports::ReportFiles(const QStringList& uris, qulonglong window) {
  if (!calledFromDBus()) return;
  const QString sender = message().service();
  if (const auto known = senders_.constFind(sender); known != senders_.cend()) {
    take(*known, uris, window);
    return;
  }
  auto question = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                                 u"org.freedesktop.DBus"_s, u"GetConnectionUnixProcessID"_s);
  question.setArguments({sender});
  auto* const watcher = new QDBusPendingCallWatcher(connection().asyncCall(question), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, sender, uris, window] {
    const QDBusPendingReply<uint> reply = *watcher;
    watcher->deleteLater();
    if (reply.isError()) {
      byWindow_.remove(window);  // whosever it is, what was told of it no longer holds
      return;
    }
    const auto process = static_cast<ProcessId>(reply.value());
    if (senders_.size() >= mostSenders) senders_.clear();
    senders_.insert(sender, process);
    take(process, uris, window);
  });
}

void SelectionReports::take(ProcessId process, const QStringList& uris, uint64_t window) {
  if (window == 0 || uris.size() > mostFiles) {
    byWindow_.removeIf([process, window](std::pair<const uint64_t&, Report&> known) {
      return known.second.process == process && (window == 0 || known.first == window);
    });
    return;
  }
  if (byWindow_.size() >= mostWindows && !byWindow_.contains(window)) byWindow_.clear();
  Report report{process, {}};
  for (const QString& uri : uris) {
    const auto path = localPathOfUri(uri.toUtf8());
    if (!path) {
      report.urls.clear();
      break;
    }
    report.urls.push_back(fileUrl(*path));
  }
  if (!areInOneFolder(report.urls)) report.urls.clear();
  byWindow_.insert(window, std::move(report));
}

}  // namespace lumeno
