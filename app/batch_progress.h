// A progress bar on standard error while a load runs, when that is a
// terminal: it follows the load screen's bar.
#pragma once

#include <ostream>

namespace fc {
class ProgressBar;
}

namespace fc::batch {

class ProgressReport {
  public:
    ProgressReport(ProgressBar& bar, std::ostream& out, bool enabled);
    ~ProgressReport();

  private:
    void draw(const ProgressBar& bar);

    std::ostream& out_;
    bool enabled_;
    int lastPercent_ = -1;
};

}  // namespace fc::batch
