#pragma once
// How the sample's totals are shared out: orders over customers, lines over
// orders. Each share is drawn around the mean of what is left, so the shares
// vary from one parent to the next and still add up to the total exactly.

#include <vector>

class oxSampleRandom;

// Splits `total` into `parts` shares of 0..cap each, summing to `total`;
// no share is 0 when `total` is at least `parts`.
// REQUIRES: parts >= 0, total >= 0, cap >= 0, total <= parts * cap.
std::vector<long long> oxSplitTotal(long long total, long long parts, long long cap, oxSampleRandom& random);
