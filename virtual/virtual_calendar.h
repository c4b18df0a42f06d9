// A calendar for tests: a chosen start, moving on with the pump's clock, and
// a fixed short date form, day/month/year ("21/03/2005").
#pragma once

#include "platform/calendar.h"

namespace fc {

class Pump;

class VirtualCalendar : public Calendar {
  public:
    VirtualCalendar(const Pump& pump, LocalDateTime start);
    // The start plus the time on the pump's clock.
    LocalDateTime now() const override;
    std::string shortDate(const LocalDateTime& when) const override;

  private:
    const Pump& pump_;
    LocalDateTime start_;
};

}  // namespace fc
