#include "ai/ai_service.h"

namespace lumeno {

using namespace Qt::StringLiterals;

QString message(AIServiceError error) {
  switch (error) {
    case AIServiceError::unavailable:
      return u"This AI backend isn't available right now."_s;
    case AIServiceError::empty:
      return u"The model returned an empty response."_s;
  }
  Q_UNREACHABLE();
}

}  // namespace lumeno
