#include "platform/freedesktop/feedbackd_haptics.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QVariantMap>

namespace lumeno {

using namespace Qt::StringLiterals;

void FeedbackdHaptics::performGeneric() {
  auto request = QDBusMessage::createMethodCall(u"org.sigxcpu.Feedback"_s, u"/org/sigxcpu/Feedback"_s,
                                                u"org.sigxcpu.Feedback"_s, u"TriggerFeedback"_s);
  request << u"org.lumeno.Lumeno"_s << u"button-pressed"_s << QVariantMap() << -1;
  // Without the daemon the bus answers with an error that nobody waits for.
  QDBusConnection::sessionBus().asyncCall(request);
}

}  // namespace lumeno
