// RapidJsonLibraryWriter.h -- delivers a library into a RapidJSON document: the way in of every large library.
#pragma once

#include "ToolLibrary/Interface/Private/JsonManipulation/JsonConsumer.h"

#include <rapidjson/document.h>

#include <cstddef>

namespace Varn::ToolLibraries {

/// Reads strict JSON: no comments, no trailing commas, no NaN or Infinity. A text that nests deeper than 1,000 levels
/// or has too many values is refused like any other bad text. The abortable is asked at the end of each object.
class TOOL_LIBRARY_EXPORT RapidJsonLibraryWriter : public JsonConsumer
{
public:
    /// Names count as values. Each takes 16 bytes in the document, and may be two in the text: an archive of two
    /// megabytes could ask for 30 gigabytes. A library of 100,000 tools has a seventh of this.
    static constexpr std::size_t mostValues = std::size_t{1} << 27;

    /// \a target must outlive this object.
    explicit RapidJsonLibraryWriter(rapidjson::Document *target, std::size_t most = mostValues)
        : m_target(target), m_mostValues(most)
    {
    }

    /// UTF-8, UTF-16 or UTF-32, told by a byte order mark or by the first four bytes. False for a file that can't be
    /// opened, is no plain file, or holds bytes that are no text of its encoding. Never holds the whole file in memory.
    bool acceptJsonFile(const std::wstring &path, const Abortable &abortable) const override;

    /// UTF-8, with or without a byte order mark; the bytes of texts are taken as they are.
    bool acceptJsonBytes(const QByteArray &bytes, const Abortable &abortable) const override;
    bool acceptJsonString(const std::string &text, const Abortable &abortable) const override;
    void acceptQVariantMap(const QMap<QString, QVariant> &map) const override;

private:
    rapidjson::Document *m_target;
    std::size_t m_mostValues;
};

} // namespace Varn::ToolLibraries
