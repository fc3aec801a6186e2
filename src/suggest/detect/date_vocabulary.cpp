#include "suggest/detect/date_vocabulary.h"

#include <algorithm>

namespace lumeno::detect {

namespace {

constexpr std::size_t slotCount = 8192;  // a power of two, several times the number of entries

std::uint32_t hashOf(std::u16string_view text) {
  WordHash hash;
  for (const char16_t c : text) hash.add(c);
  return hash.value();
}

}  // namespace

const VocabularyEntry::Meaning& VocabularyEntry::meaning(int language, DateRole role) const {
  const auto& list = meanings[static_cast<std::size_t>(language)];
  return *std::find_if(list.begin(), list.end(), [&](const Meaning& m) { return m.role == role; });
}

const Vocabulary& Vocabulary::instance() {
  static const Vocabulary vocabulary;
  return vocabulary;
}

Vocabulary::Vocabulary() : slots_(slotCount) {
  const auto languages = dateLanguages();
  for (std::size_t language = 0; language < languages.size(); ++language) {
    for (const DateWord& word : languages[language]->words) {
      const std::u16string_view text = word.text;
      for (std::size_t blank = text.find(u' '); blank != text.npos; blank = text.find(u' ', blank + 1)) {
        entryFor(text.substr(0, blank)).beginsPhrase = true;
      }
      VocabularyEntry& entry = entryFor(text);
      const std::uint64_t bit = roleMask(word.role);
      if (entry.roles[language] & bit) continue;
      entry.roles[language] |= bit;
      entry.allRoles |= bit;
      entry.languages |= 1U << language;
      entry.meanings[language].push_back({word.role, word.value, word.trust});
    }
  }
}

VocabularyEntry& Vocabulary::entryFor(std::u16string_view text) {
  const std::uint32_t hash = hashOf(text);
  std::size_t slot = hash % slotCount;
  for (; slots_[slot].entry >= 0; slot = (slot + 1) % slotCount) {
    VocabularyEntry& entry = entries_[static_cast<std::size_t>(slots_[slot].entry)];
    if (slots_[slot].hash == hash && entry.text == text) return entry;
  }
  slots_[slot] = {hash, static_cast<std::int32_t>(entries_.size())};
  VocabularyEntry& entry = entries_.emplace_back();
  entry.text = text;
  return entry;
}

const VocabularyEntry* Vocabulary::find(std::uint32_t hash, const char16_t* text, qsizetype length) const {
  for (std::size_t slot = hash % slotCount; slots_[slot].entry >= 0; slot = (slot + 1) % slotCount) {
    if (slots_[slot].hash != hash) continue;
    const VocabularyEntry& entry = entries_[static_cast<std::size_t>(slots_[slot].entry)];
    if (entry.text == std::u16string_view(text, static_cast<std::size_t>(length))) return &entry;
  }
  return nullptr;
}

}  // namespace lumeno::detect
