#include "ToolLibrary/Interface/Private/JsonManipulation/LibraryTextWriter.h"

#include "ToolLibrary/DocumentToolVariantMapUtil.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/GuidUtil.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/JsonOutput.h"
#include "util/utility/Assert.h"

#include <algorithm>
#include <forward_list>
#include <string>
#include <utility>
#include <vector>

namespace Varn::ToolLibraries {

namespace {

using Value = rapidjson::Value;

/// The order of the texts in UTF-16: there a character beyond U+FFFF, which is two surrogates, comes before U+E000.
bool isLess(std::string_view a, std::string_view b)
{
    const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (inA == a.end() || inB == b.end())
        return inA == a.end() && inB != b.end();
    const auto fromA = static_cast<unsigned char>(*inA);
    const auto fromB = static_cast<unsigned char>(*inB);
    constexpr unsigned char firstBehindSurrogates = 0xEE; // leads U+E000
    constexpr unsigned char firstBeyond16Bits = 0xF0;
    if (fromA >= firstBehindSurrogates && fromB >= firstBehindSurrogates &&
        (fromA >= firstBeyond16Bits) != (fromB >= firstBeyond16Bits))
        return fromA > fromB;
    return fromA < fromB;
}

/// A name as its bytes stand, up to a NUL.
std::string_view nameOf(const Value &name)
{
    return name.GetString();
}

std::string_view wholeNameOf(const Value &name)
{
    return {name.GetString(), name.GetStringLength()};
}

/// The order of simple names. Most differ in their first letter.
bool isBefore(std::string_view a, std::string_view b)
{
    return !a.empty() && !b.empty() && a.front() != b.front() ? a.front() < b.front() : a < b;
}

/// True for an object whose members can be printed one after the other: simple names in ascending order.
bool isInOrder(const Value &object)
{
    std::string_view previous;
    bool first = true;
    for (const auto &member : object.GetObject()) {
        const std::string_view name = wholeNameOf(member.name);
        if (!JsonOutput::isSimple(name) || (!first && !isBefore(previous, name)))
            return false;
        previous = name;
        first = false;
    }
    return true;
}

/// Walks a document down to its last value. A document has at most 1,000 levels, so a walk may recurse.
class Printer
{
public:
    Printer(const LibraryTextWriter::Sink &sink, JsonOutput::Form form) : m_output(sink, form) {}

    bool finish() { return m_output.flush(); }
    bool finishFile()
    {
        m_output.put('\n');
        return finish();
    }

    void printLibrary(const Value &tools, const std::vector<std::uint32_t> &order, int version)
    {
        m_output.put('{');
        m_output.putMember("data", true, 1);
        m_output.put('[');
        for (std::size_t i = 0; i < order.size() && m_output.isGood(); ++i) {
            m_output.putElement(i == 0, 2);
            printValue(tools[order[i]], 2);
        }
        m_output.putLine(1);
        m_output.put(']');
        m_output.putMember("version", false, 1);
        m_output.putNumber(version);
        m_output.putLine(0);
        m_output.put('}');
    }

    void printObject(const Value &object, std::size_t depth)
    {
        if (!isInOrder(object))
            return printSorted(object, depth);
        m_output.put('{');
        bool first = true;
        for (const auto &member : object.GetObject()) {
            m_output.putMember(wholeNameOf(member.name), std::exchange(first, false), depth + 1);
            printValue(member.value, depth + 1);
        }
        m_output.putLine(depth);
        m_output.put('}');
    }

    void printLibraryWithNewGuids(const Value &library)
    {
        Members members(*this, library);
        const Value none(rapidjson::kArrayType);
        const Value *tools = members.replace("data", &none);
        m_output.put('{');
        bool first = true;
        for (std::size_t i = members.begin(); i < members.end(); ++i) {
            beginMember(m_members[i].name, first, 0);
            if (m_members[i].name == "data")
                printToolsWithNewGuids(tools && tools->IsArray() ? *tools : none);
            else
                printValue(*m_members[i].value, 1);
        }
        m_output.putLine(0);
        m_output.put('}');
    }

private:
    struct Member {
        std::string_view name;
        const Value *value;
    };

    /// The members of one object in the order of the text, on the stack of all objects that are being printed. An index
    /// stays valid while more come on top.
    class Members
    {
    public:
        Members(Printer &printer, const Value &object) : m_stack(printer.m_members), m_begin(m_stack.size())
        {
            if (object.IsObject())
                for (const auto &member : object.GetObject())
                    m_stack.push_back({readable(nameOf(member.name)), &member.value});
            // The values of an object lie in memory in their order, so that of one name the last comes last.
            std::sort(first(), m_stack.end(), [](const Member &a, const Member &b) {
                return isLess(a.name, b.name) || (a.name == b.name && a.value < b.value);
            });
            keepLastOfEach();
        }
        ~Members() { m_stack.resize(m_begin); }
        Members(const Members &) = delete;
        Members &operator=(const Members &) = delete;

        std::size_t begin() const { return m_begin; }
        std::size_t end() const { return m_begin + m_count; }

