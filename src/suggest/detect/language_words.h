#pragma once

#include <QStringView>

namespace lumeno::detect {

/// What a single lower-case word tells about the language it stands in.
struct WordEvidence {
  bool english = false;
  bool shared = false;            ///< English, but as common elsewhere
  const char* foreign = nullptr;  ///< the code of another language of which the word is typical
};

[[nodiscard]] WordEvidence wordEvidence(QStringView lowerCaseWord);

}  // namespace lumeno::detect
