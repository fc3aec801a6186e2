#include "platform/x11/x11_selection_content.h"

#include <QDeadlineTimer>
#include <QSet>
#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "records/file_selection.h"
#include "records/uri_list.h"

namespace lumeno {

namespace {

constexpr std::chrono::milliseconds readTime{300};
constexpr qsizetype textBytes = 16 * 1024 * 1024;
constexpr qsizetype allBytes = 32 * 1024 * 1024;
// No application has that many; each name that is not known yet costs a question to the server.
constexpr size_t mostTargets = 500;
constexpr auto secretMark = "x-kde-passwordManagerHint";
constexpr auto secretValue = "secret";
constexpr auto uriList = "text/uri-list";

using Targets = std::vector<xcb_atom_t>;

Targets targetsIn(const SelectionValue& value) {
  if (value.format != 32) return {};
  const auto* first = reinterpret_cast<const xcb_atom_t*>(value.bytes.constData());
  return {first, first + static_cast<size_t>(value.bytes.size()) / sizeof(xcb_atom_t)};
}

/// Each once; of too many, one more than `mostTargets`.
Targets distinct(const Targets& all) {
  Targets targets;
  QSet<xcb_atom_t> seen;
  for (const xcb_atom_t target : all) {
    if (target == XCB_ATOM_NONE || seen.contains(target)) continue;
    seen.insert(target);
    targets.push_back(target);
    if (targets.size() > mostTargets) break;
  }
  return targets;
}

/// Targets that say something about the exchange instead of the content, that make the owner do something, or
/// whose answer is a handle into the owner's own memory on the server.
bool isContent(const QByteArray& target) {
  static const QSet<QByteArray> others{"TARGETS",          "MULTIPLE",        "TIMESTAMP",    "DELETE",
                                       "INSERT_SELECTION", "INSERT_PROPERTY", "SAVE_TARGETS", "PIXMAP",
                                       "BITMAP",           "DRAWABLE",        "COLORMAP",     "WINDOW"};
  return !target.isEmpty() && !others.contains(target);
}

bool isImage(const QByteArray& target) {
  return target.startsWith("image/") || target == "application/x-qt-image";
}

/// Whether a path can be trusted to be exact. Programs that keep names as text put U+FFFD in place of bytes
/// that are none; whether the character is the name's own cannot be told without asking the file system.
bool isTold(const QUrl& url) {
  return !localPath(url).contains("\xEF\xBF\xBD");
}

}  // namespace

/// One read: the list of targets, the check for the secret mark, then what the kind of read asks for.
class X11SelectionContent::Reading : public std::enable_shared_from_this<Reading> {
 public:
  Reading(X11SelectionContent& content, qsizetype byteLimit) : content_(content), byteLimit_(byteLimit) {}
  virtual ~Reading() = default;

  void begin() {
    bytesLeft_ = byteLimit_;
    ask(atom("TARGETS"), [this](const TransferResult& answer) {
      if (answer.outcome == TransferOutcome::delivered) return checkMark(targetsIn(answer.value));
      if (answer.outcome == TransferOutcome::refused && !hasOwner()) return noOwner();
      fail();
    });
  }

  virtual void cancel() { transfer_.cancel(); }
  [[nodiscard]] virtual bool isOver() const = 0;

 protected:
  using Next = std::function<void(const TransferResult&)>;

  virtual void noOwner() = 0;
  virtual void proceed(const Targets& targets) = 0;
  virtual void fail() = 0;

  /// Asks the owner for one target. Ends what was asked before.
  void ask(xcb_atom_t target, Next next) {
    transfer_ = content_.transfers_.start(
        {content_.selection_, target, deadline_, bytesLeft_},
        [self = shared_from_this(), next = std::move(next)](const TransferResult& answer) {
          self->bytesLeft_ -= answer.value.bytes.size();
          next(answer);
        });
  }

  [[nodiscard]] static bool isLimitExceeded(const TransferResult& answer) {
    return answer.outcome == TransferOutcome::tooLarge || answer.outcome == TransferOutcome::tooLate;
  }
  [[nodiscard]] xcb_atom_t atom(const QByteArray& name) const { return content_.connection_.atom(name); }
  [[nodiscard]] QByteArray nameOf(xcb_atom_t atom) const { return content_.connection_.atomName(atom); }

  X11SelectionContent& content_;

 private:
  void checkMark(const Targets& targets) {
    const xcb_atom_t mark = atom(secretMark);
    if (std::find(targets.begin(), targets.end(), mark) == targets.end()) return proceed(distinct(targets));
    ask(mark, [this, targets = distinct(targets)](const TransferResult& answer) {
      // A mark that cannot be read is taken for the worse.
      if (answer.outcome != TransferOutcome::delivered || answer.value.bytes.startsWith(secretValue)) {
        return fail();
      }
      proceed(targets);
    });
  }

