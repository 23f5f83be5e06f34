// GeometryTest.h -- libraries with geometry files in a temporary folder, over an empty table of solids.
#pragma once

#include "support/GeometryFile.h"
#include "support/LibraryFile.h"
#include "support/TestPaths.h"

#include "ToolLibrary/Util/Tool3DGeometryMap.h"
#include "ToolLibrary/Util/Tool3DGeometryUtil.h"
#include "platform/nc/ToolPlaceholder3DGeometry.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

namespace TestSupport {

class GeometryTest : public testing::Test
{
protected:
    using Map = Varn::ToolLibraries::Tool3DGeometryMap;
    using Util = Varn::Tools::Tool3DGeometryUtil;
    using Url = Varn::Tools::ToolLibraryUrl;
    using Path = std::filesystem::path;

    GeometryTest()
    {
        for (const Path &folder : {folderOf(local), folderOf(otherFolder), folderOf(cloud), folderOf(mine)})
            std::filesystem::create_directories(folder);
    }
    ~GeometryTest() override
    {
        Map::syncLibraries({});
        for (const char *folder : {"local", "cloud"}) // Qt does not remove a file whose name is no UTF-8
            std::filesystem::remove_all(loose(folder));
    }

    static Path folderOf(const Url &url) { return Path(url.fullFilePath().toStdString()).parent_path(); }
    static Path fileOf(const Url &url, const std::wstring &id)
    {
        return folderOf(url) / Varn::FileSystem::toPath(id + L".3DTool");
    }
    Path custom(const QString &name) const { return loose(QStringLiteral("custom/") + name); }
    Path loose(const QString &name) const { return m_paths.loose(name).toStdString(); }

    static void put(const Path &path, const std::string &bytes = geometryFile("solid"))
    {
        writeFile(QString::fromStdString(path.string()), bytes);
    }
    /// The bytes of a file, or "none".
    static std::string get(const Path &path)
    {
        std::ostringstream bytes;
        std::ifstream file(path, std::ios::binary);
        if (!file)
            return "none";
        bytes << file.rdbuf();
        return bytes.str();
    }
    static std::set<std::string> namesIn(const Path &folder)
    {
        std::set<std::string> names;
        for (const auto &entry : std::filesystem::directory_iterator(folder))
            names.insert(entry.path().filename().string());
        return names;
    }

    static std::shared_ptr<const Varn::ToolPlaceholder3DGeometry> placeholder(const std::wstring &id)
    {
        return std::make_shared<Varn::ToolPlaceholder3DGeometry>(id);
    }

    TestPaths m_paths;
    const Url local{QStringLiteral("toollibraryroot://Local/a.json")};
    const Url sameFolder{QStringLiteral("toollibraryroot://Local/b.json")};
    const Url otherFolder{QStringLiteral("toollibraryroot://Local/sub/a.json")};
    const Url cloud{QStringLiteral("cloud://team/a.json")};
    const Url mine{QStringLiteral("custom://") + QString::fromStdString(custom("mine.json").string())};
    const Url document{QStringLiteral("document://one")};
    const Url otherDocument{QStringLiteral("document://two")};
    const Url hub{QStringLiteral("hub://p/a.hub")};
};

} // namespace TestSupport
