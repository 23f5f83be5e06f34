// LibraryFile.h -- small library documents for tests.
#pragma once

#include <QDir>
#include <QFile>
#include <QString>

#include <string>
#include <vector>

namespace TestSupport {

/// The GUID of the test tool with that number; the texts order as the numbers do.
inline std::string guidOf(unsigned number)
{
    const std::string digits = std::to_string(number);
    return "11111111-2222-4333-8444-" + std::string(12 - digits.size(), '0') + digits;
}

/// A tool with that number and the further \a members, such as R"("type":"drill")".
inline std::string toolText(unsigned number, const std::string &members = {})
{
    return "{\"guid\":\"" + guidOf(number) + "\"" + (members.empty() ? "" : "," + members) + "}";
}

/// A library document of the current version.
inline std::string libraryText(const std::vector<std::string> &tools)
{
    std::string text = "{\"data\":[";
    for (const std::string &tool : tools)
        text += (&tool == tools.data() ? "" : ",") + tool;
    return text + "],\"version\":36}";
}

/// Writes \a text to \a path, making its folder.
inline void writeFile(const QString &path, const std::string &text)
{
    QDir().mkpath(path.section(u'/', 0, -2));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.data(), static_cast<qint64>(text.size())) < 0)
        qFatal("A test could not write %s", qPrintable(path));
}

} // namespace TestSupport
