#include "platform/core/ToolSLDGeometry.h"

#include "platform/core/ToolSolid.h"
#include "platform/tool/Exception.h"
#include "platform/utils/FileInputStream.h"
#include "platform/utils/Messages.h"
#include "util/utility/Assert.h"

#include <QCryptographicHash>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <mutex>
#include <optional>
#include <span>
#include <utility>

namespace Varn {

using ToolLibraries::IOError;

namespace {

// The first byte is no text, and the line ends show a transfer that changed them.
constexpr std::string_view magic = "\x8B"
                                   "3DT\r\n\x1A\n";
constexpr std::uint32_t formatVersion = 1;
constexpr std::uint32_t solidForm = 1; // what ToolSolid reads and writes
constexpr qsizetype digestSize = 32;   // SHA-256

// Where in the header the fields begin. Numbers are little-endian.
constexpr std::size_t versionAt = magic.size();
constexpr std::size_t formAt = versionAt + sizeof formatVersion;
constexpr std::size_t lengthAt = formAt + sizeof solidForm;
constexpr std::size_t digestAt = lengthAt + sizeof(std::uint64_t);
constexpr std::size_t headerSize = digestAt + digestSize;
static_assert(headerSize == 56);

QByteArray digestOf(std::string_view bytes)
{
    return QCryptographicHash::hash(QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())),
                                    QCryptographicHash::Sha256);
}

std::string headerOf(std::string_view payload)
{
    std::string header(headerSize, '\0');
    std::ranges::copy(magic, header.begin());
    qToLittleEndian(formatVersion, &header[versionAt]);
    qToLittleEndian(solidForm, &header[formAt]);
    qToLittleEndian(static_cast<std::uint64_t>(payload.size()), &header[lengthAt]);
    std::ranges::copy(digestOf(payload), header.begin() + digestAt);
    return header;
}

/// Reads a file for one id, whose name stands in each failure.
class Reader
{
public:
    Reader(const std::wstring &id, FileInputStream &stream) : m_id(id), m_stream(stream) {}

    /// The bytes of the solid.
    std::string read() const
    {
        const std::string header = take(headerSize);
        const std::uint64_t length = payloadLength(header);
        std::string payload = take(static_cast<std::size_t>(length));
        if (payload.size() < length)
            fail("the file ends after " + std::to_string(payload.size()) + " of " + std::to_string(length) +
                 " bytes of the solid");
        if (!take(1).empty())
            fail("there is more behind the solid");
        const QByteArray digest = digestOf(payload);
        if (std::string_view(header).substr(digestAt) != std::string_view(digest.data(), digestSize))
            fail("the checksum is wrong");
        return payload;
    }

private:
    [[noreturn]] void fail(const std::string &what) const
    {
        throw IOError("3D geometry " + Messages::fromWideUnicodeToUTF8(m_id) + ": " + what);
    }

    /// As many bytes as the file still has, at most \a count. Takes memory for what is there, never for what a header
    /// claims.
    std::string take(std::size_t count) const
    {
        std::string bytes;
        std::array<std::byte, 65536> block;
        while (bytes.size() < count) {
            const auto some = m_stream.read(std::span(block).first(std::min(block.size(), count - bytes.size())));
            if (!some)
                fail("the file cannot be read");
            if (*some == 0)
                break;
            bytes.append(reinterpret_cast<const char *>(block.data()), *some);
        }
        return bytes;
    }

    std::uint64_t payloadLength(std::string_view header) const
    {
        if (header.empty())
            fail("the file is empty");
        if (!magic.starts_with(header.substr(0, magic.size())))
            fail("this is no 3D geometry file");
        if (header.size() < headerSize)
            fail("the file ends after " + std::to_string(header.size()) + " of " + std::to_string(headerSize) +
                 " bytes of its header");
        const auto version = qFromLittleEndian<std::uint32_t>(&header[versionAt]);
        if (version != formatVersion)
            fail("unknown format version " + std::to_string(version));
        const auto form = qFromLittleEndian<std::uint32_t>(&header[formAt]);
        if (form != solidForm)
            fail("unknown form of solid " + std::to_string(form));
        const auto length = qFromLittleEndian<std::uint64_t>(&header[lengthAt]);
        if (length == 0)
            fail("there is no solid in the file");
        if (length > ToolSLDGeometry::mostBytes)
            fail("a solid of " + std::to_string(length) + " bytes is too large");
        return length;
    }

    const std::wstring &m_id;
    FileInputStream &m_stream;
};

} // namespace

/// What a geometry and its copies share.
class ToolSLDGeometry::Content
{
public:
    explicit Content(std::string bytes) : m_bytes(std::move(bytes)) {}

    const std::string &bytes() const { return m_bytes; }

    std::shared_ptr<const TopoDS_Shape> solid()
    {
        const std::lock_guard lock(m_mutex);
        if (!m_solid)
            m_solid = ToolSolid::fromBytes(m_bytes);
        return m_solid;
    }

private:
    const std::string m_bytes;
    std::mutex m_mutex;                          // held while the solid is made, so that it is made once
    std::shared_ptr<const TopoDS_Shape> m_solid; // guarded by m_mutex
};

ToolSLDGeometry::ToolSLDGeometry(const std::wstring &id, std::shared_ptr<Content> content)
    : Tool3DGeometry(id), m_content(std::move(content))
{
}

ToolSLDGeometry::~ToolSLDGeometry() = default;

std::unique_ptr<ToolSLDGeometry> ToolSLDGeometry::load(const std::wstring &id, FileInputStream &stream)
{
    auto content = std::make_shared<Content>(Reader(id, stream).read());
    return std::unique_ptr<ToolSLDGeometry>(new ToolSLDGeometry(id, std::move(content)));
}

std::unique_ptr<ToolSLDGeometry> ToolSLDGeometry::fromSolid(const std::wstring &id, const TopoDS_Shape &solid)
{
    auto content = std::make_shared<Content>(ToolSolid::toBytes(solid));
    return std::unique_ptr<ToolSLDGeometry>(new ToolSLDGeometry(id, std::move(content)));
}

std::shared_ptr<ToolSLDGeometry> ToolSLDGeometry::copy(const std::shared_ptr<const ToolSLDGeometry> &geometry,
                                                       const std::wstring &newId)
{
    VARN_EXPECTS(geometry);
    if (!geometry)
        return nullptr;
    return std::shared_ptr<ToolSLDGeometry>(new ToolSLDGeometry(newId, geometry->m_content));
}

std::string_view ToolSLDGeometry::solidBytes() const
{
    return m_content->bytes();
}

std::shared_ptr<const TopoDS_Shape> ToolSLDGeometry::solid() const
{
    return m_content->solid();
}

bool ToolSLDGeometry::writeTo(const Sink &sink) const
{
    return sink(headerOf(m_content->bytes())) && sink(m_content->bytes());
}

} // namespace Varn
