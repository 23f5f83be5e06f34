#include "ToolLibrary/Interface/Private/JsonManipulation/QJsonLibraryWriter.h"
#include "platform/tool/Exception.h"
#include "platform/utils/Abortable.h"
#include "platform/utils/Messages.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace std::string_literals;
using namespace Varn::ToolLibraries;
using Varn::AbortableImpl;
using Varn::Messages;

namespace {

class QJsonLibraryWriterTest : public testing::Test
{
protected:
    std::wstring file(const QByteArray &bytes) const
    {
        QFile file(m_folder.filePath("library.json"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName().toStdWString();
    }

    QTemporaryDir m_folder;
    QJsonDocument m_document;
    const QJsonLibraryWriter m_writer{&m_document};
    AbortableImpl m_abortable;
};

const QJsonDocument library(QJsonObject{{"data", QJsonArray{QJsonObject{{"guid", "\u00e4"}}}}, {"version", 36}});
const char *const text = "{\"version\": 36, \"data\": [{\"guid\": \"\u00e4\"}]}";

} // namespace

TEST_F(QJsonLibraryWriterTest, EachFormGivesTheSameDocument)
{
    EXPECT_TRUE(m_writer.acceptJsonBytes(text, m_abortable));
    EXPECT_EQ(m_document, library);
    m_document = {};
    EXPECT_TRUE(m_writer.acceptJsonString(text, m_abortable));
    EXPECT_EQ(m_document, library);
    m_document = {};
    EXPECT_TRUE(m_writer.acceptJsonFile(file(text), m_abortable));
    EXPECT_EQ(m_document, library);
    m_document = {};
    m_writer.acceptQVariantMap(library.toVariant().toMap());
    EXPECT_EQ(m_document, library);
}

TEST_F(QJsonLibraryWriterTest, ItIsAConsumerThatOutlivesNoTarget)
{
    QJsonDocument other;
    const std::unique_ptr<JsonConsumer> consumer = std::make_unique<QJsonLibraryWriter>(&other);
    EXPECT_TRUE(consumer->acceptJsonBytes("[1]", m_abortable));
    EXPECT_EQ(other, QJsonDocument(QJsonArray{1}));
    EXPECT_TRUE(m_document.isNull());
}

TEST_F(QJsonLibraryWriterTest, BadTextIsRefusedAndLeavesNothing)
{
    const std::string deep = std::string(1001, '[') + std::string(1001, ']');
    for (const std::string &bad : {""s, "{"s, "[1,]"s, "5"s, "{}x"s, "{}\0x"s, "[\"\xFF\"]"s, deep}) {
        m_document = library;
        EXPECT_FALSE(m_writer.acceptJsonBytes(QByteArray::fromStdString(bad), m_abortable)) << bad;
        EXPECT_TRUE(m_document.isNull()) << bad;
        EXPECT_FALSE(m_writer.acceptJsonString(bad, m_abortable)) << bad;
        EXPECT_FALSE(m_writer.acceptJsonFile(file(QByteArray::fromStdString(bad)), m_abortable)) << bad;
    }
    EXPECT_TRUE(m_writer.acceptJsonString(std::string(1000, '[') + std::string(1000, ']'), m_abortable));
}

TEST_F(QJsonLibraryWriterTest, AnAbortIsIgnored)
{
    m_abortable.abort();
    EXPECT_TRUE(m_writer.acceptJsonBytes(text, m_abortable));
    EXPECT_TRUE(m_writer.acceptJsonString(text, m_abortable));
    EXPECT_TRUE(m_writer.acceptJsonFile(file(text), m_abortable));
    EXPECT_EQ(m_document, library);
}

TEST_F(QJsonLibraryWriterTest, AMissingFileThrows)
{
    m_document = library;
    const std::wstring path = m_folder.filePath("missing.json").toStdWString();
    try {
        m_writer.acceptJsonFile(path, m_abortable);
        ADD_FAILURE() << "no exception";
    } catch (const LibraryMissing &failure) {
        EXPECT_EQ(failure.what(), "JSON file doesn't exist: " + Messages::fromWideUnicodeToUTF8(path));
    }
    EXPECT_EQ(m_document, library);
    EXPECT_THROW(m_writer.acceptJsonFile(m_folder.path().toStdWString(), m_abortable), LibraryLoadError);
}

TEST_F(QJsonLibraryWriterTest, AMapReplacesWhatWasThere)
{
    m_document = library;
    m_writer.acceptQVariantMap({{"n", 5}, {"x", QVariant()}});
    EXPECT_EQ(m_document, QJsonDocument(QJsonObject{{"n", 5}, {"x", QJsonValue()}}));
    m_writer.acceptQVariantMap({});
    EXPECT_EQ(m_document, QJsonDocument(QJsonObject()));
}
