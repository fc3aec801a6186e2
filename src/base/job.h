#pragma once

#include <functional>
#include <utility>

namespace lumeno {

/// The handle of something that is under way: a delay, a read, a stream, a capture.
///
/// Owning the handle is what keeps the work wanted. Destroying, resetting or cancelling it stops delivery at
/// once and for ever, and stops the work behind it. An empty handle stands for nothing. Move-only; used on
/// the main thread.
class [[nodiscard]] Job {
 public:
  Job() = default;
  /// `onCancel` is called at most once, when the handle is cancelled, reset or destroyed. It must be harmless
  /// when the work has ended in the meantime.
  explicit Job(std::function<void()> onCancel) : onCancel_(std::move(onCancel)) {}
  Job(Job&& other) noexcept : onCancel_(std::exchange(other.onCancel_, nullptr)) {}
  Job& operator=(Job&& other) noexcept {
    if (this != &other) {
      // The old work is cancelled last: its cancellation may reach back into the owner of this handle.
      auto old = std::exchange(onCancel_, std::exchange(other.onCancel_, nullptr));
      if (old) old();
    }
    return *this;
  }
  Job(const Job&) = delete;
  Job& operator=(const Job&) = delete;
  ~Job() { cancel(); }

  /// Whether a handle is held. It stays true after the work has ended by itself.
  explicit operator bool() const { return static_cast<bool>(onCancel_); }

  void cancel() {
    if (auto action = std::exchange(onCancel_, nullptr)) action();
  }

 private:
  std::function<void()> onCancel_;
};

}  // namespace lumeno
