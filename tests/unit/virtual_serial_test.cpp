// The simulated serial wire: line timing on the virtual clock, what each end
// hears, faults, and the serial control's operations over it.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/runtime_error.h"
#include "platform/serial_line.h"
#include "virtual/virtual_serial.h"
#include "virtual/virtual_pump.h"
#include "platform/window_timer.h"
#include "sim/echo_device.h"
#include "support/byte_values.h"

namespace fc {
namespace {

LineSettings settingsOf(const std::string& text) {
    LineSettings s;
    EXPECT_TRUE(parseLineSettings(text, s)) << text;
    return s;
}

// Microseconds from the start of a run of back-to-back characters to the end
// of the n-th one, rounded up.
Micros charactersEnd(long n, int bits, int baud) {
    return (n * bits * 1000000L + baud - 1) / baud;
}

// A device that keeps what it heard, when, and every DTR change.
class RecordingDevice : public SerialDevice {
  public:
    using SerialDevice::after;
    using SerialDevice::send;
    using SerialDevice::SerialDevice;

    void onReceive(Byte byte) override {
        heard += static_cast<char>(byte);
        times.push_back(now());
    }
    void onDtrChanged(bool on) override { dtr.push_back(on); }

    std::string heard;
    std::vector<Micros> times;
    std::vector<bool> dtr;
};

void expectError(int number, const std::function<void()>& operation) {
    try {
        operation();
        ADD_FAILURE() << "no run-time error; expected " << number;
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), number) << e.what();
    }
}

class VirtualSerial : public ::testing::Test {
  protected:
    void openAt(const std::string& settings, Integer commPort = 1) {
        line.setCommPort(commPort);
        line.setSettings(settings);
        line.setPortOpen(true);
    }
    // Lets the world run for `ms` while the program does nothing.
    void passMs(int ms) { pump.advanceTo(pump.nowMicros() + Micros(ms) * 1000); }
    void passTo(Micros when) { pump.advanceTo(when); }

    VirtualPump pump;
    VirtualSerialOpener opener{pump};
    SerialLine line{pump, opener};
};

TEST_F(VirtualSerial, TenCharactersAt9600N81TakeTenBitsEach) {
    RecordingDevice device(settingsOf("9600,N,8,1"));
    opener.attach(1, device);
    openAt("9600,N,8,1");
    passMs(3);
    Micros start = pump.nowMicros();
    line.output("0123456789");
    passMs(50);
    ASSERT_EQ(device.heard, "0123456789");
    for (long k = 0; k < 10; ++k) {
        EXPECT_EQ(device.times[k] - start, charactersEnd(k + 1, 10, 9600)) << "character " << k;
    }
    EXPECT_EQ(device.times.back() - start, 10417);  // 10 * 10 / 9600 s, rounded up
}

// A character is a start bit, the data bits, the parity bit and the stop
// bits: 7E1 is as long as 8N1, and 8E1 one bit longer.
TEST_F(VirtualSerial, SevenDataBitsEvenParityTakeTenBitsACharacter) {
    RecordingDevice device(settingsOf("57600,E,7,1"));
    opener.attach(1, device);
    openAt("57600,e,7,1");
    Micros start = pump.nowMicros();
    line.output("0123456789");
    passMs(10);
    ASSERT_EQ(device.times.size(), 10u);
    EXPECT_EQ(device.times.back() - start, charactersEnd(10, 10, 57600));
    EXPECT_EQ(device.times.back() - start, 1737);
}

TEST_F(VirtualSerial, EightDataBitsEvenParityTakeElevenBitsACharacter) {
    RecordingDevice device(settingsOf("57600,E,8,1"));
    opener.attach(1, device);
    openAt("57600,E,8,1");
    Micros start = pump.nowMicros();
    line.output("0123456789");
    passMs(10);
    ASSERT_EQ(device.times.size(), 10u);
    EXPECT_EQ(device.times.back() - start, charactersEnd(10, 11, 57600));
    EXPECT_EQ(device.times.back() - start, 1910);
}

