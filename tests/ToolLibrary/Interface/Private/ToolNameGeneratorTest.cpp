#include "ToolLibrary/Interface/Private/ToolNameGenerator.h"
#include "support/LibraryFile.h"

#include "ToolLibrary/Interface/Private/IndexedTool.h"
#include "platform/utils/LocaleRegistry.h"
#include "platform/utils/Messages.h"

#include <gtest/gtest.h>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using Varn::LocaleRegistry;
using Varn::Messages;

namespace {

std::string nameOf(const std::string &members, const wchar_t *country = L"en")
{
    const IndexedTool tool(Tool::fromJson(toolText(1, members)));
    return Messages::fromWideUnicodeToUTF8(ToolNameGenerator::generateLocalizedName(tool, country));
}

/// A general turning tool with these values.
std::string turning(const std::string &unit, const std::string &geometry, const std::string &holder = "")
{
    return R"("type":"turning general","unit":")" + unit + R"(","description":"T","geometry":{)" + geometry +
           R"(},"holder":{)" + holder + "}";
}

struct Row {
    const char *members;
    const char *name;
};

} // namespace

TEST(ToolNameGenerator, RotatingToolsHaveTheirDimensions)
{
    const Row rows[] = {
        {R"("type":"bull nose end mill","unit":"millimeters","post-process":{"number":3},"geometry":{"DC":10,"RE":0.5},)"
         R"("description":"Bull nose")",
         "3 - ∅10mm R0.5mm (Bull nose)"},
        {R"("type":"drill","unit":"millimeters","geometry":{"DC":10,"SIG":118},"description":"Drill")",
         "∅10mm 118° (Drill)"},
        {R"("type":"drill","unit":"millimeters","geometry":{"DC":10,"SIG":0},"description":"Flat")", "∅10mm (Flat)"},
        {R"("type":"drill","unit":"millimeters","geometry":{"DC":0},"description":"D")", "∅0mm (D)"},
        {R"("type":"drill","unit":"millimeters","geometry":{"DC":10.5},"description":"D")", "∅10.5mm (D)"},
        {R"("type":"drill","unit":"millimeters","geometry":{"DC":100},"description":"D")", "∅100mm (D)"},
        {R"("type":"drill","unit":"millimeters","geometry":{"DC":-2},"description":"D")", "∅-2mm (D)"},
        {R"("type":"drill","unit":"inches","geometry":{"DC":0.5},"description":"D")", "∅1/2\" (D)"},
        {R"("type":"drill","unit":"inches","geometry":{"DC":1.5},"description":"D")", "∅1-1/2\" (D)"},
        {R"("type":"drill","unit":"inches","geometry":{"DC":0.123456},"description":"D")", "∅0.12346\" (D)"},
        {R"("type":"drill","unit":"inches","geometry":{"DC":2},"description":"D")", "∅2\" (D)"},
        {R"("type":"probe","unit":"millimeters","geometry":{"DC":6},"description":"P")", "∅6mm (P)"},
        {R"("type":"drill","unit":"millimeters","description":"Bare")", "Bare"},
        {R"("type":"drill","unit":"millimeters")", "Drill"},
        {R"("type":"drill","unit":"millimeters","geometry":{"DC":3})", "∅3mm (Drill)"},
        {R"("type":"drill","post-process":{"number":0},"description":"D")", "D"},
        {R"("type":"drill","post-process":{"number":-4},"description":"D")", "-4 - D"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(nameOf(row.members), row.name) << row.members;
}

TEST(ToolNameGenerator, OtherToolsHaveTheirDescription)
{
    const Row rows[] = {
        {R"("type":"turning grooving","unit":"millimeters","geometry":{"DC":3,"RE":1},"description":"Groover")",
         "Groover"},
        {R"("type":"turning threading","post-process":{"number":7},"description":"Threader")", "7 - Threader"},
        {R"("type":"holder","description":"BT40")", "BT40"},
        {R"("type":"laser cutter","geometry":{"DC":3},"description":"Laser")", "Laser"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(nameOf(row.members), row.name) << row.members;
}

TEST(ToolNameGenerator, TurningToolsHaveTheDesignationsOfInsertAndHolder)
{
    const std::string cnmg = R"("SC":"C","RA":0,"TC":"M","SCTY":"G","INSD":12.7,"S":4.76,"RE":0.8)";
    const std::string inch = R"("SC":"C","RA":0,"TC":"M","SCTY":"G","INSD":0.5,"S":0.1875,"RE":0.03125)";
    const std::string right = R"("HAND":"R","THSC":"L","MTP":"P")";
    const struct {
        std::string members;
        const char *name;
    } rows[] = {
        {turning("millimeters", cnmg, right), "CNMG120408 - PCLN-R (T)"},
        {turning("inches", inch, right), "CNMG432 - PCLN-R (T)"},
        {turning("millimeters", cnmg), "CNMG120408 (T)"},
        {turning("millimeters", R"("SC":"C")", right), "PCL-R (T)"}, // without a relief angle the holder stands alone
        {turning("millimeters", "", right), "PL-R (T)"},
        {turning("millimeters", "", R"("HAND":"L")"), "--L (T)"},
        {turning("millimeters", ""), "T"},
        {turning("millimeters", cnmg, R"("HAND":"X","THSC":"L")"), "CNMG120408 (T)"},
        {turning("millimeters", cnmg, R"("HAND":"r","THSC":"L")"), "CNMG120408 (T)"},
        {turning("millimeters", cnmg, R"("HAND":"Neutral","THSC":"boring bar f","MTP":"S")"),
         "CNMG120408 - SCFN-N (T)"},
        {turning("millimeters", cnmg, R"("HAND":"R","THSC":"offset profile")"), "CNMG120408 - C-N-R (T)"},
        {turning("millimeters", R"("SC":"W","RA":7,"INSD":99,"S":99,"RE":99)"), "WC?????? (T)"},
        {turning("millimeters", R"("SC":"C","RA":8,"INSD":12.7,"S":4.76,"RE":0.8)"), "C?120408 (T)"},
        {turning("millimeters", R"("SC":"R","RA":0,"INSD":12.7,"S":4.76,"RE":6.35)"), "RN1204M0 (T)"},
        {turning("millimeters", R"("SC":"C","RA":0,"INSD":12.8959,"SIZE_SPECIFICATION_MODE":"CE","S":4.76,"RE":0.8)"),
         "CN120408 (T)"},
        {turning("millimeters", R"("SC":"C","RA":0,"INSD":12.8959,"SIZE_SPECIFICATION_MODE":"ce","S":4.76,"RE":0.8)"),
         "CN??0408 (T)"},
        {turning("millimeters", R"("SC":"groove square","RA":0)", right), "PLN-R (T)"}, // no shape letter
    };
    for (const auto &row : rows)
        EXPECT_EQ(nameOf(row.members), row.name) << row.members;
}

TEST(ToolNameGenerator, EveryKindOfToolHasItsName)
{
    const Row rows[] = {
        {R"("type":"bull nose end mill","unit":"inches","post-process":{"number":12},"geometry":{"DC":0.75,"RE":0.03125})",
         "12 - ∅3/4\" R1/32\" (Bull nose end mill)"},
        {R"("type":"drill","unit":"inches","geometry":{"DC":0.201,"SIG":135},"description":"No. 7")",
         "∅0.201\" 135° (No. 7)"},
        {R"("type":"right hand tap","unit":"millimeters","geometry":{"DC":8,"TP":1.25,"RE":0,"TA":0})",
         "∅8mm (Right hand tap)"},
        {R"("type":"tapered mill","unit":"millimeters","geometry":{"DC":2,"RE":0.25,"TA":7.25},"description":"Taper")",
         "∅2mm R0.25mm 7.3° (Taper)"},
        {R"("type":"probe","unit":"inches","geometry":{"DC":0.2362})", "∅0.2362\" (Probe)"},
        {R"("type":"holder","unit":"millimeters","geometry":{"DC":63},"post-process":{"number":5})", "5 - Holder"},
        {R"("type":"turning threading","unit":"inches","geometry":{"DC":1,"SC":"C","RA":0},"holder":{"HAND":"R"})",
         "Turning threading"},
        {R"("type":"turning grooving","unit":"inches","post-process":{"number":2},"holder":{"HAND":"L"})",
         "2 - Turning grooving"},
        {R"("type":"laser cutter","unit":"millimeters","geometry":{"DC":0.2})", "Laser cutter"},
        {R"("type":"form mill","unit":"millimeters","geometry":{"DC":16},"description":"Rounding")",
         "∅16mm (Rounding)"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(nameOf(row.members), row.name) << row.members;
}

TEST(ToolNameGenerator, ADesignationIsThatOfTheUnitAndOfTheMeasureOfTheSize)
{
    // A rhombus of 80 degrees: the cutting edge is 1.01543 times as long as the inscribed circle.
    const struct {
        const char *unit;
        const char *mode;
        const char *size;
        const char *code; ///< of the size
    } rows[] = {
        {"millimeters", "IC", "12.7", "12"},    {"millimeters", "IC", "12.8959", "??"},
        {"millimeters", "CE", "12.8959", "12"}, {"millimeters", "CE", "12.7", "??"},
        {"inches", "IC", "0.5", "4"},           {"inches", "IC", "0.507713", "??"},
        {"inches", "CE", "0.507713", "4"},      {"inches", "CE", "0.5", "??"},
        {"millimeters", "", "12.7", "12"},      {"inches", "CE ", "0.5", "4"},
    };
    for (const auto &row : rows) {
        const bool isInch = row.unit == std::string("inches");
        std::string members = turning(row.unit,
                                      R"("SC":"C","RA":7,"TC":"M","SCTY":"T","SIZE_SPECIFICATION_MODE":")" +
                                          std::string(row.mode) + R"(","INSD":)" + row.size +
                                          (isInch ? R"(,"S":0.15625,"RE":0.015625)" : R"(,"S":3.97,"RE":0.4)"),
                                      R"("HAND":"L","THSC":"boring bar l","MTP":"S")");
        const std::string name = "CCMT" + std::string(row.code) + (isInch ? "2.51" : "T304") + " - SCLC-L (T)";
        EXPECT_EQ(nameOf(members), name);
        members.replace(members.find("turning general"), 15, "turning boring");
        EXPECT_EQ(nameOf(members), name) << "boring tools have the same";
    }
}

TEST(ToolNameGenerator, CustomInsertsAndHoldersHaveTheirSizes)
{
    const struct {
        std::string members;
        const char *name;
    } rows[] = {
        {turning("millimeters", R"("SC":"custom","EPSR":55,"RE":0.4,"INSD":12.7,"SIZE_SPECIFICATION_MODE":"IC")"),
         "55° 0.4mm - ∅12.7mm (T)"},
        {turning("millimeters", R"("SC":"custom","EPSR":55.678,"RE":0.4,"INSD":12.7,"SIZE_SPECIFICATION_MODE":"CE")"),
         "55.68° 0.4mm - L12.7mm (T)"},
        {turning("inches", R"("SC":"custom","EPSR":80,"RE":0.03125,"INSD":0.5,"SIZE_SPECIFICATION_MODE":"IC")"),
         "80° 1/32\" - ∅1/2\" (T)"},
        {turning("millimeters", R"("SC":"something else")"), "0° 0mm - L0mm (T)"}, // an unknown insert is a custom one
        {turning("millimeters", "", R"("HAND":"R","THSC":"custom","tool_leadingAngle":93,"tool_trailingAngle":3)"),
         "Leading angle: 93°, Trailing angle: 3° - R (T)"},
        {turning("millimeters", "", R"("HAND":"L","THSC":"custom","tool_leadingAngle":93.25)"),
         "Leading angle: 93.3° - L (T)"},
        {turning("millimeters", "", R"("HAND":"N","THSC":"custom")"), "Leading angle: 0° - N (T)"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(nameOf(row.members), row.name) << row.members;
}

TEST(ToolNameGenerator, NamesAreInTheLanguageOfTheCountry)
{
    LocaleRegistry::addCatalogue("xx", {{"Leading angle", "Einstellwinkel"}, {"Drill", "Bohrer"}});
    EXPECT_EQ(nameOf(R"("type":"drill")", L"xx"), "Bohrer");
    EXPECT_EQ(nameOf(R"("type":"drill")", L"zz"), "Drill");
    EXPECT_EQ(nameOf(turning("millimeters", "", R"("HAND":"R","THSC":"custom")"), L"xx"), "Einstellwinkel: 0° - R (T)");
    LocaleRegistry::setCountry("xx");
    const IndexedTool tool(Tool::fromJson(toolText(1, R"("type":"drill")")));
    EXPECT_EQ(ToolNameGenerator::generateName(tool), L"Bohrer");
    EXPECT_EQ(tool.getName(), L"Bohrer");
    LocaleRegistry::setCountry("en");
    EXPECT_EQ(tool.getName(), L"Bohrer") << "a name is made once";
}

TEST(ToolNameGenerator, TheLibrarySpeaksGermanFrenchAndJapanese)
{
    const std::string thread = turning("millimeters", R"("SC":"C","RA":0)",
                                       R"("HAND":"R","THSC":"custom","tool_leadingAngle":93,"tool_trailingAngle":3)");
    const struct {
        const wchar_t *country;
        std::string members;
        const char *name;
    } rows[] = {
        {L"de", R"("type":"flat end mill","unit":"millimeters","geometry":{"DC":8},"post-process":{"number":3})",
         "3 - ∅8mm (Schaftfräser)"},
        {L"de-AT", R"("type":"bull nose end mill","unit":"inches","geometry":{"DC":0.5,"RE":0.0625})",
         "∅1/2\" R1/16\" (Torusfräser)"},
        {L"fr", R"("type":"drill","unit":"millimeters","geometry":{"DC":8.5,"SIG":140})", "∅8.5mm 140° (Foret)"},
        {L"fr_CA", R"("type":"face mill")", "Fraise à surfacer"},
        {L"ja", R"("type":"face mill","unit":"millimeters","geometry":{"DC":80})", "∅80mm (正面フライス)"},
        {L"ja", R"("type":"no such type")", "未指定"},
        {L"de", R"("type":"drill","description":"Own words")", "Own words"},
        {L"de", thread, "CN????00 - Einstellwinkel: 93°, Einstellwinkel der Nebenschneide: 3° - R (T)"},
        {L"fr", thread, "CN????00 - Angle d'attaque: 93°, Angle d'attaque secondaire: 3° - R (T)"},
        {L"ja", thread, "CN????00 - 切込み角: 93°, 副切込み角: 3° - R (T)"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(nameOf(row.members, row.country), row.name);
}
