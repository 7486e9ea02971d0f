#pragma once

#include <cstdint>

namespace vk {

// The uniform random generator of the program: seeded with a whole number,
// it gives values x with 0 <= x < 1. Dice and cards take it as a parameter
// so that tests can seed it or script it.
class RandomSource {
public:
    virtual ~RandomSource() = default;
    virtual void Seed(std::int32_t seed) = 0;
    virtual double Next() = 0;
};

// The generator the program runs with: SplitMix64, small and fast enough for
// the quarter million draws of each mixing pass of the dice table.
class SplitMixRandom final : public RandomSource {
public:
    explicit SplitMixRandom(std::int32_t seed = 1) { Seed(seed); }
    void Seed(std::int32_t seed) override;
    double Next() override;

private:
    std::uint64_t state_ = 0;
};

// Seconds since the local midnight, with the fraction, as the clock seeds
// of the dice and the cards take them.
double SecondsSinceMidnight();

} // namespace vk
