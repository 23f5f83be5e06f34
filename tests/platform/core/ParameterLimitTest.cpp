#include "platform/core/ParameterLimit.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using Varn::ParameterLimit;

TEST(ParameterLimit, IsWhatTheParameterIsComparedWith)
{
    struct Case {
        const wchar_t *constraint;
        std::vector<std::wstring> bounds;
    };
    const Case cases[] = {
        {L"", {}},
        {L"a", {}},
        {L"a >", {}},
        {L"a > 0", {L"0"}},
        {L"0 < a", {L"0"}},
        {L"a == b", {L"b"}},
        {L"a != 0", {}},
        {L"b > 0", {}},
        {L"a + 1 > 0", {}},
        {L"-a > 0", {}},
        {L"a <= b * (c + 1) / 2", {L"b * (c + 1) / 2"}},
        {L"a >= 0 && a <= 180", {L"0", L"180"}},
        {L"t == 'x' || a >= b", {L"b"}},
        {L"t == 'a > 5' || b > a", {L"b"}},
        {L"(a > 0) && a < 9", {L"9"}},
        {L"!(a > 0 || a < 9)", {}},
        {L"Math.abs(a) > 1", {}},
        {L"a > Math.min(b, c)", {L"Math.min(b, c)"}},
        {L"a * 2 >= b + c", {L"(b + c) / 2"}},
        {L"b <= a * 0.51", {L"(b) / 0.51"}},
        {L"b <= a * c", {}},
        {L"b <= 2 * a * 3", {}},
        {L"a * 0 < 1", {L"(1) / 0"}},
        {L"a > 1 ? b : c", {}},
        {L"b && c ? 1 < a && b : a < 2", {}},
        {L"b || (c ? 1 : 2) < a", {L"(c ? 1 : 2)"}},
        {L"aa > 1 && a.b > 2", {}},
        {L"'", {}},
    };
    for (const auto &[constraint, bounds] : cases) {
        std::vector<std::wstring> found;
        for (const ParameterLimit &limit : ParameterLimit::of(L"a", constraint))
            found.push_back(limit.bound);
        EXPECT_EQ(found, bounds) << std::wstring(constraint);
    }
}

TEST(ParameterLimit, KeepsItsComparison)
{
    const auto limits = ParameterLimit::of(L"a", L"x || 2 * b >= a && y");
    ASSERT_EQ(limits.size(), 1u);
    EXPECT_EQ(limits[0].comparison, L"2 * b >= a");
}
