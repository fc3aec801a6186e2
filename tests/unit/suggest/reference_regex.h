#pragma once

#include <unicode/regex.h>

#include <QStringView>
#include <memory>

namespace lumeno::testing {

/// Plain ICU search for one expression: what the hand-written forms are compared with.
class ReferenceRegex {
 public:
  ReferenceRegex(QStringView source, uint32_t flags) {
    UErrorCode status = U_ZERO_ERROR;
    matcher_ = std::make_unique<icu::RegexMatcher>(alias(source), flags, status);
    if (U_FAILURE(status)) matcher_.reset();
  }

  [[nodiscard]] bool isValid() const { return matcher_ != nullptr; }

  [[nodiscard]] bool matches(QStringView text) {
    const icu::UnicodeString input = alias(text);
    matcher_->reset(input);
    return matcher_->find();
  }

 private:
  static icu::UnicodeString alias(QStringView text) {
    return {false, text.utf16(), static_cast<int32_t>(text.size())};
  }

  std::unique_ptr<icu::RegexMatcher> matcher_;
};

}  // namespace lumeno::testing
