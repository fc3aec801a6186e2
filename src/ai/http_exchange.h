#pragma once

#include <QByteArray>
#include <QUrl>
#include <chrono>
#include <functional>
#include <optional>

#include "base/job.h"

namespace lumeno {

/// One HTTP request to a server on this machine.
struct HttpRequest {
  QUrl url;
  std::optional<QByteArray> jsonBody;  ///< POSTed when present, else the request is a GET
  /// The longest silence of the server that is borne, before the head as well as between two pieces of the
  /// body.
  std::chrono::milliseconds idleTimeout;
  enum class Body { unread, whole, lines };
  Body body;  ///< what to do with the body of the answer
};

/// How an exchange ended.
struct HttpOutcome {
  enum class Kind {
    complete,
    refused,  ///< an answer with a status other than 200
    failed,   ///< no answer, or a broken one
  };
  Kind kind = Kind::complete;
  QByteArray body = {};    ///< of a complete exchange, when it was wanted whole
  QString errorText = {};  ///< of a failed one, for the user
};

/// Each line of the body that is not blank, for `Body::lines`. Whether more is wanted: after false the
/// exchange is complete and the rest stays unread.
using HttpLineListener = std::function<bool(const QByteArray& line)>;

/// Starts an exchange over a connection of its own: plain HTTP/1.1, no proxy, no redirects. `onEnd` is called
/// exactly once, nothing before this returns. Destroying the job, also from inside a callback, stops both and
/// closes the connection, so that the server stops working too. Main thread.
[[nodiscard]] Job startHttpExchange(const HttpRequest& request, HttpLineListener onLine,
                                    std::function<void(const HttpOutcome& outcome)> onEnd);

}  // namespace lumeno
