// A scale's Ethernet boot loader: the far end of the Ethernet load. It takes
// the loader's messages by counting bytes (type, bank, number, payload: 1029
// bytes each, whatever the type), keeps a flash image of the
// loadable area 0x40000-0xEFFFF, and answers as the boot loader does: code 3
// once its erase is done, code 5 with the checksum of its image after the end
// of the load (0x67), and code 10 with an error number when it is told to
// fail. A 0x68 message's first six payload bytes become its MAC. It can be
// told to refuse connections, stop reading at a message, fail at a message,
// report a wrong checksum, erase without a word, read slowly, and send each
// answer in two segments. Message numbers, and so the faults at a message,
// count over one connection; the flash, the MAC and the record last the
// device's life.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "sim/device/tcp_device.h"

namespace fc {

class EthernetScale : public TcpDevice {
  public:
    // Message types the boot loader knows.
    static constexpr std::uint8_t kErase = 0x55;
    static constexpr std::uint8_t kBank = 0x02;
    static constexpr std::uint8_t kData = 0x00;
    static constexpr std::uint8_t kEndOfProgram = 0x01;
    static constexpr std::uint8_t kScaleByte = 0x66;
    static constexpr std::uint8_t kEndOfLoad = 0x67;
    static constexpr std::uint8_t kMac = 0x68;

    // Answer codes.
    static constexpr std::uint8_t kErased = 3;
    static constexpr std::uint8_t kChecksum = 5;
    static constexpr std::uint8_t kError = 10;

    // The flash the loader writes: linear 0x40000 to 0xEFFFF.
    static constexpr long kFlashBase = 0x40000;
    static constexpr long kFlashSize = 0xB0000;

    // Message numbers count from 0 over one connection; -1 never.
    struct Faults {
        bool refuseConnections = false;
        // Messages before this one are taken whole; this one is never read,
        // so the window closes and the sender's bytes stay unacknowledged.
        long stopReadingAt = -1;
        // This message is taken whole, then answered with code 10 and
        // `errorNumber`, and nothing more is read.
        long failAt = -1;
        int errorNumber = 0;
        // The checksum answer is one more than the image's checksum.
        bool wrongChecksum = false;
        // The erase happens but no code 3 follows.
        bool silentErase = false;
        // The code the erase is answered with, when it is answered.
        std::uint8_t eraseCode = kErased;
        // The end of the load (0x67) is taken and never answered.
        bool silentEndOfLoad = false;
        // This message is taken whole, then the connection is reset.
        long dropAt = -1;
        // Read pace in bytes a second; 0 as fast as bytes come.
        double readBytesPerSecond = 0;
        // Every answer goes out as two segments, `splitDelay` apart: its
        // first half (at least one byte), then the rest.
        bool splitAnswers = false;
        Micros splitDelay = 1000;
    };

    // How long the erase of the flash takes; nothing is read meanwhile.
    Micros eraseTime = 2'000'000;
    Faults faults;
    // Told of a MAC taken from a 0x68 message, which the scale then uses as
    // its own (its host answers with it from then on).
    std::function<void(const std::array<std::uint8_t, 6>&)> onMacStored;

    // The flash holds 0x00 everywhere until it is erased to 0xFF.
    EthernetScale();

    // The device for a new connection, or none (a refused connection) when
    // its faults say so.
    static std::unique_ptr<TcpDevice> acceptOrRefuse(std::unique_ptr<EthernetScale> scale);

    void onConnect(TcpDeviceLink& link) override;
    void onReceive(const std::string& bytes) override;
    long readLimit() const override;

    // The size of a whole message of type `tipo`.
    static long messageSize(std::uint8_t tipo);
    // The image's checksum: its 16-bit words, low byte first, added modulo
    // 65536, subtracted from 65535.
    static long checksumOf(const std::vector<std::uint8_t>& image);
    // The bytes of each answer.
    static std::string erasedAnswer();
    // What this scale answers after its erase (code 3 unless told otherwise).
    std::string eraseAnswer() const;
    static std::string checksumAnswer(long checksum);
    static std::string errorAnswer(int errorNumber);

    // What it has taken and done.
    const std::vector<std::uint8_t>& types() const { return types_; }
    long messagesTaken() const { return static_cast<long>(types_.size()); }
    const std::vector<std::uint8_t>& image() const { return image_; }
    bool erased() const { return erased_; }
    bool macStored() const { return macStored_; }
    const std::array<std::uint8_t, 6>& mac() const { return mac_; }
    // Bytes of 0x66 messages, in order.
    const std::string& scaleBytes() const { return scaleBytes_; }
    // Answers as they were meant, whole, in order.
    const std::vector<std::string>& answers() const { return answers_; }

  private:
    void take(const std::string& message);
    void storeData(const std::string& message);
    void answer(const std::string& bytes);
    void finishErase();

    std::string pending_;
    long connectionMessages_ = 0;
    std::vector<std::uint8_t> types_;
    std::vector<std::uint8_t> image_;
    bool erased_ = false;
    bool failed_ = false;
    bool macStored_ = false;
    std::array<std::uint8_t, 6> mac_{};
    std::string scaleBytes_;
    std::vector<std::string> answers_;
};

}  // namespace fc
