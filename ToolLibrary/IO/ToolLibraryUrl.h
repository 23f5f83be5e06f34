// ToolLibraryUrl.h -- the name of any node in the tree of tool libraries: a library file, a folder, a cloud or hub
// node, a document, a setup inside a document. A value; any thread.
//
// The text is the identity of the node. It is parsed once, by one regular expression, into scheme, folder and file.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/tool/ToolLibraryLocator.h"

#include <QRegularExpressionMatch>
#include <QString>
#include <QStringList>

#include <filesystem>
#include <functional>

namespace Varn::Tools {

class TOOL_LIBRARY_EXPORT ToolLibraryUrl
{
public:
    /// What the scheme says. Http and Https can be written but are not read back; see docs/decisions.md.
    enum ProtocolType {
        Document = 0,
        Local = 1,
        System = 2,
        Http = 3,
        Https = 4,
        Cloud = 5,
        All = 6,
        Custom = 7,
        Hub = 8,
        Vendor = 9,
        Unknown = 10
    };

    static const QString libraryZetLibExtension; ///< ".zetlib"
    static const QString libraryJsonExtension;   ///< ".json"
    static const QString libraryToolsExtension;  ///< ".tools"
    static const QString libraryHubExtension;    ///< ".hub"
    static const QString libraryCsvExtension;    ///< ".csv"
    static const QString libraryP21Extension;    ///< ".p21"
    static const QString libraryGTCExtension;    ///< ".zip"
    static constexpr int MAX_LIBRARY_ID = 65535; ///< how many names makeUniqueUrl tries

    ToolLibraryUrl() = default;
    explicit ToolLibraryUrl(const QString &url);
    ToolLibraryUrl(const QString &path, ProtocolType type);
    explicit ToolLibraryUrl(const ToolLibraries::ToolLibraryLocator &locator);
    operator ToolLibraries::ToolLibraryLocator() const;

    const QString &url() const { return m_url; }
    ProtocolType protocol() const { return m_protocol; }

    /// The form of a library file: 0 .zetlib, 1 .json, 2 .tools, 3 .hub; -1 when the text names none of them.
    int version() const { return m_version; }

    friend bool operator==(const ToolLibraryUrl &a, const ToolLibraryUrl &b)
    {
        return a.m_protocol == b.m_protocol && a.m_url == b.m_url;
    }
    /// By the text alone, code unit by code unit.
    friend bool operator<(const ToolLibraryUrl &a, const ToolLibraryUrl &b) { return a.m_url < b.m_url; }

    bool isValid() const { return !isUnknown(); }
    bool isUnknown() const;
    bool isAllLibrary() const;
    bool isCustomFolder() const;
    bool isCustomLibrary() const;
    bool isLocalLibrary() const; ///< folder or not
    bool isLocalFolder() const;
    bool isLocalRootFolder() const;
    bool isSystemLibrary() const; ///< folder or not
    bool isSystemRootFolder() const;
    bool isSamplesRootFolder() const;
    bool isSampleLibrary() const;
    bool isWebLibrary() const;
    bool isCloudLibrary() const;
    bool isCloudFolder() const;
    bool isCloudRootFolder() const;
    bool isHubLibrary() const;
    bool isHubFolder() const;
    bool isHubRootFolder() const;
    bool isVendorLibrary() const;
    bool isVendorFolder() const;
    bool isVendorRootFolder() const;
    bool isDocumentLibrary() const;
    bool isDocumentRootFolder() const;
    bool isSetup() const;
    bool isLibraryFile() const; ///< a file that is read from disk; true for vendor files too
    bool isLibrary() const;
    bool isFolder() const;
    bool needsUpgrade() const; ///< true for a folder as well, which has no version

    /// The text behind the scheme.
    QString libraryPath() const;
    /// With its dot; empty for what is no library file.
    QString extension() const;
    /// The path without the extension. REQUIRES: neither a document nor a setup.
    QString libraryName() const;
    /// The last part of libraryName().
    QString libraryBaseName() const;
    /// What a person reads in the tree, in the language of the moment.
    QString libraryDisplayName() const;
    /// REQUIRES: isSampleLibrary(). A sample that has no translation keeps its base name.
    QString localizedSampleLibraryName() const;
    /// REQUIRES: isSetup().
    QString setupName() const;
    std::filesystem::path libraryFileSystemPath() const;

    /// The place on disk, for the protocols that have one; the path as it stands for the others. Throws Exception
    /// "Not implemented" for a vendor URL.
    QString fullFilePath() const;

    /// The word for the protocol in the JSON of a node.
    QString nodeTypeFromProtocol() const;

    /// The text with every occurrence of its extension replaced; unchanged when it has none.
    QString convertTo(const QString &newExtension) const;
    QString convertToCurrentVersion() const;

    static QString currentExtension();
    static QStringList allFileExtensions(bool withDot);
    static QStringList atRestFileExtensions(bool withDot, bool withZetLib);

    /// The document of a setup or of a document library; a default URL for anything else.
    ToolLibraryUrl documentUrl() const;

    /// The folder around this node. A URL that ends in "/" has no known parent: a default URL.
    ToolLibraryUrl parentUrl() const;

    /// REQUIRES: isFolder() and a name.
    ToolLibraryUrl makeChildUrl(const QString &name) const;

    /// \a url, or its name with the first number for which \a isAvailable says yes to the name without extension.
    /// Throws IOError "Failed to generate a unique name" after MAX_LIBRARY_ID refusals.
    static ToolLibraryUrl makeUniqueUrl(const ToolLibraryUrl &url,
                                        const std::function<bool(const QString &)> &isAvailable);

    /// A URL beside \a url under whose name no library file or folder lies. Throws NotSupportedError "Not supported"
    /// for vendor and hub nodes, IOError as makeUniqueUrl does.
    static ToolLibraryUrl makeUniqueUrlOnDisk(const ToolLibraryUrl &url);

private:
    static QString toUrlString(const QString &path, ProtocolType type);
    static ProtocolType toProtocolType(const QString &scheme);
    static ProtocolType toProtocolType(const QRegularExpressionMatch &match);
    static int toVersion(const QString &file);
    static int toVersion(const QRegularExpressionMatch &match);
    static QString toProtocol(ProtocolType type);

    QString m_url;
    QRegularExpressionMatch m_match;
    ProtocolType m_protocol = Unknown;
    int m_version = -1;
};

} // namespace Varn::Tools