  [[nodiscard]] bool hasOwner() const {
    xcb_connection_t* const xcb = content_.connection_.xcb();
    const XcbPtr<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(xcb, xcb_get_selection_owner(xcb, content_.selection_), nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
  }

  const qsizetype byteLimit_;
  const QDeadlineTimer deadline_{readTime, Qt::PreciseTimer};
  qsizetype bytesLeft_ = 0;
  Job transfer_;
};

/// A read with its listener.
template <typename Answer>
class X11SelectionContent::ReadingOf : public Reading {
 public:
  using Done = std::function<void(std::optional<Answer>)>;
  ReadingOf(X11SelectionContent& content, qsizetype byteLimit, Done done)
      : Reading(content, byteLimit), done_(std::move(done)) {}

  void cancel() override {
    done_ = nullptr;
    Reading::cancel();
  }
  [[nodiscard]] bool isOver() const override { return !done_; }

 protected:
  void fail() override { finish(std::nullopt); }
  void finish(std::optional<Answer> answer) {
    if (const auto done = std::exchange(done_, nullptr)) done(std::move(answer));
  }

 private:
  Done done_;
};

/// Takes the first of several targets, by preference, that can be decoded.
template <typename Answer>
class X11SelectionContent::BestReading : public ReadingOf<Answer> {
 public:
  using ReadingOf<Answer>::ReadingOf;

 protected:
  [[nodiscard]] virtual Targets candidatesAmong(const Targets& targets) const = 0;
  [[nodiscard]] virtual std::optional<Answer> decode(xcb_atom_t target,
                                                     const SelectionValue& value) const = 0;

 private:
  void noOwner() override { this->fail(); }

  void proceed(const Targets& targets) override {
    candidates_ = candidatesAmong(targets);
    tryCandidate(0);
  }

  void tryCandidate(size_t index) {
    if (index == candidates_.size()) return this->fail();
    this->ask(candidates_[index], [this, index](const TransferResult& answer) {
      if (this->isLimitExceeded(answer)) return this->fail();
      auto decoded = answer.outcome == TransferOutcome::delivered ? decode(candidates_[index], answer.value)
                                                                  : std::nullopt;
      decoded ? this->finish(std::move(decoded)) : tryCandidate(index + 1);
    });
  }

  Targets candidates_;
};

class X11SelectionContent::TextReading final : public BestReading<QString> {
 public:
  using BestReading::BestReading;

 private:
  Targets candidatesAmong(const Targets& targets) const override { return content_.textTargets(targets); }
  std::optional<QString> decode(xcb_atom_t target, const SelectionValue& value) const override {
    return content_.decode(target, value);
  }
};

class X11SelectionContent::FileReading final : public BestReading<std::vector<QUrl>> {
 public:
  using BestReading::BestReading;

 private:
  Targets candidatesAmong(const Targets& targets) const override { return content_.fileTargets(targets); }
  std::optional<std::vector<QUrl>> decode(xcb_atom_t target, const SelectionValue& value) const override {
    return content_.decodeFiles(target, value);
  }
};

class X11SelectionContent::FullReading final : public ReadingOf<std::vector<SelectionOffer>> {
 public:
  using ReadingOf::ReadingOf;

 private:
  void noOwner() override { finish(std::vector<SelectionOffer>{}); }

  void proceed(const Targets& targets) override {
    if (targets.size() > mostTargets) return fail();
    offers_.clear();
    wanted_.clear();
    const xcb_atom_t image = imageAmong(targets);
    std::copy_if(targets.begin(), targets.end(), std::back_inserter(wanted_),
                 [this, image](xcb_atom_t target) {
                   const QByteArray name = nameOf(target);
                   return isContent(name) && (!isImage(name) || target == image);
                 });
    askFor(0);
  }

  /// The lossless format that everybody reads, else what the owner names first.
  [[nodiscard]] xcb_atom_t imageAmong(const Targets& targets) const {
    xcb_atom_t first = XCB_ATOM_NONE;
    for (const xcb_atom_t target : targets) {
      const QByteArray name = nameOf(target);
      if (name == "image/png") return target;
      if (first == XCB_ATOM_NONE && isImage(name)) first = target;
    }
    return first;
  }

  void askFor(size_t index) {
    // There is something, so to put nothing back would lose it.
    if (index == wanted_.size()) return offers_.empty() ? fail() : finish(std::move(offers_));
    ask(wanted_[index], [this, index](const TransferResult& answer) {
      const bool isDelivered = answer.outcome == TransferOutcome::delivered;
      // The other formats of an image are not asked for: it would be lost as well.
      if (isLimitExceeded(answer) || (!isDelivered && isImage(nameOf(wanted_[index])))) return fail();
      if (isDelivered) offers_.push_back({wanted_[index], answer.value});
      askFor(index + 1);
    });
  }

