#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QTcpServer>
#include <QUrl>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace lumeno {

/// A stand-in for the local model server: a real HTTP server on 127.0.0.1 that answers from a script and can
/// go wrong on purpose. It runs in the event loop of its thread.
class ModelServer {
 public:
  struct Request {
    QByteArray method;
    QByteArray path;
    QMap<QByteArray, QByteArray> headers;  ///< names in lower case
    QByteArray body;
  };

  /// A scripted answer, and how it is sent.
  struct Reply {
    int status = 200;
    std::vector<QByteArray> parts;       ///< of the body; each is one chunk of the chunked transfer encoding
    std::optional<QByteArray> raw = {};  ///< sent instead of a head and a body
    int bytesPerWrite = 0;  ///< cuts everything into writes of this size, each a packet of its own
    std::chrono::milliseconds headDelay{0};
    std::chrono::milliseconds partDelay{0};  ///< before each part
    enum class Ending {
      proper,
      silence,  ///< the connection stays open, but nothing more comes
      drop,     ///< the connection is closed without the end of the body
    } ending = Ending::proper;
  };

  struct Exchange {
    Request request;
    bool ended = false;      ///< the reply was sent as scripted, or the client went
    bool cancelled = false;  ///< the client went first
    int writes = 0;          ///< of the reply, done so far
  };

  using Handler = std::function<Reply(const Request&)>;

  explicit ModelServer(Handler handler);
  ~ModelServer();

  /// Port 0 takes any free one. False when the port is taken.
  [[nodiscard]] bool listen(quint16 port = 0);
  [[nodiscard]] quint16 port() const;
  [[nodiscard]] QUrl url(const QString& path) const;

  /// Every request so far, in the order of arrival.
  [[nodiscard]] const std::vector<std::shared_ptr<Exchange>>& exchanges() const { return exchanges_; }
  /// Called when an exchange ends; may be empty.
  std::function<void(const Exchange&)> onEnded;

 private:
  class Connection;

  Handler handler_;
  std::vector<std::shared_ptr<Exchange>> exchanges_;
  QTcpServer server_;
};

/// The server's published answers: the list of models, a whole answer, and a streamed one that ends in an
/// empty piece marked as done.
[[nodiscard]] ModelServer::Reply tagsReply(const QStringList& models);
[[nodiscard]] ModelServer::Reply wholeReply(const QString& answer);
[[nodiscard]] ModelServer::Reply streamedReply(const QStringList& pieces);
/// One line of a streamed answer, with its line feed.
[[nodiscard]] QByteArray pieceLine(const QString& piece, bool done = false);

}  // namespace lumeno
