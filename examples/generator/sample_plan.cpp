#include "sample_plan.h"

#include <algorithm>
#include <cassert>

#include "sample_random.h"

std::vector<long long> oxSplitTotal(long long total, long long parts, long long cap, oxSampleRandom& random) {
    assert(parts >= 0 && total >= 0 && cap >= 0);
    assert(parts > 0 ? total / parts <= cap && total <= parts * cap : total == 0);
    std::vector<long long> shares;
    shares.reserve(static_cast<size_t>(parts));
    // Every part gets one at least when there is enough to go round: an
    // order without lines or a customer without orders is the exception.
    long long least = parts > 0 && total >= parts ? 1 : 0;
    long long left = total;
    for (long long remaining = parts; remaining > 0; --remaining) {
        // At least what the later parts cannot hold at their cap; at most
        // what leaves the later parts their least, and around the mean of
        // what is left, so the mean stays where it is.
        long long lo = std::max(least, left - cap * (remaining - 1));
        long long hi = std::min({cap, left - least * (remaining - 1), std::max(lo, 2 * left / remaining - least)});
        long long share = random.Between(lo, hi);
        shares.push_back(share);
        left -= share;
    }
    assert(left == 0);
    return shares;
}
