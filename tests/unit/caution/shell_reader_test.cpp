#include <gtest/gtest.h>

#include <QByteArrayList>
#include <QFileInfo>
#include <QStringList>
#include <QTemporaryFile>
#include <cstdio>
#include <random>

#include "files/caution/shell_script.h"

namespace lumeno::shell {
namespace {

using namespace Qt::StringLiterals;

const ReadingContext context{u"/home/user"_s, u"/home/user/folder"_s, std::nullopt, 0};

/// The words of a script's commands, each command in brackets.
QStringList commandsOf(const QString& text) {
  QStringList commands;
  for (const Command& command : readScript(text, context).commands) {
    if (command.words.empty()) continue;
    QStringList words;
    for (const Word& word : command.words) {
      for (const Word& expanded : expandBraces(word))
        words += QString(expanded.text).replace(placeholder, u'$');
    }
    commands += words.join(u'|');
  }
  return commands;
}

TEST(ReadScript, FindsTheCommandsInsideEverySyntax) {
  struct Case {
    QString text;
    QStringList commands;
  };
  const std::vector<Case> cases{
      {u"a 1; b 2 && c || d | e & f"_s, {u"a|1"_s, u"b|2"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s}},
      {u"x=1 a b>c 2>&1 d <<< e f"_s, {u"a|b|d|f"_s}},
      {u"a $(b `c \"$(d)\"` e) f"_s, {u"d"_s, u"c|$"_s, u"b|$|e"_s, u"a|$|f"_s}},
      {u"a <(b c) =(d) >(e)"_s, {u"b|c"_s, u"d"_s, u"e"_s, u"a|$|$|$"_s}},
      {u"a ${x:-$(b)} \"${y/$(c)/'}\" $((1 + $(d))) $[2]"_s, {u"b"_s, u"c"_s, u"d"_s, u"a|$|$|$|$"_s}},
      {u"if a; then b; elif c; then d; else e; fi"_s, {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s}},
      {u"for f in *.x $(l); do a \"$f\"; done > o"_s, {u"l"_s, u"f|in|*.x|$"_s, u"a|$"_s}},
      {u"for f (p q) a $f"_s, {u"f|p|q"_s, u"a|$"_s}},
      {u"for ((i=0; i<3; i++)); do a; done"_s, {u"a"_s}},
      {u"while read -r l; do a; done < f"_s, {u"read|-r|l"_s, u"a"_s}},
      {u"case $x in (p|q*) a;; r) b ;; esac; c"_s, {u"$"_s, u"a"_s, u"b"_s, u"c"_s}},
      {u"f() { a; }; function g { b }; { c; d } && (e; (f))"_s,
       {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s}},
      {u"[[ -f x && $y == (p|q) ]] && a"_s, {u"-f|x|$|==|p|q"_s, u"a"_s}},
      {u"a # b; c\nd"_s, {u"a"_s, u"d"_s}},
      {u"a <<E\nb $(c) d\nE\ne"_s, {u"a"_s, u"c"_s, u"e"_s}},
      {u"a <<'E'\nb $(c) d\nE\ne"_s, {u"a"_s, u"e"_s}},
      {u"a *(e:'b c':) x(y z)w <1-9>.t"_s, {u"a|*(e:b c:)|x(y z)w|<1-9>.t"_s}},
      {u"{rm,-rf,x} {a..c}"_s, {u"rm|-rf|x|a|b|c"_s}},
      {u"repeat 3 a; ! b; time c; coproc d"_s, {u"a"_s, u"b"_s, u"c"_s, u"d"_s}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(commandsOf(c.text), c.commands) << qPrintable(c.text);
    EXPECT_FALSE(readScript(c.text, context).unreadable) << qPrintable(c.text);
  }
}

TEST(ReadScript, SaysWhereAShellWouldGiveUp) {
  for (const QStringView text :
       {u"a 'b", u"a \"b", u"a `b", u"a $(b", u"a ${b", u"(a", u"a)", u"{ a", u"a ; }", u"if a; then b",
        u"a; fi", u"done", u"case a in b) c", u"a >", u"a <(b", u"[[ a", u"a $'b", u"for f in x; do a"}) {
    EXPECT_TRUE(readScript(text, context).unreadable) << qPrintable(text.toString());
  }
  EXPECT_TRUE(readScript(u"$("_s.repeated(10000), context).tooDeep);
  EXPECT_TRUE(readScript(u"${x:-"_s.repeated(10000), context).tooDeep);
}

/// Words of every kind of quoting, put together at random; nothing in them is expanded from outside.
class RandomWords {
 public:
  explicit RandomWords(unsigned seed) : random_(seed) {}

  QString line() {
    QString text;
    const int words = 1 + pick(4);
    for (int i = 0; i < words; ++i) {
      text += QStringList{u" "_s, u"  "_s, u"\t"_s, u" \\\n "_s}[pick(4)];
      const int pieces = 1 + pick(4);
      text += plain(1);
      for (int piece = 0; piece < pieces; ++piece) text += this->piece();
    }
    return text;
  }

 private:
  int pick(int count) { return int(random_() % unsigned(count)); }

  QString from(const QStringList& pieces, int most) {
    QString text;
    for (int i = pick(most + 1); i > 0; --i) text += pieces[pick(int(pieces.size()))];
    return text;
  }

  QString plain(int least) {
    static const QStringList pieces{u"a"_s, u"b-"_s, u"7"_s, u"."_s, u"/"_s, u"x=y"_s, u"#"_s, u"!"_s, u"@"_s,
                                    u"%"_s, u"é"_s,  u"😀"_s, u"*"_s, u"?"_s, u":"_s,   u","_s, u"^"_s};
    return u"a"_s.repeated(least) + from(pieces, 3);
  }

  QString piece() {
    static const QStringList inQuotes{u"a"_s, u" "_s, u";"_s, u"|"_s, u"("_s, u"}"_s, u"{x,y}"_s,
                                      u"é"_s, u"#"_s, u"&"_s, u">"_s, u"~"_s, u"*"_s, u"\n"_s};
    static const QStringList escapes{u"\\n"_s,  u"\\x41"_s, u"\\101"_s,      u"\\u00e9"_s, u"\\U0001F600"_s,
                                     u"\\\\"_s, u"\\'"_s,   u"\\q"_s,        u"\\e"_s,     u"\\C-a"_s,
                                     u"\\x7"_s, u"b"_s,     u"\\xc3\\xa9"_s, u"\""_s,      u"\\t"_s};
    switch (pick(10)) {
      case 0:
        return u'\'' + from(inQuotes + QStringList{u"\\"_s, u"\""_s, u"$x"_s, u"`"_s}, 4) + u'\'';
      case 1:
        return u'"' +
               from(inQuotes +
                        QStringList{u"\\\\"_s, u"\\\""_s, u"\\$"_s, u"\\`"_s, u"'"_s, u"\\x"_s, u"\\\n"_s},
                    4) +
               u'"';
      case 2:
        return u"$'"_s + from(escapes, 4) + u'\'';
      case 3:
        return QStringList{u"\\ "_s, u"\\'"_s, u"\\a"_s, u"\\\\"_s, u"\\;"_s, u"\\$"_s, u"\\{"_s}[pick(7)];
      case 4:
        return u"{a,"_s + plain(0) + u",'x y'}"_s;
      case 5:
        return QStringList{u"{1..3}"_s, u"{c..a}"_s, u"{}"_s, u"{a}"_s, u"{x,{y,z}}"_s}[pick(5)];
      case 6:
        return u"(x y)"_s;
      case 7:
        return u"\\\n"_s;
      case 8:
        return u"a}b"_s;
      default:
        return plain(1);
    }
  }

  std::mt19937 random_;
};

QByteArray zshOutput(const QString& script) {
  QTemporaryFile file;
  if (!file.open()) return {};
  file.write(script.toUtf8());
  file.close();
  const QByteArray call = "LC_ALL=C.UTF-8 /bin/zsh -f " + file.fileName().toUtf8() + " 2>&1";
  std::FILE* pipe = popen(call.constData(), "r");
  if (pipe == nullptr) return {};
  QByteArray output;
  char buffer[4096];
  while (const std::size_t size = std::fread(buffer, 1, sizeof buffer, pipe))
    output.append(buffer, qsizetype(size));
  pclose(pipe);
  return output;
}

TEST(ReadScript, SplitsWordsAsZshDoes) {
  if (!QFileInfo(u"/bin/zsh"_s).isExecutable()) GTEST_SKIP() << "needs zsh";
  RandomWords words(20240229);
  QStringList lines;
  for (int i = 0; i < 3000; ++i) lines += words.line();
  lines += {u" 'it'\\''s' \"a\\\nb\" a\\\nb $'' '' a$ \"$\" x# [a] -- -r"_s,
            u" {01..03} {a\\,b} {a,\"b,c\"} x{,y} {,} a{b,c}{d,e}f {a,b"_s};
  QString script = u"setopt noglob\n"_s;
  for (const QString& line : lines) script += u"print -rN --"_s + line + u"\nprint -rn -- $'\\x1e'\n"_s;
  const QByteArrayList answers = zshOutput(script).split('\x1e');
  ASSERT_EQ(answers.size(), lines.size() + 1) << answers.value(answers.size() - 1).constData();
  qsizetype skipped = 0;  // more words than are looked at
  for (qsizetype i = 0; i < lines.size(); ++i) {
    const Script read = readScript(u"print"_s + lines[i], context);
    ASSERT_EQ(read.commands.size(), 1u) << qPrintable(lines[i]);
    QByteArray fields;
    bool overflows = false;
    for (std::size_t word = 1; word < read.commands[0].words.size(); ++word) {
      for (const Word& expanded : expandBraces(read.commands[0].words[word])) {
        fields += expanded.text.toUtf8() + '\0';
        overflows |= expanded.overflowing;
      }
    }
    if (overflows) {
      ++skipped;
      continue;
    }
    ASSERT_EQ(fields, answers[i]) << qPrintable(lines[i]);
  }
  EXPECT_LT(skipped, lines.size() / 20);
}

}  // namespace
}  // namespace lumeno::shell
