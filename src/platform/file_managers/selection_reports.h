#pragma once

#include <QDBusContext>
#include <QDBusMessage>
#include <QHash>
#include <QObject>
#include <QStringList>
#include <QUrl>
#include <optional>
#include <vector>

#include "platform/accessibility.h"

namespace lumeno {

/// Receives what file managers report of their selection: the extensions that are installed into them call
/// org.lumeno.FileSelection.ReportFiles at /org/lumeno/FileSelection on the session bus. A report counts only
/// for windows of the process that the bus knows as its sender. Main thread; never waits.
class SelectionReports final : public QObject, protected QDBusContext {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.lumeno.FileSelection")
 public:
  explicit SelectionReports(QObject* parent = nullptr);
  ~SelectionReports() override;

  /// What the process last reported for the window: the items in the order of the view; empty when nothing,
  /// something that is no local file, or items of several folders are selected. Absent when it has reported
  /// nothing, or too much.
  [[nodiscard]] std::optional<std::vector<QUrl>> selection(ProcessId process, uint64_t window) const;

 public Q_SLOTS:
  /// `uris`: the selected items, exactly, in the order of the view. `window`: its identity in the window
  /// system; 0 when it is not known which one the selection is in: then all that the process has reported
  /// before is void, and `uris` does not count.
  Q_SCRIPTABLE Q_NOREPLY void ReportFiles(const QStringList& uris, qulonglong window);

 private:
  struct Report {
    ProcessId process = 0;
    std::vector<QUrl> urls;
  };

  void take(ProcessId process, const QStringList& uris, uint64_t window);

  QHash<uint64_t, Report> byWindow_;
  QHash<QString, ProcessId> senders_;  ///< process by unique bus name, which is never given twice
};

}  // namespace lumeno
