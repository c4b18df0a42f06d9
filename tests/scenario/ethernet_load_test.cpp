// The Ethernet load of Serie_W scales on the virtual clock: the whole program
// from the wizard through EnviaMensajes to the wait for "Again", against
// simulated boot loaders on the virtual LAN. Each state of a scale's turn,
// each wait, the MAC decision and the record form, and what the operator is
// left with: the row icons, the result column and the last text.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "ethernet/envia_mensajes.h"
#include "ethernet/ethernet_panel.h"
#include "support/ethernet_rig.h"
#include "support/network_rig.h"

namespace fc {
namespace {

using test::EthernetRig;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::uint8_t kMacType = 0x68;

std::array<std::uint8_t, 6> ourMac(int last) {
    return {0x02, 0xC0, 0xDE, 0x00, 0x00, static_cast<std::uint8_t>(last)};
}

// From "Deleting Scale's Flash ..." to "Mensaje 1": the first scale's erase wait.
long long eraseWait(const EthernetRig& rig) {
    return rig.firstInfoAt("Mensaje 1") - rig.firstInfoAt("Deleting Scale\xC2\xB4s Flash ...");
}

int messagesOfTheFile(EthernetRig& rig) {
    return static_cast<int>(rig.form().mensajes.size());
}

TEST(EthernetLoad, AGoodScaleIsLoadedAndTheChecksumAgrees) {
    EthernetRig rig;
    rig.addScale(1);
    rig.writeList();
    rig.macs = {"02C0DE000001"};
    EXPECT_EQ(rig.load(EthernetRig::twoBankFile()), -1);
    Firmcast& f = rig.form();
    EXPECT_EQ(f.lblInformacion.caption(), "Scale 1 loaded OK");
    EXPECT_EQ(f.estado_balanzas, std::vector<bool>{true});
    EXPECT_EQ(f.lstBalanzas.smallIcon(0), kIconoEnviado);
    EXPECT_EQ(f.lstBalanzas.rows().at(0).at(2), "ok: Scale 1 loaded OK");
    EXPECT_EQ(f.resultado_balanzas, std::vector<std::string>{"Scale 1 loaded OK"});
    EthernetScale& scale = rig.scale(1).last();
    EXPECT_EQ(EthernetScale::checksumOf(scale.image()), f.checksum_memoria);
    EXPECT_EQ(f.respuesta_balanza.checksum_balanza, f.checksum_memoria);
    EXPECT_TRUE(rig.dialogs.boxes().empty());
    EXPECT_TRUE(f.cmdAgain.visible());
    EXPECT_FALSE(f.BarraEth.visible());
}

TEST(EthernetLoad, EveryMessageIsShownInTurnAndTheWaitsTellWhatTheyWaitFor) {
    EthernetRig rig;
    rig.addScale(1);
    rig.writeList();
    rig.macs = {"02C0DE000001"};
    rig.load(EthernetRig::twoBankFile());
    auto texts = rig.infoTexts();
    const std::vector<std::string> opening = {"Processing File ...", "1", "Mensaje 0",
                                              "Deleting Scale\xC2\xB4s Flash ...", "Mensaje 1"};
    ASSERT_GE(texts.size(), opening.size());
    EXPECT_EQ(std::vector<std::string>(texts.begin(), texts.begin() + 5), opening);
    EXPECT_THAT(texts, Contains("Waiting checksum ..."));
    EXPECT_EQ(texts.back(), "Scale 1 loaded OK");
}

// The messages go on the wire as type, bank, number and payload in one send.
TEST(EthernetLoad, TheScaleTakesTheFilesMessagesInOrder) {
    EthernetRig rig;
    rig.addScale(1);
    rig.writeList();
    rig.macs = {"02C0DE000001"};
    rig.load(EthernetRig::twoBankFile());
    std::vector<std::uint8_t> expected;
    for (const MensajeEth& m : rig.form().mensajes)
        expected.push_back(static_cast<std::uint8_t>(m.tipo[0]));
    expected.push_back(kMacType);
    EXPECT_EQ(rig.scale(1).last().types(), expected);
}

TEST(EthernetLoad, AConnectionMadeWithinTheConnectWaitIsGivenAFixedSettleTimeOf500Ms) {
    EthernetRig rig;
    rig.addScale(1);
    rig.writeList();
    rig.network.roundTrip = 200'000;  // connected after 200 ms
    rig.macs = {"02C0DE000001"};
    rig.load(EthernetRig::twoBankFile());
    long long shownOne = rig.firstInfoAt("1");
    long long firstMessage = rig.firstInfoAt("Mensaje 0");
    // The bar and "1" come after the connection (200 ms) and the settle (500 ms).
    EXPECT_GE(shownOne - rig.firstInfoAt("Processing File ..."), 700);
    EXPECT_LT(shownOne - rig.firstInfoAt("Processing File ..."), 720);
    EXPECT_EQ(firstMessage, shownOne);
}

TEST(EthernetLoad, ARefusedConnectionFailsTheScaleWithoutAWord) {
    EthernetRig rig;
    rig.addScale(1).faults.refuseConnections = true;
    rig.writeList();
    rig.load(EthernetRig::twoBankFile());
    Firmcast& f = rig.form();
    EXPECT_EQ(f.estado_balanzas, std::vector<bool>{false});
    EXPECT_EQ(f.lstBalanzas.smallIcon(0), kIconoFallo);
    EXPECT_EQ(f.lblInformacion.caption(), "1");
    EXPECT_EQ(f.lstBalanzas.rows().at(0).at(2), "failed: 1");
    EXPECT_TRUE(rig.dialogs.boxes().empty());
    EXPECT_EQ(rig.macsAsked, 0);
}

TEST(EthernetLoad, AListWithTheFirstScaleSwitchedOffCostsThatScaleOnlyTheConnectTimeAndTheSettle) {
    EthernetRig rig;
    rig.addScale(1).host->setUp(false);
    rig.addScale(2);
    rig.writeList();
    rig.macs = {"02C0DE000001"};
    rig.load(EthernetRig::twoBankFile());
    Firmcast& f = rig.form();
    EXPECT_EQ(f.estado_balanzas, (std::vector<bool>{false, true}));
    EXPECT_EQ(f.lstBalanzas.smallIcon(0), kIconoFallo);
    EXPECT_EQ(f.lstBalanzas.smallIcon(1), kIconoEnviado);
    // Scale 1's turn: 500 ms to connect, 500 ms to settle, then the close's
    // own 100 ms pause; scale 2 is connected a round trip later.
    long long start = rig.firstInfoAt("Processing File ...");
    long long secondTurn = rig.firstInfoAt("Mensaje 0");
    long long roundTripMs = rig.network.roundTrip / 1000;
    EXPECT_GE(secondTurn - start, 1000 + 100 + 500);
    EXPECT_LE(secondTurn - start, 1000 + 100 + 500 + roundTripMs + 5);
    EXPECT_EQ(f.resultado_balanzas.at(0), "1");
    EXPECT_EQ(f.resultado_balanzas.at(1), "Scale 2 loaded OK");
}

TEST(EthernetLoad, ASendThatIsNotTakenIn500MsWaitsForTheErrorAndFailsTheScale) {
    EthernetRig rig;
    rig.addScale(1).faults.stopReadingAt = 3;
    rig.writeList();
    rig.load(EthernetRig::twoBankFile());
    Firmcast& f = rig.form();
    auto texts = rig.infoTexts();
    EXPECT_THAT(texts, Contains("Waiting error ..."));
    EXPECT_EQ(f.lblInformacion.caption(), "Scale 1 ERROR ");
    EXPECT_EQ(f.estado_balanzas, std::vector<bool>{false});
    EXPECT_EQ(f.lstBalanzas.smallIcon(0), kIconoFallo);
    // Nothing came: the whole 4 s.
    EXPECT_EQ(rig.lastInfoAt("Scale 1 ERROR ") - rig.firstInfoAt("Waiting error ..."), 4000);
    EXPECT_EQ(f.WsckCliente.state(), 0);
}

TEST(EthernetLoad, ACode10AnswerEndsTheErrorWaitWithTheScalesErrorNumber) {
    EthernetRig rig;
    EthernetRig::Scale& s = rig.addScale(1);
    s.faults.failAt = 4;
    s.faults.errorNumber = 0x1A;
    rig.writeList();
    rig.load(EthernetRig::twoBankFile());
    Firmcast& f = rig.form();
    EXPECT_EQ(f.lblInformacion.caption(), "Scale 1 ERROR 26");
    EXPECT_EQ(f.respuesta_balanza.error_balanza, 26);
    EXPECT_LT(rig.lastInfoAt("Scale 1 ERROR 26") - rig.firstInfoAt("Waiting error ..."), 100);
    EXPECT_EQ(f.lstBalanzas.rows().at(0).at(2), "failed: Scale 1 ERROR 26");
}

TEST(EthernetLoad, ADroppedConnectionDuringTheSendsFailsTheScale) {
    EthernetRig rig;
    rig.addScale(1).faults.dropAt = 2;
    rig.addScale(2);
    rig.writeList();
    rig.macs = {"02C0DE000001"};
    rig.load(EthernetRig::twoBankFile());
    Firmcast& f = rig.form();
    EXPECT_EQ(f.estado_balanzas, (std::vector<bool>{false, true}));
    EXPECT_EQ(f.lstBalanzas.smallIcon(0), kIconoFallo);
    EXPECT_EQ(rig.scale(1).last().messagesTaken(), 3);
    EXPECT_EQ(f.lblInformacion.caption(), "Scale 2 loaded OK");
}

TEST(EthernetLoad, AWrongChecksumIsAChecksumErrorWithIcon2AndNoLoadedOk) {
    EthernetRig rig;
    rig.addScale(1, ourMac(7)).faults.wrongChecksum = true;
    rig.writeList();
    rig.load(EthernetRig::twoBankFile());
    Firmcast& f = rig.form();
    EXPECT_EQ(f.lblInformacion.caption(), "Scale 1 Checksum Error");
    EXPECT_EQ(f.lstBalanzas.smallIcon(0), kIconoFallo);
    EXPECT_EQ(f.estado_balanzas, std::vector<bool>{false});
    EXPECT_TRUE(rig.dialogs.boxes().empty());
}

TEST(EthernetLoad, NoChecksumAnswerIn40SIsToldAsAChecksumError) {
    EthernetRig rig;
    rig.addScale(1, ourMac(7)).faults.silentEndOfLoad = true;
    rig.writeList();
    rig.load(EthernetRig::twoBankFile());
    EXPECT_EQ(rig.form().lblInformacion.caption(), "Scale 1 Checksum Error");
    // 40 s, and the 1 ms sleep of the pass that saw the time-out.
    EXPECT_NEAR(rig.firstInfoAt("") - rig.firstInfoAt("Waiting checksum ..."), 40000, 1);
}

TEST(EthernetLoad, AScaleThatAnswersTheEraseWithAnotherCodeMakesTheLoaderWaitTheWhole40SThenGoOn) {
    EthernetRig rig;
    rig.addScale(1, ourMac(7)).faults.eraseCode = 4;
    rig.writeList();
    rig.load(EthernetRig::twoBankFile());
    long long waited = eraseWait(rig);
    // 40 s, and the pass with its 1 ms sleep that saw the time-out.
    EXPECT_NEAR(waited, 40000, 2);
    EXPECT_EQ(rig.form().lblInformacion.caption(), "Scale 1 loaded OK");
}

TEST(EthernetLoad, ASilentEraseIsNotAFailureAndTheLoadGoesOnAfter40S) {
    EthernetRig rig;
    rig.addScale(1, ourMac(7)).faults.silentErase = true;
    rig.writeList();
    rig.load(EthernetRig::twoBankFile());
    long long waited = eraseWait(rig);
    // 40 s, and the pass with its 1 ms sleep that saw the time-out.
    EXPECT_NEAR(waited, 40000, 2);
    EXPECT_EQ(rig.form().lblInformacion.caption(), "Scale 1 loaded OK");
}

TEST(EthernetLoad, TheEraseWaitEndsAsSoonAsCode3Comes) {
    EthernetRig rig;
    rig.addScale(1, ourMac(7)).eraseTime = 1'500'000;
    rig.writeList();
    rig.load(EthernetRig::twoBankFile());
    long long waited = eraseWait(rig);
    // The scale's erase began as it took the message, a moment before the
    // loader's wait did.
    EXPECT_GE(waited, 1490);
    EXPECT_LE(waited, 1501);
}

TEST(EthernetLoad, Mensaje1IsShownAfterTheEraseWaitAndTheNextPassReplacesItAtOnce) {
    EthernetRig rig;
    rig.addScale(1, ourMac(7));
    rig.writeList();
    rig.load(EthernetRig::twoBankFile());
    auto texts = rig.infoTexts();
    auto at = std::find(texts.begin(), texts.end(), "Mensaje 1");
    ASSERT_NE(at, texts.end());
    ASSERT_NE(at + 1, texts.end());
    EXPECT_EQ(*(at - 1), "Deleting Scale\xC2\xB4s Flash ...");
    // The next pass of the loop shows message 1 again, at the same moment.
    EXPECT_EQ(rig.info.at(static_cast<std::size_t>(at - texts.begin())).atMs,
              rig.firstInfoAt("Mensaje 1"));
    EXPECT_EQ(std::count(texts.begin(), texts.end(), "Mensaje 1"), 1);
    EXPECT_EQ(*(at + 1), "Mensaje 2");
}

TEST(EthernetLoad, TheAnswerOfThePreviousScaleCantEndTheEraseWaitOfTheNext) {
    EthernetRig rig;
    rig.addScale(1).faults.stopReadingAt = 2;  // scale 1 leaves code 3 as the last answer
    rig.addScale(2, ourMac(7)).faults.silentErase = true;
    rig.writeList();
    rig.load(EthernetRig::twoBankFile());
    EXPECT_EQ(rig.form().respuesta_balanza.codigo_respuesta, 5);
    // Scale 2's erase wait ran its whole 40 s although code 3 was the last answer.
    long long secondErase = rig.lastInfoAt("Deleting Scale\xC2\xB4s Flash ...");
    long long secondMensaje1 = rig.lastInfoAt("Mensaje 1");
    EXPECT_NEAR(secondMensaje1 - secondErase, 40000, 2);
}

TEST(EthernetLoad,
     ACode5AnswerThatArrivesBeforeTheLastMessageIsSentIsKeptAndTheChecksumWaitEndsAtOnce) {
    EthernetRig rig;
    rig.addScale(1);  // needs a MAC: a 0x68 follows the 0x67
    rig.writeList();
    rig.macs = {"02C0DE000001"};
    rig.load(EthernetRig::twoBankFile());
    // The code 5 came while the 0x68 was sent; the wait found it there.
    long long waitFrom = rig.firstInfoAt("Waiting checksum ...");
    ASSERT_GE(waitFrom, 0);
    EXPECT_EQ(rig.firstInfoAt(""), waitFrom);
    EXPECT_EQ(rig.form().lblInformacion.caption(), "Scale 1 loaded OK");
}

TEST(EthernetLoad, WithOneScaleStep2aClearsNothingOnlyStep1Does) {
    EthernetRig rig;
    rig.addScale(1, ourMac(7));
    rig.writeList();
    rig.load(EthernetRig::twoBankFile());
    // One clearing of the table, which held the one scale's row.
    EXPECT_EQ(rig.network.neighbourDeletions(), 0);
    EXPECT_EQ(rig.form().lblInformacion.caption(), "Scale 1 loaded OK");
}

TEST(EthernetLoad, WithTwoScalesEachTurnClearsTheTableForTheOtherScale) {
    EthernetRig rig;
    rig.addScale(1, ourMac(7));
    rig.addScale(2, ourMac(8));
    rig.writeList();
    rig.load(EthernetRig::twoBankFile());
    // Step 1 finds an empty table; scale 2's turn clears what scale 1's
    // connection taught the PC.
    EXPECT_EQ(rig.network.neighbourDeletions(), 1);
    EXPECT_EQ(rig.form().estado_balanzas, (std::vector<bool>{true, true}));
}

TEST(EthernetLoad, AScaleWithAMacThatStarts02C0DEGetsNo0x68AndNoNewNumber) {
    EthernetRig rig;
    rig.addScale(1, ourMac(7));
    rig.writeList();
    rig.macs = {"02C0DE000001"};
    rig.load(EthernetRig::twoBankFile(), "2");
    EXPECT_EQ(rig.macsAsked, 0);
    EXPECT_FALSE(rig.scale(1).last().macStored());
    EXPECT_EQ(rig.form().mac_actual, "02C0DE000007");
    EXPECT_THAT(rig.records, IsEmpty());
}

TEST(EthernetLoad, AScaleWithoutOurMacGetsTheNextOneInA0x68MessageAndTheRecordForm) {
    EthernetRig rig;
    rig.addScale(1);
    rig.writeList();
    rig.macs = {"02C0DE0000A1"};
    rig.load(EthernetRig::twoBankFile(), "2");
    Firmcast& f = rig.form();
    EXPECT_EQ(rig.macsAsked, 1);
    EthernetScale& scale = rig.scale(1).last();
    ASSERT_TRUE(scale.macStored());
    EXPECT_EQ(scale.mac(), ourMac(0xA1));
    ASSERT_EQ(rig.records.size(), 1u);
    EXPECT_EQ(rig.records[0].balanza, 0);
    EXPECT_EQ(rig.records[0].mac, "02C0DE0000A1");
    EXPECT_TRUE(rig.records[0].pideMac);
    // The 0x68 is gone from the list once the scale is done.
    EXPECT_NE(f.mensajes.back().tipo, std::string(1, static_cast<char>(kMacType)));
    EXPECT_EQ(f.lblInformacion.caption(), "Scale 1 loaded OK");
}

TEST(EthernetLoad, The0x68MessageCarriesTheSixMacBytesAnd1018Zeros) {
    EthernetRig rig;
    rig.addScale(1);
    rig.writeList();
    rig.macs = {"02C0DE00FF10"};
    rig.load(EthernetRig::twoBankFile(), "2");
    ASSERT_EQ(rig.records.size(), 1u);
    const MensajeEth& m = rig.records[0].lastMessage;
    EXPECT_EQ(m.tipo, std::string(1, static_cast<char>(kMacType)));
    EXPECT_EQ(m.direccion, std::string(2, '\0'));
    EXPECT_EQ(m.numero, std::string(2, '\0'));
    EXPECT_EQ(m.datos, std::string("\x02\xC0\xDE\x00\xFF\x10", 6) + std::string(1018, '0'));
    EXPECT_EQ(rig.scale(1).last().mac(),
              (std::array<std::uint8_t, 6>{0x02, 0xC0, 0xDE, 0x00, 0xFF, 0x10}));
    // The scale answers with its new MAC from then on.
    EXPECT_EQ(rig.scale(1).host->mac(), rig.scale(1).last().mac());
}

TEST(EthernetLoad, NoMacLeftFailsTheScaleWithTheMessage) {
    EthernetRig rig;
    rig.addScale(1);
    rig.writeList();
    rig.load(EthernetRig::twoBankFile(), "2");
    Firmcast& f = rig.form();
    EXPECT_EQ(rig.macsAsked, 1);
    EXPECT_THAT(rig.dialogs.texts(), ElementsAre("There is no more MACs available"));
    EXPECT_EQ(f.estado_balanzas, std::vector<bool>{false});
    EXPECT_EQ(f.lstBalanzas.smallIcon(0), kIconoFallo);
    EXPECT_THAT(rig.records, IsEmpty());
}

TEST(EthernetLoad, WithChkADSLCheckedTheMacStepIsPassedOverAndNothingIsLookedUp) {
    EthernetRig rig;
    rig.addScale(1);
    rig.writeList();
    rig.macs = {"02C0DE000001"};
    Firmcast* f = &rig.form();
    rig.driveC.write("fw.hex", EthernetRig::twoBankFile());
    // The ADSL box is ticked on the list step, before its Next.
    rig.scriptEthernetLoad(0, true, [f] { operatorClick(*f, "chkADSL"); });
    rig.run("2");
    EXPECT_EQ(f->chkADSL.value(), 1);
    EXPECT_EQ(rig.macsAsked, 0);
    EXPECT_FALSE(rig.scale(1).last().macStored());
    EXPECT_EQ(f->lblInformacion.caption(), "Scale 1 loaded OK");
}

TEST(EthernetLoad, AtLevel3TheMacStepIsPassedOverAndNothingIsLookedUp) {
    EthernetRig rig;
    rig.addScale(1);
    rig.writeList();
    rig.macs = {"02C0DE000001"};
    rig.load(EthernetRig::twoBankFile(), "3");
    EXPECT_EQ(rig.macsAsked, 0);
    EXPECT_THAT(rig.records, IsEmpty());
    EXPECT_EQ(rig.form().lblInformacion.caption(), "Scale 1 loaded OK");
}

TEST(EthernetLoad, AnAddressNotInTheTableAtTheEndOfTheLoadFailsTheScaleSilently) {
    EthernetRig rig;
    rig.addScale(1);
    rig.writeList();
    rig.macs = {"02C0DE000001"};
    Firmcast* f = &rig.form();
    rig.driveC.write("fw.hex", EthernetRig::twoBankFile());
    rig.scriptEthernetLoad(0, false);
    // The PC forgets the scale's row during the load.
    rig.script.when([f] { return f->lblInformacion.caption() == "Mensaje 3"; }, "forget the row",
                    [&rig] { rig.network.table().clear(); });
    rig.stopWhen([f] { return f->esperando_otra != kFalse; }, "the pass ended");
    rig.run("2");
    EXPECT_EQ(rig.macsAsked, 0);
    EXPECT_EQ(f->estado_balanzas, std::vector<bool>{false});
    EXPECT_EQ(f->lstBalanzas.smallIcon(0), kIconoFallo);
    EXPECT_TRUE(rig.dialogs.boxes().empty());
}

TEST(EthernetLoad,
     BarraEthsMaximumIsTakenBeforeA0x68IsAddedSoTheExtraMessageDoesntMoveTheBarBeyondIt) {
    EthernetRig rig;
    rig.addScale(1);
    rig.writeList();
    rig.macs = {"02C0DE000001"};
    long long maxSeen = 0, valueSeen = 0;
    rig.form().BarraEth.addObserver([&](Control& c) {
        auto& bar = static_cast<ProgressBar&>(c);
        maxSeen = bar.max();
        valueSeen = std::max(valueSeen, static_cast<long long>(bar.value()));
    });
    rig.load(EthernetRig::twoBankFile(), "2");
    EXPECT_EQ(maxSeen, messagesOfTheFile(rig) - 1);
    EXPECT_EQ(valueSeen, maxSeen);
    EXPECT_TRUE(rig.scale(1).last().macStored());
}

TEST(EthernetLoad, AtLevel1TheRecordFormOpensForEveryGoodScaleAlsoOneThatNeededNoNewMac) {
    EthernetRig rig;
    rig.addScale(1, ourMac(7));
    rig.addScale(2);
    rig.writeList();
    rig.macs = {"02C0DE000031"};
    rig.load(EthernetRig::twoBankFile(), "1");
    ASSERT_EQ(rig.records.size(), 2u);
    EXPECT_EQ(rig.records[0].balanza, 0);
    EXPECT_FALSE(rig.records[0].pideMac);
    EXPECT_EQ(rig.records[0].mac, "02C0DE000007");
    EXPECT_EQ(rig.records[1].balanza, 1);
    EXPECT_TRUE(rig.records[1].pideMac);
    EXPECT_EQ(rig.records[1].mac, "02C0DE000031");
}

TEST(EthernetLoad, AtOtherLevelsTheFormOpensOnlyForAScaleThatGotANewMac) {
    EthernetRig rig;
    rig.addScale(1, ourMac(7));
    rig.addScale(2);
    rig.writeList();
    rig.macs = {"02C0DE000031"};
    rig.load(EthernetRig::twoBankFile(), "0");
    ASSERT_EQ(rig.records.size(), 1u);
    EXPECT_EQ(rig.records[0].balanza, 1);
}

TEST(EthernetLoad, AScaleThatFailsItsChecksumAfterItWasGivenAMacStillOpensTheRecordForm) {
    EthernetRig rig;
    rig.addScale(1).faults.wrongChecksum = true;
    rig.addScale(2);
    rig.writeList();
    rig.macs = {"02C0DE000041", "02C0DE000042"};
    rig.load(EthernetRig::twoBankFile(), "2");
    Firmcast& f = rig.form();
    ASSERT_EQ(rig.records.size(), 2u);
    EXPECT_EQ(rig.records[0].balanza, 0);
    EXPECT_TRUE(rig.records[0].pideMac);
    // Only the icon and the text tell of the failure: no box.
    EXPECT_TRUE(rig.dialogs.boxes().empty());
    EXPECT_EQ(f.lstBalanzas.smallIcon(0), kIconoFallo);
    EXPECT_EQ(f.resultado_balanzas.at(0), "Scale 1 Checksum Error");
    EXPECT_EQ(f.lstBalanzas.rows().at(0).at(2), "failed: Scale 1 Checksum Error");
    // The next scale still gets the whole list, its own 0x67 and 0x68.
    std::vector<std::uint8_t> types = rig.scale(2).last().types();
    ASSERT_GE(types.size(), 2u);
    EXPECT_EQ(types[types.size() - 2], 0x67);
    EXPECT_EQ(types.back(), kMacType);
    EXPECT_EQ(rig.scale(2).last().mac(), ourMac(0x42));
    EXPECT_EQ(f.resultado_balanzas.at(1), "Scale 2 loaded OK");
}

TEST(EthernetLoad, ProductionWayLoadsTheSameMessagesAgainWithoutPreparingTheFileAnew) {
    EthernetRig rig;
    rig.addScale(1, ourMac(7));
    rig.writeList();
    Firmcast* f = &rig.form();
    rig.driveC.write("fw.hex", EthernetRig::twoBankFile());
    rig.scriptEthernetLoad(0, false);
    rig.script.when([f] { return f->esperando_otra != kFalse; }, "Again",
                    [&rig] {
                        // The file is gone: only what was prepared can be loaded.
                        std::filesystem::remove(rig.driveC.path() / "fw.hex");
                        rig.click("cmdAgain");
                    });
    rig.script.when([f] { return f->paso_asistente == 3 && f->frBalanzasEth.reachable(); },
                    "Next on the list again", [&rig] { rig.click("cmdAdelante"); });
    rig.stopWhen([f] { return f->esperando_otra != kFalse; }, "the second pass ended");
    EXPECT_EQ(rig.run("1"), -1);
    ASSERT_EQ(rig.scale(1).devices.size(), 2u);
    EXPECT_EQ(rig.scale(1).devices[0]->types(), rig.scale(1).devices[1]->types());
    EXPECT_EQ(rig.scale(1).devices[1]->image(), rig.scale(1).devices[0]->image());
    EXPECT_TRUE(rig.dialogs.boxes().empty());
    EXPECT_EQ(f->lblInformacion.caption(), "Scale 1 loaded OK");
    EXPECT_EQ(rig.records.size(), 2u);
}

TEST(EthernetLoad, TheEraseOfOneScaleAloneGoesOverTheSecondSocketAndClosesIt) {
    EthernetRig rig;
    rig.addScale(1, ourMac(7));
    rig.writeList();
    rig.load(EthernetRig::twoBankFile(), "3");
    Firmcast& f = rig.form();
    ASSERT_EQ(rig.scale(1).devices.size(), 1u);
    EthernetPanel panel = f.ethernetPanel();
    long long from = rig.pump.now();
    EnviaMensajeBorrado(panel, nettest::scaleIpText(1));
    ASSERT_EQ(rig.scale(1).devices.size(), 2u);
    EXPECT_EQ(rig.scale(1).devices[1]->types(), std::vector<std::uint8_t>{0x55});
    EXPECT_EQ(f.WsckClienteSiguiente.state(), 0);
    EXPECT_EQ(f.WsckCliente.state(), 0);
    // Connected within the 500 ms, the send complete at once, then the close.
    EXPECT_LT(rig.pump.now() - from, 1000);
}

TEST(EthernetLoad, TheEraseOfOneScaleAloneGivesUpAfter500MsWhenTheScaleIsOff) {
    EthernetRig rig;
    rig.addScale(1, ourMac(7));
    rig.writeList();
    rig.load(EthernetRig::twoBankFile(), "3");
    rig.scale(1).host->setUp(false);
    EthernetPanel panel = rig.form().ethernetPanel();
    long long from = rig.pump.now();
    EnviaMensajeBorrado(panel, nettest::scaleIpText(1));
    EXPECT_EQ(rig.scale(1).devices.size(), 1u);
    EXPECT_GE(rig.pump.now() - from, 500);
    EXPECT_LT(rig.pump.now() - from, 1200);
    EXPECT_EQ(rig.form().WsckClienteSiguiente.state(), 0);
}

}  // namespace
}  // namespace fc
