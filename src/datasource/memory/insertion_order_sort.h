#pragma once
// The order of a memory table's sort, in O(n log n).
//
// The table's sort order is defined as that of a straight insertion sort that
// moves the held row up past every row it does not find strictly before it:
// for a comparison that is a strict weak ordering this gives the rows in key
// order with rows of equal keys in the opposite of their former order.
// Reversing the rows first and then merging stably gives exactly that order
// without the quadratic cost.
//
// The merge never reads outside its ranges, whatever the comparison answers,
// so an inconsistent comparison gives some permutation and never a fault.

#include <algorithm>
#include <cstddef>
#include <vector>

namespace oxdm_memory {

// Sorts items so that before(a, b) true puts a first; equal items come out
// in the reverse of their order on entry.
template <class T, class Before>
void InsertionOrderSort(std::vector<T>& items, Before before) {
    std::reverse(items.begin(), items.end());
    const std::size_t n = items.size();
    std::vector<T> scratch(n);
    // Bottom-up merge: runs of width 1, 2, 4, ... merged from items into
    // scratch, then the roles swap.
    std::vector<T>* from = &items;
    std::vector<T>* to = &scratch;
    for (std::size_t width = 1; width < n; width *= 2) {
        for (std::size_t lo = 0; lo < n; lo += 2 * width) {
            const std::size_t mid = std::min(lo + width, n);
            const std::size_t hi = std::min(lo + 2 * width, n);
            std::size_t a = lo, b = mid, out = lo;
            while (a < mid && b < hi) {
                // Stable: the left run wins unless the right one is strictly
                // before it.
                if (before((*from)[b], (*from)[a])) {
                    (*to)[out++] = (*from)[b++];
                } else {
                    (*to)[out++] = (*from)[a++];
                }
            }
            while (a < mid) (*to)[out++] = (*from)[a++];
            while (b < hi) (*to)[out++] = (*from)[b++];
        }
        std::swap(from, to);
    }
    if (from != &items) items.swap(*from);
}

}  // namespace oxdm_memory
