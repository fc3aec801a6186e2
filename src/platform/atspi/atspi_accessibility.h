#pragma once

#include <QString>
#include <memory>

#include "base/scheduler.h"
#include "platform/accessibility.h"
#include "platform/input_activity.h"
#include "platform/selection_buffer.h"
#include "platform/window_geometry.h"
#include "platform/workspace.h"

namespace lumeno {

/// Reading other applications over the accessibility bus, joined with what windows offer as freshly selected.
/// Reads run on a worker thread; a hung application, selection owner or bus costs at most its deadline there.
class AtspiAccessibility final : public Accessibility {
 public:
  /// All must outlive this object. `markerPath` is the file that keeps the user's grant.
  AtspiAccessibility(Workspace& workspace, WindowGeometry& geometry, InputActivity& input,
                     SelectionBuffer& buffer, Scheduler& scheduler, const QString& markerPath);
  ~AtspiAccessibility() override;

  [[nodiscard]] bool isTrusted() override;
  bool requestTrust() override;
  [[nodiscard]] Job perform(std::function<void()> work, std::function<void()> done) override;
  [[nodiscard]] bool isReadComplete() override;
  ElementPtr focusedElement() override;
  ElementPtr applicationElement(ProcessId process) override;
  std::unique_ptr<AccessibilityObserver> observe(
      ProcessId process, std::function<void(AccessibilityNotification)> callback) override;
  [[nodiscard]] uint64_t activitySerial() override;
  [[nodiscard]] uint64_t gestureSerial() override;
  [[nodiscard]] uint64_t reselectionSerial() override;
  [[nodiscard]] bool isGestureInProgress() override;

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace lumeno
