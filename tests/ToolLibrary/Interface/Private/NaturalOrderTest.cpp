// NaturalOrderTest.cpp -- T9 comes before T10, however the names are sorted.
#include "ToolLibrary/Interface/Private/NaturalOrder.h"

#include <QString>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>

using Varn::ToolLibraries::NaturalOrder;

namespace {

/// Names out of pieces that numbers can be misread in.
std::wstring randomName(std::mt19937 &random)
{
    static const wchar_t *const pieces[] = {
        L"T", L"0", L"1",  L"01", L"1.5", L"1.50", L".", L"e2", L"E+1", L"0x", L"f",  L" - ", L"∅", L"10", L"9",
        L"p", L"-", L"mm", L"a",  L"..",  L"12e5", L"ä", L"\"", L"/",   L":",  L"00", L"日",  L",", L" ",  L"1e999"};
    std::wstring name;
    for (auto length = random() % 6; length > 0; --length)
        name += pieces[random() % std::size(pieces)];
    return name;
}

std::string text(const std::wstring &name)
{
    return QString::fromStdWString(name).toStdString();
}

} // namespace

TEST(NaturalOrder, NamesThatGoOnDifferentlyAreNoConsistentOrder)
{
    const struct {
        std::vector<std::wstring> names;
        bool isConsistent;
    } rows[] = {
        {{}, true},
        {{L"", L"mill", L"T1 8x1.25", L"T1 8x1.25"}, true},
        {{L"T", L"T1", L"T12", L"T1a", L"T1ab"}, true},
        {{L"CNMG090308", L"CNMG090304", L"tool #90308"}, true}, // different places
        {{L"T01a", L"T1b"}, true},                              // decided before either ends
        {{L"T2", L"T02b", L"T2a"}, false},
        {{L"T1", L"T01"}, false},
        {{L"8.0", L"8 mm"}, false},
        {{L"8.0 mm", L"8 mm"}, false},
        {{L"8.0 mm", L"8 in"}, true},
        {{L"1e2", L"100"}, false},
        {{L"12345678901234567", L"12345678901234568"}, false}, // one double
    };
    for (const auto &row : rows) {
        std::vector<const std::wstring *> names;
        for (const std::wstring &name : row.names)
            names.push_back(&name);
        std::ranges::sort(names, [](const auto *a, const auto *b) { return NaturalOrder::comesBefore(*a, *b); });
        EXPECT_EQ(NaturalOrder::isConsistent(names), row.isConsistent)
            << (row.names.empty() ? "" : QString::fromStdWString(row.names[0]).toStdString());
    }
}

TEST(NaturalOrder, ComesBeforeIsAStrictOrder)
{
    std::mt19937 random(11);
    for (int round = 0; round < 20'000; ++round) {
        const std::wstring a = randomName(random);
        const std::wstring b = randomName(random);
        const std::wstring c = randomName(random);
        ASSERT_EQ(NaturalOrder::comesBefore(a, b) + NaturalOrder::comesBefore(b, a), a != b)
            << text(a) << ", " << text(b);
        if (NaturalOrder::comesBefore(a, b) && NaturalOrder::comesBefore(b, c)) {
            ASSERT_TRUE(NaturalOrder::comesBefore(a, c)) << text(a) << ", " << text(b) << ", " << text(c);
        }
    }
}

TEST(NaturalOrder, KeysNeverContradictIt)
{
    std::mt19937 random(12);
    int decided = 0;
    for (int round = 0; round < 20'000; ++round) {
        const std::wstring a = randomName(random);
        const std::wstring b = randomName(random);
        if (NaturalOrder::keyOf(a) < NaturalOrder::keyOf(b)) {
            ++decided;
            ASSERT_TRUE(NaturalOrder::comesBefore(a, b)) << text(a) << ", " << text(b);
        }
    }
    EXPECT_GT(decided, 5'000);
}

TEST(NaturalOrder, AmongConsistentNamesItIsThatOfTheSorter)
{
    std::mt19937 random(13);
    int consistent = 0;
    for (int round = 0; round < 5'000; ++round) {
        std::vector<std::wstring> names(4);
        std::ranges::generate(names, [&] { return randomName(random); });
        std::ranges::sort(names, NaturalOrder::comesBefore);
        std::vector<const std::wstring *> pointers;
        for (const std::wstring &name : names)
            pointers.push_back(&name);
        if (!NaturalOrder::isConsistent(pointers))
            continue;
        ++consistent;
        for (std::size_t i = 0; i < names.size(); ++i)
            for (std::size_t j = i; j < names.size(); ++j)
                ASSERT_FALSE(NaturalOrder::compareNames(names[i], names[j]) > 0)
                    << text(names[i]) << ", " << text(names[j]);
    }
    EXPECT_GT(consistent, 500);
}
