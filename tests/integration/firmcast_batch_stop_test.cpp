// firmcast-batch loads that cannot go on, run as the built program against
// firmcast-sim on a pty: a port that is missing, not a serial device or held
// by another program ends the run (exit 1), saying the port's device and the
// system's reason and where the run stopped, instead of waiting for an
// operator who isn't there; and the progress of a load in each of its forms.
#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "integration/batch_run.h"
#include "support/firmware_files.h"
#include "support/first_line_process.h"
#include "support/intel_hex.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

const std::string kBin = FIRMCAST_BIN_DIR;
const std::string kStoppedOnTheConnection =
    "firmcast-batch: stopped on step 1 (the connection): the last box was \"Error at port COM1\"";

// firmcast-sim on a pty of its own; its first line names the tty.
class Sim {
  public:
    explicit Sim(const std::string& eraseMs = "50")
        : process_({kBin + "/firmcast-sim", "--device", "numbered", "--erase-ms", eraseMs}) {}
    const std::string& tty() const { return process_.firstLine(); }

  private:
    FirstLineProcess process_;
};

class BatchStops : public ::testing::Test {
  protected:
    // A load of a Serie_N scale on COM1, with `env` as well; the program's
    // folder is the test's own.
    BatchResult load(BatchEnvironment env) {
        env.emplace_back("FIRMCAST_HOME", home.path().string());
        return runBatchProcess({"--model", "1", "--com", "1", "--file", file}, env);
    }
    std::string errorLog() const {
        return contentOfFile((home.path() / "Balanza_Logs" / "Errores.log").string());
    }
    // What a run that stopped on the connection step printed: the port's
    // failure with its device and reason, then where it stopped.
    void expectStoppedOnTheConnection(const BatchResult& run, const std::string& device,
                                      const std::string& reason) {
        EXPECT_FALSE(run.hung) << "the run waited for an operator: " << run.said();
        EXPECT_EQ(run.status, 1) << run.said();
        EXPECT_EQ(run.out, "msgbox: Error at port COM1\n");
        const std::string cause = "firmcast-batch: COM1 (" + device + "): " + reason;
        EXPECT_EQ(run.errLines(), (std::vector<std::string>{cause, kStoppedOnTheConnection}));
        EXPECT_NE(errorLog().find("COM1 (" + device + "): " + reason), std::string::npos)
            << errorLog();
    }

    TempFolder folder, home;
    std::string file = folder.write("fw.hex", intelHexFile(10));
};

TEST_F(BatchStops, CheckFileRefusesAFileWithABadLineBeforeThePortIsOpened) {
    std::string bad = hexRecord(0, 0x0010, patternBytes(2, 16));
    bad.back() = bad.back() == '0' ? '1' : '0';
    std::string badFile =
        folder.write("bad.hex", hexFile({hexRecord(0, 0, patternBytes(1, 16)), bad, endRecord()}));
    const std::string device = (folder.path() / "ttyNone").string();
    BatchResult run =
        runBatchProcess({"--model", "1", "--com", "1", "--check-file", "--file", badFile},
                        {{"FIRMCAST_COM1", device}, {"FIRMCAST_HOME", home.path().string()}});
    EXPECT_EQ(run.status, 2) << run.said();
    EXPECT_EQ(run.out, "") << "no box: the port was never opened";
    EXPECT_EQ(run.errLines(),
              (std::vector<std::string>{"firmcast-batch: --file " + badFile +
                                        ": File check: line 2 is not a sound record (its form "
                                        "or its checksum is wrong)"}));
}

TEST_F(BatchStops, CheckFileLetsASoundFileLoad) {
    Sim sim;
    ASSERT_FALSE(sim.tty().empty()) << "firmcast-sim gave no tty";
    BatchResult run =
        runBatchProcess({"--model", "1", "--com", "1", "--check-file", "--file", file},
                        {{"FIRMCAST_COM1", sim.tty()}, {"FIRMCAST_HOME", home.path().string()}});
    EXPECT_EQ(run.status, 0) << run.said();
    EXPECT_EQ(run.out, "msgbox: The scale is ready\n");
}

TEST_F(BatchStops, AMissingPortEndsTheRunWithItsCause) {
    const std::string device = (folder.path() / "ttyNone").string();
    expectStoppedOnTheConnection(load({{"FIRMCAST_COM1", device}}), device,
                                 "No such file or directory");
}

