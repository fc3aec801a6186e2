#include <algorithm>
#include <utility>

#include "files/caution/command_review.h"

namespace lumeno {

using namespace Qt::StringLiterals;
using command_words::Trait;
using shell::Redirection;
using shell::Span;
using shell::UnitKind;
using shell::Word;

namespace {

/// The words as one text, standing where they all stand.
Word joined(std::span<const Word> words) {
  Word text;
  for (const Word& word : words) {
    if (!text.text.isEmpty()) text.append(u' ', UnitKind::quoted);
    text.text += word.text;
    text.kinds += word.kinds;
    text.overflowing |= word.overflowing;
  }
  if (!words.empty()) {
    const Span first = words.front().span;
    text.span = {first.start, std::max(words.back().span.end(), first.end()) - first.start};
  }
  return text;
}

/// The program of `-c`, the file to run, or neither when the commands come from the standard input.
struct ShellCall {
  const Word* text = nullptr;
  const Word* file = nullptr;
  bool onlyInforms = false;
};

ShellCall shellCall(std::span<const Word> arguments) {
  bool takesText = false;
  bool takesInput = false;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const QString& text = arguments[i].text;
    const bool isOption = text.size() > 1 && (text[0] == u'-' || text[0] == u'+');
    if (!isOption || text == u"--") {
      if ((text == u"--" || text == u"-") && ++i >= arguments.size()) break;
      const Word* word = &arguments[i];
      if (takesText) return {word, nullptr};
      if (takesInput || listHas(u"/dev/stdin /dev/fd/0 /proc/self/fd/0", word->text)) return {};
      return {nullptr, word};
    }
    if (text == u"--version" || text == u"--help") return {nullptr, nullptr, true};
    if (listHas(u"--rcfile --init-file --emulate -o +o -O +O", text)) {
      ++i;
    } else if (text[1] != u'-') {
      takesText |= text.contains(u'c');
      takesInput |= text.contains(u's');
      if (text.endsWith(u'o')) ++i;
    } else if (text == u"--command") {
      takesText = true;
    }
  }
  return {};
}

}  // namespace

void CommandReview::reviewJoined(std::span<const Word> words) {
  if (!words.empty()) reviewNested(joined(words));
}

void CommandReview::noteNestedCommands(const Invocation& invocation) {
  const QString& name = invocation.name;
  const std::span<const Word> arguments = invocation.arguments;
  const Span span = invocation.word.span;
  if (invocation.traits & Trait::isShell) {
    reviewShell(invocation);
  } else if (name == u"eval") {
    reviewJoined(arguments);
  } else if (name == u"source" || name == u".") {
    const bool computed = !arguments.empty() && arguments.front().has(UnitKind::output);
    if (computed || (!arguments.empty() && arguments.front().text == u"/dev/stdin")) {
      findings_.add(u"Runs text that is not shown here."_s, span);
    } else {
      findings_.add(u"Runs a script that is not checked."_s, span);
    }
  } else if (listHas(u"find gfind fd fdfind", name)) {
    reviewFind(invocation);
  } else if (name == u"parallel") {
    const CommandOptions options(
        arguments,
        {u"jaNLPSIC", u"jobs arg-file delay colsep joblog results tmpdir workdir timeout retries", true});
    const auto sources =
        std::ranges::find_if(arguments, [](const Word& word) { return word.text.startsWith(u":::"); });
    const auto end = std::size_t(sources - arguments.begin());
    if (options.firstOperand() >= end) return findings_.add(u"Runs text that is not shown here."_s, span);
    reviewJoined(arguments.subspan(options.firstOperand(), end - options.firstOperand()));
  } else if (name == u"watch" || name == u"trap" || name == u"entr") {
    const CommandOptions options(arguments, {u"n", u"interval", true});
    const std::size_t first = options.firstOperand();
    reviewJoined(name == u"trap"
                     ? arguments.subspan(first, std::min<std::size_t>(1, arguments.size() - first))
                     : arguments.subspan(first));
  } else if (listHas(u"ssh slogin mosh", name)) {
    const CommandOptions options(arguments, {u"bcDEeFIiJLlmOopQRSWw", u"", true});
    for (const Word& word : arguments) {
      if (word.text.contains(u"ProxyCommand", Qt::CaseInsensitive) ||
          word.text.contains(u"LocalCommand", Qt::CaseInsensitive)) {
        findings_.add(u"Runs a program through an option."_s, word.span);
      }
    }
    // It runs in folders of another machine.
    const auto folder = std::exchange(folder_, std::nullopt);
    if (options.firstOperand() + 1 < arguments.size())
      reviewJoined(arguments.subspan(options.firstOperand() + 1));
    folder_ = folder;
  } else if (listHas(u"su script runuser sg emulate flock", name)) {
    for (std::size_t i = 0; i + 1 < arguments.size(); ++i) {
      if (arguments[i].text == u"-c" || arguments[i].text == u"--command")
        return reviewNested(arguments[i + 1]);
    }
  }
}

