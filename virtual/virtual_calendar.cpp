#include "virtual/virtual_calendar.h"

#include <chrono>
#include <cstdio>

#include "platform/pump.h"

namespace fc {

using namespace std::chrono;

VirtualCalendar::VirtualCalendar(const Pump& pump, LocalDateTime start)
    : pump_(pump), start_(start) {}

LocalDateTime VirtualCalendar::now() const {
    sys_days startDay =
        year_month_day{year{start_.year}, month{static_cast<unsigned>(start_.month)},
                       day{static_cast<unsigned>(start_.day)}};
    sys_seconds t = startDay + hours{start_.hour} + minutes{start_.minute} +
                    seconds{start_.second} + duration_cast<seconds>(milliseconds{pump_.now()});
    sys_days d = floor<days>(t);
    year_month_day ymd{d};
    hh_mm_ss<seconds> hms{t - d};
    return {static_cast<int>(ymd.year()),
            static_cast<int>(static_cast<unsigned>(ymd.month())),
            static_cast<int>(static_cast<unsigned>(ymd.day())),
            static_cast<int>(hms.hours().count()),
            static_cast<int>(hms.minutes().count()),
            static_cast<int>(hms.seconds().count())};
}

std::string VirtualCalendar::shortDate(const LocalDateTime& when) const {
    char text[32];
    std::snprintf(text, sizeof text, "%02d/%02d/%04d", when.day, when.month, when.year);
    return text;
}

}  // namespace fc
