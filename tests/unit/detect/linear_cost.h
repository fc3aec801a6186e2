#pragma once

#include <QString>
#include <vector>

#include "suggest/detect/step_counter.h"

/// Texts that make careless scanners quadratic, and a comparison of the steps taken for a text and for eight
/// of it.
namespace lumeno::cost {

inline std::vector<QString> hostilePieces() {
  std::vector<QString> pieces;
  for (const char16_t* piece : {u"a",
                                u"1",
                                u"1-",
                                u"-",
                                u"(",
                                u")",
                                u"([{",
                                u" ",
                                u"\n",
                                u" \n",
                                u"<a",
                                u"a.",
                                u".",
                                u"@",
                                u"a@",
                                u"a@b.",
                                u"://",
                                u"http://",
                                u"http://a",
                                u"at x(",
                                u"2026-05-01 ",
                                u"+1 (555) 010-7788 ",
                                u"212-736-5000 ",
                                u"+",
                                u"12 ",
                                u"1.",
                                u"(1)",
                                u"(12) 3",
                                u"https://example.com/a ",
                                u"www.",
                                u"example.com,",
                                u"a@example.com ",
                                u"mailto:",
                                u"mailto:a@b.com,",
                                u"\U0001F600",
                                u"e\u0301",
                                u"\u0301",
                                u"\u200D",
                                u"12 Main St, ",
                                u"12 A ",
                                u"12345 A ",
                                u"Hauptstraße 5, ",
                                u"Straße ",
                                u"12 rue ",
                                u"SW1A 2AA, ",
                                u"One ",
                                u"Box 1 ",
                                u"1, ",
                                u"a'",
                                u"The quick brown fox jumps over the lazy dog. ",
                                u"日本",
                                u"日a",
                                u"user.name ",
                                u"main.rs "}) {
    pieces.push_back(QString::fromUtf16(piece));
  }
  return pieces;
}

inline QString repeated(const QString& piece, qsizetype length) {
  return piece.repeated(length / piece.size() + 1).left(length);
}

/// Steps per character for `length` characters of `piece`.
template <typename Detect>
double stepsPerCharacter(const QString& piece, qsizetype length, Detect detect) {
  const QString text = repeated(piece, length);
  const auto before = detect::stepsTaken();
  detect(text);
  return double(detect::stepsTaken() - before) / double(length);
}

}  // namespace lumeno::cost
