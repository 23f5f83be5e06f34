// JsonConsumer.h -- where every library format delivers its document. Not shared between threads.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVariant>

#include <string>

namespace Varn {
class Abortable;
}

namespace Varn::ToolLibraries {

/// True means that the consumer now holds the document. After false, and after an abort, what it holds is worthless.
class TOOL_LIBRARY_EXPORT JsonConsumer
{
public:
    JsonConsumer() = default;
    JsonConsumer(const JsonConsumer &) = delete;
    JsonConsumer &operator=(const JsonConsumer &) = delete;

    virtual bool acceptJsonFile(const std::wstring &path, const Abortable &abortable) const = 0;
    virtual bool acceptJsonBytes(const QByteArray &bytes, const Abortable &abortable) const = 0;
    virtual bool acceptJsonString(const std::string &text, const Abortable &abortable) const = 0;
    virtual void acceptQVariantMap(const QMap<QString, QVariant> &map) const = 0;
    virtual ~JsonConsumer();
};

} // namespace Varn::ToolLibraries
