#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace lumeno {

/// Keeps one subscription alive; destroying it ends it, also while a notification is being delivered.
/// It may outlive what it subscribed to.
class [[nodiscard]] Subscription {
 public:
  Subscription() = default;
  explicit Subscription(std::function<void()> end) : end_(std::move(end)) {}
  Subscription(Subscription&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
  Subscription& operator=(Subscription&& other) noexcept {
    if (this != &other) {
      reset();
      end_ = std::exchange(other.end_, nullptr);
    }
    return *this;
  }
  Subscription(const Subscription&) = delete;
  Subscription& operator=(const Subscription&) = delete;
  ~Subscription() { reset(); }

  void reset() {
    if (auto end = std::exchange(end_, nullptr)) end();
  }
  explicit operator bool() const { return static_cast<bool>(end_); }

 private:
  std::function<void()> end_;
};

/// A list of listeners that are called in the order in which they came. Listeners may come and go during a
/// call.
template <typename... Args>
class Signal {
 public:
  using Listener = std::function<void(Args...)>;

  [[nodiscard]] Subscription connect(Listener listener) {
    auto entry = std::make_shared<Listener>(std::move(listener));
    listeners_->push_back(entry);
    return Subscription([list = std::weak_ptr(listeners_), entry = std::weak_ptr(entry)] {
      auto strongEntry = entry.lock();
      if (!strongEntry) return;
      *strongEntry = nullptr;
      if (auto strongList = list.lock()) std::erase(*strongList, strongEntry);
    });
  }

  void emit(Args... args) const {
    // A copy of the list: a listener may add or remove listeners. A removed one is emptied, so it is not
    // called.
    const auto snapshot = *listeners_;
    for (const auto& entry : snapshot) {
      if (!*entry) continue;
      const Listener listener = *entry;
      listener(args...);
    }
  }

  [[nodiscard]] bool hasListeners() const { return !listeners_->empty(); }

 private:
  std::shared_ptr<std::vector<std::shared_ptr<Listener>>> listeners_ =
      std::make_shared<std::vector<std::shared_ptr<Listener>>>();
};

/// A value that tells its observers of every assignment, also of an unchanged value. Main thread only.
template <typename T>
class Observable {
 public:
  explicit Observable(T initial = {}) : value_(std::move(initial)) {}
  Observable(const Observable&) = delete;
  Observable& operator=(const Observable&) = delete;

  [[nodiscard]] const T& get() const { return value_; }

  void set(T value) {
    value_ = std::move(value);
    // By copy: an observer may assign again, and later observers must still see a valid value.
    const T current = value_;
    signal_.emit(current);
  }

  /// Delivers the current value once, at once, and then every assignment.
  [[nodiscard]] Subscription subscribe(std::function<void(const T&)> observer) {
    observer(value_);
    return signal_.connect(std::move(observer));
  }

  /// As `subscribe`, but an assignment equal to the last delivered value is not delivered.
  [[nodiscard]] Subscription subscribeDistinct(std::function<void(const T&)> observer) {
    observer(value_);
    // Shared, because a listener is copied for each call.
    return signal_.connect(
        [last = std::make_shared<T>(value_), observer = std::move(observer)](const T& value) {
          if (value == *last) return;
          *last = value;
          observer(value);
        });
  }

 private:
  T value_;
  Signal<const T&> signal_;
};

}  // namespace lumeno
