// The serial port opener's notes in the main screen's error log
// (Balanza_Logs/Errores.log): a port that opened without all of its low
// latency is written there once, as the network's missing capabilities are.
// The opener lives in platform/linux and knows nothing of the log; the
// program joins the two here, for as long as the screen lives.
#pragma once

namespace fc {

class Firmcast;
class TermiosPortOpener;

class PortNotices {
  public:
    PortNotices(TermiosPortOpener& opener, Firmcast& form);
    ~PortNotices();
    PortNotices(const PortNotices&) = delete;
    PortNotices& operator=(const PortNotices&) = delete;

  private:
    TermiosPortOpener& opener_;
};

}  // namespace fc
