#pragma once
// The median of a set of measurements, the middle one or the mean of the two
// middle ones; 0 for none.

#include <algorithm>
#include <vector>

inline double Median(std::vector<double> values) {
    if (values.empty()) return 0;
    std::sort(values.begin(), values.end());
    const size_t mid = values.size() / 2;
    return values.size() % 2 ? values[mid] : (values[mid - 1] + values[mid]) / 2;
}
