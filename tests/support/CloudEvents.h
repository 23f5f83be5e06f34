// CloudEvents.h -- what a host of cloud libraries is told while it lives.
#pragma once

#include "platform/core/CloudLibraries.h"
#include "platform/utils/Messages.h"

#include <functional>
#include <string>
#include <vector>

namespace TestSupport {

/// A cloud folder that is configured as long as this lives. One thread.
class CloudEvents
{
public:
    /// \a atEach is called at each event.
    explicit CloudEvents(const std::wstring &folder, const std::function<void()> &atEach = {})
    {
        Varn::CloudLibraries::configure(folder);
        Varn::CloudLibraries::setListener([this, atEach](const Varn::CloudLibraries::Event &event) {
            m_texts.push_back(textOf(event));
            if (atEach)
                atEach();
        });
    }
    ~CloudEvents() { Varn::CloudLibraries::reset(); }
    CloudEvents(const CloudEvents &) = delete;
    CloudEvents &operator=(const CloudEvents &) = delete;

    /// Each as "uploaded PATH", "renamed PATH to PATH", in order.
    const std::vector<std::string> &texts() const { return m_texts; }

private:
    static std::string textOf(const Varn::CloudLibraries::Event &event)
    {
        static const char *const kinds[] = {"uploaded ", "deleted ", "renamed ", "marked as deleted "};
        const std::string path = Varn::Messages::fromWideUnicodeToUTF8(event.path);
        const std::string to = Varn::Messages::fromWideUnicodeToUTF8(event.newPath);
        return kinds[static_cast<int>(event.kind)] + path + (to.empty() ? "" : " to " + to);
    }

    std::vector<std::string> m_texts;
};

} // namespace TestSupport
