#pragma once

#include "game/RandomSource.h"

#include <functional>
#include <vector>

namespace vk::test {

// A generator whose draws are given by the test: draw number d (from 0)
// returns value(d). Seeds are recorded and reset the draw number.
class ScriptedRandom final : public RandomSource {
public:
    explicit ScriptedRandom(std::function<double(long long)> value) : value_(std::move(value)) {}
    void Seed(std::int32_t seed) override
    {
        seeds.push_back(seed);
        draws = 0;
    }
    double Next() override { return value_(draws++); }

    std::vector<std::int32_t> seeds;
    long long draws = 0;

private:
    std::function<double(long long)> value_;
};

// Wraps a real generator and records its seeds.
class RecordingRandom final : public RandomSource {
public:
    void Seed(std::int32_t seed) override
    {
        seeds.push_back(seed);
        inner.Seed(seed);
    }
    double Next() override { return inner.Next(); }

    SplitMixRandom inner;
    std::vector<std::int32_t> seeds;
};

} // namespace vk::test
