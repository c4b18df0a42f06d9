// A simulated TCP device behind a real listening socket on 127.0.0.1, reached
// by a plain client socket: bytes both ways, the device's pace and buffer
// holding the client back, and the ways a device ends a connection.
#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/sockios.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <functional>
#include <memory>
#include <string>

#include "platform/linux/socket_address.h"
#include "sim/host/tcp_device_host.h"
#include "platform/linux/real_pump.h"
#include "sim/device/tcp_device.h"
#include "support/byte_values.h"
#include "support/pump_until.h"

namespace fc {
namespace {

// How long a step may take before the test gives up waiting for it: a guard
// against hanging, not a measure of speed.
constexpr std::int64_t kPatienceMs = 10'000;

class RecordingDevice : public TcpDevice {
  public:
    using TcpDevice::closeConnection;
    using TcpDevice::resetConnection;
    using TcpDevice::send;

    void onConnect(TcpDeviceLink& link) override {
        TcpDevice::onConnect(link);
        ++connections;
    }
    void onReceive(const std::string& bytes) override {
        heard += bytes;
        if (echo)
            send(bytes);
    }
    void onProgramClosed() override { programClosed = true; }

    std::string heard;
    int connections = 0;
    bool programClosed = false;
    bool echo = false;
};

// A plain client: the program's end, non-blocking.
class Client {
  public:
    explicit Client(int port) {
        fd_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in to = socketAddress(Ipv4{127, 0, 0, 1}, port);
        // The kernel completes the handshake from the backlog, before the
        // host accepts.
        if (::connect(fd_, reinterpret_cast<sockaddr*>(&to), sizeof to) != 0) {
            ::close(fd_);
            fd_ = -1;
            return;
        }
        fcntl(fd_, F_SETFL, fcntl(fd_, F_GETFL) | O_NONBLOCK);
    }
    ~Client() {
        if (fd_ >= 0)
            ::close(fd_);
    }
    bool ok() const { return fd_ >= 0; }
    // Writes what the socket takes now; returns how much.
    long writeSome(const std::string& bytes) {
        ssize_t n = ::send(fd_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        return n > 0 ? static_cast<long>(n) : 0;
    }
    // Reads what has arrived; records the end or the error it meets.
    std::string take() {
        std::string got;
        char buffer[4096];
        for (;;) {
            ssize_t n = ::recv(fd_, buffer, sizeof buffer, 0);
            if (n > 0) {
                got.append(buffer, static_cast<size_t>(n));
                continue;
            }
            if (n == 0)
                ended = true;
            else if (errno != EAGAIN && errno != EWOULDBLOCK)
                error = errno;
            return got;
        }
    }
    // Bytes written and not yet acknowledged by the device's stack.
    int unacknowledged() const {
        int queued = 0;
        ioctl(fd_, SIOCOUTQ, &queued);
        return queued;
    }
    void shutdownWriting() { ::shutdown(fd_, SHUT_WR); }

    bool ended = false;
    int error = 0;

  private:
    int fd_ = -1;
};

class TcpDeviceHostTest : public ::testing::Test {
  protected:
    void start() { host = std::make_unique<TcpDeviceHost>(pump, device, "127.0.0.1", 0); }
    bool pumpUntil(const std::function<bool()>& done) {
        return fc::pumpUntil(pump, done, kPatienceMs);
    }
    void pumpFor(std::int64_t ms) {
        std::int64_t end = pump.now() + ms;
        while (pump.now() < end) pump.doEvents();
    }

