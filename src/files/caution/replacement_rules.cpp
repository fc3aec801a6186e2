#include <algorithm>

#include "files/caution/command_review.h"

namespace lumeno {

using namespace Qt::StringLiterals;
using command_words::Output;
using command_words::Trait;
using shell::Word;

namespace {

bool hasArgument(const Invocation& invocation, QStringView words) {
  return std::ranges::any_of(invocation.arguments,
                             [&](const Word& word) { return listHas(words, word.text); });
}

/// Whether the files named are changed where they are.
bool changesInPlace(const Invocation& invocation) {
  const QString& name = invocation.name;
  if (invocation.traits & Trait::editsInPlace) return true;
  if (name == u"sed" || name == u"gsed") {
    return CommandOptions(invocation.arguments, {u"efl", u"expression file"}).has(u'i', u"in-place");
  }
  if (name == u"perl" || name == u"ruby") {
    return CommandOptions(invocation.arguments, {u"eEMmIFCxDlr0", u"", true}).has(u'i');
  }
  if (name == u"sips") {
    const bool asksOnly = !hasArgument(invocation,
                                       u"-s --setProperty -r --rotate -f --flip -z -Z -c -p -d -e -E -m "
                                       u"--cropToHeightWidth --padToHeightWidth --matchTo") &&
                          !hasArgumentBeginning(invocation.arguments, u"--resample");
    return !asksOnly && !hasArgument(invocation, u"-o --out");
  }
  if (name == u"mogrify") return !hasArgument(invocation, u"-path -format");
  if (name == u"magick" && !invocation.arguments.empty() && invocation.arguments.front().text == u"mogrify") {
    return !hasArgument(invocation, u"-path -format");
  }
  if (name == u"exiftool") return hasArgumentBeginning(invocation.arguments, u"-overwrite_original");
  if (name == u"gofmt") return hasArgument(invocation, u"-w");
  if (name == u"prettier") return hasArgument(invocation, u"--write -w");
  if (name == u"clang-format") return hasArgument(invocation, u"-i");
  return name == u"patch" || name == u"black" || name == u"rustfmt";
}

QString lastPart(const QString& path) {
  QStringView rest = path;
  while (rest.size() > 1 && rest.endsWith(u'/')) rest.chop(1);
  return rest.sliced(rest.lastIndexOf(u'/') + 1).toString();
}

}  // namespace

void CommandReview::noteChanges(const Invocation& invocation) {
  if (changesInPlace(invocation)) findings_.add(u"Changes files in place."_s, invocation.word.span);
  if (invocation.name == u"ffmpeg" && hasArgument(invocation, u"-y"))
    noteReplaced(invocation.arguments.back());
}

void CommandReview::noteReplacedTargets(const Invocation& invocation) {
  const QString& name = invocation.name;
  if (!listHas(u"mv cp gmv gcp zf_mv ln zf_ln install rsync ditto", name)) return;
  const CommandOptions options(invocation.arguments,
                               name == u"rsync"
                                   ? OptionForms{u"efTBM", u"exclude include rsh filter files-from"}
                                   : OptionForms{u"tSmog", u"target-directory suffix mode owner group"});
  const bool isLink = name == u"ln" || name == u"zf_ln";
  const bool keeps = isLink             ? !options.has(u'f', u"force")
                     : name == u"rsync" ? options.hasLong(u"ignore-existing") || options.has(u'n', u"dry-run")
                                        : options.has(u'n', u"no-clobber");
  if (keeps || (name == u"install" && options.has(u'd', u"directory"))) return;

  std::vector<const Word*> sources = options.operands();
  std::optional<Word> target = name == u"rsync" ? std::nullopt : options.value(u't', u"target-directory");
  if (!target) {
    if (sources.size() < 2) return;
    target = *sources.back();
    sources.pop_back();
  }
  if (!target->isLiteral()) return;
  const auto place = resolved(*target);
  if (!place) return;
  if (!isFolder(*place)) return noteReplaced(*target);
  const bool goesDeep = name == u"cp" || name == u"gcp" || name == u"rsync" || name == u"ditto";
  for (const Word* source : sources) {
    if (!source->isLiteral() || source->text.isEmpty()) continue;
    const QString part = lastPart(source->text);
    const QString inside = *place == u"/" ? u"/"_s + part : *place + u'/' + part;
    const bool wholeContent = part == u"." || (name == u"rsync" && source->text.endsWith(u'/'));
    if (goesDeep && (wholeContent || isFolder(inside))) {
      findings_.add(u"May replace files of the same names."_s, target->span);
    } else {
      noteReplaced(inside, (target->text.endsWith(u'/') ? target->text : target->text + u'/') + part,
                   target->span);
    }
  }
}

void CommandReview::noteOutputs(const Invocation& invocation) {
  const QString& name = invocation.name;
  if (name == u"tee" || name == u"truncate" || name == u"sponge") {
    const CommandOptions options(invocation.arguments, {u"sr", u"size reference"});
    if (options.has(u'a', u"append")) return;
    for (const Word* operand : options.operands()) noteOverwritten(*operand);
  } else if (name == u"dd") {
    for (const Word& word : invocation.arguments) {
      if (word.text.startsWith(u"of=")) noteReplaced(word.sliced(3));
    }
  }
  const Output* output = command_words::output(name);
  if (output == nullptr) return;
  const CommandOptions options(invocation.arguments, output->options);
  if (const auto file = options.value(output->letter, output->longName)) noteReplaced(*file);
  if (output->lastOperand && options.operands().size() > 1) noteReplaced(*options.operands().back());
}

}  // namespace lumeno
