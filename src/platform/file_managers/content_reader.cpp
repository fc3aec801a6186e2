#include "platform/file_managers/content_reader.h"

#include "platform/file_managers/name_matching.h"
#include "platform/file_managers/selected_names.h"
#include "platform/file_managers/shown_folder.h"

namespace lumeno {

using atspi::Reference;

namespace {

constexpr qint64 failedSearchPause = 5000;  // milliseconds

bool has(uint64_t states, int state) {
  return (states >> state) & 1;
}

}  // namespace

std::optional<std::vector<QByteArray>> ContentReader::read(const Target& target, const Effort& effort) {
  client_.beginRound(effort.limit, effort.callLimit);
  return connect() ? readConnected(target, effort) : std::nullopt;
}

std::optional<std::vector<QByteArray>> ContentReader::readAny(const std::optional<Target>& preferred,
                                                              const Effort& effort) {
  client_.beginRound(effort.limit, effort.callLimit);
  if (!connect()) return std::nullopt;
  const bool isThere = preferred && focus_.application(preferred->process);
  const auto target = isThere ? preferred : runningFileManager();
  return target ? readConnected(*target, effort) : std::nullopt;
}

bool ContentReader::connect() {
  bool isNewConnection = false;
  if (!client_.ensureConnected(isNewConnection)) return false;
  if (isNewConnection) process_ = 0;
  return true;
}

std::optional<ContentReader::Target> ContentReader::runningFileManager() {
  const Reference desktop{QLatin1StringView(atspi::registryName), QLatin1StringView(atspi::rootPath)};
  for (const Reference& application : client_.children(desktop)) {
    const auto recipe = recipeFor(client_.name(application).value_or(QString()).toLower());
    const auto process = recipe ? client_.processOf(application.busName) : std::nullopt;
    if (process) return Target{*recipe, *process};
  }
  return std::nullopt;
}

std::optional<std::vector<QByteArray>> ContentReader::readConnected(const Target& target,
                                                                    const Effort& effort) {
  const auto& [recipe, process] = target;
  if (process != process_) {
    process_ = process;
    application_.reset();
    frame_ = {};
  }
  const auto frame = activeFrame(process, effort);
  const auto view = frame ? viewIn(recipe, *frame, effort) : std::nullopt;
  if (!view) return std::nullopt;
  const QString title = client_.name(*frame).value_or(QString());
  const auto folder = readShownFolder(client_, recipe, parts_, process, title);
  const auto names = readSelectedNames(client_, recipe.view, *view, effort.mostNames);
  if (!names || client_.isIncomplete()) return std::nullopt;
  std::vector<QByteArray> paths;
  if (names->empty()) return paths;

  // Another folder may have come while this was read.
  const bool isSame =
      client_.name(*frame) == title && readShownFolder(client_, recipe, parts_, process, title) == folder;
  if (!folder || !isSame || client_.isIncomplete()) return std::nullopt;
  if (folder->path.isEmpty()) return paths;
  const auto listing = listFolder(folder->path);
  const auto found = listing ? matchNames(*names, *listing) : std::nullopt;
  if (!found) return std::nullopt;
  const QByteArray parent = folder->path == "/" ? QByteArray() : folder->path;
  for (const QByteArray& name : *found) paths.push_back(parent + '/' + name);
  return paths;
}

void ContentReader::disconnect() {
  client_.disconnect();
}

std::optional<Reference> ContentReader::activeFrame(ProcessId process, const Effort& effort) {
  if (!application_) application_ = focus_.application(process);
  if (!application_) return std::nullopt;
  std::optional<Reference> active;
  std::optional<Reference> shown;
  for (const Reference& frame : client_.children(*application_)) {
    const uint64_t states = client_.states(frame).value_or(0);
    if (!shown && has(states, atspi::stateShowing)) shown = frame;
    if (!has(states, atspi::stateActive)) continue;
    if (active) return std::nullopt;
    active = frame;
  }
  return active || !effort.takesAnyWindow ? active : shown;
}

std::optional<Reference> ContentReader::viewIn(const FileManagerRecipe& recipe, const Reference& frame,
                                               const Effort& effort) {
  if (frame == frame_) {
    if (parts_.views.size() == 1 && isShown(client_, recipe, parts_.views.front()))
      return parts_.views.front();
    const bool isRecentFailure =
        sinceFailedSearch_.isValid() && sinceFailedSearch_.elapsed() < failedSearchPause;
    if (client_.isIncomplete() || (isRecentFailure && !effort.isInsistent)) return std::nullopt;
  }
  frame_ = frame;
  parts_ = findWindowParts(client_, recipe, frame);
  // With several views side by side it is not known which one is meant.
  if (parts_.views.size() == 1 && !client_.isIncomplete()) {
    sinceFailedSearch_.invalidate();
    return parts_.views.front();
  }
  parts_ = {};
  sinceFailedSearch_.start();
  return std::nullopt;
}

}  // namespace lumeno
