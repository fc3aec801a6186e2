#include "files/planning/planning.h"

#include <algorithm>

#include "base/text.h"
#include "files/planning/block_rules.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

/// The character that `bytes` begin with; absent when they begin with none.
std::optional<QString> firstCharacter(QByteArrayView bytes) {
  constexpr qsizetype longest = 4;
  for (qsizetype length = 1; length <= std::min(longest, bytes.size()); ++length) {
    if (auto character = text::decodedUtf8(bytes.first(length))) return character;
  }
  return std::nullopt;
}

bool hasControls(const QString& text) {
  return std::ranges::any_of(text, [](QChar c) { return c.category() == QChar::Other_Control; });
}

QString escaped(char byte) {
  switch (byte) {
    case '\n':
      return u"\\n"_s;
    case '\r':
      return u"\\r"_s;
    case '\t':
      return u"\\t"_s;
    default:
      return u"\\x%1"_s.arg(static_cast<uchar>(byte), 2, 16, QChar(u'0'));
  }
}

/// The name as the shell's $'…', with all that is no visible character by the codes of its bytes.
QString ansiQuoted(QByteArrayView name) {
  QString quoted = u"$'"_s;
  while (!name.isEmpty()) {
    const auto character = firstCharacter(name);
    const QByteArrayView bytes = name.first(character ? character->toUtf8().size() : 1);
    if (!character || hasControls(*character)) {
      for (const char byte : bytes) quoted += escaped(byte);
    } else {
      if (*character == "'"_L1 || *character == "\\"_L1) quoted += u'\\';
      quoted += *character;
    }
    name = name.sliced(bytes.size());
  }
  return quoted + u'\'';
}

QString listedName(const QUrl& url) {
  const QByteArray name = itemName(url);
  const auto text = text::decodedUtf8(name);
  return text && !hasControls(*text) ? *text : ansiQuoted(name);
}

QString itemLines(const FileSelection& selection) {
  QStringList lines;
  for (const QUrl& url : selection.urls) lines.append("- "_L1 + listedName(url));
  return lines.join(u'\n');
}

constexpr QStringView fence = u"```";
constexpr QStringView closingFence = u"\n```";

/// What stands between the fence that `text` begins with and the next one.
QString fenced(QStringView text) {
  const qsizetype opening = text.indexOf(u'\n');
  if (opening < 0) return {};
  // The line feed stays, so that a fence on the very next line has one before it as well.
  QStringView rest = text.sliced(opening);
  const qsizetype closing = rest.indexOf(closingFence);
  if (closing >= 0) rest = rest.first(closing);
  return text::trimmed(rest).toString();
}

QStringView withoutPromptSigns(QStringView text) {
  for (const QStringView prefix : {u"$ ", u"% ", u"zsh ", u"shell\n"}) {
    if (text.startsWith(prefix)) text = text.sliced(prefix.size());
  }
  return text;
}

/// The first line that is not empty; all of a text that continues a line, or that has no such line.
QStringView firstLine(QStringView text) {
  if (text.contains(u"\\\n")) return text;
  qsizetype start = 0;
  while (start < text.size() && text[start] == u'\n') ++start;
  if (start == text.size()) return text;
  const qsizetype end = text.indexOf(u'\n', start);
  return text.sliced(start, (end < 0 ? text.size() : end) - start);
}

}  // namespace

QString planPrompt(const QString& instruction, const FileSelection& selection) {
  return "You are the command engine for a macOS file utility. Translate the user's request into a single "
         "shell command (zsh) that operates on the selected files. The command runs with the working "
         "directory set to:\n"_L1 +
         QString::fromUtf8(localPath(selection.parentDirectory())) +
         "\n\nSelected items (in that directory):\n"_L1 + itemLines(selection) +
         "\n\nRules:\n"
         "- Output ONLY the command. No explanation, no markdown, no backticks, no comments.\n"
         "- Use a single line. Chain steps with && if truly necessary.\n"
         "- Refer to the files by their names exactly as listed above, relative to the working directory.\n"
         "- Always quote filenames that contain spaces.\n"
         "- Prefer standard macOS tools: mv, cp, mkdir, zip, sips, mdls, pdftk-free is unavailable, use "
         "macOS-native tools where possible. ffmpeg/imagemagick may exist if installed.\n"
         "- Do NOT use sudo. Do NOT delete outside the working directory. Do NOT run destructive commands "
         "beyond what was asked.\n\n"
         "User request: "_L1 +
         instruction;
}

QString sanitizeCommand(const QString& output) {
  const QStringView trimmed = text::trimmed(output);
  const QString body = trimmed.startsWith(fence) ? fenced(trimmed) : trimmed.toString();
  return text::trimmed(firstLine(withoutPromptSigns(body))).toString();
}

std::optional<QString> screenCommand(const QString& command) {
  const QStringView trimmed = text::trimmed(command);
  for (size_t i = 0; i < blockRules().size(); ++i) {
    if (ruleMatches(i, trimmed)) {
      return "This command was blocked because it "_L1 + blockRules()[i].reason.toString() + u'.';
    }
  }
  return std::nullopt;
}

}  // namespace lumeno
