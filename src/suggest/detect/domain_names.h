#pragma once

#include <QStringView>
#include <array>

namespace lumeno::detect {

/// Answers from the list of public suffixes, with a small memory so that a repeated ending costs one lookup.
class PublicSuffixes {
 public:
  /// Whether `label` (without dots) is a top-level domain that is in general use.
  [[nodiscard]] bool isTopLevel(QStringView label);
  /// Whether the ASCII `domain` is itself a suffix under which others register (co.uk).
  [[nodiscard]] static bool isSuffix(QStringView domain);

 private:
  struct Entry {
    std::array<char16_t, 24> label{};
    unsigned char length = 0;
    bool topLevel = false;
  };
  std::array<Entry, 64> entries_{};
};

/// A stretch of a text that could be a domain name, with what stands around it.
struct DomainCandidate {
  QStringView text;
  qsizetype start = 0;
  qsizetype end = 0;
  bool hasPath = false;  ///< a path, query or fragment follows

  [[nodiscard]] QStringView name() const { return text.sliced(start, end - start); }
};

/// Whether `name` ends in a known top-level domain and its labels are well formed.
[[nodiscard]] bool hasTopLevelDomain(QStringView name, PublicSuffixes& suffixes);

/// Whether a host could be registered under this name: not a bare public suffix (co.uk), and encodable.
/// Expects that `hasTopLevelDomain` holds; costs more.
[[nodiscard]] bool isRegistrable(QStringView name);

/// Whether a domain written without scheme and "www." reads as a file name, a piece of code, an abbreviation
/// or a missing blank between two sentences rather than as a link. Expects that `hasTopLevelDomain` holds.
[[nodiscard]] bool readsAsSomethingElse(const DomainCandidate& candidate);

}  // namespace lumeno::detect
