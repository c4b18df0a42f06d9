// The headless program's answers to the scale record form, and its report of
// an Ethernet pass. Each --serial answers the next form as a barcode reader
// would: it replaces the serial number field's text and ends with Enter. A
// form that opens when no --serial is left is accepted as it stands. A form
// that refuses its answer stops the run, naming the scale that needed a
// serial number: a headless run never loops on a form.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace fc {
class Firmcast;
class RecordingDialogs;
class Screen;
}  // namespace fc

namespace fc::batch {

class RecordFormAnswers {
  public:
    using Stop = std::function<void(const std::string& why)>;
    RecordFormAnswers(Firmcast& form, RecordingDialogs& dialogs,
                      const std::vector<std::string>& serials, Stop stop);

    // Answers the record form if one is open and waiting. False when none
    // is open. Calls `stop` when the open form has refused its answer.
    bool answer();

  private:
    std::string whichScale() const;

    Firmcast& form_;
    RecordingDialogs& dialogs_;
    const std::vector<std::string>& serials_;
    Stop stop_;
    std::size_t used_ = 0;
    const Screen* answered_ = nullptr;
};

// One line a scale of the Ethernet list, exactly
// "scale <n>: <ip> <ok|failed>: <last text of its turn>", n from 1. True
// when every scale is ok.
bool reportScales(const Firmcast& form, std::ostream& out);

}  // namespace fc::batch
