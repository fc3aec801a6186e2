#include "ai/ollama_service.h"

#include <algorithm>

#include "ai/http_exchange.h"
#include "ai/ollama_records.h"
#include "base/text.h"

namespace lumeno {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto probeTimeout = 1500ms;
constexpr auto modelListTimeout = 2000ms;
constexpr auto generationTimeout = 30s;

std::optional<AIFailure> failure(const HttpOutcome& outcome) {
  switch (outcome.kind) {
    case HttpOutcome::Kind::complete:
      return std::nullopt;
    case HttpOutcome::Kind::refused:
      return AIFailure::of(AIServiceError::unavailable);
    case HttpOutcome::Kind::failed:
      return AIFailure{std::nullopt, outcome.errorText};
  }
  Q_UNREACHABLE();
}

std::variant<QString, AIFailure> wholeAnswer(const HttpOutcome& outcome) {
  if (const auto failed = failure(outcome)) return *failed;
  const auto answer = ollama::parseGenerateResponse(outcome.body);
  if (!answer) return AIFailure{std::nullopt, u"The model server's answer could not be read."_s};
  const QString trimmed = text::trimmed(answer->response).toString();
  if (trimmed.isEmpty()) return AIFailure::of(AIServiceError::empty);
  return trimmed;
}

QStringList sortedModelNames(const HttpOutcome& outcome) {
  QStringList names;
  if (!failure(outcome)) names = ollama::parseTagsResponse(outcome.body).value_or(QStringList());
  names.sort();
  return names;
}

/// The pieces received so far, joined.
class GrowingAnswer {
 public:
  void append(const QString& piece) {
    // The blanks an answer begins with are never delivered; dropping them here saves moving the rest each
    // time.
    const auto start =
        text_.isEmpty() ? std::find_if_not(piece.begin(), piece.end(), isTrimmable) : piece.begin();
    text_.append(start, piece.end() - start);
  }
  /// Shares the text where nothing is to be cut off.
  [[nodiscard]] QString trimmed() const {
    return text_.isEmpty() || !isTrimmable(text_.back()) ? text_ : text::trimmed(text_).toString();
  }

 private:
  static bool isTrimmable(QChar c) { return text::isTrimmable(c.unicode()); }
  QString text_;
};

}  // namespace

Job OllamaService::isAvailable(std::function<void(bool)> done) {
  return startHttpExchange({tagsEndpoint, std::nullopt, probeTimeout, HttpRequest::Body::unread}, {},
                           [done](const HttpOutcome& outcome) { done(!failure(outcome)); });
}

Job OllamaService::listModels(std::function<void(const QStringList&)> done) const {
  return startHttpExchange({tagsEndpoint, std::nullopt, modelListTimeout, HttpRequest::Body::whole}, {},
                           [done](const HttpOutcome& outcome) { done(sortedModelNames(outcome)); });
}

Job OllamaService::complete(const QString& prompt,
                            std::function<void(std::variant<QString, AIFailure>)> done) {
  const QByteArray request = ollama::generateRequest(model, prompt, ollama::Delivery::whole);
  return startHttpExchange({endpoint, request, generationTimeout, HttpRequest::Body::whole}, {},
                           [done](const HttpOutcome& outcome) { done(wholeAnswer(outcome)); });
}

Job OllamaService::stream(const QString& prompt, std::function<void(const QString&)> onElement,
                          std::function<void(std::optional<AIFailure>)> onEnd) {
  const QByteArray request = ollama::generateRequest(model, prompt, ollama::Delivery::streamed);
  const auto onLine = [onElement, answer = GrowingAnswer()](const QByteArray& line) mutable {
    const auto piece = ollama::parseGenerateResponse(line);
    if (!piece) return true;  // a partial or foreign line
    answer.append(piece->response);
    onElement(answer.trimmed());
    return !piece->done;
  };
  return startHttpExchange({endpoint, request, generationTimeout, HttpRequest::Body::lines}, onLine,
                           [onEnd](const HttpOutcome& outcome) { onEnd(failure(outcome)); });
}

}  // namespace lumeno
