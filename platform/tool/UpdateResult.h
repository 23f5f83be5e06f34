// UpdateResult.h -- what became of one item of a batch. Values, any thread.
#pragma once

#include "platform/tool/ErrorResult.h"
#include "platform/tool/JSONSerializable.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace Varn::ToolLibraries {

/// How an item of a result prints itself.
class VARN_PLATFORM_EXPORT UpdateResultImpl
{
public:
    template <typename T>
    static std::string itemJson(const T &item)
    {
        return item.toJson();
    }
    template <typename T>
    static std::string itemJson(const std::shared_ptr<T> &item)
    {
        return item ? item->toJson() : std::string("null");
    }

    /// Appends the members of the object \a payload to the members in \a json.
    static void appendPayload(const Json::Value &payload, std::string &json);
};

/// An item and, where the operation failed for it, why.
template <typename T>
class VARN_PLATFORM_EXPORT UpdateResult : public JSONSerializable
{
public:
    /// Success.
    explicit UpdateResult(T item) : m_item(std::move(item)) {}

    /// Failure, with the English text and the one for the person at the screen.
    UpdateResult(T item, std::string error, std::optional<std::wstring> translated)
        : m_item(std::move(item)), m_error(std::move(error)), m_translated(std::move(translated))
    {
    }

    const T &item() const { return m_item; }
    bool hasError() const { return m_error.has_value(); }

    /// The English text of the failure; empty on success.
    std::string errorText() const { return m_error.value_or(std::string()); }
    const std::optional<std::wstring> &translatedErrorText() const { return m_translated; }

    /// {"item": item} and, on failure, the "error" of ErrorResult::createPayload() beside it.
    std::string toJson() const override
    {
        std::string json = "{\"item\":" + UpdateResultImpl::itemJson(m_item);
        appendMembers(json);
        if (m_error)
            UpdateResultImpl::appendPayload(ErrorResult::createPayload(m_error->c_str(), m_translated), json);
        json += '}';
        return json;
    }

protected:
    /// For a subclass that has more to say: appends ,"name":value to \a json for each further member.
    virtual void appendMembers(std::string & /*json*/) const {}

private:
    T m_item;
    std::optional<std::string> m_error;
    std::optional<std::wstring> m_translated;
};

} // namespace Varn::ToolLibraries