TEST_F(VirtualSerial, TheWireRunsAtTheSpeedTheSettingsTextSays) {
    RecordingDevice at2400(settingsOf("2400,N,8,1"));
    RecordingDevice at9600(settingsOf("9600,N,8,1"));
    opener.attach(1, at2400);
    opener.attach(2, at9600);
    openAt("2400,N,8,1", 1);
    Micros start = pump.nowMicros();
    line.output("0123456789");
    passMs(100);
    ASSERT_EQ(at2400.heard, "0123456789");
    EXPECT_EQ(at2400.times.back() - start, 41667);
    line.setPortOpen(false);

    openAt("2400,N,8,1", 2);
    line.output("0123456789");
    passMs(100);
    EXPECT_EQ(at9600.heard, "") << "a device at 9600 made sense of characters sent at 2400";
}

TEST_F(VirtualSerial, ADeviceThatOnlyAnswersAt19200IsReachedOnceTheSettingsChange) {
    EchoDevice device(settingsOf("19200,N,8,1"));
    opener.attach(1, device);
    openAt("57600,N,8,1");
    line.output("H0000");
    passMs(20);
    EXPECT_EQ(device.heard(), "") << "the device heard characters sent at another speed";
    EXPECT_EQ(line.inBufferCount(), 0);

    line.setSettings("19200,N,8,1");  // takes effect at once, port still open
    line.output("H0000");
    passMs(20);
    EXPECT_EQ(device.heard(), "H0000");
    EXPECT_EQ(line.input(), "H0000");
}

TEST_F(VirtualSerial, WhatTheDeviceSaysUnderOtherSettingsIsLost) {
    RecordingDevice device(settingsOf("19200,N,8,1"));
    opener.attach(1, device);
    openAt("57600,N,8,1");
    device.send("\x06");
    passMs(20);
    EXPECT_EQ(line.inBufferCount(), 0);
}

TEST_F(VirtualSerial, ADifferenceInDataBitsOrParityLosesTheBytes) {
    RecordingDevice eightNone(settingsOf("57600,N,8,1"));
    RecordingDevice sevenOdd(settingsOf("57600,O,7,1"));
    opener.attach(1, eightNone);
    opener.attach(2, sevenOdd);
    openAt("57600,E,7,1", 1);
    line.output("abc");
    passMs(5);
    line.setPortOpen(false);
    openAt("57600,E,7,1", 2);
    line.output("abc");
    passMs(5);
    EXPECT_EQ(eightNone.heard, "");
    EXPECT_EQ(sevenOdd.heard, "");
}

TEST_F(VirtualSerial, ASevenBitDeviceSeesOnlySevenBitsOfEachByte) {
    EchoDevice device(settingsOf("57600,E,7,1"));
    opener.attach(1, device);
    openAt("57600,e,7,1");
    line.output(allByteValues());
    passMs(200);
    std::string masked;
    for (int v = 0; v < 256; ++v) masked += static_cast<char>(v & 0x7F);
    EXPECT_EQ(device.heard(), masked);
    EXPECT_EQ(line.inBufferCount(), 256);
    EXPECT_EQ(line.input(), masked);
}

TEST_F(VirtualSerial, EveryByteValuePassesUnchangedAtEightBits) {
    EchoDevice device(settingsOf("19200,N,8,1"));
    opener.attach(1, device);
    openAt("19200,N,8,1");
    line.output(allByteValues());
    passMs(400);
    EXPECT_EQ(device.heard(), allByteValues());
    EXPECT_EQ(line.input(), allByteValues());
}

TEST_F(VirtualSerial, AnEchoComesBackAfterTwoCharacterTimes) {
    EchoDevice device(settingsOf("9600,N,8,1"));
    opener.attach(1, device);
    openAt("9600,N,8,1");
    Micros start = pump.nowMicros();
    line.output("A");
    passTo(start + 2 * 1042 - 1);
    EXPECT_EQ(line.inBufferCount(), 0);
    passTo(start + 2 * 1042);
    EXPECT_EQ(line.input(), "A");
}

TEST_F(VirtualSerial, OutBufferCountCountsDownAsCharactersLeave) {
    RecordingDevice device(settingsOf("9600,N,8,1"));
    opener.attach(1, device);
    openAt("9600,N,8,1");
    Micros start = pump.nowMicros();
    line.output("12345");
    EXPECT_EQ(line.outBufferCount(), 5);
    passTo(start + 1041);
    EXPECT_EQ(line.outBufferCount(), 5) << "the first character is still on the wire";
    passTo(start + 1042);
    EXPECT_EQ(line.outBufferCount(), 4);
    passTo(start + charactersEnd(4, 10, 9600));
    EXPECT_EQ(line.outBufferCount(), 1);
    passTo(start + charactersEnd(5, 10, 9600));
    EXPECT_EQ(line.outBufferCount(), 0);
}

