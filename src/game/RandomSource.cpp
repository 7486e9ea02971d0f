#include "game/RandomSource.h"

#include <chrono>
#include <ctime>

namespace vk {

void SplitMixRandom::Seed(std::int32_t seed)
{
    state_ = static_cast<std::uint64_t>(static_cast<std::uint32_t>(seed));
}

double SplitMixRandom::Next()
{
    state_ += 0x9E3779B97F4A7C15ULL;
    std::uint64_t z = state_;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    z ^= z >> 31;
    // The top 53 bits over 2^53: never 1.
    return static_cast<double>(z >> 11) * (1.0 / 9007199254740992.0);
}

double SecondsSinceMidnight()
{
    using namespace std::chrono;
    const auto now = system_clock::now();
    const std::time_t whole = system_clock::to_time_t(now);
    std::tm local{};
    localtime_r(&whole, &local);
    const double fraction =
        static_cast<double>(duration_cast<microseconds>(now.time_since_epoch()).count() % 1000000) / 1e6;
    return local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec + fraction;
}

} // namespace vk
