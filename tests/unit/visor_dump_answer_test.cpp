// The judgement of a dump answer: the echo and the eight lines at their
// places, nothing else looked at.
#include <gtest/gtest.h>

#include <string>

#include "visor/dump_answer.h"

namespace fc {
namespace {

const std::string kOrden = ":05000004008000FF0078";

// A block record whose 128 data bytes are the hex digits of `digit` repeated.
std::string registro(char digit) {
    return ":80008000" + std::string(256, digit) + "00";
}

// The echo, then eight lines, each behind `separador` (seven characters).
std::string respuesta(char digit, const std::string& separador = "\r\n0080=") {
    std::string out = kOrden;
    for (int k = 0; k < 8; ++k) out += separador + std::string(32, digit);
    return out;
}

TEST(VisorDumpAnswer, TheEchoAndEightLinesAtTheirPlacesAgree) {
    EXPECT_TRUE(volcadoCoincide(respuesta('A'), kOrden, registro('A')));
}

TEST(VisorDumpAnswer, TheSevenCharactersBetweenLinesAreNotLookedAt) {
    EXPECT_TRUE(volcadoCoincide(respuesta('A', "zzzzzzz"), kOrden, registro('A')));
}

TEST(VisorDumpAnswer, WhatFollowsTheEighthLineIsNotLookedAt) {
    EXPECT_TRUE(volcadoCoincide(respuesta('A') + "\r\n.\r\nrubbish", kOrden, registro('A')));
}

TEST(VisorDumpAnswer, OneDigitOtherThanTheRecordsDiffers) {
    std::string r = respuesta('A');
    r[r.size() - 1] = 'B';
    EXPECT_FALSE(volcadoCoincide(r, kOrden, registro('A')));
}

TEST(VisorDumpAnswer, AWrongEchoDiffers) {
    std::string r = respuesta('A');
    r[3] = '1';
    EXPECT_FALSE(volcadoCoincide(r, kOrden, registro('A')));
}

TEST(VisorDumpAnswer, ASeparatorOfSixCharactersShiftsTheLinesAndDiffers) {
    EXPECT_FALSE(volcadoCoincide(respuesta('A', "\r\n080="), kOrden, registro('A')));
}

TEST(VisorDumpAnswer, AnAnswerShortOfTheLastDigitDiffers) {
    std::string r = respuesta('A');
    r.pop_back();
    EXPECT_FALSE(volcadoCoincide(r, kOrden, registro('A')));
    EXPECT_FALSE(volcadoCoincide("", kOrden, registro('A')));
}

}  // namespace
}  // namespace fc