TEST_F(VirtualSerial, ADrainWaitThatPumpsEndsWhenTheLastCharacterHasLeft) {
    RecordingDevice device(settingsOf("9600,N,8,1"));
    opener.attach(1, device);
    openAt("9600,N,8,1");
    Micros start = pump.nowMicros();
    line.output("0123456789");
    while (line.outBufferCount() != 0) pump.doEvents();
    EXPECT_EQ(pump.nowMicros() - start, 10417);
    EXPECT_EQ(device.heard, "0123456789");
}

TEST_F(VirtualSerial, InputArrivesOneCharacterAtATime) {
    RecordingDevice device(settingsOf("9600,N,8,1"));
    opener.attach(1, device);
    openAt("9600,N,8,1");
    Micros start = pump.nowMicros();
    device.send("abc");
    passTo(start + 1041);
    EXPECT_EQ(line.inBufferCount(), 0);
    passTo(start + 1042);
    EXPECT_EQ(line.inBufferCount(), 1);
    passTo(start + charactersEnd(2, 10, 9600));
    EXPECT_EQ(line.inBufferCount(), 2);
    passTo(start + charactersEnd(3, 10, 9600));
    EXPECT_EQ(line.inBufferCount(), 3);
    EXPECT_EQ(line.input(), "abc");
    EXPECT_EQ(line.inBufferCount(), 0);
    EXPECT_EQ(line.input(), "");
}

TEST_F(VirtualSerial, PuttingInBufferCountZeroThrowsAwayWhatArrived) {
    RecordingDevice device(settingsOf("9600,N,8,1"));
    opener.attach(1, device);
    openAt("9600,N,8,1");
    device.send("old");
    passMs(10);
    ASSERT_EQ(line.inBufferCount(), 3);
    line.setInBufferCount(0);
    EXPECT_EQ(line.inBufferCount(), 0);
    device.send("new");
    passMs(10);
    EXPECT_EQ(line.input(), "new");
    expectError(380, [&] { line.setInBufferCount(1); });
}

TEST_F(VirtualSerial, ASilentDeviceHearsNothingAndSaysNothing) {
    EchoDevice device(settingsOf("9600,N,8,1"));
    VirtualWire& wire = opener.attach(1, device);
    openAt("9600,N,8,1");
    wire.setSilent(true);
    line.output("ping");
    passMs(20);
    EXPECT_EQ(device.heard(), "");
    EXPECT_EQ(line.inBufferCount(), 0);
    wire.setSilent(false);
    line.output("ping");
    passMs(20);
    EXPECT_EQ(device.heard(), "ping");
    EXPECT_EQ(line.input(), "ping");
}

TEST_F(VirtualSerial, ADeafDeviceStillTalksAndAMuteOneStillListens) {
    RecordingDevice device(settingsOf("9600,N,8,1"));
    VirtualWire& wire = opener.attach(1, device);
    openAt("9600,N,8,1");
    wire.setDeaf(true);
    line.output("x");
    device.send("y");
    passMs(10);
    EXPECT_EQ(device.heard, "");
    EXPECT_EQ(line.input(), "y");
    wire.setDeaf(false);
    wire.setMute(true);
    line.output("x");
    device.send("y");
    passMs(10);
    EXPECT_EQ(device.heard, "x");
    EXPECT_EQ(line.input(), "");
}

TEST_F(VirtualSerial, APulledCableGoesQuietWithoutErrorsAndDropsDtr) {
    RecordingDevice device(settingsOf("9600,N,8,1"));
    VirtualWire& wire = opener.attach(1, device);
    line.setDTREnable(true);
    openAt("9600,N,8,1");
    wire.disconnect();
    EXPECT_EQ(device.dtr, (std::vector<bool>{true, false}));
    EXPECT_NO_THROW(line.output("lost"));
    device.send("lost too");
    passMs(20);
    EXPECT_EQ(line.outBufferCount(), 0) << "the port still sends, into nothing";
    EXPECT_EQ(device.heard, "");
    EXPECT_EQ(line.inBufferCount(), 0);
    EXPECT_EQ(line.input(), "");

    wire.reconnect();
    EXPECT_EQ(device.dtr, (std::vector<bool>{true, false, true}));
    line.output("back");
    passMs(20);
    EXPECT_EQ(device.heard, "back");
}