TEST_F(BatchStops, APortThatIsARegularFileEndsTheRun) {
    expectStoppedOnTheConnection(load({{"FIRMCAST_COM1", file}}), file,
                                 "Inappropriate ioctl for device: not a serial device");
}

TEST_F(BatchStops, DevNullAsThePortEndsTheRun) {
    expectStoppedOnTheConnection(load({{"FIRMCAST_COM1", "/dev/null"}}), "/dev/null",
                                 "Inappropriate ioctl for device: not a serial device");
}

TEST_F(BatchStops, AnUnsetPortIsTtyS0OfTheDeviceFolderAndEndsTheRunWhenMissing) {
    TempFolder dev;  // a device folder with no ttyS0 in it
    expectStoppedOnTheConnection(
        load({{"FIRMCAST_COM1", ""}, {"FIRMCAST_DEV_ROOT", dev.path().string()}}),
        (dev.path() / "ttyS0").string(), "No such file or directory");
}

TEST_F(BatchStops, APortHeldByAnotherProgramEndsTheRun) {
    Sim sim;
    ASSERT_FALSE(sim.tty().empty()) << "firmcast-sim gave no tty";
    int held = open(sim.tty().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    ASSERT_GE(held, 0) << "the test cannot open " << sim.tty();
    ASSERT_EQ(flock(held, LOCK_EX | LOCK_NB), 0);
    BatchResult run = load({{"FIRMCAST_COM1", sim.tty()}});
    close(held);
    expectStoppedOnTheConnection(
        run, sim.tty(), "Resource temporarily unavailable: another program holds the port");
}

TEST_F(BatchStops, TheSamePortLoadsOnceNoOneHoldsIt) {
    Sim sim;
    ASSERT_FALSE(sim.tty().empty()) << "firmcast-sim gave no tty";
    BatchResult run = load({{"FIRMCAST_COM1", sim.tty()}});
    EXPECT_FALSE(run.hung) << run.said();
    EXPECT_EQ(run.status, 0) << run.said();
    EXPECT_EQ(run.out, "msgbox: The scale is ready\n");
    // No failure of the port in the log: only the pty's note that it takes
    // no low latency may be there.
    EXPECT_THAT(errorLog(), ::testing::Not(::testing::HasSubstr("lanza_linea")));
    EXPECT_THAT(errorLog(), ::testing::Not(::testing::HasSubstr("COM1 (")));
}

// ---- --progress -------------------------------------------------------------

class BatchProgress : public ::testing::Test {
  protected:
    BatchResult load(const std::string& progress, const std::string& passes = "1") {
        std::vector<std::string> args{"--model",  "1",    "--com",  "1",
                                      "--passes", passes, "--file", file};
        if (!progress.empty()) {
            args.push_back("--progress");
            args.push_back(progress);
        }
        return runBatchProcess(args, {{"FIRMCAST_COM1", sim.tty()}});
    }
    void SetUp() override { ASSERT_FALSE(sim.tty().empty()) << "firmcast-sim gave no tty"; }

    TempFolder folder;
    // 1 segment record, 60 data records, the end record: 62 lines.
    std::string file = folder.write("fw.hex", intelHexFile(60));
    Sim sim;
};

TEST_F(BatchProgress, PlainIsTheDefaultOffATerminalWithALineAPhaseAndATenth) {
    BatchResult run = load("");
    EXPECT_EQ(run.status, 0) << run.said();
    EXPECT_EQ(run.out, "msgbox: The scale is ready\n");
    std::vector<std::string> lines = run.errLines();
    ASSERT_GE(lines.size(), 4u) << run.said();
    EXPECT_EQ(lines[0], "COM1 pass 1: connect");
    EXPECT_EQ(lines[1], "COM1 pass 1: erase");
    EXPECT_EQ(lines.back(), "COM1 pass 1: ready");
    EXPECT_EQ(lines[lines.size() - 2], "COM1 pass 1: load 100% (line 62 of 62)");
    // Between them, the load: one line as it begins, then one a tenth.
    int lastTenth = -1;
    for (std::size_t i = 2; i + 1 < lines.size(); ++i) {
        int percentage = -1, line = -1, total = -1;
        ASSERT_EQ(std::sscanf(lines[i].c_str(), "COM1 pass 1: load %d%% (line %d of %d)",
                              &percentage, &line, &total),
                  3)
            << lines[i];
        EXPECT_EQ(total, 62);
        EXPECT_GT(percentage / 10, lastTenth) << lines[i];
        lastTenth = percentage / 10;
    }
    EXPECT_EQ(lastTenth, 10);
    EXPECT_GE(lines.size(), 2u + 10u + 1u);  // at least a line for each tenth
}

TEST_F(BatchProgress, NoneSaysNothing) {
    BatchResult run = load("none");
    EXPECT_EQ(run.status, 0) << run.said();
    EXPECT_EQ(run.out, "msgbox: The scale is ready\n");
    EXPECT_EQ(run.err, "");
}

// Checks each line of `text` with python3: a JSON object with the fields of a
// progress event; prints the phases in order, one a line, with the pass.
const char* const kJsonCheck = R"(
import json, sys
last = {}
for number, text in enumerate(open(sys.argv[1]), 1):
    event = json.loads(text)
    assert isinstance(event, dict), "line %d is not an object" % number
    for field, kind in (("device", str), ("pass", int), ("phase", str), ("line", int),
                        ("total", int), ("percentage", int)):
        assert isinstance(event.get(field), kind), "line %d: %s" % (number, field)
    assert 0 <= event["percentage"] <= 100
    key = (event["pass"], event["phase"])
    if key != last.get("key"):
        print(event["pass"], event["phase"])
    if event["phase"] == "load" and last.get("key") == key:
        assert event["percentage"] > last["percentage"], "line %d goes back" % number
        assert event["line"] > last["line"], "line %d goes back" % number
    last = {"key": key, "percentage": event["percentage"], "line": event["line"]}
    if event["phase"] == "ready":
        assert (event["line"], event["total"], event["percentage"]) == (62, 62, 100)
    assert event["device"] == "COM1"
)";

