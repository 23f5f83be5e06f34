#include "platform/nc/ToolGeometry.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <set>
#include <string>

using Varn::ToolGeometry;

namespace {

// Leading angles of ISO 5608 by style letter, in degrees.
const std::map<char, double> leadingAngles = {
    {'A', 90}, {'B', 75}, {'C', 90}, {'D', 45},   {'E', 60}, {'F', 90},    {'G', 90},    {'H', 107.5},
    {'J', 93}, {'K', 75}, {'L', 95}, {'M', 50},   {'N', 63}, {'P', 117.5}, {'Q', 107.5}, {'R', 75},
    {'S', 45}, {'T', 60}, {'U', 93}, {'V', 72.5}, {'W', 60}, {'Y', 85},
};

// Included angles of ISO 1832 by shape letter, in degrees; the round insert has none.
const std::map<wchar_t, double> includedAngles = {
    {L'A', 85}, {L'B', 82},  {L'C', 80},  {L'D', 55}, {L'E', 75}, {L'H', 120}, {L'K', 55}, {L'L', 90},
    {L'M', 86}, {L'O', 135}, {L'P', 108}, {L'S', 90}, {L'T', 60}, {L'V', 35},  {L'W', 80},
};

const std::string styleLetters = "ABCDEFGHJKLMNPQRSTUVWY"; // holder types from 1 on
const std::string barLetters = "FGJKLPQSTUWY";             // holder types from 31 on

std::set<int> holdersOf(ToolGeometry::Type type, ToolGeometry::InsertType insert)
{
    std::set<int> holders;
    for (int value = -1; value <= 45; ++value) {
        if (ToolGeometry::doesSupportHolder(type, insert, ToolGeometry::HolderType(value)))
            holders.insert(value);
    }
    return holders;
}

bool clears(char style, double includedAngle)
{
    return leadingAngles.at(style) + includedAngle <= 180;
}

} // namespace

TEST(HolderSupportTable, GeneralTurningTakesWhatClearsTheFaceBehindIt)
{
    for (const auto &[letter, angle] : includedAngles) {
        std::set<int> expected = {ToolGeometry::HOLDER_OFFSET_PROFILE, ToolGeometry::HOLDER_CUSTOM};
        for (std::size_t i = 0; i < styleLetters.size(); ++i) {
            if (clears(styleLetters[i], angle))
                expected.insert(ToolGeometry::HOLDER_A + static_cast<int>(i));
        }
        EXPECT_EQ(holdersOf(ToolGeometry::TYPE_TURNING_GENERAL, *ToolGeometry::insertTypeFromChar(letter)), expected)
            << static_cast<char>(letter);
    }
}

TEST(HolderSupportTable, BoringBarsTakeTheSameAndBarFTakesAll)
{
    for (const auto &[letter, angle] : includedAngles) {
        std::set<int> expected = {ToolGeometry::HOLDER_BORING_BAR_F, ToolGeometry::HOLDER_CUSTOM};
        for (std::size_t i = 0; i < barLetters.size(); ++i) {
            if (clears(barLetters[i], angle))
                expected.insert(ToolGeometry::HOLDER_BORING_BAR_F + static_cast<int>(i));
        }
        EXPECT_EQ(holdersOf(ToolGeometry::TYPE_TURNING_BORING, *ToolGeometry::insertTypeFromChar(letter)), expected)
            << static_cast<char>(letter);
    }
}

TEST(HolderSupportTable, RoundInsertsGoIntoFewHolders)
{
    EXPECT_EQ(holdersOf(ToolGeometry::TYPE_TURNING_GENERAL, ToolGeometry::INSERT_R),
              (std::set<int>{ToolGeometry::HOLDER_D, ToolGeometry::HOLDER_G, ToolGeometry::HOLDER_OFFSET_PROFILE,
                             ToolGeometry::HOLDER_CUSTOM}));
    EXPECT_EQ(holdersOf(ToolGeometry::TYPE_TURNING_BORING, ToolGeometry::INSERT_R),
              (std::set<int>{ToolGeometry::HOLDER_BORING_BAR_F, ToolGeometry::HOLDER_BORING_BAR_S,
                             ToolGeometry::HOLDER_CUSTOM}));
}

TEST(HolderSupportTable, AFreeInsertGoesIntoEveryHolderOfItsTool)
{
    EXPECT_EQ(holdersOf(ToolGeometry::TYPE_TURNING_GENERAL, ToolGeometry::INSERT_CUSTOM).size(), 24u);
    EXPECT_EQ(holdersOf(ToolGeometry::TYPE_TURNING_BORING, ToolGeometry::INSERT_CUSTOM).size(), 13u);
}

TEST(HolderSupportTable, ThreadingAndGroovingHaveHoldersOfTheirOwn)
{
    for (const int insert : {20, 21, 22})
        EXPECT_EQ(holdersOf(ToolGeometry::TYPE_TURNING_THREADING, ToolGeometry::InsertType(insert)),
                  (std::set{24, 25, 30, 43}))
            << insert;
    for (const int insert : {17, 18})
        EXPECT_EQ(holdersOf(ToolGeometry::TYPE_TURNING_GROOVING, ToolGeometry::InsertType(insert)),
                  (std::set{26, 27, 28, 29, 43}))
            << insert;
    EXPECT_EQ(holdersOf(ToolGeometry::TYPE_TURNING_GROOVING, ToolGeometry::INSERT_GROOVE_V),
              (std::set{26, 28, 29, 43}));
}

TEST(HolderSupportTable, NothingIsSupportedForInsertsOfOtherToolsAndForOtherTools)
{
    std::size_t pairs = 0;
    for (int type = -1; type <= 49; ++type) {
        for (int insert = -1; insert <= 24; ++insert) {
            const auto holders = holdersOf(ToolGeometry::Type(type), ToolGeometry::InsertType(insert));
            pairs += holders.empty() ? 0 : 1;
            const bool fits = ((type == 22 || type == 25) && insert >= 0 && insert <= 16) ||
                              (type == 24 && insert >= 17 && insert <= 19) ||
                              (type == 23 && insert >= 20 && insert <= 22);
            EXPECT_EQ(!holders.empty(), fits) << type << ' ' << insert;
        }
    }
    EXPECT_EQ(pairs, 40u);
}
