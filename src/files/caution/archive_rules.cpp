#include <algorithm>

#include "files/caution/command_review.h"

namespace lumeno {

using namespace Qt::StringLiterals;
using shell::Word;

namespace {

/// What a call of tar is to do: `xzf a.tgz`, `-xzf a.tgz`, `-x -f a.tgz`, `--extract --file=a.tgz`.
struct TarCall {
  bool creates = false;
  bool extracts = false;
  bool keeps = false;  ///< what is there already
  std::optional<Word> archive;
  std::optional<Word> folder;
};

constexpr OptionForms tarForms{u"fCbTXgIFHKLNV", u"file directory files-from exclude use-compress-program"};

TarCall tarCall(std::span<const Word> arguments) {
  const CommandOptions options(arguments, tarForms);
  TarCall call;
  call.creates = options.has(u'c', u"create");
  call.extracts = options.has(u'x', u"extract") || options.hasLong(u"get");
  call.keeps = options.has(u'k', u"keep-old-files") || options.hasLong(u"skip-old-files") ||
               options.has(u'O', u"to-stdout") || options.hasLong(u"keep-newer-files");
  call.archive = options.value(u'f', u"file");
  call.folder = options.value(u'C', u"directory");
  if (!arguments.empty() && !arguments.front().text.startsWith(u'-')) {
    const QStringView letters = arguments.front().text;
    call.creates |= letters.contains(u'c');
    call.extracts |= letters.contains(u'x');
    call.keeps |= letters.contains(u'k') || letters.contains(u'O');
    // The values follow in the order of the letters.
    std::size_t value = 1;
    for (const QChar letter : letters.first(std::min<qsizetype>(letters.size(), 32))) {
      if (!tarForms.letters.contains(letter) || value >= arguments.size()) continue;
      if (letter == u'f') call.archive = arguments[value];
      if (letter == u'C') call.folder = arguments[value];
      ++value;
    }
  }
  return call;
}

bool isCompressor(QStringView program) {
  return listHas(u"gzip pigz bzip2 pbzip2 lbzip2 xz pixz lzip plzip zstd zstdmt lz4 brotli compress lzma",
                 program);
}

}  // namespace

void CommandReview::noteArchives(const Invocation& invocation) {
  const QString& name = invocation.name;
  const std::span<const Word> arguments = invocation.arguments;
  const bool isTar = listHas(u"tar gtar bsdtar", name);
  bool mayReplace = false;
  std::optional<Word> folder;
  if (isTar) {
    const TarCall call = tarCall(arguments);
    if (call.creates && call.archive) noteReplaced(*call.archive);
    mayReplace = call.extracts && !call.keeps;
    folder = call.folder;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      const Word& word = arguments[i];
      const qsizetype equals = word.text.indexOf(u'=');
      const bool runs = word.text.startsWith(u"--checkpoint-a") || word.text.startsWith(u"--to-c") ||
                        word.text.startsWith(u"--info-s") || word.text.startsWith(u"--new-v") ||
                        word.text.startsWith(u"--rsh") || word.text == u"-F";
      const bool compresses = word.text == u"-I" || word.text.startsWith(u"--use-c");
      if (!runs && !compresses) continue;
      const Word program = equals >= 0                ? word.sliced(equals + 1)
                           : i + 1 < arguments.size() ? arguments[i + 1]
                                                      : Word();
      const QStringView text = program.text;
      const bool harmless =
          word.text.startsWith(u"--checkpoint-a") && text != u"exec" && !text.startsWith(u"exec=");
      if (harmless || (compresses && isCompressor(text.first(std::max<qsizetype>(
                                         0, text.indexOf(u' ') < 0 ? text.size() : text.indexOf(u' ')))))) {
        continue;
      }
      findings_.add(u"Runs a program through an option."_s, word.span);
      if (!program.text.isEmpty()) reviewNested(text.startsWith(u"exec=") ? program.sliced(5) : program);
    }
  } else if (name == u"unzip") {
    const CommandOptions options(arguments, {u"dx", u""});
    mayReplace = options.has(u'o');
    folder = options.value(u'd');
  } else if (listHas(u"7z 7za 7zz 7zr", name)) {
    mayReplace = false;
    for (const Word& word : arguments) {
      if (word.text == u"-y" || word.text == u"-aoa") mayReplace = true;
      if (word.text.startsWith(u"-o") && word.text.size() > 2) folder = word.sliced(2);
    }
    mayReplace = mayReplace && !arguments.empty() && listHas(u"x e", arguments.front().text);
  } else if (name == u"unrar" || name == u"cpio") {
    mayReplace = std::ranges::any_of(arguments, [](const Word& word) {
      return word.text == u"-o+" || word.text == u"-y" || word.text == u"--unconditional" ||
             (word.text.startsWith(u'-') && word.text.contains(u'u'));
    });
  }
  if (!mayReplace) return;
  // Nothing can be in the way in a folder that is yet to be made.
  if (folder && folder->isLiteral()) {
    const auto place = resolved(*folder);
    if (place && !exists(*place)) return;
  }
  findings_.add(u"May replace files of the same names."_s, invocation.word.span);
}

}  // namespace lumeno
