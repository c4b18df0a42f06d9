#include <gtest/gtest.h>
#include <locale.h>
#include <stdlib.h>

#include <optional>
#include <string>

#include "platform/linux/system_calendar.h"
#include "virtual/virtual_calendar.h"
#include "virtual/virtual_pump.h"

namespace fc {
namespace {

// Sets LC_ALL for one test and puts back what was there.
class ScopedLcAll {
  public:
    explicit ScopedLcAll(const char* value) {
        if (const char* old = getenv("LC_ALL"))
            old_ = old;
        setenv("LC_ALL", value, 1);
    }
    ~ScopedLcAll() {
        if (old_) {
            setenv("LC_ALL", old_->c_str(), 1);
        } else {
            unsetenv("LC_ALL");
        }
    }

  private:
    std::optional<std::string> old_;
};

bool localeInstalled(const char* name) {
    locale_t l = newlocale(LC_TIME_MASK, name, static_cast<locale_t>(0));
    if (l)
        freelocale(l);
    return l != static_cast<locale_t>(0);
}

const LocalDateTime kSpringDay{2005, 3, 21, 10, 42, 0};

TEST(SystemCalendar, TheCLocalesShortDateIsMonthDayYear) {
    ScopedLcAll c("C");
    EXPECT_EQ(SystemCalendar().shortDate(kSpringDay), "03/21/05");
}

TEST(SystemCalendar, TheShortDateFollowsTheUsersLocale) {
    if (!localeInstalled("en_GB.UTF-8"))
        GTEST_SKIP() << "the locale en_GB.UTF-8 is not installed here";
    ScopedLcAll gb("en_GB.UTF-8");
    EXPECT_EQ(SystemCalendar().shortDate(kSpringDay), "21/03/05");
}

TEST(SystemCalendar, AnUnknownLocaleFallsBackToTheCLocale) {
    ScopedLcAll none("xx_NOWHERE.UTF-8");
    EXPECT_EQ(SystemCalendar().shortDate(kSpringDay), "03/21/05");
}

TEST(SystemCalendar, NowIsAPlausibleLocalTime) {
    LocalDateTime now = SystemCalendar().now();
    EXPECT_GE(now.year, 2024);
    EXPECT_GE(now.month, 1);
    EXPECT_LE(now.month, 12);
    EXPECT_LE(now.hour, 23);
    EXPECT_LE(now.minute, 59);
}

TEST(VirtualCalendar, MovesOnWithThePumpAcrossMidnightAndMonths) {
    VirtualPump pump;
    VirtualCalendar calendar(pump, LocalDateTime{2004, 2, 28, 23, 59, 30});
    pump.sleep(31 * 1000);
    EXPECT_EQ(calendar.now(), (LocalDateTime{2004, 2, 29, 0, 0, 1}));
    pump.sleep(24 * 3600 * 1000);
    EXPECT_EQ(calendar.now(), (LocalDateTime{2004, 3, 1, 0, 0, 1}));
    EXPECT_EQ(calendar.shortDate(calendar.now()), "01/03/2004");
}

}  // namespace
}  // namespace fc
