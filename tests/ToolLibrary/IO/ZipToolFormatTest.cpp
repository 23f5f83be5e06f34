#include "ToolLibrary/IO/ZipToolFormat.h"
#include "platform/ox/AppLogMgr.h"
#include "support/Asserts.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <sys/resource.h>

using testing::ElementsAre;
using testing::IsEmpty;
using Varn::Tools::ZipToolFormat;

namespace {

const QByteArray emptyArchive("PK\5\6\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 22);
const QByteArray document(R"({"data":[],"version":36})");
const QByteArray geometry("\0\1solid\xff", 8);

class ZipToolFormatTest : public testing::Test
{
protected:
    QString at(const QString &name) const { return m_folder.filePath(name); }
    std::filesystem::path on(const QString &name) const { return at(name).toStdString(); }

    QByteArray get(const QString &name) const
    {
        QFile file(at(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

    void put(const QString &name, const QByteArray &bytes) const
    {
        QFile file(at(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    /// A library with a document and two geometries.
    void putLibrary(const QString &name) const
    {
        ZipToolFormat format(at(name));
        ASSERT_TRUE(format.addFile("tools.json", document));
        ASSERT_TRUE(format.addFile("1.3DTool", geometry));
        ASSERT_TRUE(format.addFile("2.3DTool", "other"));
        ASSERT_TRUE(format.write());
    }

    QByteArray data(const QString &path, const QString &name) const
    {
        QByteArray out("as it was");
        return ZipToolFormat(at(path)).getData(name, out) ? out : "not read, " + out;
    }

    QStringList files() const
    {
        return QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }

    QTemporaryDir m_folder;
};

const char *const notRead = "not read, as it was";

bool isGeometry(const QString &name)
{
    return name.endsWith(".3DTool");
}

} // namespace

TEST_F(ZipToolFormatTest, NothingReachesTheDiskBeforeWrite)
{
    ZipToolFormat format(at("a.tools"));
    EXPECT_TRUE(format.create());
    EXPECT_TRUE(format.addFile("tools.json", document));
    EXPECT_TRUE(format.addFile("1.3DTool", geometry));
    EXPECT_THAT(files(), IsEmpty());
    EXPECT_THAT(format.getFileNames(), IsEmpty());
    EXPECT_TRUE(format.write());
    EXPECT_EQ(files(), QStringList("a.tools"));
    EXPECT_THAT(format.getFileNames(), ElementsAre("tools.json", "1.3DTool"));
    EXPECT_EQ(data("a.tools", "tools.json"), document);
    EXPECT_EQ(data("a.tools", "1.3DTool"), geometry);
}

TEST_F(ZipToolFormatTest, AnObjectThatDoesNothingTouchesNoFile)
{
    ZipToolFormat(at("a.tools"));
    ZipToolFormat(at("a.tools")).create();
    ZipToolFormat(at("a.tools")).addFile("tools.json", document);
    EXPECT_THAT(files(), IsEmpty());
}

TEST_F(ZipToolFormatTest, NamesAndContentsOfAnyLanguageAndSizeComeBack)
{
    QByteArray large;
    for (int i = 0; i < 50000; ++i)
        large += "{\"guid\":\"" + QByteArray::number(i) + "\",\"type\":\"flat end mill\",\"unit\":\"millimeters\"}\n";
    const QString path = QStringLiteral("W\u00e4rkzeug \u5de5\u5177.tools");
    ZipToolFormat format(at(path));
    ASSERT_TRUE(format.addFile(QStringLiteral("\u5de5\u5177.3DTool"), large));
    ASSERT_TRUE(format.addFile("empty", {}));
    ASSERT_TRUE(format.write());
    EXPECT_THAT(ZipToolFormat(at(path)).getFileNames(), ElementsAre(QStringLiteral("\u5de5\u5177.3DTool"), "empty"));
    EXPECT_EQ(data(path, QStringLiteral("\u5de5\u5177.3DTool")), large);
    EXPECT_EQ(data(path, "empty"), QByteArray());
    EXPECT_LT(QFile(at(path)).size(), large.size() / 5);
}

TEST_F(ZipToolFormatTest, WriteWithoutAnEntryWritesTheEmptyArchive)
{
    EXPECT_TRUE(ZipToolFormat(at("a.tools")).write());
    EXPECT_EQ(get("a.tools"), emptyArchive);
    ZipToolFormat format(at("b.tools"));
    EXPECT_TRUE(format.create());
    EXPECT_TRUE(format.write());
    EXPECT_EQ(get("b.tools"), emptyArchive);
    EXPECT_THAT(format.getFileNames(), IsEmpty());
    EXPECT_EQ(data("b.tools", "tools.json"), notRead);
}

TEST_F(ZipToolFormatTest, WhatIsNoArchiveAnswersFalseOrWithAnEmptyList)
{
    QDir(m_folder.path()).mkdir("folder.tools");
    put("empty.tools", "");
    put("json.tools", document);
    putLibrary("cut.tools");
    QFile::resize(at("cut.tools"), QFile(at("cut.tools")).size() - 1);
    put("large.tools", "PK");
    ASSERT_TRUE(QFile::resize(at("large.tools"), qint64{1} << 31));
    const QStringList before = files();
    for (const char *name : {"missing.tools", "folder.tools", "empty.tools", "json.tools", "cut.tools", "large.tools",
                             "missing/a.tools", ""}) {
        ZipToolFormat format(at(name));
        QByteArray out("as it was");
        EXPECT_THAT(format.getFileNames(), IsEmpty()) << name;
        EXPECT_FALSE(format.getData("tools.json", out)) << name;
        EXPECT_EQ(out, "as it was") << name;
        EXPECT_FALSE(format.extractFile("tools.json", on("out"))) << name;
        EXPECT_FALSE(format.removeFile("tools.json")) << name;
        EXPECT_FALSE(format.createKeeping(isGeometry)) << name;
    }
    EXPECT_EQ(files(), before);
}

TEST_F(ZipToolFormatTest, WhyAnArchiveCannotBeReadGoesToTheLog)
{
    put("a.tools", document);
    std::vector<std::string> lines;
    const auto old = Ox::AppLogMgr::setSink(
        [&](int level, std::string_view text) { lines.push_back(std::to_string(level) + " " + std::string(text)); });
    ZipToolFormat(at("a.tools")).getFileNames();
    ZipToolFormat(at("missing.tools")).getFileNames();
    Ox::AppLogMgr::setSink(old);
    EXPECT_THAT(lines, ElementsAre("3 ZipToolFormat: " + at("a.tools").toStdString() +
                                   ": archive: no zip archive, or a truncated one"));
}

TEST_F(ZipToolFormatTest, ANameMustOccurExactlyOnce)
{
    putLibrary("a.tools");
    EXPECT_EQ(data("a.tools", "Tools.json"), notRead) << "the case counts";
    EXPECT_EQ(data("a.tools", "tools"), notRead);
    EXPECT_EQ(data("a.tools", ""), notRead);
    put("twice.tools", get("a.tools").replace("2.3DTool", "1.3DTool"));
    ZipToolFormat format(at("twice.tools"));
    EXPECT_THAT(format.getFileNames(), ElementsAre("tools.json", "1.3DTool", "1.3DTool"));
    EXPECT_EQ(data("twice.tools", "1.3DTool"), notRead);
    EXPECT_EQ(data("twice.tools", "tools.json"), document);
    EXPECT_FALSE(format.extractFile("1.3DTool", on("out")));
    EXPECT_FALSE(format.removeFile("1.3DTool"));
    EXPECT_FALSE(QFile::exists(at("out")));
}

TEST_F(ZipToolFormatTest, ADamagedOrEncryptedEntryIsNotRead)
{
    putLibrary("a.tools");
    const QByteArray good = get("a.tools");
    QByteArray damaged = good;
    const qsizetype content = good.indexOf("tools.json") + 10;
    damaged[content] = static_cast<char>(damaged[content] ^ 0x10);
    put("damaged.tools", damaged);
    EXPECT_EQ(data("damaged.tools", "tools.json"), notRead);
    EXPECT_EQ(data("damaged.tools", "1.3DTool"), geometry) << "the others are none the worse";
    QByteArray encrypted = good;
    const qsizetype central = good.indexOf("PK\1\2");
    encrypted[central + 8] = static_cast<char>(encrypted[central + 8] | 1);
    put("encrypted.tools", encrypted);
    EXPECT_EQ(data("encrypted.tools", "tools.json"), notRead);
}

TEST_F(ZipToolFormatTest, NoChangedByteGivesWrongContent)
{
    ZipToolFormat format(at("a.tools"));
    ASSERT_TRUE(format.addFile("tools.json", document));
    ASSERT_TRUE(format.write());
    const QByteArray good = get("a.tools");
    for (qsizetype i = 0; i < good.size(); ++i) {
        QByteArray changed = good;
        changed[i] = static_cast<char>(~changed[i]);
        put("b.tools", changed);
        EXPECT_THAT((std::vector<QByteArray>{document, notRead}), testing::Contains(data("b.tools", "tools.json")))
            << i;
    }
}

TEST_F(ZipToolFormatTest, AnAbortEndsAReadingCall)
{
    putLibrary("a.tools");
    Varn::AbortableImpl abortable;
    ZipToolFormat format(at("a.tools"));
    QByteArray out;
    EXPECT_TRUE(format.getData("tools.json", out, abortable));
    abortable.abort();
    out = "as it was";
    EXPECT_FALSE(format.getData("tools.json", out, abortable));
    EXPECT_EQ(out, "as it was");
    EXPECT_FALSE(format.extractFile("tools.json", on("out"), abortable));
    EXPECT_FALSE(QFile::exists(at("out")));
}

TEST_F(ZipToolFormatTest, AnEntryIsExtractedIntoAFolderOrToAFile)
{
    putLibrary("a.tools");
    QDir(m_folder.path()).mkdir("folder");
    put("folder/2.3DTool", "an old file");
    ZipToolFormat format(at("a.tools"));
    EXPECT_TRUE(format.extractFile("1.3DTool", on("folder")));
    EXPECT_TRUE(format.extractFile("2.3DTool", on("folder")));
    EXPECT_TRUE(format.extractFile("1.3DTool", on("other name")));
    EXPECT_TRUE(format.extractFile("2.3DTool", on("new/folder/x")));
    EXPECT_EQ(get("folder/1.3DTool"), geometry);
    EXPECT_EQ(get("folder/2.3DTool"), "other");
    EXPECT_EQ(get("other name"), geometry);
    EXPECT_EQ(get("new/folder/x"), "other");
    EXPECT_FALSE(format.extractFile("missing", on("folder")));
    EXPECT_FALSE(format.extractFile("1.3DTool", {}));
    EXPECT_FALSE(format.extractFile("1.3DTool", on("other name/below a file")));
}

TEST_F(ZipToolFormatTest, NoEntryLeavesTheFolder)
{
    putLibrary("a.tools");
    put("a.tools", get("a.tools").replace("1.3DTool", "../evil1"));
    QDir(m_folder.path()).mkdir("folder");
    ZipToolFormat format(at("a.tools"));
    EXPECT_THAT(format.getFileNames(), ElementsAre("tools.json", "../evil1", "2.3DTool"));
    EXPECT_FALSE(format.extractFile("../evil1", on("folder")));
    EXPECT_FALSE(QFile::exists(at("evil1")));
    EXPECT_TRUE(format.extractFile("../evil1", on("folder/good")));
    EXPECT_EQ(get("folder/good"), geometry);
}

TEST_F(ZipToolFormatTest, ANameThatIsTakenOrNoPathIsNotAdded)
{
    ZipToolFormat format(at("a.tools"));
    EXPECT_TRUE(format.addFile("tools.json", document));
    EXPECT_FALSE(format.addFile("tools.json", "other"));
    for (const QString &name : {QString(), QString("../a"), QString("/a"), QString("a\\b"), QString(QChar(u'\0')),
                                QString("a") + QChar(u'\0')})
        EXPECT_FALSE(format.addFile(name, "x")) << name.toStdString();
    EXPECT_TRUE(format.write());
    EXPECT_THAT(format.getFileNames(), ElementsAre("tools.json"));
    EXPECT_EQ(data("a.tools", "tools.json"), document);
}

TEST_F(ZipToolFormatTest, AContentMayComeInBlocks)
{
    QByteArray large;
    ZipToolFormat format(at("a.tools"));
    ASSERT_TRUE(format.addContent("tools.json", [&](const auto &sink) {
        for (int i = 0; i < 100000; ++i) {
            const QByteArray line = "a line of a library " + QByteArray::number(i) + "\n";
            large += line;
            if (!sink(std::string_view(line.constData(), static_cast<std::size_t>(line.size()))))
                return false;
        }
        return true;
    }));
    EXPECT_FALSE(format.addContent("tools.json", [](const auto &sink) { return sink("twice"); }));
    EXPECT_TRUE(format.addContent("empty", [](const auto &) { return true; }));
    EXPECT_FALSE(format.addContent("../a", [](const auto &sink) { return sink("x"); }));
    ASSERT_TRUE(format.write());
    EXPECT_THAT(format.getFileNames(), ElementsAre("tools.json", "empty"));
    EXPECT_EQ(data("a.tools", "tools.json"), large);
    EXPECT_EQ(data("a.tools", "empty"), QByteArray());
    EXPECT_LT(get("a.tools").size(), large.size() / 5);
}

TEST_F(ZipToolFormatTest, AContentThatBreaksOffIsNotAdded)
{
    ZipToolFormat format(at("a.tools"));
    EXPECT_TRUE(format.addFile("first", "1"));
    EXPECT_FALSE(format.addContent("second", [](const auto &sink) { return sink("2") && false; }));
    ASSERT_TRUE(format.write());
    EXPECT_THAT(format.getFileNames(), ElementsAre("first"));
}

TEST_F(ZipToolFormatTest, ASizeThatIsOnlyClaimedTakesNoMemory)
{
    // An entry of a few bytes that says it has 2 GB.
    putLibrary("a.tools");
    QByteArray bytes = get("a.tools");
    const qsizetype central = bytes.indexOf("PK\1\2");
    const QByteArray name = bytes.mid(central + 46, 10);
    ASSERT_EQ(name, "tools.json");
    bytes.replace(central + 24, 4, QByteArray("\xff\xff\xff\x70", 4));
    put("b.tools", bytes);
    EXPECT_EQ(data("b.tools", "tools.json"), notRead);
}

TEST_F(ZipToolFormatTest, WhatIsNoArchiveTakesNoMemory)
{
    put("a.tools", "{");
    ASSERT_TRUE(QFile::resize(at("a.tools"), 1 << 30));
    const auto peak = [] { // in KiB
        rusage usage{};
        EXPECT_EQ(getrusage(RUSAGE_SELF, &usage), 0);
        return usage.ru_maxrss;
    };
    const long before = peak();
    EXPECT_EQ(data("a.tools", "tools.json"), notRead);
    EXPECT_THAT(ZipToolFormat(at("a.tools")).getFileNames(), IsEmpty());
    EXPECT_LT(peak() - before, 100'000);
}

TEST_F(ZipToolFormatTest, AnAddedByteArrayMayGoOrChangeBeforeTheWrite)
{
    ZipToolFormat format(at("a.tools"));
    {
        QByteArray passing(document.constData(), document.size());
        ASSERT_TRUE(format.addFile("tools.json", passing));
        passing[0] = '[';
    }
    ASSERT_TRUE(format.write());
    EXPECT_EQ(data("a.tools", "tools.json"), document);
}

TEST_F(ZipToolFormatTest, ANewArchiveReplacesTheFile)
{
    putLibrary("a.tools");
    QFile old(at("a.tools"));
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    const QByteArray before = get("a.tools");
    ZipToolFormat format(at("a.tools"));
    ASSERT_TRUE(format.addFile("tools.json", "{}"));
    ASSERT_TRUE(format.write());
    EXPECT_THAT(format.getFileNames(), ElementsAre("tools.json"));
    EXPECT_EQ(old.readAll(), before) << "the old file was not written into";
    EXPECT_EQ(files(), QStringList("a.tools"));
}

TEST_F(ZipToolFormatTest, AfterAWriteTheNextArchiveBegins)
{
    ZipToolFormat format(at("a.tools"));
    ASSERT_TRUE(format.addFile("first", "1"));
    ASSERT_TRUE(format.write());
    const QByteArray first = get("a.tools");
    QFile::remove(at("a.tools"));
    EXPECT_TRUE(format.write()) << "once more";
    EXPECT_EQ(get("a.tools"), first);
    ASSERT_TRUE(format.addFile("second", "2"));
    ASSERT_TRUE(format.write());
    EXPECT_THAT(format.getFileNames(), ElementsAre("second"));
}

TEST_F(ZipToolFormatTest, CreateDropsWhatWasAdded)
{
    ZipToolFormat format(at("a.tools"));
    ASSERT_TRUE(format.addFile("first", "1"));
    ASSERT_TRUE(format.create());
    ASSERT_TRUE(format.addFile("second", "2"));
    ASSERT_TRUE(format.write());
    EXPECT_THAT(format.getFileNames(), ElementsAre("second"));
}

TEST_F(ZipToolFormatTest, AWriteThatFailsMayBeTriedAgain)
{
    ZipToolFormat format(at("new/a.tools"));
    ASSERT_TRUE(format.addFile("tools.json", document));
    EXPECT_FALSE(format.write());
    EXPECT_THAT(format.getFileNames(), IsEmpty());
    QDir(m_folder.path()).mkdir("new");
    EXPECT_TRUE(format.write());
    EXPECT_EQ(data("new/a.tools", "tools.json"), document);
    EXPECT_THAT(format.getFileNames(), ElementsAre("tools.json"));
    QDir(m_folder.path()).mkdir("folder.tools");
    EXPECT_FALSE(ZipToolFormat(at("folder.tools")).write());
}

TEST_F(ZipToolFormatTest, TheSameContentGivesTheSameFile)
{
    putLibrary("a.tools");
    putLibrary("b.tools");
    EXPECT_EQ(get("a.tools"), get("b.tools"));
}

TEST_F(ZipToolFormatTest, AWriteAfterAReadWritesWhatWasRead)
{
    putLibrary("a.tools");
    const QByteArray before = get("a.tools");
    ZipToolFormat format(at("a.tools"));
    format.getFileNames();
    EXPECT_TRUE(format.write());
    EXPECT_EQ(get("a.tools"), before);
}

TEST_F(ZipToolFormatTest, AReadingCallDoesNotDisturbTheArchiveThatIsBeingBuilt)
{
    putLibrary("a.tools");
    ZipToolFormat format(at("a.tools"));
    ASSERT_TRUE(format.addFile("new", "1"));
    EXPECT_THAT(format.getFileNames(), ElementsAre("tools.json", "1.3DTool", "2.3DTool"));
    QByteArray out;
    EXPECT_TRUE(format.getData("1.3DTool", out));
    EXPECT_EQ(out, geometry);
    EXPECT_FALSE(format.getData("new", out));
    EXPECT_TRUE(format.extractFile("1.3DTool", on("out")));
    ASSERT_TRUE(format.addFile("newer", "2"));
    ASSERT_TRUE(format.write());
    EXPECT_THAT(format.getFileNames(), ElementsAre("new", "newer"));
}

TEST_F(ZipToolFormatTest, ARemovedEntryIsGoneAfterTheWrite)
{
    putLibrary("a.tools");
    ZipToolFormat format(at("a.tools"));
    EXPECT_TRUE(format.removeFile("1.3DTool"));
    EXPECT_THAT(format.getFileNames(), ElementsAre("tools.json", "1.3DTool", "2.3DTool")) << "not written yet";
    EXPECT_FALSE(format.removeFile("1.3DTool"));
    EXPECT_TRUE(format.removeFile("2.3DTool"));
    EXPECT_TRUE(format.write());
    EXPECT_THAT(format.getFileNames(), ElementsAre("tools.json"));
    EXPECT_EQ(data("a.tools", "tools.json"), document);
}

TEST_F(ZipToolFormatTest, AnEntryIsReplacedByRemovingAndAdding)
{
    putLibrary("a.tools");
    ZipToolFormat format(at("a.tools"));
    EXPECT_TRUE(format.removeFile("tools.json"));
    EXPECT_TRUE(format.addFile("tools.json", "new"));
    EXPECT_TRUE(format.write());
    EXPECT_THAT(format.getFileNames(), ElementsAre("1.3DTool", "2.3DTool", "tools.json"));
    EXPECT_EQ(data("a.tools", "tools.json"), "new");
    EXPECT_EQ(data("a.tools", "1.3DTool"), geometry);
}

TEST_F(ZipToolFormatTest, AFailedRemovalBeginsNoArchive)
{
    putLibrary("a.tools");
    ZipToolFormat format(at("a.tools"));
    EXPECT_FALSE(format.removeFile("missing"));
    EXPECT_TRUE(format.addFile("new", "1"));
    EXPECT_FALSE(format.removeFile("tools.json")) << "not in the new one";
    EXPECT_TRUE(format.write());
    EXPECT_THAT(format.getFileNames(), ElementsAre("new"));
}

TEST_F(ZipToolFormatTest, AnArchiveCanKeepTheGeometryOfTheOldOne)
{
    putLibrary("a.tools");
    ZipToolFormat format(at("a.tools"));
    EXPECT_TRUE(format.createKeeping(isGeometry));
    EXPECT_TRUE(format.addFile("tools.json", "new"));
    EXPECT_TRUE(format.write());
    EXPECT_THAT(format.getFileNames(), ElementsAre("1.3DTool", "2.3DTool", "tools.json"));
    EXPECT_EQ(data("a.tools", "tools.json"), "new");
    EXPECT_EQ(data("a.tools", "1.3DTool"), geometry);
}

TEST_F(ZipToolFormatTest, WhatIsNotKeptGoesHoweverOftenItIsThere)
{
    putLibrary("a.tools");
    put("a.tools", get("a.tools").replace("1.3DTool", "a/ae.txt").replace("2.3DTool", "a/ae.txt"));
    ZipToolFormat format(at("a.tools"));
    EXPECT_TRUE(format.createKeeping([](const QString &name) { return name == "tools.json"; }));
    EXPECT_TRUE(format.addFile("a/ae.txt", "new"));
    EXPECT_TRUE(format.write());
    EXPECT_THAT(format.getFileNames(), ElementsAre("tools.json", "a/ae.txt"));
    EXPECT_EQ(data("a.tools", "a/ae.txt"), "new");
}

TEST_F(ZipToolFormatTest, WithoutAnArchiveToKeepFromTheNewOneIsEmpty)
{
    put("json.tools", document);
    for (const char *name : {"json.tools", "missing.tools"}) {
        ZipToolFormat format(at(name));
        EXPECT_FALSE(format.createKeeping(isGeometry));
        EXPECT_TRUE(format.addFile("tools.json", document));
        EXPECT_TRUE(format.write());
        EXPECT_THAT(format.getFileNames(), ElementsAre("tools.json"));
    }
}

TEST_F(ZipToolFormatTest, KeepingNothingLeavesAnEmptyArchive)
{
    putLibrary("a.tools");
    ZipToolFormat format(at("a.tools"));
    EXPECT_TRUE(format.createKeeping([](const QString &) { return false; }));
    EXPECT_TRUE(format.write());
    EXPECT_EQ(get("a.tools"), emptyArchive);
}

TEST_F(ZipToolFormatTest, NoCallIsAProgrammingError)
{
    putLibrary("a.tools");
    const TestSupport::Asserts asserts;
    for (const char *name : {"a.tools", "missing.tools"}) {
        ZipToolFormat format(at(name));
        QByteArray out;
        format.getFileNames();
        format.getData("1.3DTool", out);
        format.extractFile("1.3DTool", on("out"));
        format.removeFile("1.3DTool");
        format.addFile("1.3DTool", out);
        format.createKeeping(isGeometry);
        format.write();
    }
    EXPECT_THAT(asserts.messages(), IsEmpty());
}
