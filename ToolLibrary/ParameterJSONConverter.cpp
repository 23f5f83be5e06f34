#include "ToolLibrary/ParameterJSONConverter.h"

#include "platform/core/FeatureFlag.h"
#include "platform/utils/Messages.h"
#include "util/utility/Assert.h"

#include <optional>
#include <string_view>

namespace Varn::Tools {

using std::wstring;
using std::wstring_view;

namespace {

struct FlagCall {
    wstring_view flag;
    std::size_t size; ///< of the whole call
};

/// The call that a text begins with: Util, any character, featureFlagEnabled('flag').
std::optional<FlagCall> flagCallAt(wstring_view text)
{
    constexpr wstring_view space = L"Util";
    constexpr wstring_view function = L"featureFlagEnabled('";
    constexpr std::size_t begin = space.size() + 1 + function.size();
    if (!text.starts_with(space) || text.size() < begin || text.substr(space.size() + 1, function.size()) != function)
        return std::nullopt;
    const std::size_t end = text.find(L'\'', begin);
    if (end == wstring_view::npos || end + 1 == text.size() || text[end + 1] != L')')
        return std::nullopt;
    return FlagCall{text.substr(begin, end - begin), end + 2};
}

} // namespace

wstring ParameterJSONConverter::preprocessExpression(const wstring &expression)
{
    wstring out;
    for (wstring_view rest = expression; !rest.empty();) {
        if (const auto call = flagCallAt(rest)) {
            out += FeatureFlag::enabled(Messages::fromWideUnicodeToUTF8(call->flag), true) ? L"true" : L"false";
            rest.remove_prefix(call->size);
        } else {
            out += rest.front();
            rest.remove_prefix(1);
        }
    }
    VARN_ASSERT(out.find(L"Util.") == wstring::npos);
    return out;
}

} // namespace Varn::Tools
