// LibraryTextFuzz.cpp -- any JSON object, printed as a library file: the bytes are those of the way through a
// QVariantMap and a QJsonDocument, with new GUIDs as well.
#include "ToolLibrary/DocumentToolVariantMapUtil.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/GuidUtil.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/LibraryTextWriter.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonConvert.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonLibraryWriter.h"
#include "platform/ox/TestMgr.h"
#include "platform/utils/Abortable.h"

#include <QJsonDocument>

#include <cstdint>
#include <cstdlib>
#include <string>

using namespace Varn::ToolLibraries;
using Varn::GuidUtil;
using Varn::Tools::DocumentToolVariantMapUtil;

namespace {

class OneGuid : public GuidUtil::GuidGenerator
{
public:
    QString operator()() override { return QStringLiteral("new"); }
};

QByteArray longWay(const QVariantMap &map)
{
    return QJsonDocument::fromVariant(map).toJson(QJsonDocument::Indented);
}

QVariantMap withNewGuids(QVariantMap map)
{
    QVariantList tools;
    if (map.value("data").typeId() == QMetaType::QVariantList)
        tools = map.value("data").toList();
    for (QVariant &tool : tools) {
        QVariantMap changed = tool.toMap();
        changed["guid"] = GuidUtil::createGuid();
        DocumentToolVariantMapUtil::removeDocumentToolInformation(changed);
        tool = changed;
    }
    map["data"] = tools;
    return map;
}

template <typename Print>
QByteArray textOf(const Print &print)
{
    QByteArray text;
    const bool printed = print([&](std::string_view block) {
        text.append(block.data(), static_cast<qsizetype>(block.size()));
        return true;
    });
    if (!printed)
        std::abort();
    return text;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    Ox::Test::TestMgr::setTesting(true);
    GuidUtil::setTestGuidGenerator(std::make_unique<OneGuid>());
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    rapidjson::Document document;
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    if (!RapidJsonLibraryWriter(&document).acceptJsonBytes(bytes, Varn::AbortableImpl()) || !document.IsObject())
        return 0;
    const QVariantMap map = RapidJsonConvert::toQVariant(document).toMap();
    if (textOf([&](const auto &sink) { return LibraryTextWriter::print(document, sink); }) != longWay(map))
        std::abort();
    const auto print = [&](const auto &sink) { return LibraryTextWriter::printWithNewGuids(document, sink); };
    if (textOf(print) != longWay(withNewGuids(map)))
        std::abort();
    return 0;
}
