#include "host/Log.h"

#include "platform/core/VarnApplication.h"
#include "platform/utils/FileSystem.h"

#include <QDateTime>

#include <fstream>
#include <mutex>
#include <string>
#include <utility>

namespace Quillon {

using Varn::FileSystem;
using Varn::VarnApplication;

namespace {

std::string lineOf(int level, std::string_view text)
{
    return QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs).toStdString() + ' ' + std::to_string(level) +
           ' ' + std::string(text) + '\n';
}

void appendToFile(const std::string &line)
{
    const std::wstring folder = VarnApplication::getAppDataFolder();
    if (FileSystem::createFolders(folder))
        return;
    std::ofstream(FileSystem::toPath(FileSystem::combine(folder, L"quillon.log")), std::ios::app) << line;
}

} // namespace

Log::Log(std::ostream *stream)
{
    m_previous =
        Ox::AppLogMgr::setSink([stream, mutex = std::make_shared<std::mutex>()](int level, std::string_view text) {
            const std::lock_guard lock(*mutex);
            if (stream)
                *stream << lineOf(level, text);
            else
                appendToFile(lineOf(level, text));
        });
}

Log::~Log()
{
    Ox::AppLogMgr::setSink(std::move(m_previous));
}

} // namespace Quillon
