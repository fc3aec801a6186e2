#pragma once

#include <utility>
#include <vector>

#include "base/scheduler.h"
#include "platform/pasteboard.h"
#include "records/uri_list.h"

namespace lumeno {

/// A pasteboard in memory; its answers come at the scheduler's next turn.
class FakePasteboard final : public Pasteboard {
 public:
  explicit FakePasteboard(Scheduler& scheduler) : scheduler_(scheduler) {}

  int64_t changeCount() override { return count; }

  Job snapshot(std::function<void(std::optional<PasteboardSnapshot>)> done) override {
    ++snapshots;
    return scheduler_.after(std::chrono::milliseconds(0), [this, done = std::move(done)] {
      if (isSecret) {
        done(std::nullopt);
      } else {
        done(PasteboardSnapshot{items, count});
      }
    });
  }

  void restore(const PasteboardSnapshot& snapshot) override {
    ++restores;
    if (count != snapshot.changeCount + 1) return;  // as it was, or somebody newer has been here
    items = snapshot.items;
    ++count;
  }

  Job readString(std::function<void(std::optional<QString>)> done) override {
    return scheduler_.after(std::chrono::milliseconds(0), [this, done = std::move(done)] { done(string()); });
  }

  Job readFileUrls(std::function<void(std::optional<std::vector<QUrl>>)> done) override {
    return scheduler_.after(std::chrono::milliseconds(0), [this, done = std::move(done)] {
      for (const auto& item : items) {
        for (const auto& [type, data] : item.dataByType) {
          if (type == "text/uri-list") return done(fileUrlsInUriList(data));
        }
      }
      done(std::nullopt);
    });
  }

  void setString(const QString& text) override { put({{plainText(), text.toUtf8()}}); }

  /// Replaces the content by one item.
  void put(std::vector<std::pair<QByteArray, QByteArray>> dataByType) {
    items = {{std::move(dataByType)}};
    ++count;
  }
  [[nodiscard]] std::optional<QString> string() const {
    for (const auto& item : items) {
      for (const auto& [type, data] : item.dataByType) {
        if (type == plainText()) return QString::fromUtf8(data);
      }
    }
    return std::nullopt;
  }
  [[nodiscard]] static QByteArray plainText() { return "text/plain"; }

  std::vector<PasteboardSnapshot::Item> items;
  int64_t count = 1;
  bool isSecret = false;
  int snapshots = 0;
  int restores = 0;

 private:
  Scheduler& scheduler_;
};

}  // namespace lumeno
