#include "ToolLibrary/Interface/Private/StandardLibraryIndexProvider.h"
#include "support/Asserts.h"
#include "support/FakePlatformLibraries.h"
#include "support/IndexNodes.h"
#include "support/LibraryFile.h"
#include "support/Rights.h"
#include "support/TestPaths.h"

#include "ToolLibrary/CamDocuments.h"
#include "platform/core/CloudLibraries.h"
#include "platform/core/FeatureFlag.h"
#include "platform/core/VarnDocument.h"

#include <gmock/gmock.h>

#include <QFile>

#include <filesystem>
#include <fstream>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using Varn::CloudLibraries;
using Varn::FeatureFlag;
using Varn::Tools::ToolLibraryUrl;

namespace {

class StandardLibraryIndexProviderTest : public testing::Test
{
protected:
    ~StandardLibraryIndexProviderTest() override
    {
        CloudLibraries::reset();
        FeatureFlag::reset();
    }

    void useCloud()
    {
        QDir().mkpath(m_paths.cloud(u"."));
        CloudLibraries::configure(m_paths.cloudLibrariesFolder());
    }

    /// The lines of the root with that URL and of all below it.
    std::vector<std::string> below(const std::string &url) const
    {
        std::vector<std::string> lines;
        std::size_t depth = std::string::npos;
        for (const std::string &line : nodesOf(m_provider.libraryIndex())) {
            const std::size_t indent = line.find_first_not_of(' ');
            if (depth != std::string::npos && indent <= depth)
                break;
            if (line.substr(indent).starts_with(url + " "))
                depth = indent;
            if (depth != std::string::npos)
                lines.push_back(line.substr(depth));
        }
        return lines;
    }

    TestPaths m_paths;
    StandardLibraryIndexProvider m_provider;
    Asserts m_asserts;
};

} // namespace

TEST_F(StandardLibraryIndexProviderTest, TheTopOfTheTreeHasItsOrder)
{
    useCloud();
    const auto bracket = Varn::VarnDocument::create(L"Bracket");
    m_provider.setDocumentIndex(std::make_shared<Varn::Tools::CamDocuments>());
    const auto hub = std::make_shared<FakePlatformLibraries>();
    hub->tree.insert(std::make_shared<LibraryMetadata>(L"Hub Libraries", LibraryMetadata::Type::Folder,
                                                       ToolLibraryLocator::HubsFolder, std::nullopt, false));
    const HubInUse use(hub);
    const LibraryMetadataTree index = m_provider.libraryIndex();
    std::vector<std::string> roots;
    for (const auto *root : index.traverseRootNodes())
        roots.push_back(narrow(root->metadata()->url().url()));
    EXPECT_THAT(roots, ElementsAre("all://", "vendor://"));
    std::vector<std::string> top;
    for (const auto &child : index.find(ToolLibraryLocator::UserLibrariesFolder)->children())
        top.push_back(narrow(child.metadata()->url().url()));
    EXPECT_THAT(top, ElementsAre("document://", "hub://", "cloud://", "toollibraryroot://Local",
                                 "systemlibraryroot://Samples"));
    EXPECT_THAT(m_asserts.messages(), IsEmpty());
}

TEST_F(StandardLibraryIndexProviderTest, WithoutACloudThereIsNoRootOfIt)
{
    EXPECT_FALSE(m_provider.libraryIndex().contains(ToolLibraryUrl(QString(), ToolLibraryUrl::Cloud)));
}

TEST_F(StandardLibraryIndexProviderTest, AFreshMachineHasOneLocalLibrary)
{
    EXPECT_THAT(below("toollibraryroot://Local"),
                ElementsAre("toollibraryroot://Local Local", "  toollibraryroot://Local/Library.json Library"));
    EXPECT_TRUE(QFile::exists(m_paths.local(u"Local/Library.json")));
}

