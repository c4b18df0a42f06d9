#include "app/batch_progress.h"

#include <string>

#include "platform/controls.h"

namespace fc::batch {

ProgressReport::ProgressReport(ProgressBar& bar, std::ostream& out, bool enabled)
    : out_(out), enabled_(enabled) {
    if (!enabled_)
        return;
    bar.addObserver([this](Control& control) { draw(static_cast<const ProgressBar&>(control)); });
}

ProgressReport::~ProgressReport() {
    if (enabled_ && lastPercent_ >= 0)
        out_ << "\n";
}

void ProgressReport::draw(const ProgressBar& bar) {
    long span = static_cast<long>(bar.max()) - bar.min();
    int percent = span > 0 ? static_cast<int>(100L * (bar.value() - bar.min()) / span) : 0;
    if (percent == lastPercent_)
        return;
    lastPercent_ = percent;
    const int width = 40;
    int filled = percent * width / 100;
    out_ << "\r[" << std::string(filled, '#') << std::string(width - filled, ' ') << "] " << percent
         << "%" << std::flush;
}

}  // namespace fc::batch
