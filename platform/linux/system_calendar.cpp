#include "platform/linux/system_calendar.h"

#include <locale.h>
#include <time.h>

#include <chrono>

namespace fc {

LocalDateTime SystemCalendar::now() const {
    time_t t = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    tm local{};
    localtime_r(&t, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     local.tm_sec};
}

std::string SystemCalendar::shortDate(const LocalDateTime& when) const {
    tm date{};
    date.tm_year = when.year - 1900;
    date.tm_mon = when.month - 1;
    date.tm_mday = when.day;
    date.tm_hour = when.hour;
    date.tm_min = when.minute;
    date.tm_sec = when.second;
    // The user's own setting, read afresh and kept apart from the process's
    // global locale, which the rest of the program relies on being "C".
    locale_t user = newlocale(LC_TIME_MASK, "", static_cast<locale_t>(0));
    locale_t used = user ? user : newlocale(LC_TIME_MASK, "C", static_cast<locale_t>(0));
    char text[64] = {0};
    std::size_t n = used ? strftime_l(text, sizeof text, "%x", &date, used) : 0;
    if (used)
        freelocale(used);
    return std::string(text, n);
}

}  // namespace fc
