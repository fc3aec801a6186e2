#include "files/caution/command_review.h"

namespace lumeno {

using namespace Qt::StringLiterals;
using command_words::Trait;

namespace {

bool deletesByOption(const Invocation& invocation) {
  const QString& name = invocation.name;
  const auto& arguments = invocation.arguments;
  if (name == u"find" || name == u"gfind") return hasArgumentBeginning(arguments, u"-delete");
  if (name == u"rsync") {
    return hasArgumentBeginning(arguments, u"--del") || hasArgumentBeginning(arguments, u"--remove-s");
  }
  if (name == u"zip") return CommandOptions(arguments, {}).has(u'm', u"move");
  if (name == u"tar" || name == u"gtar" || name == u"bsdtar") {
    return hasArgumentBeginning(arguments, u"--remove-f");
  }
  if (name == u"7z" || name == u"7za" || name == u"7zz") return hasArgumentBeginning(arguments, u"-sdel");
  if (name == u"gio") return !arguments.empty() && arguments.front().text == u"remove";
  if (name == u"mv") return !arguments.empty() && arguments.back().text == u"/dev/null";
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