  Targets wanted_;
  std::vector<SelectionOffer> offers_;
};

X11SelectionContent::X11SelectionContent(X11Connection& connection, Scheduler& scheduler,
                                         xcb_atom_t selection)
    : connection_(connection), selection_(selection), transfers_(connection, scheduler) {}

Job X11SelectionContent::readText(std::function<void(std::optional<QString>)> done) {
  return begin(std::make_shared<TextReading>(*this, textBytes, std::move(done)));
}

Job X11SelectionContent::readFileUrls(std::function<void(std::optional<std::vector<QUrl>>)> done) {
  return begin(std::make_shared<FileReading>(*this, textBytes, std::move(done)));
}

Job X11SelectionContent::readAll(std::function<void(std::optional<std::vector<SelectionOffer>>)> done) {
  return begin(std::make_shared<FullReading>(*this, allBytes, std::move(done)));
}

Job X11SelectionContent::begin(std::shared_ptr<Reading> reading) {
  std::erase_if(readings_, [](const auto& old) { return old.expired(); });
  readings_.push_back(reading);
  reading->begin();
  return Job([reading = std::move(reading)] { reading->cancel(); });
}

/// Those with one of the names, in the order of the names. The names of MIME types come in any case.
Targets X11SelectionContent::targetsNamed(std::span<const char* const> names, const Targets& targets) const {
  Targets found;
  for (const char* name : names) {
    const auto match = std::find_if(targets.begin(), targets.end(), [this, name](xcb_atom_t target) {
      return connection_.atomName(target).toLower() == name;
    });
    if (match != targets.end()) found.push_back(*match);
  }
  return found;
}

Targets X11SelectionContent::textTargets(const Targets& targets) const {
  static constexpr std::array names{"utf8_string", "text/plain;charset=utf-8", "string"};
  return targetsNamed(names, targets);
}

Targets X11SelectionContent::fileTargets(const Targets& targets) const {
  static constexpr std::array names{uriList, "x-special/gnome-copied-files", "x-special/mate-copied-files"};
  return targetsNamed(names, targets);
}

std::optional<std::vector<QUrl>> X11SelectionContent::decodeFiles(xcb_atom_t target,
                                                                  const SelectionValue& value) const {
  if (value.format != 8) return std::nullopt;
  const bool isPlainList = connection_.atomName(target).toLower() == uriList;
  auto urls = isPlainList ? fileUrlsInUriList(value.bytes) : fileUrlsInCopiedFiles(value.bytes);
  if (!urls || !std::all_of(urls->begin(), urls->end(), isTold)) return std::nullopt;
  return urls;
}

std::optional<std::vector<QUrl>> X11SelectionContent::fileUrlsIn(
    const std::vector<SelectionOffer>& offers) const {
  Targets targets;
  for (const SelectionOffer& offer : offers) targets.push_back(offer.target);
  for (const xcb_atom_t target : fileTargets(targets)) {
    const auto offer = std::find_if(offers.begin(), offers.end(),
                                    [target](const SelectionOffer& o) { return o.target == target; });
    if (auto urls = decodeFiles(target, offer->value)) return urls;
  }
  return std::nullopt;
}

/// The type says what the bytes are: some owners answer for STRING with other encodings too.
std::optional<QString> X11SelectionContent::decode(xcb_atom_t target, const SelectionValue& value) const {
  if (value.format != 8) return std::nullopt;
  if (value.type == XCB_ATOM_STRING) return QString::fromLatin1(value.bytes);
  const QByteArray type = connection_.atomName(value.type);
  const bool isUtf8 = type == "UTF8_STRING" || type.startsWith("text/plain") || value.type == target;
  return isUtf8 ? std::optional(QString::fromUtf8(value.bytes)) : std::nullopt;
}

std::optional<QString> X11SelectionContent::textIn(const std::vector<SelectionOffer>& offers) const {
  Targets targets;
  for (const SelectionOffer& offer : offers) targets.push_back(offer.target);
  for (const xcb_atom_t target : textTargets(targets)) {
    const auto offer = std::find_if(offers.begin(), offers.end(),
                                    [target](const SelectionOffer& o) { return o.target == target; });
    if (auto text = decode(target, offer->value)) return text;
  }
  return std::nullopt;
}

void X11SelectionContent::ownerChanged() {
  const auto readings = readings_;
  for (const auto& weak : readings) {
    if (const auto reading = weak.lock(); reading && !reading->isOver()) reading->begin();
  }
}

}  // namespace lumeno
