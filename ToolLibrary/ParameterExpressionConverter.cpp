#include "ToolLibrary/ParameterExpressionConverter.h"

#include "platform/core/ToolSpecification.h"

namespace Varn::Tools {

const QString ParameterExpressionConverter::expressionsKey = QStringLiteral("expressions");

void ParameterExpressionConverter::convertExpressions(const ToolSpecification &tool, QVariantMap &map)
{
    addExpressionsToToolMap(tool.getExpressions(), map);
}

void ParameterExpressionConverter::convertExpressions(const QVariantMap &map, ToolSpecification &tool)
{
    const std::optional<QVariantMap> expressions = getExpressionsMap(map);
    if (!expressions)
        return;
    for (auto entry = expressions->constBegin(); entry != expressions->constEnd(); ++entry)
        tool.setExpression(entry.key().toStdWString(), entry->toString().toStdWString());
}

void ParameterExpressionConverter::addExpressionsToToolMap(const std::map<std::wstring, std::wstring> &expressions,
                                                           QVariantMap &map)
{
    if (expressions.empty())
        return;
    QVariantMap texts;
    for (const auto &[parameter, expression] : expressions)
        texts.insert(QString::fromStdWString(parameter), QString::fromStdWString(expression));
    map.insert(expressionsKey, texts);
}

std::optional<QVariantMap> ParameterExpressionConverter::getExpressionsMap(const QVariantMap &map)
{
    const auto expressions = map.constFind(expressionsKey);
    if (expressions == map.constEnd())
        return std::nullopt;
    return expressions->toMap();
}

} // namespace Varn::Tools
