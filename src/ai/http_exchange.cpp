// A small HTTP client of our own rather than QNetworkAccessManager. An answer comes in thousands of tiny
// packets, and the manager passes each through a second thread (measured: 60 to 80 µs of CPU per packet;
// 10,000 pieces took 0.6 to 0.9 s). Here bytes are left in the socket for a few milliseconds and read
// together. The manager also reports a chunked body that was cut off as complete.

#include "ai/http_exchange.h"

#include <QNetworkProxy>
#include <QTcpSocket>
#include <QTimer>
#include <memory>

#include "ai/http_response.h"
#include "ai/line_splitter.h"

namespace lumeno {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Body = HttpRequest::Body;
using Kind = HttpOutcome::Kind;

/// Bytes that arrive sooner after the last read wait this long: shorter than a view takes between two
/// repaints.
constexpr auto readPause = 20ms;
constexpr qint64 readSize = 64 * 1024;

QByteArray encode(const HttpRequest& request) {
  QByteArray host = request.url.host().toLatin1();
  if (request.url.port() > 0) host += ':' + QByteArray::number(request.url.port());
  const QByteArray path = request.url.path(QUrl::FullyEncoded).toLatin1();
  // One exchange per connection: the server's closing is then never mistaken for a failure of the next one.
  QByteArray bytes = (request.jsonBody ? "POST " : "GET ") + path + " HTTP/1.1\r\nHost: " + host +
                     "\r\nConnection: close\r\n";
  if (request.jsonBody) {
    bytes +=
        "Content-Type: application/json\r\nContent-Length: " + QByteArray::number(request.jsonBody->size()) +
        "\r\n\r\n" + *request.jsonBody;
  } else {
    bytes += "\r\n";
  }
  return bytes;
}

QString describe(QAbstractSocket::SocketError error, const QString& errorText) {
  switch (error) {
    case QAbstractSocket::ConnectionRefusedError:
      return u"Could not connect to the model server."_s;
    case QAbstractSocket::RemoteHostClosedError:
      return u"The connection to the model server was lost."_s;
    default:
      return errorText;
  }
}

/// Owned by its job. Its socket and timers hold it only weakly, and for the time of a call, so that a
/// callback may destroy the job.
class Exchange : public std::enable_shared_from_this<Exchange> {
 public:
  Exchange(const HttpRequest& request, HttpLineListener onLine, std::function<void(const HttpOutcome&)> onEnd)
      : request_(request), onLine_(std::move(onLine)), onEnd_(std::move(onEnd)) {}

  void start() {
    socket_ = new QTcpSocket;
    socket_->setProxy(QNetworkProxy::NoProxy);
    listen(socket_, &QTcpSocket::connected, [](Exchange& exchange) { exchange.send(); });
    listen(socket_, &QTcpSocket::readyRead, [](Exchange& exchange) { exchange.readSoon(); });
    listen(socket_, &QTcpSocket::bytesWritten, [](Exchange& exchange) { exchange.silence_->start(); });
    listen(socket_, &QTcpSocket::errorOccurred, [](Exchange& exchange) { exchange.read(); });
    pause_ = newTimer(readPause, [](Exchange& exchange) {
      if (std::exchange(exchange.readable_, false)) exchange.read();
    });
    silence_ = newTimer(request_.idleTimeout,
                        [](Exchange& exchange) { exchange.fail(u"The request timed out."_s); });
    silence_->start();
    // From the event loop, for a connection that is refused fails at once.
    newTimer(0ms, [](Exchange& exchange) {
      // Unbuffered: the socket then waits for us to read, instead of waking up for every packet.
      exchange.socket_->connectToHost(exchange.request_.url.host(),
                                      static_cast<quint16>(exchange.request_.url.port(80)),
                                      QIODevice::ReadWrite | QIODevice::Unbuffered);
    })->start();
  }

  void close() {
    QTcpSocket* socket = std::exchange(socket_, nullptr);
    if (!socket) return;
    socket->disconnect();
    socket->abort();
    socket->deleteLater();  // and with it the timers
  }

 private:
  template <typename Sender, typename Signal, typename Action>
  void listen(Sender* sender, Signal signal, Action action) {
    QObject::connect(sender, signal, socket_, [weak = weak_from_this(), action] {
      const auto exchange = weak.lock();
      if (exchange && !exchange->isClosed()) action(*exchange);
    });
  }

  template <typename Action>
  QTimer* newTimer(std::chrono::milliseconds interval, Action action) {
    auto* timer = new QTimer(socket_);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);  // a coarse one may be early, and an answer in time be lost
    timer->setInterval(interval);
    listen(timer, &QTimer::timeout, action);
    return timer;
  }

  [[nodiscard]] bool isClosed() const { return !socket_; }

  void send() { socket_->write(encode(request_)); }

  void readSoon() {
    if (pause_->isActive()) {
      readable_ = true;
    } else {
      read();
    }
  }

  /// Reads what there is. The end of the connection shows up here too.
  void read() {
    pause_->start();
    silence_->start();
    QByteArray bytes(readSize, Qt::Uninitialized);
    for (qint64 count = 0; !isClosed() && (count = socket_->read(bytes.data(), bytes.size())) > 0;) {
      response_.feed(QByteArrayView(bytes).first(count));
      process();
    }
    if (isClosed() || socket_->state() != QAbstractSocket::UnconnectedState) return;
    response_.feedEnd();
    process();
  }

  /// Hands over what the response has come to.
  void process() {
    if (response_.status() != 0 && response_.status() != 200) {
      finish({.kind = Kind::refused});
      return;
    }
    if (response_.status() == 200 && request_.body == Body::unread) {
      finish({.kind = Kind::complete});
      return;
    }
    if (request_.body == Body::lines) {
      lines_.feed(response_.takeBody(), [this](const QByteArray& line) { return tell(line); });
      if (isClosed()) return;
    }
    if (response_.state() == HttpResponse::State::complete) {
      finishComplete();
    } else if (response_.state() == HttpResponse::State::broken) {
      fail(describe(socket_->error(), u"The model server's answer could not be read."_s));
    }
  }

  void finishComplete() {
    if (request_.body == Body::whole) {
      finish({.kind = Kind::complete, .body = response_.takeBody()});
      return;
    }
    // The last line needs no line break.
    const QByteArray rest = lines_.takeRest();
    if (rest.isEmpty() || tell(rest)) finish({.kind = Kind::complete});
  }

  /// Whether to go on; otherwise the exchange is over.
  bool tell(const QByteArray& line) {
    const bool moreWanted = onLine_(line);
    if (isClosed()) return false;
    if (!moreWanted) finish({.kind = Kind::complete});
    return moreWanted;
  }

  void fail(const QString& errorText) { finish({.kind = Kind::failed, .errorText = errorText}); }

  void finish(const HttpOutcome& outcome) {
    close();
    onEnd_(outcome);
  }

  const HttpRequest request_;
  const HttpLineListener onLine_;
  const std::function<void(const HttpOutcome&)> onEnd_;
  QTcpSocket* socket_ = nullptr;  // null once closed; owns the timers
  QTimer* pause_ = nullptr;
  QTimer* silence_ = nullptr;
  bool readable_ = false;  // while pausing
  HttpResponse response_;
  LineSplitter lines_;
};

}  // namespace

Job startHttpExchange(const HttpRequest& request, HttpLineListener onLine,
                      std::function<void(const HttpOutcome& outcome)> onEnd) {
  const auto exchange = std::make_shared<Exchange>(request, std::move(onLine), std::move(onEnd));
  exchange->start();
  return Job([exchange] { exchange->close(); });
}

}  // namespace lumeno
