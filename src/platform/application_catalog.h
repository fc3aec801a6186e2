#pragma once

#include <QIcon>
#include <QString>
#include <functional>
#include <vector>

#include "base/job.h"

namespace lumeno {

/// One application that the desktop offers in its menus.
struct InstalledApplication {
  QString identifier;  ///< the desktop entry's id
  QString name;        ///< exactly what `Workspace` tells as the `localizedName` of the running application
  QString iconName;    ///< an icon theme's name or an absolute path; may be empty
};

/// The installed applications. Main thread; the list is read off it.
class ApplicationCatalog {
 public:
  virtual ~ApplicationCatalog() = default;
  /// Sorted by name for people, without entries that menus hide. `done` is called on the main thread.
  [[nodiscard]] virtual Job list(std::function<void(std::vector<InstalledApplication>)> done) = 0;
};

}  // namespace lumeno