TEST_F(StandardLibraryIndexProviderTest, FoldersComeFirstAndOnlyLibrariesAreListed)
{
    for (const char16_t *name :
         {u"Local/b.json", u"Local/a.tools", u"Local/old.zetlib", u"Local/x.csv", u"Local/y.zip", u"Local/z.JSON",
          u"Local/none", u"Local/.hidden.json", u"Local/sub/c.json", u"Local/Empty/.keep", u"Local/_XRef_/d.json",
          u"Local/_XRef_.more/d.json", u"Local/_xref_/e.json"})
        writeFile(m_paths.local(name), "");
    const std::string root = "toollibraryroot://Local";
    EXPECT_THAT(below(root),
                ElementsAre(root + " Local", "  " + root + "/Empty Empty", "  " + root + "/_xref_ _xref_",
                            "    " + root + "/_xref_/e.json e", "  " + root + "/sub sub",
                            "    " + root + "/sub/c.json c", "  " + root + "/Library.json Library",
                            "  " + root + "/a.tools a", "  " + root + "/b.json b", "  " + root + "/old.zetlib old"))
        << "a folder whose name begins with \"_XRef_.\" has that base name too";
}

TEST_F(StandardLibraryIndexProviderTest, OldLibrariesAreListedUnderLocalAndCloudAndNotAmongSamples)
{
    useCloud();
    writeFile(m_paths.local(u"Local/l.zetlib"), "");
    writeFile(m_paths.cloud(u"c.zetlib"), "");
    writeFile(m_paths.system(u"Samples/s.zetlib"), "");
    writeFile(m_paths.system(u"Samples/Probes.json"), "");
    const auto urls = urlsOf(m_provider.libraryIndex());
    EXPECT_THAT(urls, Contains("toollibraryroot://Local/l.zetlib"));
    EXPECT_THAT(urls, Contains("cloud://c.zetlib"));
    EXPECT_THAT(urls, Contains("systemlibraryroot://Samples/Probes.json"));
    EXPECT_THAT(urls, Not(Contains("systemlibraryroot://Samples/s.zetlib")));
}

TEST_F(StandardLibraryIndexProviderTest, SamplesAreReadOnlyAndNamedInThePersonsLanguage)
{
    writeFile(m_paths.system(u"Samples/Probes.json"), "");
    writeFile(m_paths.system(u"Samples/Depositing Tools.json"), "");
    const std::string root = "systemlibraryroot://Samples";
    EXPECT_THAT(below(root), ElementsAre(root + " Quillon Library (read-only)",
                                         "  " + root + "/Depositing Tools.json Depositing Tools (read-only)",
                                         "  " + root + "/Probes.json Probes (read-only)"));
    FeatureFlag::setEnabled("additive-ded", false);
    EXPECT_THAT(below(root),
                ElementsAre(root + " Quillon Library (read-only)", "  " + root + "/Probes.json Probes (read-only)"));
}

TEST_F(StandardLibraryIndexProviderTest, WhatCannotBeReadHasNoChildren)
{
    EXPECT_THAT(below("systemlibraryroot://Samples"),
                ElementsAre("systemlibraryroot://Samples Quillon Library (read-only)"));
}

TEST_F(StandardLibraryIndexProviderTest, AFolderThatMayNotBeReadIsThereWithoutChildren)
{
    writeFile(m_paths.local(u"Local/Library.json"), libraryText({}));
    writeFile(m_paths.local(u"Local/closed/a.json"), libraryText({}));
    writeFile(m_paths.local(u"Local/unlisted/b.json"), libraryText({}));
    letEveryoneIn({m_paths.loose(u""), m_paths.local(u""), m_paths.local(u"Local")});
    const QString closed = m_paths.local(u"Local/closed");
    const QString unlisted = m_paths.local(u"Local/unlisted");
    ASSERT_EQ(chmod(qPrintable(closed), 0), 0);
    ASSERT_EQ(chmod(qPrintable(unlisted), 0111), 0);
    {
        const AsNobody nobody;
        const std::string root = "toollibraryroot://Local";
        EXPECT_THAT(below(root),
                    ElementsAre(root + " Local", "  " + root + "/closed closed", "  " + root + "/unlisted unlisted",
                                "  " + root + "/Library.json Library"));
    }
    letEveryoneIn({closed, unlisted});
    EXPECT_THAT(m_asserts.messages(), IsEmpty());
}

