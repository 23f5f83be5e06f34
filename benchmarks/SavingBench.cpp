// SavingBench.cpp -- what it costs to bring a library to its file, and to read an archive.
#include "Bare.h"
#include "Libraries.h"
#include "Measure.h"

#include "ToolLibrary/Interface/Private/Storage/LibrarySaver.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSourceLoader.h"
#include "platform/tool/Tool.h"
#include "platform/tool/ToolLibraryLocator.h"
#include "platform/utils/Abortable.h"

#include <stdexcept>

namespace Bench {

using namespace Varn::ToolLibraries;
using Varn::Tools::ToolLibraryUrl;

namespace {

/// A library in memory and a place for its files.
class Saved
{
public:
    explicit Saved(std::size_t tools)
        : m_library(ToolSourceLoader::loadFromNonDocument(ToolLibraryLocator(libraryUrl(tools)), Varn::AbortableImpl()))
    {
    }

    DiskLibrary &library() const { return *m_library; }
    QString path(const char *extension) const { return QStringLiteral(LIBRARIES_DIR "/Local/saved") + extension; }
    void save(const char *extension) const
    {
        const ToolLibraryUrl url(QStringLiteral("toollibraryroot://Local/saved") + extension);
        LibrarySaver::saveLibrary(url, path(extension), *m_library);
    }

private:
    std::shared_ptr<DiskLibrary> m_library;
};

rapidjson::StringBuffer textBare(const rapidjson::Document &document)
{
    rapidjson::StringBuffer text;
    printIndentedBare(document, text);
    return text;
}

void benchPrint(std::size_t tools, const Saved &saved, const rapidjson::Document &document)
{
    const auto &library = dynamic_cast<const RapidjsonToolLibrary &>(saved.library());
    std::size_t length = 0;
    const Work ours = [&] {
        library.printIndented([&](std::string_view block) { return length += block.size(), true; });
    };
    printRatio("print the text of a file", tools, measurePair(ours, [&] { textBare(document); }), "indented writer", 1);
}

void benchSave(std::size_t tools, const Saved &saved, const rapidjson::Document &document, const std::string &bytes)
{
    const std::string beside = saved.path(".bare").toStdString();
    const Work disk = [&] { replaceFileBare(beside, bytes); };
    const Work save = [&] { saved.save(".json"); };
    printRatio("save JSON", tools, measurePair(save, disk), "the same bytes, synced", 3);
    const ToolId id = saved.library().getToolIds().front();
    const std::shared_ptr<Tool> tool = saved.library().get(id).value();
    const Work edit = [&] {
        if (!saved.library().updateTool(id, *tool))
            throw std::runtime_error("A tool is missing");
        saved.save(".json");
    };
    printRatio("edit one tool and save", tools, measurePair(edit, disk), "the same bytes, synced", 3);
    const Work printAndWrite = [&] {
        const rapidjson::StringBuffer text = textBare(document);
        replaceFileBare(beside, {text.GetString(), text.GetSize()});
    };
    printRatio("export JSON", tools, measurePair(save, printAndWrite), "indented writer + disk", 1.3);
}

void benchArchive(std::size_t tools, const Saved &saved, const rapidjson::Document &document, const std::string &bytes)
{
    const Work bareSave = [&] {
        const rapidjson::StringBuffer text = textBare(document);
        deflateBare({text.GetString(), text.GetSize()});
    };
    printRatio("save .tools", tools, measurePair([&] { saved.save(".tools"); }, bareSave), "indented writer + zlib 6",
               1.1);
    const std::string packed = deflateBare(bytes);
    const Work bareLoad = [&] {
        rapidjson::Document parsed;
        parseBare(inflateBare(packed, bytes.size()), parsed);
    };
    const ToolLibraryLocator archive = ToolLibraryLocator::fromFilePath(saved.path(".tools").toStdWString());
    const Work load = [&] { ToolSourceLoader::load(archive, Varn::AbortableImpl()); };
    printRatio("load .tools", tools, measurePair(load, bareLoad), "inflate + parse", 1.2);
}

/// With the library itself, which is there all the while.
void benchPeak(std::size_t tools, double fileSize)
{
    const double before = residentMemory();
    const Saved saved(tools);
    for (const char *extension : {".json", ".tools"}) {
        const double kept = residentMemory() - before;
        const double peak = peakMemoryOf([&] { saved.save(extension); });
        printMemory(std::string("peak of a save to ") + extension, tools, kept + peak, fileSize, 2.2);
    }
}

} // namespace

void benchSaving(std::size_t tools)
{
    const std::string bytes = libraryBytes(tools);
    benchPeak(tools, static_cast<double>(bytes.size()));
    rapidjson::Document document;
    parseBare(bytes, document);
    const Saved saved(tools);
    benchPrint(tools, saved, document);
    benchSave(tools, saved, document, bytes);
    benchArchive(tools, saved, document, bytes);
}

} // namespace Bench
