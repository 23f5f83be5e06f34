#include "platform/core/ToolErrorConverter.h"

#include "platform/core/ToolErrorFactory.h"
#include "platform/core/ToolSpecification.h"

#include <QMetaType>
#include <QString>
#include <QVariantList>

#include <utility>

namespace Varn {

namespace {

QString errorsKey()
{
    return QStringLiteral("errors");
}

/// A text is no list of its own.
QVariantList listOf(const QVariantMap &tool)
{
    const QVariant list = tool.value(errorsKey());
    return list.typeId() == QMetaType::QVariantList ? list.toList() : QVariantList();
}

} // namespace

void ToolErrorConverter::convertErrors(const Errors &errors, QVariantMap &tool)
{
    QVariantList added;
    for (const std::shared_ptr<ToolError> &error : errors)
        if (error)
            added.append(error->toMap());
    if (!added.isEmpty())
        tool.insert(errorsKey(), listOf(tool) + added);
}

void ToolErrorConverter::convertErrors(const QVariantMap &tool, Errors &errors)
{
    errors.clear();
    for (const QVariant &entry : listOf(tool))
        if (entry.canConvert<QVariantMap>())
            errors.push_back(ToolErrorFactory::make(entry));
}

void ToolErrorConverter::convertErrors(const ToolSpecification &record, QVariantMap &tool)
{
    convertErrors(record.getErrors(), tool);
}

void ToolErrorConverter::convertErrors(const QVariantMap &tool, ToolSpecification &record)
{
    Errors errors;
    convertErrors(tool, errors);
    record.setErrors(std::move(errors));
}

void ToolErrorConverter::convertError(const std::shared_ptr<ToolError> &error, QVariantMap &tool)
{
    convertErrors({error}, tool);
}

} // namespace Varn
