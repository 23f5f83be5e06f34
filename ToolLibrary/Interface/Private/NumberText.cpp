#include "ToolLibrary/Interface/Private/NumberText.h"

#include "platform/core/ToolSpecification.h"

#include <QString>

namespace Varn::ToolLibraries::NumberText {

namespace {

constexpr int lengthPrecision = 5;
constexpr int insertPrecision = 2;

std::wstring fractionOr(double value, bool asFraction, int precision)
{
    if (asFraction)
        if (const std::optional<std::wstring> fraction = ToolSpecification::getFractionalString(value))
            return *fraction;
    return withPrecision(value, precision);
}

} // namespace

std::wstring withPrecision(double value, int precision)
{
    QString text = QString::number(value, 'f', precision);
    qsizetype end = text.size();
    while (end > 0 && text[end - 1] == QLatin1Char('0'))
        --end;
    if (end == text.size())
        return text.toStdWString();
    if (end > 0 && text[end - 1] == QLatin1Char('.'))
        --end;
    text.truncate(end);
    return text.toStdWString();
}

std::wstring length(double value, bool isInch)
{
    return fractionOr(value, isInch, lengthPrecision);
}

std::wstring ofInsert(double value, bool asFraction)
{
    return fractionOr(value, asFraction, insertPrecision);
}

} // namespace Varn::ToolLibraries::NumberText