        /// Puts \a value in the place of the member of that name, or where one would stand. The old value, or null.
        const Value *replace(std::string_view name, const Value *value)
        {
            const auto at = placeOf(name);
            if (isAt(at, name))
                return std::exchange(at->value, value);
            m_stack.insert(at, {name, value});
            ++m_count;
            return nullptr;
        }

        void remove(std::string_view name)
        {
            const auto at = placeOf(name);
            if (!isAt(at, name))
                return;
            m_stack.erase(at);
            --m_count;
        }

    private:
        using Place = std::vector<Member>::iterator;

        Place first() { return m_stack.begin() + static_cast<std::ptrdiff_t>(m_begin); }
        Place placeOf(std::string_view name)
        {
            return std::lower_bound(first(), m_stack.end(), name, [](const Member &member, std::string_view wanted) {
                return isLess(member.name, wanted);
            });
        }
        bool isAt(Place place, std::string_view name) const { return place != m_stack.end() && place->name == name; }

        std::string_view readable(std::string_view name)
        {
            if (JsonOutput::survivesQString(name))
                return name;
            return m_repaired.emplace_front(JsonOutput::throughQString(name));
        }

        void keepLastOfEach()
        {
            for (std::size_t i = m_begin; i < m_stack.size(); ++i)
                if (i + 1 == m_stack.size() || m_stack[i].name != m_stack[i + 1].name)
                    m_stack[m_begin + m_count++] = m_stack[i];
            m_stack.resize(end());
        }

        std::vector<Member> &m_stack;
        std::size_t m_begin;
        std::size_t m_count = 0;
        std::forward_list<std::string> m_repaired;
    };

    void beginElement(bool &first, std::size_t depth) { m_output.putElement(std::exchange(first, false), depth + 1); }

    void beginMember(std::string_view name, bool &first, std::size_t depth)
    {
        beginElement(first, depth);
        m_output.putUtf8(name);
        m_output.putColon();
    }

    void printSorted(const Value &object, std::size_t depth) { printMembers(Members(*this, object), depth); }

    void printMembers(const Members &members, std::size_t depth)
    {
        m_output.put('{');
        bool first = true;
        for (std::size_t i = members.begin(); i < members.end(); ++i) {
            beginMember(m_members[i].name, first, depth);
            printValue(*m_members[i].value, depth + 1);
        }
        m_output.putLine(depth);
        m_output.put('}');
    }

    template <typename Print>
    void printArray(const Value &array, std::size_t depth, const Print &print)
    {
        m_output.put('[');
        bool first = true;
        for (const Value &element : array.GetArray()) {
            if (!m_output.isGood())
                return; // nobody takes the rest
            beginElement(first, depth);
            print(element);
        }
        m_output.putLine(depth);
        m_output.put(']');
    }

    void printToolsWithNewGuids(const Value &tools)
    {
        printArray(tools, 1, [this](const Value &tool) {
            const std::string guid = GuidUtil::createGuid().toStdString();
            const Value text(rapidjson::StringRef(guid.data(), guid.size()));
            Members members(*this, tool);
            members.replace("guid", &text);
            for (const char *key : Tools::DocumentToolVariantMapUtil::informationKeys())
                members.remove(key);
            printMembers(members, 2);
        });
    }

    void printValue(const Value &value, std::size_t depth)
    {
        switch (value.GetType()) {
        case rapidjson::kNullType:
            return m_output.put("null");
        case rapidjson::kFalseType:
            return m_output.put("false");
        case rapidjson::kTrueType:
            return m_output.put("true");
        case rapidjson::kObjectType:
            return printObject(value, depth);
        case rapidjson::kArrayType:
            return printArray(value, depth, [&](const Value &element) { printValue(element, depth + 1); });
        case rapidjson::kStringType:
            return m_output.putText({value.GetString(), value.GetStringLength()});
        case rapidjson::kNumberType:
            return value.IsInt() ? m_output.putNumber(value.GetInt()) : m_output.putDouble(value.GetDouble());
        }
    }

    JsonOutput m_output;
    std::vector<Member> m_members;
};

} // namespace

bool LibraryTextWriter::print(const rapidjson::Value &object, const Sink &sink)
{
    VARN_EXPECTS(object.IsObject());
    Printer printer(sink, JsonOutput::Form::Indented);
    printer.printObject(object, 0);
    return printer.finishFile();
}

bool LibraryTextWriter::printWithNewGuids(const rapidjson::Value &library, const Sink &sink)
{
    VARN_EXPECTS(library.IsObject());
    Printer printer(sink, JsonOutput::Form::Indented);
    printer.printLibraryWithNewGuids(library);
    return printer.finishFile();
}

bool LibraryTextWriter::printCompact(const rapidjson::Value &tools, const std::vector<std::uint32_t> &order,
                                     int version, const Sink &sink)
{
    VARN_EXPECTS(tools.IsArray());
    Printer printer(sink, JsonOutput::Form::Compact);
    printer.printLibrary(tools, order, version);
    return printer.finish();
}

} // namespace Varn::ToolLibraries
