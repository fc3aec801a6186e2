#include "files/caution/caution.h"

#include "files/caution/command_review.h"
#include "files/caution/findings.h"
#include "files/caution/unseen_characters.h"

namespace lumeno {

std::vector<Caution> cautions(const QString& command, const CautionSurroundings& surroundings) {
  Findings findings;
  if (const auto unseen = unseenCharacters(command)) {
    findings.add(QStringLiteral("Contains characters that cannot be seen."), *unseen);
  }
  CommandReview(surroundings, command.size(), findings).review(command);
  return findings.take();
}

}  // namespace lumeno
