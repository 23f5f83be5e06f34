#include "ToolLibrary/Interface/Private/VendorLibraries.h"

namespace Varn::ToolLibraries {

namespace {

struct VendorRow {
    const char16_t *name;
    const char16_t *path;
};

// clang-format off
constexpr VendorRow vendorRows[] = {
    {u"BitsBits Cutting Tools",                  u"BitsBits/BitsBits Cutting Tools"},
    {u"Blum Touch Probes",                       u"Blum/Blum Probes"},
    {u"DATRON - Cutting Tools",                  u"DATRON/DATRON Cutting Tools"},
    {u"Delta Tools - HPC Endmill Solid Carbide", u"Delta Tools/HPC Endmill Solid Carbide"},
    {u"Destiny Tool",                            u"Destiny Tool/Destiny Tool"},
    {u"Fraiser Boss Beaver",                     u"Fraiser Tools/Boss Beaver"},
    {u"Fraiser Carbider Poly",                   u"Fraiser Tools/Carbider Poly"},
    {u"GARR TOOL",                               u"Garr Tool/Garr Tool"},
    {u"Guhring - Solid Hole Making",             u"Guhring/Solid Hole Making"},
    {u"Haas Holders",                            u"Haas Tooling/Haas Holders"},
    {u"Haas Tooling",                            u"Haas Tooling/Haas Tooling"},
    {u"Haimer Holders",                          u"Haimer/Haimer Holders"},
    {u"Harvey Tool - End Mills",                 u"Harvey Tool/End Mills"},
    {u"Harvey Tool - Holemaking and Threading",  u"Harvey Tool/Holemaking and Threading"},
    {u"Harvey Tool - Specialty Profiles",        u"Harvey Tool/Specialty Profiles"},
    {u"Helical Solutions - End Mills",           u"Helical Solutions/End Mills"},
    {u"Helical Solutions - Specialty Profiles",  u"Helical Solutions/Specialty Profiles"},
    {u"IMCO - Solid End Mills Imperial",         u"IMCO/Solid End Mills Imperial"},
    {u"IMCO - Solid End Mills Metric",           u"IMCO/Solid End Mills Metric"},
    {u"ISCAR - Holemaking Imperial",             u"Iscar/Iscar Hole Making Imperial"},
    {u"ISCAR - Holemaking Metric",               u"Iscar/Iscar Hole Making Metric"},
    {u"ISCAR - Solid End Mills Imperial",        u"Iscar/Iscar Solid End Mills Imperial"},
    {u"ISCAR - Solid End Mills Metric",          u"Iscar/Iscar Solid End Mills Metric"},
    {u"KYOCERA SGS Carbide Tools Imperial",      u"SGS Kyocera/SGS Carbide Tools Imperial"},
    {u"KYOCERA SGS Carbide Tools Metric",        u"SGS Kyocera/SGS Carbide Tools Metric"},
    {u"NEXGEN Tooling",                          u"NexGen Tooling/NexGen Tooling"},
    {u"OSG Tools - End Mills",                   u"OSG/End Mills"},
    {u"Renishaw - OMP Probes",                   u"Renishaw/Renishaw - OMP Probes"},
    {u"Sandvik Coromant - Solid End Mills",      u"Sandvik Coromant/Solid End Mills"},
    {u"Sandvik Coromant - Solid Hole Making",    u"Sandvik Coromant/Solid Hole Making"},
    {u"SwiftCARB - End Mills",                   u"SwiftCARB/End Mills"},
    {u"Tormach - 15L Slant-PRO - Starter",       u"Tormach/Tormach - 15L Slant-PRO - Starter"},
    {u"Tormach - PCNC 1100 - Starter",           u"Tormach/Tormach - PCNC 1100 - Starter"},
    {u"Tormach - PCNC 440, PCNC 770 - Starter",  u"Tormach/Tormach - PCNC 440, PCNC 770 - Starter"},
    {u"Valor Holemaking",                        u"Valor Holemaking/Valor Holemaking"},
};
// clang-format on

} // namespace

const std::map<QString, QString> &vendorLibraries()
{
    static const std::map<QString, QString> libraries = [] {
        std::map<QString, QString> table;
        for (const VendorRow &row : vendorRows)
            table.emplace(QString::fromUtf16(row.name), QString::fromUtf16(row.path));
        return table;
    }();
    return libraries;
}

} // namespace Varn::ToolLibraries
