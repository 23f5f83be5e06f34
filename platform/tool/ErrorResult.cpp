#include "platform/tool/ErrorResult.h"

#include "platform/utils/Messages.h"

namespace Varn::ToolLibraries {

namespace {

constexpr const char *unknownException = "Unknown exception";

}

Json::Value ErrorResult::createPayload(const char *message, std::optional<std::wstring> translated)
{
    // What the system says of a failure may be in any encoding; there and back leaves only UTF-8.
    const std::wstring text = Messages::fromUTF8ToWideUnicode(message ? message : unknownException);
    Json::Value payload(Json::objectValue);
    Json::Value &error = payload["error"];
    error["developerText"] = Messages::fromWideUnicodeToUTF8(text);
    if (translated)
        error["translatedText"] = Messages::fromWideUnicodeToUTF8(*translated);
    return payload;
}

std::string ErrorResult::textOf(const std::exception &exception)
{
    const char *const what = exception.what();
    return what ? what : unknownException;
}

} // namespace Varn::ToolLibraries
