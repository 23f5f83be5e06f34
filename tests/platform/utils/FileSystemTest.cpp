#include "platform/utils/FileSystem.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using Varn::FileSystem;

namespace fs = std::filesystem;

namespace {

class FileSystemTest : public testing::Test
{
protected:
    // QTemporaryDir cannot remove names that are no UTF-8.
    ~FileSystemTest() override { fs::remove_all(m_folder.path().toStdString()); }

    std::wstring at(std::wstring_view name) const { return FileSystem::combine(m_folder.path().toStdWString(), name); }
    std::wstring write(std::wstring_view name, std::string_view content = "content") const
    {
        std::ofstream(FileSystem::toPath(at(name)), std::ios::binary) << content;
        return at(name);
    }
    std::wstring folder(std::wstring_view name) const
    {
        fs::create_directories(FileSystem::toPath(at(name)));
        return at(name);
    }
    std::wstring pipe(std::wstring_view name) const
    {
        EXPECT_EQ(::mkfifo(FileSystem::toPath(at(name)).c_str(), 0600), 0);
        return at(name);
    }
    std::wstring link(std::wstring_view name, const std::wstring &target) const
    {
        fs::create_symlink(FileSystem::toPath(target), FileSystem::toPath(at(name)));
        return at(name);
    }
    static std::string read(const std::wstring &path)
    {
        std::ifstream file(FileSystem::toPath(path), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    QTemporaryDir m_folder;
};

} // namespace

TEST_F(FileSystemTest, AnyUnicodeNameSurvivesTheWayToAPathAndBack)
{
    struct Row {
        const char *name;
        std::wstring text;
        std::string bytes;
    };
    const Row rows[] = {
        {"empty", L"", ""},
        {"ASCII", L"/a b/c.json", "/a b/c.json"},
        {"umlauts", L"Fr\u00e4ser \u00d8", "Fr\u00e4ser \u00d8"},
        {"Japanese", L"\u5de5\u5177", "\u5de5\u5177"},
        {"beyond the first plane", L"\U0001F529", "\U0001F529"},
        {"newline and backslash", L"a\nb\\c", "a\nb\\c"},
        {"a byte that is no UTF-8", L"a\xDC80z", "a\x80z"},
        {"UTF-8 cut short", L"\xDCE5\xDCB7", "\xE5\xB7"},
        {"an encoded surrogate", L"\xDCED\xDCA0\xDC80", "\xED\xA0\x80"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(FileSystem::toPath(row.text).native(), row.bytes) << row.name;
        EXPECT_EQ(FileSystem::fromPath(row.bytes), row.text) << row.name;
    }
}

TEST_F(FileSystemTest, WhatNoNameCanHoldBecomesTheReplacementCharacter)
{
    struct Row {
        const char *name;
        std::wstring text;
    };
    const Row rows[] = {
        {"NUL", L"a\0z"s},
        {"lone first half", {L'a', wchar_t(0xD83D), L'z'}},
        {"lone second half", {L'a', wchar_t(0xDF00), L'z'}},
        {"beyond Unicode", {L'a', wchar_t(0x110000), L'z'}},
        {"negative", {L'a', wchar_t(-1), L'z'}},
    };
    for (const Row &row : rows)
        EXPECT_EQ(FileSystem::toPath(row.text).native(), "a\uFFFDz") << row.name;
}

TEST_F(FileSystemTest, APairOfSurrogatesIsOneCharacter)
{
    const std::wstring pair = {wchar_t(0xD83D), wchar_t(0xDD29)};
    EXPECT_EQ(FileSystem::toPath(pair).native(), "\U0001F529");
}

TEST_F(FileSystemTest, ATextOfQtKeepsEveryName)
{
    const std::wstring names[] = {L"", L"a/b.json", L"\u00fc \u5de5", L"\U0001F6E0.tools",
                                  std::wstring(L"byte ") + static_cast<wchar_t>(0xDCFF) + L"x"};
    for (const std::wstring &name : names)
        EXPECT_EQ(FileSystem::fromQString(QString::fromStdWString(name)), name);
}

TEST_F(FileSystemTest, APathFallsIntoFolderNameAndExtension)
{
    struct Row {
        const wchar_t *path;
        const wchar_t *folder;
        const wchar_t *name;
        const wchar_t *extension;
    };
    const Row rows[] = {
        // path            folder   name         extension
        {L"", L"", L"", L""},
        {L"a", L"", L"a", L""},
        {L"a.json", L"", L"a.json", L".json"},
        {L"/a.json", L"/", L"a.json", L".json"},
        {L"/d/a.b.JSON", L"/d", L"a.b.JSON", L".JSON"},
        {L"/d.x/a", L"/d.x", L"a", L""},
        {L"/d.x/", L"/d.x", L"", L""},
        {L"d/.json", L"d", L".json", L".json"},
        {L"d/a.", L"d", L"a.", L"."},
        {L"d/.", L"d", L".", L""},
        {L"d/..", L"d", L"..", L""},
        {L"d/...", L"d", L"...", L"."},
        {L"d/a b.3DTool", L"d", L"a b.3DTool", L".3DTool"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(FileSystem::getFolder(row.path), row.folder) << FileSystem::toPath(row.path);
        EXPECT_EQ(FileSystem::getFileName(row.path), row.name) << FileSystem::toPath(row.path);
        EXPECT_EQ(FileSystem::getExtension(row.path), row.extension) << FileSystem::toPath(row.path);
    }
}

TEST_F(FileSystemTest, ExtensionsCompareWithoutRegardToCase)
{
    EXPECT_TRUE(FileSystem::hasExtension(L"a.p21", L".p21"));
    EXPECT_TRUE(FileSystem::hasExtension(L"a.P21", L".p21"));
    EXPECT_TRUE(FileSystem::hasExtension(L"a", L""));
    EXPECT_FALSE(FileSystem::hasExtension(L"a.p21", L"p21"));
    EXPECT_FALSE(FileSystem::hasExtension(L"a.p21x", L".p21"));
    EXPECT_FALSE(FileSystem::hasExtension(L"p21", L".p21"));
}

TEST_F(FileSystemTest, CombiningPutsExactlyOneSeparatorBetween)
{
    struct Row {
        const wchar_t *folder;
        const wchar_t *name;
        const wchar_t *path;
    };
    const Row rows[] = {
        {L"a", L"b", L"a/b"},  {L"a/", L"b", L"a/b"},
        {L"a", L"/b", L"a/b"}, {L"a/", L"//b", L"a/b"},
        {L"/", L"b", L"/b"},   {L"", L"b", L"b"},
        {L"a", L"", L"a"},     {L"a/", L"", L"a/"},
        {L"", L"", L""},       {L"a", L"b/c.d", L"a/b/c.d"},
        {L"a", L"/", L"a/"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(FileSystem::combine(row.folder, row.name), row.path) << FileSystem::toPath(row.path);
}

TEST_F(FileSystemTest, PathsOfOtherSystemsBecomeNativeAndRelative)
{
    EXPECT_EQ(FileSystem::getNativePath(L"a\\b/c\\d.txt"), L"a/b/c/d.txt");
    EXPECT_EQ(FileSystem::trimLeadingSeparator(L"\\a\\b"), L"a\\b");
    EXPECT_EQ(FileSystem::trimLeadingSeparator(L"//\\/a/"), L"a/");
    EXPECT_EQ(FileSystem::trimLeadingSeparator(L"a"), L"a");
    EXPECT_EQ(FileSystem::trimLeadingSeparator(L"//"), L"");
}

TEST_F(FileSystemTest, TellsWhichNamesANewFileMayBear)
{
    struct Row {
        const char *name;
        std::wstring text;
        bool isValid;
    };
    const Row rows[] = {
        {"plain", L"Drills (1).json", true},
        {"signs", L"1\" \u00d8: *?<>|%&", true},
        {"Japanese", L"\u5de5\u5177", true},
        {"leading dot", L".hidden", true},
        {"longest", std::wstring(255, L'a'), true},
        {"too long", std::wstring(256, L'a'), false},
        {"too long in bytes", std::wstring(128, L'\u00e4'), false},
        {"empty", L"", false},
        {"this folder", L".", false},
        {"folder above", L"..", false},
        {"slash", L"a/b", false},
        {"backslash", L"a\\b", false},
        {"newline", L"a\nb", false},
        {"delete", L"a\x7F", false},
        {"NUL", L"a\0b"s, false},
        {"lone surrogate", {L'a', wchar_t(0xD800)}, false},
        {"byte that is no UTF-8", {L'a', wchar_t(0xDCFF)}, false},
    };
    for (const Row &row : rows)
        EXPECT_EQ(FileSystem::isValidFileName(row.text), row.isValid) << row.name;
}

TEST_F(FileSystemTest, EveryValidNameCanBeMade)
{
    for (const std::wstring &name : {L"1\" \u00d8: *?<>|%&"s, L"\u5de5\u5177"s, L" "s, std::wstring(255, L'a')}) {
        ASSERT_TRUE(FileSystem::isValidFileName(name));
        EXPECT_FALSE(FileSystem::createFolders(at(name)));
        EXPECT_TRUE(FileSystem::isDirectory(at(name)));
    }
}

TEST_F(FileSystemTest, TellsFilesFoldersAndOtherThingsApart)
{
    const std::wstring file = write(L"file");
    struct Row {
        const char *name;
        std::wstring path;
        bool exists;
        bool isFile;
        bool isFolder;
    };
    const Row rows[] = {
        {"file", file, true, true, false},
        {"folder", folder(L"folder"), true, false, true},
        {"pipe", pipe(L"pipe"), true, false, false},
        {"device", L"/dev/null", true, false, false},
        {"link to a file", link(L"link", file), true, true, false},
        {"dangling link", link(L"dangling", at(L"nowhere")), false, false, false},
        {"missing", at(L"missing"), false, false, false},
        {"below a file", file + L"/x", false, false, false},
        {"empty path", L"", false, false, false},
        {"NUL behind a name that exists", file + L"\0x"s, false, false, false},
        {"too long", at(std::wstring(5000, L'a')), false, false, false},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(FileSystem::exists(row.path), row.exists) << row.name;
        EXPECT_EQ(FileSystem::isFile(row.path), row.isFile) << row.name;
        EXPECT_EQ(FileSystem::isDirectory(row.path), row.isFolder) << row.name;
    }
}

TEST_F(FileSystemTest, ListsTheMatchingFilesInOrder)
{
    write(L"b.p21");
    write(L"a.P21");
    write(L"a.p21.txt");
    write(L"\u00e4.p21");
    const std::wstring noUtf8 = L"n\xDC80.p21";
    write(noUtf8);
    write(L"new\nline.p21");
    folder(L"folder.p21");
    pipe(L"pipe.p21");
    link(L"l.p21", at(L"b.p21"));
    EXPECT_THAT(FileSystem::getFiles(at(L""), L"*.p21"),
                ElementsAre(L"a.P21", L"b.p21", L"l.p21", L"new\nline.p21", noUtf8, L"\u00e4.p21"));
    EXPECT_THAT(FileSystem::getFiles(at(L""), L"?.p21.*"), ElementsAre(L"a.p21.txt"));
    EXPECT_THAT(FileSystem::getFiles(at(L""), L"*.none"), IsEmpty());
}

TEST_F(FileSystemTest, APatternMatchesTheWholeName)
{
    for (const wchar_t *name : {L"a", L"ab", L"abcabc", L"b*"})
        write(name);
    struct Row {
        const wchar_t *pattern;
        std::vector<std::wstring> names;
    };
    const Row rows[] = {
        {L"*", {L"a", L"ab", L"abcabc", L"b*"}},
        {L"", {}},
        {L"?", {L"a"}},
        {L"A?", {L"ab"}},
        {L"*b", {L"ab"}},
        {L"a*", {L"a", L"ab", L"abcabc"}},
        {L"**b**", {L"ab", L"abcabc", L"b*"}},
        {L"*abc", {L"abcabc"}},
        {L"*bca*", {L"abcabc"}},
        {L"*abcabcabc", {}},
        {L"???", {}},
        {L"[ab]", {}},
    };
    for (const Row &row : rows)
        EXPECT_EQ(FileSystem::getFiles(at(L""), row.pattern), row.names) << FileSystem::toPath(row.pattern);
}

TEST_F(FileSystemTest, WhatIsNoFolderListsNothing)
{
    EXPECT_THAT(FileSystem::getFiles(at(L"missing"), L"*"), IsEmpty());
    EXPECT_THAT(FileSystem::getFiles(write(L"file"), L"*"), IsEmpty());
    EXPECT_THAT(FileSystem::getFiles(L"", L"*"), IsEmpty());
}

TEST_F(FileSystemTest, OpensFilesOfAnyName)
{
    for (const std::wstring &name : {L"plain"s, L"\u5de5\u5177 \U0001F529"s, L"new\nline"s, L"a:b*c?d\"e\\f"s,
                                     std::wstring{L'x', wchar_t(0xDCFF)}, L"-"s, L" "s}) {
        const std::string content = "a\r\nb\0c\x1A\xFF"s;
        const FileSystem::File file = FileSystem::openForReading(write(name, content));
        ASSERT_TRUE(file) << FileSystem::toPath(name);
        std::string bytes(100, '\0');
        bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
        EXPECT_EQ(bytes, content) << FileSystem::toPath(name);
    }
}

TEST_F(FileSystemTest, OpensNothingButRegularFiles)
{
    const std::wstring paths[] = {
        at(L"missing"), folder(L"folder"), pipe(L"pipe"), link(L"link", at(L"pipe")), L"/dev/zero", L"", L"/"};
    for (const std::wstring &path : paths) // hangs if the opening of a pipe waits for a writer
        EXPECT_FALSE(FileSystem::openForReading(path)) << FileSystem::toPath(path);
}

TEST_F(FileSystemTest, CreatesTheFoldersAboveAsWell)
{
    EXPECT_FALSE(FileSystem::createFolders(at(L"a/b \u5de5/c")));
    EXPECT_TRUE(FileSystem::isDirectory(at(L"a/b \u5de5/c")));
    EXPECT_FALSE(FileSystem::createFolders(at(L"a/b \u5de5/c"))) << "one that is there is fine";
    EXPECT_FALSE(FileSystem::createFolders(at(L"a/d/")));
    EXPECT_TRUE(FileSystem::isDirectory(at(L"a/d")));
}

TEST_F(FileSystemTest, AFileInTheWayOfAFolderIsAnError)
{
    write(L"file");
    EXPECT_EQ(FileSystem::createFolders(at(L"file")), std::errc::not_a_directory);
    EXPECT_EQ(FileSystem::createFolders(at(L"file/a")), std::errc::not_a_directory);
    EXPECT_TRUE(FileSystem::createFolders(L""));
    EXPECT_EQ(read(at(L"file")), "content");
}

TEST_F(FileSystemTest, CopiesTheBytes)
{
    const std::wstring from = write(L"from", "a\0b\r\n"s);
    EXPECT_FALSE(FileSystem::copy(from, at(L"to"), false));
    EXPECT_EQ(read(at(L"to")), "a\0b\r\n"s);
    EXPECT_EQ(read(from), "a\0b\r\n"s);
}

TEST_F(FileSystemTest, ATargetIsOverwrittenOnlyOnRequest)
{
    const std::wstring from = write(L"from", "new");
    const std::wstring to = write(L"to", "old and longer");
    EXPECT_EQ(FileSystem::copy(from, to, false), std::errc::file_exists);
    EXPECT_EQ(read(to), "old and longer");
    EXPECT_FALSE(FileSystem::copy(from, to, true));
    EXPECT_EQ(read(to), "new");
}

TEST_F(FileSystemTest, WhatCannotBeCopiedSaysSoAndLeavesNothing)
{
    struct Row {
        const char *name;
        std::wstring from;
        std::wstring to;
    };
    const std::wstring file = write(L"file");
    const Row rows[] = {
        {"missing source", at(L"missing"), at(L"to")},
        {"folder", folder(L"folder"), at(L"to")},
        {"pipe", pipe(L"pipe"), at(L"to")},
        {"into a missing folder", file, at(L"nowhere/to")},
        {"onto a folder", file, at(L"folder")},
        {"onto itself", file, file},
        {"from nowhere", L"", at(L"to")},
    };
    for (const Row &row : rows) {
        EXPECT_TRUE(FileSystem::copy(row.from, row.to, true)) << row.name;
        EXPECT_FALSE(FileSystem::exists(at(L"to"))) << row.name;
    }
    EXPECT_EQ(read(file), "content");
}

TEST_F(FileSystemTest, ACopyThatFailsHalfwayLeavesNoFile)
{
    const std::wstring from = write(L"from", std::string(100'000, 'x'));
    rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small = {4096, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const std::error_code error = FileSystem::copy(from, at(L"to"), false);
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_TRUE(error);
    EXPECT_FALSE(FileSystem::exists(at(L"to")));
    EXPECT_TRUE(FileSystem::exists(from));
}

TEST_F(FileSystemTest, RenamesAFolderWithWhatIsInIt)
{
    folder(L"from/sub");
    write(L"from/sub/file");
    EXPECT_FALSE(FileSystem::renameFolder(at(L"from"), at(L"to")));
    EXPECT_FALSE(FileSystem::exists(at(L"from")));
    EXPECT_EQ(read(at(L"to/sub/file")), "content");
}

TEST_F(FileSystemTest, AFolderIsNotRenamedOntoAnythingThatExists)
{
    folder(L"from");
    folder(L"empty");
    write(L"file");
    link(L"dangling", at(L"nowhere"));
    for (const wchar_t *to : {L"empty", L"file", L"dangling", L"from"})
        EXPECT_EQ(FileSystem::renameFolder(at(L"from"), at(to)), std::errc::file_exists) << FileSystem::toPath(to);
    EXPECT_TRUE(FileSystem::renameFolder(at(L"from"), at(L"from/below")));
    EXPECT_TRUE(FileSystem::renameFolder(at(L"missing"), at(L"to")));
    EXPECT_TRUE(FileSystem::renameFolder(at(L"file"), at(L"to")));
    EXPECT_TRUE(FileSystem::isDirectory(at(L"from")));
    EXPECT_FALSE(FileSystem::exists(at(L"to")));
}

TEST_F(FileSystemTest, RemovesAFileOrALinkAndNothingElse)
{
    const std::wstring file = write(L"file");
    EXPECT_FALSE(FileSystem::remove(link(L"link", file)));
    EXPECT_TRUE(FileSystem::exists(file));
    EXPECT_FALSE(FileSystem::remove(file));
    EXPECT_FALSE(FileSystem::exists(file));
    EXPECT_FALSE(FileSystem::remove(file)) << "gone already";
    EXPECT_EQ(FileSystem::remove(folder(L"folder")), std::errc::is_a_directory);
    EXPECT_TRUE(FileSystem::isDirectory(at(L"folder")));
    write(L"other");
    EXPECT_TRUE(FileSystem::remove(at(L"other/below")));
}

TEST_F(FileSystemTest, RemovesAFolderWithoutFollowingLinks)
{
    const std::wstring kept = write(L"kept");
    folder(L"keptFolder");
    write(L"keptFolder/inside");
    folder(L"gone/a/b");
    write(L"gone/a/b/file");
    write(std::wstring(L"gone/") + wchar_t(0xDCFF));
    link(L"gone/toFile", kept);
    link(L"gone/toFolder", at(L"keptFolder"));
    EXPECT_FALSE(FileSystem::removeFolderRecursive(at(L"gone")));
    EXPECT_FALSE(FileSystem::exists(at(L"gone")));
    EXPECT_TRUE(FileSystem::exists(kept));
    EXPECT_TRUE(FileSystem::exists(at(L"keptFolder/inside")));

    EXPECT_FALSE(FileSystem::removeFolderRecursive(link(L"linkToFolder", at(L"keptFolder"))));
    EXPECT_TRUE(FileSystem::exists(at(L"keptFolder/inside")));
    EXPECT_FALSE(FileSystem::exists(at(L"linkToFolder")));
}

TEST_F(FileSystemTest, WhatIsNoFolderIsNotRemovedAsOne)
{
    EXPECT_TRUE(FileSystem::removeFolderRecursive(at(L"missing")));
    EXPECT_TRUE(FileSystem::removeFolderRecursive(write(L"file")));
    EXPECT_TRUE(FileSystem::exists(at(L"file")));
    EXPECT_TRUE(FileSystem::removeFolderRecursive(L""));
}

TEST_F(FileSystemTest, AnErrorHasATextForPeople)
{
    EXPECT_EQ(FileSystem::copy(at(L"missing"), at(L"to"), false).message(), "No such file or directory");
}