TEST_F(StandardLibraryIndexProviderTest, WhatOnlyLooksLikeALibraryIsOneOfTheTreeAllTheSame)
{
    QDir().mkpath(m_paths.local(u"Local/folder.json/inside"));
    ASSERT_TRUE(QFile::link(m_paths.local(u"nowhere.json"), m_paths.local(u"Local/broken.json")));
    ASSERT_EQ(mkfifo(qPrintable(m_paths.local(u"Local/pipe.json")), 0600), 0);
    const std::string root = "toollibraryroot://Local";
    EXPECT_THAT(below(root), ElementsAre(root + " Local", "  " + root + "/folder.json folder",
                                         "  " + root + "/Library.json Library"))
        << "a folder by the name of a library is one, which then fails to load";
}

TEST_F(StandardLibraryIndexProviderTest, ANameThatIsNoUtf8IsNotListed)
{
    const std::string folder = m_paths.local(u"Local").toStdString();
    QDir().mkpath(m_paths.local(u"Local"));
    ASSERT_TRUE(std::ofstream(folder + "/latin1 \xfc.json"));
    ASSERT_EQ(mkdir((folder + "/\xff\xfe").c_str(), 0700), 0);
    EXPECT_THAT(below("toollibraryroot://Local"),
                ElementsAre("toollibraryroot://Local Local", "  toollibraryroot://Local/Library.json Library"));
    std::filesystem::remove_all(folder); // Qt does not see them either
}

TEST_F(StandardLibraryIndexProviderTest, FoldersMayBeNestedAsDeepAsThePathOfAFileReaches)
{
    const QString folder = m_paths.local(u"Local");
    int depth = 0;
    for (QString path = folder; path.size() < 4000; path += QStringLiteral("/d")) {
        ASSERT_TRUE(QDir().mkpath(path));
        ++depth;
    }
    EXPECT_EQ(below("toollibraryroot://Local").size(), static_cast<std::size_t>(depth) + 1);
    EXPECT_THAT(m_asserts.messages(), IsEmpty());
}

TEST_F(StandardLibraryIndexProviderTest, ALinkToAFolderAroundItEnds)
{
    writeFile(m_paths.local(u"Local/sub/a.json"), "");
    ASSERT_TRUE(QFile::link(m_paths.local(u"Local"), m_paths.local(u"Local/sub/up")));
    ASSERT_TRUE(QFile::link(m_paths.local(u"Local/sub"), m_paths.local(u"Local/other")));
    const std::string root = "toollibraryroot://Local";
    EXPECT_THAT(below(root),
                ElementsAre(root + " Local", "  " + root + "/other other", "    " + root + "/other/up up",
                            "    " + root + "/other/a.json a", "  " + root + "/sub sub", "    " + root + "/sub/up up",
                            "    " + root + "/sub/a.json a", "  " + root + "/Library.json Library"));
}

TEST_F(StandardLibraryIndexProviderTest, NamesMayBeInAnyScript)
{
    const char16_t *names[] = {u"Fräser 6 mm",
                               u"立铣刀",
                               u"सूची",
                               u"أدوات",
                               u"100% \"good\" & <new>",
                               u"a'b;c#d?e=f",
                               u"tab\tname",
                               u"\U0001F527 tools",
                               u" blank ",
                               u"..hidden",
                               u"%20",
                               u"C:\\x"};
    for (const char16_t *name : names)
        writeFile(m_paths.local(u"Local/") + QString::fromUtf16(name) + QStringLiteral(".json"), libraryText({}));
    const auto urls = urlsOf(m_provider.libraryIndex());
    for (const char16_t *name : names) {
        const QString text = QString::fromUtf16(name);
        const ToolLibraryUrl url(QStringLiteral("toollibraryroot://Local/") + text + QStringLiteral(".json"));
        if (text.startsWith(QLatin1Char('.')))
            EXPECT_THAT(urls, Not(Contains(url.url().toStdString()))) << "hidden";
        else
            EXPECT_THAT(urls, Contains(url.url().toStdString()));
        EXPECT_TRUE(url.isLibraryFile());
        EXPECT_TRUE(QFile::exists(url.fullFilePath())) << text.toStdString();
    }
}

TEST_F(StandardLibraryIndexProviderTest, ANameWithANewlineIsNoLibraryAndHarmsNothing)
{
    writeFile(m_paths.local(u"Local/a\nb.json"), libraryText({}));
    EXPECT_THAT(below("toollibraryroot://Local"),
                ElementsAre("toollibraryroot://Local Local", "  toollibraryroot://Local/Library.json Library"));
}

