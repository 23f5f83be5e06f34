// ByteArrayCZipMemFile.h -- a memory file of an archive whose memory is a QByteArray. One thread at a time.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/zip/CZipMemFile.h"

#include <QByteArray>

namespace Varn::Tools {

/// The archive classes read from the byte array, and write into it, without a copy.
class TOOL_LIBRARY_EXPORT ByteArrayCZipMemFile : public CZipMemFile
{
public:
    /// Empty; growing on its own until resize().
    ByteArrayCZipMemFile() = default;

    /// \a bytes to read. Shared, not copied; a write goes to a copy.
    explicit ByteArrayCZipMemFile(const QByteArray &bytes);

    /// Detaches before the byte array goes.
    ~ByteArrayCZipMemFile() override;

    /// Attaches to \a size new bytes in the place of the old content and returns them, for the caller to fill.
    char *resize(qsizetype size);

private:
    QByteArray m_bytes;
};

} // namespace Varn::Tools
