#pragma once

#include <QString>
#include <QStringView>
#include <cstdint>
#include <cstdlib>
#include <vector>

/// Turns fuzzer input into text and checks what every detector promises about its matches.
namespace lumeno::fuzz {

/// The bytes read as UTF-8, and once more as raw UTF-16 units (lone surrogates included).
inline std::vector<QString> texts(const std::uint8_t* data, size_t size) {
  const auto* bytes = reinterpret_cast<const char*>(data);
  return {QString::fromUtf8(bytes, qsizetype(size)),
          QString(reinterpret_cast<const QChar*>(QByteArray(bytes, qsizetype(size & ~size_t{1})).constData()),
                  qsizetype(size / 2))};
}

/// Stops the process, so that the fuzzer keeps the input.
inline void require(bool condition) {
  if (!condition) std::abort();
}

inline bool splitsSurrogatePair(QStringView text, qsizetype position) {
  return position > 0 && position < text.size() && text[position - 1].isHighSurrogate() &&
         text[position].isLowSurrogate();
}

/// Matches lie inside the text, are not empty, cut no pair of surrogates, and come in order without overlaps.
template <typename Match>
void requireSoundMatches(QStringView text, const std::vector<Match>& matches) {
  qsizetype end = 0;
  for (const Match& match : matches) {
    require(match.start >= end && match.length > 0 && match.start + match.length <= text.size());
    end = match.start + match.length;
    require(!splitsSurrogatePair(text, match.start) && !splitsSurrogatePair(text, end));
  }
}

}  // namespace lumeno::fuzz
