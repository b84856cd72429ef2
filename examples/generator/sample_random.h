#pragma once
// oxSampleRandom: the fixed pseudo-random sequence of the sample data.
//
// A splitmix64 generator written out here rather than taken from <random>,
// whose distributions differ between standard libraries: the same seed gives
// the same numbers on every machine and with every library version.

#include <cassert>
#include <cstdint>

class oxSampleRandom {
public:
    explicit oxSampleRandom(std::uint64_t seed) : state_(seed) {}

    std::uint64_t Next() {
        std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ULL);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }

    // A number in lo..hi, both included. The slight bias of the modulo does
    // not matter for sample data; only its repeatability does.
    // REQUIRES: lo <= hi.
    long long Between(long long lo, long long hi) {
        assert(lo <= hi);
        auto span = static_cast<std::uint64_t>(hi - lo) + 1;
        return lo + static_cast<long long>(span == 0 ? Next() : Next() % span);
    }

private:
    // Invariant: the whole state is this one word; equal words give equal
    // sequences.
    std::uint64_t state_;
};
