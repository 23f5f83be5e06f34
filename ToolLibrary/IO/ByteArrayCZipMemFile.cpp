#include "ToolLibrary/IO/ByteArrayCZipMemFile.h"

namespace Varn::Tools {

namespace {

constexpr std::size_t growBy = 1024; // for an archive that gets longer than the byte array

} // namespace

ByteArrayCZipMemFile::ByteArrayCZipMemFile(const QByteArray &bytes) : m_bytes(bytes)
{
    AttachConst(reinterpret_cast<const unsigned char *>(m_bytes.constData()), static_cast<std::size_t>(m_bytes.size()));
}

ByteArrayCZipMemFile::~ByteArrayCZipMemFile()
{
    CZipMemFile::Close();
}

char *ByteArrayCZipMemFile::resize(qsizetype size)
{
    Close();
    m_bytes = QByteArray(size, Qt::Uninitialized);
    Attach(reinterpret_cast<unsigned char *>(m_bytes.data()), static_cast<std::size_t>(size), growBy);
    return m_bytes.data();
}

} // namespace Varn::Tools
