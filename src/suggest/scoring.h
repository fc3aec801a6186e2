#pragma once

#include <QLatin1StringView>
#include <QString>

namespace lumeno {

/// Scores are kept away from certainty at both ends.
[[nodiscard]] inline double clampScore(double score) {
  if (score <= 0.05) score = 0.05;
  return score > 0.98 ? 0.98 : score;
}

/// "1 code cue", "3 code cues".
[[nodiscard]] inline QString countPhrase(qsizetype count, QLatin1StringView noun) {
  return QString::number(count) + u' ' + noun + (count == 1 ? QString() : QStringLiteral("s"));
}

}  // namespace lumeno