TEST_F(VirtualSerial, ASlowFactorStretchesEveryCharacter) {
    RecordingDevice device(settingsOf("9600,N,8,1"));
    VirtualWire& wire = opener.attach(1, device);
    openAt("9600,N,8,1");
    wire.setSlowFactor(2.0);
    Micros start = pump.nowMicros();
    line.output("0123456789");
    passMs(50);
    ASSERT_EQ(device.times.size(), 10u);
    EXPECT_EQ(device.times.back() - start, 20834);  // twice 10 * 10 / 9600 s, rounded up
}

TEST_F(VirtualSerial, NewSettingsApplyFromTheNextCharacter) {
    RecordingDevice device(settingsOf("9600,N,8,1"));
    opener.attach(1, device);
    openAt("9600,N,8,1");
    Micros start = pump.nowMicros();
    line.output("ab");
    passTo(start + 500);
    line.setSettings("19200,N,8,1");
    passTo(start + 1042);
    EXPECT_EQ(device.heard, "a") << "the character already on the wire keeps its speed";
    EXPECT_EQ(line.outBufferCount(), 1);
    passTo(start + 1042 + 520);
    EXPECT_EQ(line.outBufferCount(), 1);
    passTo(start + 1042 + 521);  // 10 bits at 19200, rounded up
    EXPECT_EQ(line.outBufferCount(), 0);
    EXPECT_EQ(device.heard, "a") << "a 9600 device made sense of a character sent at 19200";
}

TEST_F(VirtualSerial, ClosingThePortDropsWhatHasNotStarted) {
    RecordingDevice device(settingsOf("9600,N,8,1"));
    opener.attach(1, device);
    openAt("9600,N,8,1");
    Micros start = pump.nowMicros();
    line.output("0123456789");
    passTo(start + 1500);  // '0' has arrived, '1' is on the wire
    line.setPortOpen(false);
    passMs(50);
    EXPECT_EQ(device.heard, "01");
}

TEST_F(VirtualSerial, BytesArrivingAtAClosedPortAreLost) {
    RecordingDevice device(settingsOf("9600,N,8,1"));
    opener.attach(1, device);
    openAt("9600,N,8,1");
    line.setPortOpen(false);
    device.send("early");
    passMs(20);
    openAt("9600,N,8,1");
    EXPECT_EQ(line.inBufferCount(), 0);
}

TEST_F(VirtualSerial, DtrChangesReachTheDevice) {
    RecordingDevice device(settingsOf("9600,N,8,1"));
    opener.attach(1, device);
    line.setDTREnable(true);
    EXPECT_TRUE(device.dtr.empty()) << "DTR reached the device before the port was open";
    openAt("9600,N,8,1");
    line.setDTREnable(false);
    line.setDTREnable(true);
    line.setPortOpen(false);  // closing a port lowers DTR
    EXPECT_EQ(device.dtr, (std::vector<bool>{true, false, true, false}));
}

TEST_F(VirtualSerial, ADeviceTimesItsOwnAnswersOnTheWireClock) {
    RecordingDevice device(settingsOf("9600,N,8,1"));
    opener.attach(1, device);
    openAt("9600,N,8,1");
    Micros start = pump.nowMicros();
    device.after(3000000, [&] { device.send("K"); });
    passTo(start + 3000000 + 1041);
    EXPECT_EQ(line.inBufferCount(), 0);
    passTo(start + 3000000 + 1042);
    EXPECT_EQ(line.input(), "K");
}

TEST_F(VirtualSerial, AnAnswerWaitOnASilentDeviceEndsByItsTimeout) {
    EchoDevice device(settingsOf("57600,E,7,1"));
    VirtualWire& wire = opener.attach(1, device);
    wire.setSilent(true);
    openAt("57600,e,7,1");
    WindowTimer timerout(pump, "timerout");
    bool timedOut = false;
    timerout.onTimer = [&] { timedOut = true; };
    line.output("H0000:020000550000A9\r");
    Micros start = pump.nowMicros();
    timerout.setInterval(500);
    timerout.setEnabled(true);
    while (line.inBufferCount() < 1 && !timedOut) pump.doEvents();
    timerout.setEnabled(false);
    EXPECT_TRUE(timedOut);
    EXPECT_EQ(pump.nowMicros() - start, 500000);
    EXPECT_EQ(line.inBufferCount(), 0);
}

