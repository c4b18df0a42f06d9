// The catalogue as one table: nine codes in three groups, each with its
// picture, its flag, its ways and its start folders.
#include <gtest/gtest.h>

#include <string>

#include "control/catalogue.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

struct Row {
    const char* picture;
    ModelGroup group;
    ModelFlag flag;
    bool ethernet;
};

const Row kRows[kCatalogueSize] = {
    {"Picture4", ModelGroup::Scales, ModelFlag::SerieW, true},
    {"Picture3", ModelGroup::Scales, ModelFlag::SerieN, false},
    {"Picture2", ModelGroup::Scales, ModelFlag::SerieH, false},
    {"Picture6", ModelGroup::Scales, ModelFlag::None, false},
    {"Picture5", ModelGroup::Labellers, ModelFlag::Matrix4000, false},
    {"Picture8", ModelGroup::Labellers, ModelFlag::Tr6100, false},
    {"Picture7", ModelGroup::Labellers, ModelFlag::Tr8200, true},
    {"Picture12", ModelGroup::Visors, ModelFlag::None, false},
    {"Picture9", ModelGroup::Labellers, ModelFlag::Tr8200, true},
};

TEST(Catalogue, HoldsNineCodesWithTheirPictureGroupFlagAndWays) {
    for (int code = 0; code < kCatalogueSize; ++code) {
        const CatalogueEntry& entry = catalogueEntry(code);
        EXPECT_EQ(entry.code, code);
        EXPECT_STREQ(entry.picture, kRows[code].picture) << "code " << code;
        EXPECT_EQ(entry.group, kRows[code].group) << "code " << code;
        EXPECT_EQ(entry.flag, kRows[code].flag) << "code " << code;
        EXPECT_EQ(entry.ethernet, kRows[code].ethernet) << "code " << code;
    }
}

TEST(Catalogue, ACodeOutsideTheTableIsSubscriptOutOfRange) {
    EXPECT_THROW(catalogueEntry(-1), RuntimeError);
    EXPECT_THROW(catalogueEntry(9), RuntimeError);
}

TEST(Catalogue, SerieHFoldersEndInABackSlashAndOnlyTr6100Level2GoesIntoFirmcast) {
    EXPECT_STREQ(catalogueEntry(2).folderLevel1, "t:\\Programas\\Balanzas\\Serie_H\\Firmcast\\");
    EXPECT_STREQ(catalogueEntry(2).folderLevel2, "S:\\Programas\\Balanzas\\Serie_H\\Firmcast\\");
    EXPECT_STREQ(catalogueEntry(5).folderLevel1, "t:\\Programas\\Pesaje_y_Etiquetaje\\TR6100");
    EXPECT_STREQ(catalogueEntry(5).folderLevel2,
                 "S:\\Programas\\Pesaje_y_Etiquetaje\\TR6100\\firmcast");
    EXPECT_STREQ(catalogueEntry(6).folderLevel1, catalogueEntry(8).folderLevel1);
    EXPECT_STREQ(catalogueEntry(7).folderLevel2, "S:\\Programas\\Industrial\\Visores\\MV-510");
}

TEST(Catalogue, EachModelPictureShowsItsOwnImage) {
    ScenarioRig rig;
    Firmcast& f = rig.form();
    for (int code = 0; code < kCatalogueSize; ++code) {
        EXPECT_EQ(f.pictureOf(code).name(), kRows[code].picture);
        EXPECT_EQ(f.pictureOf(code).picture(), catalogueEntry(code).image);
        for (int other = 0; other < code; ++other) {
            EXPECT_NE(f.pictureOf(code).picture(), f.pictureOf(other).picture());
        }
    }
}

}  // namespace
}  // namespace fc::test
