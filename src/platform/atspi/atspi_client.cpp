#include "platform/atspi/atspi_client.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMetaType>
#include <QDBusReply>
#include <QDBusVariant>

namespace lumeno::atspi {

using namespace Qt::StringLiterals;

namespace {

constexpr auto accessibleInterface = "org.a11y.atspi.Accessible";

Reference readReference(const QDBusArgument& argument) {
  Reference reference;
  QDBusObjectPath path;
  argument.beginStructure();
  argument >> reference.busName >> path;
  argument.endStructure();
  reference.path = path.path();
  return reference;
}

std::vector<Reference> readReferences(const QVariant& value) {
  std::vector<Reference> references;
  const auto argument = value.value<QDBusArgument>();
  if (argument.currentType() != QDBusArgument::ArrayType) return references;
  argument.beginArray();
  while (!argument.atEnd()) {
    Reference reference = readReference(argument);
    if (!reference.isNull()) references.push_back(std::move(reference));
  }
  argument.endArray();
  return references;
}

/// What `Collection.GetMatches` looks for: objects with the focused state, whatever else they are.
struct FocusedMatchRule {};

QDBusArgument& operator<<(QDBusArgument& argument, const FocusedMatchRule&) {
  constexpr int matchAll = 1;
  argument.beginStructure();
  argument << QList<int>{1 << stateFocused, 0} << matchAll;
  argument << QMap<QString, QString>() << matchAll;
  argument << QList<int>{0, 0, 0, 0} << matchAll;
  argument << QStringList() << matchAll;
  argument << false;
  argument.endStructure();
  return argument;
}

// Never received.
const QDBusArgument& operator>>(const QDBusArgument& argument, FocusedMatchRule&) {
  return argument;
}

}  // namespace

}  // namespace lumeno::atspi

Q_DECLARE_METATYPE(lumeno::atspi::FocusedMatchRule)

namespace lumeno::atspi {

bool Client::ensureConnected(bool& isNew) {
  isNew = false;
  if (connection_.isConnected()) return true;
  if (sinceAttempt_.isValid() && sinceAttempt_.elapsed() < 1000) return false;
  sinceAttempt_.start();
  disconnect();
  const auto address = fetchAddress();
  if (!address) return false;
  // A name of its own for each connection: a broken one may linger until its last user lets go.
  connectionName_ = u"lumeno-accessibility-%1"_s.arg(++connectionCount_);
  connection_ = QDBusConnection::connectToBus(*address, connectionName_);
  isNew = connection_.isConnected();
  return isNew;
}

void Client::disconnect() {
  if (!connectionName_.isEmpty()) QDBusConnection::disconnectFromBus(connectionName_);
  connectionName_.clear();
  connection_ = QDBusConnection(QString());
  processes_.clear();
  windowCoordinates_.clear();
  hung_.clear();
}

std::optional<QString> Client::fetchAddress() {
  const auto request = QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s,
                                                      u"org.a11y.Bus"_s, u"GetAddress"_s);
  const QDBusReply<QString> reply =
      QDBusConnection::sessionBus().call(request, QDBus::Block, static_cast<int>(roundTimeout.count()));
  if (!reply.isValid() || reply.value().isEmpty()) return std::nullopt;
  return reply.value();
}

void Client::beginRound(std::chrono::milliseconds limit, std::chrono::milliseconds callLimit) {
  round_.start();
  roundLimit_ = limit;
  callLimit_ = callLimit;
  isIncomplete_ = false;
}

std::chrono::milliseconds Client::timeLeft() const {
  return roundLimit_ - std::chrono::milliseconds(round_.elapsed());
}

std::optional<QVariantList> Client::call(const Reference& object, const char* interface, const char* method,
                                         const QVariantList& arguments) {
  const auto left = timeLeft();
  if (!connection_.isConnected()) return std::nullopt;
  if (left.count() <= 0) {
    isIncomplete_ = true;
    return std::nullopt;
  }
  if (const auto pause = hung_.find(object.busName); pause != hung_.end()) {
    if (pause->elapsed() < hungPause.count()) {
      isIncomplete_ = true;
      return std::nullopt;
    }
    hung_.erase(pause);
  }
  auto request = QDBusMessage::createMethodCall(object.busName, object.path, QLatin1StringView(interface),
                                                QLatin1StringView(method));
  request.setArguments(arguments);
  const int timeout = static_cast<int>(std::min(left, callLimit_).count());
  const QDBusMessage reply = connection_.call(request, QDBus::Block, timeout);
  if (reply.type() == QDBusMessage::ReplyMessage) return reply.arguments();
  if (reply.errorName() == "org.freedesktop.DBus.Error.NoReply"_L1 ||
      reply.errorName() == "org.freedesktop.DBus.Error.Timeout"_L1) {
    hung_[object.busName].start();
    isIncomplete_ = true;
  }
  return std::nullopt;
}

