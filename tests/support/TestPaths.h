// TestPaths.h -- folders of its own for a test: everything that the engine keeps lies below a temporary folder.
#pragma once

#include "ToolLibrary/Interface/FilePaths.h"

#include <QString>
#include <QTemporaryDir>

namespace TestSupport {

class TestPaths : public Varn::Tools::FilePaths
{
public:
    std::wstring appDataFolder() const override { return below(u"data"); }
    std::wstring cloudLibrariesFolder() const override { return below(u"cloud"); }
    std::wstring systemLibrariesFolder() const override { return below(u"system"); }
    std::wstring localLibrariesFolder() const override { return below(u"local"); }

    // Paths below the folders.
    QString cloud(QStringView name) const { return join(u"cloud", name); }
    QString system(QStringView name) const { return join(u"system", name); }
    QString local(QStringView name) const { return join(u"local", name); }

    /// A path in the temporary folder itself.
    QString loose(QStringView name) const { return m_folder.filePath(name.toString()); }

private:
    std::wstring below(QStringView folder) const { return loose(folder).toStdWString(); }
    QString join(QStringView folder, QStringView name) const { return loose(folder) + u'/' + name.toString(); }

    QTemporaryDir m_folder;
};

} // namespace TestSupport
