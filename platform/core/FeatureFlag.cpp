#include "platform/core/FeatureFlag.h"

#include <functional>
#include <map>
#include <mutex>
#include <shared_mutex>
#include <string>

namespace Varn {

namespace {

struct Flags {
    std::shared_mutex mutex;
    std::map<std::string, bool, std::less<>> values; // guarded by mutex
};

Flags &flags()
{
    static Flags instance;
    return instance;
}

} // namespace

bool FeatureFlag::enabled(std::string_view name, bool fallback)
{
    const std::shared_lock lock(flags().mutex);
    const auto found = flags().values.find(name);
    return found == flags().values.end() ? fallback : found->second;
}

void FeatureFlag::setEnabled(std::string_view name, bool on)
{
    const std::unique_lock lock(flags().mutex);
    flags().values.insert_or_assign(std::string(name), on);
}

void FeatureFlag::reset()
{
    const std::unique_lock lock(flags().mutex);
    flags().values.clear();
}

} // namespace Varn
