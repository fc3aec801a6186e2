#include "evolution_calendar.h"

#include <libecal/libecal.h>

#include <memory>

namespace lumeno::evolution {

using namespace Qt::StringLiterals;

namespace {

struct Unref {
  void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename T>
using Object = std::unique_ptr<T, Unref>;

/// Receives the error of one call.
class Error {
 public:
  Error() = default;
  ~Error() { g_clear_error(&error_); }
  Error(const Error&) = delete;
  Error& operator=(const Error&) = delete;

  [[nodiscard]] GError** receiver() { return &error_; }
  [[nodiscard]] bool is(GQuark domain, int code) const { return g_error_matches(error_, domain, code); }
  [[nodiscard]] Failure failure() const {
    return {Failure::Reason::other, error_ ? QString::fromUtf8(error_->message) : QString()};
  }

 private:
  GError* error_ = nullptr;
};

struct Connection {
  Object<ECalClient> client;
  Calendar calendar;
};

// Any other number of seconds to wait for the calendar to be connected is waited for in full.
constexpr auto noWaiting = static_cast<guint32>(-1);

std::variant<Connection, Failure> connect() {
  Error error;
  const Object<ESourceRegistry> registry(e_source_registry_new_sync(nullptr, error.receiver()));
  if (!registry) return error.failure();
  const Object<ESource> source(e_source_registry_ref_default_calendar(registry.get()));
  if (!source) return Failure{Failure::Reason::noCalendar, QString()};
  EClient* client = e_cal_client_connect_sync(source.get(), E_CAL_CLIENT_SOURCE_TYPE_EVENTS, noWaiting,
                                              nullptr, error.receiver());
  if (!client) return error.failure();
  return Connection{
      Object<ECalClient>(E_CAL_CLIENT(client)),
      {QString::fromUtf8(e_source_get_display_name(source.get())), !e_client_is_readonly(client)}};
}

/// A time on the clock of a zone, as it is written: of some years the library knows another offset than the
/// system does, so it must not be asked to convert. The zone must be the library's own, by its own name:
/// under any other the service does not find the event when it is asked what happens on a day.
Object<ICalTime> timeOf(const QByteArray& text, ICalTimezone* zone) {
  Object<ICalTime> time(i_cal_time_new_from_string(text.constData()));
  if (zone && !i_cal_time_is_utc(time.get())) i_cal_time_set_timezone(time.get(), zone);
  return time;
}

Object<ICalComponent> componentOf(const Event& event) {
  ICalTimezone* const utc = i_cal_timezone_get_utc_timezone();
  // A zone that the library does not know leaves the wall clock as it is, in whatever zone one reads it.
  ICalTimezone* const zone = i_cal_timezone_get_builtin_timezone(event.zone.constData());
  Object<ICalComponent> component(i_cal_component_new_vevent());
  i_cal_component_set_uid(component.get(), event.uid.constData());
  i_cal_component_set_summary(component.get(), event.title.constData());
  i_cal_component_set_dtstamp(component.get(), Object<ICalTime>(i_cal_time_new_current_with_zone(utc)).get());
  i_cal_component_set_dtstart(component.get(), timeOf(event.start, zone).get());
  i_cal_component_set_dtend(component.get(), timeOf(event.end, zone).get());
  return component;
}

}  // namespace

std::variant<Calendar, Failure> defaultCalendar() {
  const auto connected = connect();
  if (const auto* failure = std::get_if<Failure>(&connected)) return *failure;
  return std::get<Connection>(connected).calendar;
}

std::variant<Calendar, Failure> save(const Event& event) {
  const auto connected = connect();
  if (const auto* failure = std::get_if<Failure>(&connected)) return *failure;
  const auto& [client, calendar] = std::get<Connection>(connected);
  if (!calendar.isWritable) return Failure{Failure::Reason::refused, QString()};

  const auto component = componentOf(event);
  Error error;
  if (e_cal_client_create_object_sync(client.get(), component.get(), E_CAL_OPERATION_FLAG_NONE, nullptr,
                                      nullptr, error.receiver()) ||
      error.is(E_CAL_CLIENT_ERROR, E_CAL_CLIENT_ERROR_OBJECT_ID_ALREADY_EXISTS)) {
    return calendar;
  }
  if (error.is(E_CLIENT_ERROR, E_CLIENT_ERROR_PERMISSION_DENIED))
    return Failure{Failure::Reason::refused, QString()};
  return error.failure();
}

}  // namespace lumeno::evolution
