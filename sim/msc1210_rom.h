// A Serie_G scale's MSC1210 boot ROM on the serial line. A pulse on DTR
// (raised, then lowered) resets the chip into its ROM monitor, which answers
// the first carriage return with "\r\n" and its banner. It echoes every
// command character; a register write "RWrrvv" is answered by CR LF, a page
// erase "CPaaaa" and the two halves of a whole-chip erase "M8000", "M0000"
// by CR "ok" CR LF once the flash is erased; "E" by CR LF. "L" is neither
// echoed nor answered: it starts the ROM's record loader at once, which says
// nothing until a record has ended (the loader sends its first record straight
// after "L" and takes the first character that comes as the answer to it). In
// load mode it takes Intel HEX records ended by
// CR LF, writes their data into its 32 KB of flash (a write can only clear
// bits, as flash does) or, at 0x807E, into its hardware configuration
// registers, and answers "." for each, "T" for the end record.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "sim/device/serial_device.h"

namespace fc {

class Msc1210Rom : public SerialDevice {
  public:
    struct Config {
        LineSettings settings{19200, 'N', 8, 1};
        std::string banner = "MSC1210 Ver:0005\r\n>";
        Micros pageEraseTime = 4'000;
        Micros chipEraseTime = 40'000;
        Micros recordTime = 600;  // writing one record into flash
        // Already reset into the ROM, waiting for its carriage return: the
        // ROM behind a pty, which carries no DTR to pulse.
        bool startsInRom = false;
    };
    // Faults to switch on. Records are counted from 0 in the order they come.
    struct Faults {
        int silentResets = 0;             // so many resets that answer nothing at all
        std::string bannerInstead;        // answered (after "\r\n") in place of the banner
        bool registerWritesFail = false;  // register writes answered without their CR
        long wrongAnswerAtRecord = -1;    // this record answered with `wrongAnswer`
        char wrongAnswer = '?';
        // Sent as soon as a data record's type has arrived, in place of the
        // "." at its end: an answer that is all there before the loader
        // reads it, "." and what follows.
        std::string answerEarly;
        long silentAtRecord = -1;     // this record gets no answer
        bool wrongEndAnswer = false;  // the end record answered with "." instead of "T"
    };

    Msc1210Rom();
    explicit Msc1210Rom(const Config& config);

    Faults faults;

    void onReceive(Byte byte) override;
    void onDtrChanged(bool on) override;

    static constexpr long kFlashSize = 0x8000;

    int resets() const { return resets_; }
    const std::vector<Byte>& flash() const { return flash_; }
    // The address of every data record written, in order.
    const std::vector<long>& recordAddresses() const { return recordAddresses_; }
    // The pages erased one by one, by address, in order; and whole-chip erases.
    const std::vector<long>& erasedPages() const { return erasedPages_; }
    int chipErases() const { return chipErases_; }
    const std::map<int, int>& registers() const { return registers_; }
    // HCR1 and HCR0 once the configuration record set them (-1 before).
    int hcr1() const { return hcr1_; }
    int hcr0() const { return hcr0_; }
    bool endSeen() const { return endSeen_; }
    bool inLoadMode() const { return mode_ == Mode::Load; }
    // Every command the monitor took, in order.
    const std::vector<std::string>& commands() const { return commands_; }

  private:
    enum class Mode { Running, Reset, Banner, Monitor, Load };

    void monitorCharacter(char c);
    void commandComplete();
    void loadCharacter(char c);
    void recordComplete(const std::string& record);
    void answerRecord(const std::string& answer);

    Config config_;
    Mode mode_ = Mode::Running;
    std::string command_;
    std::string record_;
    std::vector<Byte> flash_;
    std::vector<long> recordAddresses_;
    std::vector<long> erasedPages_;
    std::vector<std::string> commands_;
    std::map<int, int> registers_;
    int resets_ = 0;
    int chipErases_ = 0;
    bool chipEraseArmed_ = false;
    long records_ = 0;
    int hcr1_ = -1;
    int hcr0_ = -1;
    bool endSeen_ = false;
    bool answeredEarly_ = false;
};

}  // namespace fc
