#pragma once

#include <QString>
#include <memory>

#include "core/app/launch.h"

namespace lumeno {

class ProgramBus;

/// Everything that lives as long as the program, put together: the only place that names the platform's
/// concrete classes.
class Application {
 public:
  /// Null when there is no X server. `bus` must outlive the application.
  [[nodiscard]] static std::unique_ptr<Application> create(ProgramBus& bus);
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  /// Does what the program was started for, once everything is there: the first start of all shows the
  /// welcome.
  void begin(LaunchRequest request);

  /// Ends the program; what was copied is handed to a clipboard manager first, where there is one.
  void quit();

 private:
  class Private;
  explicit Application(std::unique_ptr<Private> d);
  std::unique_ptr<Private> d_;
};

}  // namespace lumeno
