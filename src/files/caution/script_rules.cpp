#include <algorithm>

#include "files/caution/command_review.h"
#include "files/caution/sed_script.h"

namespace lumeno {

using namespace Qt::StringLiterals;
using command_words::Trait;
using shell::UnitKind;
using shell::Word;

namespace {

bool isSed(const QString& name) {
  return name == u"sed" || name == u"gsed";
}
bool isAwk(const QString& name) {
  return name.endsWith(u"awk");
}

/// The code in a glob qualifier, `*(e:'code':)` or `*(+function)`: whether there is any.
bool runsCodeForFiles(const Word& word) {
  const qsizetype size = word.text.size();
  if (size < 4 || !word.isPlain(size - 1, u')')) return false;
  const qsizetype open = word.text.lastIndexOf(u'(');
  if (open < 0 || !word.isPlain(open, u'(')) return false;
  QStringView qualifiers = QStringView(word.text).sliced(open + 1, size - open - 2);
  if (qualifiers.startsWith(u"#q")) qualifiers = qualifiers.sliced(2);
  for (qsizetype i = 0; i + 1 < qualifiers.size(); ++i) {
    const QChar c = qualifiers[i];
    if (c == u'|') return false;  // alternatives, no qualifiers
    const QChar next = qualifiers[i + 1];
    const bool first =
        i == 0 || !qualifiers[i - 1].isLetter() || qualifiers[i - 1] == u'o' || qualifiers[i - 1] == u'O';
    if (c == u'e' && !next.isLetterOrNumber() && next != u'.') return true;
    if (c == u'+' && first && (next.isLetter() || next == u'_')) return true;
  }
  return false;
}

}  // namespace

void CommandReview::noteScripts(const Invocation& invocation) {
  const QString& name = invocation.name;
  const shell::Span span = invocation.word.span;
  const QString unchecked = u"Runs a script that is not checked."_s;
  for (const Word& word : invocation.arguments) {
    if (runsCodeForFiles(word)) findings_.add(unchecked, word.span);
  }
  if (invocation.traits & Trait::runsScripts) {
    const bool onlyInforms =
        !invocation.arguments.empty() && std::ranges::all_of(invocation.arguments, [](const Word& word) {
          return listHas(u"--version -v -V --help -h version", word.text);
        });
    if (!onlyInforms) findings_.add(unchecked, span);
  }
  if (isSed(name) || isAwk(name)) {
    const CommandOptions options(invocation.arguments, isSed(name)
                                                           ? OptionForms{u"efl", u"expression file"}
                                                           : OptionForms{u"fFveEil", u"file source", true});
    const std::optional<Word> given =
        isSed(name) ? options.value(u'e', u"expression") : options.value(u'e', u"source");
    const Word* text = given ? &*given : options.operands().empty() ? nullptr : options.operands().front();
    const bool fromFile =
        options.has(u'f', u"file") || (isAwk(name) && (options.has(u'i') || options.has(u'l')));
    if (fromFile) {
      findings_.add(unchecked, span);
    } else if (text != nullptr) {
      const bool reachesOut =
          isSed(name) ? sedScriptReachesOut(text->text) : awkProgramReachesOut(text->text);
      if (reachesOut || text->has(UnitKind::output)) findings_.add(unchecked, text->span);
    }
  }
  if (name == u"split" || name == u"gsplit") {
    const CommandOptions options(invocation.arguments, {u"abCln", u"filter"});
    if (const auto filter = options.value(QChar(), u"filter")) reviewNested(*filter);
  }
  if (name == u"sort" || name == u"rsync" || name == u"zip") {
    for (std::size_t i = 0; i < invocation.arguments.size(); ++i) {
      const Word& word = invocation.arguments[i];
      const bool isRemoteShell = name == u"rsync" && (word.text == u"-e" || word.text.startsWith(u"--rsh")) &&
                                 i + 1 < invocation.arguments.size() &&
                                 !invocation.arguments[i + 1].text.startsWith(u"ssh") &&
                                 !word.text.contains(u"=ssh");
      if (isRemoteShell || word.text.startsWith(u"--compress-p") || word.text.startsWith(u"--rsync-path") ||
          (name == u"zip" && (word.text == u"-TT" || word.text.startsWith(u"--unzip-c")))) {
        findings_.add(u"Runs a program through an option."_s, word.span);
      }
    }
  }
}

}  // namespace lumeno