TEST_F(VirtualSerial, OperationsOnAClosedPortAreError8018) {
    EchoDevice device;
    opener.attach(1, device);
    expectError(8018, [&] { line.output("x"); });
    expectError(8018, [&] { line.outBufferCount(); });
    expectError(8018, [&] { line.inBufferCount(); });
    expectError(8018, [&] { line.setInBufferCount(0); });
    expectError(8018, [&] { line.input(); });
    openAt("9600,N,8,1");
    line.setPortOpen(false);
    EXPECT_FALSE(line.portOpen());
    expectError(8018, [&] { line.output("x"); });
    expectError(8018, [&] { line.input(); });
}

TEST_F(VirtualSerial, AComPortWithNothingPluggedInIsError8002) {
    EchoDevice device;
    opener.attach(1, device);
    line.setCommPort(2);
    expectError(8002, [&] { line.setPortOpen(true); });
    EXPECT_FALSE(line.portOpen());
}

TEST_F(VirtualSerial, ASecondOpenOfAPortInUseIsError8005) {
    EchoDevice device;
    opener.attach(1, device);
    openAt("9600,N,8,1");
    SerialLine other(pump, opener);
    other.setCommPort(1);
    expectError(8005, [&] { other.setPortOpen(true); });
    line.setPortOpen(false);
    EXPECT_NO_THROW(other.setPortOpen(true));
    EXPECT_TRUE(other.portOpen());
}

TEST(LineSettings, ParsesTheSettingsTexts) {
    LineSettings s;
    ASSERT_TRUE(parseLineSettings("57600,e,7,1", s));
    EXPECT_EQ(s, (LineSettings{57600, 'E', 7, 1}));
    ASSERT_TRUE(parseLineSettings("19200,N,8,1", s));
    EXPECT_EQ(s, (LineSettings{19200, 'N', 8, 1}));
    ASSERT_TRUE(parseLineSettings("115200,n,8,2", s));
    EXPECT_EQ(s, (LineSettings{115200, 'N', 8, 2}));
    ASSERT_TRUE(parseLineSettings("14400,m,7,1", s));
    EXPECT_EQ(s.parity, 'M');
    ASSERT_TRUE(parseLineSettings("28800,S,8,1", s));
    EXPECT_EQ(s.parity, 'S');
    ASSERT_TRUE(parseLineSettings("9600,O,5,1", s));
    EXPECT_EQ(s.dataBits, 5);
}

TEST(LineSettings, RefusesWhatIsNotASettingsText) {
    LineSettings s{1200, 'O', 6, 2};
    const LineSettings before = s;
    for (const char* text :
         {"", "9600", "9600,N,8", "9600,N,8,1,1", "12345,N,8,1", "9600,X,8,1", "9600,NN,8,1",
          "9600,N,9,1", "9600,N,3,1", "9600,N,8,3", "fast,N,8,1", "9600,N,eight,1"}) {
        EXPECT_FALSE(parseLineSettings(text, s)) << '"' << text << '"';
    }
    EXPECT_EQ(s, before) << "a refused text changed the settings";
}

TEST(LineSettings, CountsTheBitsOfACharacter) {
    EXPECT_EQ(settingsOf("9600,N,8,1").bitsPerCharacter(), 10);
    EXPECT_EQ(settingsOf("57600,E,7,1").bitsPerCharacter(), 10);
    EXPECT_EQ(settingsOf("57600,E,8,1").bitsPerCharacter(), 11);
    EXPECT_EQ(settingsOf("9600,N,8,2").bitsPerCharacter(), 11);
    EXPECT_EQ(settingsOf("9600,M,8,2").bitsPerCharacter(), 12);
}

TEST_F(VirtualSerial, ABadSettingsTextIsError380AndLeavesTheLineAsItWas) {
    RecordingDevice device(settingsOf("9600,N,8,1"));
    opener.attach(1, device);
    openAt("9600,N,8,1");
    expectError(380, [&] { line.setSettings("9600,Q,8,1"); });
    EXPECT_EQ(line.settings(), "9600,N,8,1");
    line.output("ok");
    passMs(10);
    EXPECT_EQ(device.heard, "ok");
}

}  // namespace
}  // namespace fc