std::optional<Reference> Client::callForReference(const Reference& object, const char* interface,
                                                  const char* method, const QVariantList& arguments) {
  const auto answer = call(object, interface, method, arguments);
  if (!answer || answer->isEmpty()) return std::nullopt;
  const auto argument = answer->first().value<QDBusArgument>();
  if (argument.currentType() != QDBusArgument::StructureType) return std::nullopt;
  auto reference = readReference(argument);
  if (reference.isNull()) return std::nullopt;
  return reference;
}

std::optional<QVariant> Client::property(const Reference& object, const char* interface, const char* name) {
  const auto answer = call(object, "org.freedesktop.DBus.Properties", "Get",
                           {QString::fromLatin1(interface), QString::fromLatin1(name)});
  if (!answer || answer->isEmpty()) return std::nullopt;
  return answer->first().value<QDBusVariant>().variant();
}

std::optional<ProcessId> Client::processOf(const QString& busName) {
  if (const auto known = processes_.constFind(busName); known != processes_.cend()) return *known;
  const auto answer = call({u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s}, "org.freedesktop.DBus",
                           "GetConnectionUnixProcessID", {busName});
  if (!answer || answer->isEmpty()) return std::nullopt;
  const auto process = static_cast<ProcessId>(answer->first().toUInt());
  processes_.insert(busName, process);
  return process;
}

void Client::forget(const QString& busName) {
  processes_.remove(busName);
  windowCoordinates_.remove(busName);
  hung_.remove(busName);
}

std::optional<uint32_t> Client::role(const Reference& object) {
  const auto answer = call(object, accessibleInterface, "GetRole");
  if (!answer || answer->isEmpty()) return std::nullopt;
  return answer->first().toUInt();
}

bool Client::hasState(const Reference& object, int state) {
  const auto all = states(object);
  return all && (*all >> state) & 1;
}

std::optional<uint64_t> Client::states(const Reference& object) {
  const auto answer = call(object, accessibleInterface, "GetState");
  if (!answer || answer->isEmpty()) return std::nullopt;
  const auto words = qdbus_cast<QList<uint32_t>>(answer->first());
  if (words.size() < 2) return std::nullopt;
  return uint64_t{words[1]} << 32 | words[0];
}

std::optional<QString> Client::name(const Reference& object) {
  const auto value = property(object, accessibleInterface, "Name");
  return value ? std::optional(value->toString()) : std::nullopt;
}

std::vector<QString> Client::interfaces(const Reference& object) {
  const auto answer = call(object, accessibleInterface, "GetInterfaces");
  if (!answer || answer->isEmpty()) return {};
  const auto names = answer->first().toStringList();
  return {names.begin(), names.end()};
}

std::vector<Reference> Client::children(const Reference& object) {
  const auto answer = call(object, accessibleInterface, "GetChildren");
  if (!answer || answer->isEmpty()) return {};
  return readReferences(answer->first());
}

std::vector<Reference> Client::focusedDescendants(const Reference& object) {
  static const bool registered = [] {
    qDBusRegisterMetaType<FocusedMatchRule>();
    return true;
  }();
  Q_UNUSED(registered);
  constexpr uint32_t canonicalOrder = 1;
  constexpr int most = 8;
  const auto answer = call(object, "org.a11y.atspi.Collection", "GetMatches",
                           {QVariant::fromValue(FocusedMatchRule{}), canonicalOrder, most, true});
  if (!answer || answer->isEmpty()) return {};
  return readReferences(answer->first());
}

std::optional<Rect> Client::extents(const Reference& object) {
  const auto answer = call(object, "org.a11y.atspi.Component", "GetExtents", {coordinateTypeScreen});
  if (!answer || answer->isEmpty()) return std::nullopt;
  const auto argument = answer->first().value<QDBusArgument>();
  if (argument.currentType() != QDBusArgument::StructureType) return std::nullopt;
  int x = 0, y = 0, width = 0, height = 0;
  argument.beginStructure();
  argument >> x >> y >> width >> height;
  argument.endStructure();
  return Rect{double(x), double(y), double(width), double(height)};
}

bool Client::reportsWindowCoordinates(const QString& busName) {
  if (const auto known = windowCoordinates_.constFind(busName); known != windowCoordinates_.cend())
    return *known;
  const Reference root{busName, QLatin1StringView(rootPath)};
  const auto name = property(root, "org.a11y.atspi.Application", "ToolkitName");
  if (!name) return false;
  const auto version = property(root, "org.a11y.atspi.Application", "Version");
  // GTK has given up knowing where its windows are with version 4.
  const bool relative = name->toString().compare("gtk"_L1, Qt::CaseInsensitive) == 0 && version &&
                        version->toString() >= "4"_L1;
  windowCoordinates_.insert(busName, relative);
  return relative;
}

}  // namespace lumeno::atspi
