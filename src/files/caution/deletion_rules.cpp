#include <algorithm>

#include "files/caution/command_review.h"

namespace lumeno {

using namespace Qt::StringLiterals;
using command_words::Trait;
using shell::Word;

namespace {

bool hasArgument(const Invocation& invocation, QStringView beginning) {
  return std::ranges::any_of(invocation.arguments,
                             [&](const Word& word) { return word.text.startsWith(beginning); });
}

bool deletesByOption(const Invocation& invocation) {
  const QString& name = invocation.name;
  if (name == u"find" || name == u"gfind") return hasArgument(invocation, u"-delete");
  if (name == u"rsync") {
    return hasArgument(invocation, u"--del") || hasArgument(invocation, u"--remove-s");
  }
  if (name == u"zip") return CommandOptions(invocation.arguments, {}).has(u'm', u"move");
  if (name == u"tar" || name == u"gtar" || name == u"bsdtar") return hasArgument(invocation, u"--remove-f");
  if (name == u"7z" || name == u"7za" || name == u"7zz") return hasArgument(invocation, u"-sdel");
  if (name == u"gio") return !invocation.arguments.empty() && invocation.arguments.front().text == u"remove";
  if (name == u"mv") return !invocation.arguments.empty() && invocation.arguments.back().text == u"/dev/null";
  return false;
}

}  // namespace

void CommandReview::noteDeletion(const Invocation& invocation) {
  const shell::Span span = invocation.word.span;
  if (invocation.name == u"rm" || invocation.name == u"zf_rm" || invocation.name == u"rimraf") {
    const CommandOptions options(invocation.arguments, {});
    if (invocation.name == u"rimraf" || options.has(u'r', u"recursive") || options.has(u'R')) {
      return findings_.add(u"Deletes a folder and everything in it."_s, span);
    }
  }
  if ((invocation.traits & Trait::deletesFiles) || deletesByOption(invocation)) {
    findings_.add(u"Deletes files."_s, span);
  }
}

}  // namespace lumeno
