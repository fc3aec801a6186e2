#include "platform/atspi/atspi_worker.h"

namespace lumeno::atspi {

using namespace Qt::StringLiterals;

namespace {

Reference source(const QDBusMessage& message) {
  return {message.service(), message.path()};
}

}  // namespace

Worker::Worker(std::function<void(ProcessId, Event)> onEvent)
    : onEvent_(std::move(onEvent)), focus_(client_) {}

void Worker::ensureListening() {
  bool isNew = false;
  client_.beginRound();
  if (!client_.ensureConnected(isNew) || !isNew) return;
  focus_.forgetEverything();
  listen();
}

void Worker::listen() {
  auto bus = client_.connection();
  const auto object = u"org.a11y.atspi.Event.Object"_s;
  bus.connect({}, {}, object, u"StateChanged"_s, {u"focused"_s}, {}, this, SLOT(focusChanged(QDBusMessage)));
  bus.connect({}, {}, object, u"TextSelectionChanged"_s, this, SLOT(selectionChanged(QDBusMessage)));
  bus.connect({}, {}, object, u"TextCaretMoved"_s, this, SLOT(caretMoved(QDBusMessage)));
  bus.connect({}, {}, u"org.a11y.atspi.Event.Window"_s, u"Activate"_s, this,
              SLOT(windowActivated(QDBusMessage)));
  bus.connect(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s,
              u"NameOwnerChanged"_s, this, SLOT(nameOwnerChanged(QString, QString, QString)));
  registerEvents();
}

void Worker::registerEvents() {
  // Applications send only what somebody has asked the registry for.
  const Reference registry{QLatin1StringView(registryName), u"/org/a11y/atspi/registry"_s};
  for (const auto* event : {"object:state-changed:focused", "object:text-selection-changed",
                            "object:text-caret-moved", "window:activate"}) {
    client_.call(registry, "org.a11y.atspi.Registry", "RegisterEvent",
                 {QString::fromLatin1(event), QStringList(), QString()});
  }
}

void Worker::beginRound(std::shared_ptr<const Round> round) {
  round_ = std::move(round);
  focused_.reset();
  ensureListening();
}

ElementPtr Worker::focusedElement() {
  if (round_->isOwn || round_->process == 0) return nullptr;
  auto object = focus_.focusedObject(round_->process, round_->window);
  // An application that is not on the bus may still offer its selection.
  focused_ = std::make_shared<Element>(client_, round_, std::move(object), Element::Kind::focused);
  return focused_;
}

bool Worker::focusHasNoSelection() const {
  return focused_ && focused_->knowledge() == FocusKnowledge::noSelection;
}

ElementPtr Worker::applicationElement(ProcessId process) {
  auto object = focus_.application(process);
  if (!object) return nullptr;
  return std::make_shared<Element>(client_, round_, std::move(object), Element::Kind::other);
}

void Worker::shutDown() {
  client_.disconnect();
  focus_.forgetEverything();
}

void Worker::focusChanged(const QDBusMessage& message) {
  const auto arguments = message.arguments();
  client_.beginRound();
  focus_.noteFocus(source(message), arguments.size() > 1 && arguments[1].toInt() != 0);
  report(message, Event::focus);
}

void Worker::selectionChanged(const QDBusMessage& message) {
  client_.beginRound();
  focus_.noteActivity(source(message));
  report(message, Event::selection);
}

void Worker::caretMoved(const QDBusMessage& message) {
  client_.beginRound();
  focus_.noteActivity(source(message));
  report(message, Event::caret);
}

void Worker::windowActivated(const QDBusMessage& message) {
  client_.beginRound();
  report(message, Event::focus);
}

void Worker::nameOwnerChanged(const QString& name, const QString&, const QString& newOwner) {
  if (newOwner.isEmpty()) {
    client_.forget(name);
  } else if (name == QLatin1StringView(registryName)) {
    client_.beginRound();
    registerEvents();
  }
}

void Worker::report(const QDBusMessage& message, Event event) {
  if (const auto process = client_.processOf(message.service())) onEvent_(*process, event);
}

}  // namespace lumeno::atspi
