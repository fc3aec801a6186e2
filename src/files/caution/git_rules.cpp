#include <algorithm>

#include "files/caution/command_review.h"

namespace lumeno {

using namespace Qt::StringLiterals;
using shell::Word;

namespace {

bool hasArgument(std::span<const Word> arguments, QStringView words) {
  return std::ranges::any_of(arguments, [&](const Word& word) { return listHas(words, word.text); });
}

bool discardsChanges(QStringView subcommand, std::span<const Word> arguments) {
  if (subcommand == u"reset") return hasArgument(arguments, u"--hard --merge");
  if (subcommand == u"checkout" || subcommand == u"switch") {
    return hasArgument(arguments, u"-f --force -- . --discard-changes");
  }
  if (subcommand == u"restore") return !hasArgument(arguments, u"--staged -S");
  if (subcommand == u"stash") return hasArgument(arguments, u"drop clear");
  if (subcommand == u"branch") return hasArgument(arguments, u"-D");
  return false;
}

bool runsScripts(QStringView subcommand, std::span<const Word> arguments) {
  if (subcommand == u"filter-branch") return true;
  if (subcommand == u"rebase") {
    return std::ranges::any_of(arguments, [](const Word& word) {
      return word.text.startsWith(u"-x") || word.text.startsWith(u"--exec");
    });
  }
  return (subcommand == u"bisect" && hasArgument(arguments, u"run")) ||
         (subcommand == u"submodule" && hasArgument(arguments, u"foreach")) ||
         (subcommand == u"difftool" && hasArgument(arguments, u"-x --extcmd"));
}

}  // namespace

void CommandReview::noteGit(const Invocation& invocation) {
  if (invocation.name != u"git") return;
  const QString runsPrograms = u"Changes settings of Git that can run programs."_s;
  std::span<const Word> rest = invocation.arguments;
  while (!rest.empty() && rest.front().text.startsWith(u'-')) {
    const Word& word = rest.front();
    const bool takesValue =
        listHas(u"-c -C --git-dir --work-tree --namespace --config-env --exec-path", word.text);
    if (word.text == u"-c" && rest.size() > 1 && !command_words::isHarmlessGitSetting(rest[1].text)) {
      findings_.add(runsPrograms, rest[1].span);
    }
    if (word.text.startsWith(u"--config-env") || word.text.startsWith(u"--exec-path=")) {
      findings_.add(runsPrograms, word.span);
    }
    rest = rest.subspan(std::min<std::size_t>(takesValue ? 2 : 1, rest.size()));
  }
  if (rest.empty()) return;
  const Word& subcommand = rest.front();
  const QString& name = subcommand.text;
  rest = rest.subspan(1);
  if (listHas(command_words::connectingSubcommands(u"git"), name)) {
    const bool local = (name == u"remote" && !hasArgument(rest, u"update show prune")) ||
                       (name == u"submodule" && !hasArgument(rest, u"add update"));
    if (!local) findings_.add(u"Connects to the network."_s, subcommand.span);
  }
  if ((name == u"clean" && !hasArgument(rest, u"-n --dry-run")) ||
      (name == u"rm" && !hasArgument(rest, u"--cached"))) {
    findings_.add(u"Deletes files."_s, subcommand.span);
  }
  if (name == u"config") {
    const CommandOptions options(rest, {u"f", u"file blob type default"});
    const auto& operands = options.operands();
    if (operands.size() > 1 && !command_words::isHarmlessGitSetting(operands.front()->text)) {
      findings_.add(runsPrograms, operands.front()->span);
    }
  }
  if (discardsChanges(name, rest))
    findings_.add(u"Discards changes in the Git repository."_s, subcommand.span);
  if (runsScripts(name, rest)) findings_.add(u"Runs a script that is not checked."_s, subcommand.span);
}

}  // namespace lumeno
