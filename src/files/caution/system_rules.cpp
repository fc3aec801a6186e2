#include <algorithm>

#include "files/caution/command_review.h"

namespace lumeno {

using namespace Qt::StringLiterals;
using command_words::Trait;
using shell::Word;

namespace {

bool firstArgumentIs(const Invocation& invocation, QStringView words) {
  return !invocation.arguments.empty() && listHas(words, invocation.arguments.front().text);
}

bool endsPrograms(const Invocation& invocation) {
  if (!(invocation.traits & Trait::endsPrograms)) return false;
  if (invocation.name == u"fuser") return CommandOptions(invocation.arguments, {}).has(u'k', u"kill");
  return !firstArgumentIs(invocation, u"-0 -l -L --list");
}

bool staysRunning(const Invocation& invocation) {
  if (!(invocation.traits & Trait::staysRunning)) return false;
  if (invocation.name != u"systemctl" && invocation.name != u"launchctl") return true;
  return std::ranges::any_of(invocation.arguments, [](const Word& word) {
    return listHas(u"start restart enable load bootstrap kickstart submit", word.text);
  });
}

/// The first word that is no option.
QString subcommand(const Invocation& invocation) {
  const auto word = std::ranges::find_if(
      invocation.arguments, [](const Word& candidate) { return !candidate.text.startsWith(u'-'); });
  return word == invocation.arguments.end() ? QString() : word->text;
}

bool connects(const Invocation& invocation) {
  if (invocation.traits & Trait::connects) return true;
  if (invocation.name == u"rsync") {
    return std::ranges::any_of(invocation.arguments, [](const Word& word) {
      const qsizetype colon = word.text.indexOf(u':');
      const qsizetype slash = word.text.indexOf(u'/');
      return colon > 0 && !word.text.startsWith(u'-') && (slash < 0 || colon < slash);
    });
  }
  if (invocation.name.startsWith(u"python") && invocation.arguments.size() > 1) {
    return invocation.arguments[0].text == u"-m" &&
           listHas(u"pip ensurepip http.server", invocation.arguments[1].text);
  }
  if (invocation.name == u"git") return false;  // its own options come first; see git_rules.cpp
  const QStringView connecting = command_words::connectingSubcommands(invocation.name);
  if (connecting.isEmpty()) return false;
  return connecting == u"*" || listHas(connecting, subcommand(invocation)) ||
         (invocation.name == u"pacman" && firstArgumentIs(invocation, connecting)) ||
         (invocation.name == u"yarn" && invocation.arguments.empty());
}

}  // namespace

void CommandReview::noteSystem(const Invocation& invocation) {
  const shell::Span span = invocation.word.span;
  if (invocation.traits & Trait::raisesRights) findings_.add(u"Asks for administrator rights."_s, span);
  if (connects(invocation)) findings_.add(u"Connects to the network."_s, span);
  if (endsPrograms(invocation)) findings_.add(u"Ends running programs."_s, span);
  if (staysRunning(invocation)) findings_.add(u"Keeps running in the background."_s, span);
  const QString& name = invocation.name;
  if (name == u"alias" || name == u"hash") {
    const bool defines =
        std::ranges::any_of(invocation.arguments, [](const Word& word) { return word.text.contains(u'='); });
    if (defines) findings_.add(u"Gives commands another meaning."_s, span);
  }
  if (listHas(u"export typeset declare local readonly integer float", name)) {
    for (const Word& word : invocation.arguments) noteAssignment(word);
  }
  if (listHas(u"chmod chown chgrp setfacl chattr", name)) {
    if (CommandOptions(invocation.arguments, {}).has(u'R', u"recursive")) {
      findings_.add(name == u"chown" || name == u"chgrp"
                        ? u"Changes the owner of a folder and everything in it."_s
                        : u"Changes the permissions of a folder and everything in it."_s,
                    span);
    }
  }
}

}  // namespace lumeno