TEST_F(StandardLibraryIndexProviderTest, TenThousandFilesAreListed)
{
    for (int i = 0; i < 10'000; ++i)
        writeFile(m_paths.local(u"Local/many/") + QString::number(i) + QStringLiteral(".json"), "");
    EXPECT_EQ(below("toollibraryroot://Local/many").size(), 10'001u);
}

TEST_F(StandardLibraryIndexProviderTest, ReadingTwiceSeesWhatIsNew)
{
    m_provider.libraryIndex();
    writeFile(m_paths.local(u"Local/new.json"), "");
    EXPECT_THAT(urlsOf(m_provider.libraryIndex()), Contains("toollibraryroot://Local/new.json"));
}

TEST_F(StandardLibraryIndexProviderTest, VendorsStandBesideTheUserLibrariesInTheOrderOfTheirNames)
{
    const auto lines = below("vendor://");
    EXPECT_EQ(m_provider.getVendorLibraries().size(), 35u);
    EXPECT_EQ(&m_provider.getVendorLibraries(), &StandardLibraryIndexProvider().getVendorLibraries());
    ASSERT_GT(lines.size(), 8u);
    EXPECT_EQ(lines[0], "vendor:// Vendor");
    EXPECT_EQ(lines[1], "  vendor://BitsBits/ BitsBits (read-only)");
    EXPECT_EQ(lines[2], "    vendor://BitsBits/BitsBits Cutting Tools.json BitsBits Cutting Tools (read-only)");
    EXPECT_EQ(lines[3], "  vendor://Blum/ Blum (read-only)");
    const auto haas = std::ranges::find(lines, "  vendor://Haas Tooling/ Haas Tooling (read-only)");
    ASSERT_GE(lines.end() - haas, 4);
    EXPECT_EQ(haas[1], "    vendor://Haas Tooling/Haas Holders.json Haas Holders (read-only)");
    EXPECT_EQ(haas[2], "    vendor://Haas Tooling/Haas Tooling.json Haas Tooling (read-only)");
    EXPECT_EQ(std::ranges::count(lines, lines[3]), 1);
    std::size_t libraries = 0;
    for (const std::string &line : lines)
        libraries += line.starts_with("    ") ? 1 : 0;
    EXPECT_EQ(libraries, 35u);
    EXPECT_EQ(m_provider.libraryIndex().traverse().back()->metadata()->url().url().substr(0, 9), L"vendor://")
        << "after all user libraries";
}

TEST_F(StandardLibraryIndexProviderTest, TheCloudFolderIsAskedForEachFolderAndInheritedByLibraries)
{
    struct Provider : StandardLibraryIndexProvider {
        bool cloudLibrariesEnabled() const override { return true; }
        bool hasWritePermission(const ToolLibraryUrl &url) const override { return !refused.contains(url.url()); }
        QStringList refused;
    };
    writeFile(m_paths.cloud(u"a.json"), "");
    writeFile(m_paths.cloud(u"team/b.json"), "");
    const auto cloudLines = [](const LibraryMetadataTree &index) {
        std::vector<std::string> lines;
        for (const std::string &line : nodesOf(index))
            if (line.find("cloud://") != std::string::npos)
                lines.push_back(line);
        return lines;
    };
    Provider provider;
    EXPECT_THAT(cloudLines(provider.libraryIndex()),
                ElementsAre("  cloud:// Cloud", "    cloud://team team", "      cloud://team/b.json b",
                            "    cloud://a.json a"));
    provider.refused = QStringList{QStringLiteral("cloud://team")};
    EXPECT_THAT(cloudLines(provider.libraryIndex()),
                ElementsAre("  cloud:// Cloud", "    cloud://team team (read-only)", "      cloud://team/b.json b",
                            "    cloud://a.json a"))
        << "a library goes by the root";
    provider.refused = QStringList{QStringLiteral("cloud://")};
    EXPECT_THAT(cloudLines(provider.libraryIndex()),
                ElementsAre("  cloud:// Cloud (read-only)", "    cloud://team team",
                            "      cloud://team/b.json b (read-only)", "    cloud://a.json a (read-only)"));
}
