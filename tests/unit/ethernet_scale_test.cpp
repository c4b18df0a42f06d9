// The scale's Ethernet boot loader on the simulated network: the message list
// the system builds from a file, sent as the loader sends it, leaves the image
// the file describes and is answered with the loader's own checksum; and each
// of the scale's faults does what it says, as the program's end of the
// connection sees it.
#include <gtest/gtest.h>

#include "firmware/checksum_memoria.h"
#include "firmware/file_loader.h"
#include "firmware/message_fields.h"
#include "firmware/preprocesa_file.h"
#include "platform/socket_errors.h"
#include "sim/ethernet_scale.h"
#include "support/intel_hex.h"
#include "unit/firmware_fixture.h"
#include "virtual/virtual_host.h"
#include "virtual/virtual_network.h"
#include "virtual/virtual_pump.h"

namespace fc {
namespace {

using test::bankRecord;
using test::endRecord;
using test::hexFile;
using test::intelRecord;

const Ipv4 kScaleIp{192, 168, 1, 60};
constexpr int kPort = 3000;
constexpr Micros kSecond = 1'000'000;

std::string wire(const MensajeEth& m) {
    return m.tipo + m.direccion + m.numero + m.datos;
}

// Data records of 16 bytes for `bytes` from address 0 of the bank.
std::vector<std::string> dataRecords(const std::vector<int>& bytes) {
    std::vector<std::string> lines;
    for (std::size_t k = 0; k < bytes.size(); k += 16) {
        std::vector<int> chunk(bytes.begin() + k, bytes.begin() + std::min(k + 16, bytes.size()));
        lines.push_back(intelRecord(static_cast<int>(k), 0, chunk));
    }
    return lines;
}

// A file of two banks: 3 KiB at 0x40000 and 2.25 KiB at 0x50000.
std::vector<std::string> twoBankFile() {
    std::vector<std::string> lines = {bankRecord(0x4000)};
    for (const std::string& l : dataRecords(test::patternBytes(1, 3 * 1024))) lines.push_back(l);
    lines.push_back(bankRecord(0x5000));
    for (const std::string& l : dataRecords(test::patternBytes(2, 2 * 1024 + 256)))
        lines.push_back(l);
    lines.push_back(endRecord());
    return lines;
}

// The value of a hex digit, 0 for anything else, as the loader reads it.
int hexValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return 0;
}
int hexAt(const std::string& text, std::size_t from, std::size_t count) {
    int value = 0;
    for (std::size_t k = from; k < from + count; ++k)
        value = value * 16 + (k < text.size() ? hexValue(text[k]) : 0);
    return value;
}
// The loader's reading of a code 5 answer: characters 7-8 high, 9-10 low.
long checksumIn(const std::string& answer) {
    return hexAt(answer, 6, 2) * 256L + hexAt(answer, 8, 2);
}
// The loader's reading of a code 10 answer: characters 6 and 7.
int errorIn(const std::string& answer) {
    return hexAt(answer, 5, 1) * 16 + hexAt(answer, 6, 1);
}

class EthernetScaleTest : public ::testing::Test {
  protected:
    EthernetScaleTest() {
        host.listen(kPort, [this] {
            auto scale = std::make_unique<EthernetScale>();
            scale->faults = faults;
            scale->eraseTime = eraseTime;
            scales.push_back(scale.get());
            return EthernetScale::acceptOrRefuse(std::move(scale));
        });
    }

    // The system's own message list and image of `lines`.
    void prepare(const std::vector<std::string>& lines) {
        screen.useFile(hexFile(lines));
        PreprocessPanel preprocess = screen.preprocess();
        ASSERT_TRUE(PreprocesaFile(preprocess, screen.fichero_firmware));
        ReaderPanel reader = screen.reader();
        ASSERT_TRUE(carga_ficheroL(reader, screen.segment()));
        mensajes = screen.mensajes;
    }

    void connect() {
        transport = net.newTcpTransport();
        transport->startConnect(kScaleIp, kPort);
        passMicros(net.roundTrip);
        ASSERT_TRUE(transport->status().connected);
    }
    void passMicros(Micros us) {
        pump.advanceTo(pump.nowMicros() + us);
        transport->service();
    }
    // Sends message `j` and waits up to `limit` for the scale to take it all.
    bool sendAndWait(std::size_t j, Micros limit = 500'000) {
        transport->send(wire(mensajes.at(j)));
        for (Micros waited = 0; waited < limit; waited += 1000) {
            passMicros(1000);
            if (transport->unacknowledged() == 0)
                return true;
        }
        return false;
    }
    // Waits up to `limit` for an answer and returns what came.
    std::string awaitAnswer(Micros limit) {
        std::string got;
        for (Micros waited = 0; waited < limit && got.empty(); waited += 1000) {
            passMicros(1000);
            got += transport->receive();
        }
        return got;
    }
    EthernetScale& scale() { return *scales.at(0); }