    RealPump pump;
    RecordingDevice device;
    std::unique_ptr<TcpDeviceHost> host;
};

TEST_F(TcpDeviceHostTest, ListensOnAPortOfItsOwnWhenGivenNone) {
    start();
    EXPECT_GT(host->port(), 0);
    EXPECT_FALSE(host->connected());
}

TEST_F(TcpDeviceHostTest, EveryByteValueReachesTheDeviceAndItsAnswerTheClient) {
    device.echo = true;
    start();
    Client client(host->port());
    ASSERT_TRUE(client.ok()) << std::strerror(errno);
    ASSERT_TRUE(pumpUntil([&] { return device.connections == 1; }));
    ASSERT_EQ(client.writeSome(allByteValues()), 256);
    std::string answer;
    ASSERT_TRUE(pumpUntil([&] {
        answer += client.take();
        return answer.size() >= 256;
    }));
    EXPECT_EQ(device.heard, allByteValues());
    EXPECT_EQ(answer, allByteValues());
}

TEST_F(TcpDeviceHostTest, ASlowDeviceReadsAtItsPaceAndHoldsTheClientBack) {
    device.readBytesPerSecond = 1000;
    device.receiveBuffer = 1024;
    start();
    Client client(host->port());
    ASSERT_TRUE(client.ok());
    const std::string data(20 * 1024, 'q');
    long written = 0;
    std::int64_t end = pump.now() + 1000;
    while (pump.now() < end) {
        written += client.writeSome(data.substr(static_cast<size_t>(written)));
        pump.doEvents();
    }
    // After a second only part has been read, and the rest waits for the
    // device's stack to acknowledge it.
    EXPECT_GT(device.heard.size(), 0u);
    EXPECT_LT(device.heard.size(), data.size() / 2);
    EXPECT_GT(client.unacknowledged(), 0);
    // At full speed the rest comes in.
    device.readBytesPerSecond = 0;
    ASSERT_TRUE(pumpUntil([&] {
        written += client.writeSome(data.substr(static_cast<size_t>(written)));
        return device.heard.size() == data.size();
    }));
    EXPECT_EQ(device.heard, data);
    EXPECT_TRUE(pumpUntil([&] { return client.unacknowledged() == 0; }));
}

TEST_F(TcpDeviceHostTest, ADeviceThatStopsReadingLeavesTheClientUnacknowledged) {
    device.reading = false;
    start();
    Client client(host->port());
    ASSERT_TRUE(client.ok());
    ASSERT_TRUE(pumpUntil([&] { return device.connections == 1; }));
    long written = client.writeSome(std::string(64 * 1024, 'w'));
    ASSERT_GT(written, 0);
    pumpFor(200);
    EXPECT_TRUE(device.heard.empty());
    EXPECT_GT(client.unacknowledged(), 0);
    device.reading = true;
    EXPECT_TRUE(pumpUntil([&] { return static_cast<long>(device.heard.size()) == written; }));
}

TEST_F(TcpDeviceHostTest, AResetReachesTheClientAsConnectionReset) {
    start();
    Client client(host->port());
    ASSERT_TRUE(client.ok());
    ASSERT_TRUE(pumpUntil([&] { return device.connections == 1; }));
    device.resetConnection();
    EXPECT_FALSE(host->connected());
    ASSERT_TRUE(pumpUntil([&] {
        client.take();
        return client.error != 0 || client.ended;
    }));
    EXPECT_EQ(client.error, ECONNRESET);
}

TEST_F(TcpDeviceHostTest, AnOrderlyCloseReachesTheClientAsTheEnd) {
    start();
    Client client(host->port());
    ASSERT_TRUE(client.ok());
    ASSERT_TRUE(pumpUntil([&] { return device.connections == 1; }));
    client.writeSome("unread");
    device.send("bye");
    device.closeConnection();
    std::string got;
    ASSERT_TRUE(pumpUntil([&] {
        got += client.take();
        return client.ended || client.error != 0;
    }));
    EXPECT_EQ(got, "bye");
    EXPECT_TRUE(client.ended);
    EXPECT_EQ(client.error, 0);
}

TEST_F(TcpDeviceHostTest, TheClientsCloseReachesTheDeviceAndTheNextClientIsTaken) {
    start();
    {
        Client first(host->port());
        ASSERT_TRUE(first.ok());
        ASSERT_TRUE(pumpUntil([&] { return device.connections == 1; }));
        first.shutdownWriting();
        ASSERT_TRUE(pumpUntil([&] { return device.programClosed; }));
    }
    EXPECT_FALSE(host->connected());
    Client second(host->port());
    ASSERT_TRUE(second.ok());
    ASSERT_TRUE(pumpUntil([&] { return device.connections == 2; }));
    second.writeSome("again");
    EXPECT_TRUE(pumpUntil([&] { return device.heard == "again"; }));
}

}  // namespace
}  // namespace fc
