#pragma once

#include <QStringView>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "suggest/detect/date_language.h"

namespace lumeno::detect {

/// A set of roles as bits.
template <typename... Roles>
[[nodiscard]] constexpr std::uint64_t roleMask(Roles... roles) {
  return ((std::uint64_t{1} << static_cast<unsigned>(roles)) | ...);
}

/// A word or phrase with its meanings in every language that knows it.
struct VocabularyEntry {
  struct Meaning {
    DateRole role;
    std::int16_t value;
    DateWordTrust trust;
  };

  std::u16string text;
  bool beginsPhrase = false;                             ///< a longer phrase starts with these words
  std::uint64_t allRoles = 0;                            ///< in any language
  std::array<std::uint64_t, dateLanguageCount> roles{};  ///< one bit for each DateRole
  std::array<std::vector<Meaning>, dateLanguageCount> meanings;
  unsigned languages = 0;  ///< bit n: language n knows it

  [[nodiscard]] bool has(int language, DateRole role) const {
    return (roles[static_cast<std::size_t>(language)] >> static_cast<unsigned>(role)) & 1U;
  }
  /// The languages in which it has one of these roles.
  [[nodiscard]] unsigned languagesWith(std::uint64_t mask) const {
    unsigned found = 0;
    for (std::size_t language = 0; language < roles.size(); ++language) {
      if (roles[language] & mask) found |= 1U << language;
    }
    return found;
  }
  /// Requires `has(language, role)`.
  [[nodiscard]] const Meaning& meaning(int language, DateRole role) const;
};

/// The running hash of lower-case words, so that words are hashed while they are read.
class WordHash {
 public:
  void add(char16_t c) { value_ = (value_ ^ c) * 0x01000193U; }
  [[nodiscard]] std::uint32_t value() const { return value_ ^ (value_ >> 15U); }

 private:
  std::uint32_t value_ = 0x811C9DC5U;
};

/// The words of all languages, built once.
class Vocabulary {
 public:
  static constexpr qsizetype maxEntryLength = 32;

  [[nodiscard]] static const Vocabulary& instance();

  /// The entry of this lower-case text, or null.
  [[nodiscard]] const VocabularyEntry* find(std::uint32_t hash, const char16_t* text, qsizetype length) const;

 private:
  Vocabulary();
  VocabularyEntry& entryFor(std::u16string_view text);

  std::vector<VocabularyEntry> entries_;
  struct Slot {
    std::uint32_t hash = 0;
    std::int32_t entry = -1;
  };
  std::vector<Slot> slots_;  ///< open addressing
};

}  // namespace lumeno::detect
