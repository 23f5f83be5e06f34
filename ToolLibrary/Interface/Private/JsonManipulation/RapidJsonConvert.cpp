#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonConvert.h"

#include "util/utility/Assert.h"

#include <rapidjson/stringbuffer.h>

#include <cmath>

namespace Varn::ToolLibraries {

namespace {

rapidjson::Value fromQString(const QString &text, RapidJsonConvert::Allocator &allocator)
{
    const QByteArray utf8 = text.toUtf8();
    return rapidjson::Value(utf8.constData(), static_cast<rapidjson::SizeType>(utf8.size()), allocator);
}

rapidjson::Value fromQVariantList(const QVariantList &list, RapidJsonConvert::Allocator &allocator)
{
    rapidjson::Value array(rapidjson::kArrayType);
    array.Reserve(static_cast<rapidjson::SizeType>(list.size()), allocator);
    for (const QVariant &element : list)
        array.PushBack(RapidJsonConvert::fromQVariant(element, allocator), allocator);
    return array;
}

rapidjson::Value fromQVariantMap(const QVariantMap &map, RapidJsonConvert::Allocator &allocator)
{
    rapidjson::Value object(rapidjson::kObjectType);
    for (auto member = map.begin(); member != map.end(); ++member)
        object.AddMember(fromQString(member.key(), allocator),
                         RapidJsonConvert::fromQVariant(member.value(), allocator), allocator);
    return object;
}

rapidjson::Value fromDouble(double number)
{
    return std::isnormal(number) || number == 0 ? rapidjson::Value(number) : rapidjson::Value();
}

/// The text of \a value in UTF-8, whatever its bytes.
std::string utf8Of(const rapidjson::Value &value)
{
    const QByteArrayView bytes(value.GetString(), static_cast<qsizetype>(value.GetStringLength()));
    if (bytes.isValidUtf8())
        return std::string(bytes.data(), static_cast<std::size_t>(bytes.size()));
    // Behind the quotation mark, for a byte order mark at the beginning would vanish.
    return QString::fromUtf8('"' + bytes.toByteArray()).toUtf8().toStdString().substr(1);
}

} // namespace

rapidjson::Value RapidJsonConvert::fromQVariant(const QVariant &variant, Allocator &allocator)
{
    if (!variant.isValid() || variant.isNull())
        return rapidjson::Value();
    switch (variant.typeId()) {
    case QMetaType::Bool:
        return rapidjson::Value(variant.toBool());
    case QMetaType::Int:
        return rapidjson::Value(variant.toInt());
    case QMetaType::UInt:
        return rapidjson::Value(variant.toUInt());
    case QMetaType::LongLong:
        return rapidjson::Value(static_cast<int64_t>(variant.toLongLong()));
    case QMetaType::ULongLong:
        return rapidjson::Value(static_cast<uint64_t>(variant.toULongLong()));
    case QMetaType::Double:
        return fromDouble(variant.toDouble());
    default:
        break;
    }
    if (variant.canConvert<QString>())
        return fromQString(variant.toString(), allocator);
    if (variant.canConvert<QVariantList>())
        return fromQVariantList(variant.toList(), allocator);
    if (variant.canConvert<QVariantMap>())
        return fromQVariantMap(variant.toMap(), allocator);
    VARN_FAIL("Restricted flow");
    return rapidjson::Value();
}

QVariant RapidJsonConvert::toQVariant(const rapidjson::Value &value)
{
    switch (value.GetType()) {
    case rapidjson::kFalseType:
        return false;
    case rapidjson::kTrueType:
        return true;
    case rapidjson::kObjectType: {
        QVariantMap map;
        for (const auto &member : value.GetObject())
            map.insert(QString::fromUtf8(member.name.GetString()), toQVariant(member.value));
        return map;
    }
    case rapidjson::kArrayType: {
        QVariantList list;
        list.reserve(static_cast<qsizetype>(value.Size()));
        for (const auto &element : value.GetArray())
            list.append(toQVariant(element));
        return list;
    }
    case rapidjson::kStringType:
        return QString::fromUtf8(value.GetString(), static_cast<qsizetype>(value.GetStringLength()));
    case rapidjson::kNumberType:
        return value.GetDouble();
    case rapidjson::kNullType:
        break;
    }
    return QVariant();
}

Json::Value RapidJsonConvert::toJsonValue(const rapidjson::Value &value)
{
    switch (value.GetType()) {
    case rapidjson::kFalseType:
        return false;
    case rapidjson::kTrueType:
        return true;
    case rapidjson::kObjectType: {
        Json::Value object(Json::objectValue);
        for (const auto &member : value.GetObject())
            object[utf8Of(member.name)] = toJsonValue(member.value);
        return object;
    }
    case rapidjson::kArrayType: {
        Json::Value array(Json::arrayValue);
        array.resize(value.Size());
        Json::ArrayIndex index = 0;
        for (const auto &element : value.GetArray())
            array[index++] = toJsonValue(element);
        return array;
    }
    case rapidjson::kStringType:
        return utf8Of(value);
    case rapidjson::kNumberType:
        if (value.IsInt64())
            return Json::Value(static_cast<Json::Int64>(value.GetInt64()));
        if (value.IsUint64())
            return Json::Value(static_cast<Json::UInt64>(value.GetUint64()));
        return value.GetDouble();
    case rapidjson::kNullType:
        break;
    }
    return Json::Value();
}

std::string RapidJsonConvert::toString(const rapidjson::Value &value)
{
    // One buffer a thread: printing a library tool by tool would otherwise grow a new one for each. A very long text
    // does not stay in memory behind its caller's back.
    constexpr std::size_t keptCapacity = 1 << 20;
    thread_local rapidjson::StringBuffer buffer;
    buffer.Clear();
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    toString(value, writer);
    std::string text(buffer.GetString(), buffer.GetSize());
    if (text.size() > keptCapacity) {
        buffer.Clear();
        buffer.ShrinkToFit();
    }
    return text;
}

void assertWritten(bool success)
{
    VARN_ASSERT(success);
}

} // namespace Varn::ToolLibraries
