// How fast the loader's TCP socket moves 1029-byte messages to a scale that
// reads as soon as bytes arrive, each send waiting for its SendComplete as the
// Ethernet load does: messages a second, and the time from SendData to
// SendComplete (median and 99th percentile). Run once with the loader's
// options (buffers 0, no coalescing) and once with the platform's defaults,
// to show what the pacing by the scale costs. Over loopback, with the device
// in the same process on the same pump.
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "platform/linux/linux_network.h"
#include "sim/host/tcp_device_host.h"
#include "platform/linux/real_pump.h"
#include "platform/socket_state.h"
#include "platform/tcp_socket.h"
#include "sim/sink_scale.h"

namespace {

using namespace fc;

double percentile(std::vector<double> values, double p) {
    std::sort(values.begin(), values.end());
    return values[static_cast<size_t>(p * static_cast<double>(values.size() - 1))];
}

void applyLoaderOptions(Network& network, TcpSocket& socket) {
    int handle = static_cast<int>(socket.socketHandle());
    network.setsockopt(handle, sockopt::kSolSocket, sockopt::kSoRcvbuf, 0);
    network.setsockopt(handle, sockopt::kSolSocket, sockopt::kSoSndbuf, 0);
    network.setsockopt(handle, sockopt::kIpprotoTcp, sockopt::kTcpNodelay, 1);
}

void run(bool loaderOptions, int messages) {
    RealPump pump;
    LinuxNetwork network;
    SinkScale scale;
    scale.keepLimit = 0;
    TcpDeviceHost host(pump, scale, "127.0.0.1", 0);
    TcpSocket socket(pump, network);
    int completes = 0;
    socket.onSendComplete = [&] { ++completes; };
    socket.setRemoteHost("127.0.0.1");
    socket.setRemotePort(host.port());
    socket.connect();
    if (loaderOptions)
        applyLoaderOptions(network, socket);
    while (socket.state() == sck::kConnecting) pump.doEvents();
    if (socket.state() != sck::kConnected) {
        std::fprintf(stderr, "no connection\n");
        return;
    }
    const std::string message(1029, '\x30');
    std::vector<double> turnarounds;
    Micros start = pump.nowMicros();
    for (int i = 0; i < messages; ++i) {
        Micros sent = pump.nowMicros();
        socket.sendData(message);
        while (completes <= i) pump.doEvents();
        turnarounds.push_back(static_cast<double>(pump.nowMicros() - sent));
    }
    double seconds = static_cast<double>(pump.nowMicros() - start) / 1e6;
    std::printf(
        "%-18s %6d messages in %.3f s: %8.0f messages/s, SendData to SendComplete median %.0f us, "
        "p99 %.0f us\n",
        loaderOptions ? "loader's options" : "platform defaults", messages, seconds,
        messages / seconds, percentile(turnarounds, 0.5), percentile(turnarounds, 0.99));
    socket.close();
}

}  // namespace

int main() {
    const int messages = 2000;  // about 2 MB, a large firmware image
    run(true, messages);
    run(false, messages);
    return 0;
}
