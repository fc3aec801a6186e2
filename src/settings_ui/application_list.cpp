#include "settings_ui/application_list.h"

#include <QIcon>
#include <utility>

#include "settings_ui/application_icon_provider.h"

namespace lumeno {

void ApplicationList::setFilter(const QString& text) {
  if (text == filter_) return;
  filter_ = text;
  showMatching();
  Q_EMIT filterChanged();
}

void ApplicationList::load() {
  setFilter({});
  setLoading(true);
  job_ = catalog_.list([this](std::vector<InstalledApplication> applications) {
    setApplications(std::move(applications));
    setLoading(false);
  });
}

void ApplicationList::clear() {
  job_.cancel();
  setApplications({});
  setLoading(false);
}

QString ApplicationList::nameAt(int row) const {
  return row >= 0 && row < count() ? applications_[shown_[static_cast<size_t>(row)]].name : QString();
}

bool ApplicationList::hasIcon(const QString& iconName) {
  return !applicationIcon(iconName).isNull();
}

int ApplicationList::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : count();
}

QVariant ApplicationList::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= count()) return {};
  const InstalledApplication& application = applications_[shown_[static_cast<size_t>(index.row())]];
  switch (role) {
    case nameRole:
      return application.name;
    case iconRole:
      return application.iconName;
    default:
      return {};
  }
}

QHash<int, QByteArray> ApplicationList::roleNames() const {
  return {{nameRole, "name"}, {iconRole, "iconName"}};
}

void ApplicationList::setLoading(bool isLoading) {
  if (isLoading == isLoading_) return;
  isLoading_ = isLoading;
  Q_EMIT isLoadingChanged();
}

void ApplicationList::setApplications(std::vector<InstalledApplication> applications) {
  applications_ = std::move(applications);
  showMatching();
}

void ApplicationList::showMatching() {
  const QString wanted = filter_.trimmed();
  beginResetModel();
  shown_.clear();
  for (size_t i = 0; i < applications_.size(); ++i) {
    if (applications_[i].name.contains(wanted, Qt::CaseInsensitive)) shown_.push_back(i);
  }
  endResetModel();
  Q_EMIT countChanged();
}

}  // namespace lumeno
