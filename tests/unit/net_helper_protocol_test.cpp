// The lines between the loader and the network helper: what it is asked,
// what it refuses and why, and how its answers read.
#include "platform/linux/net_helper_protocol.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fc {
namespace {

using ::testing::HasSubstr;

std::string refusalOf(const std::string& line) {
    std::string why;
    EXPECT_FALSE(readHelperRequest(line, why).has_value()) << line;
    return why;
}

TEST(NetHelperProtocol, ADeleteRequestReadsBackAsWritten) {
    HelperRequest request;
    request.kind = HelperRequest::Kind::DeleteNeighbour;
    request.interfaceIndex = 7;
    request.address = Ipv4{10, 77, 0, 11};
    std::string line = helperRequestLine(request);
    EXPECT_EQ(line, "delete 7 10.77.0.11\n");
    std::string why;
    auto read = readHelperRequest(line.substr(0, line.size() - 1), why);
    ASSERT_TRUE(read.has_value()) << why;
    EXPECT_EQ(read->kind, HelperRequest::Kind::DeleteNeighbour);
    EXPECT_EQ(read->interfaceIndex, 7u);
    EXPECT_EQ(read->address, (Ipv4{10, 77, 0, 11}));
}

TEST(NetHelperProtocol, AnEchoRequestReadsBackAsWritten) {
    HelperRequest request;
    request.kind = HelperRequest::Kind::Echo;
    request.address = Ipv4{127, 0, 0, 1};
    request.timeoutMs = 1000;
    std::string line = helperRequestLine(request);
    EXPECT_EQ(line, "echo 127.0.0.1 1000\n");
    std::string why;
    auto read = readHelperRequest(line.substr(0, line.size() - 1), why);
    ASSERT_TRUE(read.has_value()) << why;
    EXPECT_EQ(read->kind, HelperRequest::Kind::Echo);
    EXPECT_EQ(read->address, (Ipv4{127, 0, 0, 1}));
    EXPECT_EQ(read->timeoutMs, 1000);
}

TEST(NetHelperProtocol, AnythingButDeleteAndEchoIsRefused) {
    EXPECT_THAT(refusalOf("route add default"), HasSubstr("only delete and echo"));
    EXPECT_THAT(refusalOf(""), HasSubstr("only delete and echo"));
    EXPECT_THAT(refusalOf("DELETE 1 10.0.0.1"), HasSubstr("only delete and echo"));
}

TEST(NetHelperProtocol, ADeleteWithoutItsTwoWordsOrWithABadIndexIsRefused) {
    EXPECT_THAT(refusalOf("delete 1"), HasSubstr("interface index and an IPv4 address"));
    EXPECT_THAT(refusalOf("delete 1 10.0.0.1 x"), HasSubstr("interface index and an IPv4 address"));
    EXPECT_THAT(refusalOf("delete  1 10.0.0.1"), HasSubstr("interface index and an IPv4 address"));
    EXPECT_THAT(refusalOf("delete 0 10.0.0.1"), HasSubstr("interface index is not a number"));
    EXPECT_THAT(refusalOf("delete -1 10.0.0.1"), HasSubstr("interface index is not a number"));
    EXPECT_THAT(refusalOf("delete 2147483648 10.0.0.1"),
                HasSubstr("interface index is not a number"));
    EXPECT_THAT(refusalOf("delete 1 10.0.0.256"), HasSubstr("\"10.0.0.256\" is not a dotted IPv4"));
    EXPECT_THAT(refusalOf("delete 1 ::1"), HasSubstr("is not a dotted IPv4"));
}

TEST(NetHelperProtocol, AnEchoWithAWaitOutsideItsRangeIsRefused) {
    EXPECT_THAT(refusalOf("echo 127.0.0.1 0"), HasSubstr("from 1 to 60000"));
    EXPECT_THAT(refusalOf("echo 127.0.0.1 60001"), HasSubstr("from 1 to 60000"));
    EXPECT_THAT(refusalOf("echo 127.0.0.1 1e3"), HasSubstr("from 1 to 60000"));
    EXPECT_THAT(refusalOf("echo localhost 100"), HasSubstr("\"localhost\" is not a dotted IPv4"));
    EXPECT_THAT(refusalOf("echo 127.0.0.1"), HasSubstr("an IPv4 address and a wait"));
}

TEST(NetHelperProtocol, ALongLineOrOneWithAControlCharacterIsRefused) {
    EXPECT_THAT(refusalOf("echo 127.0.0.1 1000" + std::string(60, ' ')),
                HasSubstr("longer than 64"));
    EXPECT_THAT(refusalOf("echo 127.0.0.1\t1000"), HasSubstr("not printable"));
    EXPECT_THAT(refusalOf(std::string("echo 127.0.0.1 10\0", 18)), HasSubstr("not printable"));
}

TEST(NetHelperProtocol, AnswersReadAsTheResultsTheyStandFor) {
    bool answered = true;
    EXPECT_EQ(readHelperAnswer(deleteAnswer(NetResult::Done), answered), NetResult::Done);
    EXPECT_FALSE(answered);
    EXPECT_EQ(readHelperAnswer(echoAnswer(NetResult::Done, true), answered), NetResult::Done);
    EXPECT_TRUE(answered);
    EXPECT_EQ(readHelperAnswer(echoAnswer(NetResult::Done, false), answered), NetResult::Done);
    EXPECT_FALSE(answered);
    EXPECT_EQ(echoAnswer(NetResult::Done, false), "silent");
    EXPECT_EQ(readHelperAnswer(deleteAnswer(NetResult::NotPermitted), answered),
              NetResult::NotPermitted);
    EXPECT_EQ(readHelperAnswer(echoAnswer(NetResult::Failed, true), answered), NetResult::Failed);
    EXPECT_FALSE(answered);
    EXPECT_EQ(readHelperAnswer("refused: only delete and echo are done here", answered),
              NetResult::Failed);
    EXPECT_EQ(readHelperAnswer("", answered), NetResult::Failed);
}

}  // namespace
}  // namespace fc
