#pragma once
// The paper a report is laid out on: its size in points for the paper and
// orientation of a definition, the margins, and the line pitch that sets
// the default number of lines per page.

#include "oxdm/common/print/print.h"

struct xpPaper {
    double width;   // points, as the page is read (landscape: the long side)
    double height;  // points
};

inline constexpr double kPrintMargin = 36.0;     // half an inch on every side
inline constexpr double kDefaultLinePitch = 12.0;  // 10-point text with its leading

// The page size of def's paper and orientation (unknown values: Letter, portrait).
xpPaper xpPaperFor(const xp_print_def& def);
// The lines of kDefaultLinePitch that fit between the margins of def's paper.
short xpDefaultPageLines(const xp_print_def& def);
