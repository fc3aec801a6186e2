#pragma once

#include "platform/application_catalog.h"

namespace lumeno {

/// The applications that the desktop entries of this machine offer, with names in the user's language.
class DesktopApplicationCatalog final : public ApplicationCatalog {
 public:
  [[nodiscard]] Job list(std::function<void(std::vector<InstalledApplication>)> done) override;
};

}  // namespace lumeno
