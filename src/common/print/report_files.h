#pragma once
// Writing a job's pages to files. Each writer answers an empty string on
// success, else the reason it failed (the caller names the path).

#include <string>
#include <vector>

#include "page_model.h"

// The pages as plain text: each line ends with "\n", pages are separated by
// a form feed "\f".
std::string xpPagesText(const std::vector<xpPage>& pages);
// Writes xpPagesText(pages) to path.
std::string xpWriteText(const std::string& path, const std::vector<xpPage>& pages);
// Renders the pages to a PDF at path: def's paper and orientation, one page
// per page, in a monospaced font sized so that def.width characters fit the
// width and def.page_lines lines the height between the margins.
std::string xpWritePdf(const std::string& path, const xp_print_def& def, const std::vector<xpPage>& pages);
