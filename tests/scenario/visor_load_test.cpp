// A whole load of a simulated MV-510 visor from its screen, over RS-232 and
// over UDP: the records on the wire, the image in the visor's flash, the
// Boot Status Byte, and what the screen shows at the end.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/intel_hex.h"
#include "support/visor_rig.h"
#include "visor/mv510_texts.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class VisorLoad : public ::testing::Test {
  protected:
    VisorRig v;
    frmCargaMV510& s = *v.screen;
};

std::vector<int> program(int count) {
    return patternBytes(5, count);
}

TEST_F(VisorLoad, ALoadOverRs232ErasesProgramsVerifiesAndEndsWithFirmcastOk) {
    v.chooseFile("visor.hex", VisorRig::imageFile(0, program(300)));
    v.useSerial();
    v.load();
    EXPECT_THAT(v.boxes(), IsEmpty());
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
    EXPECT_TRUE(s.Label2.visible());
    EXPECT_FALSE(s.Barra.visible());
    EXPECT_FALSE(s.Texto.visible());
    EXPECT_FALSE(s.CmdStop.visible());
    EXPECT_TRUE(s.cmdAdelante.enabled());
    const VisorBootLoader& l = v.serialLoader();
    const auto data = program(300);
    for (int i = 0; i < 300; ++i) ASSERT_EQ(l.flash()[i], data[i]) << i;
    EXPECT_EQ(l.flash()[300], 0xFF);
    EXPECT_EQ(l.bootStatusByte(), 0x00);
    EXPECT_EQ(l.erases(), 1);
    EXPECT_EQ(l.blankChecks(), 1);
    ASSERT_GE(l.records().size(), 2u);
    EXPECT_EQ(l.records()[0], ":0100000307F5");
    EXPECT_EQ(l.records()[1], ":0500000400007FFF0178");
    EXPECT_EQ(l.records()[l.records().size() - 2], ":03000003060000F4");
    EXPECT_EQ(l.records().back(), ":020000050701F1");
    EXPECT_EQ(l.dumped().size(), 512u);
    EXPECT_EQ(s.Linea.settings(), "115200,N,8,1");
    EXPECT_EQ(s.lblBits.caption(), "Bits: 8");
    EXPECT_EQ(s.lblParidad.caption(), "Parity: NONE");
    EXPECT_TRUE(s.Linea.portOpen()) << "only a failed load closes the line";
}

TEST_F(VisorLoad, ALoadOverUdpReachesTheVisorOnItsPortAndEndsWithFirmcastOk) {
    v.chooseFile("visor.hex", VisorRig::imageFile(0, program(300)));
    v.useUdp();
    v.load();
    EXPECT_THAT(v.boxes(), IsEmpty());
    EXPECT_EQ(s.Label2.caption(), "Firmcast OK");
    const VisorBootLoader& l = v.udpLoader();
    const auto data = program(300);
    for (int i = 0; i < 300; ++i) ASSERT_EQ(l.flash()[i], data[i]) << i;
    EXPECT_EQ(l.bootStatusByte(), 0x00);
    EXPECT_EQ(l.dumped().size(), 512u);
    EXPECT_EQ(s.Winsock_recepcion->localPort(), 3001);
    EXPECT_EQ(s.Winsock_Envio->remotePort(), 3000);
    EXPECT_EQ(s.Winsock_Envio->remoteHost(), kVisorIp);
    EXPECT_TRUE(v.serialLoader().records().empty());
}

}  // namespace
}  // namespace fc::test
