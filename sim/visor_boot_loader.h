// The MV-510 visor's boot loader: an 8051-family flash microcontroller's
// in-system programming loader, which takes Intel HEX records and uses the
// record types above 01 as commands. It knows no transport: bytes come in,
// answers go out through the function it is given, and its timed work runs
// through the timer it is given, so that one loader sits on a serial wire
// and behind a UDP bridge alike.
//
// What it does:
// - switched on, it waits for the synchronisation character "U" and echoes
//   it; before that it hears nothing else. Afterwards it echoes every
//   character it hears (a "U" included);
// - a record is taken from ":" to its checksum; then it answers ".", CR, LF
//   once done, or "X", CR, LF for a bad checksum;
// - type 00 programs data (flash bits are only ever cleared); type 03 data
//   07 erases the whole flash, 06 00 00 writes 00 to the Boot Status Byte;
//   type 04 mode 01 checks a range blank, mode 00 dumps it in lines of 16
//   bytes, each "\r\n", four address digits, "=" and 32 hex digits, and
//   nothing after the last line's digits; type 05
//   data 07 01 answers the Boot Status Byte as two hex digits before the ".".
#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "platform/event_source.h"
#include "platform/vb_types.h"

namespace fc {

class VisorBootLoader {
  public:
    struct Config {
        Micros eraseTime = 400'000;
        Micros blankCheckTime = 30'000;
        Micros programTime = 3'000;  // one record of 128 bytes
        Micros dumpTime = 500;
        Micros commandTime = 1'000;  // the Boot Status Byte
    };
    struct Faults {
        long wrongDumpByteAt = -1;      // the dump shows this address's byte changed
        Micros slowAnswer = 0;          // added before every answer to a record
        bool doubleSync = false;        // "U" answered "UU"
        long silentAtRecord = -1;       // this record (counted from 0) gets no answer
        std::set<long> silentDumps;     // these dumps (counted from 0) get no answer
        long wrongAnswerAtRecord = -1;  // this record answered "X" CR LF
        bool bsbStuck = false;          // the byte write is answered but leaves the byte
    };

    using Output = std::function<void(const std::string&)>;
    using Timer = std::function<void(Micros delay, std::function<void()> action)>;
    using Clock = std::function<Micros()>;

    VisorBootLoader(const Config& config, Output output, Timer timer, Clock clock);

    Faults faults;

    // Bytes heard, in one piece: a serial character, or a whole datagram.
    void receive(const std::string& bytes);
    // Off for `duration` from now: it hears and says nothing, and once on
    // again waits for "U".
    void switchOffFor(Micros duration);
    bool on() const;

    static constexpr long kFlashSize = 0x10000;
    const std::vector<Byte>& flash() const { return flash_; }
    std::vector<Byte>& flash() { return flash_; }
    Byte bootStatusByte() const { return bsb_; }
    bool synchronised() const { return synced_; }
    int erases() const { return erases_; }
    int blankChecks() const { return blankChecks_; }
    int syncs() const { return syncs_; }
    // Every record taken, in order, as it came.
    const std::vector<std::string>& records() const { return records_; }
    // The start address of every block programmed and of every dump, in order.
    const std::vector<long>& programmed() const { return programmed_; }
    const std::vector<long>& dumped() const { return dumped_; }
    // Everything that reached the visor, switched on or not, with the time
    // it came.
    struct Heard {
        Micros at;
        std::string bytes;
    };
    const std::vector<Heard>& heard() const { return heard_; }

  private:
    void hear(char c);
    void recordComplete(const std::string& record);
    void perform(const std::string& record, long number);
    void answer(Micros work, const std::string& text);
    std::string dump(long from, long to) const;
    bool blank(long from, long to) const;

    Config config_;
    Output output_;
    Timer timer_;
    Clock clock_;
    std::vector<Byte> flash_;
    Byte bsb_ = 0x01;
    bool synced_ = false;
    Micros offUntil_ = 0;
    std::string record_;
    std::vector<std::string> records_;
    std::vector<long> programmed_;
    std::vector<long> dumped_;
    std::vector<Heard> heard_;
    long dumps_ = 0;
    int erases_ = 0;
    int blankChecks_ = 0;
    int syncs_ = 0;
};

}  // namespace fc
