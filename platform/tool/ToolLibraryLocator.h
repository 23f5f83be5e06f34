// ToolLibraryLocator.h -- names a library across the interface: a URL of the tree, or a plain path from a file dialog.
// A value type, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <json/value.h>

#include <cstddef>
#include <functional>
#include <string>

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT ToolLibraryLocator
{
public:
    /// A locator of URL kind. Any text is taken: what it names is decided by who opens it.
    explicit ToolLibraryLocator(std::wstring url);

    static ToolLibraryLocator fromFilePath(std::wstring path);

    /// The URL text, or the path.
    const std::wstring &url() const { return m_text; }
    bool isFilePath() const { return m_kind == Kind::FilePath; }

    /// A URL as a JSON string, a path as {"path": FILE}.
    Json::Value toJsonValue() const;
    std::string toJson() const;

    /// Reads either form; throws InvalidInput for anything else.
    static ToolLibraryLocator fromJson(const Json::Value &value);

    friend bool operator==(const ToolLibraryLocator &a, const ToolLibraryLocator &b)
    {
        return a.m_kind == b.m_kind && a.m_text == b.m_text;
    }

    static const ToolLibraryLocator UserLibrariesFolder; ///< "all://", the root of everything that the user sees
    static const ToolLibraryLocator DocumentsFolder;     ///< "document://", the open documents
    static const ToolLibraryLocator HubsFolder;          ///< "hub://", the libraries of the cloud hub

private:
    enum class Kind { Url = 0, FilePath = 1 };
    ToolLibraryLocator(Kind kind, std::wstring text);

    Kind m_kind;
    std::wstring m_text;
};

} // namespace Varn::ToolLibraries

template <>
struct std::hash<Varn::ToolLibraries::ToolLibraryLocator> {
    std::size_t operator()(const Varn::ToolLibraries::ToolLibraryLocator &locator) const noexcept
    {
        return std::hash<std::wstring>{}(locator.url()) + (locator.isFilePath() ? 1 : 0);
    }
};