void CommandReview::reviewShell(const Invocation& invocation) {
  const ShellCall call = shellCall(invocation.arguments);
  if (call.onlyInforms) return;
  if (call.text != nullptr) return reviewNested(*call.text);
  if (call.file == nullptr) return reviewShellInput(invocation);
  if (call.file->has(UnitKind::output)) {
    findings_.add(u"Runs text that is not shown here."_s, call.file->span);
  } else {
    findings_.add(u"Runs a script that is not checked."_s, call.file->span);
  }
}

void CommandReview::reviewShellInput(const Invocation& invocation) {
  using Kind = Redirection::Kind;
  const shell::Command& command = *invocation.command;
  for (auto it = command.redirections.rbegin(); it != command.redirections.rend(); ++it) {
    if (it->kind == Kind::hereString || it->kind == Kind::hereDocument) return reviewNested(it->target);
    if (it->kind == Kind::input && !it->target.has(UnitKind::output)) {
      return findings_.add(u"Runs a script that is not checked."_s, it->target.span);
    }
  }
  if (const auto text = pipedText(command)) return reviewNested(*text);
  findings_.add(u"Runs text that is not shown here."_s, invocation.word.span);
}

std::optional<Word> CommandReview::pipedText(const shell::Command& command) const {
  if (command.pipedFrom < 0) return std::nullopt;
  const std::vector<Word>& words = script_->commands[std::size_t(command.pipedFrom)].words;
  if (words.size() < 2 || !listHas(u"echo print printf", words.front().text)) return std::nullopt;
  const auto first = std::find_if(words.begin() + 1, words.end(),
                                  [](const Word& word) { return !word.text.startsWith(u'-'); });
  Word text = joined(std::span(words).subspan(std::size_t(first - words.begin())));
  // The command that prints it decodes escapes.
  if (text.text.contains(u'\\') || text.text.contains(u'%')) return std::nullopt;
  return text;
}

void CommandReview::reviewFind(const Invocation& invocation) {
  const bool isFind = invocation.name == u"find" || invocation.name == u"gfind";
  const std::span<const Word> arguments = invocation.arguments;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const QString& text = arguments[i].text;
    if (isFind && listHas(u"-fprint -fprint0 -fprintf -fls", text) && i + 1 < arguments.size()) {
      noteReplaced(arguments[i + 1]);
    }
    const bool runs =
        isFind ? listHas(u"-exec -execdir -ok -okdir", text) : listHas(u"-x -X --exec --exec-batch", text);
    if (!runs) continue;
    const std::size_t first = i + 1;
    for (i = first; i < arguments.size() && arguments[i].text != u";"; ++i) {
      if (isFind && arguments[i].text == u"+" && i > first && arguments[i - 1].text == u"{}") break;
    }
    if (depth_ >= deepestNesting)
      return findings_.add(u"Is nested too deeply to be read."_s, arguments[first - 1].span);
    ++depth_;
    reviewWords(arguments.subspan(first, i - first), *invocation.command);
    --depth_;
  }
}

}  // namespace lumeno
