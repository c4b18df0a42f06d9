#include "app/batch_progress.h"

#include <cstdio>
#include <utility>

#include "control/firmcast_form.h"
#include "platform/controls.h"

namespace fc::batch {

namespace {

bool isLoading(const std::string& phase) {
    return phase == "connect" || phase == "erase" || phase == "load";
}

// The bar of a terminal, drawn over itself at each new percentage; a pass's
// end closes its line.
class BarReport : public ProgressReport {
  public:
    explicit BarReport(std::ostream& out) : out_(out) {}
    ~BarReport() override {
        if (open_)
            out_ << "\n" << std::flush;
    }

    void report(const ProgressEvent& event) override {
        if (!isLoading(event.phase)) {
            if (open_)
                out_ << "\n" << std::flush;
            open_ = false;
            lastPercent_ = -1;
            return;
        }
        if (event.percentage == lastPercent_)
            return;
        lastPercent_ = event.percentage;
        open_ = true;
        const int width = 40;
        int filled = event.percentage * width / 100;
        out_ << "\r[" << std::string(filled, '#') << std::string(width - filled, ' ') << "] "
             << event.percentage << "%" << std::flush;
    }

  private:
    std::ostream& out_;
    int lastPercent_ = -1;
    bool open_ = false;
};

// A line for each phase, and one each time the load passes a tenth.
class PlainReport : public ProgressReport {
  public:
    explicit PlainReport(std::ostream& out) : out_(out) {}

    void report(const ProgressEvent& event) override {
        const bool newPhase = event.phase != phase_ || event.pass != pass_;
        phase_ = event.phase;
        pass_ = event.pass;
        std::string line =
            event.device + " pass " + std::to_string(event.pass) + ": " + event.phase;
        if (event.phase == "load") {
            if (!newPhase && event.percentage / 10 <= tenth_)
                return;
            tenth_ = event.percentage / 10;
            line += " " + std::to_string(event.percentage) + "% (" + event.unit + " " +
                    std::to_string(event.number) +
                    (event.total > 0 ? " of " + std::to_string(event.total) : "") + ")";
        } else if (!newPhase) {
            return;
        } else if (event.phase == "failed" && !event.box.empty()) {
            line += " (the last box: \"" + event.box + "\")";
        }
        out_ << line << "\n" << std::flush;
    }

  private:
    std::ostream& out_;
    std::string phase_;
    int pass_ = 0;
    int tenth_ = -1;
};

class JsonReport : public ProgressReport {
  public:
    explicit JsonReport(std::ostream& out) : out_(out) {}
    void report(const ProgressEvent& event) override {
        out_ << jsonLine(event) << "\n" << std::flush;
    }

  private:
    std::ostream& out_;
};

class NoReport : public ProgressReport {
  public:
    void report(const ProgressEvent&) override {}
};

// A JSON string: the system's texts are single bytes, so a byte above 127
// is written as the character of that number.
std::string jsonString(const std::string& text) {
    std::string out = "\"";
    for (unsigned char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += static_cast<char>(c);
        } else if (c < 0x20 || c >= 0x7F) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04X", c);
            out += escaped;
        } else {
            out += static_cast<char>(c);
        }
    }
    return out + "\"";
}

}  // namespace

std::unique_ptr<ProgressReport> makeProgressReport(Progress how, std::ostream& out, bool terminal) {
    switch (how) {
        case Progress::Auto:
            return makeProgressReport(terminal ? Progress::Bar : Progress::Plain, out, terminal);
        case Progress::Bar:
            return std::make_unique<BarReport>(out);
        case Progress::Plain:
            return std::make_unique<PlainReport>(out);
        case Progress::Json:
            return std::make_unique<JsonReport>(out);
        case Progress::None:
            break;
    }
    return std::make_unique<NoReport>();
}

std::string jsonLine(const ProgressEvent& event) {
    std::string line = "{\"device\":" + jsonString(event.device) +
                       ",\"pass\":" + std::to_string(event.pass) +
                       ",\"phase\":" + jsonString(event.phase) + "," +
                       jsonString(event.unit.empty() ? "line" : event.unit) + ":" +
                       std::to_string(event.number) + ",\"total\":" + std::to_string(event.total) +
                       ",\"percentage\":" + std::to_string(event.percentage);
    if (!event.box.empty())
        line += ",\"box\":" + jsonString(event.box);
    return line + "}";
}

SerialLoadFollower::SerialLoadFollower(Firmcast& form, ProgressReport& report, std::string device,
                                       long totalLines)
    : form_(form), report_(report) {
    event_.device = std::move(device);
    event_.unit = "line";
    event_.total = totalLines;
    form_.Texto.addObserver([this](Control& texto) { textChanged(texto.caption()); });
    form_.Barra.addObserver([this](Control&) { barChanged(); });
}

void SerialLoadFollower::textChanged(const std::string& text) {
    if (text.rfind("Connecting with", 0) == 0) {
        event_.number = 0;
        event_.percentage = 0;
        lastValue_ = form_.Barra.value();
        inPass_ = true;
        enter("connect");
    } else if (inPass_ && text.find("erasing FLASH ROM") != std::string::npos) {
        enter("erase");
    }
}

// Each advance of the bar in a pass is a line sent (the first line went with
// the erase); the bar filled at the end is the last line.
void SerialLoadFollower::barChanged() {
    const ProgressBar& bar = form_.Barra;
    const long value = bar.value();
    if (!inPass_ || value <= lastValue_) {
        lastValue_ = value;
        return;
    }
    lastValue_ = value;
    event_.number = event_.phase == "load" ? event_.number + 1 : 2;
    const long span = static_cast<long>(bar.max()) - bar.min();
    int percentage = span > 0 ? static_cast<int>(100L * (value - bar.min()) / span) : 0;
    if (percentage > 100)
        percentage = 100;
    if (value >= bar.max() && event_.total > 0)
        event_.number = event_.total;
    if (event_.phase != "load") {
        event_.percentage = percentage;
        enter("load");
    } else if (percentage != event_.percentage) {
        event_.percentage = percentage;
        send();
    }
}

void SerialLoadFollower::enter(const std::string& phase) {
    if (phase == event_.phase)
        return;
    event_.phase = phase;
    send();
}

void SerialLoadFollower::send() {
    report_.report(event_);
}

void SerialLoadFollower::passEnded(int pass, bool ready, const std::string& lastBox) {
    inPass_ = false;
    event_.pass = pass;
    event_.phase = ready ? "ready" : "failed";
    event_.box = ready ? "" : lastBox;
    send();
    event_.box.clear();
}

void SerialLoadFollower::nextPass(int pass) {
    event_.pass = pass;
    event_.number = 0;
    event_.percentage = 0;
}

}  // namespace fc::batch
