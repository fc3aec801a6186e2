#include "support/model_server.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpSocket>
#include <QTimer>
#include <deque>
#include <memory>

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

QByteArray head(int status) {
  return "HTTP/1.1 " + QByteArray::number(status) + (status == 200 ? " OK" : " Error") +
         "\r\nContent-Type: application/x-ndjson\r\nTransfer-Encoding: chunked\r\n\r\n";
}

QByteArray chunk(const QByteArray& bytes) {
  return QByteArray::number(bytes.size(), 16) + "\r\n" + bytes + "\r\n";
}

}  // namespace

/// One client. It lives as long as its socket.
class ModelServer::Connection : public QObject {
 public:
  Connection(ModelServer& server, QTcpSocket* socket) : QObject(socket), server_(server), socket_(socket) {
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, [this] { sendNext(); });
    connect(socket, &QTcpSocket::readyRead, this, [this] {
      received_ += socket_->readAll();
      takeRequest();
    });
    connect(socket, &QTcpSocket::disconnected, this, [this] {
      timer_.stop();
      end(!closing_);
      socket_->deleteLater();
    });
  }

 private:
  struct Write {
    QByteArray bytes;
    std::chrono::milliseconds delay{0};
  };

  void takeRequest() {
    if (current_) return;
    const auto headEnd = received_.indexOf("\r\n\r\n");
    if (headEnd < 0) return;
    const QList<QByteArray> lines = received_.left(headEnd).split('\n');
    Request request;
    request.method = lines[0].split(' ').value(0);
    request.path = lines[0].split(' ').value(1);
    for (const QByteArray& line : lines.mid(1)) {
      const auto colon = line.indexOf(':');
      request.headers.insert(line.left(colon).toLower(), line.mid(colon + 1).trimmed());
    }
    const auto bodyStart = headEnd + 4;
    const auto bodySize = request.headers.value("content-length").toLongLong();
    if (received_.size() < bodyStart + bodySize) return;
    request.body = received_.mid(bodyStart, bodySize);
    received_.remove(0, bodyStart + bodySize);

    current_ = std::make_shared<Exchange>();
    current_->request = request;
    server_.exchanges_.push_back(current_);
    script(server_.handler_(request));
    sendNext();
  }

  void script(const Reply& reply) {
    ending_ = reply.ending;
    if (reply.raw) {
      add(*reply.raw, reply.headDelay, reply.bytesPerWrite);
      return;
    }
    add(head(reply.status), reply.headDelay, reply.bytesPerWrite);
    for (const QByteArray& part : reply.parts) add(chunk(part), reply.partDelay, reply.bytesPerWrite);
    if (ending_ == Reply::Ending::proper) add("0\r\n\r\n", {}, reply.bytesPerWrite);
  }

  void add(const QByteArray& bytes, std::chrono::milliseconds delay, int bytesPerWrite) {
    const qsizetype step = bytesPerWrite > 0 ? bytesPerWrite : bytes.size();
    for (qsizetype from = 0; from < bytes.size(); from += step) {
      // A pause between the writes of a cut reply, so that they do not meet again in one packet.
      const auto pause = bytesPerWrite > 0 ? std::chrono::milliseconds(1) : std::chrono::milliseconds(0);
      writes_.push_back({bytes.mid(from, step), from == 0 ? std::max(delay, pause) : pause});
    }
  }

  void sendNext() {
    while (!writes_.empty()) {
      Write& next = writes_.front();
      if (next.delay.count() > 0) {
        timer_.start(std::exchange(next.delay, std::chrono::milliseconds(0)));
        return;
      }
      socket_->write(next.bytes);
      socket_->flush();
      if (!current_) return;  // the client has gone, as the write has found out
      ++current_->writes;
      writes_.pop_front();
    }
    if (ending_ == Reply::Ending::silence) return;
    if (ending_ == Reply::Ending::drop) {
      closing_ = true;
      socket_->disconnectFromHost();
      return;
    }
    end(false);
    takeRequest();
  }

  void end(bool cancelled) {
    const auto exchange = std::exchange(current_, nullptr);
    if (!exchange) return;
    exchange->ended = true;
    exchange->cancelled = cancelled;
    if (server_.onEnded) server_.onEnded(*exchange);
  }

  ModelServer& server_;
  QTcpSocket* const socket_;
  QTimer timer_;
  QByteArray received_;
  std::shared_ptr<Exchange> current_;
  std::deque<Write> writes_;
  Reply::Ending ending_ = Reply::Ending::proper;
  bool closing_ = false;
};

ModelServer::ModelServer(Handler handler) : handler_(std::move(handler)) {
  QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
    while (QTcpSocket* socket = server_.nextPendingConnection()) new Connection(*this, socket);
  });
}

ModelServer::~ModelServer() {
  // Connections that end with the server tell nobody.
  onEnded = nullptr;
}

bool ModelServer::listen(quint16 port) {
  return server_.listen(QHostAddress::LocalHost, port);
}

quint16 ModelServer::port() const {
  return server_.serverPort();
}

QUrl ModelServer::url(const QString& path) const {
  return QUrl(u"http://127.0.0.1:%1%2"_s.arg(port()).arg(path));
}

ModelServer::Reply tagsReply(const QStringList& models) {
  QJsonArray list;
  for (const QString& name : models) list.append(QJsonObject{{"name"_L1, name}, {"size"_L1, 2019393189}});
  return {.parts = {QJsonDocument(QJsonObject{{"models"_L1, list}}).toJson(QJsonDocument::Compact)}};
}

ModelServer::Reply wholeReply(const QString& answer) {
  return {.parts = {pieceLine(answer, true)}};
}

ModelServer::Reply streamedReply(const QStringList& pieces) {
  ModelServer::Reply reply;
  for (const QString& piece : pieces) reply.parts.push_back(pieceLine(piece));
  reply.parts.push_back(pieceLine({}, true));
  return reply;
}

QByteArray pieceLine(const QString& piece, bool done) {
  const QJsonObject record{{"model"_L1, u"llama3.2"_s},
                           {"created_at"_L1, u"2025-01-01T00:00:00Z"_s},
                           {"response"_L1, piece},
                           {"done"_L1, done}};
  return QJsonDocument(record).toJson(QJsonDocument::Compact) + '\n';
}

}  // namespace lumeno
