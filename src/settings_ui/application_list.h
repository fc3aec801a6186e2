#pragma once

#include <QAbstractListModel>
#include <vector>

#include "base/job.h"
#include "platform/application_catalog.h"

namespace lumeno {

/// The installed applications to choose from, filtered by what has been typed. Main thread.
class ApplicationList : public QAbstractListModel {
  Q_OBJECT
  Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
  Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged)
  Q_PROPERTY(int count READ count NOTIFY countChanged)

 public:
  enum Role { nameRole = Qt::UserRole + 1, iconRole };

  /// The catalog must outlive the list.
  explicit ApplicationList(ApplicationCatalog& catalog) : catalog_(catalog) {}

  [[nodiscard]] bool isLoading() const { return isLoading_; }
  /// A part of the names to be shown, whatever its case.
  [[nodiscard]] const QString& filter() const { return filter_; }
  void setFilter(const QString& text);
  [[nodiscard]] int count() const { return static_cast<int>(shown_.size()); }

  /// Reads the list, without a filter.
  Q_INVOKABLE void load();
  /// Drops it again.
  Q_INVOKABLE void clear();
  /// The name in a row; empty when there is no such row.
  Q_INVOKABLE QString nameAt(int row) const;
  /// Whether an icon theme or a file has this icon.
  Q_INVOKABLE static bool hasIcon(const QString& iconName);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

 Q_SIGNALS:
  void isLoadingChanged();
  void filterChanged();
  void countChanged();

 private:
  void setLoading(bool isLoading);
  void setApplications(std::vector<InstalledApplication> applications);
  void showMatching();

  ApplicationCatalog& catalog_;
  std::vector<InstalledApplication> applications_;
  std::vector<size_t> shown_;  ///< positions in `applications_`
  QString filter_;
  bool isLoading_ = false;
  Job job_;
};

}  // namespace lumeno
