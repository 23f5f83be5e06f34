#include "ToolLibrary/IO/LibraryDisplayNames.h"

#include "platform/ox/TestMgr.h"
#include "platform/utils/LocaleRegistry.h"
#include "util/utility/Assert.h"

#include <QMap>

namespace Varn::Tools::LibraryDisplayNames {

namespace {

// The English name of a library is the name of its file.
constexpr const char *sampleLibraryNames[] = {
    "Cutting Tools (Inch)",
    "Cutting Tools (Metric)",
    "Depositing Tools",
    "Holders - Standard Taper Blanks",
    "Holders (Inch)",
    "Holders (Metric)",
    "Hole Making Tools (Inch)",
    "Hole Making Tools (Metric)",
    "Milling Tools (Inch)",
    "Milling Tools (Metric)",
    "Probes",
    "Turning Tools (Inch)",
    "Turning Tools (Metric)",
    "Tutorial Tools (Inch)",
    "Tutorial Tools (Metric)",
};

const QMap<QString, LocalizedMessage> &sampleLibraryMessages()
{
    static const QMap<QString, LocalizedMessage> messages = [] {
        QMap<QString, LocalizedMessage> table;
        for (const char *name : sampleLibraryNames)
            table.insert(QString::fromLatin1(name), LocaleRegistry::registerMessage(name));
        return table;
    }();
    return messages;
}

} // namespace

QString localRoot()
{
    static const LocalizedMessage message = LocaleRegistry::registerMessage("Local");
    return message.asQString();
}

QString cloudRoot()
{
    static const LocalizedMessage message = LocaleRegistry::registerMessage("Cloud");
    return message.asQString();
}

QString samplesRoot()
{
    static const LocalizedMessage message = LocaleRegistry::registerMessage("Quillon Library");
    return message.asQString();
}

QString documentsRoot()
{
    static const LocalizedMessage message = LocaleRegistry::registerMessage("Documents");
    return message.asQString();
}

QString hubRoot()
{
    static const LocalizedMessage message = LocaleRegistry::registerMessage("Hub Libraries");
    return message.asQString();
}

QString vendorRoot()
{
    static const LocalizedMessage message = LocaleRegistry::registerMessage("Vendor");
    return message.asQString();
}

QString sampleLibrary(const QString &baseName)
{
    const auto &messages = sampleLibraryMessages();
    const auto found = messages.find(baseName);
    if (found != messages.end())
        return found->asQString();
    // Tests name their sample files as they like.
    if (!Ox::Test::TestMgr::testing())
        VARN_FAIL("All sample libraries should be translated");
    return baseName;
}

} // namespace Varn::Tools::LibraryDisplayNames
