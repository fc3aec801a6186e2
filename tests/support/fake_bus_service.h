#pragma once

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <functional>
#include <vector>

namespace lumeno {

/// A service on the session bus, under a connection of its own, that answers whatever is called at one
/// object.
class FakeBusService final : public QDBusVirtualObject {
 public:
  /// `answer` gives the reply to a call; an empty one is an error.
  FakeBusService(const QString& name, const QString& path,
                 std::function<std::optional<QVariantList>(const QDBusMessage&)> answer)
      : name_(name),
        answer_(std::move(answer)),
        bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)) {
    EXPECT_TRUE(bus_.registerVirtualObject(path, this)) << "tests on the bus run under dbus-run-session";
    EXPECT_TRUE(bus_.registerService(name));
  }
  ~FakeBusService() override {
    bus_.unregisterService(name_);
    QDBusConnection::disconnectFromBus(name_);
  }

  void emitSignal(const QString& path, const QString& interface, const QString& member,
                  const QVariantList& arguments) {
    auto signal = QDBusMessage::createSignal(path, interface, member);
    signal.setArguments(arguments);
    EXPECT_TRUE(bus_.send(signal));
  }

  /// Every call so far.
  std::vector<QDBusMessage> calls;

  [[nodiscard]] QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    calls.push_back(message);
    const auto reply = answer_(message);
    connection.send(reply ? message.createReply(*reply)
                          : message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no")));
    return true;
  }

 private:
  const QString name_;
  const std::function<std::optional<QVariantList>(const QDBusMessage&)> answer_;
  QDBusConnection bus_;
};

}  // namespace lumeno
