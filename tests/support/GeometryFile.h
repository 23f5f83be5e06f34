// GeometryFile.h -- geometry files byte by byte, and geometries made of them.
#pragma once

#include "platform/core/ToolSLDGeometry.h"
#include "platform/ox/TemporaryFile.h"
#include "platform/utils/FileInputStream.h"
#include "platform/utils/FileOutputStream.h"

#include <QCryptographicHash>

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace TestSupport {

/// A geometry file. What is not given is as it should be for \a payload.
struct HandMadeGeometryFile {
    std::string payload = "solid";
    std::string magic = "\x8B"
                        "3DT\r\n\x1A\n";
    std::uint32_t version = 1;
    std::uint32_t form = 1;
    std::optional<std::uint64_t> length = {};
    std::optional<std::string> digest = {};

    std::string bytes() const
    {
        const auto hash = QCryptographicHash::hash(QByteArray(payload.data(), static_cast<qsizetype>(payload.size())),
                                                   QCryptographicHash::Sha256);
        return magic + number(version, 4) + number(form, 4) + number(length.value_or(payload.size()), 8) +
               digest.value_or(hash.toStdString()) + payload;
    }

private:
    static std::string number(std::uint64_t value, int size) // little-endian
    {
        std::string text;
        for (; size > 0; --size, value >>= 8)
            text.push_back(static_cast<char>(value & 0xFF));
        return text;
    }
};

/// The file of a geometry whose solid has these bytes.
inline std::string geometryFile(const std::string &payload)
{
    return HandMadeGeometryFile{.payload = payload}.bytes();
}

/// What comes of loading a file with these bytes.
inline std::unique_ptr<Varn::ToolSLDGeometry> loadGeometry(const std::wstring &id, const std::string &file)
{
    const Ox::TemporaryFile temporary;
    Varn::FileOutputStream out(temporary.filePath());
    if (!out.write(file) || !out.close())
        throw std::runtime_error("A test could not write a file");
    Varn::FileInputStream in(temporary.filePath());
    return Varn::ToolSLDGeometry::load(id, in);
}

inline std::shared_ptr<const Varn::ToolSLDGeometry> makeGeometry(const std::wstring &id,
                                                                 const std::string &payload = "solid")
{
    return loadGeometry(id, geometryFile(payload));
}

/// Ids in several scripts, and ones that look like something else.
inline const std::wstring geometryIds[] = {
    L"0b0e1f56-6c3b-4d3e-9a70-6bb2f3a1d9c2",
    L"a",
    L"\u5de5\u5177",
    L"\u0444\u0440\u0435\u0437\u0430",
    L"\u0633\u0643\u064a\u0646",
    L"\U0001F527",
    L"caf\u00e9",
    L"cafe\u0301",
    L"a b",
    L" ",
    L".",
    L"..",
    L"a.3DTool",
    L".hidden",
    L"%2F..%2F",
    L"~",
    L"-rf *",
    L"a:b|c?<d>\"",
    L"{0B0E1F56}",
    L"\u200f\u05d0",
    std::wstring(240, L'x'),
    L"A",
    L"\u0E40\u0E04\u0E23\u0E37",
    L"NUL",
};

/// Ids that no file can have.
inline const std::wstring impossibleIds[] = {
    L"/",
    L"../a",
    L"a/b",
    L"/etc/passwd",
    L"..\\a",
    L"a\nb",
    L"\x7f",
    std::wstring(L"a\0b", 3),
    std::wstring(250, L'x'),
    std::wstring(1, static_cast<wchar_t>(0xD800)),
};

} // namespace TestSupport
