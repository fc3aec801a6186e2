// What streaming an answer costs this process: 10,000 pieces, 50 KB in all, from a server in a process of its
// own, through the client and the runner of a real run. Pieces come once as fast as the server can send them,
// and once at a model's pace, each in a packet of its own.

#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <csignal>
#include <cstdio>

#include "ai/ollama_service.h"
#include "support/model_server.h"

using namespace Qt::StringLiterals;
using namespace lumeno;

namespace {

constexpr int pieceCount = 10'000;
constexpr double limitSeconds = 0.2;

double cpuSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& time) { return time.tv_sec + time.tv_usec / 1e6; };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// Starts the server in a child process that ends with this one; its port.
quint16 startServer(std::chrono::milliseconds pieceDelay) {
  int ends[2];
  if (pipe(ends) != 0) return 0;
  if (fork() == 0) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    int argc = 1;
    char name[] = "model-server";
    char* argv[] = {name, nullptr};
    QCoreApplication application(argc, argv);
    ModelServer server([pieceDelay](const ModelServer::Request&) {
      ModelServer::Reply reply = streamedReply(QStringList(pieceCount, u"word "_s));
      reply.partDelay = pieceDelay;
      return reply;
    });
    const quint16 port = server.listen() ? server.port() : 0;
    if (write(ends[1], &port, sizeof port) == sizeof port) QCoreApplication::exec();
    _exit(0);
  }
  quint16 port = 0;
  if (read(ends[0], &port, sizeof port) != sizeof port) return 0;
  return port;
}

bool measure(const char* name, quint16 port) {
  OllamaService service(u"llama3.2"_s);
  service.endpoint = QUrl(u"http://127.0.0.1:%1/api/generate"_s.arg(port));
  QString shown;  // a view keeps the latest answer
  int elements = 0;
  QElapsedTimer elapsed;
  elapsed.start();
  const double before = cpuSeconds();
  const Job job = service.stream(
      u"prompt"_s,
      [&](const QString& element) {
        shown = element;
        ++elements;
      },
      [](const auto&) { QCoreApplication::quit(); });
  QCoreApplication::exec();
  const double spent = cpuSeconds() - before;
  std::printf("%-22s %5d elements, %lld characters, %6.2f s, CPU %.3f s, limit %.1f s, ratio %.2f\n", name,
              elements, static_cast<long long>(shown.size()), elapsed.elapsed() / 1000.0, spent, limitSeconds,
              spent / limitSeconds);
  return elements == pieceCount + 1 && spent <= limitSeconds;
}

}  // namespace

int main(int argc, char** argv) {
  const quint16 fastPort = startServer(std::chrono::milliseconds(0));
  const quint16 pacedPort = startServer(std::chrono::milliseconds(1));
  if (fastPort == 0 || pacedPort == 0) return 2;
  QCoreApplication application(argc, argv);
  const bool fast = measure("as fast as possible", fastPort);
  const bool paced = measure("1,000 a second", pacedPort);
  return fast && paced ? 0 : 1;
}
