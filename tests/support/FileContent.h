// FileContent.h -- what lies on the disk, for tests to compare.
#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <string>
#include <vector>

namespace TestSupport {

/// The bytes of the file; "no file" when it cannot be read.
inline std::string contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "no file";
}

/// The names of all that lies in the folder of \a path, hidden ones too, in order.
inline std::vector<std::string> filesBeside(const QString &path)
{
    std::vector<std::string> names;
    for (const QString &name : QFileInfo(path).dir().entryList(
             QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name))
        names.push_back(name.toStdString());
    return names;
}

} // namespace TestSupport
