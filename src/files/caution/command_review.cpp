#include "files/caution/command_review.h"

#include <QDir>
#include <algorithm>
#include <utility>

namespace lumeno {

using namespace Qt::StringLiterals;
using command_words::Prefix;
using command_words::Trait;
using shell::Span;
using shell::UnitKind;
using shell::Word;

namespace {

QString baseName(const Word& word) {
  // `=name` is zsh's way to say where the program is.
  if (word.isPlain(0, u'=') && word.text.size() > 1) return word.text.sliced(1);
  return word.text.sliced(word.text.lastIndexOf(u'/') + 1);
}

/// Whether letters that need no quotes stand in quotes; a quoted path is ordinary.
bool isDisguised(const Word& word) {
  if (!word.usesQuotes || word.has(UnitKind::known)) return false;
  if (word.text.contains(u'/') && !word.has(UnitKind::plain)) return false;
  return !word.text.isEmpty() && std::ranges::all_of(word.text, [](QChar c) {
    return c.unicode() < 0x80 && (c.isLetterOrNumber() || QStringView(u"_.+-/[").contains(c));
  });
}

bool isAssignment(const Word& word) {
  const qsizetype equals = word.text.indexOf(u'=');
  return equals > 0 && !word.text.startsWith(u'-');
}

}  // namespace

CommandReview::CommandReview(const CautionSurroundings& surroundings, qsizetype length, Findings& findings)
    : surroundings_(surroundings),
      home_(QDir::cleanPath(surroundings.homeDirectory)),
      root_(QDir::cleanPath(surroundings.workingDirectory)),
      folder_(root_),
      findings_(findings),
      budget_(length * 8 + 65536) {}

void CommandReview::review(QStringView text) {
  reviewText(text, std::nullopt);
}

void CommandReview::reviewText(QStringView text, std::optional<Span> standsAt) {
  const shell::Script script = shell::readScript(text, {home_, root_, standsAt, depth_});
  const shell::Script* outer = std::exchange(script_, &script);
  reviewScript(script);
  script_ = outer;
}

void CommandReview::reviewNested(const Word& text) {
  budget_ -= text.text.size();
  if (depth_ >= deepestNesting || budget_ < 0) {
    return findings_.add(u"Is nested too deeply to be read."_s, text.span);
  }
  if (text.isDynamic()) {
    findings_.add(u"Runs text that is not shown here."_s, text.span);
    const bool nothingShown =
        std::ranges::all_of(text.text, [](QChar c) { return c == shell::placeholder || c.isSpace(); });
    if (nothingShown) return;
  }
  ++depth_;
  const auto folder = folder_;
  reviewText(text.text, text.span);
  folder_ = folder;
  --depth_;
}

void CommandReview::reviewScript(const shell::Script& script) {
  if (script.unreadable) findings_.add(u"Cannot be read as a shell command."_s, *script.unreadable);
  if (script.tooDeep) findings_.add(u"Is nested too deeply to be read."_s, *script.tooDeep);
  for (const Span& span : script.background) findings_.add(u"Keeps running in the background."_s, span);
  for (const Span& span : script.hiddenBlanks) findings_.add(u"Hides a space behind a variable."_s, span);
  for (const Span& span : script.evaluated) findings_.add(u"Runs text that is not shown here."_s, span);
  if (script.foreignBlank) {
    findings_.add(u"Contains characters that cannot be seen."_s, *script.foreignBlank);
  }
  const std::size_t outside = outerFolders_.size();
  for (const shell::Command& command : script.commands) {
    switch (command.kind) {
      case shell::Command::Kind::enterSubshell:
        outerFolders_.push_back(folder_);
        break;
      case shell::Command::Kind::leaveSubshell:
        if (outerFolders_.size() > outside) {
          folder_ = outerFolders_.back();
          outerFolders_.pop_back();
        }
        break;
      case shell::Command::Kind::wordsOnly:
        for (const Word& words : command.words) {
          for (const Word& word : shell::expandBraces(words)) noteArgumentPath(word, true);
        }
        break;
      case shell::Command::Kind::simple:
        reviewCommand(command);
        break;
    }
  }
  outerFolders_.resize(outside);
}

void CommandReview::reviewCommand(const shell::Command& command) {
  for (const Word& assignment : command.assignments) noteAssignment(assignment);
  for (const shell::Redirection& redirection : command.redirections) noteRedirection(redirection);
  std::vector<Word> words;
  for (const Word& word : command.words) {
    for (Word& expanded : shell::expandBraces(word)) words.push_back(std::move(expanded));
  }
  reviewWords(words, command);
}

void CommandReview::reviewWords(std::span<const Word> words, const shell::Command& command) {
  QString replaced = u"{}"_s;  // stands for a file that is not known yet
  while (!words.empty()) {
    const Word& word = words.front();
    const std::span<const Word> arguments = words.subspan(1);
    noteName(word);
    if (!word.isLiteral() || word.text.contains(replaced)) {
      findings_.add(u"Runs a command that is only named while it runs."_s, word.span);
      for (const Word& argument : arguments) noteArgumentPath(argument, false);
      return;
    }
    const QString name = baseName(word);
    const Invocation invocation{name, word, arguments, command_words::traits(name), &command};
    noteSystem(invocation);
    const Prefix* prefix = command_words::prefix(name);
    if (prefix == nullptr) return reviewInvocation(invocation);
    const std::size_t next = commandAfterPrefix(invocation, *prefix);
    for (const Word& argument : arguments.first(next)) noteArgumentPath(argument, true);
    for (std::size_t i = 0; name == u"xargs" && i < next; ++i) {
      const QString& text = arguments[i].text;
      if (text.startsWith(u"-I") && text.size() > 2) replaced = text.sliced(2);
      if (text == u"-I" && i + 1 < next) replaced = arguments[i + 1].text;
    }
    words = arguments.subspan(next);
  }
}

std::size_t CommandReview::commandAfterPrefix(const Invocation& invocation, const Prefix& prefix) {
  const std::span<const Word> arguments = invocation.arguments;
  std::size_t i = 0;
  for (; i < arguments.size(); ++i) {
    const QString& text = arguments[i].text;
    if (prefix.takesAssignments && isAssignment(arguments[i])) {
      noteAssignment(arguments[i]);
      continue;
    }
    if (text.size() < 2 || text[0] != u'-') break;
    if (text == u"--") {
      ++i;
      break;
    }
    if (prefix.name == u"command" && (text == u"-v" || text == u"-V")) return arguments.size();
    const bool isEnv = prefix.name == u"env";
    if (text.startsWith(u"--")) {
      const qsizetype equals = text.indexOf(u'=');
      if (isEnv && text.startsWith(u"--s") && equals > 0) reviewNested(arguments[i].sliced(equals + 1));
      if (equals < 0 && listHas(prefix.options.longNames, QStringView(text).sliced(2))) {
        ++i;
        if (isEnv && text.startsWith(u"--s") && i < arguments.size()) reviewNested(arguments[i]);
      }
      continue;
    }
    for (qsizetype at = 1; at < text.size(); ++at) {
      if (!prefix.options.letters.contains(text[at])) continue;
      const bool attached = at + 1 < text.size();
      if (isEnv && text[at] == u'S') {
        if (attached) reviewNested(arguments[i].sliced(at + 1));
        if (!attached && i + 1 < arguments.size()) reviewNested(arguments[i + 1]);
      }
      if (!attached) ++i;
      break;
    }
  }
  return std::min(i + std::size_t(prefix.operands), arguments.size());
}

void CommandReview::noteName(const Word& word) {
  if (isDisguised(word)) {
    findings_.add(Findings::About::disguisedCommand, word.text, word.span);
  }
  const bool unusual =
      std::ranges::any_of(word.text, [](QChar c) { return c.unicode() > 0x7F && c != shell::placeholder; });
  if (unusual) {
    findings_.add(Findings::About::unusualCommand, word.text, word.span);
  }
}

void CommandReview::reviewInvocation(const Invocation& invocation) {
  notePaths(invocation);
  noteDeletion(invocation);
  noteChanges(invocation);
  noteReplacedTargets(invocation);
  noteOutputs(invocation);
  noteArchives(invocation);
  noteGit(invocation);
  noteScripts(invocation);
  noteNestedCommands(invocation);
  changeFolder(invocation);
}

}  // namespace lumeno
