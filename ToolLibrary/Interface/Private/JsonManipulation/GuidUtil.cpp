#include "ToolLibrary/Interface/Private/JsonManipulation/GuidUtil.h"

#include "platform/ox/TestMgr.h"

#include <utility>

namespace Varn {

std::unique_ptr<GuidUtil::GuidGenerator> GuidUtil::s_testGuidGenerator;

GuidUtil::GuidGenerator::~GuidGenerator() = default;

QString GuidUtil::createGuid()
{
    if (Ox::Test::TestMgr::testing() && s_testGuidGenerator)
        return (*s_testGuidGenerator)();
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

QString GuidUtil::fakeGuid(unsigned int index)
{
    return QUuid(QStringLiteral("{00000000-0000-0000-0000-%1}").arg(index, 12, 16, QLatin1Char('0'))).toString();
}

ToolLibraries::ToolId GuidUtil::documentToolIndexToToolId(unsigned int index)
{
    return ToolLibraries::ToolId(fakeGuid(index).toStdString());
}

QUuid GuidUtil::toQUuid(const QVariant &variant)
{
    return QUuid::fromString(QLatin1StringView(variant.toByteArray()));
}

QString GuidUtil::trimGuid(const QUuid &uuid)
{
    const QString text = uuid.toString();
    return text.mid(1, text.size() - 2);
}

std::unique_ptr<GuidUtil::GuidGenerator> GuidUtil::setTestGuidGenerator(std::unique_ptr<GuidGenerator> generator)
{
    return std::exchange(s_testGuidGenerator, std::move(generator));
}

} // namespace Varn
