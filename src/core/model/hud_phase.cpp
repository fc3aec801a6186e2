#include "core/model/hud_phase.h"

using namespace Qt::StringLiterals;

namespace lumeno {

QString phaseName(const HUDPhase& phase) {
  struct Name {
    QString operator()(const phase::Suggestions&) const { return u"suggestions"_s; }
    QString operator()(const phase::Generating&) const { return u"generating"_s; }
    QString operator()(const phase::CalendarConfirm&) const { return u"calendarConfirm"_s; }
    QString operator()(const phase::Result&) const { return u"result"_s; }
    QString operator()(const phase::Notice&) const { return u"notice"_s; }
  };
  return std::visit(Name(), phase);
}

}  // namespace lumeno
