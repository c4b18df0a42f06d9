// The local clock of the machine, and its short date as the user's locale
// writes it: strftime's "%x" under the LC_TIME of the environment (LC_ALL,
// LC_TIME, LANG). Without a usable locale it is the C locale's "%x",
// month/day/year with two digits each.
#pragma once

#include "platform/calendar.h"

namespace fc {

class SystemCalendar : public Calendar {
  public:
    LocalDateTime now() const override;
    std::string shortDate(const LocalDateTime& when) const override;
};

}  // namespace fc
