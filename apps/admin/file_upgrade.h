#pragma once
// Bringing an older record file up to its dictionary: the store adds the
// tables and fields the file lacks when it opens the file for creation;
// this tells which those were, by reading the file's layout before.

#include <ostream>

#include "oxdm/base/cstring.h"

namespace oxdm::admin {

// Upgrades the record file at `path` (which must exist) and prints each
// table that gained something, with the fields it gained, or that the file
// was up to date. False with a sentence in `error` when it fails; no
// record is ever lost, but a table may have gained its fields before a
// later one failed.
bool UpgradeRecordFile(const CString& path, std::ostream& out, CString& error);

}  // namespace oxdm::admin
