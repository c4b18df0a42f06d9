// The headless program's dry runs, run as the built program: the lines it
// prints for a generated two-bank file are checked against what the file
// must give, worked out here from the bytes that were written into it (the
// CRC-32 with a table-free implementation of its own); and the files an
// Ethernet load could not take, which fail with their reason in one line.
#include <stdlib.h>
#include <sys/wait.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "integration/batch_run.h"
#include "support/firmware_files.h"
#include "support/intel_hex.h"
#include "support/scenario_rig.h"

namespace fc {
namespace {

using test::bankRecord;
using test::endRecord;
using test::hexPair;
using test::intelRecord;

const std::string kBatch = std::string(FIRMCAST_BIN_DIR) + "/firmcast-batch";

struct BatchRun {
    int status = -1;
    std::vector<std::string> lines;
};

BatchRun runBatch(const std::string& arguments) {
    BatchRun run;
    FILE* pipe = popen((kBatch + " " + arguments + " 2>/dev/null").c_str(), "r");
    if (pipe == nullptr)
        return run;
    std::string line;
    for (int c; (c = std::fgetc(pipe)) != EOF;) {
        if (c == '\n') {
            run.lines.push_back(line);
            line.clear();
        } else {
            line.push_back(static_cast<char>(c));
        }
    }
    const int status = pclose(pipe);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

std::uint32_t crc32(const std::string& bytes) {
    std::uint32_t crc = 0xFFFFFFFFu;
    for (char c : bytes) {
        crc ^= static_cast<unsigned char>(c);
        for (int k = 0; k < 8; ++k) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

std::string msgLine(int index, int tipo, int dirLow, int dirHigh, int numero,
                    const std::string& datos) {
    char crc[9];
    std::snprintf(crc, sizeof crc, "%08X", static_cast<unsigned>(crc32(datos)));
    return "msg " + std::to_string(index) + " " + hexPair(tipo) + " " + hexPair(dirLow) +
           hexPair(dirHigh) + " " + hexPair(numero) + "00 " + std::to_string(datos.size()) + " " +
           crc;
}

std::string bytesOf(const std::vector<int>& data) {
    std::string s;
    for (int b : data) s.push_back(static_cast<char>(b));
    return s;
}

// Lines of 16-byte records of `data` from address 0.
void addData(std::vector<std::string>& lines, const std::vector<int>& data) {
    for (std::size_t k = 0; k < data.size(); k += 16) {
        std::vector<int> chunk(data.begin() + k, data.begin() + std::min(k + 16, data.size()));
        lines.push_back(intelRecord(static_cast<int>(k), 0, chunk));
    }
}

// A folder of the test's own, removed with what it holds.
class Folder {
  public:
    Folder() {
        char name[] = "/tmp/firmcast-batch-XXXXXX";
        if (mkdtemp(name) != nullptr)
            path_ = name;
    }
    ~Folder() {
        std::error_code ec;
        std::filesystem::remove_all(path_, ec);
    }
    const std::filesystem::path& path() const { return path_; }
    std::string write(const std::string& name, const std::string& content) const {
        const std::filesystem::path file = path_ / name;
        std::FILE* out = std::fopen(file.c_str(), "wb");
        if (out != nullptr) {
            std::fwrite(content.data(), 1, content.size(), out);
            std::fclose(out);
        }
        return file.string();
    }

  private:
    std::filesystem::path path_;
};

class BatchInspect : public ::testing::Test {
  protected:
    void SetUp() override {
        if (!std::filesystem::exists(kBatch))
            GTEST_SKIP() << kBatch << " is not built: build the firmcast-batch target first";
        ASSERT_FALSE(folder.path().empty()) << "no temporary folder";
    }
    Folder folder;
};

TEST_F(BatchInspect, ATwoBankFileGivesItsHeaderChecksumAndEveryMessage) {
    const std::vector<int> a = test::patternBytes(1, 2048 + 512);
    const std::vector<int> b = test::patternBytes(2, 1024);
    const std::string header = "W300ES2105";
    std::vector<int> headerBytes(header.begin(), header.end());
    std::vector<std::string> lines = {bankRecord(0x4000)};
    addData(lines, a);
    lines.push_back(bankRecord(0x5000));
    addData(lines, b);
    lines.push_back(":02000002EFFE0F");
    lines.push_back(intelRecord(0, 0, headerBytes));
    lines.push_back(endRecord());
    const std::string path = folder.write("two banks.hex", test::hexFile(lines));

    // The image the scale must hold: erased flash with the three pieces.
    std::vector<unsigned> image(0xB0000, 0xFF);
    for (std::size_t k = 0; k < a.size(); ++k) image[k] = static_cast<unsigned>(a[k]);
    for (std::size_t k = 0; k < b.size(); ++k) image[0x10000 + k] = static_cast<unsigned>(b[k]);
    for (std::size_t k = 0; k < header.size(); ++k)
        image[0xAFFE0 + k] = static_cast<unsigned char>(header[k]);
    unsigned sum = 0;
    for (std::size_t p = 0; p < image.size(); p += 2)
        sum = (sum + image[p + 1] * 256 + image[p]) % 65536;
    char checksum[5];
    std::snprintf(checksum, sizeof checksum, "%04X", 65535 - sum);

    const std::string zeros(1024, '0'), ff(1024, '\xFF');
    const std::string sa = bytesOf(a), sb = bytesOf(b);
    const std::vector<std::string> expected = {
        "header: Model: W300       Country: ES       Display: 2       Version: 105",
        "messages: 11",
        std::string("checksum: ") + checksum,
        msgLine(0, 0x55, 0, 0, 0, zeros),
        msgLine(1, 0x02, 0x00, 0x40, 1, zeros),
        msgLine(2, 0x00, 0x00, 0x40, 1, sa.substr(0, 1024)),
        msgLine(3, 0x00, 0x00, 0x40, 2, sa.substr(1024, 1024)),
        msgLine(4, 0x00, 0x00, 0x40, 3, sa.substr(2048) + ff.substr(0, 512)),
        msgLine(5, 0x02, 0x00, 0x50, 1, zeros),
        msgLine(6, 0x00, 0x00, 0x50, 1, sb),
        msgLine(7, 0x02, 0xFE, 0xEF, 1, zeros),
        msgLine(8, 0x00, 0xFE, 0xEF, 1, header + ff.substr(0, 1014)),
        msgLine(9, 0x01, 0, 0, 0, "\xFF" + zeros.substr(0, 1023)),
        msgLine(10, 0x67, 0, 0, 0, zeros),
    };
    const BatchRun run = runBatch("--inspect '" + path + "'");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.lines, expected);
}

TEST_F(BatchInspect, ABadChecksumIsPrintedAsItsBoxAndFails) {
    const std::string path =
        folder.write("bad.hex", test::hexFile({bankRecord(0x4000), ":0100000005FF", endRecord()}));
    const BatchRun run = runBatch("--inspect " + path);
    EXPECT_EQ(run.status, 1);
    ASSERT_FALSE(run.lines.empty());
    EXPECT_EQ(run.lines[0], "msgbox: Corrupted file, bad checksum");
    EXPECT_EQ(run.lines[2], "messages: 5");  // the message list itself was built
}

TEST_F(BatchInspect, AMissingFileFailsBothReads) {
    const BatchRun run = runBatch("--inspect " + (folder.path() / "none.hex").string());
    EXPECT_EQ(run.status, 1);
    ASSERT_GE(run.lines.size(), 4u);
    EXPECT_EQ(run.lines[0], "msgbox: Error en Preprocesado del fichero");
    EXPECT_EQ(run.lines[1], "msgbox: 53File not found");
    EXPECT_EQ(run.lines[2], "header: ");
    EXPECT_EQ(run.lines[3], "messages: 0");
}

TEST_F(BatchInspect, TheSyntheticListHas685MessagesAndNoHeaderOrChecksum) {
    const BatchRun run = runBatch("--inspect-synthetic");
    EXPECT_EQ(run.status, 0);
    ASSERT_EQ(run.lines.size(), 686u);
    EXPECT_EQ(run.lines[0], "messages: 685");
    EXPECT_EQ(run.lines[1], msgLine(0, 0x55, 0, 0, 0, std::string(1024, '0')));
    EXPECT_EQ(run.lines[2], msgLine(1, 0x02, 0x00, 0x48, 1, std::string(1024, '0')));
    EXPECT_EQ(run.lines[3], msgLine(2, 0x00, 0x00, 0x48, 1, "A" + std::string(1022, '1') + "A"));
    EXPECT_EQ(run.lines[685], msgLine(684, 0x01, 0, 0, 0, std::string(1022, '0')));
}

TEST_F(BatchInspect, BadUsageExitsWithTwoAndHelpWithZero) {
    EXPECT_EQ(runBatch("").status, 2);
    EXPECT_EQ(runBatch("--inspect").status, 2);
    EXPECT_EQ(runBatch("--inspect a b").status, 2);
    EXPECT_EQ(runBatch("--frobnicate").status, 2);
    const BatchRun help = runBatch("--help");
    EXPECT_EQ(help.status, 0);
    ASSERT_FALSE(help.lines.empty());
    EXPECT_EQ(help.lines[0].rfind("usage: firmcast-batch", 0), 0u);
}

}  // namespace
}  // namespace fc

namespace fc::test {
namespace {

// A file an Ethernet load could not take: one line on standard error says
// why, and the exit status is 1.

bool startsWith(const std::string& text, const std::string& head) {
    return text.rfind(head, 0) == 0;
}

TEST(BatchInspectRefused, AFileForASerialLoadSaysWhyInOneLineAndStopsAtItsFirstByte) {
    TempFolder folder;
    // A Serie_N file: bank 0, its data from address 0, below the Ethernet image.
    const std::string file = folder.write("serie_n.hex", intelHexFile(64));
    BatchResult run = runBatchProcess({"--inspect", file});
    EXPECT_FALSE(run.hung);
    EXPECT_EQ(run.status, 1) << run.said();
    EXPECT_EQ(run.err, "firmcast-batch: " + file +
                           ": not fit for an Ethernet load: data at 0x00000 lies outside the image "
                           "of an Ethernet load (0x40000 to 0xFFFFF); the dry run stopped at its "
                           "first byte\n");
    EXPECT_TRUE(startsWith(run.out, "msgbox: 9Subscript out of range\nheader: \n")) << run.out;
    std::size_t boxes = 0;
    for (std::size_t at = run.out.find("msgbox:"); at != std::string::npos;
         at = run.out.find("msgbox:", at + 1))
        ++boxes;
    EXPECT_EQ(boxes, 1u);
}

TEST(BatchInspectRefused, AFileThePreparationRefusesSaysItsBoxAsTheReason) {
    TempFolder folder;
    const std::string file = folder.write("notes.txt", "hello\r\nworld\r\n");
    BatchResult run = runBatchProcess({"--inspect", file});
    EXPECT_EQ(run.status, 1) << run.said();
    EXPECT_EQ(run.err, "firmcast-batch: " + file +
                           ": not fit for an Ethernet load: This is not a Flash program file\n");
    EXPECT_TRUE(startsWith(run.out, "msgbox: This is not a Flash program file\n")) << run.out;
}

TEST(BatchInspectRefused, AFileThatIsNotThereSaysTheSystemsReason) {
    TempFolder folder;
    const std::string file = (folder.path() / "none.hex").string();
    BatchResult run = runBatchProcess({"--inspect", file});
    EXPECT_EQ(run.status, 1) << run.said();
    EXPECT_EQ(run.err, "firmcast-batch: " + file +
                           ": not fit for an Ethernet load: No such file or directory\n");
}

}  // namespace
}  // namespace fc::test
