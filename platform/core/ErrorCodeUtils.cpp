#include "platform/core/ErrorCodeUtils.h"

#include <QVariantList>

#include <algorithm>
#include <iterator>

namespace Varn {

namespace {

struct CodeRow {
    QLatin1String code;
    unsigned int number;
};

// Numbers from 2000 are warnings, those from 3000 errors, as with the faults of tools.
// clang-format off
constexpr CodeRow rows[] = {
    { QLatin1String("PARTIAL_SYNC_SUCCESS"), 2301 },
    { QLatin1String("SERVER_ERROR"),         3301 },
};
// clang-format on
constexpr unsigned int unknownError = 3300;

int codeOf(const QVariant &entry)
{
    return entry.canConvert<QVariantMap>() ? entry.toMap().value(QStringLiteral("code")).toInt() : entry.toInt();
}

/// Whether the map has changed.
bool removeFrom(QVariantMap &map, int code)
{
    const auto errors = map.find(QStringLiteral("errors"));
    if (errors == map.end())
        return false;
    QVariantList list = errors->toList();
    if (list.removeIf([code](const QVariant &entry) { return codeOf(entry) == code; }) == 0)
        return false;
    if (list.isEmpty())
        map.erase(errors);
    else
        *errors = list;
    return true;
}

} // namespace

void ErrorCodeUtils::removeErrorCodeFromLibrary(QVariantMap &library, int code)
{
    removeFrom(library, code);
    const auto data = library.find(QStringLiteral("data"));
    if (data == library.end())
        return;
    QVariantList tools = data->toList();
    bool changed = false;
    for (QVariant &tool : tools) {
        QVariantMap map = tool.toMap();
        if (removeFrom(map, code)) {
            tool = map;
            changed = true;
        }
    }
    if (changed)
        *data = tools;
}

std::vector<unsigned int> ErrorCodeUtils::getErrorCodes(const std::vector<QString> &codes, bool unknownToo,
                                                        bool onlyOnce)
{
    std::vector<unsigned int> numbers;
    for (const QString &code : codes) {
        const auto *row = std::find_if(std::begin(rows), std::end(rows), [&](const auto &r) { return r.code == code; });
        if (row == std::end(rows) && !unknownToo)
            continue;
        const unsigned int number = row == std::end(rows) ? unknownError : row->number;
        if (!onlyOnce || std::find(numbers.begin(), numbers.end(), number) == numbers.end())
            numbers.push_back(number);
    }
    return numbers;
}

} // namespace Varn
