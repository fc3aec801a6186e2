#include <QDir>
#include <algorithm>
#include <array>

#include "files/caution/command_review.h"

namespace lumeno {

using namespace Qt::StringLiterals;
using command_words::Trait;
using shell::Redirection;
using shell::Span;
using shell::UnitKind;
using shell::Word;

namespace {

/// Longer paths are no paths to any system.
constexpr qsizetype longestPath = 4096;

bool isUnder(QStringView path, QStringView folder) {
  return path == folder || folder == u"/" ||
         (path.startsWith(folder) && path.size() > folder.size() && path[folder.size()] == u'/');
}

bool isStandardDevice(QStringView path) {
  return listHas(
             u"/dev/null /dev/zero /dev/random /dev/urandom /dev/stdin /dev/stdout /dev/stderr /dev/tty "
             u"/dev/full",
             path) ||
         path.startsWith(u"/dev/fd/");
}

bool isSystemProgram(QStringView path) {
  return std::ranges::any_of(
      std::array<QStringView, 7>{u"/bin/", u"/sbin/", u"/usr/bin/", u"/usr/sbin/", u"/usr/local/bin/",
                                 u"/usr/local/sbin/", u"/opt/homebrew/bin/"},
      [&](QStringView folder) {
        return path.startsWith(folder) && !path.sliced(folder.size()).contains(u'/');
      });
}

bool isAddress(QStringView text) {
  return std::ranges::any_of(
      std::array<QStringView, 5>{u"http://", u"https://", u"ftp://", u"sftp://", u"rtmp://"},
      [&](QStringView scheme) { return text.startsWith(scheme, Qt::CaseInsensitive); });
}

bool isNetworkDevice(QStringView text) {
  return text.startsWith(u"/dev/tcp/") || text.startsWith(u"/dev/udp/");
}

/// Whether a text may name a path that leads away: by its beginning or by a step up.
bool leadsAway(const Word& word) {
  return word.text.startsWith(u'/') || word.isPlain(0, u'~') || word.text.contains(u"..");
}

/// Options of commands with a pattern whose value, in the next word, is neither the pattern nor a path.
QStringView lettersWithText(QStringView name) {
  if (name.endsWith(u"grep") || name == u"rg" || name == u"ag" || name == u"ack") return u"eABCmdDgtT";
  if (name.endsWith(u"awk")) return u"Fve";
  if (name == u"cut" || name == u"paste") return u"dfcb";
  return u"e";
}

}  // namespace

bool CommandReview::exists(const QString& path) {
  if (path.size() > longestPath || !surroundings_.exists || asked_ >= mostAsked) return false;
  ++asked_;
  return surroundings_.exists(path);
}

bool CommandReview::isFolder(const QString& path) {
  return exists(path + u"/."_s);
}

std::optional<QString> CommandReview::resolved(const Word& path) const {
  const QString& text = path.text;
  if (text.isEmpty() || text[0] == shell::placeholder) return std::nullopt;
  if (text[0] == u'/') return QDir::cleanPath(text);
  if (path.isPlain(0, u'~')) {
    if (text.size() == 1 || text[1] == u'/') return QDir::cleanPath(home_ + text.sliced(1));
    return u"/"_s + text;  // somebody else's
  }
  if (!folder_) return std::nullopt;
  return QDir::cleanPath(*folder_ + u'/' + text);
}

bool CommandReview::isOutside(const Word& path) const {
  if (!leadsAway(path)) return false;
  if (const auto place = resolved(path)) return !isUnder(*place, root_) && !isStandardDevice(*place);
  return !path.text.isEmpty() && path.text[0] != shell::placeholder &&
         QDir::cleanPath(path.text).startsWith(u"..");
}

void CommandReview::notePath(const Word& path) {
  if (isOutside(path)) findings_.add(Findings::About::pathOutside, path.text, path.span);
}

void CommandReview::noteArgumentPath(const Word& word, bool mayBeProgram) {
  const QString& text = word.text;
  if (isNetworkDevice(text) || isAddress(text)) {
    return findings_.add(u"Connects to the network."_s, word.span);
  }
  if (mayBeProgram && isSystemProgram(text)) return;
  notePath(word);
  // --name=PATH, name=PATH, -xPATH
  if (const qsizetype equals = text.indexOf(u'='); equals > 0) notePath(word.sliced(equals + 1));
  if (text.startsWith(u"file://")) notePath(word.sliced(7));
  if (text.size() > 3 && text[0] == u'-' && text[1] != u'-') notePath(word.sliced(2));
}

void CommandReview::notePaths(const Invocation& invocation) {
  if (invocation.word.text.contains(u'/') && !isSystemProgram(invocation.word.text)) {
    findings_.add(u"Runs a script that is not checked."_s, invocation.word.span);
    notePath(invocation.word);
  }
  if (invocation.traits & Trait::takesTexts) return;
  const bool mayBeProgram = !(invocation.traits & Trait::changesFiles);
  bool expectsPattern = bool(invocation.traits & Trait::takesPatternFirst);
  const QStringView textLetters = expectsPattern ? lettersWithText(invocation.name) : QStringView();
  const bool isShell = bool(invocation.traits & Trait::isShell);
  const bool isFind = invocation.name == u"find" || invocation.name == u"gfind";
  for (std::size_t i = 0; i < invocation.arguments.size(); ++i) {
    const Word& word = invocation.arguments[i];
    const QString& text = word.text;
    if (isFind && text.startsWith(u'-') && text.size() > 2) {
      const bool namesFile =
          text.startsWith(u"-newer") || text.startsWith(u"-fp") || text == u"-fls" || text == u"-samefile";
      if (!namesFile) ++i;  // a pattern, a number, or a command that is looked at by itself
      continue;
    }
    if (!textLetters.isEmpty()) {
      if (text.startsWith(u"-e") || text.startsWith(u"--expression") || text.startsWith(u"--regexp") ||
          text.startsWith(u"-f") || text.startsWith(u"--file")) {
        if (invocation.name != u"cut") expectsPattern = false;
      }
      if (text.size() >= 2 && text[0] == u'-' && textLetters.contains(text[1])) {
        if (text.size() == 2) ++i;
        continue;
      }
      if (expectsPattern && !text.startsWith(u'-')) {
        expectsPattern = invocation.name == u"perl";
        continue;
      }
    }
    if (isShell && text.contains(u' ')) continue;
    noteArgumentPath(word, mayBeProgram);
  }
}

void CommandReview::noteRedirection(const Redirection& redirection) {
  using Kind = Redirection::Kind;
  const Kind kind = redirection.kind;
  if (kind == Kind::duplicate || kind == Kind::hereString || kind == Kind::hereDocument) return;
  for (const Word& target : shell::expandBraces(redirection.target)) {
    if (isNetworkDevice(target.text)) {
      findings_.add(u"Connects to the network."_s, target.span);
      continue;
    }
    notePath(target);
    if (kind == Kind::output) noteOverwritten(target);
  }
}

void CommandReview::noteAssignment(const Word& assignment) {
  qsizetype end = 0;
  while (end < assignment.text.size() &&
         (assignment.text[end].isLetterOrNumber() || assignment.text[end] == u'_')) {
    ++end;
  }
  const QString name = assignment.text.first(end);
  if (command_words::decidesPrograms(name)) {
    return findings_.add(u"Changes which programs are run: "_s + name, assignment.span);
  }
  const qsizetype equals = assignment.text.indexOf(u'=');
  if (equals >= 0 && equals + 2 < assignment.text.size()) notePath(assignment.sliced(equals + 1));
}

void CommandReview::changeFolder(const Invocation& invocation) {
  if (invocation.name == u"popd") folder_.reset();
  if (invocation.name != u"cd" && invocation.name != u"chdir" && invocation.name != u"pushd") return;
  const CommandOptions options(invocation.arguments, {});
  const auto& operands = options.operands();
  if (operands.empty()) {
    // Home, which no path in the command says.
    if (invocation.name != u"pushd" && !isUnder(home_, root_))
      findings_.add(Findings::About::pathOutside, u"~"_s, invocation.word.span);
    folder_ = home_;
  } else if (operands.size() > 1 || !operands.front()->isLiteral() || operands.front()->text == u"-") {
    folder_.reset();
  } else {
    folder_ = resolved(*operands.front());
    if (folder_ && folder_->size() > longestPath) folder_.reset();
  }
}

void CommandReview::noteOverwritten(const Word& target) {
  if (target.isLiteral()) return noteReplaced(target);
  if (target.isStream || target.text.startsWith(u"/dev/")) return;
  findings_.add(u"May replace files of the same names."_s, target.span);
}

void CommandReview::noteReplaced(const Word& path) {
  if (!path.isLiteral()) return;
  if (const auto place = resolved(path)) noteReplaced(*place, path.text, path.span);
}

void CommandReview::noteReplaced(const QString& path, const QString& shown, Span span) {
  if (isStandardDevice(path)) return;
  if (exists(path) && !isFolder(path)) findings_.add(Findings::About::replacedFile, shown, span);
}

}  // namespace lumeno
