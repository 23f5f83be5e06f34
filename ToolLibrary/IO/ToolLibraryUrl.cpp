#include "ToolLibrary/IO/ToolLibraryUrl.h"

#include "ToolLibrary/IO/LibraryDisplayNames.h"
#include "ToolLibrary/Interface/FilePaths.h"
#include "platform/tool/Exception.h"
#include "platform/utils/FileSystem.h"
#include "util/utility/Assert.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>

#include <array>

namespace Varn::Tools {

using ToolLibraries::ToolLibraryLocator;

namespace {

// "local" is a node type only: a URL local://x is of unknown protocol.
struct ProtocolRow {
    ToolLibraryUrl::ProtocolType type;
    const char *scheme;
    bool readBack;
    const char *nodeType;
};

// clang-format off
constexpr ProtocolRow protocolTable[] = {
    // type                     scheme               readBack  node type
    { ToolLibraryUrl::Document, "document",          true,     "document"          },
    { ToolLibraryUrl::Local,    "toollibraryroot",   true,     "local"             },
    { ToolLibraryUrl::System,   "systemlibraryroot", true,     "systemlibraryroot" },
    { ToolLibraryUrl::Http,     "http",              false,    "Unknown"           },
    { ToolLibraryUrl::Https,    "https",             false,    "Unknown"           },
    { ToolLibraryUrl::Cloud,    "cloud",             true,     "cloud"             },
    { ToolLibraryUrl::All,      "all",               true,     "all"               },
    { ToolLibraryUrl::Custom,   "custom",            true,     "custom"            },
    { ToolLibraryUrl::Hub,      "hub",               true,     "hub"               },
    { ToolLibraryUrl::Vendor,   "vendor",            true,     "vendor"            },
};
// clang-format on

const ProtocolRow *rowOf(ToolLibraryUrl::ProtocolType type)
{
    const auto *row = std::ranges::find(protocolTable, type, &ProtocolRow::type);
    return row == std::end(protocolTable) ? nullptr : row;
}

/// The extensions in the order of the version numbers.
const std::array<QString, 4> &versionExtensions()
{
    static const std::array<QString, 4> extensions{
        ToolLibraryUrl::libraryZetLibExtension, ToolLibraryUrl::libraryJsonExtension,
        ToolLibraryUrl::libraryToolsExtension, ToolLibraryUrl::libraryHubExtension};
    return extensions;
}

constexpr int currentVersion = 1;

const QRegularExpression urlPattern(QStringLiteral("((?<protocol>[a-z]+)://)?(?<folder>/?([^/]+/)*)?(?<file>.+)?"));

/// A byte of a file name that is no UTF-8 is half a character in the text, on which no pattern matches.
QString withoutHalves(QString url)
{
    if (url.isValidUtf16())
        return url;
    for (qsizetype i = 0; i < url.size(); ++i) {
        const bool isWhole = url[i].isHighSurrogate() && i + 1 < url.size() && url[i + 1].isLowSurrogate();
        if (isWhole)
            ++i;
        else if (url[i].isSurrogate())
            url[i] = QChar::ReplacementCharacter;
    }
    return url;
}

QStringList withoutDots(QStringList extensions)
{
    for (QString &extension : extensions)
        extension.remove(0, 1);
    return extensions;
}

} // namespace

const QString ToolLibraryUrl::libraryZetLibExtension = QStringLiteral(".zetlib");
const QString ToolLibraryUrl::libraryJsonExtension = QStringLiteral(".json");
const QString ToolLibraryUrl::libraryToolsExtension = QStringLiteral(".tools");
const QString ToolLibraryUrl::libraryHubExtension = QStringLiteral(".hub");
const QString ToolLibraryUrl::libraryCsvExtension = QStringLiteral(".csv");
const QString ToolLibraryUrl::libraryP21Extension = QStringLiteral(".p21");
const QString ToolLibraryUrl::libraryGTCExtension = QStringLiteral(".zip");

ToolLibraryUrl::ToolLibraryUrl(const QString &url)
    : m_url(url),
      m_match(urlPattern.match(withoutHalves(url))),
      m_protocol(toProtocolType(m_match)),
      m_version(toVersion(m_match))
{
}

ToolLibraryUrl::ToolLibraryUrl(const QString &path, ProtocolType type) : ToolLibraryUrl(toUrlString(path, type)) {}

ToolLibraryUrl::ToolLibraryUrl(const ToolLibraryLocator &locator)
    : ToolLibraryUrl(QString::fromStdWString(locator.url()))
{
}

ToolLibraryUrl::operator ToolLibraryLocator() const
{
    return ToolLibraryLocator(FileSystem::fromQString(m_url));
}

bool ToolLibraryUrl::isUnknown() const
{
    return m_protocol == Unknown;
}

bool ToolLibraryUrl::isAllLibrary() const
{
    return m_protocol == All;
}

bool ToolLibraryUrl::isCustomFolder() const
{
    return m_protocol == Custom;
}

bool ToolLibraryUrl::isCustomLibrary() const
{
    return isCustomFolder();
}

bool ToolLibraryUrl::isLocalLibrary() const
{
    return m_protocol == Local;
}

bool ToolLibraryUrl::isLocalFolder() const
{
    return m_protocol == Local && isFolder();
}

bool ToolLibraryUrl::isLocalRootFolder() const
{
    return m_url == u"toollibraryroot://Local";
}

bool ToolLibraryUrl::isSystemLibrary() const
{
    return m_protocol == System;
}

bool ToolLibraryUrl::isSystemRootFolder() const
{
    return m_url == u"systemlibraryroot";
}

bool ToolLibraryUrl::isSamplesRootFolder() const
{
    return m_url == u"systemlibraryroot://Samples";
}

bool ToolLibraryUrl::isSampleLibrary() const
{
    return m_protocol == System && m_url.contains(u"Sample");
}

bool ToolLibraryUrl::isWebLibrary() const
{
    return m_protocol == Http || m_protocol == Https;
}

bool ToolLibraryUrl::isCloudLibrary() const
{
    return m_protocol == Cloud && !libraryPath().isEmpty() && m_version != -1;
}

bool ToolLibraryUrl::isCloudFolder() const
{
    return m_protocol == Cloud && !isCloudLibrary();
}

bool ToolLibraryUrl::isCloudRootFolder() const
{
    return m_protocol == Cloud && libraryPath().isEmpty();
}

bool ToolLibraryUrl::isHubLibrary() const
{
    return m_protocol == Hub && !libraryPath().isEmpty() && m_version != -1;
}

bool ToolLibraryUrl::isHubFolder() const
{
    return m_protocol == Hub && !isHubLibrary();
}

bool ToolLibraryUrl::isHubRootFolder() const
{
    return m_protocol == Hub && libraryPath().isEmpty();
}

bool ToolLibraryUrl::isVendorLibrary() const
{
    return m_protocol == Vendor && !libraryPath().isEmpty() && m_version != -1;
}

bool ToolLibraryUrl::isVendorFolder() const
{
    return m_protocol == Vendor && !isVendorLibrary();
}

bool ToolLibraryUrl::isVendorRootFolder() const
{
    return m_protocol == Vendor && libraryPath().isEmpty();
}

bool ToolLibraryUrl::isDocumentLibrary() const
{
    if (m_protocol != Document)
        return false;
    const QString path = libraryPath();
    return !path.isEmpty() && !path.contains(u'/');
}

bool ToolLibraryUrl::isDocumentRootFolder() const
{
    return m_protocol == Document && libraryPath().isEmpty();
}

bool ToolLibraryUrl::isSetup() const
{
    return m_protocol == Document && m_url != u"document" && libraryPath().contains(u'/');
}

bool ToolLibraryUrl::isLibraryFile() const
{
    return m_version != -1 && m_protocol != Hub;
}

bool ToolLibraryUrl::isLibrary() const
{
    return isCloudLibrary() || isDocumentLibrary() || isHubLibrary() || isLibraryFile() || isSetup() ||
           isVendorLibrary();
}

bool ToolLibraryUrl::isFolder() const
{
    return !isLibrary();
}

bool ToolLibraryUrl::needsUpgrade() const
{
    return m_version < currentVersion;
}

QString ToolLibraryUrl::libraryPath() const
{
    const qsizetype protocolStart = m_match.capturedStart(1);
    if (protocolStart < 0)
        return m_url;
    VARN_ASSERT(protocolStart == 0);
    return m_url.mid(m_match.capturedEnd(1));
}

QString ToolLibraryUrl::extension() const
{
    const auto &extensions = versionExtensions();
    const auto index = static_cast<std::size_t>(m_version);
    return m_version >= 0 && index < extensions.size() ? extensions[index] : QString();
}

QString ToolLibraryUrl::libraryName() const
{
    VARN_EXPECTS(!isDocumentLibrary() && !isSetup());
    return libraryPath().chopped(extension().size());
}

QString ToolLibraryUrl::libraryBaseName() const
{
    return QFileInfo(libraryName()).absoluteFilePath().section(u'/', -1);
}

QString ToolLibraryUrl::libraryDisplayName() const
{
    // The first test that holds decides.
    if (isLocalRootFolder())
        return LibraryDisplayNames::localRoot();
    if (isCloudRootFolder())
        return LibraryDisplayNames::cloudRoot();
    if (isSamplesRootFolder())
        return LibraryDisplayNames::samplesRoot();
    if (isDocumentRootFolder())
        return LibraryDisplayNames::documentsRoot();
    if (isSampleLibrary())
        return localizedSampleLibraryName();
    if (isHubRootFolder())
        return LibraryDisplayNames::hubRoot();
    if (isVendorRootFolder())
        return LibraryDisplayNames::vendorRoot();
    return libraryBaseName();
}

QString ToolLibraryUrl::localizedSampleLibraryName() const
{
    VARN_EXPECTS(isSampleLibrary());
    return LibraryDisplayNames::sampleLibrary(libraryBaseName());
}

QString ToolLibraryUrl::setupName() const
{
    VARN_ASSERT(isSetup());
    const QString path = libraryPath();
    return path.mid(path.indexOf(u'/') + 1);
}

std::filesystem::path ToolLibraryUrl::libraryFileSystemPath() const
{
    return QFileInfo(libraryPath()).filesystemFilePath();
}

QString ToolLibraryUrl::fullFilePath() const
{
    const FilePaths &paths = FilePaths::get();
    const auto below = [this](const std::wstring &base) {
        return QDir(QString::fromStdWString(base)).filePath(libraryPath());
    };
    switch (m_protocol) {
    case Local:
        return below(paths.localLibrariesFolder());
    case System:
        return below(paths.systemLibrariesFolder());
    case Cloud:
        return below(paths.cloudLibrariesFolder());
    case Vendor:
        throw ToolLibraries::Exception("Not implemented");
    default:
        return libraryPath();
    }
}

QString ToolLibraryUrl::nodeTypeFromProtocol() const
{
    const ProtocolRow *row = rowOf(m_protocol);
    return QString::fromLatin1(row ? row->nodeType : "Unknown");
}

QString ToolLibraryUrl::convertTo(const QString &newExtension) const
{
    const QString old = extension();
    if (old.isEmpty())
        return m_url;
    QString text = m_url;
    return text.replace(old, newExtension);
}

QString ToolLibraryUrl::convertToCurrentVersion() const
{
    return convertTo(currentExtension());
}

QString ToolLibraryUrl::currentExtension()
{
    return libraryJsonExtension;
}

QStringList ToolLibraryUrl::allFileExtensions(bool withDot)
{
    const QStringList extensions{libraryZetLibExtension, libraryJsonExtension, libraryToolsExtension,
                                 libraryCsvExtension};
    return withDot ? extensions : withoutDots(extensions);
}

QStringList ToolLibraryUrl::atRestFileExtensions(bool withDot, bool withZetLib)
{
    QStringList extensions{libraryJsonExtension, libraryToolsExtension};
    if (withZetLib)
        extensions << libraryZetLibExtension;
    return withDot ? extensions : withoutDots(extensions);
}

ToolLibraryUrl ToolLibraryUrl::documentUrl() const
{
    if (isSetup())
        return ToolLibraryUrl(libraryPath().section(u'/', 0, 0), m_protocol);
    return isDocumentLibrary() ? *this : ToolLibraryUrl();
}

ToolLibraryUrl ToolLibraryUrl::parentUrl() const
{
    if (!m_match.hasMatch()) {
        VARN_FAIL("Restricted flow");
        return ToolLibraryUrl();
    }
    const qsizetype start = m_match.capturedStart(u"file");
    if (start < 0)
        return ToolLibraryUrl();
    if (m_match.capturedLength(u"folder") > 0)
        return ToolLibraryUrl(m_url.left(start - 1));
    return ToolLibraryUrl(start == 0 ? m_url : m_url.left(start));
}

ToolLibraryUrl ToolLibraryUrl::makeChildUrl(const QString &name) const
{
    VARN_EXPECTS(isFolder());
    VARN_EXPECTS(!name.isEmpty());
    const QString path = libraryPath();
    return ToolLibraryUrl(path.isEmpty() ? name : path + u'/' + name, m_protocol);
}

ToolLibraryUrl ToolLibraryUrl::makeUniqueUrl(const ToolLibraryUrl &url,
                                             const std::function<bool(const QString &)> &isAvailable)
{
    const QString base = url.libraryBaseName();
    for (int n = 0; n < MAX_LIBRARY_ID; ++n) {
        const QString candidate = n == 0 ? base : base + u' ' + QString::number(n);
        if (isAvailable(candidate))
            return url.parentUrl().makeChildUrl(candidate + url.extension());
    }
    throw ToolLibraries::IOError("Failed to generate a unique name");
}

ToolLibraryUrl ToolLibraryUrl::makeUniqueUrlOnDisk(const ToolLibraryUrl &url)
{
    if (url.isVendorLibrary() || url.isVendorFolder() || url.isHubLibrary() || url.isHubFolder())
        throw ToolLibraries::NotSupportedError("Not supported");
    const QDir dir(url.parentUrl().fullFilePath());
    const bool folderName = url.version() == -1 || url.protocol() == Hub;
    const QStringList extensions = folderName ? QStringList{QString()} : atRestFileExtensions(true, true);
    return makeUniqueUrl(url, [&dir, &extensions](const QString &name) {
        return std::ranges::none_of(extensions, [&](const QString &ext) { return dir.exists(name + ext); });
    });
}

QString ToolLibraryUrl::toUrlString(const QString &path, ProtocolType type)
{
    const QString scheme = toProtocol(type);
    return scheme.isNull() ? QString() : scheme + QStringLiteral("://") + path;
}

ToolLibraryUrl::ProtocolType ToolLibraryUrl::toProtocolType(const QString &scheme)
{
    static const QHash<QString, ProtocolType> types = [] {
        QHash<QString, ProtocolType> table;
        for (const ProtocolRow &row : protocolTable)
            if (row.readBack)
                table.insert(QString::fromLatin1(row.scheme), row.type);
        return table;
    }();
    return types.value(scheme, Unknown);
}

ToolLibraryUrl::ProtocolType ToolLibraryUrl::toProtocolType(const QRegularExpressionMatch &match)
{
    const QString scheme = match.captured(u"protocol");
    return scheme.isNull() ? Unknown : toProtocolType(scheme);
}

int ToolLibraryUrl::toVersion(const QString &file)
{
    const auto &extensions = versionExtensions();
    for (std::size_t version = 0; version < extensions.size(); ++version)
        if (file.endsWith(extensions[version], Qt::CaseSensitive))
            return static_cast<int>(version);
    return -1;
}

int ToolLibraryUrl::toVersion(const QRegularExpressionMatch &match)
{
    if (!match.hasMatch())
        return 10; // no version of any library
    const QString file = match.captured(u"file");
    return file.isNull() ? -1 : toVersion(file);
}

QString ToolLibraryUrl::toProtocol(ProtocolType type)
{
    const ProtocolRow *row = rowOf(type);
    return row ? QString::fromLatin1(row->scheme) : QString();
}

} // namespace Varn::Tools
