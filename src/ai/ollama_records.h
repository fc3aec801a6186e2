#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

/// The JSON records of the Ollama server. A record that is not as expected reads as absent; members that are
/// not named here are ignored.
namespace lumeno::ollama {

enum class Delivery { whole, streamed };
[[nodiscard]] QByteArray generateRequest(const QString& model, const QString& prompt, Delivery delivery);

/// An answer, or one piece of a streamed one.
struct GenerateResponse {
  QString response;
  bool done = false;  ///< the last piece
};
[[nodiscard]] std::optional<GenerateResponse> parseGenerateResponse(const QByteArray& json);

/// The names of the installed models, as listed.
[[nodiscard]] std::optional<QStringList> parseTagsResponse(const QByteArray& json);

}  // namespace lumeno::ollama
