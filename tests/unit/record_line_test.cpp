// A line of the record of devices loaded: one JSON object, its keys always
// there and in one order, null for what the load did not come to know, and
// texts escaped so that no text can break the line or the object.
#include <gtest/gtest.h>

#include "record/load_record.h"
#include "support/flat_json.h"

namespace fc {
namespace {

TEST(RecordLine, EveryKeyIsThereInItsOrderAndWhatIsNotKnownIsNull) {
    LoadRecord r;
    r.start = "2026-11-24T01:02:03.004Z";
    r.end = "2026-11-24T01:02:09.500Z";
    r.station = "bench-2";
    r.level = "1";
    r.model = 6;
    r.modelName = "TR-8200 labeller";
    r.way = "ethernet";
    r.port = "10.77.0.11";
    r.scale = 4;
    r.pass = 2;
    r.firmware = "fw.hex";
    r.ok = false;
    r.info = "1";
    r.durationMs = 6496;
    EXPECT_EQ(recordJson(r),
              "{\"start\":\"2026-11-24T01:02:03.004Z\",\"end\":\"2026-11-24T01:02:09.500Z\","
              "\"station\":\"bench-2\",\"level\":\"1\",\"model\":6,\"model_name\":\"TR-8200 "
              "labeller\",\"way\":\"ethernet\",\"port\":\"10.77.0.11\",\"scale\":4,\"pass\":2,"
              "\"firmware\":\"fw.hex\",\"firmware_size\":null,\"firmware_sha256\":null,"
              "\"image_checksum\":null,\"scale_checksum\":null,\"mac_old\":null,\"mac_new\":null,"
              "\"serial\":null,\"result\":\"failed\",\"info\":\"1\",\"duration_ms\":6496}");
}

TEST(RecordLine, KnownValuesAreWrittenAsNumbersAndTexts) {
    LoadRecord r;
    r.firmwareSize = 720896;
    r.firmwareSha256 = "ab";
    r.imageChecksum = 65535;
    r.scaleChecksum = 0;
    r.macOld = "02-46-43-00-00-0B";
    r.macNew = "02-C0-DE-00-00-01";
    r.serial = "SN 1";
    r.ok = true;
    const std::string line = recordJson(r);
    EXPECT_NE(line.find("\"firmware_size\":720896,\"firmware_sha256\":\"ab\",\"image_checksum\":"
                        "65535,\"scale_checksum\":0,\"mac_old\":\"02-46-43-00-00-0B\",\"mac_new\":"
                        "\"02-C0-DE-00-00-01\",\"serial\":\"SN 1\",\"result\":\"ok\""),
              std::string::npos)
        << line;
}

TEST(RecordLine, QuotesBackslashesLineEndsAndControlCharactersAreEscaped) {
    LoadRecord r;
    r.serial = std::string("a\"b\\c\r\nd\te") + '\x01' + '\x7F';
    r.info = "Scale\xC2\xB4s";  // passes as it is: UTF-8
    const std::string line = recordJson(r);
    EXPECT_NE(line.find("\"serial\":\"a\\\"b\\\\c\\r\\nd\\te\\u0001\\u007f\""), std::string::npos)
        << line;
    EXPECT_NE(line.find("\"info\":\"Scale\xC2\xB4s\""), std::string::npos) << line;
    EXPECT_EQ(line.find('\n'), std::string::npos);
}

TEST(RecordLine, TwelveHexDigitsAreWrittenAsTheRegisterWritesAMac) {
    EXPECT_EQ(registerMac("02c0de0000a1"), "02-C0-DE-00-00-A1");
    EXPECT_EQ(registerMac("02C0DE0000A"), "02C0DE0000A");
    EXPECT_EQ(registerMac("02C0DE0000AZ"), "02C0DE0000AZ");
}

}  // namespace
}  // namespace fc

namespace fc {
namespace {

TEST(RecordLine, ALineReadsBackAsOneFlatObjectWithItsKeysAndValues) {
    LoadRecord r;
    r.serial = "a\"b\\c\r\n";
    r.macNew = "02-C0-DE-00-00-01";
    r.durationMs = 12;
    std::optional<test::FlatJson> json = test::readFlatJson(recordJson(r));
    ASSERT_TRUE(json);
    EXPECT_EQ(json->keys.size(), 21u);
    EXPECT_EQ(json->keys.front(), "start");
    EXPECT_EQ(json->keys.back(), "duration_ms");
    EXPECT_EQ(json->text("serial"), "a\"b\\c\r\n");
    EXPECT_EQ(json->text("mac_new"), "02-C0-DE-00-00-01");
    EXPECT_TRUE(json->isNull("mac_old"));
    EXPECT_EQ(json->others.at("duration_ms"), "12");
}

TEST(RecordLine, ACutLineOrOneWithMoreAfterItIsNotARecord) {
    const std::string line = recordJson(LoadRecord{});
    for (std::size_t cut = 0; cut < line.size(); ++cut)
        EXPECT_FALSE(test::readFlatJson(line.substr(0, cut))) << cut;
    EXPECT_FALSE(test::readFlatJson(line + line));
    EXPECT_FALSE(test::readFlatJson(line + "x"));
    EXPECT_TRUE(test::readFlatJson(line));
}

}  // namespace
}  // namespace fc