TEST_F(BatchProgress, JsonIsAnObjectALineWithTheFieldsOfEachEvent) {
    if (std::system("python3 -c pass >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "python3 is not installed: the JSON lines cannot be parsed here";
    BatchResult run = load("json", "2");
    EXPECT_EQ(run.status, 0) << run.said();
    EXPECT_EQ(run.out, "msgbox: The scale is ready\nmsgbox: The scale is ready\n");
    const std::string events = folder.write("events.json", run.err);
    const std::string script = folder.write("check.py", kJsonCheck);
    const std::string phases = folder.path().string() + "/phases.txt";
    int status = std::system(("python3 " + script + " " + events + " >" + phases).c_str());
    EXPECT_EQ(status, 0) << run.err;
    EXPECT_EQ(contentOfFile(phases),
              "1 connect\n1 erase\n1 load\n1 ready\n2 connect\n2 erase\n2 load\n2 ready\n");
}

TEST_F(BatchProgress, AutoOnATerminalDrawsTheBar) {
    int master = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(master, 0);
    ASSERT_EQ(grantpt(master), 0);
    ASSERT_EQ(unlockpt(master), 0);
    const std::string slaveName = ptsname(master);
    const std::string program = kBin + "/firmcast-batch";
    pid_t pid = fork();
    if (pid == 0) {
        int slave = open(slaveName.c_str(), O_RDWR | O_NOCTTY);
        dup2(slave, STDERR_FILENO);
        int nothing = open("/dev/null", O_RDWR);
        dup2(nothing, STDOUT_FILENO);
        setenv("FIRMCAST_COM1", sim.tty().c_str(), 1);
        execl(program.c_str(), program.c_str(), "--model", "1", "--com", "1", "--file",
              file.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    // Read the terminal while the program runs, so that it never blocks on it.
    std::string drawn;
    int raw = 0;
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(120);
    bool ended = false;
    while (!ended && std::chrono::steady_clock::now() < limit) {
        pollfd p{master, POLLIN, 0};
        if (poll(&p, 1, 10) > 0 && (p.revents & POLLIN) != 0) {
            char buffer[512];
            ssize_t n = read(master, buffer, sizeof buffer);
            if (n > 0)
                drawn.append(buffer, static_cast<std::size_t>(n));
        }
        ended = waitpid(pid, &raw, WNOHANG) == pid;
    }
    if (!ended) {
        kill(pid, SIGKILL);
        waitpid(pid, &raw, 0);
    }
    close(master);
    ASSERT_TRUE(ended) << "firmcast-batch did not end: " << drawn;
    EXPECT_EQ(WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, 0) << drawn;
    EXPECT_NE(drawn.find("\r[" + std::string(40, '#') + "] 100%"), std::string::npos) << drawn;
    EXPECT_EQ(drawn.find("pass 1:"), std::string::npos) << drawn;
}

}  // namespace
}  // namespace fc::test
