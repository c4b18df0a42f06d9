// The local date and time, and the system's short date format.
#pragma once

#include <string>

namespace fc {

struct LocalDateTime {
    int year = 2000;
    int month = 1;  // 1..12
    int day = 1;    // 1..31
    int hour = 0;
    int minute = 0;
    int second = 0;
    bool operator==(const LocalDateTime&) const = default;
};

class Calendar {
  public:
    virtual ~Calendar() = default;
    // The local date and time now.
    virtual LocalDateTime now() const = 0;
    // The date as the system's short date setting writes it ("Short Date").
    virtual std::string shortDate(const LocalDateTime& when) const = 0;
};

}  // namespace fc
