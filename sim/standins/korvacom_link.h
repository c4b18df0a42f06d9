// The line from the communications driver to the display, as its switches
// name it: "-m 1" a TCP connection to the address and port of "-d dd#IP:PORT",
// "-m 0" the serial port of "-p COMn" (the device of FIRMCAST_COM<n>, else
// /dev/ttyS<n-1>) at the speed of "-v". Records go out as lines ended by
// CR LF; the display's answers come back as lines.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace fc::sim {

class KorvacomLink {
  public:
    ~KorvacomLink();
    // Opens the line the switches name; false, with the reason, when it
    // cannot be opened.
    bool open(const std::vector<std::string>& switches, std::string& reason);
    // Sends one record; for a question, waits up to `answerMs` for the answer.
    std::optional<std::string> carry(const std::string& record, int answerMs);

  private:
    bool openTcp(const std::string& address, std::string& reason);
    bool openSerial(const std::string& port, const std::string& speed, std::string& reason);
    std::optional<std::string> readLine(int ms);

    int fd_ = -1;
    std::string pending_;
};

}  // namespace fc::sim