    test::FirmwareScreen screen;
    std::vector<MensajeEth> mensajes;
    VirtualPump pump;
    VirtualNetwork net{pump};
    VirtualHost& host = net.addHost(kScaleIp, {0, 1, 2, 3, 4, 5});
    EthernetScale::Faults faults;
    Micros eraseTime = 2 * kSecond;
    std::vector<EthernetScale*> scales;
    std::unique_ptr<TcpTransport> transport;
};

TEST_F(EthernetScaleTest, AWholeLoadErasesLoadsTheFileAndReportsTheLoadersChecksum) {
    prepare(twoBankFile());
    ASSERT_EQ(mensajes.front().tipo, tipoDe(tipo_msg::kBorrado));
    ASSERT_EQ(mensajes.back().tipo, tipoDe(tipo_msg::kFinCarga));
    connect();

    ASSERT_TRUE(sendAndWait(0));
    EXPECT_FALSE(scale().erased());
    EXPECT_EQ(awaitAnswer(kSecond), "") << "no answer before the erase time";
    EXPECT_EQ(awaitAnswer(2 * kSecond), std::string(1, '\x03'));
    EXPECT_TRUE(scale().erased());

    for (std::size_t j = 1; j < mensajes.size(); ++j)
        ASSERT_TRUE(sendAndWait(j)) << "message " << j;
    const std::string answer = awaitAnswer(kSecond);
    ASSERT_GE(answer.size(), 10u);
    EXPECT_EQ(answer[0], '\x05');
    const long expected = calcula_checksum_memoria(screen.memoria);
    EXPECT_EQ(checksumIn(answer), expected);

    std::vector<std::uint8_t> types;
    for (const MensajeEth& m : mensajes) types.push_back(static_cast<std::uint8_t>(m.tipo[0]));
    EXPECT_EQ(scale().types(), types);
    // The image the file describes: the loader's image over the same range.
    const std::vector<std::uint8_t> loaders(screen.memoria.begin(),
                                            screen.memoria.begin() + EthernetScale::kFlashSize);
    EXPECT_TRUE(scale().image() == loaders);
    EXPECT_EQ(scale().image()[0], static_cast<std::uint8_t>(test::patternBytes(1, 1)[0]));
    EXPECT_EQ(scale().image()[0x10000 + 2 * 1024 + 255],
              static_cast<std::uint8_t>(test::patternBytes(2, 2 * 1024 + 256).back()));
    EXPECT_EQ(scale().image()[0x10000 + 2 * 1024 + 256], 0xFF);
    EXPECT_FALSE(scale().macStored());
}

TEST_F(EthernetScaleTest, AScaleByteMessageFilledOutByTheNextRecordIsTakenWhole) {
    std::vector<std::string> lines = {bankRecord(0x4000)};
    for (const std::string& l : dataRecords(test::patternBytes(3, 1024))) lines.push_back(l);
    lines.push_back(intelRecord(0, 0x66, {0x5A}));
    lines.push_back(endRecord());
    prepare(lines);
    ASSERT_EQ(wire(mensajes.at(3)).size(), 1029u);
    eraseTime = 0;
    connect();
    for (std::size_t j = 0; j < mensajes.size(); ++j)
        ASSERT_TRUE(sendAndWait(j)) << "message " << j;
    std::string answers = awaitAnswer(kSecond) + awaitAnswer(kSecond);
    ASSERT_EQ(answers.size(), 11u);
    EXPECT_EQ(answers[1], '\x05');
    EXPECT_EQ(checksumIn(answers.substr(1)), calcula_checksum_memoria(screen.memoria));
    EXPECT_EQ(scale().scaleBytes(), "\x5A");
    EXPECT_EQ(scale().types(), (std::vector<std::uint8_t>{0x55, 0x02, 0x00, 0x66, 0x01, 0x67}));
}

TEST_F(EthernetScaleTest, StoresTheMacOfA0x68Message) {
    prepare(twoBankFile());
    MensajeEth mac = mensajeDeControl(0x68);
    mac.datos = std::string("\x02\xC0\xDE\x01\x02\xFE", 6) + std::string(1018, '0');
    mensajes.push_back(mac);
    eraseTime = 0;
    connect();
    for (std::size_t j = 0; j < mensajes.size(); ++j)
        ASSERT_TRUE(sendAndWait(j)) << "message " << j;
    ASSERT_TRUE(scale().macStored());
    EXPECT_EQ(scale().mac(), (std::array<std::uint8_t, 6>{0x02, 0xC0, 0xDE, 0x01, 0x02, 0xFE}));
    EXPECT_EQ(scale().types().back(), 0x68);
}

TEST_F(EthernetScaleTest, RefusesTheConnectionWhenToldTo) {
    faults.refuseConnections = true;
    transport = net.newTcpTransport();
    transport->startConnect(kScaleIp, kPort);
    passMicros(2 * net.roundTrip);
    EXPECT_FALSE(transport->status().connected);
    EXPECT_EQ(transport->status().error, sck::kConnectionRefused);
}

// The scale's receive buffer still takes what fits after it stops, so the
// sender is held up a message or so later.
TEST_F(EthernetScaleTest, StopsReadingAtMessageKAndTheSenderWaitsForEver) {
    prepare(twoBankFile());
    faults.stopReadingAt = 3;
    eraseTime = 0;
    connect();
    for (std::size_t j = 0; j < 3; ++j) ASSERT_TRUE(sendAndWait(j)) << "message " << j;
    for (std::size_t j = 3; j < 6; ++j) transport->send(wire(mensajes.at(j)));
    passMicros(600 * kSecond);
    EXPECT_GT(transport->unacknowledged(), 0);
    EXPECT_EQ(scale().messagesTaken(), 3);
    EXPECT_TRUE(transport->status().connected);
}

TEST_F(EthernetScaleTest, AnswersCode10WithItsErrorNumberAtMessageKAndReadsNoMore) {
    prepare(twoBankFile());
    faults.failAt = 2;
    faults.errorNumber = 0xA7;
    eraseTime = 0;
    connect();
    ASSERT_TRUE(sendAndWait(0));
    EXPECT_EQ(awaitAnswer(kSecond), "\x03");
    ASSERT_TRUE(sendAndWait(1));
    ASSERT_TRUE(sendAndWait(2));
    const std::string answer = awaitAnswer(kSecond);
    ASSERT_EQ(answer.size(), 7u);
    EXPECT_EQ(answer[0], '\x0A');
    EXPECT_EQ(errorIn(answer), 0xA7);
    for (std::size_t j = 3; j < 6; ++j) transport->send(wire(mensajes.at(j)));
    passMicros(10 * kSecond);
    EXPECT_GT(transport->unacknowledged(), 0);
    EXPECT_EQ(scale().messagesTaken(), 3);
}

TEST_F(EthernetScaleTest, AWrongChecksumIsNotTheLoaders) {
    prepare(twoBankFile());
    faults.wrongChecksum = true;
    eraseTime = 0;
    connect();
    for (std::size_t j = 0; j < mensajes.size(); ++j) ASSERT_TRUE(sendAndWait(j));
    const std::string answers = awaitAnswer(kSecond) + awaitAnswer(kSecond);
    ASSERT_EQ(answers.size(), 11u);
    EXPECT_EQ(answers[1], '\x05');
    EXPECT_NE(checksumIn(answers.substr(1)), calcula_checksum_memoria(screen.memoria));
    EXPECT_TRUE(scale().image() ==
                std::vector<std::uint8_t>(screen.memoria.begin(),
                                          screen.memoria.begin() + EthernetScale::kFlashSize));
}

TEST_F(EthernetScaleTest, ASilentEraseErasesWithoutCode3AndTakesTheRest) {
    prepare(twoBankFile());
    faults.silentErase = true;
    connect();
    ASSERT_TRUE(sendAndWait(0));
    EXPECT_EQ(awaitAnswer(40 * kSecond), "");
    EXPECT_TRUE(scale().erased());
    for (std::size_t j = 1; j < mensajes.size(); ++j) ASSERT_TRUE(sendAndWait(j));
    const std::string answer = awaitAnswer(kSecond);
    ASSERT_EQ(answer.size(), 10u);
    EXPECT_EQ(checksumIn(answer), calcula_checksum_memoria(screen.memoria));
}

TEST_F(EthernetScaleTest, TakesNothingDuringItsErase) {
    prepare(twoBankFile());
    connect();
    ASSERT_TRUE(sendAndWait(0));
    transport->send(wire(mensajes.at(1)));
    passMicros(eraseTime - 10'000);
    EXPECT_EQ(scale().messagesTaken(), 1);
    EXPECT_EQ(transport->receive(), "");
    passMicros(20'000);
    EXPECT_EQ(transport->receive(), "\x03");
    EXPECT_EQ(scale().messagesTaken(), 2);
}

TEST_F(EthernetScaleTest, ASlowReaderTakesMessagesAtItsRate) {
    prepare(twoBankFile());
    faults.readBytesPerSecond = 1029;  // a message a second
    connect();
    for (std::size_t j = 1; j < 6; ++j) transport->send(wire(mensajes.at(j)));
    passMicros(kSecond / 2);
    EXPECT_EQ(scale().messagesTaken(), 0);
    passMicros(kSecond);
    EXPECT_EQ(scale().messagesTaken(), 1);
    EXPECT_GT(transport->unacknowledged(), 0);
    passMicros(2 * kSecond);
    EXPECT_EQ(scale().messagesTaken(), 3);
    passMicros(2 * kSecond);
    EXPECT_EQ(scale().messagesTaken(), 5);
    EXPECT_EQ(transport->unacknowledged(), 0);
}

TEST_F(EthernetScaleTest, ASplitAnswerComesInTwoSegmentsThatMakeTheWholeAnswer) {
    prepare(twoBankFile());
    faults.splitAnswers = true;
    faults.splitDelay = 5000;
    eraseTime = 0;
    connect();
    ASSERT_TRUE(sendAndWait(0));
    EXPECT_EQ(awaitAnswer(kSecond), "\x03");  // one byte: nothing to split
    for (std::size_t j = 1; j < mensajes.size(); ++j) ASSERT_TRUE(sendAndWait(j));
    std::vector<std::string> segments;
    for (Micros waited = 0; waited < kSecond; waited += 100) {
        passMicros(100);
        std::string got = transport->receive();
        if (!got.empty())
            segments.push_back(got);
    }
    ASSERT_EQ(segments.size(), 2u);
    // The first half alone: its checksum digits are not there yet.
    ASSERT_EQ(segments[0].size(), 5u);
    EXPECT_EQ(segments[0][0], '\x05');
    ASSERT_EQ(segments[1].size(), 5u);
    EXPECT_EQ(checksumIn(segments[0] + segments[1]), calcula_checksum_memoria(screen.memoria));
    EXPECT_EQ(scale().answers().back(), segments[0] + segments[1]);
}

// A link that keeps what the scale sends and its timed actions, for a device
// that lives across connections, as behind a real port.
class KeptLink : public TcpDeviceLink {
  public:
    void deviceSend(const std::string& bytes) override { sent += bytes; }
    void deviceClose() override {}
    void deviceReset() override {}
    void deviceAfter(Micros, std::function<void()> action) override {
        actions.push_back(std::move(action));
    }
    Micros now() const override { return 0; }
    void runActions() {
        auto due = std::move(actions);
        actions.clear();
        for (auto& a : due) a();
    }
    std::string sent;
    std::vector<std::function<void()>> actions;
};

std::string controlWire(int tipo) {
    return wire(mensajeDeControl(static_cast<Byte>(tipo)));
}

TEST(EthernetScaleAcrossConnections, MessagesCountAgainOnANewConnectionWhileFlashAndMacStay) {
    EthernetScale scale;
    scale.faults.stopReadingAt = 2;
    KeptLink first;
    scale.onConnect(first);
    scale.onReceive(controlWire(0x55));
    EXPECT_FALSE(scale.reading);  // erasing
    first.runActions();
    EXPECT_EQ(first.sent, "\x03");
    EXPECT_TRUE(scale.reading);
    MensajeEth mac = mensajeDeControl(0x68);
    mac.datos = std::string("\x02\xC0\xDE\x00\x00\x07", 6) + std::string(1018, '0');
    scale.onReceive(wire(mac));
    EXPECT_FALSE(scale.reading) << "message 2 of this connection is not read";
    EXPECT_EQ(scale.readLimit(), 1);

    KeptLink second;
    scale.onConnect(second);
    EXPECT_TRUE(scale.reading);
    scale.onReceive(controlWire(0x67));
    EXPECT_TRUE(scale.reading);
    EXPECT_EQ(second.sent, EthernetScale::checksumAnswer(0x7FFF));
    EXPECT_TRUE(scale.erased());
    EXPECT_TRUE(scale.macStored());
    EXPECT_EQ(scale.mac()[5], 0x07);
    EXPECT_EQ(scale.types(), (std::vector<std::uint8_t>{0x55, 0x68, 0x67}));
}

TEST(EthernetScaleAcrossConnections, AMessageTakenInPiecesIsOneMessage) {
    EthernetScale scale;
    scale.eraseTime = 0;
    KeptLink link;
    scale.onConnect(link);
    const std::string end = controlWire(0x67);
    scale.onReceive(end.substr(0, 1));
    EXPECT_EQ(scale.readLimit(), 1028);
    scale.onReceive(end.substr(1, 500));
    EXPECT_EQ(scale.readLimit(), 528);
    EXPECT_EQ(scale.messagesTaken(), 0);
    scale.onReceive(end.substr(501));
    EXPECT_EQ(scale.messagesTaken(), 1);
    EXPECT_EQ(scale.readLimit(), 1);
    // The flash before any erase holds 0x00: its checksum is 0xFFFF.
    EXPECT_EQ(link.sent, EthernetScale::checksumAnswer(0xFFFF));
    EXPECT_EQ(link.sent, std::string("\x05") + "00000FFFF");
}

}  // namespace
}  // namespace fc
