#include "platform/atspi/atspi_focus.h"

#include <algorithm>
#include <deque>

#include "platform/atspi/atspi_text.h"

namespace lumeno::atspi {

using namespace Qt::StringLiterals;

namespace {

constexpr int failedSearchPause = 5000;  // milliseconds
// A walk through the tree is the last resort: large applications need seconds for theirs.
constexpr int mostObjectsWalked = 150;
constexpr std::chrono::milliseconds timeKeptForReading{400};
constexpr int mostProcessesRemembered = 200;

}  // namespace

void FocusTracker::noteFocus(const Reference& object, bool focused) {
  const auto process = client_.processOf(object.busName);
  if (!process) return;
  if (focused) {
    if (focusByProcess_.size() > mostProcessesRemembered) focusByProcess_.clear();
    focusByProcess_.insert(*process, object);
    failedSearches_.remove(*process);
  } else if (focusByProcess_.value(*process) == object) {
    focusByProcess_.remove(*process);
    failedSearches_.remove(*process);
  }
}

void FocusTracker::noteActivity(const Reference& object) {
  const auto process = client_.processOf(object.busName);
  if (!process) return;
  // Only a hint: what moves by itself, such as a log, need not have the focus. It is checked when it is asked
  // for.
  if (!focusByProcess_.contains(*process)) focusByProcess_.insert(*process, object);
}

void FocusTracker::forgetEverything() {
  focusByProcess_.clear();
  failedSearches_.clear();
}

std::optional<Reference> FocusTracker::focusedObject(ProcessId process, uint64_t window) {
  if (const auto known = focusByProcess_.constFind(process); known != focusByProcess_.cend()) {
    const Reference object = *known;
    if (client_.hasState(object, stateFocused)) return object;
    if (client_.isIncomplete()) return std::nullopt;
    focusByProcess_.remove(process);
  }
  if (const auto failed = failedSearches_.constFind(process); failed != failedSearches_.cend()) {
    if (failed->window == window && failed->since.elapsed() < failedSearchPause) return std::nullopt;
  }
  const auto found = search(process);
  if (found) {
    focusByProcess_.insert(process, *found);
    failedSearches_.remove(process);
  } else if (!client_.isIncomplete()) {
    auto& failed = failedSearches_[process];
    failed.window = window;
    failed.since.start();
  }
  return found;
}

std::optional<Reference> FocusTracker::application(ProcessId process) {
  const Reference desktop{QLatin1StringView(registryName), QLatin1StringView(rootPath)};
  for (const auto& application : client_.children(desktop)) {
    if (client_.processOf(application.busName) == process) return application;
  }
  return std::nullopt;
}

std::optional<Reference> FocusTracker::search(ProcessId process) {
  const auto root = application(process);
  if (!root) return std::nullopt;
  for (const auto& frame : client_.children(*root)) {
    if (!client_.hasState(frame, stateActive)) continue;
    if (const auto found = preferred(client_.focusedDescendants(frame))) return found;
    std::deque<Reference> queue{frame};
    for (int walked = 0; walked < mostObjectsWalked && !queue.empty(); ++walked) {
      if (client_.timeLeft() < timeKeptForReading) return std::nullopt;
      const Reference object = queue.front();
      queue.pop_front();
      if (client_.hasState(object, stateFocused)) return object;
      if (client_.isIncomplete()) return std::nullopt;
      for (auto& child : client_.children(object)) queue.push_back(std::move(child));
    }
  }
  return std::nullopt;
}

std::optional<Reference> FocusTracker::preferred(const std::vector<Reference>& candidates) {
  // Several objects may claim the focus, such as a document and the text area inside it.
  for (const auto& candidate : candidates) {
    if (client_.role(candidate) == rolePasswordText) return candidate;
    const auto selected = readSelectedText(client_, candidate);
    if (selected && !selected->text.isEmpty()) return candidate;
  }
  for (const auto& candidate : candidates) {
    const auto interfaces = client_.interfaces(candidate);
    if (std::find(interfaces.begin(), interfaces.end(), u"org.a11y.atspi.Text"_s) != interfaces.end()) {
      return candidate;
    }
  }
  if (candidates.empty()) return std::nullopt;
  return candidates.front();
}

}  // namespace lumeno::atspi
