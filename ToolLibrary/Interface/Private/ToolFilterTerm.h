// ToolFilterTerm.h -- one condition on tools, asked of a tool or of the columns of a whole library. Immutable, any
// thread; the columns as they tell.
#pragma once

#include "ToolLibrary/Interface/Private/Columns/PageColumns.h"
#include "platform/tool/ToolLibraryLocator.h"

#include <compare>
#include <functional>
#include <map>
#include <set>
#include <string>

namespace Varn::ToolLibraries {

/// Both questions have the same answer for each tool.
class ToolFilterTerm
{
public:
    virtual ~ToolFilterTerm();

    /// Whether \a tool, which comes from \a library, passes.
    virtual bool passes(const IndexedTool &tool, const ToolLibraryLocator &library) const = 0;

    /// Unmarks the tools that do not pass.
    virtual void narrow(PageColumns &columns, const ToolLibraryLocator &library, ToolMarks &marks) const = 0;
};

/// The needle, a normalised text, occurs in comment, product id, vendor or name.
class SearchTerm : public ToolFilterTerm
{
public:
    explicit SearchTerm(std::wstring needle) : m_needle(std::move(needle)) {}
    bool passes(const IndexedTool &tool, const ToolLibraryLocator &library) const override;
    void narrow(PageColumns &columns, const ToolLibraryLocator &library, ToolMarks &marks) const override;

private:
    std::wstring m_needle;
};

/// The tool has a number, which is as \a isGood asks.
class NumberTerm : public ToolFilterTerm
{
public:
    NumberTerm(std::string key, std::function<bool(double)> isGood) : m_key(std::move(key)), m_isGood(std::move(isGood))
    {
    }
    bool passes(const IndexedTool &tool, const ToolLibraryLocator &library) const override;
    void narrow(PageColumns &columns, const ToolLibraryLocator &library, ToolMarks &marks) const override;

private:
    std::string m_key;
    std::function<bool(double)> m_isGood;
};

/// The tool has one of the texts; type and unit go by the keywords of their values.
class TextTerm : public ToolFilterTerm
{
public:
    TextTerm(std::string key, std::set<std::string> texts) : m_key(std::move(key)), m_texts(std::move(texts)) {}
    bool passes(const IndexedTool &tool, const ToolLibraryLocator &library) const override;
    void narrow(PageColumns &columns, const ToolLibraryLocator &library, ToolMarks &marks) const override;

private:
    std::string m_key;
    std::set<std::string> m_texts;
};

/// The tool is one of those that are named, by library and GUID.
class IdentifierTerm : public ToolFilterTerm
{
public:
    using GuidsByLibrary = std::map<std::string, std::set<std::string>>;

    explicit IdentifierTerm(GuidsByLibrary guids) : m_guids(std::move(guids)) {}
    bool passes(const IndexedTool &tool, const ToolLibraryLocator &library) const override;
    void narrow(PageColumns &columns, const ToolLibraryLocator &library, ToolMarks &marks) const override;

private:
    const std::set<std::string> *guidsOf(const ToolLibraryLocator &library) const;

    GuidsByLibrary m_guids;
};

} // namespace Varn::ToolLibraries
